// Dates and times completed and normalised when the user leaves a box. A
// validator never fails: any error leaves the box alone and answers False.
#include <optional>
#include <string>
#include <vector>

#include "forms/late_bound.hpp"
#include "frame/cl_kiv.hpp"
#include "frame/convert.hpp"
#include "frame/platform.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {
namespace {

bool AllDigits(const String& s) {
    for (char16_t c : s)
        if (c < u'0' || c > u'9') return false;
    return true;
}

// A piece of 1 or 2 digits (or "" where allowed), as a number.
std::optional<int> Number(const String& s, std::size_t minLength, std::size_t maxLength) {
    if (s.size() < minLength || s.size() > maxLength || !AllDigits(s)) return std::nullopt;
    int n = 0;
    for (char16_t c : s) n = n * 10 + (c - u'0');
    return n;
}

// The box's text without the mask's "_", trimmed.
String Typed(const Object& Txt) { return Trim(ReplaceAll(ToText(GetMember(Txt, "Text")), u"_", u"")); }

String Without(String s, const String& characters) {
    std::erase_if(s, [&](char16_t c) { return characters.find(c) != String::npos; });
    return s;
}

String ChangedTo(String s, const String& characters, char16_t to) {
    for (char16_t& c : s)
        if (characters.find(c) != String::npos) c = to;
    return s;
}

// Cut at sep; a final separator opens no piece.
std::vector<String> Pieces(const String& s, char16_t sep) {
    std::vector<String> pieces(1);
    for (char16_t c : s) {
        if (c == sep) pieces.emplace_back();
        else pieces.back() += c;
    }
    if (pieces.size() > 1 && pieces.back().empty()) pieces.pop_back();
    return pieces;
}

String Digits(int n) { return FromUtf8(std::to_string(n)); }
String TwoDigits(int n) { return (n < 10 ? u"0" : u"") + Digits(n); }

// Sets the text only when it differs, so the host sees no change event
// for a box that was already right.
void Normalise(const Object& Txt, const String& text) {
    if (ToText(GetMember(Txt, "Text")) != text) SetMember(Txt, "Text", Variant(text));
}

void Warn(Boolean Avvisa, const char16_t* title, const char16_t* text) {
    if (Avvisa) CurrentPlatform().host().messageBox(MsgIcon::Exclamation, title, text);
}

// Day, month and year as typed: ddmm, ddmmyy, ddmmyyyy or pieces cut at "/".
// A year left out is 0.
bool ReadDate(const String& t, std::optional<int>& d, std::optional<int>& m, int& y, std::size_t& yearDigits) {
    String day, month, year;
    if (t.find(u'/') == String::npos) {
        if (!AllDigits(t) || (t.size() != 4 && t.size() != 6 && t.size() != 8)) return false;
        day = t.substr(0, 2);
        month = t.substr(2, 2);
        year = t.substr(4);
    } else {
        const std::vector<String> p = Pieces(t, u'/');
        if (p.size() < 2 || p.size() > 3) return false;
        day = p[0];
        month = p[1];
        if (p.size() == 3) year = p[2];
    }
    d = Number(day, 1, 2);
    m = Number(month, 1, 2);
    yearDigits = year.size();
    if (!year.empty()) {
        const std::optional<int> n = Number(year, 2, 4);
        if (!n || year.size() == 3) return false;
        y = *n;
    }
    return d && m;
}

}  // namespace

Boolean Cl_KIV::LostFocusDate(const Object& Txt, Boolean Vuota, Boolean Avvisa) {
    try {
        // 1.
        String t = Typed(Txt);
        if (Without(t, u"/").empty()) return Vuota;
        // 2.
        t = ChangedTo(t, u".- ", u'/');
        // 3.
        std::optional<int> d, m;
        int y = 0;
        std::size_t yearDigits = 0;
        bool valid = ReadDate(t, d, m, y, yearDigits);
        if (valid) {
            // 4.
            if (yearDigits == 0) y = SplitDate(TodayDate()).year;
            else if (yearDigits == 2) y += y < 30 ? 2000 : 1900;
            // 5.
            valid = y >= 1900 && y <= 9999 && ValidDay(y, *m, *d);
        }
        // 6.
        if (valid) {
            Normalise(Txt, TwoDigits(*d) + u"/" + TwoDigits(*m) + u"/" + Digits(y));
            return true;
        }
        // 7.
        Warn(Avvisa, u"LostFocusDate", u"Data non valida !");
        return false;
    } catch (const std::exception&) {
        return false;
    }
}

Boolean Cl_KIV::LostFocusTime(const Object& Txt, Boolean Vuota, Boolean ConSec, Boolean Avvisa, const String& Sep) {
    try {
        // 1.
        String t = Typed(Txt);
        if (Without(t, u":.").empty()) return Vuota;
        // 2.
        t = ChangedTo(t, u"., ", u':');
        // 3.
        std::optional<int> h, n, s = 0;
        if (t.find(u':') == String::npos) {
            if (t.empty() || t.size() > 6 || !AllDigits(t)) {
                h.reset();
            } else {
                const std::size_t hours = t.size() <= 2 ? t.size() : t.size() <= 4 ? t.size() - 2 : t.size() - 4;
                h = Number(t.substr(0, hours), 1, 2);
                n = Number(t.substr(hours, 2), 0, 2);
                s = Number(t.size() > hours + 2 ? t.substr(hours + 2) : String(), 0, 2);
            }
        } else {
            const std::vector<String> p = Pieces(t, u':');
            if (p.size() <= 3) {
                h = Number(p[0], 1, 2);
                n = Number(p.size() > 1 ? p[1] : String(), 0, 2);
                s = Number(p.size() > 2 ? p[2] : String(), 0, 2);
            }
        }
        // 4.
        if (h && n && s && *h <= 23 && *n <= 59 && *s <= 59) {
            // 5. Seconds typed without ConSec are dropped.
            String text = TwoDigits(*h) + Sep + TwoDigits(*n);
            if (ConSec) text += Sep + TwoDigits(*s);
            Normalise(Txt, text);
            return true;
        }
        // 6.
        Warn(Avvisa, u"LostFocusTime", u"Ora non valida !");
        return false;
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace kiv
