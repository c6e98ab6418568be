// The kiv driver's own parts: literal typing, parsing, canonical printing,
// the printing host and the checking of conformance scripts.
#include <gtest/gtest.h>

#include <sstream>

#include "canonical.hpp"
#include "driver_host.hpp"
#include "frame/dispatchable.hpp"
#include "interpreter.hpp"
#include "runner.hpp"
#include "syntax.hpp"

namespace kiv::script {
namespace {

TEST(KivLiterals, SuffixesForceTheTypeAndRefuseWhatDoesNotFit) {
    EXPECT_EQ(NumberLiteral("99999999999999999999", false), Variant(Double{1e20}));
    EXPECT_EQ(NumberLiteral("32768%", true), Variant(Integer{-32768}));
    EXPECT_THROW(NumberLiteral("32768%", false), ParseError);
    EXPECT_THROW(NumberLiteral("2147483648&", false), ParseError);
    EXPECT_THROW(NumberLiteral("1.5%", false), ParseError);
    EXPECT_EQ(NumberLiteral("3&", false), Variant(Long{3}));
    EXPECT_EQ(NumberLiteral("1.5!", true), Variant(Single{-1.5f}));
    EXPECT_EQ(NumberLiteral("1D2", false), Variant(Double{100}));
    EXPECT_EQ(NumberLiteral("0.0001@", false), Variant(Currency{1}));
    EXPECT_EQ(NumberLiteral("922337203685477.5807@", false), Variant(Currency{INT64_MAX}));
    EXPECT_EQ(NumberLiteral("922337203685477.5808@", true), Variant(Currency{INT64_MIN}));
    EXPECT_THROW(NumberLiteral("922337203685477.5808@", false), ParseError);
    EXPECT_THROW(NumberLiteral("999999999999999@", false), ParseError);
}

TEST(KivLiterals, HexadecimalIsTheBitsOfItsType) {
    EXPECT_EQ(NumberLiteral("&HFFFFFFFF&", false), Variant(Long{-1}));
    EXPECT_EQ(NumberLiteral("&H8000", true), Variant(Long{32768}));
    EXPECT_EQ(NumberLiteral("&O177777", false), Variant(Integer{-1}));
    EXPECT_THROW(NumberLiteral("&H10000%", false), ParseError);
    EXPECT_THROW(NumberLiteral("&H100000000", false), ParseError);
}

TEST(KivParser, BlankAndCommentLinesAreNoStatement) {
    EXPECT_FALSE(ParseLine(""));
    EXPECT_FALSE(ParseLine("   \t"));
    EXPECT_FALSE(ParseLine("' ? 1"));
    EXPECT_FALSE(ParseLine("'=> Integer 1"));
}

TEST(KivParser, TellsAssignmentsCallsAndArguments) {
    auto s = ParseLine("x = PoniADes(a, , N:=3)");
    ASSERT_TRUE(s);
    EXPECT_EQ(s->kind, Statement::Kind::Assign);
    EXPECT_EQ(s->target->kind, Expr::Kind::Name);
    ASSERT_EQ(s->value->args.size(), 3u);
    EXPECT_EQ(s->value->args[0].kind, Argument::Kind::Positional);
    EXPECT_EQ(s->value->args[1].kind, Argument::Kind::Omitted);
    EXPECT_EQ(s->value->args[2].kind, Argument::Kind::Named);
    EXPECT_EQ(s->value->args[2].name, "N");

    s = ParseLine("Foo(1, )");
    ASSERT_TRUE(s);
    EXPECT_EQ(s->kind, Statement::Kind::Evaluate);
    ASSERT_EQ(s->value->args.size(), 2u);
    EXPECT_EQ(s->value->args[1].kind, Argument::Kind::Omitted);

    s = ParseLine("SET o.DlK_DatMask = Nothing");
    ASSERT_TRUE(s);
    EXPECT_EQ(s->kind, Statement::Kind::SetRef);
    EXPECT_EQ(s->target->kind, Expr::Kind::Member);

    s = ParseLine("dim m(1 TO 3, 2) as string");
    ASSERT_TRUE(s);
    EXPECT_EQ(s->kind, Statement::Kind::Dim);
    ASSERT_EQ(s->bounds.size(), 2u);
    EXPECT_TRUE(s->bounds[0].lower != nullptr);
    EXPECT_TRUE(s->bounds[1].lower == nullptr);
    EXPECT_TRUE(s->ofStrings);
}

TEST(KivParser, RefusesMalformedLines) {
    for (const char* bad : {"? \"open", "? #2006-02-30#", "? #2006-13-01#", "? #2007-02-29#", "? #25:00:00#",
                            "? #99-01-01#", "? F(A:=1, 2)", "Dim a(1, 2, 3)", "Dim a(1) As Integer", "a & b = 1",
                            "?", "? 1 2", "? (1", "x = ", "? 12abc", "? o.F() = 1", "? a : b", "? 1 + 2"}) {
        EXPECT_THROW(ParseLine(bad), ParseError) << bad;
    }
}

TEST(KivParser, RefusesAMemberChainTooLongToWalk) {
    std::string line = "? o";
    for (int i = 0; i < 100000; ++i) line += ".x";
    EXPECT_THROW(ParseLine(line), ParseError);
}

TEST(KivCanonical, PrintsEveryScalarKind) {
    EXPECT_EQ(Canonical(Variant()), "Empty");
    EXPECT_EQ(Canonical(Variant::null()), "Null");
    EXPECT_EQ(Canonical(Variant::missing()), "Missing");
    EXPECT_EQ(Canonical(Variant(ErrorValue{static_cast<std::int32_t>(0x800A07FAu)})), "Error 2042");
    EXPECT_EQ(Canonical(Variant(Object{})), "Nothing");
    EXPECT_EQ(Canonical(Variant(Byte{7})), "Byte 7");
    EXPECT_EQ(Canonical(Variant(Long{-20061225})), "Long -20061225");
    EXPECT_EQ(Canonical(Variant(Double{0.1 + 0.2})), "Double 0.30000000000000004");
    EXPECT_EQ(Canonical(Variant(Single{0.1f})), "Single 0.1");
    EXPECT_EQ(Canonical(Variant(Currency{-5})), "Currency -0.0005");
    EXPECT_EQ(Canonical(Variant(Currency{120000})), "Currency 12");
    EXPECT_EQ(Canonical(Variant(Currency{INT64_MIN})), "Currency -922337203685477.5808");
    EXPECT_EQ(Canonical(Variant(false)), "Boolean False");
}

TEST(KivCanonical, QuotesTextsAndSpellsOutControlCharacters) {
    EXPECT_EQ(QuotedText(u""), "\"\"");
    EXPECT_EQ(QuotedText(u"\""), "\"\"\"\"");
    EXPECT_EQ(QuotedText(String(u"A\0B", 3)), "\"A\" & Chr(0) & \"B\"");
    EXPECT_EQ(QuotedText(u"\t\t"), "Chr(9) & Chr(9)");
    EXPECT_EQ(QuotedText(u"\u00e8\U0001F600"), "\"\u00e8\U0001F600\"");
    // A lone surrogate cannot be written in UTF-8.
    EXPECT_EQ(QuotedText(String(1, char16_t{0xD800}) + u"x"), "ChrW(55296) & \"x\"");
}

TEST(KivCanonical, PrintsArraysInStorageOrder) {
    Array a(VarType::Variant, {{1, 2}, {0, 2}});
    a.set({1, 1}, Variant(u"a"));
    a.set({2, 0}, Variant(Integer{3}));
    EXPECT_EQ(Canonical(Variant(a)), "Array(1 To 2, 0 To 1) {Empty, String \"a\", Integer 3, Empty}");
    EXPECT_EQ(Canonical(Variant(Array(VarType::String, {{0, 0}}))), "Array(0 To -1) {}");
}

TEST(KivCanonical, DatesPrintYearFirstWithTheTimeOnlyWhenThereIsOne) {
    EXPECT_EQ(Canonical(Variant(Date{39076})), "Date #2006-12-25#");
    EXPECT_EQ(Canonical(Variant(Date{39076.75})), "Date #2006-12-25 18:00:00#");
    EXPECT_EQ(Canonical(Variant(Date{-1.25})), "Date #1899-12-29 06:00:00#");
}

class KivHost : public ::testing::Test {
protected:
    Output out{true, {}, {}};
    DriverHost host{out, PlatformSettings{}};
};

TEST_F(KivHost, PrintsMessageBoxesAndBeepsInOrder) {
    EXPECT_EQ(host.messageBox(MsgIcon::Exclamation, u"FmtNum", u"a\r\nb"), 1);
    host.beep();
    EXPECT_EQ(host.messageBox(MsgIcon::Information, u"", u"say \"x\""), 1);
    const std::vector<std::string> want = {"MsgBox Exclamation \"FmtNum\" \"a\" & Chr(13) & Chr(10) & \"b\"", "Beep",
                                           "MsgBox Information \"\" \"say \"\"x\"\"\""};
    EXPECT_EQ(out.lines, want);
}

TEST_F(KivHost, ThePinnedClockIsTheOneRead) {
    auto when = ParseClock("2026-03-15 14:05:09");
    ASSERT_TRUE(when);
    host.pinClock(*when);
    EXPECT_EQ(Canonical(Variant(host.now())), "Date #2026-03-15 14:05:09#");
    when = ParseClock("2026-03-15");
    ASSERT_TRUE(when);
    host.pinClock(*when);
    EXPECT_EQ(Canonical(Variant(host.now())), "Date #2026-03-15#");
    EXPECT_FALSE(ParseClock("14:05:09"));
    EXPECT_FALSE(ParseClock("15/03/2026"));
    EXPECT_FALSE(ParseClock("2026-03-15# & #2026-03-16"));
}

TEST(KivScripts, ExpectedLinesBelongToTheStatementBeforeThem) {
    const Script s = ParseScript("f.kiv",
                                 "\xEF\xBB\xBF? 1\r\n'=> Integer 1\r\n\r\n' note\r\n  '=>Integer 2\r\nx = 1\n? 2\n",
                                 Mode::Run);
    ASSERT_EQ(s.lines.size(), 3u);
    EXPECT_EQ(s.lines[0].number, 1);
    EXPECT_EQ(s.lines[0].expected, (std::vector<std::string>{"Integer 1", "Integer 2"}));
    EXPECT_EQ(s.lines[1].number, 6);
    EXPECT_TRUE(s.lines[1].expected.empty());
    EXPECT_EQ(s.lines[2].number, 7);
}

TEST(KivScripts, ParseErrorsNameFileAndLine) {
    try {
        ParseScript("f.kiv", "? 1\n? (\n", Mode::Run);
        FAIL() << "no error";
    } catch (const ScriptError& e) {
        EXPECT_EQ(std::string(e.what()).rfind("f.kiv:2: ", 0), 0u) << e.what();
    }
    EXPECT_THROW(ParseScript("f.kiv", "'=> Integer 1\n? 1\n", Mode::Check), ScriptError);
    EXPECT_EQ(ParseScript("f.kiv", "'=> Integer 1\n? 1\n", Mode::Run).lines.size(), 1u);
    // A value alone is no statement in a script, but is printed by eval.
    EXPECT_THROW(ParseScript("f.kiv", "\"abc\"\n", Mode::Run), ScriptError);
    const Script e = ParseScript("eval", "\"abc\"\nx\nCall PoniADes(\"a\", 2)\n", Mode::Eval);
    EXPECT_EQ(e.lines[0].statement.kind, Statement::Kind::Print);
    EXPECT_EQ(e.lines[1].statement.kind, Statement::Kind::Print);
    EXPECT_EQ(e.lines[2].statement.kind, Statement::Kind::Evaluate);
}

TEST(KivScripts, CheckCountsCasesAndReportsFailures) {
    const Script s = ParseScript("f.kiv",
                                 "x = \"a\"\n"        // prints nothing: no case
                                 "? x\n'=> String \"a\"\n"  // passes
                                 "? x\n'=> String \"b\"\n"  // other line
                                 "? 1\n"                    // output without expectation
                                 "y = 2\n'=> Integer 2\n"   // expectation without output
                                 "? Chr(999)\n'=> Error 5: Invalid procedure call or argument\n",
                                 Mode::Run);
    Output out;
    Interpreter interpreter(out);
    std::ostringstream report;
    const Tally t = CheckScript(s, interpreter, out, report);
    EXPECT_EQ(t.passed, 2);
    EXPECT_EQ(t.failed, 3);
    const std::string r = report.str();
    EXPECT_NE(r.find("f.kiv:4: "), std::string::npos) << r;
    EXPECT_NE(r.find("f.kiv:6: "), std::string::npos) << r;
    EXPECT_NE(r.find("f.kiv:7: "), std::string::npos) << r;
    EXPECT_EQ(r.find("f.kiv:2: "), std::string::npos) << r;
    EXPECT_FALSE(out.collect);
}

}  // namespace
}  // namespace kiv::script
