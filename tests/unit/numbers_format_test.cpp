// Number formatting and rounding over many values: what must hold between
// the plain layout, the layout with marks, the trimmed one and the number
// itself, and between the four ways of rounding to a step.
#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "frame/cl_kiv.hpp"
#include "frame/runtime.hpp"

namespace kiv {
namespace {

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

}  // namespace
}  // namespace kiv

namespace kiv {
namespace {

// FmtNum lays a plain column out directly; the bytes must be those of its
// pattern "#...#0.00" through the general engine, then right-aligned.
TEST(FmtNumDirectLayout, SameBytesAsThePatternOnAMillionValues) {
    Cl_KIV kiv;
    std::mt19937_64 rng(20260315);
    std::uniform_real_distribution<double> mantissa(-10, 10);
    std::uniform_int_distribution<int> exponent(-6, 16), dec(0, 6), lun(1, 24);
    for (int i = 0; i < 1'000'000; ++i) {
        double x = mantissa(rng) * std::pow(10.0, exponent(rng));
        const Integer d = static_cast<Integer>(dec(rng));
        // One in four sits on a rounding half at the last decimal shown.
        if (i % 4 == 0) x = (std::trunc(x * std::pow(10.0, d)) + 0.5) / std::pow(10.0, d);
        const Integer l = static_cast<Integer>(d + 2 + lun(rng));
        String pattern(static_cast<std::size_t>(d != 0 ? l - d - 2 : l - 1), u'#');
        pattern += u'0';
        if (d != 0) pattern += u'.' + String(static_cast<std::size_t>(d), u'0');
        const String general = FormatPattern(Variant(FormatPattern(Variant(x), pattern)), String(pattern.size(), u'@'));
        ASSERT_EQ(kiv.FmtNum(Variant(x), l, d), general) << x << " " << l << " " << d;
    }
}

}  // namespace
}  // namespace kiv

namespace kiv {
namespace {

// The digits of a Double, taken from its shortest text when that is short
// enough, must be those of the exact rounding to 15 digits: random bit
// patterns, amounts of cents, values near a power of ten and halves.
TEST(DecimalDigitsOfADouble, SameAsTheExactRoundingToFifteenDigits) {
    std::mt19937_64 rng(20261123);
    const auto exact = [](double x) {
        char buf[64];
        const auto r = std::to_chars(buf, buf + sizeof buf, x, std::chars_format::scientific, 14);
        return std::string(buf, r.ptr);
    };
    const auto ours = [](double x) {
        const DecimalDigits d = ToDecimalDigits(x, 15);
        std::string s = d.negative ? "-" : "";
        s += d.digits[0];
        s += '.';
        for (int i = 1; i < 15; ++i) s += i < d.count ? d.digits[i] : '0';
        char e[16];
        std::snprintf(e, sizeof e, "e%c%02d", d.exponent < 0 ? '-' : '+', std::abs(d.exponent));
        return s + e;
    };
    for (int i = 0; i < 1'000'000; ++i) {
        double x = 0;
        switch (i % 5) {
            case 0: {
                const std::uint64_t bits = rng();
                std::memcpy(&x, &bits, sizeof x);
                if (!std::isfinite(x) || x == 0) continue;
                break;
            }
            case 1: x = static_cast<double>(static_cast<std::int64_t>(rng() % 100'000'000'000'000)) / 100; break;
            case 2: x = std::nextafter(std::pow(10.0, static_cast<int>(rng() % 40) - 20), (rng() & 1) ? 0.0 : 1e300); break;
            case 3: x = std::ldexp(static_cast<double>(rng() >> 11), static_cast<int>(rng() % 200) - 150); break;
            default: x = static_cast<double>(rng() % 1'000'000'000'000'000) + 0.5; break;  // ties at 15 digits
        }
        ASSERT_EQ(ours(x), exact(x)) << i;
    }
}

}  // namespace
}  // namespace kiv
