// The symbology check behind the barcode operations, called directly with
// each kind of code: verification, completion of a "?" and failure.
#include <gtest/gtest.h>

#include <ostream>

#include "codes/symbology.hpp"

namespace kiv {
namespace {

struct Case {
    int type;
    const char16_t* code;
    const char16_t* after;
    bool valid;
    bool placeholder;
};

// How gtest shows a case: the type and the code, not the struct's bytes.
void PrintTo(const Case& c, std::ostream* os) {
    *os << "type " << c.type << " \"";
    for (const char16_t* p = c.code; *p != u'\0'; ++p) *os << static_cast<char>(*p);
    *os << "\"";
}

class CodesSymbology : public ::testing::TestWithParam<Case> {};

TEST_P(CodesSymbology, VerifiesOrCompletes) {
    const Case& c = GetParam();
    String code = c.code;
    const codes::SymbologyCheck result = codes::CheckSymbology(code, c.type);
    EXPECT_EQ(code, String(c.after));
    EXPECT_EQ(result.valid, c.valid);
    EXPECT_EQ(result.placeholder, c.placeholder);
}

INSTANTIATE_TEST_SUITE_P(
    Codes, CodesSymbology,
    ::testing::Values(
        Case{codes::kSymEan8, u"9638507", u"96385074", true, true},
        Case{codes::kSymEan8, u"96385074", u"96385074", true, false},
        Case{codes::kSymEan8, u"96385075", u"96385075", false, false},
        Case{codes::kSymEan8, u"963850", u"963850", false, false},
        // One place too many, though its last place is the check of the first seven.
        Case{codes::kSymEan8, u"96385074?", u"96385074?", false, false},
        Case{codes::kSymEan13, u"400638133393?", u"4006381333931", true, true},
        Case{codes::kSymEan13, u"400638133393", u"4006381333931", true, true},
        Case{codes::kSymEan13, u"40063813339A1", u"40063813339A1", false, false},
        Case{codes::kSymIsbn10, u"030640615", u"0306406152", true, true},
        Case{codes::kSymIsbn10, u"080442957x", u"080442957x", true, false},
        Case{codes::kSymIsbn10, u"080442957?", u"080442957X", true, true},
        Case{codes::kSymIsbn10, u"0306406153", u"0306406153", false, false},
        // A sum that is a multiple of 11 is completed with "1", which then fails.
        Case{codes::kSymIsbn10, u"000000000", u"0000000001", true, true},
        Case{codes::kSymIsbn10, u"0000000001", u"0000000001", false, false},
        Case{codes::kSymCode39, u"CODE39?", u"CODE39W", true, true},
        Case{codes::kSymCode39, u"code39w", u"code39w", true, false},
        Case{codes::kSymCode39, u"CODE39X", u"CODE39X", false, false},
        Case{codes::kSymCode39, u"AB#?", u"AB#?", false, false},
        Case{codes::kSymCodabar, u"A12:B", u"A12:B", true, false},
        Case{codes::kSymCodabar, u"t12:b", u"t12:b", true, false},
        Case{codes::kSymCodabar, u"a12:c", u"a12:c", false, false},
        Case{codes::kSymCodabar, u"a1234?", u"a1234-", true, true},
        Case{codes::kSymNumericMod10, u"124?", u"1249", true, true},
        Case{codes::kSymNumericMod10, u"1249", u"1249", true, false},
        // The sum 10 asks for 10, written as "0" but never equal to a digit.
        Case{codes::kSymNumericMod10, u"123?", u"1230", true, true},
        Case{codes::kSymNumericMod10, u"1230", u"1230", false, false},
        Case{3, u"anything?", u"anything?", true, true},
        Case{10, u"", u"", true, false},
        // "0" is worth 0 and summed; a sign outside the set refuses the code.
        Case{codes::kSymCodabar, u"a01?", u"a01a", true, true},
        Case{codes::kSymCodabar, u"a#1?", u"a#1?", false, false},
        // A sum that is a multiple of 10 is completed with "0".
        Case{codes::kSymEan8, u"0000000", u"00000000", true, true},
        // A letter in the first place or just before the check place.
        Case{codes::kSymEan8, u"A638507", u"A638507?", false, false},
        Case{codes::kSymEan8, u"963850A", u"963850A?", false, false},
        Case{codes::kSymIsbn10, u"03064061A", u"03064061A?", false, false},
        // The first digit weighs 10.
        Case{codes::kSymIsbn10, u"123456789", u"123456789X", true, true},
        // "d" (place 20) is worth 19, not reduced; the first place is summed.
        Case{codes::kSymCodabar, u"d12?", u"d12:", true, true},
        // Two characters: the check before the stop character.
        Case{codes::kSymCodabar, u"a0", u"a0", true, false},
        // Without a "?" no placeholder is reported.
        Case{3, u"x", u"x", true, false}),
    // "N_TypeT_CODE", the code's "?" as "Q" and other signs as "_".
    [](const ::testing::TestParamInfo<Case>& c) {
        std::string name = std::to_string(c.index) + "_Type" + std::to_string(c.param.type) + "_";
        for (const char16_t* p = c.param.code; *p != u'\0'; ++p) {
            const bool alnum = (*p >= u'0' && *p <= u'9') || (*p >= u'a' && *p <= u'z') || (*p >= u'A' && *p <= u'Z');
            name += alnum ? static_cast<char>(*p) : *p == u'?' ? 'Q' : '_';
        }
        return name;
    });

}  // namespace
}  // namespace kiv
