// The implicit conversions of Variants, as the runtime makes them when a
// value meets a parameter or an operator of another type.
#include "frame/convert.hpp"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

#include "frame/errors.hpp"
#include "frame/locale.hpp"
#include "frame/runtime.hpp"

namespace kiv {
namespace {

String Digits(long long v) {
    char tmp[24];
    const auto r = std::to_chars(tmp, tmp + sizeof tmp, v);
    return String(tmp, r.ptr);
}

bool IsWordCaseBlind(const String& s, const char16_t* word) { return CaseBlindEqual(s, word); }

}  // namespace

String ToText(const Variant& value) {
    const Locale& loc = CurrentLocale();
    switch (value.type()) {
        case VarType::Empty: return String();
        case VarType::Null: Raise(kInvalidUseOfNull);
        case VarType::String: return *value.as<String>();
        case VarType::Integer: return Digits(*value.as<Integer>());
        case VarType::Long: return Digits(*value.as<Long>());
        case VarType::Byte: return Digits(*value.as<Byte>());
        case VarType::Single: return NumberText(*value.as<Single>());
        case VarType::Double: return NumberText(*value.as<Double>());
        case VarType::Currency: return CurrencyText(*value.as<Currency>());
        case VarType::Boolean: return *value.as<Boolean>() ? loc.trueText : loc.falseText;
        case VarType::Date: return DateText(*value.as<Date>());
        default: Raise(kTypeMismatch);
    }
}

String JoinText(const Variant& value) { return value.isNull() ? String() : ToText(value); }

Single ToSingle(const Variant& value) {
    if (const Single* s = value.as<Single>()) return *s;
    const double d = ToDoubleLocale(value);
    const auto s = static_cast<Single>(d);
    if (std::isinf(s) && std::isfinite(d)) Raise(kOverflow);
    return s;
}

Integer ToInteger(const Variant& value) {
    if (const Boolean* b = value.as<Boolean>()) return *b ? Integer{-1} : Integer{0};
    if (const Integer* i = value.as<Integer>()) return *i;
    return RoundToInteger(ToDoubleLocale(value));
}

Long ToLong(const Variant& value) {
    if (const Boolean* b = value.as<Boolean>()) return *b ? -1 : 0;
    if (const Long* l = value.as<Long>()) return *l;
    return RoundToLong(ToDoubleLocale(value));
}

Byte ToByte(const Variant& value) {
    if (const Byte* b = value.as<Byte>()) return *b;
    const double r = RoundHalfEven(ToDoubleLocale(value), 0);
    if (!(r >= 0 && r <= 255)) Raise(kOverflow);
    return static_cast<Byte>(r);
}

Currency ToCurrency(const Variant& value) {
    if (const Currency* c = value.as<Currency>()) return *c;
    return Currency::fromDouble(ToDoubleLocale(value));
}

Boolean ToBooleanLocale(const Variant& value) {
    switch (value.type()) {
        case VarType::Boolean: return *value.as<Boolean>();
        case VarType::Null: Raise(kInvalidUseOfNull);
        case VarType::String: {
            const String& s = *value.as<String>();
            const Locale& loc = CurrentLocale();
            if (IsWordCaseBlind(s, u"True") || IsWordCaseBlind(s, u"Vero") || CaseBlindEqual(s, loc.trueText))
                return true;
            if (IsWordCaseBlind(s, u"False") || IsWordCaseBlind(s, u"Falso") || CaseBlindEqual(s, loc.falseText))
                return false;
            return ToDoubleLocale(value) != 0;  // numeric text, else Type mismatch
        }
        default: return ToDoubleLocale(value) != 0;
    }
}

Object ToObject(const Variant& value) {
    if (const Object* o = value.as<Object>()) return *o;
    Raise(kTypeMismatch);
}

Variant Negate(const Variant& value) {
    switch (value.type()) {
        case VarType::Empty: return Variant(Integer{0});
        case VarType::Null: return value;
        case VarType::Integer: return Variant(CheckedInteger(-std::int64_t{*value.as<Integer>()}));
        case VarType::Long: return Variant(CheckedLong(-std::int64_t{*value.as<Long>()}));
        case VarType::Byte: return Variant(static_cast<Integer>(-*value.as<Byte>()));
        case VarType::Boolean: return Variant(static_cast<Integer>(*value.as<Boolean>() ? 1 : 0));
        case VarType::Single: return Variant(-*value.as<Single>());
        case VarType::Double: return Variant(-*value.as<Double>());
        case VarType::Date: return Variant(DateFromSerial(-value.as<Date>()->serial));
        case VarType::Currency: {
            const std::int64_t s = value.as<Currency>()->scaled;
            if (s == std::numeric_limits<std::int64_t>::min()) Raise(kOverflow);
            return Variant(Currency{-s});
        }
        case VarType::String: return Variant(-ToDoubleLocale(value));
        default: Raise(kTypeMismatch);
    }
}

namespace {

Order Compare(double a, double b) { return a < b ? Order::Less : a > b ? Order::Greater : Order::Equal; }

Order Compare(const String& a, const String& b) {
    const int c = a.compare(b);
    return c < 0 ? Order::Less : c > 0 ? Order::Greater : Order::Equal;
}

Order Reverse(Order o) { return o == Order::Less ? Order::Greater : o == Order::Greater ? Order::Less : o; }

bool IsNumeric(const Variant& v) { return v.isNumber() || v.isBoolean() || v.isDate(); }

// A number (or Date) against a text.
Order NumberAgainstText(const Variant& number, const Variant& text) {
    if (number.isDate() && IsDateValue(text)) return Compare(number.as<Date>()->serial, ToDateLocale(text).serial);
    if (IsNumericValue(text)) return Compare(ToDoubleLocale(number), ToDoubleLocale(text));
    return Order::Less;
}

}  // namespace

Order CompareValues(const Variant& a, const Variant& b) {
    const auto unusable = [](const Variant& v) { return v.isObject() || v.isArray() || v.isError(); };
    if (unusable(a) || unusable(b)) Raise(kTypeMismatch);
    if (a.isNull() || b.isNull()) return Order::Null;
    if (a.isEmpty() && b.isEmpty()) return Order::Equal;
    if (a.isEmpty()) return b.isString() ? Compare(String(), *b.as<String>()) : Compare(0.0, ToDoubleLocale(b));
    if (b.isEmpty()) return a.isString() ? Compare(*a.as<String>(), String()) : Compare(ToDoubleLocale(a), 0.0);
    if (a.isString() && b.isString()) return Compare(*a.as<String>(), *b.as<String>());
    if (IsNumeric(a) && IsNumeric(b)) return Compare(ToDoubleLocale(a), ToDoubleLocale(b));
    if (IsNumeric(a)) return NumberAgainstText(a, b);
    return Reverse(NumberAgainstText(b, a));
}

}  // namespace kiv
