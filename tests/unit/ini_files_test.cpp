// INI settings on real files in a temporary drive C:: the operations' typed
// conversions and defaults, bad input, and what a kill or a second writer
// may do to a file (real child processes, killed with SIGKILL).
#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <thread>

#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"
#include "frame/platform.hpp"
#include "system/posix/posix_platform.hpp"
#include "system/posix/posix_profile_files.hpp"

namespace kiv {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

std::string ReadBytes(const fs::path& p) {
    std::ifstream in(p, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

void WriteBytes(const fs::path& p, std::string_view bytes) {
    std::ofstream out(p, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

String Text(std::string_view ascii) { return String(ascii.begin(), ascii.end()); }

// A stand-in for the host's check box: one late-bound property, "Value".
class CheckBox final : public Dispatchable {
public:
    explicit CheckBox(Variant value, bool hasValue = true) : value_(std::move(value)), hasValue_(hasValue) {}
    std::string typeName() const override { return "CheckBox"; }
    Variant invoke(std::string_view member, InvokeKind kind, Arguments&) override {
        if (!hasValue_ || member != "Value" || kind != InvokeKind::PropertyGet) Raise(kNotSupported);
        return value_;
    }

private:
    Variant value_;
    bool hasValue_;
};

// A drive C: of our own, with its Windows folder, for each test.
class IniFiles : public ::testing::Test {
protected:
    virtual fs::path base() const { return fs::temp_directory_path(); }

    void SetUp() override {
        drive = base() /
                ("kiv_ini_" + std::to_string(::getpid()) + "_" +
                 ::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(drive);
        fs::create_directories(drive / "Windows");
        PlatformSettings settings;
        settings.drives['C'] = drive.string();
        InstallPlatform(MakeSystemPlatform(settings));
    }
    void TearDown() override {
        InstallPlatform(MakeSystemPlatform(PlatformSettings::fromEnvironment()));
        std::error_code ec;
        fs::permissions(drive / "ro.ini", fs::perms::owner_all, ec);
        fs::remove_all(drive, ec);
    }

    fs::path drive;
    Cl_KIV kiv;
    const String file = u"C:\\x.ini";
};

TEST_F(IniFiles, TypedWritersWriteTheLocaleText) {
    EXPECT_EQ(kiv.SAVEPrivateDbl(u"S", u"D", 3.5, file), 1);
    EXPECT_EQ(kiv.SAVEPrivateInt(u"S", u"I", -5, file), 1);
    EXPECT_EQ(kiv.WritePrivateProfileInt(u"S", u"W", Variant(u"abc"), file), 1);
    EXPECT_EQ(kiv.WritePrivateProfileInt(u"S", u"F", Variant(12.5), file), 1);
    EXPECT_EQ(kiv.WritePrivateProfileInt(u"S", u"L", Variant(Long{12}), file), 1);
    EXPECT_EQ(kiv.SAVEPrivateDate(u"S", u"T", u"29/02/2024", file), 1);
    EXPECT_EQ(ReadBytes(drive / "x.ini"), "[S]\r\nD=3,5\r\nI=-5\r\nW=0\r\nF=12,5\r\nL=12\r\nT=29/02/2024\r\n");
    EXPECT_EQ(kiv.LOADPrivateDbl(u"S", u"D", 0, file), 3.5);
    EXPECT_EQ(kiv.LOADPrivateInt(u"S", u"I", 0, file), -5);
    // The date text is not a serial: the asymmetry of the pair.
    EXPECT_EQ(kiv.LOADPrivateDate(u"S", u"T", 46341, file), 0);
}

TEST_F(IniFiles, CheckBoxStateThroughItsValueProperty) {
    EXPECT_EQ(kiv.SAVEPrivateChk(u"S", u"On", std::make_shared<CheckBox>(Variant(Integer{1})), file), 0);
    EXPECT_EQ(kiv.SAVEPrivateChk(u"S", u"Gray", std::make_shared<CheckBox>(Variant(Long{2})), file), 0);
    EXPECT_EQ(ReadBytes(drive / "x.ini"), "[S]\r\nOn=1\r\nGray=2\r\n");
    EXPECT_EQ(kiv.LOADPrivateChk(u"S", u"On", 0, file), 1);
    EXPECT_EQ(kiv.LOADPrivateChk(u"S", u"Gray", 0, file), 2);
    // The caller's default is ignored: a missing key is unchecked.
    EXPECT_EQ(kiv.LOADPrivateChk(u"S", u"Absent", 1, file), 0);
    // A control without Value, or none at all, writes nothing and raises nothing.
    EXPECT_EQ(kiv.SAVEPrivateChk(u"S", u"None", std::make_shared<CheckBox>(Variant(), false), file), 0);
    EXPECT_EQ(kiv.SAVEPrivateChk(u"S", u"None", nullptr, file), 0);
    EXPECT_EQ(kiv.LOADPrivateString(u"S", u"None", u"absent", file), u"absent");
}

TEST_F(IniFiles, ANameWithoutAFolderIsAFileOfTheWindowsFolder) {
    EXPECT_EQ(kiv.SAVEPrivateString(u"S", u"K", u"v", u"app.ini"), 1);
    EXPECT_EQ(ReadBytes(drive / "Windows" / "app.ini"), "[S]\r\nK=v\r\n");
    EXPECT_EQ(kiv.LOADPrivateString(u"S", u"K", u"", u"app.ini"), u"v");
    // As a C string: the name ends at its first NUL.
    EXPECT_EQ(kiv.LOADPrivateString(u"S", u"K", u"", String(u"app.ini\0junk", 12)), u"v");
    // Without a Windows folder the platform cannot write there.
    fs::remove_all(drive / "Windows");
    EXPECT_EQ(kiv.SAVEPrivateString(u"S", u"K", u"v", u"app.ini"), 0);
    EXPECT_EQ(kiv.LOADPrivateString(u"S", u"K", u"std", u"app.ini"), u"std");
    EXPECT_FALSE(fs::exists(drive / "Windows"));
}

TEST_F(IniFiles, WhatCannotBeWrittenIsZeroAndLeavesNoTrace) {
    EXPECT_EQ(kiv.SAVEPrivateString(u"S", u"K", u"v", u"C:\\nope\\x.ini"), 0);
    EXPECT_FALSE(fs::exists(drive / "nope"));
    EXPECT_EQ(kiv.SAVEPrivateString(u"S", u"K", u"v", u"Q:\\x.ini"), 0);
    EXPECT_EQ(kiv.LOADPrivateString(u"S", u"K", u"std", u"Q:\\x.ini"), u"std");
    EXPECT_EQ(kiv.SAVEPrivateString(u"S", u"K", u"v", u""), 0);
    EXPECT_EQ(kiv.SAVEPrivateString(u"S", u"K", u"v", u"C:\\"), 0);

    const std::string before = "[S]\r\nK=old\r\n";
    WriteBytes(drive / "x.ini", before);
    EXPECT_EQ(kiv.SAVEPrivateString(u"S", u"K", u"a\r\n[T]", file), 0);
    EXPECT_EQ(kiv.SAVEPrivateString(u"S", u"K\nX", u"v", file), 0);
    EXPECT_EQ(kiv.SAVEPrivateString(u"S\r[T]", u"K", u"v", file), 0);
    EXPECT_EQ(ReadBytes(drive / "x.ini"), before);
    // A refused write to a missing file creates none.
    EXPECT_EQ(kiv.SAVEPrivateString(u"S", u"K", u"a\nb", u"C:\\new.ini"), 0);
    EXPECT_EQ(kiv.SAVEPrivateDate(u"S", u"K", u"31/02/2024", u"C:\\new.ini"), 0);
    EXPECT_FALSE(fs::exists(drive / "new.ini"));

    // Read-only holds for every user, as the attribute does on Windows.
    WriteBytes(drive / "ro.ini", before);
    fs::permissions(drive / "ro.ini", fs::perms::owner_read | fs::perms::group_read);
    EXPECT_EQ(kiv.SAVEPrivateString(u"S", u"K", u"new", u"C:\\ro.ini"), 0);
    EXPECT_EQ(ReadBytes(drive / "ro.ini"), before);
    EXPECT_EQ(kiv.LOADPrivateString(u"S", u"K", u"", u"C:\\ro.ini"), u"old");
}

TEST_F(IniFiles, HostileFilesReadAndKeepTheirBytes) {
    std::mt19937 random(20260315);
    std::string noise(256 * 1024, '\0');
    for (char& c : noise) c = static_cast<char>(random());
    const std::string nuls = "[S]\r\nA=1\0\0x\r\n\0\0\0\r\nK=\0v\r\n"s;
    std::string big;
    while (big.size() < 10 * 1024 * 1024) big += "[Sec" + std::to_string(big.size()) + "]\r\nKey=value ; comment\r\n";
    const std::string longLine = "[S]\r\nL=" + std::string(1024 * 1024, 'z') + "\r\n";

    for (const std::string& bytes : {noise, nuls, big, longLine}) {
        WriteBytes(drive / "x.ini", bytes);
        kiv.LOADPrivateString(u"S", u"K", u"", file);
        EXPECT_EQ(kiv.LOADPrivateString(u"kiv test", u"K", u"std", file), u"std");
        EXPECT_EQ(kiv.SAVEPrivateString(u"kiv test", u"K", u"v", file), 1);
        const std::string after = ReadBytes(drive / "x.ini");
        EXPECT_EQ(after.substr(0, bytes.size()), bytes);
        EXPECT_EQ(kiv.LOADPrivateString(u"kiv test", u"K", u"std", file), u"v");
    }
    WriteBytes(drive / "x.ini", nuls);
    EXPECT_EQ(kiv.LOADPrivateString(u"S", u"K", u"", file), String(u"\0v", 2));
    WriteBytes(drive / "x.ini", longLine);
    EXPECT_EQ(kiv.LOADPrivateString(u"S", u"L", u"", file), String(1023, u'z'));
}

TEST_F(IniFiles, AWriteKeepsTheFilesModeAndLinksAndTakesOverALeftTemporary) {
    WriteBytes(drive / "x.ini", "[S]\r\n");
    fs::permissions(drive / "x.ini", fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    WriteBytes(TemporaryBeside(drive / "x.ini"), "half a file");
    fs::create_symlink(drive / "x.ini", drive / "link.ini");
    EXPECT_EQ(kiv.SAVEPrivateString(u"S", u"K", u"v", u"C:\\link.ini"), 1);
    EXPECT_TRUE(fs::is_symlink(drive / "link.ini"));
    EXPECT_EQ(ReadBytes(drive / "x.ini"), "[S]\r\nK=v\r\n");
    EXPECT_EQ(fs::status(drive / "x.ini").permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    EXPECT_FALSE(fs::exists(TemporaryBeside(drive / "x.ini")));
}

// ---- crashes and a second writer ----

std::string KeyOf(long i) { return "K" + std::to_string(i % 1000); }

// Writes key i % 1000 = i for i from `first` on, reporting each i whose
// write returned; never returns.
[[noreturn]] void WriteForever(long first, const String& file, int report) {
    Cl_KIV kiv;
    for (long i = first;; ++i) {
        if (kiv.SAVEPrivateInt(u"S", Text(KeyOf(i)), static_cast<Long>(i), file) != 1) ::_exit(3);
        if (::write(report, &i, sizeof i) != sizeof i) ::_exit(4);
    }
}

// Many writers' lives in a few seconds: on a memory file system, where a
// flush costs nothing (on this machine's disk it costs some 15 ms). What a
// kill or a second writer can do to a file does not depend on the disk.
class IniProcesses : public IniFiles {
protected:
    fs::path base() const override { return fs::is_directory("/dev/shm") ? fs::path("/dev/shm") : IniFiles::base(); }
};

TEST_F(IniProcesses, AKillNeverLosesOrTearsASetting) {
    std::mt19937 random(7);
    long confirmed = -1;
    for (int kill = 0; kill < 50; ++kill) {
        int report[2];
        ASSERT_EQ(::pipe(report), 0);
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            ::close(report[0]);
            WriteForever(confirmed + 1, file, report[1]);
        }
        ::close(report[1]);
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 20000));
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the writer stopped by itself: " << WEXITSTATUS(status);
        long i;
        while (::read(report[0], &i, sizeof i) == sizeof i) confirmed = i;
        ::close(report[0]);

        // Every returned write is there; the one under way may be either.
        for (long j = std::max(0L, confirmed - 999); j <= confirmed; ++j) {
            const Long got = kiv.LOADPrivateInt(u"S", Text(KeyOf(j)), -1, file);
            if (j % 1000 == (confirmed + 1) % 1000 && got == confirmed + 1) continue;
            ASSERT_EQ(got, j) << "kill " << kill << ", key " << KeyOf(j);
        }
        // A temporary left by the kill goes with the next write.
        if (fs::exists(TemporaryBeside(drive / "x.ini"))) {
            ASSERT_EQ(kiv.SAVEPrivateString(u"Check", u"K", Text(std::to_string(kill)), file), 1);
            EXPECT_FALSE(fs::exists(TemporaryBeside(drive / "x.ini")));
        }
    }
    EXPECT_GT(confirmed, 1000) << "too few writes between the kills to prove anything";
}

TEST_F(IniProcesses, TwoWritersAtOnceLoseNothing) {
    int go[2];
    ASSERT_EQ(::pipe(go), 0);
    pid_t children[2];
    for (int c = 0; c < 2; ++c) {
        children[c] = ::fork();
        ASSERT_GE(children[c], 0);
        if (children[c] == 0) {
            ::close(go[1]);
            char start;
            if (::read(go[0], &start, 1) != 0) ::_exit(5);
            Cl_KIV kiv;
            for (int i = 0; i < 500; ++i)
                if (kiv.SAVEPrivateInt(u"S", Text((c == 0 ? "A" : "B") + std::to_string(i)), i, file) != 1) ::_exit(6);
            ::_exit(0);
        }
    }
    ::close(go[0]);
    ::close(go[1]);  // both start at the same moment
    for (pid_t child : children) {
        int status = 0;
        ::waitpid(child, &status, 0);
        ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    for (int i = 0; i < 500; ++i) {
        EXPECT_EQ(kiv.LOADPrivateInt(u"S", Text("A" + std::to_string(i)), -1, file), i);
        EXPECT_EQ(kiv.LOADPrivateInt(u"S", Text("B" + std::to_string(i)), -1, file), i);
    }
}

TEST_F(IniFiles, AFileReadableByAllButWritableByNoneIsReadOnly) {
    // r--r--r--: the read bits and the folder's write right do not make it writable.
    const std::string before = "[S]\r\nK=old\r\n";
    WriteBytes(drive / "ro.ini", before);
    fs::permissions(drive / "ro.ini", fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    EXPECT_EQ(kiv.SAVEPrivateString(u"S", u"K", u"new", u"C:\\ro.ini"), 0);
    EXPECT_EQ(ReadBytes(drive / "ro.ini"), before);
}

// A host without standard input: descriptor 0 is the first the system hands
// out, and a write must not keep it (nor the lock it holds).
TEST_F(IniFiles, AHostWithoutStandardInputGetsDescriptorZeroBack) {
    const int saved = ::dup(0);
    ASSERT_GE(saved, 0);
    ::close(0);
    const auto zeroFree = [] { return ::fcntl(0, F_GETFD) == -1; };
    const Long created = kiv.SAVEPrivateString(u"S", u"K", u"v", file);
    const bool freeAfterCreate = zeroFree();
    errno = ENOENT;  // left by any lookup of the host that found nothing
    const Long changed = kiv.SAVEPrivateString(u"S", u"K", u"w", file);
    const bool freeAfterChange = zeroFree();
    const String read = kiv.LOADPrivateString(u"S", u"K", u"", file);
    const bool freeAfterRead = zeroFree();
    ::dup2(saved, 0);
    ::close(saved);
    EXPECT_EQ(created, 1);
    EXPECT_TRUE(freeAfterCreate);
    EXPECT_EQ(changed, 1);
    EXPECT_TRUE(freeAfterChange);
    EXPECT_EQ(read, u"w");
    EXPECT_TRUE(freeAfterRead);
}

// errno is left at EINTR by any call of the host that a signal interrupted;
// a read must go by what read() returned, not by a stale errno.
TEST_F(IniFiles, AStaleInterruptionLeftByTheHostDoesNotDisturbARead) {
    WriteBytes(drive / "x.ini", "[S]\r\nK=v\r\n");
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        ::alarm(5);  // a read that never ends is a failure, not a hung test
        errno = EINTR;
        const bool read = kiv.LOADPrivateString(u"S", u"K", u"", file) == u"v";
        errno = EINTR;
        const bool written = kiv.SAVEPrivateString(u"S", u"K", u"w", file) == 1;
        ::_exit(read && written ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_EQ(ReadBytes(drive / "x.ini"), "[S]\r\nK=w\r\n");
}

// A writer that waited for the lock while another replaced the file writes
// into the file now at the name, so the other's setting stays.
TEST_F(IniFiles, AWriterThatWaitedWritesIntoTheFileThatReplacedTheOneItOpened) {
    const fs::path path = drive / "x.ini";
    WriteBytes(path, "[S]\r\nA=1\r\n");
    const fs::path real = fs::canonical(path);
    const int holder = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_GE(holder, 0);
    ASSERT_EQ(::flock(holder, LOCK_EX), 0);
    Long result = -1;
    std::thread writer([&] { result = kiv.SAVEPrivateString(u"S", u"B", u"2", file); });
    // Wait until the writer has opened the file too; it then waits for our lock.
    const auto opened = [&] {
        int count = 0;
        std::error_code ec;
        for (const auto& fd : fs::directory_iterator("/proc/self/fd", ec))
            if (fs::read_symlink(fd.path(), ec) == real) ++count;
        return count >= 2;
    };
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!opened() && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    WriteBytes(drive / "other", "[S]\r\nA=1\r\nC=3\r\n");
    fs::rename(drive / "other", path);
    ::flock(holder, LOCK_UN);
    ::close(holder);
    writer.join();
    EXPECT_EQ(result, 1);
    EXPECT_EQ(ReadBytes(path), "[S]\r\nA=1\r\nC=3\r\nB=2\r\n");
}

// Read-only is a file with no write bit at all; one that others may write
// is not (only the superuser can open it for writing here).
TEST_F(IniFiles, AFileThatOnlyOthersMayWriteIsNotReadOnly) {
    if (::geteuid() != 0) GTEST_SKIP() << "needs the superuser to open a file its owner may not write";
    WriteBytes(drive / "x.ini", "[S]\r\n");
    fs::permissions(drive / "x.ini", fs::perms::owner_read | fs::perms::group_read | fs::perms::others_write);
    EXPECT_EQ(kiv.SAVEPrivateString(u"S", u"K", u"v", file), 1);
    EXPECT_EQ(ReadBytes(drive / "x.ini"), "[S]\r\nK=v\r\n");
}

// The host's own descriptors stay its own: standard input is open before a
// write and after it, whether the write is done or cannot open its file.
TEST_F(IniFiles, AWriteLeavesTheHostsStandardInputOpen) {
    using Write = std::pair<String, Long>;  // the file, and what the write answers
    for (const auto& [name, expected] : {Write{file, 1}, Write{u"C:\\nope\\x.ini", 0}}) {
        const int saved = ::dup(0);
        const int null = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
        ASSERT_GE(null, 0);
        ::dup2(null, 0);
        ::close(null);
        const Long written = kiv.SAVEPrivateString(u"S", u"K", u"v", name);
        const bool open = ::fcntl(0, F_GETFD) != -1;
        if (saved >= 0) {
            ::dup2(saved, 0);
            ::close(saved);
        } else {
            ::close(0);
        }
        EXPECT_EQ(written, expected);
        EXPECT_TRUE(open);
    }
}

// A write that cannot complete (here the file-size limit stops it half-way)
// answers 0 and leaves the file as it was, without a temporary beside it.
TEST_F(IniFiles, AWriteStoppedHalfWayLeavesTheFileWhole) {
    const std::string before = "[S]\r\nK=old\r\n";
    WriteBytes(drive / "x.ini", before);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        ::signal(SIGXFSZ, SIG_IGN);
        const struct rlimit limit {8, 8};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        ::_exit(kiv.SAVEPrivateString(u"S", u"K", u"new", file) == 0 ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_EQ(ReadBytes(drive / "x.ini"), before);
    EXPECT_FALSE(fs::exists(TemporaryBeside(drive / "x.ini")));
}

// Without standard input the file made only to lock a refused write is
// descriptor 0, and it goes again all the same.
TEST_F(IniFiles, ARefusedWriteWithoutStandardInputLeavesNoFile) {
    const int saved = ::dup(0);
    ASSERT_GE(saved, 0);
    ::close(0);
    const Long written = kiv.SAVEPrivateString(u"S", u"K", u"a\nb", u"C:\\new.ini");
    ::dup2(saved, 0);
    ::close(saved);
    EXPECT_EQ(written, 0);
    EXPECT_FALSE(fs::exists(drive / "new.ini"));
}

// Two characters ending in ":" name a drive's folder, not a file of the
// Windows folder; without a drive letter that is a file of the current folder.
TEST_F(IniFiles, ATwoCharacterNameWithAColonIsNotAFileOfTheWindowsFolder) {
    const fs::path before = fs::current_path();
    fs::current_path(drive);
    const Long written = kiv.SAVEPrivateString(u"S", u"K", u"v", u"1:");
    fs::current_path(before);
    EXPECT_EQ(written, 1);
    EXPECT_EQ(ReadBytes(drive / "1:"), "[S]\r\nK=v\r\n");
}

// A new file gets the mode of every new file: read and write for all, less
// the umask.
TEST_F(IniFiles, ANewFileGetsTheModeOfEveryNewFile) {
    const mode_t mask = ::umask(022);
    ::umask(mask);
    ASSERT_EQ(kiv.SAVEPrivateString(u"S", u"K", u"v", file), 1);
    EXPECT_EQ(static_cast<mode_t>(fs::status(drive / "x.ini").permissions()), 0666 & ~mask);
}

// A signal that interrupts the wait for another writer's lock is no failure:
// the writer waits on and writes.
TEST_F(IniFiles, ASignalWhileWaitingForTheLockIsNoFailure) {
    const fs::path path = drive / "x.ini";
    WriteBytes(path, "[S]\r\n");
    const int holder = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_GE(holder, 0);
    ASSERT_EQ(::flock(holder, LOCK_EX), 0);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        ::close(holder);
        struct sigaction action {};
        action.sa_handler = [](int) {};  // no SA_RESTART: the wait ends with EINTR
        ::sigaction(SIGUSR1, &action, nullptr);
        ::alarm(10);
        ::_exit(kiv.SAVEPrivateString(u"S", u"K", u"v", file) == 1 ? 0 : 1);
    }
    // Signal the child once it waits in flock.
    const std::string inFlock = std::to_string(SYS_flock) + " ";
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (std::chrono::steady_clock::now() < deadline) {
        std::ifstream call("/proc/" + std::to_string(child) + "/syscall");
        std::string line;
        std::getline(call, line);
        if (line.rfind(inFlock, 0) == 0) break;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    ::kill(child, SIGUSR1);
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    ::flock(holder, LOCK_UN);
    ::close(holder);
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_EQ(ReadBytes(path), "[S]\r\nK=v\r\n");
}

}  // namespace
}  // namespace kiv
