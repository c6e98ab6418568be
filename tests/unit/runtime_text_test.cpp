#include <gtest/gtest.h>

#include "frame/code_page.hpp"
#include "frame/strings.hpp"
#include "test_support.hpp"

namespace kiv {
namespace {

using kiv::testing::ErrorOf;

TEST(RuntimeCaseFolding, AccentedLettersFoldTogether) {
    EXPECT_EQ(FoldCase(u'A'), u'a');
    EXPECT_EQ(FoldCase(u'['), u'[');
    EXPECT_EQ(FoldCase(u'\u00C8'), u'\u00E8');  // È
    EXPECT_EQ(FoldCase(u'\u0178'), u'\u00FF');  // Ÿ
    EXPECT_EQ(FoldCase(u'\u00D7'), u'\u00D7');  // the multiplication sign is no letter
    EXPECT_TRUE(CaseBlindEqual(u"Perché È", u"PERCHÉ è"));
    EXPECT_FALSE(CaseBlindEqual(u"abc", u"abd"));
    EXPECT_FALSE(CaseBlindEqual(u"abc", u"ab"));
}

TEST(RuntimeCaseFolding, FindIsOneBasedFromStart) {
    EXPECT_EQ(CaseBlindFind(u"Città di CITTÀ", u"città"), 1);
    EXPECT_EQ(CaseBlindFind(u"Città di CITTÀ", u"città", 2), 10);
    EXPECT_EQ(CaseBlindFind(u"abc", u"x"), 0);
    EXPECT_EQ(CaseBlindFind(u"abc", u"BCD"), 0);
    EXPECT_EQ(CaseBlindFind(u"ab", u"abc"), 0);  // longer than the text
    EXPECT_EQ(CaseBlindFind(u"abc", u"ABC"), 1);
    EXPECT_EQ(CaseBlindFind(u"abc", u"", 4), 4);
    EXPECT_EQ(CaseBlindFind(u"abc", u"", 5), 0);
    EXPECT_EQ(CaseBlindFind(u"abc", u"a", 5), 0);
    EXPECT_EQ(ErrorOf([] { CaseBlindFind(u"abc", u"a", 0); }), kInvalidCall);
}

// UTF-8 as files and output carry it: every code point comes back, a
// surrogate alone is U+FFFD.
TEST(Utf8, EveryCodePointRoundTrips) {
    for (char32_t cp = 1; cp <= 0x10FFFF; ++cp) {
        if (cp >= 0xD800 && cp <= 0xDFFF) continue;
        const String s = cp < 0x10000 ? String(1, static_cast<char16_t>(cp))
                                      : String{static_cast<char16_t>(0xD800 + ((cp - 0x10000) >> 10)),
                                               static_cast<char16_t>(0xDC00 + ((cp - 0x10000) & 0x3FF))};
        ASSERT_EQ(FromUtf8(ToUtf8(s)), s) << static_cast<unsigned long>(cp);
    }
    EXPECT_EQ(ToUtf8(u"\U0010FFFF\u07FF"), "\xF4\x8F\xBF\xBF\xDF\xBF");
    EXPECT_EQ(ToUtf8(String{u'a', char16_t(0xDC00), char16_t(0xD800), u'b'}), "a\xEF\xBF\xBD\xEF\xBF\xBD" "b");
}

// Every byte comes back from its character; outside 0x80-0x9F it is Latin-1.
TEST(CodePage1252, EveryByteRoundTrips) {
    for (int b = 0; b < 256; ++b) {
        const char16_t c = Cp1252Char(static_cast<unsigned char>(b));
        EXPECT_EQ(static_cast<unsigned char>(Cp1252Byte(c)), b) << b;
        if (b < 0x80 || b >= 0xA0) {
            EXPECT_EQ(c, b);
        }
    }
}

// A byte that cannot start a character, from 0x80 on, is U+FFFD (a file or
// a folder's name that is not UTF-8).
TEST(Utf8, StrayByteIsReplacementCharacter) {
    EXPECT_EQ(FromUtf8("\x7F\x80"), u"\x7F\uFFFD");
}

}  // namespace
}  // namespace kiv
