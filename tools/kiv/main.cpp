// kiv: the command-line host of the component. Runs scripts, single lines
// and conformance files, lists the interface, and offers a prompt.
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
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
#include "reference.hpp"
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
        "  list [WORD]       the operations of the interface and the built-in functions\n"
        "                    (those whose name contains WORD)\n"
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
        "  --echo                        print each line that prints before what it prints\n"
        "  --strict                      stop at the first run-time error, exit status 1\n"
        "  --help                        this text\n"
        "  --version                     the version of kiv\n"
        "\n"
        "exit status: 0 when the run completed, 1 when `check` found failing cases,\n"
        "`help` an unknown name, `list` nothing, or --strict a run-time error;\n"
        "2 for a line that cannot be parsed or a bad command line.\n",
        to);
}

// False, with the system's reason in `why`, when the file cannot be read.
bool ReadSource(const std::string& file, std::string& text, std::string& why) {
    std::ostringstream s;
    if (file == "-") {
        s << std::cin.rdbuf();
    } else {
        errno = 0;
        std::ifstream in(file, std::ios::binary);
        if (!in) {
            why = errno != 0 ? std::strerror(errno) : "cannot open";
            return false;
        }
        if (std::filesystem::is_directory(file)) {
            why = std::strerror(EISDIR);
            return false;
        }
        s << in.rdbuf();
    }
    text = s.str();
    return true;
}

