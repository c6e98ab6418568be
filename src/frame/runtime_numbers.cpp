// Numbers: reading text as numbers, rounding, and the texts of numbers.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "frame/convert.hpp"
#include "frame/errors.hpp"
#include "frame/locale.hpp"
#include "frame/runtime.hpp"

namespace kiv {
namespace {

bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

// Collects the characters of a number for std::from_chars; stays on the
// stack for any ordinary number.
class CharBuffer {
public:
    void push(char c) {
        if (n_ < sizeof small_) small_[n_] = c;
        else {
            if (big_.empty()) big_.assign(small_, n_);
            big_ += c;
        }
        ++n_;
    }
    const char* data() const { return n_ <= sizeof small_ ? small_ : big_.data(); }
    std::size_t size() const { return n_; }

private:
    char small_[96];
    std::string big_;
    std::size_t n_ = 0;
};

enum class Parse { Ok, Bad, Overflow };

// Digits already collected as "iii.fff" with a decimal exponent. Leading
// zeros of the integer part are never pushed, so `intDigits` counts the
// significant ones and `fracZeros` the zeros that open the fraction.
Parse Finish(CharBuffer& buf, int intDigits, int fracZeros, long exponent, bool negative, double& out) {
    if (exponent != 0) {
        buf.push('e');
        char tmp[24];
        const auto r = std::to_chars(tmp, tmp + sizeof tmp, exponent);
        for (const char* c = tmp; c < r.ptr; ++c) buf.push(*c);
    }
    double v = 0;
    const auto r = std::from_chars(buf.data(), buf.data() + buf.size(), v, std::chars_format::general);
    if (r.ec == std::errc::result_out_of_range) {
        // Too large or too small: the magnitude decides which.
        const long magnitude = (intDigits > 0 ? intDigits : -fracZeros) + exponent;
        if (magnitude > 0) return Parse::Overflow;
        v = 0;
    } else if (r.ec != std::errc()) {
        v = 0;
    }
    out = negative && v != 0 ? -v : v;
    return Parse::Ok;
}

// "&H" / "&O" integers: up to 16 bits they read as a signed Integer, up to
// 32 bits as a signed Long, so "&HFFFF" is -1.
template <class Skip>
Parse ReadRadix(const char16_t*& p, const char16_t* e, Skip skip, bool needDigit, double& out) {
    const char16_t kind = static_cast<char16_t>(p[1] | 0x20);
    const unsigned base = kind == u'h' ? 16 : 8;
    p += 2;
    std::uint64_t value = 0;
    int count = 0;
    for (;;) {
        skip();
        if (p >= e) break;
        const char16_t c = *p;
        unsigned d;
        if (IsDigit(c)) d = static_cast<unsigned>(c - u'0');
        else if (base == 16 && (c | 0x20) >= u'a' && (c | 0x20) <= u'f') d = static_cast<unsigned>((c | 0x20) - u'a' + 10);
        else break;
        if (d >= base) break;
        if (value > (std::uint64_t{0xFFFFFFFF} >> (base == 16 ? 4 : 3)) + 1) return Parse::Overflow;
        value = value * base + d;
        ++count;
        ++p;
    }
    if (needDigit && count == 0) return Parse::Bad;
    if (value > 0xFFFFFFFFu) return Parse::Overflow;
    if (value <= 0xFFFF) out = static_cast<std::int16_t>(static_cast<std::uint16_t>(value));
    else out = static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
    return Parse::Ok;
}

bool IsRadixPrefix(const char16_t* p, const char16_t* e) {
    return e - p >= 2 && p[0] == u'&' && ((p[1] | 0x20) == u'h' || (p[1] | 0x20) == u'o');
}

bool IsExponentMark(char16_t c) { return c == u'E' || c == u'e' || c == u'D' || c == u'd'; }

// The locale grammar: blanks, one sign before or after, the currency symbol,
// parentheses for a negative, "." grouping after the first digit, ","
// decimals, an exponent. Nothing is allocated for ordinary numbers.
Parse ParseLocale(const char16_t* p, const char16_t* e, double& out) {
    const Locale& loc = currentLocale();
    const auto blank = [](char16_t c) { return c == u' ' || c == u'\t'; };
    const auto trim = [&] {
        while (p < e && blank(*p)) ++p;
        while (e > p && blank(e[-1])) --e;
    };
    const std::u16string_view symbol = loc.currencySymbol;
    const auto symbolAt = [&](const char16_t* at) {
        return !symbol.empty() && static_cast<std::size_t>(e - at) >= symbol.size() &&
               std::u16string_view(at, symbol.size()) == symbol;
    };
    trim();
    if (p == e) return Parse::Bad;
    bool paren = false;
    if (*p == u'(') {
        if (e - p < 2 || e[-1] != u')') return Parse::Bad;
        paren = true;
        ++p;
        --e;
        trim();
    }
    int sign = 0;
    bool currency = false;
    for (;;) {  // in front: a sign and the currency symbol, either order
        if (p < e && sign == 0 && (*p == u'+' || *p == u'-')) sign = *p++ == u'-' ? -1 : 1;
        else if (!currency && symbolAt(p)) { currency = true; p += symbol.size(); }
        else break;
        trim();
    }
    for (;;) {  // behind
        if (p < e && sign == 0 && (e[-1] == u'+' || e[-1] == u'-')) sign = *--e == u'-' ? -1 : 1;
        else if (!currency && e - p >= static_cast<std::ptrdiff_t>(symbol.size()) && !symbol.empty() &&
                 symbolAt(e - symbol.size())) {
            currency = true;
            e -= symbol.size();
        } else break;
        trim();
    }
    if (paren && sign != 0) return Parse::Bad;
    const bool negative = paren || sign < 0;
    if (p == e) return Parse::Bad;

    if (IsRadixPrefix(p, e)) {
        const Parse r = ReadRadix(p, e, [] {}, true, out);
        if (r != Parse::Ok) return r;
        if (p != e) return Parse::Bad;
        if (negative) out = -out;
        return Parse::Ok;
    }

    CharBuffer buf;
    int intDigits = 0, fracZeros = 0;
    bool digit = false;
    if (IsDigit(*p)) {
        for (; p < e; ++p) {
            if (IsDigit(*p)) {
                digit = true;
                if (intDigits > 0 || *p != u'0') { buf.push(static_cast<char>(*p)); ++intDigits; }
            } else if (*p != loc.grouping) {
                break;
            }
        }
    }
    if (p < e && *p == loc.decimal) {
        ++p;
        buf.push('.');
        bool leading = intDigits == 0;
        for (; p < e && IsDigit(*p); ++p) {
            digit = true;
            if (leading && *p == u'0') ++fracZeros;
            else leading = false;
            buf.push(static_cast<char>(*p));
        }
    }
    if (!digit) return Parse::Bad;
    if (buf.size() == 0) buf.push('0');
    long exponent = 0;
    if (p < e && IsExponentMark(*p)) {
        ++p;
        bool minus = false;
        if (p < e && (*p == u'+' || *p == u'-')) minus = *p++ == u'-';
        if (p == e || !IsDigit(*p)) return Parse::Bad;
        for (; p < e && IsDigit(*p); ++p) exponent = std::min(exponent * 10 + (*p - u'0'), 100000L);
        if (minus) exponent = -exponent;
    }
    if (p != e) return Parse::Bad;
    return Finish(buf, intDigits, fracZeros, exponent, negative, out);
}

// The number a Variant holds, for the Variant overloads below; text is read
// under the locale.
double NumberOf(const Variant& v) { return ToDoubleLocale(v); }

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
String CurrencyText(Currency c) { return CurrencySpell(c, currentLocale().decimal, false); }

Double ValPrefix(const String& text) {
    const char16_t* p = text.data();
    const char16_t* const e = p + text.size();
    const auto skip = [&] {
        while (p < e && (*p == u' ' || *p == u'\t' || *p == u'\n')) ++p;
    };
    skip();
    if (IsRadixPrefix(p, e)) {
        double v = 0;
        if (ReadRadix(p, e, skip, false, v) == Parse::Overflow) raise(kOverflow);
        return v;
    }
    bool negative = false;
    if (p < e && (*p == u'+' || *p == u'-')) {
        negative = *p++ == u'-';
        skip();
    }
    CharBuffer buf;
    int intDigits = 0, fracZeros = 0;
    bool digit = false;
    for (; p < e; skip()) {  // blanks inside the digits do not count
        if (!IsDigit(*p)) break;
        digit = true;
        if (intDigits > 0 || *p != u'0') { buf.push(static_cast<char>(*p)); ++intDigits; }
        ++p;
    }
    if (p < e && *p == u'.') {
        ++p;
        buf.push('.');
        bool leading = intDigits == 0;
        for (skip(); p < e && IsDigit(*p); skip()) {
            digit = true;
            if (leading && *p == u'0') ++fracZeros;
            else leading = false;
            buf.push(static_cast<char>(*p++));
        }
    }
    if (!digit) return 0;
    if (buf.size() == 0 || buf.data()[buf.size() - 1] == '.') buf.push('0');
    long exponent = 0;
    if (p < e && IsExponentMark(*p)) {
        const char16_t* const mark = p;
        ++p;
        skip();
        bool minus = false;
        if (p < e && (*p == u'+' || *p == u'-')) {
            minus = *p++ == u'-';
            skip();
        }
        if (p < e && IsDigit(*p)) {
            for (; p < e && IsDigit(*p); skip()) exponent = std::min(exponent * 10 + (*p++ - u'0'), 100000L);
            if (minus) exponent = -exponent;
        } else {
            p = mark;  // a mark without digits is not an exponent
        }
    }
    double v = 0;
    if (Finish(buf, intDigits, fracZeros, exponent, negative, v) == Parse::Overflow) raise(kOverflow);
    return v;
}

Double ToDoubleLocale(const Variant& value) {
    switch (value.type()) {
        case VarType::Empty: return 0;
        case VarType::Null: raise(kInvalidUseOfNull);
        case VarType::Integer: return *value.as<Integer>();
        case VarType::Long: return *value.as<Long>();
        case VarType::Single: return *value.as<Single>();
        case VarType::Double: return *value.as<Double>();
        case VarType::Currency: return value.as<Currency>()->toDouble();
        case VarType::Byte: return *value.as<Byte>();
        case VarType::Boolean: return *value.as<Boolean>() ? -1.0 : 0.0;
        case VarType::Date: return value.as<Date>()->serial;
        case VarType::String: {
            const String& s = *value.as<String>();
            double v = 0;
            switch (ParseLocale(s.data(), s.data() + s.size(), v)) {
                case Parse::Ok: return v;
                case Parse::Overflow: raise(kOverflow);
                case Parse::Bad: break;
            }
            raise(kTypeMismatch);
        }
        default: raise(kTypeMismatch);
    }
}

Boolean IsNumericValue(const Variant& value) {
    if (value.isNumber() || value.isBoolean() || value.isEmpty()) return true;
    if (const String* s = value.as<String>()) return IsNumericText(*s);
    return false;
}

Boolean IsNumericText(const String& text) {
    // Plain digits (codes, amounts read from records) need no full parse;
    // beyond 300 digits the value might overflow, so those are parsed.
    if (!text.empty() && text.size() <= 300 && std::all_of(text.begin(), text.end(), IsDigit)) return true;
    double v = 0;
    return ParseLocale(text.data(), text.data() + text.size(), v) == Parse::Ok;
}

namespace {
// std::to_chars rounds the exact binary value correctly, ties to even. Whole
// numbers, and values with no bits below the wanted place, are already
// rounded (`whole`: where the type has no fraction bits left; `places`: the
// most binary, and so decimal, places the type has).
template <class F>
F RoundBinary(F value, int decimals, F whole, int places) {
    if (!std::isfinite(value) || std::fabs(value) >= whole || decimals > places) return value;
    char buf[1200];
    const auto r = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::fixed, decimals);
    F out = 0;
    std::from_chars(buf, r.ptr, out);
    return out == 0 ? F(0) : out;
}
}  // namespace

Double RoundHalfEven(Double value, int decimals) {
    if (decimals < 0) raise(kInvalidCall);
    return RoundBinary(value, decimals, 4503599627370496.0, 1074);
}

namespace {
Single RoundSingle(Single value, int decimals) { return RoundBinary(value, decimals, 8388608.0f, 149); }

Currency RoundCurrency(Currency c, int decimals) {
    if (decimals >= 4) return c;
    std::int64_t unit = 1;
    for (int i = decimals; i < 4; ++i) unit *= 10;
    std::int64_t q = c.scaled / unit;
    const std::int64_t rest = c.scaled % unit;
    const std::int64_t twice = 2 * (rest < 0 ? -rest : rest);
    if (twice > unit || (twice == unit && q % 2 != 0)) q += c.scaled < 0 ? -1 : 1;
    return Currency{q * unit};
}
}  // namespace

Variant RoundHalfEven(const Variant& value, int decimals) {
    if (decimals < 0) raise(kInvalidCall);
    switch (value.type()) {
        case VarType::Null: return value;
        case VarType::Empty: return Variant(Integer{0});
        case VarType::Integer: case VarType::Long: case VarType::Byte: return value;
        case VarType::Boolean: return Variant(static_cast<Integer>(*value.as<Boolean>() ? -1 : 0));
        case VarType::Single: return Variant(RoundSingle(*value.as<Single>(), decimals));
        case VarType::Currency: return Variant(RoundCurrency(*value.as<Currency>(), decimals));
        case VarType::Date: return Variant(Date{RoundHalfEven(value.as<Date>()->serial, decimals)});
        default: return Variant(RoundHalfEven(NumberOf(value), decimals));
    }
}

Integer RoundToInteger(Double value) {
    const double r = RoundHalfEven(value, 0);
    if (!(r >= -32768.0 && r <= 32767.0)) raise(kOverflow);
    return static_cast<Integer>(r);
}

Long RoundToLong(Double value) {
    const double r = RoundHalfEven(value, 0);
    if (!(r >= -2147483648.0 && r <= 2147483647.0)) raise(kOverflow);
    return static_cast<Long>(r);
}

Double IntFloor(Double value) { return std::floor(value); }
Double IntTrunc(Double value) { return std::trunc(value); }

namespace {
template <class Op>
Variant WholePart(const Variant& value, Op op) {
    switch (value.type()) {
        case VarType::Null: return value;
        case VarType::Empty: return Variant(Integer{0});
        case VarType::Integer: case VarType::Long: case VarType::Byte: return value;
        case VarType::Boolean: return Variant(static_cast<Integer>(*value.as<Boolean>() ? -1 : 0));
        case VarType::Single: return Variant(static_cast<Single>(op(static_cast<double>(*value.as<Single>()))));
        case VarType::Double: return Variant(op(*value.as<Double>()));
        case VarType::Currency: {
            // Whole units exactly, the op decides only what the fraction adds (0 or -1).
            const std::int64_t s = value.as<Currency>()->scaled;
            const auto extra = static_cast<std::int64_t>(op(static_cast<double>(s % 10000) / 10000.0));
            return Variant(Currency{(s / 10000 + extra) * 10000});
        }
        case VarType::Date: return Variant(Date{op(value.as<Date>()->serial)});
        case VarType::String: return Variant(op(ToDoubleLocale(value)));
        default: raise(kTypeMismatch);
    }
}
}  // namespace

Variant IntFloor(const Variant& value) { return WholePart(value, [](double v) { return std::floor(v); }); }
Variant IntTrunc(const Variant& value) { return WholePart(value, [](double v) { return std::trunc(v); }); }

String StrNum(const Variant& number) {
    switch (number.type()) {
        case VarType::Null: raise(kInvalidUseOfNull);
        case VarType::Empty: return u" 0";
        case VarType::Integer: return IntegerSpell(*number.as<Integer>(), true);
        case VarType::Long: return IntegerSpell(*number.as<Long>(), true);
        case VarType::Byte: return IntegerSpell(*number.as<Byte>(), true);
        case VarType::Boolean: return *number.as<Boolean>() ? u"True" : u"False";
        case VarType::Single: return Spell(ToDecimalDigits(*number.as<Single>()), u'.', true, 7);
        case VarType::Currency: return CurrencySpell(*number.as<Currency>(), u'.', true);
        case VarType::Date: return DateText(*number.as<Date>());
        default: return Spell(ToDecimalDigits(NumberOf(number), 15), u'.', true, 15);
    }
}

String NumberText(Double value) { return Spell(ToDecimalDigits(value, 15), currentLocale().decimal, false, 15); }
String NumberText(Single value) { return Spell(ToDecimalDigits(value), currentLocale().decimal, false, 7); }

}  // namespace kiv
