// Not written yet.
#include "frame/runtime.hpp"
#include "frame/errors.hpp"

namespace kiv {

Double ValPrefix(const String& /*text*/) { raise(kNotSupported); }
Double ToDoubleLocale(const Variant& /*value*/) { raise(kNotSupported); }
Double RoundHalfEven(Double /*value*/, int /*decimals*/) { raise(kNotSupported); }
Variant RoundHalfEven(const Variant& /*value*/, int /*decimals*/) { raise(kNotSupported); }
Integer RoundToInteger(Double /*value*/) { raise(kNotSupported); }
Long RoundToLong(Double /*value*/) { raise(kNotSupported); }
Double IntFloor(Double /*value*/) { raise(kNotSupported); }
Variant IntFloor(const Variant& /*value*/) { raise(kNotSupported); }
Double IntTrunc(Double /*value*/) { raise(kNotSupported); }
Variant IntTrunc(const Variant& /*value*/) { raise(kNotSupported); }
String StrNum(const Variant& /*number*/) { raise(kNotSupported); }
String FormatPattern(const Variant& /*value*/, const String& /*pattern*/) { raise(kNotSupported); }
Date DateFromParts(int /*year*/, int /*month*/, int /*day*/) { raise(kNotSupported); }
Date TimeFromParts(int /*hours*/, int /*minutes*/, int /*seconds*/) { raise(kNotSupported); }
Boolean IsNumericValue(const Variant& /*value*/) { raise(kNotSupported); }
Boolean IsDateValue(const Variant& /*value*/) { raise(kNotSupported); }
Date ToDateLocale(const Variant& /*value*/) { raise(kNotSupported); }
Integer WeekdayOf(Date /*date*/) { raise(kNotSupported); }
String DateText(Date /*date*/) { raise(kNotSupported); }
Date NowDateTime() { raise(kNotSupported); }
Date TodayDate() { raise(kNotSupported); }
DateParts SplitDate(Date /*date*/) { raise(kNotSupported); }
char16_t FoldCase(char16_t /*c*/) { raise(kNotSupported); }
int CaseBlindCompare(const String& /*a*/, const String& /*b*/) { raise(kNotSupported); }
bool CaseBlindEqual(const String& /*a*/, const String& /*b*/) { raise(kNotSupported); }
Long CaseBlindFind(const String& /*text*/, const String& /*find*/, Long /*start*/) { raise(kNotSupported); }

}  // namespace kiv
