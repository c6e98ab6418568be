// Operations made linear in their input checked against their steps written
// out literally (each replacement rebuilding the text, each field found by a
// scan from the record's start), on many small random inputs whose
// separators and search texts come from a small alphabet, so that matches,
// overlaps and near-misses are frequent. And the limits that keep hostile
// calls from exhausting memory.
#include <gtest/gtest.h>

#include <new>
#include <optional>
#include <utility>
#include <random>

#include "frame/cl_kiv.hpp"
#include "frame/convert.hpp"
#include "frame/dispatch.hpp"
#include "frame/errors.hpp"
#include "frame/strings.hpp"

namespace kiv {
namespace {

std::mt19937& Rng() {
    static std::mt19937 rng(20260315);
    return rng;
}

int Pick(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(Rng()); }

String RandomText(const String& alphabet, int minLength, int maxLength) {
    String s;
    for (int n = Pick(minLength, maxLength); n > 0; --n) s += alphabet[static_cast<std::size_t>(Pick(0, static_cast<int>(alphabet.size()) - 1))];
    return s;
}

// A result or the run-time error number, so that failures compare too.
template <class F> auto Outcome(F f) -> std::pair<decltype(f()), int> {
    try {
        return {f(), 0};
    } catch (const RuntimeError& e) {
        return {{}, e.number()};
    }
}

// --- The steps, literally.

String SostWordSteps(String W, const String& find, const String& repl, Integer startOccur, Integer maxOccur) {
    if (W.empty() || find.empty()) return W;
    const auto F = static_cast<Long>(find.size());
    const auto R = static_cast<Long>(repl.size());
    Long start = 1;
    for (Long skipped = 0; skipped < startOccur - 1; ++skipped) {
        const Long p = InStr(start, W, find);
        if (p == 0) break;
        start = p + F;
    }
    Long count = 0;
    for (Long p = InStr(start, W, find); p > 0; p = InStr(start, W, find)) {
        W = Left(W, p - 1) + repl + Mid(W, p + F);
        ++count;
        if (maxOccur >= 1 && count >= maxOccur) break;
        start = p + R;
    }
    return W;
}

String AddSpaceSteps(Cl_KIV& kiv, String T, Long times) {
    VariantArray Wd(0, 100);
    VariantArray Pos(0, 100);
    const Long n = kiv.ParseWord(Variant(T), Wd, Pos);
    if (n <= 1 || times <= 0) return T;
    Long k = 2;
    Long s = 0;
    for (Long i = 1; i <= times; ++i) {
        const Long M = ToLong(Pos.at({k})) + s + k - 2;
        T = Left(T, M - 1) + u" " + Mid(T, M);
        if (++k > n) {
            k = 2;
            ++s;
        }
    }
    return T;
}

String PutPipeStrSteps(const String& Row, Integer Pos, const String& NewStr, const String& Sep) {
    Long i = 1;
    for (Integer k = 1; k <= Pos - 1; ++k) {
        const Long p = InStr(i, Row, Sep);
        if (p > 0) i = p + 1;
    }
    const Long p = InStr(i, Row, Sep);
    if (p - i < 0) Raise(kInvalidCall);
    String result = Row;
    const std::size_t n = std::min(static_cast<std::size_t>(p - i), NewStr.size());
    result.replace(static_cast<std::size_t>(i - 1), n, NewStr, 0, n);
    return result;
}

// GetPipeStr by its steps: the record padded with Pos copies of the
// separator's first character, one search per step.
String GetPipeStrSteps(const String& row, Integer pos, const String& sep) {
    if (pos <= 0) return String();
    if (sep.empty()) Raise(kInvalidCall);
    if (pos == 32767) Raise(kOverflow);
    const String w = row + String(static_cast<std::size_t>(pos), sep[0]);
    String field;
    std::size_t cursor = 0;
    for (int k = 1; k <= pos; ++k) {
        const std::size_t p = w.find(sep, cursor);
        if (p == String::npos) continue;
        field = w.substr(cursor, p - cursor);
        cursor = p + 1;
    }
    return field;
}

String Sentinel(const String& sep) {
    String a = u"@", b = u"#";
    if (sep == u"@") a = u"\u00A7";
    if (sep == u"#" || a == b) b = u"\u00B0";
    String s;
    for (int k = 0; k < 5; ++k) s += a + b;
    return s;
}

String Terminated(const String& s, const String& sep) { return Right(s, 1) != sep ? s + sep : s; }

// The field loops over the public GetPipeStr, one call per field, as the
// operations were written before the walk.
Long PipeCountSteps(Cl_KIV& kiv, const String& s, const String& sep) {
    const String t = Terminated(s, sep) + Sentinel(sep) + sep;
    for (Integer k = 1;; k = CheckedInteger(k + 1))
        if (kiv.GetPipeStr(t, k, sep, false) == Sentinel(sep)) return k - 1;
}

Long PipeQualeSteps(Cl_KIV& kiv, const String& s, const String& find, const String& sep, bool trim) {
    const String t = Terminated(s, sep) + Sentinel(sep);
    for (Integer k = 1;; k = CheckedInteger(k + 1)) {
        const String field = kiv.GetPipeStr(t, k, sep, trim);
        if (field == find) return k;
        if (field == Sentinel(sep)) return 0;
    }
}

Long PipeInStrPosSteps(Cl_KIV& kiv, const String& s, const String& find, const String& sep, Long start) {
    const String t = start > 1 ? Mid(s, start) : s;
    if (find.empty() || t.empty()) return 0;
    const Long p = InStr(t, find);
    if (p == 0) return 0;
    const std::size_t at = t.rfind(sep, static_cast<std::size_t>(p - 1));
    const Long q = (at == String::npos ? 0 : static_cast<Long>(at + 1)) + 1;
    const Long e = InStr(q, t, sep);
    return kiv.PipeQuale(t, Mid(t, q, e - q), sep, false);
}

// --- The fast paths give what the steps give.

TEST(LinearPaths, SostWordAndApoDupMatchTheirSteps) {
    Cl_KIV kiv;
    for (int trial = 0; trial < 3000; ++trial) {
        const String W = RandomText(u"ab", 0, 14);
        const String find = RandomText(u"ab", 1, 3);
        const String repl = RandomText(u"ab", 0, 3);
        const auto start = static_cast<Integer>(Pick(-1, 4));
        const auto most = static_cast<Integer>(Pick(-1, 3));
        ASSERT_EQ(kiv.SostWord(Variant(W), find, repl, start, most), Variant(SostWordSteps(W, find, repl, start, most)))
            << ToUtf8(W) << " / " << ToUtf8(find) << " / " << ToUtf8(repl) << " " << start << " " << most;
    }
    EXPECT_EQ(kiv.Apo_Dup(Variant(String(u"''\u00A7a'"))), u"''''''a''");
}

TEST(LinearPaths, AddSpaceMatchesItsSteps) {
    Cl_KIV kiv;
    for (int trial = 0; trial < 3000; ++trial) {
        const String T = RandomText(u"ab  ", 0, 16);
        const Long times = Pick(-1, 40);
        ASSERT_EQ(kiv.AddSpace(Variant(T), Variant(times)), AddSpaceSteps(kiv, T, times)) << ToUtf8(T) << " " << times;
    }
}

TEST(LinearPaths, PutPipeStrMatchesItsSteps) {
    Cl_KIV kiv;
    for (int trial = 0; trial < 3000; ++trial) {
        const String row = RandomText(u"ab|", 0, 14);
        const String sep = RandomText(u"ab|", 0, 3);
        const auto pos = static_cast<Integer>(Pick(-2, 12));
        const String nw = RandomText(u"XY", 0, 4);
        ASSERT_EQ(Outcome([&] { return kiv.PutPipeStr(row, pos, nw, sep); }),
                  Outcome([&] { return PutPipeStrSteps(row, pos, nw, sep); }))
            << ToUtf8(row) << " / " << ToUtf8(sep) << " " << pos;
    }
}

TEST(LinearPaths, FieldsAtHighPositionsMatchTheLiteralScan) {
    Cl_KIV kiv;
    for (const String sep : {u"||", u"|a", u"a|a", u"aa", u"ab"}) {
        for (int trial = 0; trial < 20; ++trial) {
            const String row = RandomText(u"a|b", 0, 12);
            for (const Integer pos : {Integer{100}, Integer{1500}})
                ASSERT_EQ(kiv.GetPipeStr(row, pos, sep), GetPipeStrSteps(row, pos, sep)) << ToUtf8(row) << " " << pos;
        }
    }
    EXPECT_THROW(kiv.GetPipeStr(u"a", 32767, u"||"), RuntimeError);
}

TEST(LinearPaths, FieldLoopsMatchTheirSteps) {
    Cl_KIV kiv;
    for (int trial = 0; trial < 160; ++trial) {
        const String row = RandomText(u"ab|", 0, 10);
        const String sep = RandomText(u"ab|", 1, 3);
        const String find = RandomText(u"ab|", 0, 2);
        const bool trim = Pick(0, 1) == 1;
        ASSERT_EQ(Outcome([&] { return kiv.PipeCount(row, sep); }), Outcome([&] { return PipeCountSteps(kiv, row, sep); }))
            << ToUtf8(row) << " / " << ToUtf8(sep);
        ASSERT_EQ(Outcome([&] { return kiv.PipeQuale(row, find, sep, trim); }),
                  Outcome([&] { return PipeQualeSteps(kiv, row, find, sep, trim); }))
            << ToUtf8(row) << " / " << ToUtf8(find) << " / " << ToUtf8(sep);
        const Long start = Pick(0, 4);
        ASSERT_EQ(Outcome([&] { return kiv.PipeInStrPos(row, find, sep, start); }),
                  Outcome([&] { return PipeInStrPosSteps(kiv, row, find, sep, start); }))
            << ToUtf8(row) << " / " << ToUtf8(find) << " / " << ToUtf8(sep) << " " << start;
    }
}

TEST(ForwardSearch, FindsEveryOverlappingOccurrenceInOrder) {
    for (int trial = 0; trial < 2000; ++trial) {
        const String text = RandomText(u"ab", 0, 20);
        const String find = RandomText(u"ab", 1, 4);
        ForwardSearch search(text, find);
        std::size_t from = static_cast<std::size_t>(Pick(0, 3));
        for (;;) {
            const std::size_t expected = text.find(find, std::min(from, text.size() + 1));
            const std::size_t got = search.next(from);
            ASSERT_EQ(got, from > text.size() ? String::npos : expected) << ToUtf8(text) << " / " << ToUtf8(find) << " @" << from;
            if (got == String::npos) break;
            from = got + static_cast<std::size_t>(Pick(0, 3));  // sometimes the same start again
        }
    }
}

// A host can hand over a Date of any serial; operations that split it refuse
// one outside the runtime's range instead of converting it.
TEST(DateRange, OperationsRefuseAHostDateOutOfRange) {
    Cl_KIV kiv;
    Variant huge(Date{1e20});
    Arguments args;
    args.positional.push_back(&huge);
    const auto number = [](auto f) {
        try {
            f();
        } catch (const RuntimeError& e) {
            return e.number();
        }
        return 0;
    };
    EXPECT_EQ(number([&] { kiv.invoke("Dat2Str", InvokeKind::Method, args); }), kOverflow);
    EXPECT_EQ(number([&] { kiv.FormattaData(huge); }), kOverflow);
    EXPECT_EQ(number([&] { kiv.DOW(huge); }), kOverflow);
    EXPECT_EQ(number([&] { DateText(Date{2958466}); }), kOverflow);
    EXPECT_EQ(number([&] { WeekdayOf(Date{-1e300}); }), kOverflow);
    EXPECT_EQ(DateText(Date{2958465.5}), u"31/12/9999 12.00.00");
}

// --- Limits.

TEST(TextLimit, ExactlyTheLimitIsAllowed) {
    EXPECT_NO_THROW(RequireTextLength(kMaxTextLength));
    try {
        RequireTextLength(kMaxTextLength + 1);
        FAIL();
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), kOutOfStringSpace);
        EXPECT_EQ(e.description(), "Out of string space");
    }
}

struct Greedy : Dispatchable {
    String Grab() { throw std::bad_alloc(); }
};

TEST(TextLimit, MemoryRunningOutInACallIsOutOfMemory) {
    Greedy object;
    const Member grab = Method<&Greedy::Grab>("Grab", "");
    Arguments args;
    try {
        Invoke(object, grab, InvokeKind::Method, args);
        FAIL();
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), kOutOfMemory);
    }
}

}  // namespace
}  // namespace kiv
