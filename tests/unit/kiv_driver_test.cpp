// The driver as people use it: calls written as hosts write them, parse
// errors that point at the place, run-time errors that name the operation,
// --strict and --echo, and the help text with its examples.
#include <gtest/gtest.h>

#include <sstream>

#include "frame/dispatch.hpp"
#include "interpreter.hpp"
#include "reference.hpp"
#include "runner.hpp"
#include "syntax.hpp"

namespace kiv::script {
namespace {

const Expr& CallOf(const std::optional<Statement>& s) {
    EXPECT_TRUE(s);
    EXPECT_EQ(s->kind, Statement::Kind::Evaluate);
    return *s->value;
}

TEST(KivStatementForm, CallsWithoutParenthesesAsHostsWriteThem) {
    auto s = ParseLine("AllineaDxSpazi r, \"x\"");
    EXPECT_TRUE(s->explicitCall);
    const Expr& call = CallOf(s);
    EXPECT_EQ(call.kind, Expr::Kind::Call);
    EXPECT_EQ(call.name, "AllineaDxSpazi");
    ASSERT_EQ(call.args.size(), 2u);
    EXPECT_EQ(call.args[0].value->kind, Expr::Kind::Name);  // by reference

    s = ParseLine("l.AddItem \"x\", 0");
    const Expr& member = CallOf(s);
    EXPECT_EQ(member.kind, Expr::Kind::Member);
    EXPECT_TRUE(member.parens);
    EXPECT_EQ(member.name, "AddItem");
    EXPECT_EQ(member.object->kind, Expr::Kind::Name);
    EXPECT_EQ(member.args.size(), 2u);

    // "(a)" is a parenthesised value, passed as a temporary.
    s = ParseLine("Foo (a), b");
    ASSERT_EQ(CallOf(s).args.size(), 2u);
    EXPECT_EQ(CallOf(s).args[0].value->kind, Expr::Kind::Paren);

    s = ParseLine("FmtNum 12, 8, , , , 0");
    EXPECT_EQ(CallOf(s).args[2].kind, Argument::Kind::Omitted);
    s = ParseLine("Incr x, -1E20");
    EXPECT_EQ(CallOf(s).args.size(), 2u);
    s = ParseLine("Dbg_Log Msg:=\"x\"");
    EXPECT_EQ(CallOf(s).args[0].kind, Argument::Kind::Named);
    s = ParseLine("o.Items(1).Clear 3");  // a call in the middle of the chain keeps its arguments
    EXPECT_EQ(CallOf(s).name, "Clear");
    EXPECT_EQ(CallOf(s).object->args.size(), 1u);

    // What stays as it was: an assignment, a bare name, a parenthesised call.
    EXPECT_EQ(ParseLine("x = 1")->kind, Statement::Kind::Assign);
    EXPECT_EQ(CallOf(ParseLine("Beep")).kind, Expr::Kind::Name);
    EXPECT_FALSE(ParseLine("Foo(x, 1)")->explicitCall);
    EXPECT_EQ(ParseLine("Print #1, x")->kind, Statement::Kind::FilePrint);
}

int ColumnOf(const char* line) {
    try {
        ParseLine(line);
    } catch (const ParseError& e) {
        return e.column;
    }
    return -1;
}

std::string MessageOf(const char* line) {
    try {
        ParseLine(line);
    } catch (const ParseError& e) {
        return e.what();
    }
    return "";
}

TEST(KivParseErrors, PointAtThePlaceAndSayWhatIsAccepted) {
    EXPECT_EQ(ColumnOf("x = 1 2"), 7);
    EXPECT_EQ(ColumnOf("? FmtNum(1, 2"), 14);  // the end of the line
    EXPECT_EQ(ColumnOf("? \"open"), 3);
    EXPECT_NE(MessageOf("? #15/03/2026#").find("#yyyy-mm-dd#"), std::string::npos);
    EXPECT_NE(MessageOf("If x Then").find("the statements are"), std::string::npos);
    EXPECT_NE(MessageOf("For i = 1 To 3").find("no statement of kiv"), std::string::npos);
    // A variable may bear a keyword's name.
    EXPECT_EQ(ParseLine("next = 1")->kind, Statement::Kind::Assign);

    const std::string shown = Located("f.kiv:3", "\t? (", ParseError("expected a value", 5));
    EXPECT_EQ(shown, "f.kiv:3: column 5: expected a value\n    \t? (\n    \t   ^");
}

TEST(KivDiagnostics, SuggestsTheOperationAMistypedNameIsCloseTo) {
    EXPECT_EQ(ClosestName("FmtNm"), "FmtNum");
    EXPECT_EQ(ClosestName("fmtnum"), "FmtNum");
    EXPECT_EQ(ClosestName("Lenn"), "Len");
    EXPECT_EQ(ClosestName("Xyzzy"), "");
}

Script Parsed(const char* text) { return ParseScript("f.kiv", text, Mode::Run); }

TEST(KivRun, StatementFormPassesVariablesByReference) {
    Output out{true, {}, {}};
    Interpreter interpreter(out);
    RunScript(Parsed("r = \"    \"\nAllineaDxSpazi r, \"ab\"\n? r\nn = 1\nIncr (n), 5\n? n\n"), interpreter);
    EXPECT_EQ(out.lines, (std::vector<std::string>{"String \"  ab\"", "Integer 1"}));
}

TEST(KivRun, StrictStopsAtTheFirstRunTimeError) {
    Output out{true, {}, {}};
    Interpreter interpreter(out);
    EXPECT_FALSE(RunScript(Parsed("? 1\nFmtNm 1\n? 2\n"), interpreter, true));
    EXPECT_EQ(out.lines, (std::vector<std::string>{"Integer 1", "Error 438: Object doesn't support this property or method"}));
    out.lines.clear();
    EXPECT_TRUE(RunScript(Parsed("? 1\nFmtNm 1\n? 2\n"), interpreter, false));
    EXPECT_EQ(out.lines.size(), 3u);
}

TEST(KivRun, EchoPrecedesOnlyTheLinesThatPrint) {
    Output out{true, {}, {}};
    Interpreter interpreter(out);
    RunScript(Parsed("x = 2\n  ? x ' two\nx = 3\nFmtNm x\n? x\n"), interpreter, false, true);
    EXPECT_EQ(out.lines, (std::vector<std::string>{"> ? x ' two", "Integer 2", "> FmtNm x",
                                                   "Error 438: Object doesn't support this property or method",
                                                   "> ? x", "Integer 3"}));
}

TEST(KivHelp, SaysParametersChangesResultAndExample) {
    const std::string cf = MemberHelp(ClKivClass(), *FindMember("Is_CFTest"));
    EXPECT_NE(cf.find("T_Cf As String, by reference, required"), std::string::npos) << cf;
    EXPECT_NE(cf.find("Changes: none of its arguments"), std::string::npos) << cf;
    EXPECT_NE(cf.find("Result: EnCF_Result, a Long: CF_IsOK = 0, CF_Num = 1"), std::string::npos) << cf;
    EXPECT_NE(cf.find("Example:\n  ? Is_CFTest("), std::string::npos) << cf;
    const std::string pad = MemberHelp(ClKivClass(), *FindMember("AllineaDxSpazi"));
    EXPECT_NE(pad.find("Changes: Record ("), std::string::npos) << pad;
    const std::string fmt = MemberHelp(ClKivClass(), *FindMember("FmtNum"));
    EXPECT_NE(fmt.find("optional, default "), std::string::npos) << fmt;
}

// A user reads what each argument is without the source: one line under
// the parameter in `kiv help`, a column in the reference.
TEST(KivHelp, EveryParameterSaysWhatItIs) {
    int params = 0;
    for (const ClassInfo* c : CreatableClasses()) {
        for (const Member& m : c->members) {
            for (const ParamSpec& p : m.params) {
                ++params;
                EXPECT_FALSE(p.meaning.empty()) << m.name << "." << p.name;
                EXPECT_EQ(p.meaning.find('\n'), std::string::npos) << m.name << "." << p.name;
            }
        }
    }
    EXPECT_GE(params, 500);
    const std::string fmt = MemberHelp(ClKivClass(), *FindMember("FmtNum"));
    EXPECT_NE(fmt.find("  Fl_Mig As Boolean, by reference, optional, default Boolean False\n"
                       "      True puts thousands marks; set to False when they do not fit\n"),
              std::string::npos)
        << fmt;
    const std::string reference = ReferenceMarkdown({});
    EXPECT_NE(reference.find("| vntIndexKey | Variant | by reference, required | a position 1 to Count, or a key |"),
              std::string::npos);
}

// Every example of the interface prints what its help says it prints.
TEST(KivHelp, EveryExamplePrintsWhatItsHelpShows) {
    int examples = 0;
    for (const ClassInfo* c : CreatableClasses()) {
        for (const Member& m : c->members) {
            if (m.example.empty()) continue;
            ++examples;
            Output out{true, {}, {}};
            Interpreter interpreter(out);
            RunScript(ParseScript(m.name, m.example, Mode::Run), interpreter);
            std::string printed;
            for (const std::string& l : out.lines) printed += (printed.empty() ? "" : "\n") + l;
            EXPECT_EQ(printed, m.exampleOutput) << m.name;
        }
    }
    EXPECT_GE(examples, 10);
}

TEST(KivReference, TakesSubjectsFromTheTableSource) {
    const Subjects s = SubjectsOfTableSource(
        "Variant I(int v);\n"
        "std::vector<Member> BuildTable() {\n"
        "    return {\n"
        "        // Padding\n"
        "        Method<&C::A>(\"A\", \"help\",\n"
        "                      ByRef(\"x\")),\n"
        "            // a note on a row, deeper: no heading\n"
        "        Property<&C::B>(\"B\", \"slot\"),\n"
        "    };\n"
        "}\n"
        "        // after the table\n");
    ASSERT_EQ(s.size(), 1u);
    EXPECT_EQ(s[0].first, "Padding");
    EXPECT_EQ(s[0].second, (std::vector<std::string>{"A", "B"}));
}

}  // namespace
}  // namespace kiv::script
