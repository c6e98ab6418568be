// Our reader and writer of private-profile (INI) files, on the bytes of the
// file, with the platform's rules: users' files are written by hand and by
// other programs and must read the same as on Windows.
//
// Pure functions: the caller reads the file, and replaces it with what an
// update returns.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "frame/value.hpp"

namespace kiv::ini {

// How names compare: case-blind on the text their bytes stand for in the
// files' code page.
class NameMatch {
public:
    explicit NameMatch(std::function<String(std::string_view)> decode) : decode_(std::move(decode)) {}
    bool operator()(std::string_view a, std::string_view b) const;

private:
    std::function<String(std::string_view)> decode_;
};

// Blanks are 0x09-0x0D and 0x20; the caller's names are trimmed of them too.
std::string_view TrimBlanks(std::string_view s);

// The value of `key` in the first `section` of `file`, a quote pair
// stripped; nothing when the section or the key is missing.
std::optional<std::string_view> Lookup(std::string_view file, std::string_view section, std::string_view key,
                                       const NameMatch& same);

struct Edit {
    enum Outcome { Unchanged, Changed, Refused } outcome = Unchanged;
    std::string text;  // the whole new file, when Changed
};

// False when a name or the value would not read back as written (a line end
// inside, a key that would read as a section, comment or another key).
bool Writable(std::string_view section, std::optional<std::string_view> key, std::optional<std::string_view> value);

// Sets `key` of `section` to `value`; without a value the key goes, without
// a key the whole section goes (the platform's special calls). Refused when
// a name or the value would not read back as written (a line end inside, a
// key that would read as a section, comment or another key).
Edit Update(std::string_view file, std::string_view section, std::optional<std::string_view> key,
            std::optional<std::string_view> value, const NameMatch& same);

}  // namespace kiv::ini
