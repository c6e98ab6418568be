#include <gtest/gtest.h>

#include "test_support.hpp"

namespace kiv {
namespace {

using kiv::testing::ErrorOf;

TEST(RuntimeCaseFolding, AccentedLettersFoldTogether) {
    EXPECT_EQ(FoldCase(u'A'), u'a');
    EXPECT_EQ(FoldCase(u'['), u'[');
    EXPECT_EQ(FoldCase(u'\u00C8'), u'\u00E8');  // È
    EXPECT_EQ(FoldCase(u'\u0178'), u'\u00FF');  // Ÿ
    EXPECT_EQ(FoldCase(u'\u00D7'), u'\u00D7');  // the multiplication sign is no letter
    EXPECT_TRUE(CaseBlindEqual(u"Perché È", u"PERCHÉ è"));
    EXPECT_FALSE(CaseBlindEqual(u"abc", u"abd"));
    EXPECT_FALSE(CaseBlindEqual(u"abc", u"ab"));
    EXPECT_EQ(CaseBlindCompare(u"abc", u"ABD"), -1);
    EXPECT_EQ(CaseBlindCompare(u"ÀB", u"àb"), 0);
    EXPECT_EQ(CaseBlindCompare(u"ab", u"AB "), -1);
    EXPECT_EQ(CaseBlindCompare(u"b", u"A"), 1);
}

TEST(RuntimeCaseFolding, FindIsOneBasedFromStart) {
    EXPECT_EQ(CaseBlindFind(u"Città di CITTÀ", u"città"), 1);
    EXPECT_EQ(CaseBlindFind(u"Città di CITTÀ", u"città", 2), 10);
    EXPECT_EQ(CaseBlindFind(u"abc", u"x"), 0);
    EXPECT_EQ(CaseBlindFind(u"abc", u"BCD"), 0);
    EXPECT_EQ(CaseBlindFind(u"abc", u"", 4), 4);
    EXPECT_EQ(CaseBlindFind(u"abc", u"", 5), 0);
    EXPECT_EQ(CaseBlindFind(u"abc", u"a", 5), 0);
    EXPECT_EQ(ErrorOf([] { CaseBlindFind(u"abc", u"a", 0); }), kInvalidCall);
}

}  // namespace
}  // namespace kiv
