// The implicit conversions the operations rely on: a Variant to text, to a
// number, to a Date, and the operators on Variants. The number and the date
// of a Variant are the runtime's ToDoubleLocale and ToDateLocale.
#pragma once

#include "frame/runtime.hpp"
#include "frame/value.hpp"

namespace kiv {

// --- Texts of numbers (runtime_number_text.cpp)

// Text of a number under the locale: "12,5", "0,5", "-0,25", "1E+16".
String NumberText(Double value);
String NumberText(Single value);
// Text of a Currency under the locale: up to four decimals, "12,5".
String CurrencyText(Currency value);

// --- Conversions (convert.cpp)

// CStr: Empty is "", Null is Invalid use of Null, numbers under the locale,
// Booleans "True"/"False", Dates their default text.
String ToText(const Variant& value);
// The text of `value & ""`: like ToText, but Null gives "".
String JoinText(const Variant& value);

Single ToSingle(const Variant& value);
Integer ToInteger(const Variant& value);  // rounded half to even, Overflow out of range
Long ToLong(const Variant& value);
Byte ToByte(const Variant& value);
Currency ToCurrency(const Variant& value);
// "True"/"False", "Vero"/"Falso" and the locale's words case-blind, else a
// number (0 is False).
Boolean ToBooleanLocale(const Variant& value);
Object ToObject(const Variant& value);  // Type mismatch unless an object or Nothing

// --- Operators (convert.cpp)

// The unary minus: the type stays, except that Empty, a Byte and a Boolean
// become an Integer and text a Double; Null stays Null. Overflow for the
// least Integer, Long and Currency.
Variant Negate(const Variant& value);

// Comparison of two values: numbers numerically, texts as texts (code unit
// by code unit), a number against numeric text numerically, a number below
// any other text. Null on either side gives Null.
enum class Order { Less, Equal, Greater, Null };
Order CompareValues(const Variant& a, const Variant& b);

}  // namespace kiv
