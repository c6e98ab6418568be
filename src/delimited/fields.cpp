// Reading delimited records: fields separated by Sep ("|" by default),
// numbered from 1, found by a scan that restarts at the record's start.
#include <algorithm>
#include <string_view>

#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"
#include "frame/strings.hpp"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace kiv {

namespace {

constexpr std::size_t kNone = std::u16string_view::npos;

// The record followed by `pad` copies of the separator's first character, so
// that even the last field has a separator after it. The padding is never
// built: a read must not copy the record.
class PaddedRow {
public:
    PaddedRow(const String& row, std::size_t pad, char16_t padChar) : row_(row), pad_(pad), padChar_(padChar) {}

    std::size_t size() const { return row_.size() + pad_; }
    char16_t at(std::size_t k) const { return k < row_.size() ? row_[k] : padChar_; }

    // 0-based position of `sep` at or after `from`, kNone when absent.
    std::size_t find(std::u16string_view sep, std::size_t from) const {
        const std::size_t n = row_.size();
        const std::size_t m = sep.size();
        if (from + m > size()) return kNone;
        if (from + m <= n) {
            const std::size_t p = m == 1 ? row_.find(sep[0], from) : row_.find(sep, from);
            if (p != kNone) return p;
        }
        // Matches that reach into the padding: first across the boundary...
        std::size_t p = std::max(from, n + 1 >= m ? n + 1 - m : 0);
        for (; p < n && p + m <= size(); ++p)
            if (matchesAt(sep, p)) return p;
        // ...then wholly inside it, where every character is the same.
        p = std::max(p, n);
        if (p + m <= size() && sep.find_first_not_of(padChar_) == kNone) return p;
        return kNone;
    }

    std::u16string_view row() const { return row_; }

    String text(std::size_t from, std::size_t length) const {
        if (from + length <= row_.size()) return String(row_.substr(from, length));
        String out;
        out.reserve(length);
        for (std::size_t k = from; k < from + length; ++k) out += at(k);
        return out;
    }

private:
    bool matchesAt(std::u16string_view sep, std::size_t p) const {
        for (std::size_t j = 0; j < sep.size(); ++j)
            if (at(p + j) != sep[j]) return false;
        return true;
    }

    std::u16string_view row_;
    std::size_t pad_;
    char16_t padChar_;
};

struct Scan {
    std::size_t fieldStart = 0;   // 0-based, in the padded record
    std::size_t fieldLength = 0;
    std::size_t cursor = 0;       // 0-based: one past the first character of the last separator found
};

// 0-based position of the k-th (k >= 1) occurrence of c in `text`, kNone
// when there are fewer; `seen` tells how many there were before it.
std::size_t NthOccurrence(std::u16string_view text, char16_t c, std::size_t k, std::size_t& seen) {
    const char16_t* s = text.data();
    const std::size_t n = text.size();
    std::size_t i = 0;
    seen = 0;
#if defined(__SSE2__)
    // Eight code units at a time, counting matches until the block holding the k-th.
    const __m128i needle = _mm_set1_epi16(static_cast<short>(c));
    for (; i + 8 <= n; i += 8) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + i));
        // One bit per matching unit; records are sparse in separators, so
        // clearing bits one by one beats a software population count.
        auto mask = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi16(block, needle))) & 0x5555u;
        std::size_t count = 0;
        for (; mask != 0; mask &= mask - 1) ++count;
        if (seen + count >= k) break;
        seen += count;
    }
#endif
    for (; i < n; ++i)
        if (s[i] == c && ++seen == k) return i;
    return kNone;
}

// The scan with a one-character separator: the padding is all separators, so
// step k ends at the k-th separator of the record or, past the record's own,
// at the matching padding character. Counting separators gives the same
// field as stepping, without a call per step.
Scan ScanOneCharacter(const PaddedRow& w, char16_t c, long steps) {
    if (steps < 1) return Scan{};
    const std::u16string_view row = w.row();
    const auto at = [&](std::size_t k) {  // position in w of the k-th separator
        std::size_t seen = 0;
        const std::size_t p = NthOccurrence(row, c, k, seen);
        return p != kNone ? p : row.size() + (k - seen - 1);
    };
    const auto k = static_cast<std::size_t>(steps);
    const std::size_t start = k >= 2 ? at(k - 1) + 1 : 0;
    std::size_t end = start < row.size() ? row.find(c, start) : kNone;
    if (end == kNone) end = std::max(start, row.size());
    return Scan{start, end - start, end + 1};
}

