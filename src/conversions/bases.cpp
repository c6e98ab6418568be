// Whole numbers to and from the digits of bases 2 to 36, sign and magnitude.
#include <cmath>
#include <cstdint>

#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {

namespace {

constexpr std::u16string_view kDigits = u"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr std::uint64_t kLargestExact = (std::uint64_t{1} << 53) - 1;  // above it a Double skips integers

void CheckBase(Integer Base) {
    if (Base < 2 || Base > 36) Raise(kInvalidCall);
}

// 0-35 for a digit in either case, -1 otherwise.
int DigitValue(char16_t c) {
    if (c >= u'a' && c <= u'z') c = static_cast<char16_t>(c - 32);
    const std::size_t at = kDigits.find(c);
    return at == std::u16string_view::npos ? -1 : static_cast<int>(at);
}

}  // namespace

String Cl_KIV::Num2Base(const Variant& N, Integer Base, Integer Lun) {
    CheckBase(Base);
    Double value = 0;
    const String* text = N.as<String>();
    if (!N.isNull() && !N.isEmpty() && !(text && text->empty())) value = RoundHalfEven(ToDoubleLocale(N));
    if (!(std::fabs(value) <= static_cast<Double>(kLargestExact))) Raise(kOverflow);

    auto magnitude = static_cast<std::uint64_t>(std::fabs(value));
    String digits;
    do {
        digits.insert(digits.begin(), kDigits[magnitude % static_cast<std::uint64_t>(Base)]);
        magnitude /= static_cast<std::uint64_t>(Base);
    } while (magnitude > 0);
    if (Lun > 0) digits = AllineaDxZeri(Lun, digits);  // never cuts
    return value < 0 ? u"-" + digits : digits;
}

Double Cl_KIV::Base2Num(const String& T_Num, Integer Base) {
    CheckBase(Base);
    const String t = Trim(T_Num);
    if (t.empty()) return 0;
    const bool negative = t[0] == u'-';
    const std::size_t first = t[0] == u'-' || t[0] == u'+' ? 1 : 0;
    if (first == t.size()) Raise(kInvalidCall);  // a sign needs a digit after it
    for (std::size_t i = first; i < t.size(); ++i) {
        const int d = DigitValue(t[i]);
        if (d < 0 || d >= Base) Raise(kInvalidCall);
    }
    std::uint64_t value = 0;
    for (std::size_t i = first; i < t.size(); ++i) {
        value = value * static_cast<std::uint64_t>(Base) + static_cast<std::uint64_t>(DigitValue(t[i]));
        if (value > kLargestExact) Raise(kOverflow);
    }
    const auto result = static_cast<Double>(value);
    return negative ? -result : result;
}

}  // namespace kiv
