// Unicode's simple case folding, upper and lower case of one UTF-16 code
// unit, from tables generated out of Unicode's data (tools/gen_case_tables.py),
// so the answers are the same on every machine and need no library.
// Surrogates and code units without case map to themselves.
#pragma once

#include <cstdint>

namespace kiv {

namespace case_tables {

// A code unit's high bits pick a block of 2^kCaseBlockBits deltas, its low
// bits the delta in it; the mapping is the code unit plus the delta, mod 2^16.
inline constexpr int kCaseBlockBits = 5;
extern const std::uint8_t kFoldIndex[0x10000 >> kCaseBlockBits];
extern const std::uint8_t kUpperIndex[0x10000 >> kCaseBlockBits];
extern const std::uint8_t kLowerIndex[0x10000 >> kCaseBlockBits];
extern const std::uint16_t kFoldDelta[];
extern const std::uint16_t kUpperDelta[];
extern const std::uint16_t kLowerDelta[];

inline char16_t LookUp(const std::uint8_t* index, const std::uint16_t* delta, char16_t c) {
    constexpr unsigned mask = (1u << kCaseBlockBits) - 1;
    const unsigned block = index[c >> kCaseBlockBits];
    return static_cast<char16_t>(c + delta[(block << kCaseBlockBits) | (c & mask)]);
}

}  // namespace case_tables

inline char16_t SimpleFold(char16_t c) {
    return case_tables::LookUp(case_tables::kFoldIndex, case_tables::kFoldDelta, c);
}
inline char16_t SimpleUpper(char16_t c) {
    return case_tables::LookUp(case_tables::kUpperIndex, case_tables::kUpperDelta, c);
}
inline char16_t SimpleLower(char16_t c) {
    return case_tables::LookUp(case_tables::kLowerIndex, case_tables::kLowerDelta, c);
}

}  // namespace kiv