// `steps` steps of the padded scan. A step that finds no separator (only
// possible with a longer separator) changes nothing. The cursor moves one
// character past the separator's start, so later fields of a multi-character
// separator begin with its remaining characters.
Scan ScanFields(const PaddedRow& w, const String& Sep, long steps) {
    if (Sep.size() == 1) return ScanOneCharacter(w, Sep[0], steps);
    Scan s;
    const std::size_t m = Sep.size();
    const bool sameAsPadding = Sep.find_first_not_of(Sep[0]) == String::npos;
    for (long k = 1; k <= steps; ++k) {
        if (s.cursor >= w.row().size() && sameAsPadding) {
            // Inside the padding a separator of padding characters is found
            // right at the cursor while it fits: every remaining step gives
            // the empty field and moves one on. Counted, not stepped.
            const std::size_t fits = w.size() >= s.cursor + m ? w.size() - m - s.cursor + 1 : 0;
            const std::size_t taken = std::min(static_cast<std::size_t>(steps - k + 1), fits);
            if (taken > 0) s = Scan{s.cursor + taken - 1, 0, s.cursor + taken};
            break;
        }
        const std::size_t p = w.find(Sep, s.cursor);
        // Not found: the cursor stays, so no later step can find it either.
        if (p == kNone) break;
        s.fieldStart = s.cursor;
        s.fieldLength = p - s.cursor;
        s.cursor = p + 1;
    }
    return s;
}

// The padding is Pos copies of the separator's first character, which an
// empty separator does not have; the field loop counts to Pos + 1 in 16 bits.
PaddedRow Padded(const String& T_Row, Integer Pos, const String& Sep) {
    if (Sep.empty()) raise(kInvalidCall);
    if (Pos == 32767) raise(kOverflow);
    return PaddedRow(T_Row, static_cast<std::size_t>(Pos), Sep[0]);
}

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
    const std::size_t at = text.rfind(find, static_cast<std::size_t>(p - 1));
    return at == String::npos ? 0 : static_cast<Long>(at + 1);
}

}  // namespace

String Cl_KIV::GetPipeStr(const String& T_Row, Integer Pos, const String& Sep, Boolean Trimmed) {
    if (Pos <= 0) return String();
    const PaddedRow w = Padded(T_Row, Pos, Sep);
    const Scan s = ScanFields(w, Sep, Pos);
    std::size_t from = s.fieldStart;
    std::size_t to = s.fieldStart + s.fieldLength;
    if (Trimmed) {
        while (from < to && w.at(from) == u' ') ++from;
        while (to > from && w.at(to - 1) == u' ') --to;
    }
    return w.text(from, to - from);
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
    const Integer last = checkedInteger(N_Pos - 1);
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
    for (Integer k = 1;; k = checkedInteger(k + 1))
        if (this->GetPipeStr(t, k, Sep, false) == sentinel) return k - 1;
}

Long Cl_KIV::PipeQuale(const String& S_Base, const String& S_Cerca, const String& Sep, Boolean B_Trim) {
    const String sentinel = SentinelFor(Sep);
    const String t = Terminated(S_Base, Sep) + sentinel;
    for (Integer k = 1;; k = checkedInteger(k + 1)) {
        const String field = this->GetPipeStr(t, k, Sep, B_Trim);
        if (field == S_Cerca) return k;
        if (field == sentinel) return 0;
    }
}

Long Cl_KIV::PipeInStrPos(const String& S_Base, const String& S_Cerca, const String& Sep, Long InStart) {
    const String t = InStart > 1 ? Mid(S_Base, InStart) : S_Base;
    if (S_Cerca.empty() || t.empty()) return 0;
    const Long p = InStr(t, S_Cerca);
    if (p == 0) return 0;
    const Long q = LastStartingAtOrBefore(t, Sep, p) + 1;
    const Long e = InStr(q, t, Sep);
    // An unterminated last field leaves e at 0 and the cut fails: records
    // handed here end with a separator.
    const String field = Mid(t, q, e - q);
    return this->PipeQuale(t, field, Sep, false);
}

}  // namespace kiv
