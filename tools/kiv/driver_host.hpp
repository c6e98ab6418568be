// The driver's platform: the system's own, except that what a desktop host
// would show (message boxes, beeps, programs started, documents opened) and
// the calls into the window system become printed lines, in order with the
// values, and the clock is the system's or the one pinned by --now.
#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

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

// The window system of the driver: every call is printed as a `Window ...`
// host event; the only windows are those a script makes with HostWindow.
class DriverWindowSystem final : public WindowSystem {
public:
    explicit DriverWindowSystem(Output& out) : out_(out) {}
    Double twipsPerPixelX() override { return 15.0; }
    Double twipsPerPixelY() override { return 15.0; }
    bool setWindowPos(Long hWnd, Long after, Long x, Long y, Long cx, Long cy, Long flags) override;
    bool killTimer(Long hWnd, Long idEvent) override;
    Long findWindow(const String& className, const String& title) override;
    bool setForegroundWindow(Long hWnd) override;
    void sendKeys(const String& keys) override;
    Long sendMessage(Long hWnd, Long msg, Long wParam, Long lParam) override;
    bool fillRect(Long hWnd, const Rect& rect, Long colour) override;
    // 8 pixels per character; there is no screen and no client area.
    Long textWidth(Long hWnd, const String& text) override;
    std::optional<Rect> clientRect(Long) override { return std::nullopt; }
    std::optional<Rect> virtualScreen() override { return std::nullopt; }

    // A top-level window that findWindow will find; handles from 4096 up.
    Long makeWindow(const String& className, const String& title);

private:
    struct Window {
        String className, title;
        Long handle;
    };
    Output& out_;
    std::vector<Window> windows_;
};

class DriverPlatform final : public PosixPlatform {
public:
    DriverPlatform(Output& out, PlatformSettings settings)
        : PosixPlatform(std::move(settings)), host_(out, this->settings()), windows_(out) {}
    DriverHost& host() override { return host_; }
    DriverWindowSystem& windows() override { return windows_; }

private:
    DriverHost host_;
    DriverWindowSystem windows_;
};

// "yyyy-mm-dd hh:nn:ss" or "yyyy-mm-dd"; nothing when malformed.
std::optional<DateLiteralParts> ParseClock(std::string_view text);

// A Date from literal parts: the day and the time of day, the time counted
// forward also on days before the epoch.
Date DateOfParts(const DateLiteralParts& parts);

}  // namespace kiv::script
