// Records rendered as rows: fixed-width columns for a printed report in a
// fixed-pitch font. (One field per row, Pipe2Rows, walks the fields with the
// field reads.)
#include <cmath>

#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {

String Cl_KIV::Pipe2STRows(const String& T_Rows, const String& Larghezze, const String& Sep, const String& Gap,
                           const String& RowSep) {
    if (T_Rows.empty()) return u"";
    if (RowSep.empty()) Raise(kInvalidCall);

    std::vector<String> records;
    for (std::size_t from = 0;;) {
        const std::size_t at = T_Rows.find(RowSep, from);
        if (at == String::npos) {
            if (from < T_Rows.size()) records.push_back(T_Rows.substr(from));  // no empty piece after a final RowSep
            break;
        }
        records.push_back(T_Rows.substr(from, at - from));
        from = at + RowSep.size();
    }

    struct Column {
        char16_t align;
        Integer width;
    };
    std::vector<Column> columns;
    const Long c = PipeCount(Larghezze, Sep);
    for (Long k = 1; k <= c; ++k) {
        String q = UCase(GetPipeStr(Larghezze, CheckedInteger(k), Sep, true));
        char16_t align = u'S';
        if (!q.empty() && (q.back() == u'S' || q.back() == u'D' || q.back() == u'C')) {
            align = q.back();
            q.pop_back();
        }
        const Double whole = IntTrunc(ValPrefix(q));
        if (whole > 32767) Raise(kOverflow);
        columns.push_back({align, whole < 1 ? Integer{0} : static_cast<Integer>(whole)});
    }

    String result;
    for (std::size_t r = 0; r < records.size(); ++r) {
        if (r > 0) result += RowSep;
        bool first = true;
        for (std::size_t k = 0; k < columns.size(); ++k) {
            const Integer w = columns[k].width;
            if (w < 1) continue;  // a hidden column gives no cell and no gap
            Variant f(GetPipeStr(records[r], CheckedInteger(static_cast<std::int64_t>(k) + 1), Sep));
            String cell;
            switch (columns[k].align) {
                case u'D': cell = MettiADes(f, w); break;
                case u'C': cell = Left(MettiInCentro(f, w), w); break;
                default: cell = MettiASin(f, w); break;
            }
            if (!first) result += Gap;
            result += cell;
            first = false;
        }
    }
    return result;
}

}  // namespace kiv
