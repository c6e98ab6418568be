// The INI engine on any file bytes: reads of any section and key, then a
// write (set a key, delete a key, delete a section). A written key reads back
// as the platform reads what it wrote (blanks trimmed, a quote pair
// stripped), and no other section's keys change.
#include <fuzzer/FuzzedDataProvider.h>

#include "frame/code_page.hpp"
#include "fuzz_support.hpp"
#include "system/ini/ini_engine.hpp"

using namespace kiv;

namespace {

// What a reader gets back for a value the writer put in a key line.
std::string_view AsRead(std::string_view value) {
    value = ini::TrimBlanks(value);
    if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front())
        value = value.substr(1, value.size() - 2);
    return value;
}

std::string Show(std::optional<std::string_view> v) { return v ? "\"" + std::string(*v) + "\"" : "nothing"; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider in(data, size);
    const ini::NameMatch same([](std::string_view bytes) { return FromCp1252(bytes); });
    const std::string section = in.ConsumeRandomLengthString(40);
    const std::string key = in.ConsumeRandomLengthString(40);
    const std::string value = in.ConsumeRandomLengthString(80);
    const std::string otherSection = in.ConsumeRandomLengthString(40);
    const std::string otherKey = in.ConsumeRandomLengthString(40);
    const int what = in.ConsumeIntegralInRange<int>(0, 5);  // 0 a section goes, 1 a key goes, else a key is set
    const std::string file = in.ConsumeRemainingBytesAsString();

    (void)ini::Lookup(file, section, key, same);
    const auto otherBefore = ini::Lookup(file, otherSection, otherKey, same);

    std::optional<std::string_view> k, v;
    if (what >= 1) k = key;
    if (what >= 2) v = value;
    const ini::Edit edit = ini::Update(file, section, k, v, same);
    if (edit.outcome != ini::Edit::Changed) return 0;

    if (v) {
        const auto back = ini::Lookup(edit.text, section, key, same);
        if (!back || *back != AsRead(value))
            fuzz::Fail("wrote \"" + value + "\", read back " + Show(back) + "\nfile:\n" + edit.text);
    }
    const bool sameSection = same(ini::TrimBlanks(otherSection), ini::TrimBlanks(section));
    const bool sameKey = same(ini::TrimBlanks(otherKey), ini::TrimBlanks(key));
    if (!sameSection || (k && !sameKey)) {
        const auto otherAfter = ini::Lookup(edit.text, otherSection, otherKey, same);
        if (otherAfter != otherBefore)
            fuzz::Fail("[" + otherSection + "] " + otherKey + " was " + Show(otherBefore) + ", is " + Show(otherAfter) +
                       "\nfile:\n" + edit.text);
    }
    return 0;
}
