#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "frame/errors.hpp"
#include "frame/host.hpp"
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

// A host whose clock stands still at 15 March 2026 14:05:09.
class PinnedHost : public Host {
public:
    int messageBox(MsgIcon, const String&, const String&) override { return 1; }
    void beep() override {}
    Date now() override { return Date{46096 + (14 * 3600 + 5 * 60 + 9) / 86400.0}; }
    String applicationName() override { return u"test"; }
};

class RuntimeDates : public ::testing::Test {
protected:
    void SetUp() override { installHost(std::make_shared<PinnedHost>()); }
    void TearDown() override { installHost(nullptr); }
};

double Serial(int y, int m, int d) { return DateFromParts(y, m, d).serial; }

TEST_F(RuntimeDates, KnownSerials) {
    EXPECT_EQ(Serial(1899, 12, 30), 0);
    EXPECT_EQ(Serial(1900, 1, 1), 2);
    EXPECT_EQ(Serial(1900, 3, 1), 61);  // 1900 was not a leap year
    EXPECT_EQ(Serial(2006, 12, 25), 39076);
    EXPECT_EQ(Serial(2026, 3, 15), 46096);
    EXPECT_EQ(Serial(100, 1, 1), -657434);
    EXPECT_EQ(Serial(9999, 12, 31), 2958465);
    EXPECT_EQ(Serial(1899, 12, 29), -1);
}

TEST_F(RuntimeDates, FromPartsCarriesMonthsAndDays) {
    EXPECT_EQ(Serial(2006, 2, 30), Serial(2006, 3, 2));
    EXPECT_EQ(Serial(2004, 2, 30), Serial(2004, 3, 1));
    EXPECT_EQ(Serial(2006, 13, 1), Serial(2007, 1, 1));
    EXPECT_EQ(Serial(2006, 0, 1), Serial(2005, 12, 1));
    EXPECT_EQ(Serial(2006, -1, 1), Serial(2005, 11, 1));
    EXPECT_EQ(Serial(2006, -12, 1), Serial(2004, 12, 1));
    EXPECT_EQ(Serial(2006, 25, 1), Serial(2008, 1, 1));
    EXPECT_EQ(Serial(2006, 3, 0), Serial(2006, 2, 28));
    EXPECT_EQ(Serial(2006, 1, 32), Serial(2006, 2, 1));
    EXPECT_EQ(Serial(2006, 1, -30), Serial(2005, 12, 1));
}

TEST_F(RuntimeDates, FromPartsWindowsTwoDigitYearsBeforeCarrying) {
    EXPECT_EQ(Serial(0, 1, 1), Serial(2000, 1, 1));
    EXPECT_EQ(Serial(29, 12, 31), Serial(2029, 12, 31));
    EXPECT_EQ(Serial(30, 1, 1), Serial(1930, 1, 1));
    EXPECT_EQ(Serial(99, 13, 1), Serial(2000, 1, 1));
    EXPECT_EQ(Serial(100, 1, 1), -657434);
    EXPECT_EQ(ErrorOf([] { DateFromParts(100, 0, 1); }), kInvalidCall);
    EXPECT_EQ(ErrorOf([] { DateFromParts(9999, 13, 1); }), kInvalidCall);
    EXPECT_EQ(ErrorOf([] { DateFromParts(-1, 1, 1); }), kInvalidCall);
}

TEST_F(RuntimeDates, TimeFromPartsCarries) {
    EXPECT_EQ(TimeFromParts(12, 0, 0).serial, 0.5);
    EXPECT_DOUBLE_EQ(TimeFromParts(25, 0, 0).serial, 25.0 / 24);
    EXPECT_EQ(TimeFromParts(0, 90, 0).serial, TimeFromParts(1, 30, 0).serial);
    EXPECT_EQ(TimeFromParts(0, 0, 86400).serial, 1);
    EXPECT_EQ(ErrorOf([] { TimeFromParts(2147483647, 2147483647, 0); }), kInvalidCall);
}

TEST_F(RuntimeDates, SplitCountsTheFractionForwardAndRoundsSeconds) {
    DateParts p = SplitDate(Date{-1.25});
    EXPECT_EQ((std::array{p.year, p.month, p.day, p.hour}), (std::array{1899, 12, 29, 6}));
    p = SplitDate(Date{39076 + (23 * 3600 + 59 * 60 + 59.7) / 86400});
    EXPECT_EQ((std::array{p.year, p.month, p.day, p.hour, p.minute, p.second}), (std::array{2006, 12, 26, 0, 0, 0}));
    p = SplitDate(Date{39076 + (8 * 3600 + 5 * 60 + 9.4) / 86400});
    EXPECT_EQ((std::array{p.hour, p.minute, p.second}), (std::array{8, 5, 9}));
}

TEST_F(RuntimeDates, WeekdaysAlsoBeforeTheEpoch) {
    EXPECT_EQ(WeekdayOf(Date{0}), 7);
    EXPECT_EQ(WeekdayOf(Date{1}), 1);
    EXPECT_EQ(WeekdayOf(Date{-1}), 6);
    EXPECT_EQ(WeekdayOf(Date{-1.75}), 6);  // still 29 December
    EXPECT_EQ(WeekdayOf(Date{-7}), 7);
    EXPECT_EQ(WeekdayOf(Date{39076.9}), 2);  // Christmas 2006, a Monday
}

