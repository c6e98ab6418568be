// The registry operations over a store that cannot be used, and the machine
// facts of the registry trace, pinned and read from the system.
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "frame/cl_kiv.hpp"
#include "frame/platform.hpp"
#include "frame/convert.hpp"
#include "frame/errors.hpp"
#include "frame/strings.hpp"
#include "system/posix/posix_platform.hpp"

namespace kiv {
namespace {

namespace fs = std::filesystem;

class RegistryOperations : public ::testing::Test {
protected:
    void use(std::map<std::string, std::string> pins = {}) {
        PlatformSettings s = PlatformSettings::fromEnvironment();
        s.registryFolder = folder.string();
        s.drives['C'] = (folder / "c").string();
        s.pins = std::move(pins);
        InstallPlatform(std::make_shared<PosixPlatform>(s));
    }
    void SetUp() override {
        std::string pattern = (fs::temp_directory_path() / "kivops-XXXXXX").string();
        folder = mkdtemp(pattern.data());
    }
    void TearDown() override {
        InstallPlatform(MakeSystemPlatform(PlatformSettings::fromEnvironment()));
        fs::remove_all(folder);
    }
    fs::path folder;
    Cl_KIV k;
};

// A damaged hive: every operation gives its neutral result, the file stays.
TEST_F(RegistryOperations, DamagedHiveGivesNeutralResults) {
    const std::string garbage(8192, '\x17');
    std::ofstream(folder / "HKEY_LOCAL_MACHINE.db", std::ios::binary) << garbage;
    use();
    EXPECT_EQ(ToText(k.GetZRReg(Variant(u"A"), Variant(u"B"), u"C", Variant(u"std"))), u"std");
    EXPECT_FALSE(k.SetZRReg(Variant(u"A"), Variant(u"B"), u"C", Variant(u"v"), ZRReg_String));
    EXPECT_EQ(k.SAVERegInt(u"B", u"C", 5, u"A"), 0);
    EXPECT_EQ(k.LOADRegInt(u"B", u"C", 9, u"A"), 9);
    EXPECT_EQ(ToText(k.GetRegistryValue(static_cast<Long>(0x80000002u), u"SOFTWARE", u"x")), u"");
    EXPECT_EQ(k.RegRead(u"HKLM\\SOFTWARE\\x"), u"");
    Long h = 5;
    EXPECT_FALSE(k.RegOpenKey(static_cast<Long>(0x80000002u), u"SOFTWARE", h));
    EXPECT_EQ(h, 0);
    EXPECT_TRUE(k.RegEnumKey(static_cast<Long>(0x80000002u)).isNull());
    std::ifstream in(folder / "HKEY_LOCAL_MACHINE.db", std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), garbage);
    // The user's hive is another file and works.
    Long u = 0;
    EXPECT_TRUE(k.RegCreateKey(static_cast<Long>(0x80000001u), u"Software", u"Mio", u));
    EXPECT_TRUE(k.RegCloseKey(u));
}

TEST_F(RegistryOperations, PinnedSystemFacts) {
    use({{"winver", "Windows 10 10.0.19045"}, {"winbit", "64"}});
    EXPECT_EQ(k.GetWindowsVer(), u"Windows 10 10.0.19045");
    EXPECT_EQ(k.GetWindowsBit(), 64);
    use({{"winver", ""}, {"winbit", "32"}});
    EXPECT_EQ(k.GetWindowsVer(), u"");
    EXPECT_EQ(k.GetWindowsBit(), 32);
    // A bitness that is no whole number gives the neutral 0.
    for (const char* bad : {"abc", "64.5", "", " 64", "99999"}) {
        use({{"winbit", bad}});
        EXPECT_EQ(k.GetWindowsBit(), 0) << bad;
    }
}

TEST_F(RegistryOperations, SystemFactsFromTheMachine) {
    use();
    const String version = k.GetWindowsVer();
    EXPECT_EQ(version.substr(0, 6), u"Linux ");
    EXPECT_GT(version.size(), 6u);
    const Integer bits = k.GetWindowsBit();
    EXPECT_TRUE(bits == 32 || bits == 64);
    EXPECT_EQ(bits, sizeof(void*) == 8 ? 64 : bits);  // a 64-bit process runs on a 64-bit system
}

// The user's hive is named by the process's effective user, whatever $USER says.
TEST_F(RegistryOperations, UserHiveIsTheEffectiveUsers) {
    const char* old = std::getenv("USER");
    const std::string saved = old != nullptr ? old : "";
    setenv("USER", "qualcun-altro", 1);
    use();
    Long u = 0;
    const bool made = k.RegCreateKey(static_cast<Long>(0x80000001u), u"Software", u"Mio", u);
    k.RegCloseKey(u);
    if (old != nullptr) setenv("USER", saved.c_str(), 1);
    else unsetenv("USER");
    ASSERT_TRUE(made);
    EXPECT_TRUE(fs::exists(folder / ("HKEY_CURRENT_USER-" + std::string(getpwuid(geteuid())->pw_name) + ".db")));
}

// A user without an entry in the user database: $USER names the hive, and
// "default" when $USER is empty. Checked in a child that takes such a user id.
TEST_F(RegistryOperations, UserHiveWithoutAUserEntry) {
    if (geteuid() != 0) GTEST_SKIP() << "needs root to take a user id without an entry";
    uid_t uid = 54321;
    while (getpwuid(uid) != nullptr) ++uid;
    fs::permissions(folder, fs::perms::all);
    const pid_t child = fork();
    if (child == 0) {
        if (setuid(uid) != 0) _exit(90);
        int failures = 0;
        for (const char* user : {"ospite", ""}) {
            setenv("USER", user, 1);
            PlatformSettings s;
            s.registryFolder = folder.string();
            Long h = 0;
            failures += MakePosixRegistryStore(s)->createKey(reg::kCurrentUser, "Software\\Mio", h) != reg::kSuccess;
        }
        failures += !fs::exists(folder / "HKEY_CURRENT_USER-ospite.db");
        failures += !fs::exists(folder / "HKEY_CURRENT_USER-default.db");
        _exit(failures);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

// A REG_DWORD another program wrote with more than 4 bytes: the reader's
// hexadecimal literal then has 9 digits, too many for a Long.
TEST_F(RegistryOperations, LongDwordOverflowsTheReader) {
    use();
    Long h = 0;
    ASSERT_TRUE(k.RegCreateKey(static_cast<Long>(0x80000001u), u"Software", u"Lungo", h));
    ASSERT_EQ(CurrentPlatform().registry().setValue(h, "D", reg::kRegDword, std::string("\x10\x10\x10\x10\x01", 5)),
              reg::kSuccess);
    k.RegCloseKey(h);
    try {
        k.GetRegistryValue(static_cast<Long>(0x80000001u), u"Software\\Lungo", u"D");
        ADD_FAILURE() << "no overflow";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), 6);
    }
}

}  // namespace
}  // namespace kiv
