// ASCII character tests for the grammars of numbers, dates and patterns,
// whose letters and digits are plain ASCII whatever the text around them.
#pragma once

namespace kiv {

// For char and char16_t alike.
template <class C>
constexpr bool IsAsciiDigit(C c) {
    return c >= C('0') && c <= C('9');
}

// "A".."Z" to "a".."z"; every other character as it is.
template <class C>
constexpr C AsciiLower(C c) {
    return c >= C('A') && c <= C('Z') ? static_cast<C>(c + (C('a') - C('A'))) : c;
}

}  // namespace kiv
