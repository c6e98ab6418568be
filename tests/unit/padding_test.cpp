// Padding and alignment, called directly on the object.
#include <gtest/gtest.h>

#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"

namespace kiv {
namespace {

int ErrorOf(auto&& call) {
    try {
        call();
    } catch (const RuntimeError& e) {
        return e.number();
    }
    return 0;
}

class Padding : public ::testing::Test {
protected:
    Cl_KIV k;
};

TEST_F(Padding, RightAlignInPlaceUsesOldContentOnlyAsWidth) {
    String record = u"abcdef";
    k.AllineaDxSpazi(record, u"xy");
    EXPECT_EQ(record, u"    xy");
    record = u"ab";
    k.AllineaDxSpazi(record, u"longer");
    EXPECT_EQ(record, u"longer");  // never cut
    record = u"abc";
    k.AllineaDxSpazi(record, u"xyz");
    EXPECT_EQ(record, u"xyz");
}

TEST_F(Padding, ZerosAreAddedNeverCut) {
    EXPECT_EQ(k.AllineaDxZeri(5, u"123"), u"00123");
    EXPECT_EQ(k.AllineaDxZeri(2, u"123"), u"123");
    EXPECT_EQ(k.AllineaDxZeri(-3, u""), u"");
    String s = u"12";
    k.AllineaSinZeri(s, 3);
    EXPECT_EQ(s, u"12000");  // a count of zeros, not a width
    k.AllineaSinZeri(s, -1);
    EXPECT_EQ(s, u"12000");
}

TEST_F(Padding, PutRightAndLeftTrimThenCut) {
    EXPECT_EQ(k.PoniADes(u" ab ", 4), u"  ab");
    EXPECT_EQ(k.PoniADes(u"abcdef", 3), u"def");
    EXPECT_EQ(k.PoniASin(u"abcdef", 3), u"abc");
    EXPECT_EQ(k.PoniASin(u" ab ", 4), u"ab  ");
    EXPECT_EQ(k.PoniADes(u"ab", 0), u"");
    EXPECT_EQ(ErrorOf([&] { k.PoniADes(u"ab", -1); }), kInvalidCall);
    EXPECT_EQ(ErrorOf([&] { k.PoniASin(u"ab", -1); }), kInvalidCall);
}

TEST_F(Padding, LengthenWithFirstCharacterOfC) {
    EXPECT_EQ(k.Allunga(u"ab", 1), u"ab");
    EXPECT_EQ(k.Allunga(u"ab", 4), u"ab  ");
    EXPECT_EQ(k.Allunga(u"ab", 4, u"-+"), u"ab--");
    EXPECT_EQ(k.Allunga(u"ab", 2, u""), u"ab");  // no lengthening, the empty C is never used
    EXPECT_EQ(ErrorOf([&] { k.Allunga(u"ab", 4, u""); }), kInvalidCall);
}

TEST_F(Padding, SetRightAndLeftRewriteTheVariableAsText) {
    Variant v = Variant::null();
    EXPECT_EQ(k.MettiADes(v, 3), u"   ");
    EXPECT_EQ(v, Variant(u""));
    v = Variant(Integer{12});
    EXPECT_EQ(k.MettiADes(v, 4), u"  12");
    EXPECT_EQ(v, Variant(u"12"));
    v = Variant(12.5);
    EXPECT_EQ(k.MettiASin(v, 6, u"*"), u"12,5**");
    EXPECT_EQ(v, Variant(u"12,5"));
    Variant seven(u"7");
    EXPECT_EQ(k.MettiADes(seven, 3, u"0"), u"007");
    EXPECT_EQ(k.MettiASin(seven, 3, u"*"), u"7**");
    Variant inner(u" a b ");
    EXPECT_EQ(k.MettiADes(inner, 6, u"."), u"...a b");  // only the padding is filler
    Variant longer(u"abcdef");
    EXPECT_EQ(k.MettiADes(longer, 3), u"def");
    EXPECT_EQ(k.MettiASin(longer, 3), u"abc");
}

TEST_F(Padding, SetRightFailsOnNegativeWidthAfterRewriting) {
    Variant v(Long{5});
    EXPECT_EQ(ErrorOf([&] { k.MettiADes(v, -2); }), kInvalidCall);
    EXPECT_EQ(v, Variant(u"5"));  // what was already written stays
}

TEST_F(Padding, CentreKeepsTheOddSurplusOnTheLeft) {
    Variant v(u"ab");
    EXPECT_EQ(k.MettiInCentro(v, 5), u"  ab ");   // surplus 3: p = 2, cut at 5
    EXPECT_EQ(k.MettiInCentro(v, 3), u" ab");     // surplus 1: p = 0, one blank in front
    EXPECT_EQ(k.MettiInCentro(v, 4), u" ab ");    // surplus 2: p = 1
    EXPECT_EQ(k.MettiInCentro(v, 7, u"*"), u" **ab**");  // surplus 5: p = 2, then a blank
    EXPECT_EQ(k.MettiInCentro(v, 8, u"*"), u"***ab***");
    Variant longer(u"abcdef");
    EXPECT_EQ(k.MettiInCentro(longer, 3), u"abcdef");
    EXPECT_EQ(k.MettiInCentro(longer, -4), u"abcdef");  // never fails for a negative width
    Variant padded(u" ab ");
    EXPECT_EQ(k.MettiInCentro(padded, 6, u"", true), u"  ab  ");   // untrimmed: surplus 2, p = 1
    EXPECT_EQ(k.MettiInCentro(padded, 7, u"-", true), u"-- ab -");
    EXPECT_EQ(k.Cntr(u" ab ", 5), u"  ab ");
}

TEST_F(Padding, RepeatInsertTruncate) {
    EXPECT_EQ(k.Repl(3, u"ab"), u"ababab");
    EXPECT_EQ(k.Repl(0, u"ab"), u"");
    EXPECT_EQ(k.Repl(3, u""), u"");
    EXPECT_EQ(k.StrInsert(u"abcdefghij", u"XY", 3), u"abXYefghij");
    EXPECT_EQ(k.StrInsert(u"abcdefghij", u"XYZ", 6), u"abcdeXYZij");  // last accepted position for b = 3
    EXPECT_EQ(k.StrInsert(u"abcdefghij", u"XYZ", 7), u"abcdefghij");
    EXPECT_EQ(k.StrInsert(u"abcdefghij", u"XY", 8), u"abcdefghij");
    EXPECT_EQ(k.StrInsert(u"abcdefghij", u"XY", 0), u"abcdefghij");
    EXPECT_EQ(k.StrInsert(u"abcdefghij", u"", 3), u"");
    EXPECT_EQ(k.StrInsert(u"abcdefghij", u"  ", 3, true), u"");
    EXPECT_EQ(k.StrInsert(u"abcdefghij", u" X ", 2, true), u"aXcdefghij");
    EXPECT_EQ(k.STR_Trunc(u"abcdef", 2), u"abcd");
    EXPECT_EQ(k.STR_Trunc(u"ab", 2), u"");
    EXPECT_EQ(k.STR_Trunc(u"ab", 3), u"");
    EXPECT_EQ(k.STR_Trunc(u"ab", 0), u"ab");
    EXPECT_EQ(k.STR_Trunc(u"ab", -5), u"ab");
}

TEST_F(Padding, LengthsAreSixteenBit) {
    const String huge(40000, u'x');
    EXPECT_EQ(ErrorOf([&] { k.AllineaDxZeri(5, huge); }), kOverflow);
    EXPECT_EQ(ErrorOf([&] { k.STR_Trunc(huge, 1); }), kOverflow);
    String record = huge;
    EXPECT_EQ(ErrorOf([&] { k.AllineaDxSpazi(record, u"a"); }), kOverflow);
    EXPECT_EQ(record, huge);
    EXPECT_EQ(ErrorOf([&] { k.Allunga(u"ab", 32767, u"x"); }), 0);
}

}  // namespace
}  // namespace kiv
