#pragma once

#include "renderer/simd.h"

#include <cmath>

/// Logarithm, exponential and power by polynomials. These polynomials, not the standard library's functions, define the
/// values of gamma, log, exposure/contrast and CDL ops; their small error is part of the result.
namespace Rendering {

/// Base-2 logarithm of a positive normal float, to 1.8e-5. Any other x gives some number.
inline V4f fastLog2(V4f x)
{
    const __m128i bits = _mm_castps_si128(x.v);
    const V4f exponent = _mm_cvtepi32_ps(_mm_sub_epi32(_mm_srli_epi32(bits, 23), _mm_set1_epi32(127)));
    // In [1, 2).
    const V4f mantissa =
        _mm_castsi128_ps(_mm_or_si128(_mm_and_si128(bits, _mm_set1_epi32(0x007fffff)), _mm_set1_epi32(0x3f800000)));
    V4f p = V4f(0.044873614f) * mantissa + V4f(-0.41656372f);
    p = p * mantissa + V4f(1.6311488f);
    p = p * mantissa + V4f(-3.550793f);
    p = p * mantissa + V4f(5.091711f);
    p = p * mantissa + V4f(-2.800364f);
    return p + exponent;
}

/// 2 to the power of y, to 2.7e-6 of the result: +infinity from 128 on, 0 from -126 down and for NaN.
inline V4f fastExp2(V4f y)
{
    // At these ends the steps below give the right result by themselves, and the conversion to integer is defined.
    y = min(max(y, V4f(-126.f)), V4f(128.f));
    // Truncated, less 1 below 0: a negative whole y gives a fraction of 1 and not 0, with almost the same result.
    const __m128i isNegative = _mm_castps_si128(isAbove(V4f(0.f), y).v);
    const __m128i whole = _mm_add_epi32(_mm_cvttps_epi32(y.v), isNegative);
    const V4f fraction = y - V4f(_mm_cvtepi32_ps(whole));
    V4f p = V4f(0.013534168f) * fraction + V4f(0.05201146f);
    p = p * fraction + V4f(0.24144275f);
    p = p * fraction + V4f(0.69300383f);
    p = p * fraction + V4f(1.0000026f);
    // The exponent fields 0 and 255, of whole -127 and 128, read as 0 and +infinity.
    return p * V4f(_mm_castsi128_ps(_mm_slli_epi32(_mm_add_epi32(whole, _mm_set1_epi32(127)), 23)));
}

/// What fastExp2 takes to x to the power of g: the first half of fastPow, for kernels that work in two steps.
inline V4f fastPowExponent(V4f x, V4f g)
{
    // All ones are a NaN, and fastExp2 takes it to 0.
    return fastLog2(x) * g | V4f(_mm_cmpngt_ps(x.v, _mm_setzero_ps()));
}

/// x to the power of g. 0 unless x is above 0, so also for NaN.
inline V4f fastPow(V4f x, V4f g) { return fastExp2(fastPowExponent(x, g)); }

/// The standard library's powf, for parameters. A compiler that knows the base may call exp2f or exp10f instead, whose
/// last bit can be another; it does not get to know it.
inline float libraryPow(float base, float exponent)
{
    const volatile float hiddenBase = base;
    return std::pow(hiddenBase, exponent);
}

} // namespace Rendering
