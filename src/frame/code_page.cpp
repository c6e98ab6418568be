#include "frame/code_page.hpp"

#include <array>

namespace kiv {
namespace {

constexpr std::array<char16_t, 32> kHigh = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

}  // namespace

char16_t Cp1252Char(unsigned char code) {
    return code >= 0x80 && code < 0xA0 ? kHigh[code - 0x80] : static_cast<char16_t>(code);
}

char Cp1252Byte(char16_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<char>(c);
    for (std::size_t i = 0; i < kHigh.size(); ++i)
        if (kHigh[i] == c) return static_cast<char>(0x80 + i);
    return '?';
}

std::string ToCp1252(const String& text) {
    std::string out(text.size(), '\0');
    for (std::size_t i = 0; i < text.size(); ++i) out[i] = Cp1252Byte(text[i]);
    return out;
}

String FromCp1252(std::string_view bytes) {
    String out(bytes.size(), u'\0');
    for (std::size_t i = 0; i < bytes.size(); ++i) out[i] = Cp1252Char(static_cast<unsigned char>(bytes[i]));
    return out;
}

}  // namespace kiv
