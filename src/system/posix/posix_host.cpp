// The host on POSIX: the system clock, messages written to the standard
// error stream, the terminal bell; programs and documents go to the
// desktop's opener (xdg-open), by argument vector, never through a shell.
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

#include "frame/errors.hpp"
#include "frame/platform.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"
#include "system/posix/posix_platform.hpp"

namespace kiv {
namespace {

// The program of this name on PATH, or "" when there is none.
std::string OnPath(const std::string& name) {
    const char* path = std::getenv("PATH");
    std::string dirs = path != nullptr ? path : "";
    for (std::size_t start = 0; start <= dirs.size();) {
        std::size_t end = dirs.find(':', start);
        if (end == std::string::npos) end = dirs.size();
        const std::string candidate = dirs.substr(start, end - start) + "/" + name;
        if (end > start && ::access(candidate.c_str(), X_OK) == 0) return candidate;
        start = end + 1;
    }
    return "";
}

// Starts ARGV detached (no shell, no wait for it): a child that forks the
// program and leaves at once, so nothing is left to reap. The program gets
// none of the host's descriptors, standard streams included: a browser left
// holding the host's output would keep a reader of it waiting until it closes.
bool Spawn(const std::vector<std::string>& argv) {
    std::vector<char*> args;
    for (const std::string& a : argv) args.push_back(const_cast<char*>(a.c_str()));
    args.push_back(nullptr);
    const pid_t child = ::fork();
    if (child < 0) return false;
    if (child == 0) {
        ::setsid();
        const pid_t program = ::fork();
        if (program == 0) {
            const int null = ::open("/dev/null", O_RDWR);
            if (null < 0) ::_exit(127);
            for (int stream = 0; stream < 3; ++stream) ::dup2(null, stream);
            ::close_range(3, ~0U, 0);
            ::execv(args[0], args.data());
            ::_exit(127);
        }
        ::_exit(program < 0 ? 1 : 0);
    }
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {}
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// "EXPLORER [/e, /root, ] path": the folder, mapped, for the desktop's file
// browser; any other command line has no program here.
bool StartExplorer(const String& commandLine) {
    const String word = u"EXPLORER ";
    if (commandLine.size() < word.size() || !CaseBlindEqual(commandLine.substr(0, word.size()), word)) return false;
    String rest = commandLine.substr(word.size());
    const String root = u"/e, /root, ";
    if (rest.compare(0, root.size(), root) == 0) rest = rest.substr(root.size());
    rest = Trim(rest);
    if (rest.empty()) return false;
    const std::string opener = OnPath("xdg-open");
    if (opener.empty()) return false;
    try {
        return Spawn({opener, CurrentPlatform().files().nativePath(rest).string()});
    } catch (const RuntimeError&) {
        return false;
    }
}

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
    bool startProgram(const String& commandLine) override { return StartExplorer(commandLine); }
    // The desktop's opener with the target as its only argument.
    bool openDocument(const String& target) override {
        const std::string opener = OnPath("xdg-open");
        return !opener.empty() && Spawn({opener, ToUtf8(target)});
    }

private:
    String app_;
};

}  // namespace

std::unique_ptr<Host> MakePosixHost(const PlatformSettings& settings) { return std::make_unique<PosixHost>(settings); }

}  // namespace kiv
