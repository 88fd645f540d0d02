#pragma once

#include "renderer/channelOrder.h"

#include <cstdint>
#include <emmintrin.h>

namespace Rendering {

/// The stored codes of four neighbouring pixels, one register per channel, a code to a lane.
struct FourCodes
{
    __m128i red, green, blue, alpha;
};

/// Two pixels of four 16-bit codes in each register.
template <ChannelOrder order>
FourCodes fourCodesOf(__m128i firstTwo, __m128i lastTwo)
{
    const __m128i even = _mm_unpacklo_epi16(firstTwo, lastTwo); // pixels 0 and 2
    const __m128i odd = _mm_unpackhi_epi16(firstTwo, lastTwo);
    const __m128i lowPlaces = _mm_unpacklo_epi16(even, odd);
    const __m128i highPlaces = _mm_unpackhi_epi16(even, odd);
    const __m128i zero = _mm_setzero_si128();
    const __m128i places[4] = {_mm_unpacklo_epi16(lowPlaces, zero), _mm_unpackhi_epi16(lowPlaces, zero),
                               _mm_unpacklo_epi16(highPlaces, zero), _mm_unpackhi_epi16(highPlaces, zero)};
    return {places[placeOf(order, 0)], places[placeOf(order, 1)], places[placeOf(order, 2)], places[placeOf(order, 3)]};
}

template <ChannelOrder order>
FourCodes loadFourCodes(const uint16_t* pixels)
{
    const auto* registers = reinterpret_cast<const __m128i*>(pixels);
    return fourCodesOf<order>(_mm_loadu_si128(registers), _mm_loadu_si128(registers + 1));
}

template <ChannelOrder order>
FourCodes loadFourCodes(const uint8_t* pixels)
{
    const __m128i codes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pixels));
    const __m128i zero = _mm_setzero_si128();
    return fourCodesOf<order>(_mm_unpacklo_epi8(codes, zero), _mm_unpackhi_epi8(codes, zero));
}

} // namespace Rendering
