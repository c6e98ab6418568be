// The numbers old microcomputer BASIC programs kept in records as byte
// strings: 2-byte integers (CVI, MKI$) and 4- and 8-byte reals in the
// interpreters' binary format (CVS, CVD, MKS$, MKD$). A character stands for
// its byte in code page 1252.
//
// A real is b0 b1 ... then the exponent byte E last: the byte before E holds
// the sign in bit 7 and the top 7 bits of the mantissa M, the rest of M comes
// low bytes first. Value = (1 + M / 2^p) x 2^(E - 129); E = 0 is zero.
#include <cmath>
#include <cstdint>

#include "frame/cl_kiv.hpp"
#include "frame/code_page.hpp"
#include "frame/errors.hpp"

namespace kiv {

namespace {

// The first n bytes of S; a shorter text is refused. Characters beyond n are
// ignored, so a record can be passed from the number's position on.
void Bytes(const String& S, std::size_t n, unsigned char out[8]) {
    if (S.size() < n) Raise(kInvalidCall);
    for (std::size_t i = 0; i < n; ++i) out[i] = static_cast<unsigned char>(Cp1252Byte(S[i]));
}

String FromBytes(const unsigned char* bytes, std::size_t n) {
    String s;
    for (std::size_t i = 0; i < n; ++i) s += Cp1252Char(bytes[i]);
    return s;
}

// p = 23 for 4 bytes, 55 for 8.
Double Decode(const String& S, std::size_t n) {
    unsigned char b[8];
    Bytes(S, n, b);
    const int p = static_cast<int>(n * 8 - 9);
    const int E = b[n - 1];
    if (E == 0) return 0;
    std::uint64_t M = b[n - 2] & 127u;
    for (std::size_t i = n - 2; i-- > 0;) M = (M << 8) | b[i];
    // The significand 2^p + M needs up to 56 bits: converting it is the one
    // rounding, to nearest with ties to even; the scaling after it is exact.
    const auto significand = static_cast<Double>((std::uint64_t{1} << p) + M);
    const Double value = std::ldexp(significand, E - 129 - p);
    return b[n - 2] & 128u ? -value : value;
}

String Encode(Double N, std::size_t n) {
    unsigned char b[8] = {};
    if (!std::isfinite(N)) Raise(kOverflow);
    if (N == 0) return FromBytes(b, n);
    const int p = static_cast<int>(n * 8 - 9);
    int e = 0;
    const Double f = 2 * std::frexp(std::fabs(N), &e);  // 1 <= f < 2
    e -= 1;
    auto F = static_cast<std::uint64_t>(std::nearbyint(std::ldexp(f, p)));  // ties to even
    if (F == std::uint64_t{1} << (p + 1)) {
        F = std::uint64_t{1} << p;
        e += 1;
    }
    const int E = e + 129;
    if (E > 255) Raise(kOverflow);
    if (E < 1) return FromBytes(b, n);  // below 2^-128: zero
    std::uint64_t M = F - (std::uint64_t{1} << p);
    for (std::size_t i = 0; i < n - 2; ++i, M >>= 8) b[i] = static_cast<unsigned char>(M & 255u);
    b[n - 2] = static_cast<unsigned char>((M & 127u) | (N < 0 ? 128u : 0u));
    b[n - 1] = static_cast<unsigned char>(E);
    return FromBytes(b, n);
}

}  // namespace

Integer Cl_KIV::Cvi2Int(const String& S) {
    unsigned char b[8];
    Bytes(S, 2, b);
    return static_cast<Integer>(static_cast<std::uint16_t>(b[0] + 256 * b[1]));
}

Double Cl_KIV::Cvs2Dbl(const String& S) { return Decode(S, 4); }

Double Cl_KIV::Cvd2Dbl(const String& S) { return Decode(S, 8); }

String Cl_KIV::Int2Mki(Integer N) {
    const auto v = static_cast<std::uint16_t>(N);
    const unsigned char b[2] = {static_cast<unsigned char>(v & 255u), static_cast<unsigned char>(v >> 8)};
    return FromBytes(b, 2);
}

String Cl_KIV::Dbl2Mks(Double N) { return Encode(N, 4); }

String Cl_KIV::Dbl2Mkd(Double N) { return Encode(N, 8); }

}  // namespace kiv
