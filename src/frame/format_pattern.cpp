// Pattern formatting of numbers, dates and texts: digit placeholders with
// the Italian separators, date parts, right-aligned text placeholders.
#include <cmath>
#include <cstring>

#include "frame/ascii.hpp"
#include "frame/convert.hpp"
#include "frame/errors.hpp"
#include "frame/locale.hpp"
#include "frame/runtime.hpp"
#include "frame/small_buffer.hpp"

namespace kiv {
namespace {

enum class Kind { Number, Text, Date };

// The result is built on the stack and becomes a String once at the end:
// number patterns are on the hot path of every amount shown.
using Out = SmallBuffer<char16_t, 96>;

// Quoted runs and backslash escapes are literal text in every kind of
// pattern. Returns the index after the literal, appending it to `out`.
std::size_t CopyLiteral(const String& pat, std::size_t i, Out* out) {
    if (pat[i] == u'\\') {
        if (i + 1 < pat.size() && out) out->push(pat[i + 1]);
        return i + 2;
    }
    std::size_t j = i + 1;  // a double quote
    while (j < pat.size() && pat[j] != u'"') {
        if (out) out->push(pat[j]);
        ++j;
    }
    return j + 1;
}

bool IsLiteralStart(char16_t c) { return c == u'"' || c == u'\\'; }

Kind Classify(const String& pat) {
    bool dateLetter = false, month = false, text = false, digits = false;
    for (std::size_t i = 0; i < pat.size();) {
        if (IsLiteralStart(pat[i])) { i = CopyLiteral(pat, i, nullptr); continue; }
        const char16_t c = AsciiLower(pat[i++]);
        if (c == u'd' || c == u'y' || c == u'h' || c == u'n' || c == u's') dateLetter = true;
        else if (c == u'm') month = true;
        else if (c == u'@') text = true;
        else if (c == u'0' || c == u'#') digits = true;
    }
    // "mm" alone is the month; an "m" among digit or text placeholders is a letter.
    if (dateLetter || (month && !digits && !text)) return Kind::Date;
    return text ? Kind::Text : Kind::Number;
}

bool IsPlaceholder(char16_t c) { return c == u'0' || c == u'#'; }

// Where the decimal point is, how many placeholders on each side, whether a
// comma between digit placeholders asks for grouping.
struct NumberLayout {
    std::size_t point = String::npos;
    int intPlaces = 0, decPlaces = 0, trailingHashes = 0;
    bool grouping = false;
};

NumberLayout AnalyseNumber(const String& pat) {
    NumberLayout l;
    for (std::size_t i = 0; i < pat.size();) {
        if (IsLiteralStart(pat[i])) { i = CopyLiteral(pat, i, nullptr); continue; }
        const char16_t c = pat[i];
        if (l.point == String::npos && c == u'.') l.point = i;
        else if (IsPlaceholder(c)) {
            if (l.point == String::npos) ++l.intPlaces;
            else {
                ++l.decPlaces;
                l.trailingHashes = c == u'#' ? l.trailingHashes + 1 : 0;
            }
        }
        ++i;
    }
    for (std::size_t i = 0, seen = 0; i < pat.size() && i < l.point;) {
        if (IsLiteralStart(pat[i])) { i = CopyLiteral(pat, i, nullptr); continue; }
        if (IsPlaceholder(pat[i])) ++seen;
        else if (pat[i] == u',' && seen > 0 && static_cast<int>(seen) < l.intPlaces) l.grouping = true;
        ++i;
    }
    return l;
}

// The digits of a number rounded half away from zero at a decimal place:
// value = digits[0].digits[1..count-1] x 10^exponent; no digits for zero.
struct RoundedDigits {
    char digits[sizeof DecimalDigits::digits];
    int count, exponent;

