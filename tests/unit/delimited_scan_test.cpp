// The padded field scan checked against the scan written out literally:
// the record with its padding built, a search per step. Records are long
// enough and dense enough in separators to exercise the block-wise search.
#include <gtest/gtest.h>

#include <random>

#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"

namespace kiv {
namespace {

struct Literal {
    String field;
    std::size_t cursor = 1;  // 1-based, after the steps
};

Literal LiteralScan(const String& row, int pos, int steps, const String& sep) {
    const String w = row + String(static_cast<std::size_t>(pos), sep[0]);
    Literal r;
    for (int k = 1; k <= steps; ++k) {
        const std::size_t p = w.find(sep, r.cursor - 1);
        if (p == String::npos) continue;
        r.field = w.substr(r.cursor - 1, p - (r.cursor - 1));
        r.cursor = p + 2;
    }
    return r;
}

String RandomRecord(std::mt19937& rng, const String& alphabet, std::size_t length) {
    std::uniform_int_distribution<std::size_t> pick(0, alphabet.size() - 1);
    String row;
    for (std::size_t i = 0; i < length; ++i) row += alphabet[pick(rng)];
    return row;
}

// Pipe2Rows walks the fields once; it must answer as its steps read:
// PipeCount, then GetPipeStr of each field.
String RowsAsTheStepsRead(Cl_KIV& kiv, const String& row, const String& sep, bool trimmed) {
    String rows;
    for (Long k = 1, n = kiv.PipeCount(row, sep); k <= n; ++k)
        rows += (k > 1 ? u"/" : u"") + kiv.GetPipeStr(row, CheckedInteger(k), sep, trimmed);
    return rows;
}

void ExpectSameRows(Cl_KIV& kiv, const String& row, const String& sep, bool trimmed) {
    String expected, got;
    int expectedError = 0, gotError = 0;
    try { expected = RowsAsTheStepsRead(kiv, row, sep, trimmed); } catch (const RuntimeError& e) { expectedError = e.number(); }
    try { got = kiv.Pipe2Rows(row, sep, trimmed, u"/"); } catch (const RuntimeError& e) { gotError = e.number(); }
    ASSERT_EQ(gotError, expectedError) << "row of " << row.size();
    ASSERT_EQ(got, expected);
}

void ExpectSameAsLiteral(const String& sep, const String& alphabet) {
    Cl_KIV kiv;
    std::mt19937 rng(20260315);
    for (int trial = 0; trial < 300; ++trial) {
        const String row = RandomRecord(rng, alphabet, static_cast<std::size_t>(trial % 70));
        for (int pos = 1; pos <= 40; ++pos) {
            const auto p = static_cast<Integer>(pos);
            const Literal full = LiteralScan(row, pos, pos, sep);
            ASSERT_EQ(kiv.GetPipeStr(row, p, sep), full.field) << "pos " << pos << " trial " << trial;
            ASSERT_EQ(kiv.PipeEnd(row, p, sep), static_cast<Long>(full.cursor) - 1) << "pos " << pos;
            ASSERT_EQ(kiv.PipeBegin(row, p, sep), static_cast<Long>(LiteralScan(row, pos, pos - 1, sep).cursor))
                << "pos " << pos;
        }
        ExpectSameRows(kiv, row, sep, trial % 2 == 0);
    }
}

TEST(DelimitedScan, OneCharacterSeparatorMatchesTheLiteralScan) {
    ExpectSameAsLiteral(u"|", u"ab |||");
    ExpectSameAsLiteral(u"|", u"abcdefghij|");  // sparse: most blocks hold no separator
}

TEST(DelimitedScan, LongerSeparatorsMatchTheLiteralScan) {
    ExpectSameAsLiteral(u";;", u"a;;b");
    ExpectSameAsLiteral(u";:", u"a;:b");
    ExpectSameAsLiteral(u"ab", u"abba");
    ExpectSameAsLiteral(u";;;", u"a;;");  // runs of the padding character: counted, not stepped
}

TEST(DelimitedScan, BlankSeparatorTrimsOnlyTheField) {
    Cl_KIV kiv;
    // The padding is made of blanks here; a trimmed field past the end is empty.
    EXPECT_EQ(kiv.GetPipeStr(u"ab  cd", 3, u" ", true), u"cd");
    EXPECT_EQ(kiv.GetPipeStr(u"ab  cd", 4, u" ", true), u"");
}

TEST(DelimitedScan, FieldCountsOfLongRecords) {
    Cl_KIV kiv;
    String row;
    for (int k = 1; k <= 300; ++k) {
        row += u"f" + String(static_cast<std::size_t>(k % 13), u'x');
        if (k < 300) row += u'|';
    }
    EXPECT_EQ(kiv.PipeCount(row), 300);
    EXPECT_EQ(kiv.PipeCount(row + u"|"), 300);
    EXPECT_EQ(kiv.GetPipeStr(row, 300), u"f" + String(300 % 13, u'x'));
    EXPECT_EQ(kiv.PipeQuale(row, u"fxxxxx"), 5);  // fields 5, 18, 31, ... hold it: the first wins
    EXPECT_EQ(kiv.PipeDove(row, 301), Variant(Integer{0}));
}

}  // namespace
}  // namespace kiv
