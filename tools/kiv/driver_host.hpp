// The driver's host: message boxes and beeps become printed lines, in order
// with the values; the clock is the system's or the one pinned by --now.
#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "frame/host.hpp"
#include "output.hpp"
#include "syntax.hpp"

namespace kiv::script {

class DriverHost final : public Host {
public:
    explicit DriverHost(Output& out) : out_(out) {}
    int messageBox(MsgIcon icon, const String& title, const String& text) override;
    void beep() override;
    Date now() override;
    String applicationName() override { return u"kiv"; }

    void pinClock(DateParts when) { pinned_ = when; }

private:
    Output& out_;
    std::optional<DateParts> pinned_;
    std::shared_ptr<Host> system_;
};

// "yyyy-mm-dd hh:nn:ss" or "yyyy-mm-dd"; nothing when malformed.
std::optional<DateParts> ParseClock(std::string_view text);

// A Date from literal parts: the day and the time of day, the time counted
// forward also on days before the epoch.
Date DateOfParts(const DateParts& parts);

}  // namespace kiv::script
