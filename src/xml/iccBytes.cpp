#include "xml/iccBytes.h"

#include <algorithm>

namespace Color {

namespace {

uint32_t bigEndian(std::string_view bytes, std::size_t at, std::size_t size)
{
    uint32_t value = 0;
    for (std::size_t i = 0; i < size; ++i)
        value = value << 8 | static_cast<unsigned char>(bytes.at(at + i));
    return value;
}

bool isPrintable(char c) { return c >= ' ' && c <= '~'; }

} // namespace

uint16_t bigEndian16(std::string_view bytes, std::size_t at) { return static_cast<uint16_t>(bigEndian(bytes, at, 2)); }

uint32_t bigEndian32(std::string_view bytes, std::size_t at) { return bigEndian(bytes, at, 4); }

std::string iccSignatureText(uint32_t signature)
{
    std::string characters;
    std::string number = "0x";
    for (int shift = 24; shift >= 0; shift -= 8)
        characters += static_cast<char>(signature >> shift & 0xff);
    if (std::all_of(characters.begin(), characters.end(), isPrintable)) return characters;

    for (int shift = 28; shift >= 0; shift -= 4)
        number += "0123456789abcdef"[signature >> shift & 0xf];
    return number;
}

} // namespace Color
