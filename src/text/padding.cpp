// Padding and alignment: texts put into fixed widths for printed reports and
// fixed-length records. Lengths are 16-bit, as the interface's Integer.
#include "frame/cl_kiv.hpp"
#include "frame/convert.hpp"
#include "frame/errors.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {

namespace {
// A run of n copies of the first character of filler (the caller ensures it
// is not empty), or of blanks.
String Pad(Integer n, const String& filler) { return filler.empty() ? Space(n) : StringOf(n, filler[0]); }
}  // namespace

void Cl_KIV::AllineaDxSpazi(Ref<String> Record, const String& fill) {
    const Integer k = CheckedInteger(Len16(*Record) - Len16(fill));  // the old content serves only as width
    *Record = k > 0 ? Space(k) + fill : fill;
}

String Cl_KIV::AllineaDxZeri(Integer LenCod, const String& fill) {
    const Integer k = CheckedInteger(LenCod - Len16(fill));
    return k > 0 ? StringOf(k, u'0') + fill : fill;
}

void Cl_KIV::AllineaSinZeri(Ref<String> stringa, Integer Pos) {
    if (Pos > 0) *stringa += StringOf(Pos, u'0');  // Pos counts zeros to append, not a width
}

String Cl_KIV::PoniADes(const String& S, Integer N) { return Right(Space(N) + Trim(S), N); }

String Cl_KIV::PoniASin(const String& S, Integer N) { return Left(Trim(S) + Space(N), N); }

String Cl_KIV::Allunga(const String& S, Integer B, const String& C) {
    const Integer L = Len16(S);
    if (B <= L) return S;
    const Integer missing = CheckedInteger(B - L);
    if (C == u" ") return S + Space(missing);
    if (C.empty()) Raise(kInvalidCall);  // no character to repeat
    return S + StringOf(missing, C[0]);
}

String Cl_KIV::MettiADes(Ref<Variant> S, Integer N, const String& Filler) {
    *S = Variant(JoinText(*S));  // the caller's variable becomes its text
    const String trimmed = Trim(*S->as<String>());
    String result = Right(Space(N) + trimmed, N);
    if (!Filler.empty()) result = Right(Pad(N, Filler) + trimmed, N);
    return result;
}

String Cl_KIV::MettiASin(Ref<Variant> S, Integer N, const String& Filler) {
    *S = Variant(JoinText(*S));
    const String trimmed = Trim(*S->as<String>());
    String result = Left(trimmed + Space(N), N);
    if (!Filler.empty()) result = Left(trimmed + Pad(N, Filler), N);
    return result;
}

String Cl_KIV::MettiInCentro(Ref<Variant> S, Integer N, const String& Filler, Boolean NoTrim) {
    *S = Variant(JoinText(*S));
    const String T = NoTrim ? *S->as<String>() : Trim(*S->as<String>());
    const Integer L = Len16(T);
    if (L > N) return T;  // too long for the width: returned uncut
    // Halves go to the even neighbour, so an odd surplus lands on the left.
    const Integer p = RoundToInteger((N - L) / 2.0);
    const String P = Pad(p, Filler);
    String R = Left(P + T + P, N);
    if (Len16(R) < N) R = Space(CheckedInteger(N - Len16(R))) + R;  // always blanks, even with a filler
    return R;
}

String Cl_KIV::Cntr(const String& S, Integer N) {
    Variant text(S);
    return MettiInCentro(text, N, u"", false);
}

String Cl_KIV::Repl(Integer Volte, const String& Frase) {
    if (Frase.empty() || Volte < 1) return u"";
    RequireTextLength(std::uint64_t{Frase.size()} * static_cast<std::uint64_t>(Volte));
    String out;
    out.reserve(Frase.size() * static_cast<std::size_t>(Volte));
    for (Integer i = 0; i < Volte; ++i) out += Frase;
    return out;
}

String Cl_KIV::StrInsert(const String& S_Long, const String& S_Short, Integer C_Pos, Boolean B_Trim) {
    String W = S_Long;
    const String Q = B_Trim ? Trim(S_Short) : S_Short;
    if (Q.empty()) return u"";
    const Integer a = Len16(S_Long);
    const Integer b = Len16(Q);
    // The strict bound keeps Q off the last two positions; kept as it stands.
    if (1 <= C_Pos && C_Pos < a - b) W.replace(static_cast<std::size_t>(C_Pos - 1), Q.size(), Q);
    return W;
}

String Cl_KIV::STR_Trunc(const String& S, Integer NCharToCut) {
    if (NCharToCut <= 0) return S;
    const Integer L = Len16(S);
    if (L >= NCharToCut) return Left(S, L - NCharToCut);
    return u"";
}

}  // namespace kiv