    char at(int i) const { return i >= 0 && i < count ? digits[i] : '0'; }  // '0' beyond either end
    int integerLength() const { return count > 0 && exponent >= 0 ? exponent + 1 : 0; }
};

RoundedDigits RoundAt(const DecimalDigits& number, int decPlaces) {
    RoundedDigits r;
    r.count = number.count;  // [1, 17]
    r.exponent = number.exponent;
    for (int i = 0; i < r.count; ++i) r.digits[i] = number.digits[i];
    if (r.count == 1 && r.digits[0] == '0') r.count = 0;
    const int keep = r.exponent + decPlaces + 1;  // digits up to the last decimal place
    if (keep >= r.count) return r;
    const bool up = keep >= 0 && r.digits[keep] >= '5';
    r.count = keep < 0 ? 0 : keep;
    if (!up) return r;
    int i = r.count - 1;
    while (i >= 0 && r.digits[i] == '9') --i;
    if (i < 0) {  // 9.99 -> 10.0: a new leading digit
        r.digits[0] = '1';
        r.count = 1;
        ++r.exponent;
    } else {
        ++r.digits[i];
        r.count = i + 1;
    }
    return r;
}

}  // namespace

String FormatFixedRight(const DecimalDigits& number, int decPlaces, std::size_t width) {
    const RoundedDigits d = RoundAt(number, decPlaces);
    const int intLen = d.integerLength();
    Out out;
    if (number.negative) out.push(u'-');  // also when the rounded value is zero, as the pattern has it
    if (intLen == 0) out.push(u'0');
    for (int j = 0; j < intLen; ++j) out.push(static_cast<char16_t>(d.at(j)));
    if (decPlaces > 0) {
        out.push(CurrentLocale().decimal);
        for (int f = 0; f < decPlaces; ++f) out.push(static_cast<char16_t>(d.at(d.exponent + 1 + f)));
    }
    return out.rightAligned(width);
}

namespace {

// The number laid into the pattern: integer digits on the placeholders
// before the point (those beyond them in front of the first), grouping
// marks every three, the decimals after it.
String FormatNumber(const DecimalDigits& number, const String& pat, const NumberLayout& layout) {
    const Locale& loc = CurrentLocale();
    const RoundedDigits d = RoundAt(number, layout.decPlaces);
    const int x = d.exponent;
    const int intLen = d.integerLength();  // digits d.at(0 .. intLen-1)
    // Trailing "#" decimals show only significant digits.
    int decShown = layout.decPlaces;
    while (decShown > layout.decPlaces - layout.trailingHashes && d.at(x + decShown) == '0') --decShown;

    Out out;
    if (number.negative) out.push(u'-');  // also when the rounded value is zero
    const auto emit = [&](char digit, int pos) {  // pos: the digit's power of ten
        out.push(static_cast<char16_t>(digit));
        if (layout.grouping && pos > 0 && pos % 3 == 0) out.push(loc.grouping);
    };
    const int surplus = intLen > layout.intPlaces ? intLen - layout.intPlaces : 0;
    const auto emitSurplus = [&](int count) {
        for (int j = 0; j < count; ++j) emit(d.at(j), intLen - 1 - j);
    };
    int q = 0, f = 0;
    bool decimals = false;
    for (std::size_t i = 0; i < pat.size();) {
        const char16_t c = pat[i];
        if (IsLiteralStart(c)) { i = CopyLiteral(pat, i, &out); continue; }
        ++i;
        if (!decimals) {
            if (i - 1 == layout.point) {
                if (layout.intPlaces == 0) emitSurplus(intLen);
                out.push(loc.decimal);
                decimals = true;
            } else if (IsPlaceholder(c)) {
                if (q == 0) emitSurplus(surplus);  // digits beyond the placeholders go in front
                const int pos = layout.intPlaces - 1 - q++;
                if (pos < intLen) emit(d.at(intLen - 1 - pos), pos);
                else if (c == u'0') emit('0', pos);
            } else if (!(c == u',' && layout.grouping)) {
                out.push(c);
            }
        } else if (IsPlaceholder(c)) {
            if (f < decShown) out.push(static_cast<char16_t>(d.at(x + 1 + f)));
            ++f;
        } else {
            out.push(c);
        }
    }
    if (!decimals && layout.intPlaces == 0) emitSurplus(intLen);
    return out.str();
}

// The text right-aligned on the "@" places; blanks fill the places it does
// not reach, a longer text spills in front of the first place.
String FormatText(const String& text, const String& pat) {
    int places = 0;
    for (std::size_t i = 0; i < pat.size();) {
        if (IsLiteralStart(pat[i])) { i = CopyLiteral(pat, i, nullptr); continue; }
        places += pat[i++] == u'@';
    }
    const int len = static_cast<int>(text.size());
    Out out;
    int q = 0;
    for (std::size_t i = 0; i < pat.size();) {
        if (IsLiteralStart(pat[i])) { i = CopyLiteral(pat, i, &out); continue; }
        const char16_t c = pat[i++];
        if (c != u'@') { out.push(c); continue; }
        if (q == 0 && len > places) out.push(text.data(), static_cast<std::size_t>(len - places));
        const int pos = places - 1 - q++;
        out.push(pos < len ? text[static_cast<std::size_t>(len - 1 - pos)] : u' ');
    }
    return out.str();
}

// The common case of FormatText, for a pattern of "@" only.
String RightAligned(const String& text, std::size_t places) {
    if (text.size() >= places) return text;
    String out;
    out.reserve(places);
    out.append(places - text.size(), u' ').append(text);
    return out;
}

void AppendNumber(Out& out, int v, int width) {
    char16_t tmp[12];
    int n = 0;
    do {
        tmp[n++] = static_cast<char16_t>(u'0' + v % 10);
        v /= 10;
    } while (v > 0);
    for (int k = n; k < width; ++k) out.push(u'0');
    while (n > 0) out.push(tmp[--n]);
}

bool IsDateLetter(char16_t c) {
    c = AsciiLower(c);
    return c == u'd' || c == u'm' || c == u'y' || c == u'h' || c == u'n' || c == u's';
}

String FormatDate(Date date, const String& pat) {
    const DateParts p = SplitDate(date);
    Out out;
    bool afterHour = false;
    for (std::size_t i = 0; i < pat.size();) {
        if (IsLiteralStart(pat[i])) { i = CopyLiteral(pat, i, &out); continue; }
        const char16_t c = AsciiLower(pat[i]);
        if (!IsDateLetter(c)) {
            out.push(pat[i++]);
            continue;
        }
        std::size_t run = 1;
        while (i + run < pat.size() && AsciiLower(pat[i + run]) == c) ++run;
        i += run;
        const int width = run >= 2 ? 2 : 1;
        switch (c) {
            case u'd': AppendNumber(out, p.day, width); break;
            case u'y':
                if (run >= 3) AppendNumber(out, p.year, 4);
                else if (run == 2) AppendNumber(out, p.year % 100, 2);
                else AppendNumber(out, static_cast<int>(DateFromParts(p.year, p.month, p.day).serial -
                                                        DateFromParts(p.year, 1, 1).serial) + 1, 1);
                break;
            case u'm': {
                // Minutes right after an hour, or right before seconds.
                std::size_t k = i;
                while (k < pat.size() && !IsDateLetter(pat[k])) ++k;
                const bool minutes = afterHour || (k < pat.size() && AsciiLower(pat[k]) == u's');
                AppendNumber(out, minutes ? p.minute : p.month, width);
                break;
            }
            case u'h': AppendNumber(out, p.hour, width); break;
            case u'n': AppendNumber(out, p.minute, width); break;
            default: AppendNumber(out, p.second, width); break;
        }
        afterHour = c == u'h';
    }
    return out.str();
}

}  // namespace

String FormatPattern(const Variant& value, const String& pattern) {
    if (value.isNull()) return String();
    if (pattern.empty()) return ToText(value);
    // Callers format many values by the same few patterns (a number pattern
    // and then a text one, say): the analysis of the last four is kept.
    struct Analysed {
        String pattern;
        Kind kind = Kind::Number;
        NumberLayout layout;
        bool placesOnly = false;  // nothing but "@": plain right alignment
    };
    thread_local Analysed recent[4];
    thread_local unsigned next = 0;
    const Analysed* found = nullptr;
    for (const Analysed& a : recent)
        if (a.pattern.size() == pattern.size() &&
            std::memcmp(a.pattern.data(), pattern.data(), pattern.size() * sizeof(char16_t)) == 0) {
            found = &a;
            break;
        }
    if (!found) {
        Analysed& a = recent[next++ % 4];
        a.kind = Classify(pattern);
        a.layout = a.kind == Kind::Number ? AnalyseNumber(pattern) : NumberLayout{};
        a.placesOnly = pattern.find_first_not_of(u'@') == String::npos;
        a.pattern = pattern;
        found = &a;
    }
    const NumberLayout& layout = found->layout;
    switch (found->kind) {
        case Kind::Text:
            if (const String* text = value.as<String>()) {
                if (found->placesOnly) return RightAligned(*text, pattern.size());
                return FormatText(*text, pattern);
            }
            return FormatText(value.isEmpty() ? String(u"0") : JoinText(value), pattern);  // Empty is 0 here too
        case Kind::Date: {
            if (value.isString() && !IsNumericValue(value)) {
                if (!IsDateValue(value)) return *value.as<String>();
                return FormatDate(ToDateLocale(value), pattern);
            }
            return FormatDate(DateFromSerial(ToDoubleLocale(value)), pattern);
        }
        case Kind::Number:
            if (const Single* s = value.as<Single>()) return FormatNumber(ToDecimalDigits(*s), pattern, layout);
            if (value.isString() && !IsNumericValue(value)) return *value.as<String>();
            return FormatNumber(ToDecimalDigits(ToDoubleLocale(value), 15), pattern, layout);
    }
    return String();
}

}  // namespace kiv
