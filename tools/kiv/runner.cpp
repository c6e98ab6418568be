#include "runner.hpp"

namespace kiv::script {
namespace {

constexpr std::string_view kExpected = "'=>";

std::string_view TrimLeft(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
    return s;
}

std::string Joined(const std::vector<std::string>& lines) {
    if (lines.empty()) return "(nothing)";
    std::string out;
    for (const std::string& l : lines) out += (out.empty() ? "" : " | ") + l;
    return out;
}

void ForEvaluation(Statement& s) {
    if (s.kind == Statement::Kind::Evaluate && !s.explicitCall) s.kind = Statement::Kind::Print;
}

}  // namespace

std::optional<Statement> ParseEvalLine(std::string_view line) {
    std::optional<Statement> s = ParseLine(line);
    if (s) ForEvaluation(*s);
    return s;
}

Script ParseScript(const std::string& file, std::string_view source, Mode mode) {
    Script script{file, {}};
    if (source.substr(0, 3) == "\xEF\xBB\xBF") source.remove_prefix(3);
    int number = 0;
    while (!source.empty()) {
        const std::size_t nl = source.find('\n');
        std::string_view line = source.substr(0, nl);
        source.remove_prefix(nl == std::string_view::npos ? source.size() : nl + 1);
        ++number;
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        auto fail = [&](const std::string& message) {
            throw ScriptError(file + ":" + std::to_string(number) + ": " + message);
        };
        const std::string_view trimmed = TrimLeft(line);
        if (trimmed.substr(0, kExpected.size()) == kExpected) {
            if (script.lines.empty()) {
                if (mode == Mode::Check) fail("expected output before any statement");
                continue;
            }
            std::string_view text = trimmed.substr(kExpected.size());
            if (!text.empty() && text.front() == ' ') text.remove_prefix(1);
            script.lines.back().expected.emplace_back(text);
            continue;
        }
        try {
            std::optional<Statement> s = ParseLine(line);
            if (!s) continue;
            if (mode == Mode::Eval) ForEvaluation(*s);
            if (s->kind == Statement::Kind::Evaluate && !s->value->isCallForm())
                fail("a value alone is no statement (print it with ?)");
            script.lines.push_back({number, std::string(line), std::move(*s), {}});
        } catch (const ParseError& e) {
            throw ScriptError(Located(file + ":" + std::to_string(number), line, e));
        }
    }
    return script;
}

std::string Located(const std::string& where, std::string_view line, const ParseError& error) {
    if (error.column == 0) return where + ": " + error.what();
    std::string caret;
    for (std::size_t k = 0; k + 1 < static_cast<std::size_t>(error.column) && k < line.size(); ++k)
        caret += line[k] == '\t' ? '\t' : ' ';
    return where + ": column " + std::to_string(error.column) + ": " + error.what() + "\n    " +
           std::string(line) + "\n    " + caret + "^";
}

bool RunScript(const Script& script, Interpreter& interpreter, bool strict, bool echo) {
    for (const ScriptLine& l : script.lines) {
        interpreter.at(script.file, l.number);
        if (echo) interpreter.echo("> " + std::string(TrimLeft(l.text)));
        const bool ok = interpreter.execute(l.statement);
        if (echo) interpreter.echo({});
        if (!ok && strict) return false;
    }
    return true;
}

Tally CheckScript(const Script& script, Interpreter& interpreter, Output& out, std::ostream& report) {
    Tally tally;
    const bool collecting = out.collect;
    out.collect = true;
    for (const ScriptLine& l : script.lines) {
        out.lines.clear();
        interpreter.execute(l.statement);
        if (out.lines.empty() && l.expected.empty()) continue;  // not a case
        if (out.lines == l.expected) {
            ++tally.passed;
            continue;
        }
        ++tally.failed;
        report << script.file << ":" << l.number << ": " << std::string(TrimLeft(l.text))
               << "  printed: " << Joined(out.lines) << "  expected: " << Joined(l.expected) << "\n";
    }
    out.lines.clear();
    out.collect = collecting;
    return tally;
}

}  // namespace kiv::script
