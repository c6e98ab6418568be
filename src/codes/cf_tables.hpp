// The check-letter tables of the codice fiscale, read once from their
// literal texts through the component's own field access.
#pragma once

#include <array>
#include <cstdint>

#include "frame/ascii.hpp"
#include "frame/cl_kiv.hpp"
#include "frame/runtime.hpp"

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
// it is not there. Inline: the check letter looks up fifteen per code.
inline int CfAlphabetIndex(char16_t c) {
    // Plain ASCII, nearly every character of a code, in either case.
    static constexpr std::array<std::int8_t, 128> kAsciiPlaces = [] {
        std::array<std::int8_t, 128> built{};
        for (int place = 1; place <= 36; ++place) {
            const char16_t a = kCfAlphabet[place - 1];
            built[a] = static_cast<std::int8_t>(place);
            if (a >= u'A' && a <= u'Z') built[AsciiLower(a)] = static_cast<std::int8_t>(place);
        }
        return built;
    }();
    if (c < 128) return kAsciiPlaces[c];
    // Beyond ASCII only a character folding onto one of ours is found.
    const char16_t folded = FoldCase(c);
    return folded < 128 ? kAsciiPlaces[folded] : 0;
}

}  // namespace kiv::codes
