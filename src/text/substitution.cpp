// Replacing, deleting and reordering the characters of a text.
#include <algorithm>
#include <array>

#include "frame/cl_kiv.hpp"
#include "frame/convert.hpp"
#include "frame/errors.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {

namespace {

// ASCII folds inline; everything else goes to the shared case folding. The
// codice fiscale and partita IVA checks push millions of characters a second
// through SostChar, nearly all of them ASCII.
inline char16_t fold(char16_t c) {
    if (c < 0x80) return (c >= u'A' && c <= u'Z') ? static_cast<char16_t>(c + 32) : c;
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
    for (std::size_t i = 0; i < setLen; ++i) set[i] = fold(C1[i]);

    String out;
    out.reserve(S.size());
    for (const char16_t ch : S) {
        const char16_t f = fold(ch);
        const std::size_t p = static_cast<std::size_t>(std::find(set, set + setLen, f) - set);
        if (p == setLen) out += ch;           // not in C1: kept
        else if (p < C2.size()) out += C2[p];  // mapped by its first occurrence
        // else: beyond the end of C2, deleted
    }
    return out;
}


Variant Cl_KIV::SostWord(const Variant& /*Str_0*/, const String& /*Str_Find*/, const String& /*Str_Repl*/, Integer /*StartOccur*/, Integer /*MaxOccur*/) { raise(kNotSupported); }
String Cl_KIV::SostLoChar(const String& /*S*/, const String& /*Nuovo*/) { raise(kNotSupported); }
String Cl_KIV::SostHiChar(const String& /*S*/, const String& /*Nuovo*/) { raise(kNotSupported); }
String Cl_KIV::Apo_No(const String& /*S*/) { raise(kNotSupported); }
String Cl_KIV::Apo_Yes(const Variant& /*S*/) { raise(kNotSupported); }
String Cl_KIV::Apo_Fix(const Variant& /*S*/) { raise(kNotSupported); }
String Cl_KIV::Apo_Dup(const Variant& /*S*/) { raise(kNotSupported); }
String Cl_KIV::NoChar(const String& /*S*/, const String& /*Caz*/) { raise(kNotSupported); }
String Cl_KIV::NoPunt(const String& /*S*/) { raise(kNotSupported); }
String Cl_KIV::NoTrail(Ref<String> /*a*/) { raise(kNotSupported); }
String Cl_KIV::CompSpac(const Variant& /*a*/) { raise(kNotSupported); }
String Cl_KIV::FixAmper(const String& /*Si*/) { raise(kNotSupported); }
String Cl_KIV::Capital(const String& /*S*/, Boolean /*SingleWords*/) { raise(kNotSupported); }
Integer Cl_KIV::UpAscii(Integer /*a*/) { raise(kNotSupported); }
Integer Cl_KIV::LoAscii(Integer /*a*/) { raise(kNotSupported); }
String Cl_KIV::SoloCifre(const String& /*T_Str*/) { raise(kNotSupported); }
String Cl_KIV::Lettere(const String& /*S_0*/) { raise(kNotSupported); }
String Cl_KIV::Numeri(const String& /*S_0*/) { raise(kNotSupported); }
String Cl_KIV::LastWord(const String& /*Lin*/) { raise(kNotSupported); }
String Cl_KIV::InvStr(const Variant& /*S*/) { raise(kNotSupported); }

}  // namespace kiv
