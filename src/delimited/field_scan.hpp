// The scan of delimited records shared by the field reads and the row
// renderings: the record padded with copies of the separator's first
// character (never built), the separator's starts found once, and a walk
// that reads field after field without rescanning from the record's start.
#pragma once

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

#include "frame/errors.hpp"
#include "frame/strings.hpp"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace kiv::delimited {

inline constexpr std::size_t kNone = std::u16string_view::npos;

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
inline std::size_t NthOccurrence(std::u16string_view text, char16_t c, std::size_t k, std::size_t& seen) {
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
inline Scan ScanOneCharacter(const PaddedRow& w, char16_t c, long steps) {
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
inline Scan StepsOver(const SeparatorStarts& starts, std::size_t sepLength, std::size_t paddedSize, std::size_t steps) {
    const std::size_t fit = paddedSize >= sepLength ? starts.countUpTo(paddedSize - sepLength) : 0;
    const std::size_t found = std::min(steps, fit);
    if (found == 0) return Scan{};
    const std::size_t start = found >= 2 ? starts.at(found - 2) + 1 : 0;
    return Scan{start, starts.at(found - 1) - start, starts.at(found - 1) + 1};
}

inline Scan ScanFields(const PaddedRow& w, const String& Sep, long steps) {
    if (Sep.size() == 1) return ScanOneCharacter(w, Sep[0], steps);
    if (steps < 1) return Scan{};
    const auto n = static_cast<std::size_t>(steps);
    return StepsOver(SeparatorStarts(w.row(), Sep, n), Sep.size(), w.size(), n);
}

// The padding is Pos copies of the separator's first character, which an
// empty separator does not have; the field loop counts to Pos + 1 in 16 bits.
inline PaddedRow Padded(const String& T_Row, Integer Pos, const String& Sep) {
    if (Sep.empty()) Raise(kInvalidCall);
    if (Pos == 32767) Raise(kOverflow);
    return PaddedRow(T_Row, static_cast<std::size_t>(Pos), Sep[0]);
}

inline String FieldText(const PaddedRow& w, const Scan& s, bool trimmed) {
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

}  // namespace kiv::delimited
