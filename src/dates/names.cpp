// Italian month and weekday names, month names read back, printed headers.
#include <array>

#include "frame/cl_kiv.hpp"
#include "frame/convert.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {

String Cl_KIV::Num2Mes(Integer NuMes) {
    switch (NuMes) {
        case 1: return u"Gennaio";
        case 2: return u"Febbraio";
        case 3: return u"Marzo";
        case 4: return u"Aprile";
        case 5: return u"Maggio";
        case 6: return u"Giugno";
        case 7: return u"Luglio";
        case 8: return u"Agosto";
        case 9: return u"Settembre";
        case 10: return u"Ottobre";
        case 11: return u"Novembre";
        case 12: return u"Dicembre";
        // Payroll periods.
        case 13: return u"Tredicesima";
        case 14: return u"Quattordicesima";
        case 15: return u"Quindicesima";
        case 97: return u"RiepStip";
        case 98: return u"TFR";
        case 99: return u"Anno";
        default: return u"";
    }
}

Integer Cl_KIV::Mese2Num(const String& p_Mese) {
    // Italian name, Italian abbreviation, English name, English abbreviation.
    static const std::array<std::array<const char16_t*, 4>, 12> kKeys{{
        {u"GENNAIO", u"GEN", u"JANUARY", u"JAN"},
        {u"FEBBRAIO", u"FEB", u"FEBRUARY", u"FEB"},
        {u"MARZO", u"MAR", u"MARCH", u"MAR"},
        {u"APRILE", u"APR", u"APRIL", u"APR"},
        {u"MAGGIO", u"MAG", u"MAY", u"MAY"},
        {u"GIUGNO", u"GIU", u"JUNE", u"JUN"},
        {u"LUGLIO", u"LUG", u"JULY", u"JUL"},
        {u"AGOSTO", u"AGO", u"AUGUST", u"AUG"},
        {u"SETTEMBRE", u"SET", u"SEPTEMBER", u"SEP"},
        {u"OTTOBRE", u"OTT", u"OCTOBER", u"OCT"},
        {u"NOVEMBRE", u"NOV", u"NOVEMBER", u"NOV"},
        {u"DICEMBRE", u"DIC", u"DECEMBER", u"DEC"},
    }};
    const String t = UCase(SostChar(Trim(p_Mese), u".", u""));
    if (t.empty()) return 0;
    for (std::size_t month = 0; month < kKeys.size(); ++month) {
        for (const char16_t* key : kKeys[month]) {
            if (t == key) return static_cast<Integer>(month + 1);
        }
    }
    return 0;
}

String Cl_KIV::Date2WikDay(const Variant& v_Data) {
    static const std::array<const char16_t*, 7> kDays{
        u"Domenica", u"Luned\u00EC", u"Marted\u00EC", u"Mercoled\u00EC", u"Gioved\u00EC", u"Venerd\u00EC", u"Sabato"};
    // Text that is neither a number nor a date falls through to Sunday.
    Integer index = 0;
    if (IsNumericValue(v_Data)) {
        const Double n = ToDoubleLocale(v_Data);
        if (n < 0 || n > 6) return u"";
        index = RoundToInteger(n);
    } else if (IsDateValue(v_Data)) {
        index = DOW(v_Data);
    }
    return kDays[static_cast<std::size_t>(index)];
}

String Cl_KIV::HeadPrtDate(const String& Hed, Long NPage) {
    const Date now = NowDateTime();
    const String head = FormatPattern(Variant(now), u"dd-mm-yyyy ") + FormatPattern(Variant(now), u"hh:mm ");
    const String tail = u" Pag. N. " + FormatPattern(Variant(NPage), u"@@@@@ ");
    const std::size_t stamps = head.size() + tail.size();
    if (Hed.size() < stamps) return Hed;
    // The header keeps its length: its text moves right behind the date and
    // gives up its last characters to the page number.
    return head + Hed.substr(0, Hed.size() - stamps) + tail;
}

}  // namespace kiv
