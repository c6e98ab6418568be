// Text helpers with the runtime's own semantics (1-based positions, errors
// for negative lengths), so that operations read like their steps.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "frame/value.hpp"

namespace kiv {

// The longest text the component makes: 2^30 code units (2 GiB), the most an
// automation text of a 32-bit host can hold, its length prefix counting
// bytes in 32 bits with room to spare. A longer result is the runtime's
// out-of-string-space error instead of an allocation that exhausts memory.
// The fuzzing build lowers it (KIV_TEXT_LIMIT_BITS), so that its runs meet
// the limit's checks without spending seconds and gigabytes on texts that
// are legal but huge.
#ifndef KIV_TEXT_LIMIT_BITS
#define KIV_TEXT_LIMIT_BITS 30
#endif
constexpr std::size_t kMaxTextLength = std::size_t{1} << KIV_TEXT_LIMIT_BITS;
// Out of string space when a text of `length` code units would exceed it.
void RequireTextLength(std::uint64_t length);

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

// Successive searches for one text in another, each from a start at or after
// the previous one's: linear time in all (Knuth-Morris-Pratt), however long
// or repetitive `find` is. `find` must not be empty.
class ForwardSearch {
public:
    ForwardSearch(std::u16string_view text, std::u16string_view find);
    // 0-based start of the first occurrence at or after `from`, npos when
    // there is none; `from` never decreases from one call to the next.
    std::size_t next(std::size_t from);
    // After a search that found nothing: the longest tail of the text that
    // is a proper head of `find` (its length), then each shorter one in turn
    // through `shorter`, down to 0.
    std::size_t tailLength() const { return state_; }
    std::size_t shorter(std::size_t length) const { return length == 0 ? 0 : border_[length - 1]; }

private:
    std::u16string_view text_, find_;
    std::vector<std::size_t> border_;  // border_[i]: longest proper border of find[0..i]
    std::size_t pos_ = 0;              // characters of the text consumed
    std::size_t state_ = 0;            // the longest head of find that ends at pos_
};

// UTF-8 <-> UTF-16, for the front ends and messages.
String FromUtf8(std::string_view s);
std::string ToUtf8(const String& s);

}  // namespace kiv
