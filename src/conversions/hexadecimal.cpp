// Texts as hexadecimal digits, and hexadecimal digits as binary digits
// through the component's nibble table. A character stands for its byte in
// code page 1252.
#include "frame/cl_kiv.hpp"
#include "frame/code_page.hpp"
#include "frame/errors.hpp"
#include "frame/strings.hpp"

namespace kiv {

namespace {

constexpr std::u16string_view kHexDigits = u"0123456789ABCDEF";

// 0-15 for a hexadecimal digit in either case, -1 otherwise.
int DigitValue(char16_t c) {
    if (c >= u'a' && c <= u'f') c = static_cast<char16_t>(c - 32);
    const std::size_t at = kHexDigits.find(c);
    return at == std::u16string_view::npos ? -1 : static_cast<int>(at);
}

// The digits left once every Sep (when given) and every blank are gone.
String WithoutSeparators(const String& text, const String& Sep) {
    String t = Sep.empty() ? text : ReplaceAll(text, Sep, u"");
    return ReplaceAll(t, u" ", u"");
}

// An empty result of n groups of `each` digits with Sep between them,
// reserved once: the length is known before the loop, and a long separator
// can take it past the limit.
String JoinedResult(std::size_t n, std::uint64_t each, const String& Sep) {
    const std::uint64_t length = each * n + (n - 1) * std::uint64_t{Sep.size()};
    RequireTextLength(length);
    String result;
    result.reserve(static_cast<std::size_t>(length));
    return result;
}

}  // namespace

String Cl_KIV::Str2Hex(const String& S, const String& Sep) {
    if (S.empty()) return String();
    String result = JoinedResult(S.size(), 2, Sep);
    for (std::size_t i = 0; i < S.size(); ++i) {
        const auto b = static_cast<unsigned char>(Cp1252Byte(S[i]));
        if (i > 0) result += Sep;
        result += kHexDigits[b >> 4];
        result += kHexDigits[b & 15];
    }
    return result;
}

String Cl_KIV::Hex2Str(const String& T_Hex, const String& Sep) {
    const String digits = WithoutSeparators(T_Hex, Sep);
    if (digits.size() % 2 != 0) Raise(kInvalidCall);
    String result;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        const int hi = DigitValue(digits[i]);
        const int lo = DigitValue(digits[i + 1]);
        if (hi < 0 || lo < 0) Raise(kInvalidCall);
        result += Cp1252Char(static_cast<unsigned char>(hi * 16 + lo));
    }
    return result;
}

String Cl_KIV::Hex2Bin(const String& T_Hex, const String& Sep) {
    if (T_Hex.empty()) return String();
    String result = JoinedResult(T_Hex.size(), 4, Sep);  // every nibble is four digits
    for (std::size_t k = 0; k < T_Hex.size(); ++k) {
        // Entry 0 of the table serves a character that is no hexadecimal digit.
        const Long i = InStr(kHexDigits.data(), UCase(T_Hex.substr(k, 1)));
        if (k > 0) result += Sep;
        result += Nibble(static_cast<int>(i));
    }
    return result;
}

String Cl_KIV::Bin2Hex(const String& T_Bin, const String& Sep) {
    String bits = WithoutSeparators(T_Bin, Sep);
    for (char16_t c : bits)
        if (c != u'0' && c != u'1') Raise(kInvalidCall);
    bits = String((4 - bits.size() % 4) % 4, u'0') + bits;
    String result;
    for (std::size_t i = 0; i < bits.size(); i += 4) {
        const String group = bits.substr(i, 4);
        for (int k = 1; k <= 16; ++k) {
            if (Nibble(k) == group) {
                result += kHexDigits[k - 1];
                break;
            }
        }
    }
    return result;
}

}  // namespace kiv
