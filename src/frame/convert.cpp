// Not written yet.
#include "frame/convert.hpp"
#include "frame/errors.hpp"

namespace kiv {

String NumberText(Double /*value*/) { raise(kNotSupported); }
String NumberText(Single /*value*/) { raise(kNotSupported); }
String ToText(const Variant& /*value*/) { raise(kNotSupported); }
String JoinText(const Variant& /*value*/) { raise(kNotSupported); }
Double ToDouble(const Variant& /*value*/) { raise(kNotSupported); }
Single ToSingle(const Variant& /*value*/) { raise(kNotSupported); }
Integer ToInteger(const Variant& /*value*/) { raise(kNotSupported); }
Long ToLong(const Variant& /*value*/) { raise(kNotSupported); }
Byte ToByte(const Variant& /*value*/) { raise(kNotSupported); }
Currency ToCurrency(const Variant& /*value*/) { raise(kNotSupported); }
Boolean ToBoolean(const Variant& /*value*/) { raise(kNotSupported); }
Date ToDate(const Variant& /*value*/) { raise(kNotSupported); }
Object ToObject(const Variant& /*value*/) { raise(kNotSupported); }
Order CompareValues(const Variant& /*a*/, const Variant& /*b*/) { raise(kNotSupported); }

}  // namespace kiv
