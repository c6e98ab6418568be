// Seconds as a clock text, and the time between two clock texts for
// timesheets.
#include <cstdint>

#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"
#include "frame/strings.hpp"

namespace kiv {

namespace {
String TwoDigits(std::int32_t n) { return Right(u"00" + FromUtf8(std::to_string(n)), 2); }
}  // namespace

String Cl_KIV::Sec2Hh(Long Sec, const String& Sep, Boolean ConSec, Integer Lun) {
    const Long a = CheckedLong(Sec < 0 ? -std::int64_t{Sec} : std::int64_t{Sec});
    const Long h = a / 3600;
    const Long m = a % 3600 / 60;
    const Long s = a % 60;

    String text = FromUtf8(std::to_string(h)) + Sep + TwoDigits(m);
    if (ConSec) text += Sep + TwoDigits(s);  // dropped, not rounded, otherwise
    const bool shownZero = h == 0 && m == 0 && (!ConSec || s == 0);
    if (Sec < 0 && !shownZero) text = u"-" + text;
    if (Lun > 0) {
        Variant v(text);
        text = MettiADes(v, Lun, u"");
    }
    return text;
}

String Cl_KIV::Ora_Diff(const String& Ora_Ini, const String& Ora_Fin, const String& Sep) {
    if (Trim(Ora_Ini).empty() || Trim(Ora_Fin).empty()) return u"";
    String ini = Ora_Ini;
    String fin = Ora_Fin;
    if (Sep.size() == 1 && Sep != u":" && Sep != u" ") {
        ini = ReplaceAll(ini, Sep, u":");
        fin = ReplaceAll(fin, Sep, u":");
    }
    const Long a = Hh2Sec(ini);
    const Long b = Hh2Sec(fin);
    Long d = b - a;
    if (d < 0) d += 86400;  // the end is on the next day

    // Seconds are shown when either text has them, read as Hh2Sec reads it.
    auto hasSeconds = [this](const String& text) {
        String u = PipeCount(text, u" ") == 2 ? GetPipeStr(text, 2, u" ") : text;
        u = SostChar(u, u".", u":");
        return !GetPipeStr(u, 3, u":").empty();
    };
    const Boolean withSec = hasSeconds(ini) || hasSeconds(fin);
    return Sec2Hh(d, Sep, withSec);
}

}  // namespace kiv
