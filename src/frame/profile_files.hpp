// The private-profile (INI) seam: read and write one key of a section of an
// INI file, delete a key or a section. It takes the platform's own two calls
// (GetPrivateProfileString, WritePrivateProfileString) with their rules, so
// that the Windows build can hand them to kernel32 as they stand.
#pragma once

#include <optional>

#include "frame/value.hpp"

namespace kiv {

class ProfileFiles {
public:
    virtual ~ProfileFiles() = default;
    // The value of `key` in `section` of `file`, or `fallback` (trailing
    // blanks dropped) when the file, the section or the key is missing; at
    // most bufferSize - 1 characters of either. A name without a folder is a
    // file of the Windows folder. Never fails.
    virtual String getString(const String& section, const String& key, const String& fallback, Long bufferSize,
                             const String& file) = 0;
    // Sets `key` of `section` to `value`; with no value the key is deleted,
    // with no key the whole section. 1 when the file holds the setting
    // afterwards (also when nothing needed changing), 0 when it could not be
    // written. Never fails otherwise.
    virtual Long writeString(const String& section, const std::optional<String>& key,
                             const std::optional<String>& value, const String& file) = 0;
};

}  // namespace kiv
