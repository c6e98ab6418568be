// Reading delimited records: fields separated by Sep ("|" by default),
// numbered from 1, found by a scan that restarts at the record's start.
#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

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

    std::u16string_view row() const { return row_; }

    String text(std::size_t from, std::size_t length) const {
        if (from + length <= row_.size()) return String(row_.substr(from, length));
        String out;
        out.reserve(length);
        for (std::size_t k = from; k < from + length; ++k) out += at(k);
        return out;
    }

private:
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

// Where the separator starts in the record followed by endless copies of its
// first character, in order: the record's own occurrences (overlapping ones
// too), then those that run into the padding, then, for a separator of
// padding characters only, every place of the padding. Found in time linear
// in the record and the separator, however long either is; at most `limit`
// are listed, the places of the padding are counted, not listed.
class SeparatorStarts {
public:
    SeparatorStarts(std::u16string_view row, std::u16string_view sep, std::size_t limit) : rowSize_(row.size()) {
        ForwardSearch search(row, sep);
        for (std::size_t from = 0; listed_.size() < limit;) {
            const std::size_t p = search.next(from);
            if (p == kNone) break;
            listed_.push_back(p);
            from = p + 1;
        }
        if (listed_.size() == limit) return;
        // sep[paddingFrom..] is all padding characters.
        std::size_t paddingFrom = sep.size();
        while (paddingFrom > 0 && sep[paddingFrom - 1] == sep[0]) --paddingFrom;
        // A tail of the record that is a head of the separator, longest first.
        for (std::size_t tail = search.tailLength(); tail > 0 && listed_.size() < limit; tail = search.shorter(tail))
            if (tail >= paddingFrom) listed_.push_back(row.size() - tail);
        allPadding_ = paddingFrom == 0;
    }
    // The j-th start, 0-based.
    std::size_t at(std::size_t j) const { return j < listed_.size() ? listed_[j] : rowSize_ + (j - listed_.size()); }
    // How many starts are at or before `last`.
    std::size_t countUpTo(std::size_t last) const {
        const auto listed = static_cast<std::size_t>(std::upper_bound(listed_.begin(), listed_.end(), last) - listed_.begin());
        if (listed < listed_.size() || !allPadding_ || last < rowSize_) return listed;
        return listed + (last - rowSize_ + 1);
    }

private:
    std::vector<std::size_t> listed_;
    std::size_t rowSize_;
    bool allPadding_ = false;
};

// `steps` steps of the padded scan, from the separator starts: step j finds
// the j-th start when the separator fits in the padded record there; a step
// that finds none changes nothing, and no later step finds one either. The
// cursor moves one character past the separator's start, so later fields of
// a multi-character separator begin with its remaining characters.
Scan StepsOver(const SeparatorStarts& starts, std::size_t sepLength, std::size_t paddedSize, std::size_t steps) {
    const std::size_t fit = paddedSize >= sepLength ? starts.countUpTo(paddedSize - sepLength) : 0;
    const std::size_t found = std::min(steps, fit);
    if (found == 0) return Scan{};
    const std::size_t start = found >= 2 ? starts.at(found - 2) + 1 : 0;
    return Scan{start, starts.at(found - 1) - start, starts.at(found - 1) + 1};
}

Scan ScanFields(const PaddedRow& w, const String& Sep, long steps) {
    if (Sep.size() == 1) return ScanOneCharacter(w, Sep[0], steps);
    if (steps < 1) return Scan{};
    const auto n = static_cast<std::size_t>(steps);
    return StepsOver(SeparatorStarts(w.row(), Sep, n), Sep.size(), w.size(), n);
}

// The padding is Pos copies of the separator's first character, which an
// empty separator does not have; the field loop counts to Pos + 1 in 16 bits.
PaddedRow Padded(const String& T_Row, Integer Pos, const String& Sep) {
    if (Sep.empty()) Raise(kInvalidCall);
    if (Pos == 32767) Raise(kOverflow);
    return PaddedRow(T_Row, static_cast<std::size_t>(Pos), Sep[0]);
}

String FieldText(const PaddedRow& w, const Scan& s, bool trimmed) {
    std::size_t from = s.fieldStart;
    std::size_t to = s.fieldStart + s.fieldLength;
    if (trimmed) {
        while (from < to && w.at(from) == u' ') ++from;
        while (to > from && w.at(to - 1) == u' ') --to;
    }
    return w.text(from, to - from);
}

// GetPipeStr(T_Row, k, Sep, trimmed) for k = 1, 2, 3 ... as the field loops
// ask for them: the separator starts are found once, and the steps of each k
// are counted among them instead of rescanning the record from its start.
class FieldWalk {
public:
    FieldWalk(const String& T_Row, const String& Sep) : row_(T_Row), sep_(Sep) {
        if (!Sep.empty()) starts_.emplace(T_Row, Sep, 32767);
    }
    // Field k, trimmed or not.
    String field(Integer k, bool trimmed) const {
        if (k <= 0) return String();
        const PaddedRow w = Padded(row_, k, sep_);
        return FieldText(w, StepsOver(*starts_, sep_.size(), w.size(), static_cast<std::size_t>(k)), trimmed);
    }
    // Whether field k, trimmed or not, is `text`. A field that stays the
    // same from one k to the next (the scan stuck) is not compared again.
    bool fieldIs(Integer k, bool trimmed, const String& text) {
        if (k <= 0) return text.empty();
        const PaddedRow w = Padded(row_, k, sep_);
        const Scan s = StepsOver(*starts_, sep_.size(), w.size(), static_cast<std::size_t>(k));
        Memo& memo = memos_[&text == memos_[0].text && trimmed == memos_[0].trimmed ? 0 : 1];
        if (memo.text == &text && memo.trimmed == trimmed && memo.scan.fieldStart == s.fieldStart &&
            memo.scan.fieldLength == s.fieldLength)
            return memo.equal;
        if (memos_[0].text == nullptr) return remember(memos_[0], w, s, trimmed, text);
        return remember(memo, w, s, trimmed, text);
    }

private:
    const String& row_;
    const String& sep_;
    std::optional<SeparatorStarts> starts_;  // none for an empty separator, which Padded refuses
    struct Memo {
        const String* text = nullptr;
        bool trimmed = false;
        Scan scan;
        bool equal = false;
    };
    static bool remember(Memo& memo, const PaddedRow& w, const Scan& s, bool trimmed, const String& text) {
        std::size_t from = s.fieldStart;
        std::size_t to = s.fieldStart + s.fieldLength;
        if (trimmed) {
            while (from < to && w.at(from) == u' ') ++from;
            while (to > from && w.at(to - 1) == u' ') --to;
        }
        bool equal = to - from == text.size();
        for (std::size_t i = 0; equal && i < text.size(); ++i) equal = w.at(from + i) == text[i];
        memo = Memo{&text, trimmed, s, equal};
        return equal;
    }
    Memo memos_[2];  // the last answer for each text compared
};

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

// Every field through GetPipeStr, one per row; the fields are walked once
// rather than each scanned from the record's start.
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
