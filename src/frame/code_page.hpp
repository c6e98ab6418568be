// The single-byte Windows code page 1252: the host's "character of code n",
// and the bytes of the text files the component shares with Windows hosts.
#pragma once

#include <string>
#include <string_view>

#include "frame/value.hpp"

namespace kiv {

// The character of code 0 to 255 (0x80-0x9F are the code page's own letters;
// the five codes it leaves undefined keep their value).
char16_t Cp1252Char(unsigned char code);
// The code of c, or '?' when the code page cannot hold it (no best-fit letters).
char Cp1252Byte(char16_t c);

std::string ToCp1252(const String& text);
String FromCp1252(std::string_view bytes);

}  // namespace kiv
