// The driver's platform: the system's own, except that what a desktop host
// would show (message boxes, beeps, programs started, documents opened)
// becomes printed lines, in order with the values, and the clock is the
// system's or the one pinned by --now.
#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "output.hpp"
#include "syntax.hpp"
#include "system/posix/posix_platform.hpp"

namespace kiv::script {

class DriverHost final : public Host {
public:
    DriverHost(Output& out, const PlatformSettings& settings);
    int messageBox(MsgIcon icon, const String& title, const String& text) override;
    void beep() override;
    Date now() override;
    String applicationName() override { return system_->applicationName(); }
    bool startProgram(const String& commandLine) override;
    bool openDocument(const String& target) override;

    void pinClock(DateLiteralParts when) { pinned_ = when; }

private:
    Output& out_;
    std::optional<DateLiteralParts> pinned_;
    std::unique_ptr<Host> system_;
};

class DriverPlatform final : public PosixPlatform {
public:
    DriverPlatform(Output& out, PlatformSettings settings)
        : PosixPlatform(std::move(settings)), host_(out, this->settings()) {}
    DriverHost& host() override { return host_; }

private:
    DriverHost host_;
};

// "yyyy-mm-dd hh:nn:ss" or "yyyy-mm-dd"; nothing when malformed.
std::optional<DateLiteralParts> ParseClock(std::string_view text);

// A Date from literal parts: the day and the time of day, the time counted
// forward also on days before the epoch.
Date DateOfParts(const DateLiteralParts& parts);

}  // namespace kiv::script
