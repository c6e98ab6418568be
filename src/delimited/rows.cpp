// A record rendered as rows: one field per row for a message or a text box,
// or fixed-width columns for a printed report in a fixed-pitch font. Both
// walk the fields once rather than scanning each from the record's start.
#include <cmath>

#include "delimited/field_scan.hpp"
#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {

using namespace delimited;

String Cl_KIV::Pipe2Rows(const String& T_Row, const String& Sep, Boolean Trimmed, const String& RowSep) {
    const Long n = PipeCount(T_Row, Sep);
    const FieldWalk walk(T_Row, Sep);
    String result;
    for (Long k = 1; k <= n; ++k) {
        if (k > 1) result += RowSep;
        result += walk.field(CheckedInteger(k), Trimmed);
    }
    return result;
}

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
    const FieldWalk widths(Larghezze, Sep);
    for (Long k = 1; k <= c; ++k) {
        String q = UCase(widths.field(CheckedInteger(k), true));
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
        const FieldWalk fields(records[r], Sep);
        bool first = true;
        for (std::size_t k = 0; k < columns.size(); ++k) {
            const Integer w = columns[k].width;
            if (w < 1) continue;  // a hidden column gives no cell and no gap
            Variant f(fields.field(CheckedInteger(static_cast<std::int64_t>(k) + 1), false));
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
