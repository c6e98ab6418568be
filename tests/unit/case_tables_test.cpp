#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "frame/case_tables.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {
namespace {

// Where Debian's unicode-data package puts Unicode's own files.
const std::string kUnicodeDir = "/usr/share/unicode/";

// The ';'-separated fields of each data line, comments dropped.
std::vector<std::vector<std::string>> ReadFields(const std::string& path) {
    std::vector<std::vector<std::string>> lines;
    std::ifstream in(path);
    std::string line;
    while (std::getline(in, line)) {
        line = line.substr(0, line.find('#'));
        if (line.find(';') == std::string::npos) continue;
        std::vector<std::string> fields;
        std::istringstream parts(line);
        std::string field;
        while (std::getline(parts, field, ';')) {
            const auto b = field.find_first_not_of(' ');
            const auto e = field.find_last_not_of(' ');
            fields.push_back(b == std::string::npos ? "" : field.substr(b, e - b + 1));
        }
        lines.push_back(fields);
    }
    return lines;
}

unsigned long Hex(const std::string& s) { return std::stoul(s, nullptr, 16); }

// Every code unit against the data files the table is generated from, read
// here independently of the generator.
TEST(CaseTables, EveryCodeUnitMatchesUnicodeData) {
    if (!std::ifstream(kUnicodeDir + "CaseFolding.txt") ||
        !std::ifstream(kUnicodeDir + "UnicodeData.txt"))
        GTEST_SKIP() << "Unicode data files not installed (package unicode-data)";
    std::vector<unsigned long> fold(0x10000), upper(0x10000), lower(0x10000);
    for (unsigned long c = 0; c < 0x10000; ++c) fold[c] = upper[c] = lower[c] = c;
    for (const auto& f : ReadFields(kUnicodeDir + "CaseFolding.txt")) {
        const unsigned long c = Hex(f.at(0));
        if (c < 0x10000 && (f.at(1) == "C" || f.at(1) == "S")) fold[c] = Hex(f.at(2));
    }
    for (const auto& f : ReadFields(kUnicodeDir + "UnicodeData.txt")) {
        const unsigned long c = Hex(f.at(0));
        if (c >= 0x10000) continue;
        if (!f.at(12).empty()) upper[c] = Hex(f.at(12));
        if (!f.at(13).empty()) lower[c] = Hex(f.at(13));
    }
    int mismatches = 0;
    for (unsigned long c = 0; c < 0x10000; ++c) {
        const auto u = static_cast<char16_t>(c);
        if (SimpleFold(u) != fold[c] || SimpleUpper(u) != upper[c] || SimpleLower(u) != lower[c]) {
            if (++mismatches <= 10) ADD_FAILURE() << "U+" << std::hex << c;
        }
    }
    EXPECT_EQ(mismatches, 0);
}

// Cases where folding, upper and lower case part ways, and the block edges.
TEST(CaseTables, MappingsThatDisagree) {
    EXPECT_EQ(SimpleFold(u'\u0130'), u'\u0130');  // İ has only a full folding
    EXPECT_EQ(SimpleLower(u'\u0130'), u'i');
    EXPECT_EQ(SimpleUpper(u'\u0131'), u'I');       // dotless ı
    EXPECT_EQ(SimpleFold(u'\u0131'), u'\u0131');
    EXPECT_EQ(SimpleFold(u'\u1E9E'), u'\u00DF');   // capital ẞ folds to ß
    EXPECT_EQ(SimpleUpper(u'\u00DF'), u'\u00DF');  // ß has no one-unit capital
    EXPECT_EQ(SimpleFold(u'\u03C2'), u'\u03C3');   // final ς
    EXPECT_EQ(SimpleUpper(u'\u00B5'), u'\u039C');  // micro sign
    EXPECT_EQ(SimpleFold(u'\u00B5'), u'\u03BC');
    EXPECT_EQ(SimpleUpper(u'\u01C5'), u'\u01C4');  // titlecase Dž
    EXPECT_EQ(SimpleLower(u'\u01C5'), u'\u01C6');
    EXPECT_EQ(SimpleFold(u'\u212A'), u'k');        // Kelvin sign
    EXPECT_EQ(SimpleLower(u'\uFF21'), u'\uFF41');  // fullwidth Ａ, last cased block
    EXPECT_EQ(SimpleUpper(u'\uFF5A'), u'\uFF3A');
    // Surrogates (not valid in a literal), the last code unit and NUL.
    for (unsigned c : {0xD800u, 0xDBFFu, 0xDC00u, 0xDFFFu, 0xFFFFu, 0u}) {
        const auto s = static_cast<char16_t>(c);
        EXPECT_EQ(SimpleFold(s), s);
        EXPECT_EQ(SimpleUpper(s), s);
        EXPECT_EQ(SimpleLower(s), s);
    }
}

// The ASCII shortcut of FoldCase agrees with the table.
TEST(CaseTables, FoldCaseAgreesWithTableOnEveryCodeUnit) {
    for (unsigned c = 0; c < 0x10000; ++c) {
        const auto u = static_cast<char16_t>(c);
        ASSERT_EQ(FoldCase(u), SimpleFold(u)) << "U+" << std::hex << c;
    }
    EXPECT_EQ(UCase(u"perché ß ǅ"), u"PERCHÉ ß Ǆ");
    EXPECT_EQ(LCase(u"PERCHÉ İ ǅ"), u"perché i ǆ");
}

}  // namespace
}  // namespace kiv
