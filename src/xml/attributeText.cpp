#include "xml/attributeText.h"

#include <cstdint>

namespace Color {

namespace {

/// The first code point of each length in bytes, from 1 on.
constexpr uint32_t kSmallestOfLength[] = {0, 0, 0x80, 0x800, 0x10000};

std::size_t lengthAfter(uint8_t lead)
{
    if (lead < 0x80) return 1;
    if (lead >= 0xc0 && lead < 0xe0) return 2;
    if (lead >= 0xe0 && lead < 0xf0) return 3;
    return lead >= 0xf0 && lead < 0xf8 ? 4 : 0;
}

bool isAllowed(uint32_t code)
{
    const bool isSurrogate = code >= 0xd800 && code < 0xe000;
    return code >= ' ' && !isSurrogate && code != 0xfffe && code != 0xffff && code <= 0x10ffff;
}

} // namespace

bool isAttributeText(std::string_view text)
{
    while (!text.empty()) {
        const auto lead = static_cast<uint8_t>(text.front());
        const std::size_t length = lengthAfter(lead);
        if (length == 0 || length > text.size()) return false;
        uint32_t code = length == 1 ? lead : lead & (0x7fU >> length);
        for (const char c : text.substr(1, length - 1)) {
            const auto byte = static_cast<uint8_t>(c);
            if ((byte & 0xc0U) != 0x80) return false;
            code = code << 6 | (byte & 0x3fU);
        }
        if (code < kSmallestOfLength[length] || !isAllowed(code)) return false;
        text.remove_prefix(length);
    }
    return true;
}

} // namespace Color
