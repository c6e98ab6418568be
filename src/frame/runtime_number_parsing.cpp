// Number parsing: text read as a number, under the locale (ToDoubleLocale,
// IsNumericText) or as the leading number of any text (ValPrefix).
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string_view>

#include "frame/ascii.hpp"
#include "frame/errors.hpp"
#include "frame/locale.hpp"
#include "frame/runtime.hpp"
#include "frame/small_buffer.hpp"

namespace kiv {
namespace {

enum class Parse { Ok, Bad, Overflow };

// Both grammars read a number in the same steps: a radix integer, or a
// mantissa (integer digits, a decimal point and fraction digits) and an
// exponent, then Finish. They differ in what may stand between the digits,
// which each step takes as `skip`.
const auto kNothing = [] {};

// The digits of a decimal number collected as "iii.fff", as std::from_chars
// reads them; stays on the stack for any ordinary number.
struct Mantissa {
    SmallBuffer<char, 96> text;
    int intDigits = 0;   // significant integer digits: leading zeros are never pushed
    int fracZeros = 0;   // zeros that open the fraction of a number below 1
    bool anyDigit = false;
};

template <class Skip>
void ReadIntegerDigits(const char16_t*& p, const char16_t* e, Skip skip, Mantissa& m) {
    for (; p < e && IsAsciiDigit(*p); skip()) {
        m.anyDigit = true;
        if (m.intDigits > 0 || *p != u'0') {
            m.text.push(static_cast<char>(*p));
            ++m.intDigits;
        }
        ++p;
    }
}

// After the decimal point (already passed over).
template <class Skip>
void ReadFractionDigits(const char16_t*& p, const char16_t* e, Skip skip, Mantissa& m) {
    m.text.push('.');
    bool leading = m.intDigits == 0;
    for (skip(); p < e && IsAsciiDigit(*p); skip()) {
        m.anyDigit = true;
        if (leading && *p == u'0') ++m.fracZeros;
        else leading = false;
        m.text.push(static_cast<char>(*p++));
    }
}

bool IsExponentMark(char16_t c) { return c == u'E' || c == u'e' || c == u'D' || c == u'd'; }

// From an exponent mark: a sign and digits. False when no digit follows the
// mark; `exponent` is clamped to +-100000, far beyond any Double.
template <class Skip>
bool ReadExponent(const char16_t*& p, const char16_t* e, Skip skip, long& exponent) {
    ++p;
    skip();
    bool minus = false;
    if (p < e && (*p == u'+' || *p == u'-')) {
        minus = *p++ == u'-';
        skip();
    }
    if (p == e || !IsAsciiDigit(*p)) return false;
    for (; p < e && IsAsciiDigit(*p); skip()) exponent = std::min(exponent * 10 + (*p++ - u'0'), 100000L);
    if (minus) exponent = -exponent;
    return true;
}

// The collected digits as a Double; Overflow when the magnitude is too
// large, 0 when too small.
Parse Finish(Mantissa& m, long exponent, bool negative, double& out) {
    SmallBuffer<char, 96>& buf = m.text;
    if (buf.size() == 0 || buf.data()[buf.size() - 1] == '.') buf.push('0');
    if (exponent != 0) {
        buf.push('e');
        char tmp[24];
        const auto r = std::to_chars(tmp, tmp + sizeof tmp, exponent);
        buf.push(tmp, static_cast<std::size_t>(r.ptr - tmp));
    }
    double v = 0;
    const auto r = std::from_chars(buf.data(), buf.data() + buf.size(), v, std::chars_format::general);
    if (r.ec == std::errc::result_out_of_range) {
        // Too large or too small: the magnitude decides which.
        const long magnitude = (m.intDigits > 0 ? m.intDigits : -m.fracZeros) + exponent;
        if (magnitude > 0) return Parse::Overflow;
        v = 0;
    } else if (r.ec != std::errc()) {
        v = 0;
    }
    out = negative && v != 0 ? -v : v;
    return Parse::Ok;
}

bool IsRadixPrefix(const char16_t* p, const char16_t* e) {
    return e - p >= 2 && p[0] == u'&' && (AsciiLower(p[1]) == u'h' || AsciiLower(p[1]) == u'o');
}

// "&H" / "&O" integers: up to 16 bits they read as a signed Integer, up to
// 32 bits as a signed Long, so "&HFFFF" is -1.
template <class Skip>
Parse ReadRadix(const char16_t*& p, const char16_t* e, Skip skip, bool needDigit, double& out) {
    const unsigned base = AsciiLower(p[1]) == u'h' ? 16 : 8;
    p += 2;
    std::uint64_t value = 0;
    int count = 0;
    for (;;) {
        skip();
        if (p >= e) break;
        const char16_t c = AsciiLower(*p);
        unsigned d;
        if (IsAsciiDigit(c)) d = static_cast<unsigned>(c - u'0');
        else if (base == 16 && c >= u'a' && c <= u'f') d = static_cast<unsigned>(c - u'a' + 10);
        else break;
        if (d >= base) break;
        // Past 2^32 / base the next digit takes the value beyond 32 bits; the
        // guard keeps it below 2^33 and the check after the loop settles it.
        if (value > (std::uint64_t{0xFFFFFFFF} >> (base == 16 ? 4 : 3)) + 1) return Parse::Overflow;
        value = value * base + d;
        ++count;
        ++p;
    }
    if (needDigit && count == 0) return Parse::Bad;
    if (value > 0xFFFFFFFFu) return Parse::Overflow;
    // [0, 0xFFFF] as the bits of an Integer, [0x10000, 0xFFFFFFFF] as those of a Long.
    if (value <= 0xFFFF) out = static_cast<std::int16_t>(static_cast<std::uint16_t>(value));
    else out = static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
    return Parse::Ok;
}

// What may stand around a number under the locale: blanks, parentheses for
// a negative, one sign and the currency symbol before or after. Narrows
// [p, e) to the number itself.
Parse StripAffixes(const char16_t*& p, const char16_t*& e, const Locale& loc, bool& negative) {
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
    negative = paren || sign < 0;
    return p == e ? Parse::Bad : Parse::Ok;
}

// The locale grammar: the affixes above, "." grouping after the first
// digit, "," decimals, an exponent; the whole text or nothing. Nothing is
// allocated for ordinary numbers.
Parse ParseLocale(const char16_t* p, const char16_t* e, double& out) {
    const Locale& loc = CurrentLocale();
    bool negative = false;
    if (const Parse r = StripAffixes(p, e, loc, negative); r != Parse::Ok) return r;

    if (IsRadixPrefix(p, e)) {
        const Parse r = ReadRadix(p, e, kNothing, true, out);
        if (r != Parse::Ok) return r;
        if (p != e) return Parse::Bad;
        if (negative) out = -out;
        return Parse::Ok;
    }

    Mantissa m;
    ReadIntegerDigits(p, e, [&] { while (p < e && *p == loc.grouping) ++p; }, m);
    if (p < e && *p == loc.decimal) ReadFractionDigits(++p, e, kNothing, m);
    if (!m.anyDigit) return Parse::Bad;
    long exponent = 0;
    if (p < e && IsExponentMark(*p) && !ReadExponent(p, e, kNothing, exponent)) return Parse::Bad;
    if (p != e) return Parse::Bad;
    return Finish(m, exponent, negative, out);
}

}  // namespace

// The invariant grammar, read as far as it goes: blanks anywhere between the
// digits, "." decimals, an exponent when digits follow its mark.
Double ValPrefix(const String& text) {
    const char16_t* p = text.data();
    const char16_t* const e = p + text.size();
    const auto skip = [&] {
        while (p < e && (*p == u' ' || *p == u'\t' || *p == u'\n')) ++p;
    };
    skip();
    if (IsRadixPrefix(p, e)) {
        double v = 0;
        if (ReadRadix(p, e, skip, false, v) == Parse::Overflow) Raise(kOverflow);
        return v;
    }
    bool negative = false;
    if (p < e && (*p == u'+' || *p == u'-')) {
        negative = *p++ == u'-';
        skip();
    }
    Mantissa m;
    ReadIntegerDigits(p, e, skip, m);
    if (p < e && *p == u'.') ReadFractionDigits(++p, e, skip, m);
    if (!m.anyDigit) return 0;
    long exponent = 0;
    if (p < e && IsExponentMark(*p)) {
        const char16_t* const mark = p;
        if (!ReadExponent(p, e, skip, exponent)) p = mark;  // a mark without digits is not an exponent
    }
    double v = 0;
    if (Finish(m, exponent, negative, v) == Parse::Overflow) Raise(kOverflow);
    return v;
}

Double ToDoubleLocale(const Variant& value) {
    switch (value.type()) {
        case VarType::Empty: return 0;
        case VarType::Null: Raise(kInvalidUseOfNull);
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
                case Parse::Overflow: Raise(kOverflow);
                case Parse::Bad: break;
            }
            Raise(kTypeMismatch);
        }
        default: Raise(kTypeMismatch);
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
    if (!text.empty() && text.size() <= 300 && std::all_of(text.begin(), text.end(), IsAsciiDigit<char16_t>))
        return true;
    // Nor does a text that opens with a letter (codes, names): no number
    // starts so unless the letter is where the currency symbol begins.
    const char16_t first = text.empty() ? u'\0' : AsciiLower(text[0]);
    if (first >= u'a' && first <= u'z' && CurrentLocale().currencySymbol.find(text[0]) != 0) return false;
    double v = 0;
    return ParseLocale(text.data(), text.data() + text.size(), v) == Parse::Ok;
}

}  // namespace kiv
