// The host seam: what the host application shows and tells. Message boxes,
// the beep, the clock, the application's name and the programs it starts.
#pragma once

#include "frame/value.hpp"

namespace kiv {

enum class MsgIcon { None, Critical, Question, Exclamation, Information };

class Host {
public:
    virtual ~Host() = default;
    // Shows a modal message with an OK button; returns the button pressed (1 = OK).
    virtual int messageBox(MsgIcon icon, const String& title, const String& text) = 0;
    virtual void beep() = 0;
    // Present local date and time.
    virtual Date now() = 0;
    // The host application's executable name, without folder and extension.
    virtual String applicationName() = 0;
    // Starts a program from a Windows command line without waiting for it;
    // false when it could not be started.
    virtual bool startProgram(const String& commandLine) = 0;
    // Hands an address or a document to the desktop to open.
    virtual bool openDocument(const String& target) = 0;
};

}  // namespace kiv
