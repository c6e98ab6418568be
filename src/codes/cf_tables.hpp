// The check-letter tables of the codice fiscale, read once from their
// literal texts through the component's own field access.
#pragma once

#include <array>

#include "frame/cl_kiv.hpp"

namespace kiv::codes {

// The tables as literal texts: characters, values at odd and even positions
// (one comma-separated field per character), and the letters of the result.
inline constexpr char16_t kCfAlphabet[] = u"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
inline constexpr char16_t kCfOddValues[] =
    u"1,0,5,7,9,13,15,17,19,21,1,0,5,7,9,13,15,17,19,21,2,4,18,20,11,3,6,8,12,14,16,10,22,25,24,23";
inline constexpr char16_t kCfEvenValues[] =
    u"0,1,2,3,4,5,6,7,8,9,0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25";
inline constexpr char16_t kCfCheckLetters[] = u"ABCDEFGHIJKLMNOPQRSTUVWXYZ";

// Value of each index 0..36 (index 0: a character outside the alphabet).
struct CfValueTables {
    std::array<Long, 37> odd{};
    std::array<Long, 37> even{};
};

// Built at first use by GetPipeStr(list, index, ",", True) and ToNumber on
// `reader`; a failure of either is raised and the next call tries again.
const CfValueTables& CfTables(Cl_KIV& reader);

// 1-based place of a character in the alphabet, letter case ignored; 0 when
// it is not there.
int CfAlphabetIndex(char16_t c);

}  // namespace kiv::codes
