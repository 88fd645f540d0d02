#pragma once

#include <emmintrin.h>

namespace Rendering {

/// Lanes of mask: all ones takes a, all zeros takes b.
inline __m128i selectBits(__m128i mask, __m128i a, __m128i b)
{
    return _mm_or_si128(_mm_and_si128(mask, a), _mm_andnot_si128(mask, b));
}

/// Four halves, one in the low 16 bits of each lane, to floats: the same bits as Imath's half, NaN payloads included.
inline __m128 floatFromHalf(__m128i half)
{
    const __m128i exponentAndMantissa = _mm_slli_epi32(_mm_and_si128(half, _mm_set1_epi32(0x7fff)), 13);
    const __m128i sign = _mm_slli_epi32(_mm_and_si128(half, _mm_set1_epi32(0x8000)), 16);

    // The exponent's bias goes from 15 to 127; the all-ones exponent of infinities and NaNs stays all ones.
    const __m128i rebias = _mm_set1_epi32((127 - 15) << 23);
    const __m128i isSpecial = _mm_cmpgt_epi32(exponentAndMantissa, _mm_set1_epi32(0x0f7fffff));
    const __m128i normal = _mm_add_epi32(_mm_add_epi32(exponentAndMantissa, rebias), _mm_and_si128(isSpecial, rebias));

    // A denormal m stands for m * 2^-24. With the exponent of 2^-14 in front it is 2^-14 + m * 2^-24, exactly.
    const __m128i two14 = _mm_set1_epi32((127 - 14) << 23);
    const __m128i isDenormal = _mm_cmplt_epi32(exponentAndMantissa, _mm_set1_epi32(0x00800000));
    const __m128i denormal = _mm_castps_si128(
        _mm_sub_ps(_mm_castsi128_ps(_mm_add_epi32(exponentAndMantissa, two14)), _mm_castsi128_ps(two14)));

    return _mm_castsi128_ps(_mm_or_si128(sign, selectBits(isDenormal, denormal, normal)));
}

/// The half of a NaN keeps the top ten bits of the payload, or gets 1 when they are all zero. Lanes as in
/// halfFromFloat(), without the sign; lanes that are no NaN give nothing of use.
inline __m128i halfMagnitudeOfNaN(__m128i bits)
{
    const __m128i payload = _mm_and_si128(_mm_srli_epi32(bits, 13), _mm_set1_epi32(0x3ff));
    const __m128i lost = _mm_and_si128(_mm_cmpeq_epi32(payload, _mm_setzero_si128()), _mm_set1_epi32(1));
    return _mm_or_si128(_mm_set1_epi32(0x7c00), _mm_or_si128(payload, lost));
}

/// Four floats to halves, each in the low 16 bits of its lane, sign-extended: round to nearest even, the same bits as
/// Imath's half, NaN payloads included.
inline __m128i halfFromFloat(__m128 value)
{
    const __m128i bits = _mm_castps_si128(value);
    const __m128i sign = _mm_and_si128(_mm_srai_epi32(bits, 16), _mm_set1_epi32(static_cast<int>(0xffff8000)));
    // Beyond the largest half 65536 gives the bits of infinity.
    const __m128 magnitude =
        _mm_min_ps(_mm_and_ps(value, _mm_castsi128_ps(_mm_set1_epi32(0x7fffffff))), _mm_set1_ps(65536.f));

    // Let 2^e be the power of two at or below the magnitude, at least 2^-14 where halves turn denormal. The last place
    // of a half is then 2^(e-10), which is the last place of the float 2^(e+13): adding that float rounds, to nearest
    // even, and the sum's bits exceed the float's own by the magnitude counted in last places.
    const __m128 exponentMask = _mm_castsi128_ps(_mm_set1_epi32(0x7f800000));
    const __m128 smallestNormal = _mm_castsi128_ps(_mm_set1_epi32((127 - 14) << 23));
    const __m128 power = _mm_max_ps(_mm_and_ps(magnitude, exponentMask), smallestNormal);
    const __m128i shifted = _mm_add_epi32(_mm_castps_si128(power), _mm_set1_epi32(13 << 23));
    const __m128i sum = _mm_castps_si128(_mm_add_ps(magnitude, _mm_castsi128_ps(shifted)));
    const __m128i lastPlaces = _mm_sub_epi32(sum, shifted);
    // 1024 last places make up the leading bit, which carries into the exponent e + 14: that is e + 15 for a normal
    // half, and 0 for a denormal one, where the leading bit is missing.
    const __m128i exponent = _mm_sub_epi32(_mm_srli_epi32(shifted, 13), _mm_set1_epi32(126 << 10));
    __m128i half = _mm_add_epi32(lastPlaces, exponent);

    const __m128i isNaN = _mm_castps_si128(_mm_cmpunord_ps(value, value));
    if (__builtin_expect(_mm_movemask_epi8(isNaN) != 0, 0)) half = selectBits(isNaN, halfMagnitudeOfNaN(bits), half);
    return _mm_or_si128(half, sign);
}

} // namespace Rendering
