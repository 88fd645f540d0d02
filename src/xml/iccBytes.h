#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Color {

// What ICC profiles are made of: big-endian numbers, and signatures of four characters. Reading behind the end throws
// std::out_of_range.

uint16_t bigEndian16(std::string_view bytes, std::size_t at);
uint32_t bigEndian32(std::string_view bytes, std::size_t at);

/// The signature that reads like this: iccSignature("acsp").
constexpr uint32_t iccSignature(const char (&text)[5])
{
    uint32_t signature = 0;
    for (std::size_t i = 0; i < 4; ++i)
        signature = signature << 8 | static_cast<unsigned char>(text[i]);
    return signature;
}

/// The four characters, blanks included; as a hexadecimal number when one of them cannot be printed.
std::string iccSignatureText(uint32_t signature);

} // namespace Color
