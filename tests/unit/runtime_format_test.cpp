#include <gtest/gtest.h>

#include "frame/errors.hpp"
#include "frame/runtime.hpp"

namespace kiv {
namespace {

String Fmt(const Variant& v, const char16_t* pattern) { return FormatPattern(v, pattern); }

TEST(RuntimeFormatNumber, PlaceholdersAndDecimalComma) {
    EXPECT_EQ(Fmt(Variant(0.5), u"##0.00"), u"0,50");
    EXPECT_EQ(Fmt(Variant(0.0), u"##0.00"), u"0,00");
    EXPECT_EQ(Fmt(Variant(Integer{7}), u"0"), u"7");
    EXPECT_EQ(Fmt(Variant(Integer{7}), u"00"), u"07");
    EXPECT_EQ(Fmt(Variant(Integer{123}), u"00"), u"123");
    EXPECT_EQ(Fmt(Variant(0.0), u"#"), u"");
    EXPECT_EQ(Fmt(Variant(0.5), u"#.00"), u",50");
    EXPECT_EQ(Fmt(Variant(5.0), u"0.##"), u"5,");
    EXPECT_EQ(Fmt(Variant(5.1), u"0.0#"), u"5,1");
    EXPECT_EQ(Fmt(Variant(5.0), u"0.0#"), u"5,0");
    EXPECT_EQ(Fmt(Variant(1e20), u"0"), u"100000000000000000000");
}

TEST(RuntimeFormatNumber, RoundsHalfAwayOnTheDecimalText) {
    EXPECT_EQ(Fmt(Variant(2.675), u"0.00"), u"2,68");  // binary 2.67499..., decimal 2.675
    EXPECT_EQ(Fmt(Variant(0.285), u"0.00"), u"0,29");
    EXPECT_EQ(Fmt(Variant(2.5), u"0"), u"3");
    EXPECT_EQ(Fmt(Variant(-2.5), u"0"), u"-3");
    EXPECT_EQ(Fmt(Variant(9.995), u"0.00"), u"10,00");
    EXPECT_EQ(Fmt(Variant(0.5), u"#"), u"1");
    EXPECT_EQ(Fmt(Variant(0.04), u"0.0"), u"0,0");
    EXPECT_EQ(Fmt(Variant(0.05), u"0.0"), u"0,1");
    EXPECT_EQ(Fmt(Variant(0.004), u"0.00"), u"0,00");
    EXPECT_EQ(Fmt(Variant(-0.001), u"0.00"), u"-0,00");
    EXPECT_EQ(Fmt(Variant(1.005f), u"0.00"), u"1,01");  // seven digits of a Single
}

TEST(RuntimeFormatNumber, LiteralsStandWhereWritten) {
    EXPECT_EQ(Fmt(Variant(1234.0), u"#'##0"), u"1'234");
    EXPECT_EQ(Fmt(Variant(Long{1234567}), u"#'##0"), u"1234'567");
    EXPECT_EQ(Fmt(Variant(-1234.0), u"#'##0"), u"-1'234");
    EXPECT_EQ(Fmt(Variant(Integer{12}), u"###'##0.00"), u"'12,00");
    EXPECT_EQ(Fmt(Variant(Integer{-12}), u"###'##0.00"), u"-'12,00");
    EXPECT_EQ(Fmt(Variant(1234.5), u"###'##0.00"), u"1'234,50");
    EXPECT_EQ(Fmt(Variant(Integer{5}), u"0000000000Z.ZZZ"), u"0000000005Z,ZZZ");
    EXPECT_EQ(Fmt(Variant(Integer{5}), u"00000000000.00000"), u"00000000005,00000");
    EXPECT_EQ(Fmt(Variant(Long{123456}), u" 00:00:00"), u" 12:34:56");
    EXPECT_EQ(Fmt(Variant(Integer{5}), u"\"N.\"0"), u"N.5");
    EXPECT_EQ(Fmt(Variant(Integer{5}), u"ABC"), u"ABC5");
}

TEST(RuntimeFormatNumber, GroupingByTheLocale) {
    EXPECT_EQ(Fmt(Variant(Long{1234567}), u"0,000,000,000"), u"0.001.234.567");
    EXPECT_EQ(Fmt(Variant(Long{1234567}), u"#,##0"), u"1.234.567");
    EXPECT_EQ(Fmt(Variant(1234.5), u"#,##0.00"), u"1.234,50");
    EXPECT_EQ(Fmt(Variant(Integer{123}), u"#,##0"), u"123");
    EXPECT_EQ(Fmt(Variant(Integer{5}), u",0"), u",5");  // a comma before every digit is a literal
}

TEST(RuntimeFormatNumber, OtherValues) {
    EXPECT_EQ(Fmt(Variant::null(), u"0.00"), u"");
    EXPECT_EQ(Fmt(Variant(), u"0.00"), u"0,00");
    EXPECT_EQ(Fmt(Variant(u"12,5"), u"0.00"), u"12,50");
    EXPECT_EQ(Fmt(Variant(u"abc"), u"0.00"), u"abc");
    EXPECT_EQ(Fmt(Variant(true), u"0"), u"-1");
    EXPECT_EQ(Fmt(Variant(Currency{123456}), u"0.00"), u"12,35");
    EXPECT_EQ(Fmt(Variant(12.5), u""), u"12,5");
}

TEST(RuntimeFormatText, RightAlignedOnThePlaces) {
    EXPECT_EQ(Fmt(Variant(u"12"), u"@@@@"), u"  12");
    EXPECT_EQ(Fmt(Variant(Integer{7}), u"@@@@@ "), u"    7 ");
    EXPECT_EQ(Fmt(Variant(12.5), u"@@@@@@"), u"  12,5");
    EXPECT_EQ(Fmt(Variant(u"abcdef"), u"@@@"), u"abcdef");
    EXPECT_EQ(Fmt(Variant(u"abcd"), u"@@-@@"), u"ab-cd");
    EXPECT_EQ(Fmt(Variant(u"abc"), u"@@-@@"), u" a-bc");
    EXPECT_EQ(Fmt(Variant(), u"@@@"), u"   ");
    EXPECT_EQ(Fmt(Variant::null(), u"@@@"), u"");
}

TEST(RuntimeFormatDate, DayMonthYear) {
    const Variant xmas(Date{39076});
    EXPECT_EQ(Fmt(xmas, u"dd/mm/yyyy"), u"25/12/2006");
    EXPECT_EQ(Fmt(xmas, u"dd-mm-yyyy "), u"25-12-2006 ");
    EXPECT_EQ(Fmt(Variant(Date{39085}), u"d/m/yy"), u"3/1/07");
    EXPECT_EQ(Fmt(Variant(Date{39085}), u"dd"), u"03");
    EXPECT_EQ(Fmt(Variant(Date{39085}), u"mm"), u"01");
    EXPECT_EQ(Fmt(Variant(Date{39085}), u"yyyy"), u"2007");
    EXPECT_EQ(Fmt(Variant(Date{39085}), u"y"), u"3");
    EXPECT_EQ(Fmt(Variant(Date{39085}), u"DD.MM.YYYY"), u"03.01.2007");
}

TEST(RuntimeFormatDate, HoursMinutesSeconds) {
    const Variant t(Date{39076 + (8 * 3600 + 5 * 60 + 9) / 86400.0});
    EXPECT_EQ(Fmt(t, u"hh"), u"08");
    EXPECT_EQ(Fmt(t, u"nn"), u"05");
    EXPECT_EQ(Fmt(t, u"ss"), u"09");
    EXPECT_EQ(Fmt(t, u"hh:nn"), u"08:05");
    EXPECT_EQ(Fmt(t, u"hh.nn"), u"08.05");
    EXPECT_EQ(Fmt(t, u"hh:mm "), u"08:05 ");
    EXPECT_EQ(Fmt(t, u"mm:ss"), u"05:09");
    EXPECT_EQ(Fmt(t, u"h:n:s"), u"8:5:9");
    EXPECT_EQ(Fmt(t, u"dd/mm/yyyy hh:mm"), u"25/12/2006 08:05");
    EXPECT_EQ(Fmt(Variant(Date{39076 + 23.5 / 24}), u"hh"), u"23");
}

TEST(RuntimeFormatDate, ValuesThatAreNotDates) {
    EXPECT_EQ(Fmt(Variant(), u"dd/mm/yyyy"), u"30/12/1899");
    EXPECT_EQ(Fmt(Variant(Long{39076}), u"dd/mm/yyyy"), u"25/12/2006");
    EXPECT_EQ(Fmt(Variant(u"39076"), u"dd/mm/yyyy"), u"25/12/2006");
    EXPECT_EQ(Fmt(Variant(u"25-12-06"), u"yyyy"), u"2006");
    EXPECT_EQ(Fmt(Variant(u"pippo"), u"dd/mm/yyyy"), u"pippo");
    EXPECT_EQ(Fmt(Variant::null(), u"dd"), u"");
}

}  // namespace
}  // namespace kiv
