#pragma once

#include "renderer/halfConversion.h"
#include "renderer/simd.h"

namespace Rendering {

/// For each lane the two neighbouring halves that enclose a value. Codes run away from zero: of the two halves `low` is
/// the one nearer to zero, and the code after it is the other.
struct HalfNeighbours
{
    __m128i low;     ///< codes, in the low 16 bits of each lane
    V4f weightOfLow; ///< 1 - (value - low) / (high - low)
};

/// Beyond the largest finite half both neighbours are that half. A NaN keeps its own code, with the whole weight.
inline HalfNeighbours halfNeighboursOf(V4f value)
{
    const V4f magnitude = min(_mm_and_ps(value.v, _mm_castsi128_ps(_mm_set1_epi32(0x7fffffff))), V4f(65504.f));

    // Let 2^e be the power of two at or below the magnitude, at least 2^-14 where halves turn denormal. The last place
    // of a half is 2^(e-10). Counted in last places the magnitude is exact: its whole part numbers the half, its
    // fraction is the place between the neighbours.
    const __m128 exponentMask = _mm_castsi128_ps(_mm_set1_epi32(0x7f800000));
    const __m128 smallestNormal = _mm_castsi128_ps(_mm_set1_epi32((127 - 14) << 23));
    const __m128i power = _mm_castps_si128(_mm_max_ps(_mm_and_ps(magnitude.v, exponentMask), smallestNormal));
    const __m128i placesPerOne = _mm_sub_epi32(_mm_set1_epi32((2 * 127 + 10) << 23), power); // 2^(10-e)
    const V4f lastPlaces = magnitude * V4f(_mm_castsi128_ps(placesPerOne));
    const __m128i whole = _mm_cvttps_epi32(lastPlaces.v);
    const V4f fraction = lastPlaces - V4f(_mm_cvtepi32_ps(whole));

    // As in halfFromFloat(): 1024 last places carry into the exponent e + 14.
    const __m128i exponent = _mm_sub_epi32(_mm_srli_epi32(power, 13), _mm_set1_epi32((127 - 14) << 10));
    const __m128i sign = _mm_and_si128(_mm_srli_epi32(_mm_castps_si128(value.v), 16), _mm_set1_epi32(0x8000));
    HalfNeighbours neighbours{_mm_or_si128(_mm_add_epi32(whole, exponent), sign), V4f(1.f) - fraction};

    const __m128 isNaN = _mm_cmpunord_ps(value.v, value.v);
    if (__builtin_expect(_mm_movemask_ps(isNaN) != 0, 0)) {
        neighbours.low = selectBits(_mm_castps_si128(isNaN), halfFromFloat(value.v), neighbours.low);
        neighbours.weightOfLow = select(isNaN, V4f(1.f), neighbours.weightOfLow);
    }
    return neighbours;
}

} // namespace Rendering
