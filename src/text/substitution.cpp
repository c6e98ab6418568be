// Replacing, deleting and reordering the characters of a text.
#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "frame/ascii.hpp"
#include "frame/cl_kiv.hpp"
#include "frame/code_page.hpp"
#include "frame/convert.hpp"
#include "frame/errors.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {

namespace {

// ASCII folds inline; everything else goes to the shared case folding. The
// codice fiscale and partita IVA checks push millions of characters a second
// through SostChar, nearly all of them ASCII.
inline char16_t Fold(char16_t c) {
    if (c < 0x80) return AsciiLower(c);
    return FoldCase(c);
}

}  // namespace

String Cl_KIV::SostChar(const String& S, const String& C1, const String& C2) {
    if (C2.size() > C1.size()) return S;
    if (S.empty()) return S;

    // C1 is folded once, on the stack when it is short (it nearly always is).
    std::array<char16_t, 32> small;
    String large;
    char16_t* set = small.data();
    if (C1.size() > small.size()) {
        large.resize(C1.size());
        set = large.data();
    }
    const std::size_t setLen = C1.size();
    for (std::size_t i = 0; i < setLen; ++i) set[i] = Fold(C1[i]);
    // As bits, the ASCII characters that fold onto one of the set, so that
    // the usual ASCII character that is not in it needs no search.
    std::uint64_t asciiIn[2] = {0, 0};
    for (std::size_t i = 0; i < setLen; ++i) {
        if (set[i] >= 128) continue;
        const char16_t forms[2] = {set[i], static_cast<char16_t>(set[i] ^ 0x20)};  // a letter in either case
        for (const char16_t c : forms)
            if (AsciiLower(c) == set[i]) asciiIn[c >> 6] |= std::uint64_t{1} << (c & 63);
    }
    const auto kept = [&](char16_t ch) { return ch < 128 && (asciiIn[ch >> 6] >> (ch & 63) & 1) == 0; };
    // A long set on a long text gets a table of each character's first place,
    // so that the time stays linear in the text whatever the set's length.
    std::vector<std::uint32_t> firstAt;
    if (setLen > small.size() && std::uint64_t{setLen} * S.size() > 0x100000) {
        firstAt.assign(0x10000, static_cast<std::uint32_t>(setLen));
        for (std::size_t i = setLen; i-- > 0;) firstAt[set[i]] = static_cast<std::uint32_t>(i);
    }
    const auto placeOf = [&](char16_t ch) -> std::size_t {
        if (kept(ch)) return setLen;
        if (!firstAt.empty()) return firstAt[Fold(ch)];
        return static_cast<std::size_t>(std::find(set, set + setLen, Fold(ch)) - set);  // the first occurrence
    };

    // Often nothing is to change: the text comes back as it is.
    std::size_t same = 0;
    while (same < S.size() && kept(S[same])) ++same;
    if (same == S.size()) return S;

    // The result is never longer than S: written in place, then cut.
    String out(S.size(), u'\0');
    std::copy(S.begin(), S.begin() + static_cast<std::ptrdiff_t>(same), out.begin());
    char16_t* w = out.data() + same;
    for (const char16_t ch : std::u16string_view(S).substr(same)) {
        const std::size_t p = placeOf(ch);
        if (p == setLen) *w++ = ch;           // not in C1: kept
        else if (p < C2.size()) *w++ = C2[p];  // mapped by its first occurrence
        // else: beyond the end of C2, deleted
    }
    out.resize(static_cast<std::size_t>(w - out.data()));
    return out;
}


Variant Cl_KIV::SostWord(const Variant& Str_0, const String& Str_Find, const String& Str_Repl, Integer StartOccur,
                         Integer MaxOccur) {
    String W = JoinText(Str_0);
    if (W.empty()) return W;
    // An empty Str_Find would be found at every position and never finish.
    if (Str_Find.empty()) return W;
    // Each replacement is searched for behind the text it inserted, so the
    // searches run over the unchanged text from left to right, never
    // rebuilding the whole text per replacement. `each` gets the start of
    // every occurrence replaced.
    auto forEachReplaced = [&](auto&& each) {
        ForwardSearch search(W, Str_Find);
        std::size_t from = 0;
        for (Long skipped = 0; skipped < StartOccur - 1; ++skipped) {
            const std::size_t p = search.next(from);
            if (p == String::npos) break;
            from = p + Str_Find.size();
        }
        Long count = 0;
        for (std::size_t p = search.next(from); p != String::npos; p = search.next(from)) {
            each(p);
            from = p + Str_Find.size();
            ++count;
            if (MaxOccur >= 1 && count >= MaxOccur) break;
        }
    };
    // Counted first, so the result's length is checked against the limit and
    // taken once, not grown by doubling past it.
    std::uint64_t count = 0;
    forEachReplaced([&](std::size_t) { ++count; });
    const std::uint64_t length = W.size() + count * Str_Repl.size() - count * Str_Find.size();
    RequireTextLength(length);

    String out;
    out.reserve(static_cast<std::size_t>(length));
    std::size_t copied = 0;
    forEachReplaced([&](std::size_t p) {
        out.append(W, copied, p - copied).append(Str_Repl);
        copied = p + Str_Find.size();
    });
    return out.append(W, copied, String::npos);
}

