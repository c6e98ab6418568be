#include "frame/strings.hpp"

#include "frame/case_tables.hpp"
#include "frame/errors.hpp"

namespace kiv {

String Trim(const String& s) { return LTrim(RTrim(s)); }

String LTrim(const String& s) {
    std::size_t i = 0;
    while (i < s.size() && s[i] == u' ') ++i;
    return s.substr(i);
}

String RTrim(const String& s) {
    std::size_t n = s.size();
    while (n > 0 && s[n - 1] == u' ') --n;
    return s.substr(0, n);
}

String Left(const String& s, Long n) {
    if (n < 0) Raise(kInvalidCall);
    return s.substr(0, static_cast<std::size_t>(n));
}

String Right(const String& s, Long n) {
    if (n < 0) Raise(kInvalidCall);
    const std::size_t k = static_cast<std::size_t>(n);
    return k >= s.size() ? s : s.substr(s.size() - k);
}

String Mid(const String& s, Long start) {
    if (start < 1) Raise(kInvalidCall);
    const std::size_t from = static_cast<std::size_t>(start) - 1;
    return from >= s.size() ? String() : s.substr(from);
}

String Mid(const String& s, Long start, Long n) {
    if (start < 1 || n < 0) Raise(kInvalidCall);
    const std::size_t from = static_cast<std::size_t>(start) - 1;
    return from >= s.size() ? String() : s.substr(from, static_cast<std::size_t>(n));
}

String Space(Long n) { return StringOf(n, u' '); }

String StringOf(Long n, char16_t c) {
    if (n < 0) Raise(kInvalidCall);
    RequireTextLength(static_cast<std::uint64_t>(n));
    return String(static_cast<std::size_t>(n), c);
}

String UCase(const String& s) {
    String out = s;
    for (char16_t& c : out) c = SimpleUpper(c);
    return out;
}

String LCase(const String& s) {
    String out = s;
    for (char16_t& c : out) c = SimpleLower(c);
    return out;
}

Integer Len16(const String& s) { return CheckedInteger(static_cast<std::int64_t>(s.size())); }

Long InStr(Long start, const String& text, const String& find) {
    if (start < 1) Raise(kInvalidCall);
    const std::size_t from = static_cast<std::size_t>(start) - 1;
    if (from > text.size()) return 0;
    const std::size_t p = text.find(find, from);
    return p == String::npos ? 0 : static_cast<Long>(p + 1);
}

Long InStr(const String& text, const String& find) { return InStr(1, text, find); }

Long InStrRev(const String& text, const String& find) {
    if (find.empty()) return static_cast<Long>(text.size());
    const std::size_t p = text.rfind(find);
    return p == String::npos ? 0 : static_cast<Long>(p + 1);
}

String ReplaceAll(const String& text, const String& find, const String& with) {
    if (find.empty()) return text;
    // Counted first: the result's length is checked and taken once.
    std::uint64_t count = 0;
    ForwardSearch counting(text, find);
    for (std::size_t p = 0; (p = counting.next(p)) != String::npos; p += find.size()) ++count;
    const std::uint64_t length = text.size() + count * with.size() - count * find.size();
    RequireTextLength(length);

    String out;
    out.reserve(static_cast<std::size_t>(length));
    std::size_t from = 0;
    ForwardSearch search(text, find);
    for (std::size_t p; (p = search.next(from)) != String::npos; from = p + find.size())
        out.append(text, from, p - from).append(with);
    return out.append(text, from, String::npos);
}

void RequireTextLength(std::uint64_t length) {
    if (length > kMaxTextLength) Raise(kOutOfStringSpace);
}

ForwardSearch::ForwardSearch(std::u16string_view text, std::u16string_view find)
    : text_(text), find_(find), border_(find.size(), 0) {
    for (std::size_t i = 1, k = 0; i < find.size(); ++i) {
        while (k > 0 && find[i] != find[k]) k = border_[k - 1];
        if (find[i] == find[k]) ++k;
        border_[i] = k;
    }
}

std::size_t ForwardSearch::next(std::size_t from) {
    const std::size_t m = find_.size();
    if (from > pos_) {
        pos_ = from;
        state_ = 0;
    }
    // The head matched so far must start at or after `from`.
    while (state_ > pos_ - from) state_ = border_[state_ - 1];
    if (state_ == m) return pos_ - m;
    while (pos_ < text_.size()) {
        const char16_t c = text_[pos_++];
        while (state_ > 0 && find_[state_] != c) state_ = border_[state_ - 1];
        if (find_[state_] == c) ++state_;
        if (state_ == m) return pos_ - m;
    }
    return String::npos;
}

String FromUtf8(std::string_view s) {
    String out;
    out.reserve(s.size());
    for (std::size_t i = 0; i < s.size();) {
        const unsigned char c = static_cast<unsigned char>(s[i]);
        char32_t cp;
        std::size_t len;
        if (c < 0x80) { cp = c; len = 1; }
        else if ((c >> 5) == 0x6) { cp = c & 0x1F; len = 2; }
        else if ((c >> 4) == 0xE) { cp = c & 0x0F; len = 3; }
        else if ((c >> 3) == 0x1E) { cp = c & 0x07; len = 4; }
        else { out += u'\uFFFD'; ++i; continue; }
        if (i + len > s.size()) { out += u'\uFFFD'; break; }
        bool ok = true;
        for (std::size_t k = 1; k < len; ++k) {
            const unsigned char cc = static_cast<unsigned char>(s[i + k]);
            if ((cc >> 6) != 0x2) { ok = false; break; }
            cp = (cp << 6) | (cc & 0x3F);
        }
        if (!ok) { out += u'\uFFFD'; ++i; continue; }
        i += len;
        if (cp >= 0x10000) {
            cp -= 0x10000;
            out += static_cast<char16_t>(0xD800 + (cp >> 10));
            out += static_cast<char16_t>(0xDC00 + (cp & 0x3FF));
        } else {
            out += static_cast<char16_t>(cp);
        }
    }
    return out;
}

std::string ToUtf8(const String& s) {
    std::string out;
    out.reserve(s.size());
    for (std::size_t i = 0; i < s.size(); ++i) {
        char32_t cp = s[i];
        if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < s.size() && s[i + 1] >= 0xDC00 && s[i + 1] <= 0xDFFF) {
            cp = 0x10000 + ((cp - 0xD800) << 10) + (s[i + 1] - 0xDC00);
            ++i;
        } else if (cp >= 0xD800 && cp <= 0xDFFF) {
            cp = 0xFFFD;
        }
        if (cp < 0x80) out += static_cast<char>(cp);
        else if (cp < 0x800) {
            out += static_cast<char>(0xC0 | (cp >> 6));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        } else if (cp < 0x10000) {
            out += static_cast<char>(0xE0 | (cp >> 12));
            out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | (cp >> 18));
            out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        }
    }
    return out;
}

}  // namespace kiv
