// The system host and machine on this platform: documents handed to the
// desktop's opener by a real process, the clock, the local addresses, and the
// system operations that sit on them (SaveIP, Ext2Pgm).
#include <arpa/inet.h>
#include <net/if.h>
#include <sched.h>
#include <errno.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <pwd.h>
#include <signal.h>
#include <sys/utsname.h>
#include <sys/ioctl.h>
#include <sys/personality.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <string>

#include "frame/cl_kiv.hpp"
#include "frame/strings.hpp"
#include "test_support.hpp"

namespace kiv {
namespace {

namespace fs = std::filesystem;
using testing::ErrorOf;

class SystemInfo : public ::testing::Test {
protected:
    void SetUp() override {
        char pattern[] = "/tmp/kiv-sys-XXXXXX";
        base_ = mkdtemp(pattern);
        fs::create_directories(base_ / "c" / "Windows");
        settings_.drives['C'] = (base_ / "c").string();
        settings_.registryFolder = (base_ / "registry").string();
    }
    void TearDown() override {
        InstallPlatform(MakeSystemPlatform(PlatformSettings::fromEnvironment()));
        fs::remove_all(base_);
    }
    void use(std::map<std::string, std::string> pins) {
        settings_.pins = std::move(pins);
        InstallPlatform(std::make_shared<PosixPlatform>(settings_));
    }

    fs::path base_;
    PlatformSettings settings_;
    Cl_KIV k;
};

// CALL's answer, asked in a child process that has ten seconds for it:
// nothing when the call ends the process that made it, does not come back,
// or leaves that process a child to reap.
std::optional<bool> AnsweredInChild(const std::function<bool()>& call) {
    const pid_t child = fork();
    if (child == 0) {
        alarm(10);
        const bool answer = call();
        const bool nothingToReap = waitpid(-1, nullptr, WNOHANG) < 0 && errno == ECHILD;
        _exit(!nothingToReap ? 12 : answer ? 10 : 11);
    }
    int status = 0;
    if (waitpid(child, &status, 0) != child || !WIFEXITED(status)) return std::nullopt;
    if (WEXITSTATUS(status) == 10) return true;
    if (WEXITSTATUS(status) == 11) return false;
    return std::nullopt;
}

// A stand-in for the desktop's opener in BIN: once BIN/go exists it writes
// the count of its arguments and the first to BIN/seen; it gives up when BIN
// is removed.
void MakeOpener(const fs::path& bin) {
    fs::create_directory(bin);
    {
        std::ofstream script(bin / "xdg-open");
        script << "#!/bin/sh\nd=$(dirname \"$0\")\n"
                  "while [ ! -e \"$d/go\" ] && [ -d \"$d\" ]; do sleep 0.01; done\n"
                  "printf '%s|%s' \"$#\" \"$1\" > \"$d/seen.tmp\" && mv \"$d/seen.tmp\" \"$d/seen\"\n";
    }
    fs::permissions(bin / "xdg-open", fs::perms::owner_all);
}

class OnPath {
public:
    explicit OnPath(const std::string& path) {
        const char* old = getenv("PATH");
        saved_ = old ? old : "";
        setenv("PATH", path.c_str(), 1);
    }
    ~OnPath() { setenv("PATH", saved_.c_str(), 1); }

private:
    std::string saved_;
};

// The opener gets the target as its one argument; the caller gets its answer
// without waiting for the opener and has no child left behind, and the
// opener does not hold the caller's output open. Without an opener on PATH
// nothing starts.
TEST_F(SystemInfo, DocumentsGoToTheDesktopOpener) {
    const fs::path bin = base_ / "bin";
    MakeOpener(bin);
    std::unique_ptr<Host> host = MakePosixHost(settings_);
    std::optional<bool> opened, withoutOpener;
    int output[2];
    ASSERT_EQ(pipe(output), 0);
    {
        OnPath path("/nonexistent:" + bin.string() + ":/usr/bin:/bin");  // found past a folder without it
        opened = AnsweredInChild([&] {
            dup2(output[1], STDOUT_FILENO);
            return host->openDocument(u"https://ditta.it/a b");
        });
    }
    close(output[1]);
    fcntl(output[0], F_SETFL, O_NONBLOCK);
    char byte;
    EXPECT_EQ(read(output[0], &byte, 1), 0) << "the opener, still waiting, holds the output";
    close(output[0]);
    std::ofstream(bin / "go").flush();
    {
        OnPath path("/nonexistent");
        withoutOpener = AnsweredInChild([&] { return host->openDocument(u"https://ditta.it"); });
    }
    EXPECT_EQ(opened, std::optional<bool>(true));
    EXPECT_EQ(withoutOpener, std::optional<bool>(false));
    for (int i = 0; i < 300 && !fs::exists(bin / "seen"); ++i) usleep(10000);
    std::ifstream in(bin / "seen");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), "1|https://ditta.it/a b");
}