// The steps call SostChar for each code from 0 to 31, each time on the
// unchanged S, keeping only the last result: in effect only code 31 is
// replaced, and hosts rely on exactly that. The earlier calls can neither
// fail nor change anything (SostChar never lengthens a text), so only the
// last is made.
String Cl_KIV::SostLoChar(const String& S, const String& Nuovo) {
    return SostChar(S, String(1, Cp1252Char(31)), Nuovo);
}

// As SostLoChar, over the codes 128 to 255: only code 255 ("ÿ", and "Ÿ"
// through the case-blind lookup) survives as an effect.
String Cl_KIV::SostHiChar(const String& S, const String& Nuovo) {
    return SostChar(S, String(1, Cp1252Char(255)), Nuovo);
}

String Cl_KIV::Apo_No(const String& S) {
    String out = S;
    std::replace(out.begin(), out.end(), u'\'', u'`');
    return out;
}

String Cl_KIV::Apo_Yes(const Variant& S) {
    if (S.isNull()) return String();
    String out = ToText(S);
    std::replace(out.begin(), out.end(), u'`', u'\'');
    return out;
}

String Cl_KIV::Apo_Fix(const Variant& S) {
    if (S.isNull()) return String();
    return ReplaceAll(ToText(S), u"'", u"''");
}

// The apostrophes take a detour through "§", so a "§" already in the text
// comes out as two apostrophes as well.
String Cl_KIV::Apo_Dup(const Variant& S) {
    String text = ToText(S);
    if (CaseBlindFind(text, u"'") > 0) {
        text = SostChar(text, u"'", u"§");
        text = ToText(SostWord(text, u"§", u"''", 1, 0));
    }
    return text;
}

String Cl_KIV::NoChar(const String& S, const String& Caz) {
    if (Caz.size() != 1) return S;
    String out = S;
    std::erase(out, Caz[0]);
    return out;
}

String Cl_KIV::NoPunt(const String& S) {
    String out = S;
    std::erase(out, u'.');
    return out;
}

// The caller's variable keeps the trimmed text, NUL tail included.
String Cl_KIV::NoTrail(Ref<String> a) {
    *a = Trim(*a);
    const Long p = InStr(*a, String(1, u'\0'));
    if (p > 0) return Trim(Left(*a, p - 1));
    return *a;
}

String Cl_KIV::CompSpac(const Variant& a) {
    const String text = Trim(ToText(a));
    String out;
    out.reserve(text.size());
    for (const char16_t c : text)
        if (!(c == u' ' && !out.empty() && out.back() == u' ')) out += c;
    return out;
}

String Cl_KIV::FixAmper(const String& Si) {
    if (Si.empty()) return Si;
    return ReplaceAll(Si, u"&", u"&&");
}

// SingleWords is part of the interface but was never acted on.
String Cl_KIV::Capital(const String& S, Boolean /*SingleWords*/) {
    if (S.empty()) return S;
    return UCase(Left(S, 1)) + LCase(Mid(S, 2));
}

Integer Cl_KIV::UpAscii(Integer a) {
    if (a >= u'a' && a <= u'z') return static_cast<Integer>(a - 32);
    return a;
}

// The range tested runs from "A" to "A": only 65 moves.
Integer Cl_KIV::LoAscii(Integer a) {
    if (a >= u'A' && a <= u'A') return static_cast<Integer>(a + 32);
    return a;
}

String Cl_KIV::SoloCifre(const String& T_Str) {
    if (Trim(T_Str).empty()) return String();
    if (IsNumericText(T_Str)) return SostChar(T_Str, u" .,-+", u"");
    String out;
    for (const char16_t c : T_Str)
        if (IsNumericText(String(1, c))) out += c;
    return out;
}

String Cl_KIV::Lettere(const String& S_0) {
    if (S_0.empty()) return String();
    String out(26, u' ');
    for (const char16_t c : S_0) {
        const char16_t f = FoldCase(c);
        if (f >= u'a' && f <= u'z') out[f - u'a'] = static_cast<char16_t>(f - 32);
    }
    return out;
}

String Cl_KIV::Numeri(const String& S_0) {
    if (S_0.empty()) return String();
    String out(10, u' ');
    for (const char16_t c : S_0)
        if (c >= u'0' && c <= u'9') out[c - u'0'] = c;
    return out;
}

String Cl_KIV::LastWord(const String& Lin) {
    const String t = Trim(Lin);
    const Long p = InStrRev(t, u" ");
    if (p > 0) return Mid(t, p + 1);
    return Lin;
}

String Cl_KIV::InvStr(const Variant& S) {
    String text = ToText(S);
    if (text.size() < 2) return text;
    std::reverse(text.begin(), text.end());
    return text;
}

}  // namespace kiv
