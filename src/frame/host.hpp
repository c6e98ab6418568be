// The host seam: everything the component shows or asks of its surroundings
// goes through one replaceable object, so a driver or a test can capture
// message boxes and pin the clock.
#pragma once

#include <memory>

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
    virtual String applicationName() = 0;
};

// The host in force for the process. Until one is installed this is the
// platform's own (system clock, messages to the standard error stream).
Host& currentHost();
void installHost(std::shared_ptr<Host> host);

// The platform's own host, defined in the system layer.
std::shared_ptr<Host> makeSystemHost();

}  // namespace kiv
