// Pattern formatting of numbers, dates and texts: digit placeholders with
// the Italian separators, date parts, right-aligned text placeholders.
#include <cmath>
#include <cstring>

#include "frame/convert.hpp"
#include "frame/errors.hpp"
#include "frame/locale.hpp"
#include "frame/runtime.hpp"

namespace kiv {
namespace {

enum class Kind { Number, Text, Date };

// The result is built on the stack and becomes a String once at the end:
// number patterns are on the hot path of every amount shown.
class Out {
public:
    void put(char16_t c) {
        if (n_ < kSmall) small_[n_] = c;
        else {
            if (big_.empty()) big_.assign(small_, n_);
            big_ += c;
        }
        ++n_;
    }
    void put(const char16_t* s, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) put(s[i]);
    }
    String str() const { return n_ <= kSmall ? String(small_, n_) : big_; }

private:
    static constexpr std::size_t kSmall = 96;
    char16_t small_[kSmall];
    String big_;
    std::size_t n_ = 0;
};

char16_t Lower(char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c; }

// Quoted runs and backslash escapes are literal text in every kind of
// pattern. Returns the index after the literal, appending it to `out`.
std::size_t CopyLiteral(const String& pat, std::size_t i, Out* out) {
    if (pat[i] == u'\\') {
        if (i + 1 < pat.size() && out) out->put(pat[i + 1]);
        return i + 2;
    }
    std::size_t j = i + 1;  // a double quote
    while (j < pat.size() && pat[j] != u'"') {
        if (out) out->put(pat[j]);
        ++j;
    }
    return j + 1;
}

bool IsLiteralStart(char16_t c) { return c == u'"' || c == u'\\'; }

Kind Classify(const String& pat) {
    bool dateLetter = false, month = false, text = false, digits = false;
    for (std::size_t i = 0; i < pat.size();) {
        if (IsLiteralStart(pat[i])) { i = CopyLiteral(pat, i, nullptr); continue; }
        const char16_t c = Lower(pat[i++]);
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

String FormatNumber(const DecimalDigits& number, const String& pat, const NumberLayout& layout) {
    const Locale& loc = currentLocale();
    const std::size_t point = layout.point;
    const int intPlaces = layout.intPlaces, decPlaces = layout.decPlaces, trailingHashes = layout.trailingHashes;
    const bool grouping = layout.grouping;

    // Round the decimal digits half away from zero at the last decimal place.
    char digs[40];
    int n = number.count, x = number.exponent;
    for (int i = 0; i < n; ++i) digs[i] = number.digits[i];
    if (n == 1 && digs[0] == '0') n = 0;
    const int keep = x + decPlaces + 1;
    if (keep < n) {
        const bool up = keep >= 0 && digs[keep] >= '5';
        n = keep < 0 ? 0 : keep;
        if (up) {
            int i = n - 1;
            while (i >= 0 && digs[i] == '9') --i;
            if (i < 0) {  // 9.99 -> 10.0: a new leading digit
                digs[0] = '1';
                n = 1;
                ++x;
            } else {
                ++digs[i];
                n = i + 1;
            }
        }
    }
    const auto digitAt = [&](int idx) { return idx >= 0 && idx < n ? digs[idx] : '0'; };
    const int intLen = n > 0 && x >= 0 ? x + 1 : 0;  // integer digits, digitAt(0 .. intLen-1)
    // Trailing "#" decimals show only significant digits.
    int decShown = decPlaces;
    while (decShown > decPlaces - trailingHashes && digitAt(x + decShown) == '0') --decShown;

    Out out;
    if (number.negative) out.put(u'-');  // also when the rounded value is zero
    const auto emit = [&](char d, int pos) {
        out.put(static_cast<char16_t>(d));
        if (grouping && pos > 0 && pos % 3 == 0) out.put(loc.grouping);
    };
    const int surplus = intLen > intPlaces ? intLen - intPlaces : 0;
    const auto emitSurplus = [&](int count) {
        for (int j = 0; j < count; ++j) emit(digitAt(j), intLen - 1 - j);
    };
    int q = 0, f = 0;
    bool decimals = false;
    for (std::size_t i = 0; i < pat.size();) {
        const char16_t c = pat[i];
        if (IsLiteralStart(c)) { i = CopyLiteral(pat, i, &out); continue; }
        ++i;
        if (!decimals) {
            if (i - 1 == point) {
                if (intPlaces == 0) emitSurplus(intLen);
                out.put(loc.decimal);
                decimals = true;
            } else if (IsPlaceholder(c)) {
                if (q == 0) emitSurplus(surplus);  // digits beyond the placeholders go in front
                const int pos = intPlaces - 1 - q++;
                if (pos < intLen) emit(digitAt(intLen - 1 - pos), pos);
                else if (c == u'0') emit('0', pos);
            } else if (!(c == u',' && grouping)) {
                out.put(c);
            }
        } else if (IsPlaceholder(c)) {
            if (f < decShown) out.put(static_cast<char16_t>(digitAt(x + 1 + f)));
            ++f;
        } else {
            out.put(c);
        }
    }
    if (!decimals && intPlaces == 0) emitSurplus(intLen);
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
        if (c != u'@') { out.put(c); continue; }
        if (q == 0 && len > places) out.put(text.data(), static_cast<std::size_t>(len - places));
        const int pos = places - 1 - q++;
        out.put(pos < len ? text[static_cast<std::size_t>(len - 1 - pos)] : u' ');
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
    for (int k = n; k < width; ++k) out.put(u'0');
    while (n > 0) out.put(tmp[--n]);
}

bool IsDateLetter(char16_t c) {
    c = Lower(c);
    return c == u'd' || c == u'm' || c == u'y' || c == u'h' || c == u'n' || c == u's';
}

String FormatDate(Date date, const String& pat) {
    const DateParts p = SplitDate(date);
    Out out;
    bool afterHour = false;
    for (std::size_t i = 0; i < pat.size();) {
        if (IsLiteralStart(pat[i])) { i = CopyLiteral(pat, i, &out); continue; }
        const char16_t c = Lower(pat[i]);
        if (!IsDateLetter(c)) {
            out.put(pat[i++]);
            continue;
        }
        std::size_t run = 1;
        while (i + run < pat.size() && Lower(pat[i + run]) == c) ++run;
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
                const bool minutes = afterHour || (k < pat.size() && Lower(pat[k]) == u's');
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
            return FormatText(JoinText(value), pattern);
        case Kind::Date: {
            if (value.isString() && !IsNumericValue(value)) {
                if (!IsDateValue(value)) return *value.as<String>();
                return FormatDate(ToDateLocale(value), pattern);
            }
            const double serial = ToDoubleLocale(value);
            if (!InDateRange(serial)) raise(kOverflow);
            return FormatDate(Date{serial}, pattern);
        }
        case Kind::Number:
            if (const Single* s = value.as<Single>()) return FormatNumber(ToDecimalDigits(*s), pattern, layout);
            if (value.isString() && !IsNumericValue(value)) return *value.as<String>();
            return FormatNumber(ToDecimalDigits(ToDoubleLocale(value), 15), pattern, layout);
    }
    return String();
}

}  // namespace kiv
