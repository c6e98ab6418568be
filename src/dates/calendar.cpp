// Month and year boundaries, month arithmetic, day differences and weekdays.
// Boundaries are text surgery on the masked date; results that come from a
// Date are its default text.
#include <cmath>

#include "frame/cl_kiv.hpp"
#include "frame/convert.hpp"
#include "frame/errors.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {
namespace {

Date DateOf(const String& text) { return ToDateLocale(Variant(text)); }
Date Plus(Date d, double days) { return DateFromSerial(d.serial + days); }
int MonthOf(Date d) { return SplitDate(d).month; }

}  // namespace

String Cl_KIV::IniMese(const Variant& Data) { return u"01" + Mid(Date2Mask(Data), 3); }
String Cl_KIV::IniAnno(const Variant& Data) { return u"01/01" + Mid(Date2Mask(Data), 6); }
String Cl_KIV::FinAnno(const Variant& Data) { return u"31/12" + Mid(Date2Mask(Data), 6); }

String Cl_KIV::FinMese(const Variant& Data) {
    const Date a = DateOf(IniMese(Data));
    // 35 days on from the 1st always lands in the next month.
    const Date b = DateOf(IniMese(Variant(Plus(a, 35))));
    return DateText(Plus(b, -1));
}

Boolean Cl_KIV::IsFineMese(const Variant& Giorno) {
    if (!IsDateValue(Giorno)) return false;
    return SplitDate(Plus(ToDateLocale(Giorno), 1)).day == 1;
}

Boolean Cl_KIV::Is_FineMese(Ref<Date> Gior) {
    if (Gior->serial == 0) *Gior = NowDateTime();
    return MonthOf(Plus(*Gior, 1)) != MonthOf(*Gior);
}

Boolean Cl_KIV::Is_IniMese(Ref<Date> Gior) {
    if (Gior->serial == 0) *Gior = NowDateTime();
    return MonthOf(Plus(*Gior, -1)) != MonthOf(*Gior);
}

Integer Cl_KIV::GiorniAFineMese(Date Oggi) {
    return RoundToInteger(DateOf(FinMese(Variant(Oggi))).serial - Oggi.serial);
}

String Cl_KIV::AddMesi(const Variant& Data, Integer N_Mesi) {
    const String m = Date2Mask(Data);
    const String d = Left(m, 3);
    Integer mm = RoundToInteger(ValPrefix(Mid(m, 4, 2)));
    Integer yy = RoundToInteger(ValPrefix(Right(m, 4)));

    mm = CheckedInteger(mm + N_Mesi);
    while (mm > 12) {
        mm = static_cast<Integer>(mm - 12);
        yy = CheckedInteger(yy + 1);
    }
    while (mm <= 0) {
        yy = CheckedInteger(yy - 1);
        mm = static_cast<Integer>(mm + 12);
    }

    const String t = d + FmtNum(Variant(mm), 2, 0, false, u"0") + u"/" + FmtNum(Variant(yy), 4, 0, false, u"0");
    const String f = FinMese(Variant(t));
    // Same month and year in the same places, so comparing the texts compares
    // the days: a day past the month's end becomes its last day.
    return f < t ? f : t;
}

Long Cl_KIV::ContaMesi(Date Dat_Ini, Date Dat_Fin) {
    if (Dat_Fin.serial < Dat_Ini.serial) return 0;
    Date a = DateOf(IniMese(Variant(Dat_Ini)));
    const Date b = DateOf(IniMese(Variant(Dat_Fin)));
    if (a == b) return 1;

    Long count = 1;
    String x = AddMesi(Variant(a), 1);
    while (DateOf(x).serial <= b.serial) {
        count = CheckedLong(std::int64_t{count} + 1);
        a = DateOf(x);
        x = AddMesi(Variant(a), 1);
    }
    return count;
}

Long Cl_KIV::Dat_Diff(const String& Dat_Prima, const String& Dat_Dopo) {
    const Variant first(Dat_Prima);
    const Variant second(Dat_Dopo);
    if (!IsDateValue(first) || !IsDateValue(second)) return 0;
    // Calendar days: the times of day do not count.
    const double from = std::trunc(ToDateLocale(first).serial);
    const double to = std::trunc(ToDateLocale(second).serial);
    return CheckedLong(static_cast<std::int64_t>(to - from));
}

Integer Cl_KIV::DOW(const Variant& Data) {
    if (!IsDateValue(Data)) return -1;
    return static_cast<Integer>(WeekdayOf(ToDateLocale(Data)) - 1);
}

String Cl_KIV::Date2Lun(const Variant& Data) {
    Integer w = DOW(Data);
    if (w < 0) return StrNum(Variant(Integer{0}));
    if (w == 0) w = 7;
    return DateText(Plus(ToDateLocale(Data), -(w - 1)));
}

String Cl_KIV::Date2Dom(const Variant& Data) {
    const String t = Date2Lun(Data);
    if (!IsDateValue(Variant(t))) return StrNum(Variant(Integer{0}));
    return DateText(Plus(DateOf(t), 6));
}

}  // namespace kiv
