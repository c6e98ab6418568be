#include <gtest/gtest.h>

#include <cmath>

#include "frame/convert.hpp"
#include "frame/errors.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {
namespace {

int ErrorOf(auto&& f) {
    try {
        f();
    } catch (const RuntimeError& e) {
        return e.number();
    }
    return 0;
}

TEST(RuntimeValPrefix, ReadsTheLeadingNumberWithAPoint) {
    EXPECT_EQ(ValPrefix(u"  -3.5xyz"), -3.5);
    EXPECT_EQ(ValPrefix(u"1,5"), 1);
    EXPECT_EQ(ValPrefix(u"12,5"), 12);
    EXPECT_EQ(ValPrefix(u"1.5"), 1.5);
    EXPECT_EQ(ValPrefix(u"\t\n\r 7"), 7);
    EXPECT_EQ(ValPrefix(u".5"), 0.5);
    EXPECT_EQ(ValPrefix(u"+4"), 4);
}

TEST(RuntimeValPrefix, IgnoresBlanksInsideTheDigits) {
    EXPECT_EQ(ValPrefix(u"1 2"), 12);
    EXPECT_EQ(ValPrefix(u"1 2 . 5"), 12.5);
    EXPECT_EQ(ValPrefix(u"- 3"), -3);
}

TEST(RuntimeValPrefix, ReadsExponentsOnlyWithDigits) {
    EXPECT_EQ(ValPrefix(u"1E3"), 1000);
    EXPECT_EQ(ValPrefix(u"1d2"), 100);
    EXPECT_EQ(ValPrefix(u"25e-1"), 2.5);
    EXPECT_EQ(ValPrefix(u"2e"), 2);
    EXPECT_EQ(ValPrefix(u"2east"), 2);
    EXPECT_EQ(ValPrefix(u"2e+x"), 2);
}

TEST(RuntimeValPrefix, HexAndOctalAreSignedByTheirWidth) {
    EXPECT_EQ(ValPrefix(u"&H1F"), 31);
    EXPECT_EQ(ValPrefix(u"&hff"), 255);
    EXPECT_EQ(ValPrefix(u"&HFFFF"), -1);
    EXPECT_EQ(ValPrefix(u"&H8000"), -32768);
    EXPECT_EQ(ValPrefix(u"&H10000"), 65536);
    EXPECT_EQ(ValPrefix(u"&HFFFFFFFF"), -1);
    EXPECT_EQ(ValPrefix(u"&O17"), 15);
    EXPECT_EQ(ValPrefix(u"&O8"), 0);
    EXPECT_EQ(ErrorOf([] { ValPrefix(u"&H1FFFFFFFF"); }), kOverflow);
}

TEST(RuntimeValPrefix, NoNumberIsZeroAndHugeIsOverflow) {
    EXPECT_EQ(ValPrefix(u""), 0);
    EXPECT_EQ(ValPrefix(u"abc"), 0);
    EXPECT_EQ(ValPrefix(u"-"), 0);
    EXPECT_EQ(ValPrefix(u"."), 0);
    EXPECT_EQ(ValPrefix(u"1E-400"), 0);
    EXPECT_EQ(ErrorOf([] { ValPrefix(u"1E400"); }), kOverflow);
    EXPECT_EQ(ValPrefix(u"0.1"), 0.1);  // correctly rounded, not accumulated
}

TEST(RuntimeToDoubleLocale, ReadsTheItalianForms) {
    EXPECT_EQ(ToDoubleLocale(u"1,5"), 1.5);
    EXPECT_EQ(ToDoubleLocale(u"1.234,5"), 1234.5);
    EXPECT_EQ(ToDoubleLocale(u"1.234"), 1234);
    EXPECT_EQ(ToDoubleLocale(u"1.2.3"), 123);
    EXPECT_EQ(ToDoubleLocale(u",5"), 0.5);
    EXPECT_EQ(ToDoubleLocale(u"1,"), 1);
    EXPECT_EQ(ToDoubleLocale(u" \t7 "), 7);
    EXPECT_EQ(ToDoubleLocale(u"1,5E2"), 150);
    EXPECT_EQ(ToDoubleLocale(u"1e3"), 1000);
    EXPECT_EQ(ToDoubleLocale(u"&HFFFF"), -1);
    EXPECT_EQ(ToDoubleLocale(u"0,1"), 0.1);
}

TEST(RuntimeToDoubleLocale, SignsCurrencyAndParentheses) {
    EXPECT_EQ(ToDoubleLocale(u"+123"), 123);
    EXPECT_EQ(ToDoubleLocale(u"5-"), -5);
    EXPECT_EQ(ToDoubleLocale(u"(5)"), -5);
    EXPECT_EQ(ToDoubleLocale(u"\u20AC 12,50"), 12.5);
    EXPECT_EQ(ToDoubleLocale(u"-12,50 \u20AC"), -12.5);
    EXPECT_EQ(ToDoubleLocale(u"12,50\u20AC-"), -12.5);
    EXPECT_EQ(ErrorOf([] { ToDoubleLocale(u"-5-"); }), kTypeMismatch);
    EXPECT_EQ(ErrorOf([] { ToDoubleLocale(u"(-5)"); }), kTypeMismatch);
    EXPECT_EQ(ErrorOf([] { ToDoubleLocale(u"(5"); }), kTypeMismatch);
}

TEST(RuntimeToDoubleLocale, RejectsTextThatIsNotWhollyANumber) {
    for (const char16_t* bad : {u"", u"abc", u"12a", u"-", u",", u".5", u"1E", u"1 2", u"1,5,3", u"&H"})
        EXPECT_EQ(ErrorOf([&] { ToDoubleLocale(String(bad)); }), kTypeMismatch) << ToUtf8(bad);
    EXPECT_EQ(ErrorOf([] { ToDoubleLocale(u"1E400"); }), kOverflow);
}

TEST(RuntimeToDoubleLocale, NonTextValues) {
    EXPECT_EQ(ToDoubleLocale(Variant(true)), -1);
    EXPECT_EQ(ToDoubleLocale(Variant(false)), 0);
    EXPECT_EQ(ToDoubleLocale(Variant()), 0);
    EXPECT_EQ(ToDoubleLocale(Variant(Date{39076.5})), 39076.5);
    EXPECT_EQ(ToDoubleLocale(Variant(Currency{12345})), 1.2345);
    EXPECT_EQ(ErrorOf([] { ToDoubleLocale(Variant::null()); }), kInvalidUseOfNull);
    EXPECT_EQ(ErrorOf([] { ToDoubleLocale(Variant::missing()); }), kTypeMismatch);
    EXPECT_EQ(ErrorOf([] { ToDoubleLocale(Variant(Object())); }), kTypeMismatch);
}

TEST(RuntimeIsNumericValue, FollowsTheLocaleGrammar) {
    for (const char16_t* yes : {u"12,5", u"1.234", u" 7 ", u"1E3", u"+123", u"(3)"})
        EXPECT_TRUE(IsNumericValue(String(yes))) << ToUtf8(yes);
    for (const char16_t* no : {u"", u"12a", u"-", u",", u"1.5.x"})
        EXPECT_FALSE(IsNumericValue(String(no))) << ToUtf8(no);
    EXPECT_TRUE(IsNumericValue(Variant()));
    EXPECT_TRUE(IsNumericValue(Variant(true)));
    EXPECT_TRUE(IsNumericValue(Variant(Integer{3})));
    EXPECT_FALSE(IsNumericValue(Variant::null()));
    EXPECT_FALSE(IsNumericValue(Variant(Date{1})));
    EXPECT_FALSE(IsNumericValue(Variant::missing()));
}

TEST(RuntimeRounding, HalvesGoToEvenOnTheBinaryValue) {
    EXPECT_EQ(RoundHalfEven(2.5), 2);
    EXPECT_EQ(RoundHalfEven(-2.5), -2);
    EXPECT_EQ(RoundHalfEven(3.5), 4);
    EXPECT_EQ(RoundHalfEven(0.125, 2), 0.12);
    EXPECT_EQ(RoundHalfEven(0.375, 2), 0.38);
    EXPECT_EQ(RoundHalfEven(0.285, 2), 0.28);  // stored just below the half
    EXPECT_EQ(RoundHalfEven(1.005, 2), 1);     // likewise
    EXPECT_EQ(RoundHalfEven(2.675, 2), 2.67);
    EXPECT_EQ(RoundHalfEven(1234.5678, 3), 1234.568);
    EXPECT_EQ(RoundHalfEven(1e300, 2), 1e300);
    EXPECT_FALSE(std::signbit(RoundHalfEven(-0.4)));
    EXPECT_EQ(ErrorOf([] { RoundHalfEven(1.5, -1); }), kInvalidCall);
}

TEST(RuntimeRounding, VariantKeepsItsType) {
    EXPECT_EQ(RoundHalfEven(Variant(Integer{7}), 0), Variant(Integer{7}));
    EXPECT_EQ(RoundHalfEven(Variant(2.5f), 0), Variant(2.0f));
    EXPECT_EQ(RoundHalfEven(Variant(0.125f), 2), Variant(0.12f));
    EXPECT_EQ(RoundHalfEven(Variant(Currency{25000}), 0), Variant(Currency{20000}));
    EXPECT_EQ(RoundHalfEven(Variant(Currency{-35000}), 0), Variant(Currency{-40000}));
    EXPECT_EQ(RoundHalfEven(Variant(Currency{12345}), 3), Variant(Currency{12340}));
    EXPECT_EQ(RoundHalfEven(Variant(u"2,5"), 0), Variant(2.0));
    EXPECT_EQ(RoundHalfEven(Variant(), 0), Variant(Integer{0}));
    EXPECT_TRUE(RoundHalfEven(Variant::null(), 0).isNull());
    EXPECT_EQ(ErrorOf([] { RoundHalfEven(Variant(u"x"), 0); }), kTypeMismatch);
}

TEST(RuntimeRounding, IntoIntegerAndLongWithOverflow) {
    EXPECT_EQ(RoundToInteger(32767.4), 32767);
    EXPECT_EQ(RoundToInteger(-32768.5), -32768);
    EXPECT_EQ(ErrorOf([] { RoundToInteger(32767.5); }), kOverflow);
    EXPECT_EQ(RoundToLong(2147483647.0), 2147483647);
    EXPECT_EQ(ErrorOf([] { RoundToLong(2147483647.5); }), kOverflow);
    EXPECT_EQ(ErrorOf([] { RoundToLong(std::nan("")); }), kOverflow);
}

TEST(RuntimeIntFix, FloorAndTruncKeepTheType) {
    EXPECT_EQ(IntFloor(-2.5), -3);
    EXPECT_EQ(IntTrunc(-2.5), -2);
    EXPECT_EQ(IntFloor(Variant(-2.5)), Variant(-3.0));
    EXPECT_EQ(IntTrunc(Variant(-2.5f)), Variant(-2.0f));
    EXPECT_EQ(IntFloor(Variant(Currency{-12345})), Variant(Currency{-20000}));
    EXPECT_EQ(IntTrunc(Variant(Currency{-12345})), Variant(Currency{-10000}));
    EXPECT_EQ(IntFloor(Variant(Currency{9000000000000000009})), Variant(Currency{9000000000000000000}));
    EXPECT_EQ(IntFloor(Variant(Date{-1.25})), Variant(Date{-2}));
    EXPECT_EQ(IntTrunc(Variant(true)), Variant(Integer{-1}));
    EXPECT_EQ(IntTrunc(Variant()), Variant(Integer{0}));
    EXPECT_EQ(IntFloor(Variant(u"-1,5")), Variant(-2.0));
    EXPECT_TRUE(IntFloor(Variant::null()).isNull());
    EXPECT_EQ(ErrorOf([] { IntTrunc(Variant(u"a")); }), kTypeMismatch);
}

TEST(RuntimeStrNum, InvariantDigitsWithLeadingBlank) {
    EXPECT_EQ(StrNum(Variant(5.0)), u" 5");
    EXPECT_EQ(StrNum(Variant(0.0)), u" 0");
    EXPECT_EQ(StrNum(Variant(-0.5)), u"-.5");
    EXPECT_EQ(StrNum(Variant(0.5)), u" .5");
    EXPECT_EQ(StrNum(Variant(123456789012345.0)), u" 123456789012345");
    EXPECT_EQ(StrNum(Variant(0.1 + 0.2)), u" .3");  // 15 digits hide the binary tail
    EXPECT_EQ(StrNum(Variant(Integer{-7})), u"-7");
    EXPECT_EQ(StrNum(Variant(Long{20061225})), u" 20061225");
    EXPECT_EQ(StrNum(Variant(1.1f)), u" 1.1");
    EXPECT_EQ(StrNum(Variant(Currency{-5000})), u"-.5");
    EXPECT_EQ(StrNum(Variant(Currency{123456})), u" 12.3456");
    EXPECT_EQ(StrNum(Variant(true)), u"True");
    EXPECT_EQ(StrNum(Variant(u"12,5")), u" 12.5");
    EXPECT_EQ(ErrorOf([] { StrNum(Variant::null()); }), kInvalidUseOfNull);
}

TEST(RuntimeStrNum, SwitchesToScientificOutsideTheFixedRange) {
    EXPECT_EQ(StrNum(Variant(0.0001)), u" .0001");
    EXPECT_EQ(StrNum(Variant(0.00001)), u" 1E-05");
    EXPECT_EQ(StrNum(Variant(1e15)), u" 1E+15");
    EXPECT_EQ(StrNum(Variant(999999999999999.0)), u" 999999999999999");
    EXPECT_EQ(StrNum(Variant(9999999999999999.0)), u" 1E+16");  // rounding moves the exponent
    EXPECT_EQ(StrNum(Variant(1.5e16)), u" 1.5E+16");
    EXPECT_EQ(StrNum(Variant(-1.5e-120)), u"-1.5E-120");
    EXPECT_EQ(StrNum(Variant(1e7f)), u" 1E+07");
}

TEST(ConvertNumberText, LocaleDigitsWithoutBlank) {
    EXPECT_EQ(NumberText(12.5), u"12,5");
    EXPECT_EQ(NumberText(0.5), u"0,5");
    EXPECT_EQ(NumberText(-0.25), u"-0,25");
    EXPECT_EQ(NumberText(-0.0), u"0");
    EXPECT_EQ(NumberText(1e16), u"1E+16");
    EXPECT_EQ(NumberText(1.5e16), u"1,5E+16");
    EXPECT_EQ(NumberText(0.00001), u"1E-05");
    EXPECT_EQ(NumberText(0.00012), u"0,00012");
    EXPECT_EQ(NumberText(1.1f), u"1,1");
    EXPECT_EQ(NumberText(100.0), u"100");
    EXPECT_EQ(CurrencyText(Currency{5000}), u"0,5");
}

}  // namespace
}  // namespace kiv
