#include <gtest/gtest.h>

#include <vector>

#include "codes/cf_tables.hpp"
#include "frame/strings.hpp"
#include "test_support.hpp"

namespace kiv {
namespace {

using kiv::testing::ErrorOf;

class CodesFiscal : public ::testing::Test {
protected:
    Cl_KIV kiv;
    // A personal code completed with the letter the component computes, so
    // that a case fails for its own reason and not for its check letter.
    String withCheck(const String& body) { return body + kiv.Get_CheckCF(body); }
};

// The lists split by hand: field k is the k-th run between commas.
std::vector<Long> SplitValues(const String& list) {
    std::vector<Long> values{0};  // index 0 selects no field
    Long current = 0;
    for (char16_t c : list + u",") {
        if (c == u',') {
            values.push_back(current);
            current = 0;
        } else {
            current = current * 10 + (c - u'0');
        }
    }
    return values;
}

TEST_F(CodesFiscal, TablesHoldTheListedValues) {
    const codes::CfValueTables& tables = codes::CfTables(kiv);
    const std::vector<Long> odd = SplitValues(codes::kCfOddValues);
    const std::vector<Long> even = SplitValues(codes::kCfEvenValues);
    ASSERT_EQ(odd.size(), 37u);
    ASSERT_EQ(even.size(), 37u);
    for (std::size_t index = 0; index <= 36; ++index) {
        EXPECT_EQ(tables.odd[index], odd[index]) << "odd " << index;
        EXPECT_EQ(tables.even[index], even[index]) << "even " << index;
    }
}

TEST_F(CodesFiscal, AlphabetLookupAgreesWithCaseBlindSearch) {
    for (char32_t c = 0; c <= 0xFFFF; ++c) {
        const char16_t unit = static_cast<char16_t>(c);
        ASSERT_EQ(codes::CfAlphabetIndex(unit), CaseBlindFind(codes::kCfAlphabet, String(1, unit))) << int(c);
    }
}

TEST_F(CodesFiscal, MissingPlacesCountAsZeroAndStrangersAsNothing) {
    EXPECT_EQ(kiv.Get_CheckCF(u"BNCMRA85E55F20"), kiv.Get_CheckCF(u"BNCMRA85E55F200"));
    EXPECT_EQ(kiv.Get_CheckCF(u"BNC"), kiv.Get_CheckCF(u"BNC000000000000"));
    // At an odd place "#" is worth what "B" is worth there: nothing.
    EXPECT_EQ(kiv.Get_CheckCF(u"BNCMRA85E55F20#"), kiv.Get_CheckCF(u"BNCMRA85E55F20B"));
    EXPECT_NE(kiv.Get_CheckCF(u"BNCMRA85E55F20#"), kiv.Get_CheckCF(u"BNCMRA85E55F20"));
}

TEST_F(CodesFiscal, NumericTextsTakeTheVatDigitOrNothing) {
    EXPECT_EQ(kiv.Get_CheckCF(u""), u"");
    EXPECT_EQ(kiv.Get_CheckCF(u" - . "), u"");
    EXPECT_EQ(kiv.Get_CheckCF(u"0123456789"), u"");
    EXPECT_EQ(kiv.Get_CheckCF(u"012.345.678-90"), kiv.Get_CheckPI(u"0123456789"));
    EXPECT_EQ(kiv.Get_CheckCF(u"1234567890123456"), u"");
}

TEST_F(CodesFiscal, VatCheckDigitAndItsConversionFailure) {
    // 1+3+5+7+9 = 25; 2,4,6,8,0 doubled and reduced give 4+8+3+7+0 = 22.
    EXPECT_EQ(kiv.Get_CheckPI(u"1234567890"), u"3");
    EXPECT_EQ(kiv.Get_CheckPI(u"12345678903999"), u"3");
    EXPECT_EQ(kiv.Get_CheckPI(u"12-345 678,90"), u"3");
    EXPECT_EQ(kiv.Get_CheckPI(u"123456789"), u"");
    EXPECT_EQ(ErrorOf([&] { kiv.Is_PITest(u"+1234567890"); }), kTypeMismatch);
    EXPECT_EQ(kiv.Is_PITest(u"+12345678"), PI_Short);
}

TEST_F(CodesFiscal, ShapeTestIgnoresTheCheckLetterButNotThePlaces) {
    EXPECT_TRUE(kiv.Is_CodFisc(u"BNCMRA85E55F205A"));
    EXPECT_TRUE(kiv.Is_CodFisc(u" bnc.mra-85e55f205a "));
    EXPECT_FALSE(kiv.Is_CodFisc(u"BNCMRA85E55F2O5A"));  // letter O among the place digits
    EXPECT_FALSE(kiv.Is_CodFisc(u"BNCMR185E55F205A"));
    EXPECT_FALSE(kiv.Is_CodFisc(u"BNCMRA85E55F205"));
    EXPECT_TRUE(kiv.Is_CodFisc(u"BNCMRA85E55"));
    EXPECT_FALSE(kiv.Is_CodFisc(u"1234567890123456"));
}

TEST_F(CodesFiscal, StrictTestChecksMonthDayAndLetter) {
    EXPECT_TRUE(kiv.Is_CFAlfa(withCheck(u"BNCMRA85E55F205")));
    EXPECT_TRUE(kiv.Is_CFAlfa(withCheck(u"BNCMRA85e01F205")));
    EXPECT_TRUE(kiv.Is_CFAlfa(withCheck(u"BNCMRA85B31F205")));  // the month is not consulted
    EXPECT_TRUE(kiv.Is_CFAlfa(withCheck(u"BNCMRA85E41F205")));
    EXPECT_TRUE(kiv.Is_CFAlfa(withCheck(u"BNCMRA85E71F205")));
    for (const char16_t* day : {u"00", u"32", u"40", u"72"}) {
        EXPECT_FALSE(kiv.Is_CFAlfa(withCheck(u"BNCMRA85E" + String(day) + u"F205"))) << ToUtf8(day);
    }
    EXPECT_FALSE(kiv.Is_CFAlfa(withCheck(u"BNCMRA85F15F205")));  // F is no month
    EXPECT_FALSE(kiv.Is_CFAlfa(withCheck(u"BNCMR185E15F205")));
    EXPECT_FALSE(kiv.Is_CFAlfa(withCheck(u"BNCMRA85E15F20L")));  // a homocode
    EXPECT_FALSE(kiv.Is_CFAlfa(u"BNCMRA85E55F205J"));
    EXPECT_FALSE(kiv.Is_CFAlfa(u" " + withCheck(u"BNCMRA85E55F205")));
}

}  // namespace
}  // namespace kiv
