// The key filter of an amount box: a mistake is stopped while it is typed,
// the text itself is never rewritten.
#include "forms/late_bound.hpp"
#include "frame/cl_kiv.hpp"
#include "frame/convert.hpp"
#include "frame/strings.hpp"

namespace kiv {
namespace {

// Characters after the first comma; 0 without one.
Long Decimals(const String& s) {
    const std::size_t comma = s.find(u',');
    return comma == String::npos ? 0 : static_cast<Long>(s.size() - comma - 1);
}

}  // namespace

Integer Cl_KIV::TestDec(Ref<Integer> KeyAscii, const Object& Txt, Integer N_Dec, Boolean Negativo) {
    // 1. Control keys pass untouched.
    Integer k = *KeyAscii;
    if (k < 32) return k;
    // 2. Nothing is the default: no box, so no text around the key.
    String S;
    Long a = 0, b = 0;
    if (Txt) {
        S = ToText(GetMember(Txt, "Text"));
        a = ToLong(GetMember(Txt, "SelStart"));
        b = ToLong(GetMember(Txt, "SelLength"));
    }
    // 3.
    const String outside = Left(S, a) + Mid(S, a + b + 1);
    // 4. The keypad's point types the decimal comma.
    if (k == 46) k = 44;
    // 5., 6.
    const String typed = Left(S, a) + String(1, static_cast<char16_t>(k)) + Mid(S, a + b + 1);
    const Long dec = Decimals(typed);
    // 7.
    bool accepted = false;
    if (k >= 48 && k <= 57) accepted = dec <= N_Dec && !(a == 0 && outside.starts_with(u'-'));
    else if (k == 44) accepted = N_Dec >= 1 && outside.find(u',') == String::npos && dec <= N_Dec;
    else if (k == 45) accepted = Negativo && a == 0 && outside.find(u'-') == String::npos;
    // 8.
    *KeyAscii = accepted ? k : Integer{0};
    return *KeyAscii;
}

}  // namespace kiv
