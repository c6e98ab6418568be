// Number text: the decimal digits of a number and their spelling, invariant
// (StrNum) or under the locale (NumberText, CurrencyText).
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "frame/convert.hpp"
#include "frame/errors.hpp"
#include "frame/locale.hpp"
#include "frame/runtime.hpp"

namespace kiv {
namespace {

void AppendExponent(String& out, int x) {
    out += u'E';
    out += x < 0 ? u'-' : u'+';
    const int a = x < 0 ? -x : x;
    if (a < 10) out += u'0';
    char tmp[8];
    const auto r = std::to_chars(tmp, tmp + sizeof tmp, a);
    for (const char* c = tmp; c < r.ptr; ++c) out += static_cast<char16_t>(*c);
}

// Fixed form while the exponent is below the count of significant digits and
// not below -4, scientific beyond.
String Spell(const DecimalDigits& d, char16_t point, bool invariant, int sciLimit) {
    String out;
    out.reserve(static_cast<std::size_t>(d.count) + 24);
    if (d.negative) out += u'-';
    else if (invariant) out += u' ';
    const int x = d.exponent;
    if (x >= sciLimit || x < -4) {
        out += static_cast<char16_t>(d.digits[0]);
        if (d.count > 1) {
            out += point;
            for (int i = 1; i < d.count; ++i) out += static_cast<char16_t>(d.digits[i]);
        }
        AppendExponent(out, x);
    } else if (x >= 0) {
        for (int i = 0; i <= x; ++i) out += i < d.count ? static_cast<char16_t>(d.digits[i]) : u'0';
        if (d.count > x + 1) {
            out += point;
            for (int i = x + 1; i < d.count; ++i) out += static_cast<char16_t>(d.digits[i]);
        }
    } else {
        if (!invariant) out += u'0';
        out += point;
        out.append(static_cast<std::size_t>(-x - 1), u'0');
        for (int i = 0; i < d.count; ++i) out += static_cast<char16_t>(d.digits[i]);
    }
    return out;
}

// A 64 x 64 -> 128-bit product and its shift, in halves, so that 32-bit
// builds share the code.
struct U128 {
    std::uint64_t hi, lo;
};

U128 Multiply(std::uint64_t a, std::uint64_t b) {
    const std::uint64_t a0 = a & 0xffffffffu, a1 = a >> 32, b0 = b & 0xffffffffu, b1 = b >> 32;
    const std::uint64_t p00 = a0 * b0, p01 = a0 * b1, p10 = a1 * b0, p11 = a1 * b1;
    const std::uint64_t mid = (p00 >> 32) + (p01 & 0xffffffffu) + (p10 & 0xffffffffu);
    return {p11 + (p01 >> 32) + (p10 >> 32) + (mid >> 32), (mid << 32) | (p00 & 0xffffffffu)};
}

// floor(p / 2^k), and the remainder against half of 2^k: -1 below, 0 on it, 1 above.
std::uint64_t ShiftRight(U128 p, int k, int& half) {
    std::uint64_t q, rhi, rlo;  // quotient; remainder as hi:lo
    if (k < 64) {
        q = (p.lo >> k) | (k > 0 ? p.hi << (64 - k) : 0);
        rhi = 0;
        rlo = k > 0 ? p.lo & ((std::uint64_t{1} << k) - 1) : 0;
    } else {
        q = k < 128 ? p.hi >> (k - 64) : 0;
        rhi = k < 128 ? p.hi & ((std::uint64_t{1} << (k - 64)) - 1) : p.hi;
        rlo = p.lo;
    }
    if (k == 0) { half = -1; return q; }
    // Half of 2^k is 2^(k-1).
    const std::uint64_t hhi = k - 1 >= 64 ? std::uint64_t{1} << (k - 65) : 0;
    const std::uint64_t hlo = k - 1 < 64 ? std::uint64_t{1} << (k - 1) : 0;
    half = rhi != hhi ? (rhi < hhi ? -1 : 1) : (rlo != hlo ? (rlo < hlo ? -1 : 1) : 0);
    return q;
}

constexpr auto kPowersOfFive = [] {
    std::array<std::uint64_t, 28> p{};
    p[0] = 1;
    for (std::size_t i = 1; i < p.size(); ++i) p[i] = p[i - 1] * 5;
    return p;
}();

// Eight digits with leading zeros, by pairs: two short chains rather than
// one long one of divisions by ten.
void WriteEightDigits(char* out, std::uint32_t v) {
    static constexpr char kPairs[] =
        "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
        "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
        "8081828384858687888990919293949596979899";
    const std::uint32_t high = v / 10000, low = v % 10000;
    std::memcpy(out, kPairs + 2 * (high / 100), 2);
    std::memcpy(out + 2, kPairs + 2 * (high % 100), 2);
    std::memcpy(out + 4, kPairs + 2 * (low / 100), 2);
    std::memcpy(out + 6, kPairs + 2 * (low % 100), 2);
}

// The common magnitudes, rounded to `significant` <= 15 digits in integers:
// x = m 2^e exactly, so x 10^p = m 5^p 2^(e+p) is cut at the integer with
// its remainder known, and rounds half to even as the exact conversion
// does. False when x is outside [1e-12, 1e15) or not a normal Double.
bool RoundedDigits(Double value, int significant, DecimalDigits& d) {
    const Double a = std::fabs(value);
    if (significant > 15 || !(a >= 1e-12 && a < 1e15)) return false;
    std::uint64_t bits;
    std::memcpy(&bits, &a, sizeof bits);
    const int e2 = static_cast<int>(bits >> 52) - 1023;  // 2^e2 <= a < 2^(e2 + 1)
    const std::uint64_t m = (bits & ((std::uint64_t{1} << 52) - 1)) | (std::uint64_t{1} << 52);
    const int e = e2 - 52;
    const std::uint64_t limit = kPowersOfFive[significant] << significant;  // 10^significant
    // floor(e2 log10 2) is the decimal exponent or one below it.
    for (int E = (e2 * 78913) >> 18;; ++E) {
        const int p = significant - 1 - E;
        if (p < 0 || p > 27) return false;  // 5^p in 64 bits
        const U128 product = Multiply(m, kPowersOfFive[p]);
        const int shift = e + p;
        if (shift >= 0) return false;  // not over this range
        int half = 0;
        std::uint64_t n = ShiftRight(product, -shift, half);
        if (n >= limit) continue;  // the exponent is the next one
        if (half > 0 || (half == 0 && (n & 1) != 0)) ++n;
        if (n == limit) { n /= 10; ++E; }
        // n has exactly `significant` digits: the last ones of its 16.
        char text[16];
        WriteEightDigits(text, static_cast<std::uint32_t>(n / 100'000'000));
        WriteEightDigits(text + 8, static_cast<std::uint32_t>(n % 100'000'000));
        const char* first = text + 16 - significant;
        int count = significant;
        while (count > 1 && first[count - 1] == '0') --count;
        std::memcpy(d.digits, first, static_cast<std::size_t>(count));
        d.count = count;
        d.exponent = E;
        d.negative = value < 0;
        return true;
    }
}

template <class F>
DecimalDigits Digits(F value, int significant) {
    DecimalDigits d{};
    d.digits[0] = '0';
    d.count = 1;
    if (value == 0 || !std::isfinite(value)) return d;  // -0 shows as 0
    char buf[64];
    const auto r = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::scientific, significant - 1);
    const char* c = buf;
    if (*c == '-') { d.negative = true; ++c; }
    int n = 0;
    for (; c < r.ptr && *c != 'e'; ++c)
        if (*c != '.') d.digits[n++] = *c;
    while (n > 1 && d.digits[n - 1] == '0') --n;
    d.count = n;
    int x = 0;
    std::from_chars(c + 1 + (c[1] == '+'), r.ptr, x);
    d.exponent = x;
    return d;
}

String CurrencySpell(Currency c, char16_t point, bool invariant) {
    const bool negative = c.scaled < 0;
    const std::uint64_t a = negative ? 0 - static_cast<std::uint64_t>(c.scaled) : static_cast<std::uint64_t>(c.scaled);
    const std::uint64_t whole = a / 10000;
    int frac = static_cast<int>(a % 10000), places = 4;
    while (places > 0 && frac % 10 == 0) { frac /= 10; --places; }
    String out;
    if (negative) out += u'-';
    else if (invariant) out += u' ';
    char tmp[24];
    if (whole != 0 || !invariant || places == 0) {
        const auto r = std::to_chars(tmp, tmp + sizeof tmp, whole);
        for (const char* p = tmp; p < r.ptr; ++p) out += static_cast<char16_t>(*p);
    }
    if (places > 0) {
        out += point;
        char f[4];
        for (int i = places - 1; i >= 0; --i) { f[i] = static_cast<char>('0' + frac % 10); frac /= 10; }
        for (int i = 0; i < places; ++i) out += static_cast<char16_t>(f[i]);
    }
    return out;
}

String IntegerSpell(long long v, bool invariant) {
    String out;
    if (v >= 0 && invariant) out += u' ';
    char tmp[24];
    const auto r = std::to_chars(tmp, tmp + sizeof tmp, v);
    for (const char* p = tmp; p < r.ptr; ++p) out += static_cast<char16_t>(*p);
    return out;
}

}  // namespace

