#include <gtest/gtest.h>

#include "frame/cl_kiv.hpp"

namespace kiv {
namespace {

class TextSostChar : public ::testing::Test {
protected:
    Cl_KIV kiv;
};

TEST_F(TextSostChar, MapsByPlaceAndSwapsSeparators) {
    EXPECT_EQ(kiv.SostChar(u"12.345,67", u".,", u",."), u"12,345.67");
    // A repeated character of C1 maps by its first occurrence.
    EXPECT_EQ(kiv.SostChar(u"aXa", u"aa", u"12"), u"1X1");
}

TEST_F(TextSostChar, ShortOrEmptyReplacementDeletes) {
    EXPECT_EQ(kiv.SostChar(u"a-b c", u" -", u""), u"abc");
    // Only the first characters of C1 have a partner; the rest go.
    EXPECT_EQ(kiv.SostChar(u"a.b,c;d", u".,;", u"+"), u"a+bcd");
    EXPECT_EQ(kiv.SostChar(u"ABC", u"b", u""), u"AC");
}

TEST_F(TextSostChar, LongerReplacementLeavesTextAlone) {
    EXPECT_EQ(kiv.SostChar(u"abc", u"a", u"xy"), u"abc");
    EXPECT_EQ(kiv.SostChar(u"", u"a", u"x"), u"");
    EXPECT_EQ(kiv.SostChar(u"abc", u"", u""), u"abc");
}

TEST_F(TextSostChar, LookupIgnoresLetterCaseButKeepsUnmatchedCharacters) {
    EXPECT_EQ(kiv.SostChar(u"Abc", u"a", u"x"), u"xbc");
    EXPECT_EQ(kiv.SostChar(u"abc", u"A", u"X"), u"Xbc");
    // The replacement is taken as written, not in the case of the input.
    EXPECT_EQ(kiv.SostChar(u"aAbB", u"Ab", u"zY"), u"zzYY");
    // Non-letters are compared exactly: '@' and '`' sit next to 'A' and 'a'.
    EXPECT_EQ(kiv.SostChar(u"@`[{", u"a", u"x"), u"@`[{");
}

TEST_F(TextSostChar, AccentedLettersMatchTheirOtherCase) {
    EXPECT_EQ(kiv.SostChar(u"PERCHÈ", u"è", u"e"), u"PERCHe");
    EXPECT_EQ(kiv.SostChar(u"perchè", u"È", u"E"), u"perchE");
    EXPECT_EQ(kiv.SostChar(u"\u0178\u00FF", u"\u00FF", u"y"), u"yy");
    EXPECT_EQ(kiv.SostChar(u"Ñandú", u"ñÚ", u""), u"and");
    // Different letters with the same base stay different.
    EXPECT_EQ(kiv.SostChar(u"èé", u"e", u"x"), u"èé");
}

TEST_F(TextSostChar, LongSetsAndLongTexts) {
    // A set longer than any inline buffer still maps by place.
    String set, repl;
    for (char16_t c = u'a'; c <= u'z'; ++c) set += c;
    for (char16_t c = u'0'; c <= u'9'; ++c) set += c;
    for (char16_t c = u'z'; c >= u'a'; --c) repl += c;
    String text;
    for (int i = 0; i < 200; ++i) text += u"Az9 ";
    String want;
    for (int i = 0; i < 200; ++i) want += u"za ";
    EXPECT_EQ(kiv.SostChar(text, set, repl), want);
}

}  // namespace
}  // namespace kiv