// A host that ignores its children's ends (so the system reaps them) gets
// its answer all the same.
TEST_F(SystemInfo, HostIgnoringItsChildrenStillOpens) {
    const fs::path bin = base_ / "bin";
    MakeOpener(bin);
    std::unique_ptr<Host> host = MakePosixHost(settings_);
    OnPath path(bin.string() + ":/usr/bin:/bin");
    const std::optional<bool> opened = AnsweredInChild([&] {
        signal(SIGCHLD, SIG_IGN);
        return host->openDocument(u"https://ditta.it");
    });
    EXPECT_EQ(opened, std::optional<bool>(true));
}

// Only the explorer's command line has a program here: another of the same
// length before its path starts nothing.
TEST_F(SystemInfo, OtherProgramsDoNotStart) {
    use({});
    const fs::path bin = base_ / "bin";
    MakeOpener(bin);
    std::unique_ptr<Host> host = MakePosixHost(settings_);
    OnPath path(bin.string() + ":/usr/bin:/bin");
    const std::optional<bool> started = AnsweredInChild([&] { return host->startProgram(u"NOTEPAD  C:\\Data"); });
    EXPECT_EQ(started, std::optional<bool>(false));
}

// The system host's clock is local time: within the zones' offsets (at most
// 14 hours) of the system's UTC time, so on the right day, month and year.
TEST_F(SystemInfo, HostClockIsTheSystemsTime) {
    const double utcDays = static_cast<double>(std::time(nullptr)) / 86400.0 + 25569.0;  // 1970-01-01 is day 25569
    const Date now = MakePosixHost(settings_)->now();
    EXPECT_NEAR(now.serial, utcDays, 15.0 / 24.0);
}

// A machine with a route out (the kernel's choice of source address for a
// distant one; no packet is sent) has addresses to report, its own.
TEST_F(SystemInfo, MachineOnTheNetworkHasAnAddress) {
    const int s = socket(AF_INET, SOCK_DGRAM, 0);
    sockaddr_in far{};
    far.sin_family = AF_INET;
    far.sin_port = htons(9);
    inet_pton(AF_INET, "198.51.100.1", &far.sin_addr);
    sockaddr_in local{};
    socklen_t size = sizeof local;
    const bool routed = s >= 0 && connect(s, reinterpret_cast<const sockaddr*>(&far), sizeof far) == 0 &&
                        getsockname(s, reinterpret_cast<sockaddr*>(&local), &size) == 0;
    if (s >= 0) close(s);
    const auto* b = reinterpret_cast<const unsigned char*>(&local.sin_addr.s_addr);
    if (!routed || !IsRoutableLocal(b[0], b[1])) GTEST_SKIP() << "no route out of this machine";
    use({});
    const String all = k.SaveIP2Str();
    EXPECT_NE(all, u"");
    EXPECT_EQ(k.GetProviderType(), u"LAN");
    // Each line is an address of this machine (one it can bind to), none the loopback.
    for (std::size_t start = 0; start < all.size();) {
        std::size_t end = all.find(u"\r\n", start);
        if (end == String::npos) end = all.size();
        const std::string line = ToUtf8(all.substr(start, end - start));
        start = end + 2;
        sockaddr_in own{};
        own.sin_family = AF_INET;
        ASSERT_EQ(inet_pton(AF_INET, line.c_str(), &own.sin_addr), 1) << line;
        EXPECT_NE(line.rfind("127.", 0), 0u) << line;
        const int t = socket(AF_INET, SOCK_DGRAM, 0);
        EXPECT_EQ(bind(t, reinterpret_cast<const sockaddr*>(&own), sizeof own), 0) << line;
        close(t);
    }
}

