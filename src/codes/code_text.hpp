// Small text helpers shared by the fiscal-code and barcode checks, written so
// that checking a whole code copies as little as possible.
#pragma once

#include <utility>

#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv::codes {

// The runtime's numeric test on a whole text.
inline bool IsNumericText(const String& text) { return IsNumericValue(Variant(text)); }

// The same test on a text of our own: it moves into the Variant and back out
// instead of being copied.
inline bool IsNumericOwnText(String& text) {
    Variant value(std::move(text));
    const bool numeric = IsNumericValue(value);
    text = std::move(*value.as<String>());
    return numeric;
}

// Trim, copying the text only when there is a blank to cut.
inline const String& Trimmed(const String& text, String& storage) {
    if (text.empty() || (text.front() != u' ' && text.back() != u' ')) return text;
    storage = Trim(text);
    return storage;
}

}  // namespace kiv::codes
