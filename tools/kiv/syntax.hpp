// The script language of the kiv driver: one statement per line, parsed into
// a small tree that the interpreter walks.
#pragma once

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "frame/value.hpp"

namespace kiv::script {

// A line that cannot be parsed; the message names what is wrong, and
// `column` (from 1) the place, 0 when unknown.
class ParseError : public std::runtime_error {
public:
    explicit ParseError(const std::string& message, int column = 0)
        : std::runtime_error(message), column(column) {}
    int column;
};

struct Expr;
using ExprPtr = std::unique_ptr<Expr>;

struct Argument {
    enum class Kind { Omitted, Positional, Named };
    Kind kind = Kind::Positional;
    std::string name;  // Named only
    ExprPtr value;     // absent when Omitted
};

// A date literal as written, #2006-12-25 10:30#: either part may be absent.
struct DateLiteralParts {
    bool hasDate = false, hasTime = false;
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
};

struct Expr {
    enum class Kind {
        Literal,      // value
        DateLiteral,  // date
        Name,         // name: a variable, a built-in or member without arguments
        Call,         // name(args): an array element, a built-in or a member of the default object
        Member,       // object.name or object.name(args)
        Concat,       // object & right
        Negate,       // -object
        Paren,        // (object): always a temporary when passed
    };
    Kind kind = Kind::Literal;
    Variant value;
    DateLiteralParts date;
    std::string name;
    std::vector<Argument> args;
    bool parens = false;  // Member written with an argument list
    ExprPtr object;       // the operand (Member, Concat, Negate, Paren)
    ExprPtr right;        // Concat

    // A form that calls something: a name, a call or a member.
    bool isCallForm() const { return kind == Kind::Name || kind == Kind::Call || kind == Kind::Member; }
};

struct DimBound {
    ExprPtr lower;  // absent: 0
    ExprPtr upper;
};

struct Statement {
    enum class Kind {
        Print,     // ? value
        Assign,    // target = value
        SetRef,    // Set target = value
        Dim,       // Dim name[(bounds)] [As String]
        Evaluate,  // value alone on the line
        // The host's file statements; operands in the order written.
        FileOpen,     // Open path For <name> As #number
        FileClose,    // Close [#n[, #m...]]
        FilePrint,    // Print #number, [value][;]
        LineInput,    // Line Input #number, target
        FileCommand,  // Kill / MkDir / RmDir path (name: the command, lower case)
        WriteText,    // WriteText path, text
    };
    Kind kind = Kind::Evaluate;
    ExprPtr target;
    ExprPtr value;
    std::string name;
    std::vector<DimBound> bounds;
    bool isArray = false;
    bool ofStrings = false;
    bool explicitCall = false;  // written with the Call keyword or in statement form
    std::vector<ExprPtr> operands;  // file statements
    bool noLineEnd = false;         // Print ending in ";"
};

// Parses one line. Returns nothing for a blank or comment-only line.
std::optional<Statement> ParseLine(std::string_view line);

// The value of a number literal as written ("32768", "&HFFFF&", "1.5@"),
// negated when preceded by a minus sign, typed by the literal rules.
Variant NumberLiteral(std::string_view text, bool negate);

// Lower-case ASCII copy, for case-blind names.
std::string Lower(std::string_view s);

}  // namespace kiv::script
