// Counts of minutes and seconds to and from clock texts.
#include <cstdint>

#include "frame/cl_kiv.hpp"
#include "frame/convert.hpp"
#include "frame/errors.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {

String Cl_KIV::Min2hh(Ref<Long> tt, Integer Lun) {
    const int sign = *tt < 0 ? -1 : (*tt > 0 ? 1 : 0);
    // The caller's variable keeps the magnitude: hosts read it back.
    if (*tt < 0) *tt = CheckedLong(-std::int64_t{*tt});
    const Double h = IntFloor(*tt / 60.0);
    const Double m = *tt - 60 * h;

    String result = NumberText(h) + u":" + Right(u"00" + NumberText(m), 2);
    if (sign < 0) result = u"-" + result;
    if (Lun > 0) {
        Variant text(result);
        result = MettiADes(text, Lun, u"");
    }
    return result;
}

Long Cl_KIV::Hh2Min(Date Hh, Integer /*Lun*/) {
    // Reads the default text with "." between hours, minutes and seconds, as
    // the Italian locale writes it; any other form is no number here.
    const String t = DateText(Hh) + u".";
    const String hours = GetPipeStr(t, 1, u".");
    const String minutes = GetPipeStr(t, 2, u".");
    return RoundToLong(ToDoubleLocale(Variant(hours)) * 60 + ToDoubleLocale(Variant(minutes)));
}

Long Cl_KIV::Hh2Sec(const String& P_Hh) {
    String s = P_Hh;
    if (PipeCount(P_Hh, u" ") == 2) s = GetPipeStr(P_Hh, 2, u" ");
    s = SostChar(s, u".", u":");
    const Long minutes = Hh2Min(ToDateLocale(Variant(s)));
    const Double seconds = ValPrefix(GetPipeStr(s, 3, u":"));
    return RoundToLong(seconds + 60.0 * minutes);
}

}  // namespace kiv
