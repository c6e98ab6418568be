// Date serials and the reading of day-first text, on the edges that the
// conformance files leave out: serials themselves, dates before the epoch,
// carries into other years and the many texts that are no date.
#include <gtest/gtest.h>

#include <array>
#include <chrono>

#include "frame/strings.hpp"
#include "test_support.hpp"

namespace kiv {
namespace {

using namespace kiv::testing;

class RuntimeDates : public ::testing::Test {
protected:
    void SetUp() override { PinClock(host_, 2026, 3, 15, 14, 5, 9); }
    void TearDown() override { RestoreHost(); }

private:
    std::shared_ptr<PinnedHost> host_;
};

double Serial(int y, int m, int d) { return DateFromParts(y, m, d).serial; }
double Read(const char16_t* text) { return ToDateLocale(Variant(String(text))).serial; }

// Every month of four centuries, the leap rules' three limits included,
// against the standard library's calendar.
TEST(DaysInMonth, SameAsTheCalendarForFourHundredYears) {
    using namespace std::chrono;
    for (int y = 1700; y < 2100; ++y)
        for (unsigned m = 1; m <= 12; ++m)
            ASSERT_EQ(DaysInMonth(y, static_cast<int>(m)),
                      static_cast<int>(unsigned(year_month_day_last(year(y), month_day_last(month(m))).day())))
                << y << "-" << m;
}

TEST_F(RuntimeDates, KnownSerials) {
    EXPECT_EQ(Serial(1899, 12, 30), 0);
    EXPECT_EQ(Serial(1900, 3, 1), 61);  // 1900 was not a leap year
    EXPECT_EQ(Serial(2006, 12, 25), 39076);
    EXPECT_EQ(Serial(100, 1, 1), -657434);
    EXPECT_EQ(Serial(9999, 12, 31), 2958465);
}

TEST_F(RuntimeDates, PartsCarryAcrossYearsBothWays) {
    EXPECT_EQ(Serial(2004, 2, 30), Serial(2004, 3, 1));
    EXPECT_EQ(Serial(2006, -1, 1), Serial(2005, 11, 1));
    EXPECT_EQ(Serial(2006, -12, 1), Serial(2004, 12, 1));
    EXPECT_EQ(Serial(2006, 25, 1), Serial(2008, 1, 1));
    EXPECT_EQ(Serial(2006, 1, -30), Serial(2005, 12, 1));
    EXPECT_EQ(Serial(0, 1, 1), Serial(2000, 1, 1));
    EXPECT_EQ(ErrorOf([] { DateFromParts(9999, 13, 1); }), kInvalidCall);
    EXPECT_EQ(ErrorOf([] { DateFromParts(-1, 1, 1); }), kInvalidCall);
    EXPECT_EQ(TimeFromParts(0, 90, 0).serial, TimeFromParts(1, 30, 0).serial);
    EXPECT_EQ(TimeFromParts(0, 0, 86400).serial, 1);
    EXPECT_EQ(ErrorOf([] { TimeFromParts(2147483647, 2147483647, 0); }), kInvalidCall);
}

TEST_F(RuntimeDates, BeforeTheEpochTheFractionCountsForward) {
    DateParts p = SplitDate(Date{-1.25});
    EXPECT_EQ((std::array{p.year, p.month, p.day, p.hour}), (std::array{1899, 12, 29, 6}));
    p = SplitDate(Date{39076 + (23 * 3600 + 59 * 60 + 59.7) / 86400});
    EXPECT_EQ((std::array{p.year, p.month, p.day, p.hour, p.minute, p.second}), (std::array{2006, 12, 26, 0, 0, 0}));
    EXPECT_EQ(WeekdayOf(Date{-1.75}), 6);  // still 29 December
    EXPECT_EQ(WeekdayOf(Date{-7}), 7);
    EXPECT_EQ(DateText(Date{-1.5}), u"29/12/1899 12.00.00");
    EXPECT_EQ(DateText(Date{39076.0000001}), u"25/12/2006");  // under half a second
}

TEST_F(RuntimeDates, ReadsTextTheConformanceFilesDoNotTry) {
    EXPECT_EQ(Read(u" 25/12/2006 "), Serial(2006, 12, 25));
    EXPECT_EQ(Read(u"1/2/0206"), Serial(206, 2, 1));
    EXPECT_EQ(Read(u"12/25"), Serial(2026, 12, 25));
    EXPECT_EQ(Read(u"10:30"), 10.5 / 24);
    EXPECT_EQ(Read(u"12:00 am"), 0);
    EXPECT_EQ(ToDateLocale(Variant(true)).serial, -1);
    EXPECT_EQ(ErrorOf([] { ToDateLocale(Variant::missing()); }), kTypeMismatch);
}

TEST_F(RuntimeDates, RejectsTextThatIsNoDate) {
    for (const char16_t* t : {u"0", u"", u"abc", u"13/13/2006", u"25/12/20061", u"25/12/2006x", u"25/12/200610:30",
                              u"10:60", u"1/1/99999", u"25/12/2006 10", u"13:00 PM", u"1/2/099"}) {
        EXPECT_EQ(ErrorOf([&] { ToDateLocale(Variant(String(t))); }), kTypeMismatch) << ToUtf8(t);
        EXPECT_FALSE(IsDateValue(Variant(String(t)))) << ToUtf8(t);
    }
    EXPECT_TRUE(IsDateValue(Variant(Long{39076})));
    EXPECT_FALSE(IsDateValue(Variant(3e6)));
}

}  // namespace
}  // namespace kiv