TEST_F(RuntimeDates, DateTextShowsTimeOnlyWhenPresent) {
    EXPECT_EQ(DateText(Date{39076}), u"25/12/2006");
    EXPECT_EQ(DateText(Date{39076 + (8 * 3600 + 5 * 60 + 9) / 86400.0}), u"25/12/2006 8.05.09");
    EXPECT_EQ(DateText(Date{(8 * 3600 + 5 * 60 + 9) / 86400.0}), u"8.05.09");
    EXPECT_EQ(DateText(Date{0}), u"0.00.00");
    EXPECT_EQ(DateText(Date{2}), u"01/01/1900");
    EXPECT_EQ(DateText(Date{39076.0000001}), u"25/12/2006");  // under half a second
    EXPECT_EQ(DateText(Date{-1.5}), u"29/12/1899 12.00.00");
}

TEST_F(RuntimeDates, ClockComesFromTheHost) {
    EXPECT_EQ(TodayDate().serial, 46096);
    EXPECT_EQ(DateText(NowDateTime()), u"15/03/2026 14.05.09");
}

double Read(const char16_t* text) { return ToDateLocale(Variant(String(text))).serial; }

TEST_F(RuntimeDates, ReadsDayFirstText) {
    const double xmas = Serial(2006, 12, 25);
    for (const char16_t* t : {u"25/12/2006", u"25-12-2006", u"25.12.2006", u"25/12/06", u" 25/12/2006 ", u"2006-12-25",
                              u"12/25/2006"})
        EXPECT_EQ(Read(t), xmas) << ToUtf8(t);
    EXPECT_EQ(Read(u"1/2/2006"), Serial(2006, 2, 1));
    EXPECT_EQ(Read(u"1/2/30"), Serial(1930, 2, 1));
    EXPECT_EQ(Read(u"1/2/0206"), Serial(206, 2, 1));
    EXPECT_EQ(Read(u"25/12"), Serial(2026, 12, 25));
    EXPECT_EQ(Read(u"12/25"), Serial(2026, 12, 25));
    EXPECT_EQ(Read(u"29/2/2004"), Serial(2004, 2, 29));
}

TEST_F(RuntimeDates, ReadsTimes) {
    EXPECT_EQ(Read(u"25/12/2006 10:30"), Serial(2006, 12, 25) + 10.5 / 24);
    EXPECT_EQ(Read(u"25/12/2006 10.30.15"), Serial(2006, 12, 25) + (10 * 3600 + 30 * 60 + 15) / 86400.0);
    EXPECT_EQ(Read(u"25/12/2006 10:30 PM"), Serial(2006, 12, 25) + 22.5 / 24);
    EXPECT_EQ(Read(u"10:30"), 10.5 / 24);
    EXPECT_EQ(Read(u"08:30:15"), (8 * 3600 + 30 * 60 + 15) / 86400.0);
    EXPECT_EQ(Read(u"12:00 am"), 0);
}

TEST_F(RuntimeDates, RejectsOtherText) {
    for (const char16_t* t : {u"5", u"0", u"", u"abc", u"31/02/2006", u"29/2/2100", u"25/12-2006", u"13/13/2006",
                              u"25/12/20061", u"25/12/2006x", u"25/12/200610:30", u"24:00", u"10:60",
                              u"1/1/99999", u"25/12/2006 10", u"13:00 PM"})
        EXPECT_EQ(ErrorOf([&] { ToDateLocale(Variant(String(t))); }), kTypeMismatch) << ToUtf8(t);
}

TEST_F(RuntimeDates, NonTextValues) {
    EXPECT_EQ(ToDateLocale(Variant(39076.5)).serial, 39076.5);
    EXPECT_EQ(ToDateLocale(Variant(true)).serial, -1);
    EXPECT_EQ(ToDateLocale(Variant()).serial, 0);
    EXPECT_EQ(ErrorOf([] { ToDateLocale(Variant(3e6)); }), kOverflow);
    EXPECT_EQ(ErrorOf([] { ToDateLocale(Variant::null()); }), kInvalidUseOfNull);
    EXPECT_EQ(ErrorOf([] { ToDateLocale(Variant::missing()); }), kTypeMismatch);
}

TEST_F(RuntimeDates, IsDateValue) {
    EXPECT_TRUE(IsDateValue(Variant(Date{5})));
    EXPECT_TRUE(IsDateValue(Variant(u"25/12/2006")));
    EXPECT_TRUE(IsDateValue(Variant(u"10:30")));
    EXPECT_TRUE(IsDateValue(Variant(Long{39076})));
    EXPECT_FALSE(IsDateValue(Variant(3e6)));
    EXPECT_FALSE(IsDateValue(Variant(u"5")));
    EXPECT_FALSE(IsDateValue(Variant(u"31/02/2006")));
    EXPECT_FALSE(IsDateValue(Variant::null()));
    EXPECT_FALSE(IsDateValue(Variant()));
}

}  // namespace
}  // namespace kiv