// Every file parsed before any runs, so a bad line stops the run cleanly.
bool LoadScripts(const std::vector<std::string>& files, Mode mode, std::vector<Script>& scripts) {
    for (const std::string& f : files) {
        std::string text, why;
        if (!ReadSource(f, text, why)) {
            std::fprintf(stderr, "kiv: cannot read %s: %s\n", f.c_str(), why.c_str());
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

struct RunOptions {
    bool strict = false;
    bool echo = false;
};

int Run(const std::vector<std::string>& files, Output& out, RunOptions options) {
    std::vector<Script> scripts;
    if (!LoadScripts(files, Mode::Run, scripts)) return kParseFailure;
    Interpreter interpreter(out);  // one run: the files share their variables
    interpreter.diagnose = true;
    for (const Script& s : scripts)
        if (!RunScript(s, interpreter, options.strict, options.echo)) return 1;
    return 0;
}

int Eval(const std::vector<std::string>& lines, Output& out, RunOptions options) {
    if (lines.empty()) {
        std::fputs("kiv: eval was given no line (kiv eval '? FmtNum(12.5, 8, 2)')\n", stderr);
        return kParseFailure;
    }
    Script script{"eval", {}};
    for (std::size_t i = 0; i < lines.size(); ++i) {
        try {
            if (std::optional<Statement> s = ParseEvalLine(lines[i]))
                script.lines.push_back({static_cast<int>(i + 1), lines[i], std::move(*s), {}});
        } catch (const ParseError& e) {
            std::fprintf(stderr, "%s\n", Located("eval:" + std::to_string(i + 1), lines[i], e).c_str());
            return kParseFailure;
        }
    }
    Interpreter interpreter(out);
    interpreter.diagnose = true;
    return RunScript(script, interpreter, options.strict, options.echo) ? 0 : 1;
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
    bool any = false;
    for (const ClassInfo* c : CreatableClasses())
        for (const Member& m : c->members)
            if (Lower(m.name).find(wanted) != std::string::npos) {
                std::cout << Qualified(*c, m) << "\n";
                any = true;
            }
    for (const Builtin& b : Builtins())
        if (Lower(b.name).find(wanted) != std::string::npos) {
            std::cout << b.signature << "  (built-in)\n";
            any = true;
        }
    if (!any) {
        std::fprintf(stderr, "kiv: no operation or built-in has \"%s\" in its name\n", word.c_str());
        return 1;
    }
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
        std::cout << MemberHelp(*c, *m);
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
        std::cout << EnumerationHelp(*e);
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
    std::string near = ClosestName(name);
    if (!near.empty()) near = "; did you mean " + near + "?";
    std::fprintf(stderr, "kiv: no operation named %s (see kiv list)%s\n", name.c_str(), near.c_str());
    return 1;
}

// ---- the interactive prompt ----

volatile std::sig_atomic_t interrupted = 0;
void OnInterrupt(int) { interrupted = 1; }

// Names that Tab completes: prompt commands, operations, built-ins,
// constants, enumerations and the script's variables.
const Interpreter* completing = nullptr;

std::vector<std::string> CompletionWords() {
    std::vector<std::string> words = {"help", "list", "exit", "quit", "Set", "Dim", "Call"};
    for (const ClassInfo* c : CreatableClasses())
        for (const Member& m : c->members) words.push_back(m.name);
    for (const Builtin& b : Builtins()) words.push_back(b.name);
    for (const EnumInfo& e : Enumerations()) {
        words.push_back(e.name);
        for (const Constant& k : e.members) words.push_back(k.name);
    }
    for (const Constant& k : RegistryConstants()) words.push_back(k.name);
    if (completing != nullptr)
        for (const std::string& v : completing->variableNames()) words.push_back(v);
    std::sort(words.begin(), words.end());
    words.erase(std::unique(words.begin(), words.end()), words.end());
    return words;
}

char* CompletionGenerator(const char* text, int state) {
    static std::vector<std::string> matches;
    static std::size_t next = 0;
    if (state == 0) {
        matches.clear();
        next = 0;
        const std::string prefix = Lower(text);
        for (const std::string& w : CompletionWords())
            if (Lower(w).rfind(prefix, 0) == 0) matches.push_back(w);
    }
    return next < matches.size() ? strdup(matches[next++].c_str()) : nullptr;
}

char** Complete(const char* text, int, int) {
    rl_attempted_completion_over = 1;  // never file names
    return rl_completion_matches(text, CompletionGenerator);
}

// $XDG_STATE_HOME/kiv/history, else ~/.local/state/kiv/history; "" when neither is known.
std::string HistoryFile() {
    std::filesystem::path folder;
    if (const char* state = std::getenv("XDG_STATE_HOME"); state != nullptr && *state == '/') folder = state;
    else if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0')
        folder = std::filesystem::path(home) / ".local" / "state";
    else return "";
    std::error_code ec;
    std::filesystem::create_directories(folder / "kiv", ec);
    return (folder / "kiv" / "history").string();
}

int Help(const std::string& name);

// A line for the prompt itself (help, list, exit, quit); true when it was one.
bool PromptCommand(const std::string& line, bool& leave) {
    std::istringstream words(line);
    std::string first, arg, extra;
    words >> first >> arg >> extra;
    const std::string command = Lower(first);
    if (!extra.empty()) return false;
    if ((command == "exit" || command == "quit") && arg.empty()) {
        leave = true;
        return true;
    }
    if (command == "help" && arg.empty()) {
        std::fputs("Type a line of kiv script: ? FmtNum(1234.5, 10, 2, True), x = \"ab\", PoniADes x, 4.\n"
                   "A bare expression is printed. At the prompt also:\n"
                   "  help NAME    an operation, built-in, enumeration, class or constant\n"
                   "  list [WORD]  the operations and built-ins (whose name contains WORD)\n"
                   "  exit, quit   leave (as does Ctrl-D); Ctrl-C drops the line being typed\n"
                   "Tab completes names.\n",
                   stdout);
        return true;
    }
    // "help x" and "list x" are the prompt's only when they cannot be script lines.
    const bool word = !arg.empty() && arg.find_first_of("=(\",") == std::string::npos;
    if (command == "help" && word) {
        Help(arg);
        return true;
    }
    if (command == "list" && (arg.empty() || word)) {
        List(arg);
        return true;
    }
    return false;
}

int Interactive(Output& out) {
    Interpreter interpreter(out);
    interpreter.diagnose = true;
    completing = &interpreter;
    rl_attempted_completion_function = Complete;
    rl_completion_append_character = '\0';  // "FmtNum" is followed by "(", not a blank
    struct sigaction action {};
    action.sa_handler = OnInterrupt;
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, nullptr);  // no SA_RESTART: the read returns
    const std::string history = HistoryFile();
    if (!history.empty()) read_history(history.c_str());
    std::fputs("kiv " KIV_VERSION ": type help, list, or a line; Ctrl-D to leave\n", stdout);
    std::fflush(stdout);
    int number = 0;
    for (;;) {
        interrupted = 0;
        char* raw = readline("kiv> ");
        if (raw == nullptr) {
            if (interrupted) {  // Ctrl-C: the line is dropped, the prompt stays
                std::fputc('\n', stdout);
                continue;
            }
            break;
        }
        const std::string line(raw);
        std::free(raw);
        if (line.find_first_not_of(" \t") == std::string::npos) continue;
        add_history(line.c_str());
        if (!history.empty()) write_history(history.c_str());
        bool leave = false;
        if (PromptCommand(line, leave)) {
            if (leave) return 0;
            continue;
        }
        try {
            if (std::optional<Statement> s = ParseEvalLine(line)) {
                interpreter.at("kiv", ++number);
                interpreter.execute(*s);
            }
        } catch (const ParseError& e) {
            std::fprintf(stderr, "%s\n", Located("kiv", line, e).c_str());
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
    RunOptions run;
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
        } else if (opt == "--echo" && !value) {
            cl.run.echo = true;
        } else if (opt == "--strict" && !value) {
            cl.run.strict = true;
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
    InstallPlatform(driver);

    const std::vector<std::string>& args = cl.words;
    std::size_t i = 0;
    if (i == args.size()) return isatty(STDIN_FILENO) ? Interactive(out) : Run({"-"}, out, cl.run);
    const std::string command = args[i++];
    const std::vector<std::string> rest(args.begin() + static_cast<std::ptrdiff_t>(i), args.end());
    if (command == "run" && !rest.empty()) return Run(rest, out, cl.run);
    if (command == "eval") return Eval(rest, out, cl.run);
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
