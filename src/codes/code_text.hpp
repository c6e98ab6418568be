// A text helper shared by the fiscal-code checks, written so that checking a
// whole code copies as little as possible.
#pragma once

#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv::codes {

// Trim, copying the text only when there is a blank to cut.
inline const String& Trimmed(const String& text, String& storage) {
    if (text.empty() || (text.front() != u' ' && text.back() != u' ')) return text;
    storage = Trim(text);
    return storage;
}

}  // namespace kiv::codes
