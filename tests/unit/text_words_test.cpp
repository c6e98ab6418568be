#include <gtest/gtest.h>

#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"

namespace kiv {
namespace {

int errorOf(auto&& call) {
    try {
        call();
    } catch (const RuntimeError& e) {
        return e.number();
    }
    return 0;
}

String words(Long n, const String& word) {
    String out;
    for (Long i = 0; i < n; ++i) out += (i ? u" " : u"") + word;
    return out;
}

class TextWords : public ::testing::Test {
protected:
    Cl_KIV kiv;
};

TEST_F(TextWords, ParseWordWritesByWordNumberWithTrimmedPositions) {
    VariantArray wd(0, 5), pos(0, 5);
    wd.at({0}) = u"keep";
    EXPECT_EQ(kiv.ParseWord(Variant(u"  uno  due "), wd, pos), 3);
    EXPECT_EQ(wd.at({0}), Variant(u"keep"));
    EXPECT_EQ(wd.at({1}), Variant(u"uno"));
    EXPECT_EQ(wd.at({2}), Variant(u""));  // two blanks: an empty word between
    EXPECT_EQ(wd.at({3}), Variant(u"due"));
    EXPECT_EQ(pos.at({1}), Variant(Long{1}));
    EXPECT_EQ(pos.at({2}), Variant(Long{5}));
    EXPECT_EQ(pos.at({3}), Variant(Long{6}));
    EXPECT_TRUE(wd.at({4}).isEmpty());
}

TEST_F(TextWords, ParseWordLeavesArraysAloneForBlankTextAndFailsPastTheirEnd) {
    VariantArray wd(1, 2), pos(1, 2);
    wd.at({1}) = u"old";
    EXPECT_EQ(kiv.ParseWord(Variant(u"   "), wd, pos), 0);
    EXPECT_EQ(wd.at({1}), Variant(u"old"));
    // The words that fit are written before the third one fails.
    EXPECT_EQ(errorOf([&] { kiv.ParseWord(Variant(u"a b c"), wd, pos); }), kSubscriptOutOfRange);
    EXPECT_EQ(wd.at({2}), Variant(u"b"));
    VariantArray fromTwo(2, 4), pos2(2, 4);
    EXPECT_EQ(errorOf([&] { kiv.ParseWord(Variant(u"a b"), fromTwo, pos2); }), kSubscriptOutOfRange);
}

TEST_F(TextWords, AddSpaceFillsGapsFromTheLeftInPasses) {
    EXPECT_EQ(kiv.AddSpace(u"a b c", Long{1}), u"a  b c");
    EXPECT_EQ(kiv.AddSpace(u"a b c", Long{3}), u"a   b  c");
    EXPECT_EQ(kiv.AddSpace(u"abc", Long{5}), u"abc");
    EXPECT_EQ(kiv.AddSpace(u"a b", Long{0}), u"a b");
    EXPECT_EQ(kiv.AddSpace(u"a b", Long{-2}), u"a b");
}

TEST_F(TextWords, AddSpaceDriftsIntoWordsFromTheSecondPass) {
    // Word k moves by k - 1 per pass but only s is added back: in the second
    // pass the blank for the fifth word lands inside the fourth.
    EXPECT_EQ(kiv.AddSpace(u"aa bb cc dd ee", Long{8}), u"aa   bb   cc   d d  ee");
    EXPECT_EQ(kiv.AddSpace(u"aa bb cc dd ee", Long{7}), u"aa   bb   cc   dd  ee");
    // Positions come from the trimmed text: leading blanks shift the blank left.
    EXPECT_EQ(kiv.AddSpace(u"  a b", Long{1}), u"   a b");
}

TEST_F(TextWords, AddSpaceHasRoomForOneHundredWords) {
    const String hundred = words(100, u"x");
    EXPECT_EQ(kiv.AddSpace(hundred, Long{1}).size(), hundred.size() + 1);
    EXPECT_EQ(errorOf([&] { kiv.AddSpace(words(101, u"x"), Long{1}); }), kSubscriptOutOfRange);
}

TEST_F(TextWords, GiustifFillsTheWidthFromTheMiddle) {
    EXPECT_EQ(kiv.Giustif(u"uno due tre", Long{15}), u"uno   due   tre");
    // The odd blank goes to the right half, whose leading blank shifts its
    // insertions to the left; the width is floored.
    EXPECT_EQ(kiv.Giustif(u"a b c d", Long{10}), u"a  b c   d");
    EXPECT_EQ(kiv.Giustif(u"a b c d", Double{10.9}), u"a  b c   d");
    // In the left half the gap nearest the middle is widened first.
    EXPECT_EQ(kiv.Giustif(u"a b c d e f", Long{13}), u"a b  c d  e f");
    EXPECT_EQ(kiv.Giustif(u"  troppo lungo  ", Long{5}), u"troppo lungo");
}

TEST_F(TextWords, GiustifLeavesTheLastLineOfAParagraphLeftAligned) {
    EXPECT_EQ(kiv.Giustif(u"Fine.", Long{10}), u"Fine.     ");
    EXPECT_EQ(kiv.Giustif(u"Fine.", Long{10}, true), u"Fine.");
    // Split right behind the only blank: neither half has a gap to widen.
    EXPECT_EQ(kiv.Giustif(u"a b.", Long{6}, true), u"a b.");
    EXPECT_EQ(errorOf([&] { kiv.Giustif(Variant::null(), Long{10}); }), kInvalidUseOfNull);
}

class TextSplitRows : public TextWords {
protected:
    StringArray rows{0, 4};
    std::vector<String> got() const {
        std::vector<String> out;
        for (Long k = 1; k <= 4; ++k) out.push_back(*rows.at({k}).as<String>());
        return out;
    }
};

using Rows = std::vector<String>;

TEST_F(TextSplitRows, CutsAtTheWidthAndTrimsTheRest) {
    kiv.SplitRows(u"abcdef ghij", rows, Integer{5}, Integer{4});
    EXPECT_EQ(got(), (Rows{u"abcde", u"f ghi", u"j", u""}));
    // A negative width counts as its size.
    kiv.SplitRows(u"abcdef ghij", rows, Integer{-5}, Integer{4});
    EXPECT_EQ(got(), (Rows{u"abcde", u"f ghi", u"j", u""}));
}

TEST_F(TextSplitRows, ConserveWordMovesTheCutWordToTheNextRow) {
    kiv.SplitRows(u"uno due tre quattro", rows, Integer{9}, Integer{4}, true);
    EXPECT_EQ(got(), (Rows{u"uno due", u"tre", u"quattro", u""}));
    // A cut on a blank, or a row without any blank, is left as it is.
    kiv.SplitRows(u"uno due tre", rows, Integer{7}, Integer{4}, true);
    EXPECT_EQ(got(), (Rows{u"uno due", u"tre", u"", u""}));
    kiv.SplitRows(u"abcdefgh ij", rows, Integer{4}, Integer{4}, true);
    EXPECT_EQ(got(), (Rows{u"abcd", u"efgh", u"ij", u""}));
}

TEST_F(TextSplitRows, CarriageReturnsForceBreaksAndLineFeedsVanish) {
    kiv.SplitRows(u"ab\r\ncd ef\r\n\r\ngh", rows, Integer{10}, Integer{4});
    EXPECT_EQ(got(), (Rows{u"ab", u"cd ef", u"", u"gh"}));
    // A carriage return beyond the width waits for its own row.
    kiv.SplitRows(u"abcdefg\rh", rows, Integer{3}, Integer{4});
    EXPECT_EQ(got(), (Rows{u"abc", u"def", u"g", u"h"}));
}

TEST_F(TextSplitRows, ClearsItsRoomAndDropsWhatDoesNotFit) {
    rows.set({0}, Variant(u"zero"));
    rows.set({4}, Variant(u"old"));
    kiv.SplitRows(u"aaa bbb ccc ddd", rows, Integer{3}, Integer{2});
    EXPECT_EQ(got(), (Rows{u"aaa", u"bbb", u"", u"old"}));
    kiv.SplitRows(u"\n\n", rows, Integer{3}, Integer{4});
    EXPECT_EQ(got(), (Rows{u"", u"", u"", u""}));
    EXPECT_EQ(rows.at({0}), Variant(u"zero"));
    // An empty text touches nothing at all.
    rows.set({1}, Variant(u"x"));
    kiv.SplitRows(u"", rows, Integer{3}, Integer{9});
    EXPECT_EQ(got()[0], u"x");
}

TEST_F(TextSplitRows, RoomLargerThanTheArrayFailsAfterClearingWhatExists) {
    rows.set({4}, Variant(u"old"));
    EXPECT_EQ(errorOf([&] { kiv.SplitRows(u"abc", rows, Integer{3}, Integer{5}); }), kSubscriptOutOfRange);
    EXPECT_EQ(got()[3], u"");
}

}  // namespace
}  // namespace kiv
