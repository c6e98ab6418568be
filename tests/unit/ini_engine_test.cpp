// The INI engine's rules, one row per rule: how a file reads, and what a
// write leaves in it, byte for byte.
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "frame/code_page.hpp"
#include "frame/strings.hpp"
#include "system/ini/ini_engine.hpp"

namespace kiv::ini {
namespace {

const NameMatch kSame([](std::string_view bytes) { return FromCp1252(bytes); });

struct ReadRow {
    const char* rule;
    std::string file, section, key;
    std::optional<std::string> value;
};

TEST(IniEngine, ReadRules) {
    const ReadRow rows[] = {
        {"lines end at CR", "[S]\rA=1\rK=v\rB=2", "S", "K", "v"},
        {"lines end at LF", "[S]\nK=v\n", "S", "K", "v"},
        {"lines end at CR LF", "[S]\r\nK=v\r\n", "S", "K", "v"},
        {"LF CR is two line ends", "[S]\n\rK=v", "S", "K", "v"},
        {"lines are trimmed of every blank", " \t[S] \x0B\r\n\x0C K = v \t\r\n", "S", "K", "v"},
        {"a header runs to the last ]", "[a]b]\r\nK=v", "a]b", "K", "v"},
        {"so its first ] does not end it", "[a]b]\r\nK=v", "a", "K", std::nullopt},
        {"a header without ] runs to the line end", "[S\r\nK=v", "S", "K", "v"},
        {"a header's name is trimmed", "[ \tS  ]\r\nK=v", "S", "K", "v"},
        {"a key splits at the first =", "[S]\r\nK=a=b", "S", "K", "a=b"},
        {"; starts a comment at the start of a line", "[S]\r\n ;K=1\r\nK=2", "S", "K", "2"},
        {"; later in a line is value", "[S]\r\nK=v ; x", "S", "K", "v ; x"},
        {"names are case-blind", "[sEcT]\r\nkEy=v", "SECT", "Key", "v"},
        {"also beyond ASCII", "[Citt\xE0]\r\nPerch\xE9=v", "CITT\xC0", "PERCH\xC9", "v"},
        {"the first matching section wins", "[S]\r\nA=1\r\n[s]\r\nK=2", "S", "K", std::nullopt},
        {"the first matching key wins", "[S]\r\nK=1\r\nk=2", "S", "K", "1"},
        {"a double-quote pair goes", "[S]\r\nK=\"a b\"", "S", "K", "a b"},
        {"a single-quote pair goes", "[S]\r\nK='a b'", "S", "K", "a b"},
        {"mixed quotes stay", "[S]\r\nK=\"a'", "S", "K", "\"a'"},
        {"a lone quote stays", "[S]\r\nK=\"", "S", "K", "\""},
        {"an empty pair is empty", "[S]\r\nK=\"\"", "S", "K", ""},
        {"an empty value is empty", "[S]\r\nK=", "S", "K", ""},
        {"lines before the first section belong to none", "K=v\r\n[S]\r\n", "S", "K", std::nullopt},
        {"not even to the empty name", "K=v\r\n[S]\r\n", "", "K", std::nullopt},
        {"the empty name is []", "[]\r\nK=v", "", "K", "v"},
        {"the caller's names are trimmed", "[S]\r\nK=v", " S\t", "\x0BK ", "v"},
        {"a line without = is no key", "[S]\r\nK\r\n", "S", "K", std::nullopt},
        {"a section ends at the next header", "[S]\r\n[T]\r\nK=v", "S", "K", std::nullopt},
        {"a missing section", "[T]\r\nK=v", "S", "K", std::nullopt},
    };
    for (const ReadRow& row : rows) {
        const auto got = Lookup(row.file, row.section, row.key, kSame);
        EXPECT_EQ(got ? std::optional<std::string>(*got) : std::nullopt, row.value) << row.rule;
    }
}

struct WriteRow {
    const char* rule;
    std::string file, section;
    std::optional<std::string> key, value;
    Edit::Outcome outcome;
    std::string after;
};

TEST(IniEngine, WriteRules) {
    const auto None = std::nullopt;
    const WriteRow rows[] = {
        {"a new file gets the section", "", "S", "K", "v", Edit::Changed, "[S]\r\nK=v\r\n"},
        {"a new section at the end, no blank line", "[T]\r\nA=1\r\n\r\n", "S", "K", "v", Edit::Changed,
         "[T]\r\nA=1\r\n\r\n[S]\r\nK=v\r\n"},
        {"the last line gets its end first", "[T]\nA=1", "S", "K", "v", Edit::Changed, "[T]\nA=1\r\n[S]\r\nK=v\r\n"},
        {"a new key after the section's last non-blank line", "[S]\r\nA=1\r\n\r\n[T]\r\n", "S", "K", "v",
         Edit::Changed, "[S]\r\nA=1\r\nK=v\r\n\r\n[T]\r\n"},
        {"a comment counts as non-blank", "[S]\n;c\n\n", "S", "K", "v", Edit::Changed, "[S]\n;c\nK=v\r\n\n"},
        {"a section of only its header", "[S]\n\n[T]\n", "S", "K", "v", Edit::Changed, "[S]\nK=v\r\n\n[T]\n"},
        {"a section at the end without a line end", "[S]\nA=1", "S", "K", "v", Edit::Changed,
         "[S]\nA=1\r\nK=v\r\n"},
        {"a change rewrites only its line, the name as the file has it",
         "; top\n[s]\n  key = old ; x\nB=2\n", "S", "KEY", "new", Edit::Changed, "; top\n[s]\nkey=new\r\nB=2\n"},
        {"an unchanged value writes nothing", "[S]\nK = v\n", "S", "K", "v", Edit::Unchanged, ""},
        {"a quoted value is not the same text", "[S]\nK=\"v\"\n", "S", "K", "v", Edit::Changed, "[S]\nK=v\r\n"},
        {"only the first matching section is written", "[S]\nA=1\n[S]\nK=old\n", "S", "K", "v", Edit::Changed,
         "[S]\nA=1\nK=v\r\n[S]\nK=old\n"},
        {"only the first matching key is written", "[S]\nK=1\nK=2\n", "S", "K", "3", Edit::Changed,
         "[S]\nK=3\r\nK=2\n"},
        {"lines before the first section stay outside it", "A=1\n", "S", "A", "2", Edit::Changed,
         "A=1\n[S]\r\nA=2\r\n"},
        {"the caller's names are written trimmed", "", " S\t", "\tK ", "v", Edit::Changed, "[S]\r\nK=v\r\n"},
        {"a section name with ] inside", "", "a]b", "K", "v", Edit::Changed, "[a]b]\r\nK=v\r\n"},
        {"an empty value", "[S]\r\nK=v\r\n", "S", "K", "", Edit::Changed, "[S]\r\nK=\r\n"},
        {"no value deletes the key", "[S]\nA=1\nk=2\nB=3\n", "S", "K", None, Edit::Changed, "[S]\nA=1\nB=3\n"},
        {"deleting a missing key changes nothing", "[S]\nA=1\n", "S", "K", None, Edit::Unchanged, ""},
        {"no key deletes the section to the next header", "[R]\nx=1\n[S]\nA=1\n;c\n\n[T]\nB=2\n", "s", None, None,
         Edit::Changed, "[R]\nx=1\n[T]\nB=2\n"},
        {"deleting a missing section changes nothing", "[R]\n", "S", None, None, Edit::Unchanged, ""},
        {"a CR in the value is refused", "[S]\r\n", "S", "K", "a\rb", Edit::Refused, ""},
        {"an LF in the value is refused", "[S]\r\n", "S", "K", "a\nb", Edit::Refused, ""},
        {"a line end in the key is refused", "", "S", "K\nX", "v", Edit::Refused, ""},
        {"a line end in the section is refused", "", "S\r[T]", "K", "v", Edit::Refused, ""},
        {"a key with = is refused", "", "S", "a=b", "v", Edit::Refused, ""},
        {"a key that reads as a header is refused", "", "S", "[T]", "v", Edit::Refused, ""},
        {"a key that reads as a comment is refused", "", "S", ";K", "v", Edit::Refused, ""},
    };
    for (const WriteRow& row : rows) {
        const auto key = row.key ? std::optional<std::string_view>(*row.key) : std::nullopt;
        const auto value = row.value ? std::optional<std::string_view>(*row.value) : std::nullopt;
        const Edit edit = Update(row.file, row.section, key, value, kSame);
        EXPECT_EQ(edit.outcome, row.outcome) << row.rule;
        if (row.outcome == Edit::Changed) {
            EXPECT_EQ(edit.text, row.after) << row.rule;
        }
    }
}

TEST(IniEngine, WhatIsWrittenReadsBack) {
    const std::string names[] = {"a]b", "[x", " ", "Perch\xE9"};
    for (const std::string& section : names) {
        const Edit edit = Update("", section, "K", "  v ; w", kSame);
        ASSERT_EQ(edit.outcome, Edit::Changed) << section;
        EXPECT_EQ(Lookup(edit.text, section, "k", kSame), "v ; w") << section;
    }
}

// Files in UTF-8: a name matches by Unicode case folding even when only one
// side is ASCII (the Kelvin sign folds to "k").
TEST(IniEngine, AnAsciiNameMatchesAFoldingNonAsciiOne) {
    const NameMatch utf8([](std::string_view bytes) { return FromUtf8(bytes); });
    EXPECT_EQ(Lookup("[S]\r\nk=v\r\n", "S", "\xE2\x84\xAA", utf8), "v");
    EXPECT_EQ(Lookup("[S]\r\n\xE2\x84\xAA=v\r\n", "S", "k", utf8), "v");
}

}  // namespace
}  // namespace kiv::ini
