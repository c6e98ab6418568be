// Runs parsed statements against one default Cl_KIV object and the script's
// variables. Every call to the component goes through its dispatch table.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "frame/cl_kiv.hpp"
#include "frame/dispatchable.hpp"
#include "output.hpp"
#include "syntax.hpp"

namespace kiv::script {

class Interpreter {
public:
    explicit Interpreter(Output& out);

    // Runs one statement; a run-time error is printed as "Error N: text" and
    // the run goes on. False when the statement ended in a run-time error.
    bool execute(const Statement& statement);

    // Where the next statements come from: a run-time error is also told on
    // standard error as "FILE:LINE: NAME: Error N: text" when `diagnose` is set.
    bool diagnose = false;
    void at(std::string file, int line) {
        file_ = std::move(file);
        line_ = line;
    }

    // The next printed line is preceded by `text` (for --echo); forgotten if nothing prints.
    void echo(std::string text) { out_.pending = std::move(text); }

    // The script's variables, by lower-case name (for completion at the prompt).
    std::vector<std::string> variableNames() const;

    // Evaluates an expression (errors propagate).
    Variant evaluate(const Expr& e);

private:
    // Arguments of one call: pointers to variables or to temporaries, and the
    // array elements to write back after the call.
    struct CallFrame {
        Arguments args;
        std::deque<Variant> temps;
        struct Element {
            std::string variable;
            std::vector<Long> index;
            Variant* slot;
            Variant before;
        };
        std::vector<Element> elements;
    };

    void run(const Statement& s);
    void assign(const Expr& target, Variant value, bool setRef);
    void dim(const Statement& s);
    void fileStatement(const Statement& s);  // file_statements.cpp

    Variant call(const std::string& name, const std::vector<Argument>& args, bool parens);
    Variant invoke(const Object& object, const std::string& member, InvokeKind kind,
                   const std::vector<Argument>& args);
    // An empty member name calls the object's default member.
    Variant dispatch(Dispatchable& target, const std::string& member, InvokeKind kind, CallFrame& frame);
    Variant* bind(const Expr& e, CallFrame& frame);
    void writeBack(CallFrame& frame);
    std::vector<Long> indices(const std::vector<Argument>& args);

    Variant* variable(const std::string& name);  // nullptr when not defined
    Variant& define(const std::string& name);
    bool isCallable(const std::string& name) const;

    void report(long number, const std::string& description) const;

    Output& out_;
    std::string file_;
    int line_ = 0;
    std::string failing_;  // the innermost operation or member that raised the error
    Object default_;
    std::unordered_map<std::string, Variant> variables_;  // by lower-case name
};

// The script's own built-in functions: the runtime services and a few of the
// runtime's text functions. Nothing when `name` is not one of them.
struct Builtin {
    const char* name;
    int minArgs, maxArgs;
    const char* signature;
    const char* help;
    Variant (*call)(const std::vector<Variant>& args);
};
const Builtin* FindBuiltin(std::string_view name);
const std::vector<Builtin>& Builtins();

// The operation or built-in whose name is closest to `name` (a typing slip
// away), or "" when none is.
std::string ClosestName(std::string_view name);

}  // namespace kiv::script
