// Text helpers with the runtime's own semantics (1-based positions, errors
// for negative lengths), so that operations read like their steps.
#pragma once

#include "frame/value.hpp"

namespace kiv {

String Trim(const String& s);   // blanks (code 32) only
String LTrim(const String& s);
String RTrim(const String& s);
String Left(const String& s, Long n);   // Invalid procedure call for n < 0
String Right(const String& s, Long n);
String Mid(const String& s, Long start);            // from start to the end
String Mid(const String& s, Long start, Long n);    // start < 1 or n < 0: invalid call
String Space(Long n);
String StringOf(Long n, char16_t c);
String UCase(const String& s);
String LCase(const String& s);
// Length as the 16-bit Integer the interface works with; Overflow beyond.
Integer Len16(const String& s);
// Exact search, 1-based, 0 when absent; an empty `find` is found at `start`
// while start <= Len + 1.
Long InStr(Long start, const String& text, const String& find);
Long InStr(const String& text, const String& find);
// Exact search from the right, 0 when absent.
Long InStrRev(const String& text, const String& find);
// Every occurrence of `find` replaced, searching on behind the replacement.
String ReplaceAll(const String& text, const String& find, const String& with);

// UTF-8 <-> UTF-16, for the front ends and messages.
String FromUtf8(std::string_view s);
std::string ToUtf8(const String& s);

}  // namespace kiv
