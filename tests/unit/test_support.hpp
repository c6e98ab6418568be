// Helpers shared by the unit tests: the number of the run-time error a call
// raises, and a host with a pinned clock that records what it is asked to show.
#pragma once

#include <memory>
#include <vector>

#include "frame/errors.hpp"
#include "frame/platform.hpp"
#include "frame/runtime.hpp"
#include "system/posix/posix_platform.hpp"

namespace kiv::testing {

// The run-time error number raised by call(), or 0 when it returns.
inline int ErrorOf(auto&& call) {
    try {
        call();
    } catch (const RuntimeError& e) {
        return e.number();
    }
    return 0;
}

struct Shown {
    MsgIcon icon;
    String title;
    String text;
};

class PinnedHost : public Host {
public:
    explicit PinnedHost(Date now) : now_(now) {}
    int messageBox(MsgIcon icon, const String& title, const String& text) override {
        shown.push_back({icon, title, text});
        return 1;
    }
    void beep() override { ++beeps; }
    Date now() override { return now_; }
    String applicationName() override { return u"kiv_tests"; }
    bool startProgram(const String& commandLine) override {
        started.push_back(commandLine);
        return true;
    }
    bool openDocument(const String&) override { return true; }

    std::vector<Shown> shown;
    int beeps = 0;
    std::vector<String> started;

private:
    Date now_;
};

// The system's platform with the pinned host in place of its own.
class PinnedPlatform final : public PosixPlatform {
public:
    explicit PinnedPlatform(std::shared_ptr<PinnedHost> host)
        : PosixPlatform(PlatformSettings::fromEnvironment()), host_(std::move(host)) {}
    Host& host() override { return *host_; }

private:
    std::shared_ptr<PinnedHost> host_;
};

// Installs a host whose clock stands at the given moment; the fixture that
// calls it puts the system host back with RestoreHost() in its TearDown.
inline PinnedHost& PinClock(std::shared_ptr<PinnedHost>& keep, int y, int m, int d, int hh = 0, int nn = 0,
                            int ss = 0) {
    keep = std::make_shared<PinnedHost>(Date{DateFromParts(y, m, d).serial + TimeFromParts(hh, nn, ss).serial});
    InstallPlatform(std::make_shared<PinnedPlatform>(keep));
    return *keep;
}

inline void RestoreHost() { InstallPlatform(MakeSystemPlatform(PlatformSettings::fromEnvironment())); }

}  // namespace kiv::testing
