// Number formatting and rounding over many values: what must hold between
// the plain layout, the layout with marks, the trimmed one and the number
// itself, and the format-error message as the host receives it.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <random>
#include <vector>

#include "frame/cl_kiv.hpp"
#include "frame/host.hpp"
#include "frame/runtime.hpp"

namespace kiv {
namespace {

struct Shown {
    MsgIcon icon;
    String title;
    String text;
};

class RecordingHost : public Host {
public:
    int messageBox(MsgIcon icon, const String& title, const String& text) override {
        shown.push_back({icon, title, text});
        return 1;
    }
    void beep() override {}
    Date now() override { return Date{46096.5}; }
    String applicationName() override { return u"numbers_test"; }
    std::vector<Shown> shown;
};

class NumbersFormatMessages : public ::testing::Test {
protected:
    void SetUp() override {
        host_ = std::make_shared<RecordingHost>();
        installHost(host_);
    }
    void TearDown() override { installHost(makeSystemHost()); }
    std::shared_ptr<RecordingHost> host_;
    Cl_KIV k;
};

TEST_F(NumbersFormatMessages, TooNarrowFieldShowsOneExclamationTitledFmtNum) {
    for (int old = 0; old < 2; ++old) {
        host_->shown.clear();
        const String marker = old ? k.FmtNumOld(Variant(7.0), 2, 1) : k.FmtNum(Variant(7.0), 2, 1);
        ASSERT_EQ(host_->shown.size(), 1u);
        EXPECT_EQ(host_->shown[0].icon, MsgIcon::Exclamation);
        EXPECT_EQ(host_->shown[0].title, u"FmtNum");
        EXPECT_EQ(host_->shown[0].text, u"ERRORE di formato in Function FmtNum!");
        EXPECT_GE(marker.size(), 15u);
    }
}

TEST_F(NumbersFormatMessages, FieldsThatFitShowNothing) {
    k.FmtNum(Variant(7.0), 3, 1);
    k.FmtNum(Variant(123456.0), 2);  // too wide for the field, but not a format error
    k.FmtNumOld(Variant(7.0), 3, 1);
    EXPECT_TRUE(host_->shown.empty());
}

// Digits of a layout without blanks, marks and fill.
String Digits(const String& s) {
    String out;
    for (char16_t c : s)
        if (c != u' ' && c != u'\'') out += c;
    return out;
}

std::size_t DecimalsOf(const String& s) {
    const std::size_t comma = s.find(u',');
    return comma == String::npos ? 0 : s.size() - comma - 1;
}

struct Case {
    double x;
    Integer lun;
    Integer dec;
};

std::vector<Case> Cases() {
    std::mt19937 rng(15032026);
    std::uniform_real_distribution<double> mantissa(-1, 1);
    std::uniform_int_distribution<int> exponent(-3, 9), dec(0, 4), slack(0, 6);
    std::vector<Case> cases;
    for (int i = 0; i < 3000; ++i) {
        const double x = std::round(mantissa(rng) * std::pow(10.0, exponent(rng)) * 1000) / 1000;
        const auto d = static_cast<Integer>(dec(rng));
        const auto lun = static_cast<Integer>(12 + d + slack(rng));
        cases.push_back({x, lun, d});
    }
    return cases;
}

TEST(NumbersFmtNumLayouts, PlainLayoutFillsTheWidthAndReadsBackRounded) {
    Cl_KIV k;
    for (const Case& c : Cases()) {
        const String plain = k.FmtNum(Variant(c.x), c.lun, c.dec);
        ASSERT_EQ(plain.size(), static_cast<std::size_t>(c.lun)) << c.x;
        EXPECT_EQ(DecimalsOf(plain), static_cast<std::size_t>(c.dec)) << c.x;
        const double halfStep = 0.5 * std::pow(10.0, -c.dec);
        EXPECT_NEAR(ToDoubleLocale(Variant(plain)), c.x, halfStep + 1e-15 * std::fabs(c.x) + 1e-12) << c.x;
    }
}

TEST(NumbersFmtNumLayouts, MarksGroupThreeDigitsOrAreDroppedAndReported) {
    Cl_KIV k;
    for (const Case& c : Cases()) {
        const String plain = k.FmtNum(Variant(c.x), c.lun, c.dec);
        Boolean flag = true;
        const String marked = k.FmtNum(Variant(c.x), c.lun, c.dec, flag);
        if (!flag) {
            EXPECT_EQ(marked, plain) << c.x;
            continue;
        }
        ASSERT_EQ(marked.size(), plain.size()) << c.x;
        EXPECT_EQ(Digits(marked), Digits(plain)) << c.x;
        // Between two marks, and between the last mark and the comma or end, three digits.
        const std::size_t end = std::min(marked.find(u','), marked.size());
        std::size_t run = 0;
        bool sawMark = false;
        for (std::size_t i = 0; i < end; ++i) {
            if (marked[i] == u'\'') {
                if (sawMark) {
                    EXPECT_EQ(run, 3u) << c.x;
                }
                sawMark = true;
                run = 0;
            } else if (marked[i] >= u'0' && marked[i] <= u'9') {
                ++run;
            }
        }
        if (sawMark) {
            EXPECT_EQ(run, 3u) << c.x;
        }
        // Marks appear exactly when the integer part has more than three digits.
        const double whole = std::fabs(ToDoubleLocale(Variant(plain)));
        EXPECT_EQ(sawMark, whole >= 1000) << c.x;
    }
}

TEST(NumbersFmtNumLayouts, TrimmedZerosKeepTheValueAndTheLeastDecimals) {
    Cl_KIV k;
    for (const Case& c : Cases()) {
        if (c.x == 0) continue;
        const String plain = k.FmtNum(Variant(c.x), c.lun, c.dec);
        for (Integer m = 0; m <= 5; ++m) {
            const String cut = k.FmtNum(Variant(c.x), c.lun, c.dec, false, u"", m);
            EXPECT_EQ(ToDoubleLocale(Variant(cut)), ToDoubleLocale(Variant(plain))) << c.x << " M " << m;
            const std::size_t decimals = DecimalsOf(cut);
            EXPECT_GE(decimals, std::min<std::size_t>(static_cast<std::size_t>(m), c.dec)) << c.x;
            if (decimals > static_cast<std::size_t>(m)) {
                EXPECT_NE(cut.back(), u'0') << c.x;
            }
            // Only a cut of the plain layout, or the plain layout padded with zeros.
            if (cut.size() <= plain.size()) {
                EXPECT_EQ(plain.substr(0, cut.size()), cut) << c.x;
            } else {
                EXPECT_EQ(cut.substr(plain.size()).find_first_not_of(u'0'), String::npos) << c.x;
            }
        }
    }
}

TEST(NumbersRoundingToSteps, EveryModeLandsOnTheMultiplesAroundTheNumber) {
    Cl_KIV k;
    std::mt19937 rng(2026);
    std::uniform_real_distribution<double> num(-500, 500);
    for (double approx : {1.0, 0.05, 5.0, 0.01}) {
        for (int i = 0; i < 2000; ++i) {
            const double n = std::round(num(rng) * 1000) / 1000;
            const double down = k.Arrot_Dif(n, approx);
            const double up = k.Arrot_Ecc(n, approx);
            const double nearest = k.Arrot(n, approx);
            const double halvesUp = k.Arrot_Fis(n, approx);
            const double tol = 1e-9 * std::max(1.0, std::fabs(n));
            EXPECT_LE(down, n + tol) << n << " / " << approx;
            EXPECT_GE(up, n - tol) << n << " / " << approx;
            EXPECT_LE(up - down, approx + tol) << n << " / " << approx;
            EXPECT_TRUE(nearest == down || nearest == up) << n << " / " << approx;
            EXPECT_TRUE(halvesUp == down || halvesUp == up) << n << " / " << approx;
            EXPECT_GE(halvesUp, nearest) << n << " / " << approx;
            EXPECT_LE(std::fabs(nearest - n), approx / 2 + tol) << n << " / " << approx;
        }
    }
}

TEST(NumbersParsingText, TrailingLettersDoNotChangeTheNumber) {
    Cl_KIV k;
    // Texts that start with a digit and hold no point: the prefix reads as the whole.
    for (const char16_t* text : {u"12,5", u"1234,5", u"0,25", u"7", u"0012"}) {
        const double whole = k.ToNumber(Variant(String(text)));
        EXPECT_EQ(whole, ToDoubleLocale(Variant(String(text))));
        EXPECT_EQ(k.ToNumber(Variant(String(text) + u" kg")), whole) << String(text).size();
        EXPECT_EQ(k.ToNumber(Variant(String(text) + u"%")), whole);
    }
}

}  // namespace
}  // namespace kiv
