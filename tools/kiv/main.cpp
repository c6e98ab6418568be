// kiv: the command-line host of the component. Runs scripts, single lines
// and conformance files, lists the interface, and offers a prompt.
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <editline/readline.h>

#include "driver_host.hpp"
#include "frame/dispatch.hpp"
#include "interpreter.hpp"
#include "runner.hpp"
#include "vbscript.hpp"

using namespace kiv;
using namespace kiv::script;

namespace {

constexpr int kParseFailure = 2;

void Usage(std::FILE* to) {
    std::fputs(
        "usage: kiv [OPTION...] [COMMAND [ARG...]]\n"
        "\n"
        "commands:\n"
        "  (none)            an interactive prompt on a terminal, else like `run -`\n"
        "  run FILE...       execute each line of the scripts (- is standard input)\n"
        "  eval 'LINE'...    execute each argument as one line; a bare expression is printed\n"
        "  check FILE...     run conformance files: each printing line against the \"'=> \" lines after it\n"
        "  vbs FILE          a conformance file as a VBScript that drives DLLKiv.dll (Windows tests)\n"
        "  list [WORD]       the operations of the interface (those whose name contains WORD)\n"
        "  help NAME         the signature and purpose of an operation or built-in function;\n"
        "                    the members of an enumeration, a class or a record; a constant\n"
        "\n"
        "options (before or after the command; --opt=value is the same as --opt value):\n"
        "  --now \"yyyy-mm-dd hh:nn:ss\"   pin the clock the component reads (also \"yyyy-mm-dd\")\n"
        "  --drive-c DIR                 map the drive C: of Windows paths to DIR (also KIV_DRIVE_C)\n"
        "  --drive L=DIR                 map the drive L: to DIR (also KIV_DRIVE_L)\n"
        "  --registry DIR                the folder of the registry store (also KIV_REGISTRY)\n"
        "  --pin NAME=VALUE              pin a fact of the host or machine: app, winver, winbit,\n"
        "                                pcname, username, ip\n"
        "  --help                        this text\n"
        "  --version                     the version of kiv\n"
        "\n"
        "exit status: 0 when the run completed, 1 when `check` found failing cases\n"
        "or `help` an unknown name, 2 for a line that cannot be parsed or a bad command line.\n",
        to);
}

bool ReadSource(const std::string& file, std::string& text) {
    std::ostringstream s;
    if (file == "-") {
        s << std::cin.rdbuf();
    } else {
        std::ifstream in(file, std::ios::binary);
        if (!in) return false;
        s << in.rdbuf();
    }
    text = s.str();
    return true;
}

// Every file parsed before any runs, so a bad line stops the run cleanly.
bool LoadScripts(const std::vector<std::string>& files, Mode mode, std::vector<Script>& scripts) {
    for (const std::string& f : files) {
        std::string text;
        if (!ReadSource(f, text)) {
            std::fprintf(stderr, "kiv: cannot read %s\n", f.c_str());
            return false;
        }
        try {
            scripts.push_back(ParseScript(f == "-" ? "<stdin>" : f, text, mode));
        } catch (const ScriptError& e) {
            std::fprintf(stderr, "%s\n", e.what());
            return false;
        }
    }
    return true;
}

int Run(const std::vector<std::string>& files, Output& out) {
    std::vector<Script> scripts;
    if (!LoadScripts(files, Mode::Run, scripts)) return kParseFailure;
    Interpreter interpreter(out);  // one run: the files share their variables
    for (const Script& s : scripts) RunScript(s, interpreter);
    return 0;
}

int Eval(const std::vector<std::string>& lines, Output& out) {
    Script script{"eval", {}};
    for (std::size_t i = 0; i < lines.size(); ++i) {
        try {
            if (std::optional<Statement> s = ParseEvalLine(lines[i]))
                script.lines.push_back({static_cast<int>(i + 1), lines[i], std::move(*s), {}});
        } catch (const ParseError& e) {
            std::fprintf(stderr, "eval:%zu: %s\n", i + 1, e.what());
            return kParseFailure;
        }
    }
    Interpreter interpreter(out);
    RunScript(script, interpreter);
    return 0;
}

int Check(const std::vector<std::string>& files, Output& out) {
    std::vector<Script> scripts;
    if (!LoadScripts(files, Mode::Check, scripts)) return kParseFailure;
    Tally total;
    for (const Script& s : scripts) {
        Interpreter interpreter(out);  // each file starts afresh
        const Tally t = CheckScript(s, interpreter, out, std::cout);
        total.passed += t.passed;
        total.failed += t.failed;
    }
    std::cout << total.passed << " passed, " << total.failed << " failed\n";
    return total.failed == 0 ? 0 : 1;
}

int Vbs(const std::string& file) {
    std::vector<Script> scripts;
    if (!LoadScripts({file}, Mode::Check, scripts)) return kParseFailure;
    std::cout << ToVbScript(scripts[0]);
    return 0;
}

// Cl_KIV's members by name alone; those of the other classes as Class.Member.
std::string Qualified(const ClassInfo& c, const Member& m) {
    return &c == &ClKivClass() ? Signature(m) : c.name + "." + Signature(m);
}

int List(const std::string& word) {
    const std::string wanted = Lower(word);
    for (const ClassInfo* c : CreatableClasses())
        for (const Member& m : c->members)
            if (Lower(m.name).find(wanted) != std::string::npos) std::cout << Qualified(*c, m) << "\n";
    return 0;
}

// A member given as "Member" (Cl_KIV first) or "Class.Member".
std::pair<const ClassInfo*, const Member*> FindAnyMember(const std::string& name) {
    const std::size_t dot = name.find('.');
    for (const ClassInfo* c : CreatableClasses()) {
        if (dot != std::string::npos && Lower(name.substr(0, dot)) != Lower(c->name)) continue;
        if (const Member* m = c->find(dot == std::string::npos ? name : name.substr(dot + 1))) return {c, m};
    }
    return {nullptr, nullptr};
}

int Help(const std::string& name) {
    if (auto [c, m] = FindAnyMember(name); m != nullptr) {
        std::cout << Qualified(*c, *m) << "\n" << m->help << "\n";
        return 0;
    }
    if (const Builtin* b = FindBuiltin(name)) {
        std::cout << b->signature << "  (built-in function of kiv)\n" << b->help << "\n";
        return 0;
    }
    for (const ClassInfo* c : CreatableClasses()) {
        if (Lower(c->name) != Lower(name)) continue;
        std::cout << "Class " << c->name << " (\"" << c->progId << "\")\n";
        for (const Member& m : c->members) std::cout << "  " << Signature(m) << "\n";
        return 0;
    }
    if (const EnumInfo* e = FindEnumeration(name)) {
        std::cout << "Enum " << e->name << "\n";
        for (const Constant& k : e->members) std::cout << "  " << k.name << " = " << k.value << "\n";
        return 0;
    }
    for (const RecordInfo& r : Records()) {
        if (Lower(r.name) != Lower(name)) continue;
        std::cout << "Type " << r.name << "\n";
        for (const FieldInfo& f : r.fields) std::cout << "  " << f.name << " As " << f.typeName << "\n";
        return 0;
    }
    if (const Constant* k = FindConstant(name)) {
        std::cout << k->name << " = " << k->value << "  (constant, Long)\n";
        return 0;
    }
    std::fprintf(stderr, "kiv: no operation named %s (see kiv list)\n", name.c_str());
    return 1;
}

int Interactive(Output& out) {
    Interpreter interpreter(out);
    while (char* raw = readline("kiv> ")) {
        const std::string line(raw);
        std::free(raw);
        if (line.find_first_not_of(" \t") != std::string::npos) add_history(line.c_str());
        try {
            if (std::optional<Statement> s = ParseEvalLine(line)) interpreter.execute(*s);
        } catch (const ParseError& e) {
            std::fprintf(stderr, "%s\n", e.what());
        }
    }
    std::fputc('\n', stdout);
    return 0;
}

// Options may stand before or after the command; "--opt=value" is the same
// as "--opt value". Everything else is the command and its arguments.
struct CommandLine {
    PlatformSettings settings = PlatformSettings::fromEnvironment();
    std::optional<DateLiteralParts> now;
    std::vector<std::string> words;
};

// False, with the reason on standard error, for a bad option.
bool ParseOptions(const std::vector<std::string>& args, CommandLine& cl) {
    static const std::vector<std::string> kWithValue = {"--now", "--drive-c", "--drive", "--registry", "--pin"};
    for (std::size_t i = 0; i < args.size(); ++i) {
        std::string opt = args[i];
        if (opt.rfind("--", 0) != 0 || opt == "--") {
            cl.words.push_back(opt);
            continue;
        }
        std::optional<std::string> value;
        if (const std::size_t eq = opt.find('='); eq != std::string::npos) {
            value = opt.substr(eq + 1);
            opt.resize(eq);
        }
        const bool wantsValue = std::find(kWithValue.begin(), kWithValue.end(), opt) != kWithValue.end();
        if (wantsValue && !value) {
            if (i + 1 >= args.size()) {
                std::fprintf(stderr, "kiv: %s needs a value\n", opt.c_str());
                return false;
            }
            value = args[++i];
        }
        if (opt == "--now") {
            cl.now = ParseClock(*value);
            if (!cl.now) {
                std::fprintf(stderr, "kiv: --now wants \"yyyy-mm-dd hh:nn:ss\" or \"yyyy-mm-dd\", not \"%s\"\n",
                             value->c_str());
                return false;
            }
        } else if (opt == "--drive-c") {
            cl.settings.drives['C'] = *value;
        } else if (opt == "--drive") {
            const bool ok = value->size() >= 3 && std::isalpha(static_cast<unsigned char>((*value)[0])) &&
                            (*value)[1] == '=';
            if (!ok) {
                std::fprintf(stderr, "kiv: --drive wants L=DIR, not \"%s\"\n", value->c_str());
                return false;
            }
            cl.settings.drives[static_cast<char>(std::toupper(static_cast<unsigned char>((*value)[0])))] =
                value->substr(2);
        } else if (opt == "--registry") {
            cl.settings.registryFolder = *value;
        } else if (opt == "--pin") {
            const std::size_t eq = value->find('=');
            if (eq == std::string::npos || eq == 0) {
                std::fprintf(stderr, "kiv: --pin wants NAME=VALUE, not \"%s\"\n", value->c_str());
                return false;
            }
            cl.settings.pins[Lower(value->substr(0, eq))] = value->substr(eq + 1);
        } else if (opt == "--help" && !value) {
            cl.words.insert(cl.words.begin(), "--help");
        } else if (opt == "--version" && !value) {
            cl.words.insert(cl.words.begin(), "--version");
        } else {
            std::fprintf(stderr, "kiv: unknown option %s\n", opt.c_str());
            return false;
        }
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    CommandLine cl;
    if (!ParseOptions(std::vector<std::string>(argv + 1, argv + argc), cl)) {
        Usage(stderr);
        return kParseFailure;
    }
    if (!cl.words.empty() && cl.words[0] == "--version") {
        std::puts("kiv " KIV_VERSION);
        return 0;
    }
    if (!cl.words.empty() && cl.words[0] == "--help") {
        Usage(stdout);
        return 0;
    }
    Output out;
    auto driver = std::make_shared<DriverPlatform>(out, std::move(cl.settings));
    if (cl.now) driver->host().pinClock(*cl.now);
    installPlatform(driver);

    const std::vector<std::string>& args = cl.words;
    std::size_t i = 0;
    if (i == args.size()) return isatty(STDIN_FILENO) ? Interactive(out) : Run({"-"}, out);
    const std::string command = args[i++];
    const std::vector<std::string> rest(args.begin() + static_cast<std::ptrdiff_t>(i), args.end());
    if (command == "run" && !rest.empty()) return Run(rest, out);
    if (command == "eval") return Eval(rest, out);
    if (command == "check" && !rest.empty()) return Check(rest, out);
    if (command == "vbs" && rest.size() == 1) return Vbs(rest[0]);
    if (command == "list" && rest.size() <= 1) return List(rest.empty() ? "" : rest[0]);
    if (command == "help" && rest.size() == 1) return Help(rest[0]);
    if (command == "help" && rest.empty()) {
        Usage(stdout);
        return 0;
    }
    std::fprintf(stderr, "kiv: unknown command or missing arguments: %s\n", command.c_str());
    Usage(stderr);
    return kParseFailure;
}