// Unpinned, the computer's name is the host name up to its first dot.
TEST_F(SystemInfo, ComputerNameIsTheHostNameUpToItsFirstDot) {
    use({});
    utsname u{};
    ASSERT_EQ(uname(&u), 0);
    const std::string host = u.nodename;
    EXPECT_EQ(k.GetPCName(), FromUtf8(host.substr(0, host.find('.'))));
}

// The user's name is the password database's for the effective user, whatever
// USER says; for a user the database does not know, USER, or "" without it.
TEST_F(SystemInfo, UserNameFromThePasswordDatabaseElseUSER) {
    use({});
    const passwd* me = getpwuid(geteuid());
    ASSERT_NE(me, nullptr);
    const String login = FromUtf8(me->pw_name);
    const char* old = getenv("USER");
    const std::string saved = old ? old : "";
    setenv("USER", "mario", 1);
    const String name = k.GetWinUserName();
    const uid_t stranger = 54321;
    const bool canBeStranger = geteuid() == 0 && getpwuid(stranger) == nullptr;
    std::optional<bool> unknown;
    if (canBeStranger)
        unknown = AnsweredInChild([&] {
            if (setuid(stranger) != 0 || k.GetWinUserName() != u"mario") return false;
            unsetenv("USER");
            return k.GetWinUserName() == u"";
        });
    if (old) setenv("USER", saved.c_str(), 1); else unsetenv("USER");
    EXPECT_EQ(name, login);
    if (!canBeStranger) GTEST_SKIP() << "only root can become a user the database does not know";
    EXPECT_EQ(unknown, std::optional<bool>(true));
}

// A 32-bit machine (here the kernel's 32-bit personality, which reports
// i686) has a 32-bit system.
TEST_F(SystemInfo, BitnessOfAThirtyTwoBitMachine) {
    use({});
    EXPECT_EQ(AnsweredInChild([&] { return personality(PER_LINUX32) != -1 && k.GetWindowsBit() == 32; }),
              std::optional<bool>(true));
}

// With every number of the host's table taken SaveIP fails, and the host's
// own files stay open.
TEST_F(SystemInfo, SaveIPWithTheTableFullLeavesTheHostsFiles) {
    use({{"ip", "192.168.1.20"}});
    FileTable& table = CurrentPlatform().fileTable();
    for (Long n = FileTable::kFirst; n <= FileTable::kLast; ++n)
        table.open(u"C:\\f" + FromUtf8(std::to_string(n)) + u".txt", FileMode::Output, n);
    EXPECT_FALSE(k.SaveIP(u"C:\\ip.txt"));
    EXPECT_EQ(ErrorOf([&] { table.print(FileTable::kFirst, u"x"); }), 0);
    EXPECT_EQ(ErrorOf([&] { table.print(FileTable::kLast, u"x"); }), 0);
    table.closeAll();
    EXPECT_FALSE(fs::exists(base_ / "c" / "ip.txt"));
}

// The system's machine with what a Windows desktop adds and this platform
// has none of: file associations and a report of the connection.
class WindowsLikeMachine final : public Machine {
public:
    explicit WindowsLikeMachine(const PlatformSettings& s) : real_(MakePosixMachine(s)) {}
    SystemVersion systemVersion() override { return real_->systemVersion(); }
    Integer systemBits() override { return real_->systemBits(); }
    String computerName() override { return real_->computerName(); }
    String userName() override { return real_->userName(); }
    String systemFolder(Long which, const String& user) override { return real_->systemFolder(which, user); }
    std::vector<String> localAddresses() override { return real_->localAddresses(); }
    std::optional<ConnectionState> connection() override { return report; }
    String programFor(const String& extension) override {
        asked.push_back(extension);
        return CaseBlindEqual(extension, u".txt") ? u"C:\\Windows\\notepad.exe" : String();
    }
    bool themeActive() override { return real_->themeActive(); }