DecimalDigits ToDecimalDigits(Double value, int significant) {
    if (significant < 1) significant = 1;
    if (significant > 17) significant = 17;
    DecimalDigits d{};
    if (RoundedDigits(value, significant, d)) return d;
    return Digits(value, significant);
}

DecimalDigits ToDecimalDigits(Single value) { return Digits(value, 7); }

// Text that helpers of other files need: the Currency spelling.
String CurrencyText(Currency c) { return CurrencySpell(c, CurrentLocale().decimal, false); }

String StrNum(const Variant& number) {
    switch (number.type()) {
        case VarType::Null: Raise(kInvalidUseOfNull);
        case VarType::Empty: return u" 0";
        case VarType::Integer: return IntegerSpell(*number.as<Integer>(), true);
        case VarType::Long: return IntegerSpell(*number.as<Long>(), true);
        case VarType::Byte: return IntegerSpell(*number.as<Byte>(), true);
        case VarType::Boolean: return *number.as<Boolean>() ? u"True" : u"False";
        case VarType::Single: return Spell(ToDecimalDigits(*number.as<Single>()), u'.', true, 7);
        case VarType::Currency: return CurrencySpell(*number.as<Currency>(), u'.', true);
        case VarType::Date: return DateText(*number.as<Date>());
        default: return Spell(ToDecimalDigits(ToDoubleLocale(number), 15), u'.', true, 15);
    }
}

String NumberText(Double value) { return Spell(ToDecimalDigits(value, 15), CurrentLocale().decimal, false, 15); }
String NumberText(Single value) { return Spell(ToDecimalDigits(value), CurrentLocale().decimal, false, 7); }

}  // namespace kiv
