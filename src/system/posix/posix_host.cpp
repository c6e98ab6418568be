// The host on POSIX: the system clock, messages written to the standard
// error stream, the terminal bell.
#include <chrono>
#include <cstdio>
#include <ctime>

#include "frame/runtime.hpp"
#include "frame/strings.hpp"
#include "system/posix/posix_platform.hpp"

namespace kiv {
namespace {

class PosixHost final : public Host {
public:
    explicit PosixHost(const PlatformSettings& settings) {
        const auto app = settings.pins.find("app");
        app_ = app != settings.pins.end() ? FromUtf8(app->second) : u"kiv";
    }
    int messageBox(MsgIcon, const String& title, const String& text) override {
        std::fprintf(stderr, "[%s] %s\n", ToUtf8(title).c_str(), ToUtf8(text).c_str());
        return 1;
    }
    void beep() override { std::fputc('\a', stderr); }
    Date now() override {
        const auto tp = std::chrono::system_clock::now();
        const std::time_t t = std::chrono::system_clock::to_time_t(tp);
        std::tm local{};
        localtime_r(&t, &local);
        const Date day = DateFromParts(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
        const Date time = TimeFromParts(local.tm_hour, local.tm_min, local.tm_sec);
        return Date{day.serial + time.serial};
    }
    String applicationName() override { return app_; }
    // Programs and documents: filled in with the files' path mapping.
    bool startProgram(const String&) override { return false; }
    bool openDocument(const String&) override { return false; }

private:
    String app_;
};

}  // namespace

std::unique_ptr<Host> makePosixHost(const PlatformSettings& settings) { return std::make_unique<PosixHost>(settings); }

}  // namespace kiv