    std::optional<ConnectionState> report;
    std::vector<String> asked;

private:
    std::unique_ptr<Machine> real_;
};

class WindowsLikePlatform final : public PosixPlatform {
public:
    explicit WindowsLikePlatform(const PlatformSettings& s) : PosixPlatform(s), machine_(s) {}
    WindowsLikeMachine& machine() override { return machine_; }

private:
    WindowsLikeMachine machine_;
};

// Ext2Pgm asks for the text after the last dot, or all of it; a text with a
// blank or a slash is asked for not at all.
TEST_F(SystemInfo, Ext2PgmAsksForTheExtensionAfterTheLastDot) {
    const auto platform = std::make_shared<WindowsLikePlatform>(settings_);
    InstallPlatform(platform);
    EXPECT_EQ(k.Ext2Pgm(u"a b"), u"");
    EXPECT_EQ(k.Ext2Pgm(u"C:\\x.y\\lettera"), u"");
    EXPECT_TRUE(platform->machine().asked.empty());
    EXPECT_EQ(k.Ext2Pgm(u"C:\\Lettere\\mario.rossi.txt"), u"C:\\Windows\\notepad.exe");
    EXPECT_EQ(k.Ext2Pgm(u".TXT"), u"C:\\Windows\\notepad.exe");
    EXPECT_EQ(k.Ext2Pgm(u" txt "), u"C:\\Windows\\notepad.exe");
    EXPECT_EQ(k.Ext2Pgm(u"lettera.doc"), u"");
}

// The connection report: the first flag that applies, offline before all,
// nothing when not connected.
TEST_F(SystemInfo, ProviderTypeFromTheConnectionReport) {
    const auto platform = std::make_shared<WindowsLikePlatform>(settings_);
    InstallPlatform(platform);
    struct Case {
        bool connected;
        unsigned long flags;
        const char16_t* type;
    };
    for (const Case& c : {Case{true, 0x21, u"OFFLINE"}, Case{false, 0x20, u"OFFLINE"}, Case{false, 0x02, u""},
                          Case{true, 0x03, u"MODEM"}, Case{true, 0x06, u"LAN"}, Case{true, 0x04, u"PROXY"},
                          Case{true, 0x08, u""}}) {
        platform->machine().report = ConnectionState{c.connected, c.flags};
        EXPECT_EQ(k.GetProviderType(), String(c.type)) << c.connected << " " << c.flags;
    }
}

}  // namespace
}  // namespace kiv

namespace kiv {
namespace {

// Gives the loopback, brought up, TEXT as its one address: the kernel's own
// 127.0.0.1 is replaced.
bool LoopbackAt(const char* text) {
    const int s = socket(AF_INET, SOCK_DGRAM, 0);
    if (s < 0) return false;
    ifreq r{};
    std::strcpy(r.ifr_name, "lo");
    bool done = ioctl(s, SIOCGIFFLAGS, &r) == 0;
    r.ifr_flags = static_cast<short>(r.ifr_flags | IFF_UP);
    done = done && ioctl(s, SIOCSIFFLAGS, &r) == 0;
    auto* in = reinterpret_cast<sockaddr_in*>(&r.ifr_addr);
    in->sin_family = AF_INET;
    done = done && inet_pton(AF_INET, text, &in->sin_addr) == 1 && ioctl(s, SIOCSIFADDR, &r) == 0;
    close(s);
    return done;
}

// In a network of its own with the loopback as the one interface: a
// link-local address (169.254/16) is left out, and 169 followed by another
// second number is a machine's address like any other.
TEST_F(SystemInfo, LinkLocalAddressIsLeftOut) {
    use({});
    if (AnsweredInChild([] { return unshare(CLONE_NEWNET) == 0; }) != std::optional<bool>(true))
        GTEST_SKIP() << "no network namespace for this user";
    EXPECT_EQ(AnsweredInChild([&] {
                  return unshare(CLONE_NEWNET) == 0 && LoopbackAt("169.254.1.1") && k.SaveIP2Str() == u"" &&
                         LoopbackAt("169.1.254.1") && k.SaveIP2Str() == u"169.1.254.1";
              }),
              std::optional<bool>(true));
}

}  // namespace
}  // namespace kiv
