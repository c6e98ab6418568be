// Rounding: half to even (Round, CInt, CLng) and the whole part (Int, Fix).
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

#include "frame/errors.hpp"
#include "frame/runtime.hpp"

namespace kiv {
namespace {

// std::to_chars rounds the exact binary value correctly, ties to even. Whole
// numbers, and values with no bits below the wanted place, are already
// rounded (`whole`: where the type has no fraction bits left; `places`: the
// most binary, and so decimal, places the type has).
template <class F>
F RoundBinary(F value, int decimals, F whole, int places) {
    if (value == 0) return F(0);  // a negative zero rounds to zero on every path
    if (!std::isfinite(value) || std::fabs(value) >= whole || decimals > places) return value;
    // Below `whole` (2^52) the fixed text has at most 16 integer digits and
    // `places` (1074) decimals: it fits.
    char buf[1200];
    const auto r = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::fixed, decimals);
    F out = 0;
    std::from_chars(buf, r.ptr, out);
    return out == 0 ? F(0) : out;
}

// 2^52 and 2^23: from there on a Double or Single holds whole numbers only.
constexpr Double kDoubleWhole = 4503599627370496.0;
constexpr Single kSingleWhole = 8388608.0f;

Single RoundSingle(Single value, int decimals) { return RoundBinary(value, decimals, kSingleWhole, 149); }

Currency RoundCurrency(Currency c, int decimals) {
    if (decimals >= 4) return c;
    std::int64_t unit = 1;  // 10^(4 - decimals): 10 to 10000
    for (int i = decimals; i < 4; ++i) unit *= 10;
    std::int64_t q = c.scaled / unit;
    const std::int64_t rest = c.scaled % unit;
    const std::int64_t twice = 2 * (rest < 0 ? -rest : rest);
    if (twice > unit || (twice == unit && q % 2 != 0)) q += c.scaled < 0 ? -1 : 1;
    return Currency{q * unit};
}

}  // namespace

Double RoundHalfEven(Double value, int decimals) {
    if (decimals < 0) Raise(kInvalidCall);
    return RoundBinary(value, decimals, kDoubleWhole, 1074);
}

Variant RoundHalfEven(const Variant& value, int decimals) {
    if (decimals < 0) Raise(kInvalidCall);
    switch (value.type()) {
        case VarType::Null: return value;
        case VarType::Empty: return Variant(Integer{0});
        case VarType::Integer: case VarType::Long: case VarType::Byte: return value;
        case VarType::Boolean: return Variant(static_cast<Integer>(*value.as<Boolean>() ? -1 : 0));
        case VarType::Single: return Variant(RoundSingle(*value.as<Single>(), decimals));
        case VarType::Currency: return Variant(RoundCurrency(*value.as<Currency>(), decimals));
        case VarType::Date: return Variant(DateFromSerial(RoundHalfEven(value.as<Date>()->serial, decimals)));
        default: return Variant(RoundHalfEven(ToDoubleLocale(value), decimals));
    }
}

Integer RoundToInteger(Double value) {
    const double r = RoundHalfEven(value, 0);
    if (!(r >= -32768.0 && r <= 32767.0)) Raise(kOverflow);
    return static_cast<Integer>(r);
}

Long RoundToLong(Double value) {
    const double r = RoundHalfEven(value, 0);
    if (!(r >= -2147483648.0 && r <= 2147483647.0)) Raise(kOverflow);
    return static_cast<Long>(r);
}

Double IntFloor(Double value) { return std::floor(value); }
Double IntTrunc(Double value) { return std::trunc(value); }

namespace {
template <class Op>
Variant WholePart(const Variant& value, Op op) {
    switch (value.type()) {
        case VarType::Null: return value;
        case VarType::Empty: return Variant(Integer{0});
        case VarType::Integer: case VarType::Long: case VarType::Byte: return value;
        case VarType::Boolean: return Variant(static_cast<Integer>(*value.as<Boolean>() ? -1 : 0));
        case VarType::Single: return Variant(static_cast<Single>(op(static_cast<double>(*value.as<Single>()))));
        case VarType::Double: return Variant(op(*value.as<Double>()));
        case VarType::Currency: {
            // Whole units exactly, the op decides only what the fraction adds (0 or -1).
            const std::int64_t s = value.as<Currency>()->scaled;
            const auto extra = static_cast<std::int64_t>(op(static_cast<double>(s % 10000) / 10000.0));
            const std::int64_t units = s / 10000 + extra;
            // The floor of the least Currency is a unit below it.
            if (units < std::numeric_limits<std::int64_t>::min() / 10000) Raise(kOverflow);
            return Variant(Currency{units * 10000});
        }
        case VarType::Date: return Variant(DateFromSerial(op(value.as<Date>()->serial)));
        case VarType::String: return Variant(op(ToDoubleLocale(value)));
        default: Raise(kTypeMismatch);
    }
}
}  // namespace

Variant IntFloor(const Variant& value) { return WholePart(value, [](double v) { return std::floor(v); }); }
Variant IntTrunc(const Variant& value) { return WholePart(value, [](double v) { return std::trunc(v); }); }

}  // namespace kiv
