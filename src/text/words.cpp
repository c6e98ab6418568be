// Words separated by blanks: splitting, spreading blanks, justifying a line
// and cutting a long text into printed rows.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "frame/cl_kiv.hpp"
#include "frame/convert.hpp"
#include "frame/errors.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {

// Words go into the caller's arrays by word number, whatever their lower
// bound; the arrays are never resized, so a missing element is an error.
Long Cl_KIV::ParseWord(const Variant& S0, Ref<VariantArray> Wd, Ref<VariantArray> Pos) {
    const String T = Trim(ToText(S0));
    if (T.empty()) return 0;

    Long n = 0;
    Long start = 1;
    Long p = InStr(start, T, u" ");
    while (p > 0) {
        n = CheckedLong(static_cast<std::int64_t>(n) + 1);
        Wd->at({n}) = Mid(T, start, p - start);
        Pos->at({n}) = start;
        start = p + 1;
        p = InStr(start, T, u" ");
    }
    n = CheckedLong(static_cast<std::int64_t>(n) + 1);
    Wd->at({n}) = Mid(T, start);
    Pos->at({n}) = start;
    return n;
}

// Later passes add only one position per earlier pass to the word's start,
// though each pass moved word k by k - 1; with five or more words a blank can
// so land inside a word. Hosts' printed layouts depend on it.
String Cl_KIV::AddSpace(const Variant& S0, const Variant& Spac) {
    String T = ToText(S0);
    // Null is not "<= 0"; it fails only as the count of the loop below.
    if (!Spac.isNull() && ToDoubleLocale(Spac) <= 0) return T;

    VariantArray Wd(0, 100);
    VariantArray Pos(0, 100);
    const Long n = ParseWord(T, Wd, Pos);
    if (n <= 1) return T;

    const Long times = ToLong(Spac);
    RequireTextLength(std::uint64_t{T.size()} + static_cast<std::uint64_t>(std::max<Long>(times, 0)));

    // Each step puts one blank before the character now at position M. All
    // blanks are alike, so the result is known from how many blanks end up
    // before each character of T (and after the last): counted in a Fenwick
    // tree over "the character and the blanks before it", where finding the
    // character now at M is a descent instead of rebuilding T every step.
    const std::size_t L = T.size();
    std::vector<std::int64_t> tree(L + 1, 0);  // weights 1 + blanks before
    for (std::size_t j = 1; j <= L; ++j) {
        tree[j] += 1;
        if (const std::size_t up = j + (j & (~j + 1)); up <= L) tree[up] += tree[j];
    }
    std::size_t top = 1;
    while (top * 2 <= L) top *= 2;
    std::vector<Long> before(L + 2, 0);  // blanks before character j; [L + 1]: after the last
    Long k = 2;
    Long s = 0;
    for (Long i = 1; i <= times; ++i) {
        const Long M = CheckedLong(static_cast<std::int64_t>(ToLong(Pos.at({k}))) + s + k - 2);
        // The first character j whose position (its weight summed from 1) reaches M.
        std::size_t j = 0;
        std::int64_t below = 0;
        for (std::size_t step = L == 0 ? 0 : top; step > 0; step /= 2)
            if (j + step <= L && below + tree[j + step] < M) {
                j += step;
                below += tree[j];
            }
        ++j;  // L + 1 when M is past the end: the blank goes last
        ++before[j];
        for (std::size_t u = j; u <= L; u += u & (~u + 1)) tree[u] += 1;
        ++k;
        if (k > n) {
            k = 2;
            ++s;
        }
    }
    String out;
    out.reserve(L + static_cast<std::size_t>(std::max<Long>(times, 0)));
    for (std::size_t j = 1; j <= L + 1; ++j) {
        out.append(static_cast<std::size_t>(before[j]), u' ');
        if (j <= L) out += T[j - 1];
    }
    return out;
}

String Cl_KIV::AddStop(const Variant& S0) {
    String T = Trim(ToText(S0));
    if (Right(T, 1) != u".") T += u".";
    return T;
}

// The blanks go from the middle outwards: the left half is reversed so that
// AddSpace, which fills from the first gap, fills its gaps nearest the middle.
String Cl_KIV::Giustif(const Variant& S0, const Variant& Wide0, Boolean AlsoStop) {
    const String T = Trim(ToText(S0));
    const Integer W = ToInteger(IntFloor(Wide0));
    const Integer L = Len16(T);
    if (L >= W) return T;

    if (Right(T, 1) == u"." && !AlsoStop) {
        Variant last = T;  // the last line of a paragraph stays left-aligned
        return MettiASin(last, W, u"");
    }

    const Integer gap = CheckedInteger(W - L);
    const Integer half = static_cast<Integer>(L / 2);
    const String A = Left(T, half);
    const String B = Mid(T, half + 1);
    const Integer g1 = static_cast<Integer>(gap / 2);
    const Integer g2 = static_cast<Integer>(gap - g1);

    const String left = InvStr(AddSpace(InvStr(A), g1));
    const String right = AddSpace(B, g2);
    return left + right;
}

void Cl_KIV::SplitRows(const String& S_Long, Ref<StringArray> S_Rows, Integer R_Long, Integer N_Rows,
                       Boolean ConserveWord) {
    Long w = R_Long;
    if (R_Long < 0) w = CheckedInteger(-static_cast<std::int64_t>(R_Long));  // -32768 overflows

    if (S_Long.empty()) return;
    for (Long k = 1; k <= N_Rows; ++k) S_Rows->set({k}, Variant(String()));

    String T = SostChar(S_Long, String(1, u'\n'), u"");
    if (T.empty()) return;

    for (Long row = 1; row <= N_Rows && !T.empty(); ++row) {
        String line;
        String rest;
        const Long cr = InStr(T, String(1, u'\r'));
        // A carriage return right behind a full row still ends that row, so
        // it never leaves an empty row behind.
        if (cr > 0 && cr <= w + 1) {
            line = Left(T, cr - 1);
            rest = Mid(T, cr + 1);
        } else {
            line = Left(T, w);
            rest = Mid(T, w + 1);
            const bool cutsWord = !rest.empty() && Right(line, 1) != u" " && Left(rest, 1) != u" ";
            if (ConserveWord && cutsWord) {
                const Long blank = InStrRev(line, u" ");
                if (blank > 0) {
                    rest = Mid(line, blank + 1) + rest;
                    line = Trim(Left(line, blank - 1));
                }
            }
        }
        S_Rows->set({row}, Variant(line));
        T = Trim(rest);
    }
}

}  // namespace kiv
