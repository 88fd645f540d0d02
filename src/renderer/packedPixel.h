#pragma once

#include "renderer/plainPixel.h"

namespace Rendering {

/// Three 10-bit values and two bits of alpha in one word: red in bits 31 to 22, green in 21 to 12, blue in 11 to 2,
/// alpha in 1 to 0. In memory the most significant byte comes first.

inline uint32_t loadPackedWord(const uint8_t* bytes)
{
    uint32_t word;
    std::memcpy(&word, bytes, sizeof word);
    return __builtin_bswap32(word);
}

inline void storePackedWord(uint8_t* bytes, uint32_t word)
{
    word = __builtin_bswap32(word);
    std::memcpy(bytes, &word, sizeof word);
}

/// See Unpacker.
template <ChannelOrder order>
void unpackPacked(const void* source, float* rgba, uint32_t width)
{
    const auto* pixel = static_cast<const uint8_t*>(source);
    for (uint32_t i = 0; i < width; ++i, pixel += 4, rgba += 4) {
        const uint32_t word = loadPackedWord(pixel);
        rgba[0] = static_cast<float>(word >> 22 & 0x3ff);
        rgba[1] = static_cast<float>(word >> 12 & 0x3ff);
        rgba[2] = static_cast<float>(word >> 2 & 0x3ff);
        rgba[3] = hasAlpha(order) ? static_cast<float>(word & 3) : Element10i::kMaximum;
    }
}

/// See Packer.
template <ChannelOrder order>
void packPacked(const float* rgba, void* destination, uint32_t width)
{
    auto* pixel = static_cast<uint8_t*>(destination);
    for (uint32_t i = 0; i < width; ++i, pixel += 4, rgba += 4) {
        alignas(16) uint32_t channel[4];
        _mm_store_si128(reinterpret_cast<__m128i*>(channel), roundToInteger(load(rgba), Element10i::kMaximum));
        const uint32_t alpha = hasAlpha(order) ? channel[3] & 3 : 0;
        storePackedWord(pixel, channel[0] << 22 | channel[1] << 12 | channel[2] << 2 | alpha);
    }
}

} // namespace Rendering
