// Scripts as files: parsing every line first, then running them, or
// checking each printing line against the "'=> " lines that follow it.
#pragma once

#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "interpreter.hpp"
#include "syntax.hpp"

namespace kiv::script {

struct ScriptLine {
    int number = 0;
    std::string text;
    Statement statement;
    std::vector<std::string> expected;  // the "'=> " lines after it
};

struct Script {
    std::string file;
    std::vector<ScriptLine> lines;
};

// Run: a bare non-call expression is refused. Check: as Run, and an "'=> "
// line must follow a statement. Eval: a bare expression is printed as if it
// began with "?".
enum class Mode { Run, Check, Eval };

// "file:line: message".
class ScriptError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Parses a whole script; the first line that cannot be parsed raises ScriptError.
Script ParseScript(const std::string& file, std::string_view source, Mode mode);
// One line of an eval argument or of the interactive prompt; ParseError when bad.
std::optional<Statement> ParseEvalLine(std::string_view line);

// "WHERE: column C: message", then the line and a caret under the place.
std::string Located(const std::string& where, std::string_view line, const ParseError& error);

// Runs every line; with `strict`, stops at the first run-time error and
// returns false. With `echo`, each printed value follows the line that printed it.
bool RunScript(const Script& script, Interpreter& interpreter, bool strict = false, bool echo = false);

struct Tally {
    int passed = 0;
    int failed = 0;
};
// Runs the script collecting each statement's lines; reports one line per
// failing case on `report`.
Tally CheckScript(const Script& script, Interpreter& interpreter, Output& out, std::ostream& report);

}  // namespace kiv::script
