// The canonical one-line form of every value the driver prints.
#pragma once

#include <string>

#include "frame/value.hpp"

namespace kiv::script {

// A text as the script would write it: "a""b" & Chr(9) & "c"; "" when empty.
std::string QuotedText(const String& text);

// "Integer 5", "String ""x""", "Date #2006-12-25#", "Array(1 To 2) {Empty, Null}", ...
std::string Canonical(const Variant& value);

}  // namespace kiv::script
