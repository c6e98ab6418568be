// Reading delimited records: fields separated by Sep ("|" by default),
// numbered from 1, found by a scan that restarts at the record's start.
#include "delimited/field_scan.hpp"
#include "frame/cl_kiv.hpp"

namespace kiv {

using namespace delimited;

namespace {

// Two marks that differ from the separator, alternated ten times: a field
// that no real record holds.
String SentinelFor(const String& Sep) {
    String a = u"@";
    String b = u"#";
    if (Sep == u"@") a = u"\u00A7";
    if (Sep == u"#" || a == b) b = u"\u00B0";
    String sentinel;
    for (int k = 0; k < 5; ++k) sentinel += a + b;
    return sentinel;
}

// The record with a closing separator; the whole separator is compared with
// the last character only, so a longer separator is always appended.
String Terminated(const String& S_Base, const String& Sep) {
    if (Right(S_Base, 1) != Sep) return S_Base + Sep;
    return S_Base;
}

// Last occurrence of `find` in `text` starting at or before the 1-based `p`.
Long LastStartingAtOrBefore(const String& text, const String& find, Long p) {
    if (p < 1) return 0;
    if (find.empty()) return std::min<Long>(p, static_cast<Long>(text.size()) + 1);
    ForwardSearch search(text, find);
    Long last = 0;
    for (std::size_t at = search.next(0); at != kNone && at < static_cast<std::size_t>(p); at = search.next(at + 1))
        last = static_cast<Long>(at + 1);
    return last;
}

}  // namespace

String Cl_KIV::GetPipeStr(const String& T_Row, Integer Pos, const String& Sep, Boolean Trimmed) {
    if (Pos <= 0) return String();
    const PaddedRow w = Padded(T_Row, Pos, Sep);
    return FieldText(w, ScanFields(w, Sep, Pos), Trimmed);
}

Double Cl_KIV::GetPipeNumber(const String& T_Row, Integer Pos, const String& Sep) {
    const String field = this->GetPipeStr(T_Row, Pos, Sep, true);
    if (field.empty()) return 0;
    return this->ToNumber(Variant(field));
}

Long Cl_KIV::PipeBegin(const String& T_Row, Integer Pos, const String& Sep) {
    if (Pos <= 0) return 1;
    const PaddedRow w = Padded(T_Row, Pos, Sep);
    return static_cast<Long>(ScanFields(w, Sep, Pos - 1).cursor + 1);
}

Long Cl_KIV::PipeEnd(const String& T_Row, Integer Pos, const String& Sep) {
    if (Pos <= 0) return 0;
    const PaddedRow w = Padded(T_Row, Pos, Sep);
    return static_cast<Long>(ScanFields(w, Sep, Pos).cursor);
}

Variant Cl_KIV::PipeDove(const String& S_Base, Integer N_Pos, const String& Sep) {
    Long i = 1;
    const Integer last = CheckedInteger(N_Pos - 1);
    for (Integer k = 1; k <= last; ++k) {
        const Long p = InStr(i, S_Base, Sep);
        if (p == 0) return Variant(Integer{0});
        i = p + 1;
    }
    // A field that would start past the end does not exist.
    if (i > static_cast<Long>(S_Base.size())) return Variant(Integer{0});
    return Variant(i);
}

Long Cl_KIV::PipeCount(const String& S_Base, const String& Sep) {
    const String sentinel = SentinelFor(Sep);
    const String t = Terminated(S_Base, Sep) + sentinel + Sep;
    FieldWalk walk(t, Sep);
    for (Integer k = 1;; k = CheckedInteger(k + 1))
        if (walk.fieldIs(k, false, sentinel)) return k - 1;
}

Long Cl_KIV::PipeQuale(const String& S_Base, const String& S_Cerca, const String& Sep, Boolean B_Trim) {
    const String sentinel = SentinelFor(Sep);
    const String t = Terminated(S_Base, Sep) + sentinel;
    FieldWalk walk(t, Sep);
    for (Integer k = 1;; k = CheckedInteger(k + 1)) {
        if (walk.fieldIs(k, B_Trim, S_Cerca)) return k;
        if (walk.fieldIs(k, B_Trim, sentinel)) return 0;
    }
}

Long Cl_KIV::PipeInStrPos(const String& S_Base, const String& S_Cerca, const String& Sep, Long InStart) {
    const String t = InStart > 1 ? Mid(S_Base, InStart) : S_Base;
    if (S_Cerca.empty() || t.empty()) return 0;
    const std::size_t found = ForwardSearch(t, S_Cerca).next(0);
    if (found == kNone) return 0;
    const Long p = static_cast<Long>(found) + 1;
    const Long q = LastStartingAtOrBefore(t, Sep, p) + 1;
    const std::size_t end = Sep.empty() ? kNone : ForwardSearch(t, Sep).next(static_cast<std::size_t>(q - 1));
    const Long e = Sep.empty() ? InStr(q, t, Sep) : end == kNone ? 0 : static_cast<Long>(end) + 1;
    // An unterminated last field leaves e at 0 and the cut fails: records
    // handed here end with a separator.
    const String field = Mid(t, q, e - q);
    return this->PipeQuale(t, field, Sep, false);
}

}  // namespace kiv
