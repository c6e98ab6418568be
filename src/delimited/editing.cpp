// Replacing one field of a delimited record. The record passed in is never
// changed; the new record is the result.
#include <algorithm>
#include <optional>

#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"
#include "frame/strings.hpp"

namespace kiv {

String Cl_KIV::PutPipeStr(const String& Row, Integer Pos, const String& NewStr, const String& Sep) {
    // InStr(start, Row, Sep) for starts that only move forward, in linear time.
    std::optional<ForwardSearch> search;
    if (!Sep.empty()) search.emplace(Row, Sep);
    const auto find = [&](Long start) -> Long {
        if (!search) return InStr(start, Row, Sep);
        const std::size_t at = search->next(static_cast<std::size_t>(start) - 1);
        return at == String::npos ? 0 : static_cast<Long>(at) + 1;
    };
    Long i = 1;
    const Integer last = CheckedInteger(Pos - 1);
    for (Integer k = 1; k <= last; ++k) {
        const Long p = find(i);
        if (p == 0) break;  // i stays, so no later step finds one either
        i = p + 1;
    }
    const Long p = find(i);
    // Overwritten in place: the record never changes length. Without a
    // separator closing the field there is no width to write into.
    const Long width = p - i;
    if (width < 0) Raise(kInvalidCall);
    String result = Row;
    const std::size_t n = std::min(static_cast<std::size_t>(width), NewStr.size());
    result.replace(static_cast<std::size_t>(i - 1), n, NewStr, 0, n);
    return result;
}

String Cl_KIV::SostPipeStr(const String& Row, Ref<Integer> Pos, const String& NewStr, const String& Sep) {
    if (*Pos < 1) *Pos = 1;
    const Long b = this->PipeBegin(Row, *Pos, Sep);
    const Long e = this->PipeEnd(Row, *Pos, Sep);
    // A missing field is not padded in: past the end, the value is simply appended.
    String result = Left(Row, b - 1) + NewStr + Mid(Row, e);
    if (Right(result, 1) != Sep) result += Sep;
    return result;
}

String Cl_KIV::PipeSost(const String& T_Row, Integer Pos, const String& NewStr, const String& Sep,
                        Boolean NoChangeWidth) {
    const Long n = this->PipeCount(T_Row, Sep);
    if (Pos < 1 || Pos > n) return T_Row;  // never adds a field
    const String head = Left(T_Row, this->PipeEnd(T_Row, CheckedInteger(Pos - 1), Sep));
    const String tail = Mid(T_Row, this->PipeBegin(T_Row, CheckedInteger(Pos + 1), Sep));
    if (!NoChangeWidth) return head + NewStr + Sep + tail;

    // The old field's leading blank tells a right-aligned column.
    const String old = this->GetPipeStr(T_Row, Pos, Sep, false);
    const Integer w = Len16(old);
    const String field = old.starts_with(u' ') ? this->MettiADes(Variant(NewStr), w) : this->MettiASin(Variant(NewStr), w);
    return head + field + Sep + tail;
}

}  // namespace kiv
