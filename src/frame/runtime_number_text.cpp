// Number text: the decimal digits of a number and their spelling, invariant
// (StrNum) or under the locale (NumberText, CurrencyText).
#include <charconv>
#include <cmath>
#include <cstdint>

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
