// The component object itself: creation, its slots and its private helper.
#include <gtest/gtest.h>

#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"
#include "frame/platform.hpp"

#include <unistd.h>

#include <filesystem>

namespace kiv {

struct ClKivPrivate {
    static String StripNuls(Cl_KIV& k, const Variant& text) { return k.StripNuls(text); }
    static Long LastRegResult(const Cl_KIV& k) { return k.lastRegResult_; }
    static void ReadRegistryValue(Cl_KIV& k, Long root, const String& key, const String& name, String& value,
                                  Boolean& ok) {
        k.ReadRegistryValue(root, key, name, value, ok);
    }
};

namespace {

TEST(Component, FreshObjectHasEmptySlots) {
    Cl_KIV k;
    EXPECT_EQ(k.DlK_DatMask, nullptr);
    EXPECT_EQ(k.DlK_TimMask, nullptr);
    EXPECT_EQ(k.typeName(), "Cl_KIV");
}

TEST(Component, NibbleTableIsFilledAtCreation) {
    Cl_KIV k;
    EXPECT_EQ(k.Nibble(0), u"0000");
    EXPECT_EQ(k.Nibble(1), u"0000");
    EXPECT_EQ(k.Nibble(2), u"0001");
    EXPECT_EQ(k.Nibble(11), u"1010");
    EXPECT_EQ(k.Nibble(16), u"1111");
    EXPECT_THROW(k.Nibble(17), RuntimeError);
    EXPECT_THROW(k.Nibble(-1), RuntimeError);
}

TEST(Component, StripNulsDropsTheCharacterAfterEachNul) {
    Cl_KIV k;
    const String withNul = String(u"AB") + u'\0' + u"CD";
    EXPECT_EQ(ClKivPrivate::StripNuls(k, Variant(withNul)), u"ABD");
    EXPECT_EQ(ClKivPrivate::StripNuls(k, Variant(String(u"AB") + u'\0')), u"AB");
    EXPECT_EQ(ClKivPrivate::StripNuls(k, Variant(String(u"\0\0X", 3))), u"X");
    EXPECT_EQ(ClKivPrivate::StripNuls(k, Variant(u"")), u"");
}

TEST(Component, EnvironmentPinsFactsAndAnEmptyVariablePinsEmpty) {
    setenv("KIV_PIN_PCNAME", "UFFICIO9", 1);
    setenv("KIV_PIN_IP", "", 1);
    unsetenv("KIV_PIN_USERNAME");
    const PlatformSettings s = PlatformSettings::fromEnvironment();
    unsetenv("KIV_PIN_PCNAME");
    unsetenv("KIV_PIN_IP");
    EXPECT_EQ(s.pins.at("pcname"), "UFFICIO9");
    EXPECT_EQ(s.pins.at("ip"), "");
    EXPECT_FALSE(s.pins.contains("username"));
}

// KIV_DRIVE_A to KIV_DRIVE_Z map drives, C: has a default folder when unset;
// KIV_TEXT_UTF8=1 makes text files UTF-8.
TEST(Component, EnvironmentMapsDrivesUpToZ) {
    const char* old = getenv("KIV_DRIVE_C");
    const std::string saved = old ? old : "";
    setenv("KIV_DRIVE_C", "/tmp/given-c", 1);
    setenv("KIV_DRIVE_Z", "/tmp/given-z", 1);
    setenv("KIV_TEXT_UTF8", "1", 1);
    const PlatformSettings given = PlatformSettings::fromEnvironment();
    unsetenv("KIV_DRIVE_C");
    unsetenv("KIV_DRIVE_Z");
    unsetenv("KIV_TEXT_UTF8");
    const PlatformSettings unset = PlatformSettings::fromEnvironment();
    if (old) setenv("KIV_DRIVE_C", saved.c_str(), 1);
    EXPECT_EQ(given.drives.at('C'), "/tmp/given-c");
    EXPECT_EQ(given.drives.at('Z'), "/tmp/given-z");
    EXPECT_EQ(unset.drives.at('C'), PlatformSettings::defaultDriveC());
    EXPECT_TRUE(given.utf8Files);
}

// Each handle wrapper keeps the platform's code of its call.
TEST(Component, RegistryWrappersKeepTheLastResult) {
    std::string pattern = (std::filesystem::temp_directory_path() / "kivlast-XXXXXX").string();
    const std::filesystem::path folder = mkdtemp(pattern.data());
    PlatformSettings s = PlatformSettings::fromEnvironment();
    s.registryFolder = folder.string();
    InstallPlatform(MakeSystemPlatform(s));
    Cl_KIV k;
    const Long hklm = static_cast<Long>(0x80000002u);
    Long h = 0;
    EXPECT_FALSE(k.RegOpenKey(hklm, u"SOFTWARE\\Manca", h));
    EXPECT_EQ(ClKivPrivate::LastRegResult(k), 2);
    EXPECT_TRUE(k.RegCreateKey(hklm, u"SOFTWARE", u"X", h));
    EXPECT_EQ(ClKivPrivate::LastRegResult(k), 0);
    EXPECT_TRUE(k.RegSetStringValue(h, u"v", u"1"));
    EXPECT_TRUE(k.RegCloseKey(h));
    EXPECT_FALSE(k.RegCloseKey(h));
    EXPECT_EQ(ClKivPrivate::LastRegResult(k), 6);
    // The private reader: found, and missing.
    String value;
    Boolean ok = false;
    ClKivPrivate::ReadRegistryValue(k, hklm, u"software\\x", u"V", value, ok);
    EXPECT_TRUE(ok);
    EXPECT_EQ(value, u"1");
    ClKivPrivate::ReadRegistryValue(k, hklm, u"software\\x", u"W", value, ok);
    EXPECT_FALSE(ok);
    EXPECT_EQ(value, u"");
    InstallPlatform(MakeSystemPlatform(PlatformSettings::fromEnvironment()));
    std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace kiv
