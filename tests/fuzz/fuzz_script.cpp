// The kiv driver's reader: any text as a script to run, as a conformance file
// (statements with their "'=> " lines) and line by line as eval arguments.
// A bad line is a parse error with its place; a short script that parses is
// also checked, its calls kept in the sandbox, its lines collected.
#include <sstream>

#include "fuzz_support.hpp"
#include "interpreter.hpp"
#include "runner.hpp"

using namespace kiv;
using namespace kiv::script;

namespace {
fuzz::Sandbox* sandbox = nullptr;
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    static fuzz::Sandbox box;  // emptied and removed at exit
    sandbox = &box;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const auto mode = static_cast<Mode>(data[0] % 3);
    const std::string_view source(reinterpret_cast<const char*>(data) + 1, size - 1);

    std::size_t start = 0;
    while (start <= source.size()) {
        const std::size_t end = std::min(source.find('\n', start), source.size());
        try {
            (void)ParseEvalLine(source.substr(start, end - start));
        } catch (const ParseError& e) {
            if (std::string_view(e.what()).empty()) fuzz::Fail("a parse error without text");
        }
        start = end + 1;
    }

    Script script;
    try {
        script = ParseScript("fuzz.kiv", source, mode == Mode::Eval ? Mode::Check : mode);
    } catch (const ScriptError& e) {
        if (std::string_view(e.what()).rfind("fuzz.kiv:", 0) != 0) fuzz::Fail(std::string("no place: ") + e.what());
        return 0;
    }
    // Running: long scripts only repeat what the dispatch target covers.
    if (script.lines.size() > 12) return 0;
    InstallPlatform(std::make_shared<fuzz::SandboxPlatform>(*sandbox));
    {
        Output out;
        out.collect = true;
        Interpreter interpreter(out);
        std::ostringstream report;
        try {
            (void)CheckScript(script, interpreter, out, report);
        } catch (const std::exception& e) {
            fuzz::Fail(std::string("the check stopped: ") + e.what());
        }
    }
    InstallPlatform(std::make_shared<fuzz::SandboxPlatform>(*sandbox));
    sandbox->reset();
    return 0;
}
