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
    // The fields are taken where they stand in the word, less two bits so that none is negative; the conversion to
    // float is exact, and so is the power of two that brings a field to its place.
    const __m128i colourFields = _mm_setr_epi32(0x3ff << 20, 0x3ff << 10, 0x3ff, 0);
    const __m128i alphaField = _mm_setr_epi32(0, 0, 0, 3);
    const V4f place(1.f / (1 << 20), 1.f / (1 << 10), 1.f, 1.f);
    const V4f opaque(Element10i::kMaximum);

    const auto* pixel = static_cast<const uint8_t*>(source);
    for (uint32_t i = 0; i < width; ++i, pixel += 4, rgba += 4) {
        const __m128i word = _mm_set1_epi32(static_cast<int>(loadPackedWord(pixel)));
        const __m128i fields =
            _mm_or_si128(_mm_and_si128(_mm_srli_epi32(word, 2), colourFields), _mm_and_si128(word, alphaField));
        const V4f value = V4f(_mm_cvtepi32_ps(fields)) * place;
        store(rgba, hasAlpha(order) ? value : select(alphaMask(), opaque, value));
    }
}

/// See Packer.
template <ChannelOrder order>
void packPacked(const float* rgba, void* destination, uint32_t width)
{
    // Red and green, and blue and alpha, are joined in pairs by a multiplication: red * 2^10 + green, blue * 2^2 +
    // alpha.
    constexpr int16_t alphaBits = hasAlpha(order) ? 3 : 0;
    const __m128i kept = _mm_setr_epi16(0x3ff, 0x3ff, 0x3ff, alphaBits, 0x3ff, 0x3ff, 0x3ff, alphaBits);
    const __m128i weights = _mm_setr_epi16(1 << 10, 1, 1 << 2, 1, 1 << 10, 1, 1 << 2, 1);
    const auto packTwo = [&](const float* first, const float* second) {
        const __m128i codes = _mm_packs_epi32(roundToInteger(load(first), Element10i::kMaximum),
                                              roundToInteger(load(second), Element10i::kMaximum));
        const __m128i pairs = _mm_madd_epi16(_mm_and_si128(codes, kept), weights);
        return _mm_or_si128(_mm_slli_epi32(pairs, 12), _mm_srli_epi64(pairs, 32));
    };

    auto* pixel = static_cast<uint8_t*>(destination);
    for (; width >= 2; width -= 2, pixel += 8, rgba += 8) {
        const __m128i words = packTwo(rgba, rgba + 4);
        storePackedWord(pixel, static_cast<uint32_t>(_mm_cvtsi128_si32(words)));
        storePackedWord(pixel + 4, static_cast<uint32_t>(_mm_cvtsi128_si32(_mm_srli_si128(words, 8))));
    }
    if (width > 0) storePackedWord(pixel, static_cast<uint32_t>(_mm_cvtsi128_si32(packTwo(rgba, rgba))));
}

} // namespace Rendering
