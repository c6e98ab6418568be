// Date operations that read the clock, under "todays" other than the one the
// conformance files pin: century windows, completion from today, rewrites of
// zero dates, and the messages they show.
#include <gtest/gtest.h>

#include "frame/cl_kiv.hpp"
#include "frame/dispatch.hpp"
#include "frame/strings.hpp"
#include "test_support.hpp"

namespace kiv {
namespace {

using namespace kiv::testing;

class DatesAtAnotherToday : public ::testing::Test {
protected:
    // Installs a host whose clock stands at the given moment.
    PinnedHost& pin(int y, int m, int d, int hh = 0, int nn = 0, int ss = 0) {
        return PinClock(host_, y, m, d, hh, nn, ss);
    }
    void TearDown() override { RestoreHost(); }

    int yearOf(const String& typed) { return SplitDate(k.Msk2VarDate(typed)).year; }

    Cl_KIV k;

private:
    std::shared_ptr<PinnedHost> host_;
};

TEST_F(DatesAtAnotherToday, TypedYearsFollowTodaysCentury) {
    struct Case {
        const char16_t* typed;
        int year;
    };
    // In 2081 a two-digit year more than 30 away from 81 is of the 1900s.
    pin(2081, 1, 10);
    for (const Case& c : {Case{u"1/1/50", 1950}, Case{u"1/1/51", 2051}, Case{u"1/1/99", 2099}, Case{u"1/1/7", 2087},
                          Case{u"1/1/", 2080}, Case{u"1/1/501", 1501}, Case{u"1/1/500", 2500}}) {
        EXPECT_EQ(yearOf(c.typed), c.year) << ToUtf8(c.typed);
    }
    // In 2003 the window reaches forward to 2033.
    pin(2003, 6, 10);
    for (const Case& c : {Case{u"1/1/33", 2033}, Case{u"1/1/34", 1934}, Case{u"1/1/5", 2005}, Case{u"1/1/", 2000}}) {
        EXPECT_EQ(yearOf(c.typed), c.year) << ToUtf8(c.typed);
    }
    // In 1999 the distance is taken from 99, not from 999.
    pin(1999, 6, 10);
    EXPECT_EQ(yearOf(u"1/1/80"), 1980);
}

TEST_F(DatesAtAnotherToday, InvalidTypedDateBecomesTodayWithAMessage) {
    PinnedHost& host = pin(2081, 1, 10, 9, 30);
    EXPECT_EQ(k.Msk2VarDate(u"31/11/2080"), DateFromParts(2081, 1, 10));
    ASSERT_EQ(host.shown.size(), 1u);
    EXPECT_EQ(host.shown[0].icon, MsgIcon::Critical);
    EXPECT_EQ(host.shown[0].title, u"Function: Msk2VarDate");
    EXPECT_EQ(host.shown[0].text, u"Data non valida ! ASSUMO DATA ODIERNA !\r\n\r\n>10/01/2081<");
    // Missing parts are today's, silently.
    EXPECT_EQ(k.Msk2VarDate(u"__/__/1990"), DateFromParts(1990, 1, 10));
    EXPECT_EQ(host.shown.size(), 1u);
}

TEST_F(DatesAtAnotherToday, Date20CompletesFromTodayAndTodaysCentury) {
    PinnedHost& host = pin(1999, 12, 31, 23, 59, 59);
    Variant s(u"25/__/__");
    EXPECT_EQ(k.Date20(s), DateFromParts(1999, 12, 25).serial);
    EXPECT_EQ(s, Variant(u"25/12/1999"));
    s = Variant(u"01/02/0005");
    EXPECT_EQ(k.Date20(s), DateFromParts(1905, 2, 1).serial);
    EXPECT_EQ(s, Variant(u"01/02/1905"));
    EXPECT_TRUE(host.shown.empty());
    EXPECT_EQ(host.beeps, 0);
}

TEST_F(DatesAtAnotherToday, Date20ReportsEachFailedStepAndKeepsTheText) {
    PinnedHost& host = pin(2031, 7, 4);
    Variant s(u"30/02/__");
    EXPECT_EQ(k.Date20(s), 0.0);
    EXPECT_EQ(s, Variant(u"30/02/__"));
    EXPECT_EQ(host.beeps, 2);
    ASSERT_EQ(host.shown.size(), 2u);
    for (const Shown& m : host.shown) {
        EXPECT_EQ(m.icon, MsgIcon::Exclamation);
        EXPECT_EQ(m.title, u"Date20");
        EXPECT_EQ(m.text, u"Plileglo : 13 - Type mismatch : '30/02/__'");
    }
}

TEST_F(DatesAtAnotherToday, ZeroDatesAreRewrittenWithTheMomentOfTheCall) {
    pin(2024, 2, 29, 18, 30);
    const Date now = NowDateTime();
    Date g{0};
    EXPECT_TRUE(k.Is_FineMese(g));
    EXPECT_EQ(g, now);
    g = Date{0};
    EXPECT_FALSE(k.Is_IniMese(g));
    EXPECT_EQ(g, now);
    EXPECT_TRUE(k.Is_FineMese());

    pin(2024, 3, 1, 0, 0, 1);
    EXPECT_TRUE(k.Is_IniMese());
    Arguments omitted;  // a late-bound call gets the published default, the zero date
    EXPECT_EQ(k.invoke("Is_IniMese", InvokeKind::Method, omitted), Variant(true));
    EXPECT_FALSE(k.Is_FineMese());
    Date set = DateFromParts(2024, 3, 31);
    EXPECT_TRUE(k.Is_FineMese(set));
    EXPECT_EQ(set, DateFromParts(2024, 3, 31));
}

TEST_F(DatesAtAnotherToday, HeaderStampsTheMomentOfTheCall) {
    pin(2024, 2, 29, 9, 7, 59);
    const String line = k.HeadPrtDate(String(50, u'-'), 42);
    EXPECT_EQ(line.size(), 50u);
    EXPECT_EQ(line.substr(0, 17), u"29-02-2024 09:07 ");
    EXPECT_EQ(line.substr(17, 18), String(18, u'-'));
    EXPECT_EQ(line.substr(35), u" Pag. N.    42 ");
}

}  // namespace
}  // namespace kiv
