#pragma once

#include <cstdint>
#include <emmintrin.h>

namespace Rendering {

/// Four floats in one SSE2 register: in a kernel the red, green, blue and alpha of one pixel. Every operation is the
/// IEEE single-precision one, lane by lane.
struct V4f
{
    __m128 v;

    V4f() = default;
    V4f(__m128 lanes) : v(lanes) {}
    explicit V4f(float all) : v(_mm_set1_ps(all)) {}
    V4f(float r, float g, float b, float a) : v(_mm_setr_ps(r, g, b, a)) {}
};

inline V4f operator+(V4f a, V4f b) { return _mm_add_ps(a.v, b.v); }
inline V4f operator-(V4f a, V4f b) { return _mm_sub_ps(a.v, b.v); }
inline V4f operator*(V4f a, V4f b) { return _mm_mul_ps(a.v, b.v); }
inline V4f operator/(V4f a, V4f b) { return _mm_div_ps(a.v, b.v); }

/// Bit by bit, as masks are combined.
inline V4f operator&(V4f a, V4f b) { return _mm_and_ps(a.v, b.v); }
inline V4f operator|(V4f a, V4f b) { return _mm_or_ps(a.v, b.v); }
inline V4f operator^(V4f a, V4f b) { return _mm_xor_ps(a.v, b.v); }

/// a where it is above b, else b: b also for a NaN and for two zeros. So max(bound, x) keeps a NaN x, max(x, bound)
/// makes the bound of it.
inline V4f max(V4f a, V4f b) { return _mm_max_ps(a.v, b.v); }
/// a where it is below b, else b: b also for a NaN and for two zeros.
inline V4f min(V4f a, V4f b) { return _mm_min_ps(a.v, b.v); }

/// No alignment is needed.
inline V4f load(const float* four) { return _mm_loadu_ps(four); }
inline void store(float* four, V4f x) { _mm_storeu_ps(four, x.v); }

/// All four lanes set to lane i. An integer shuffle, as that one does not overwrite its operand.
template <int i>
V4f splat(V4f x)
{
    return _mm_castsi128_ps(_mm_shuffle_epi32(_mm_castps_si128(x.v), _MM_SHUFFLE(i, i, i, i)));
}

/// All ones in the lanes where a is above b; never for NaN.
inline V4f isAbove(V4f a, V4f b) { return _mm_cmpgt_ps(a.v, b.v); }
/// a where mask is all ones, b where it is all zeros.
inline V4f select(V4f mask, V4f a, V4f b) { return _mm_or_ps(_mm_and_ps(mask.v, a.v), _mm_andnot_ps(mask.v, b.v)); }
/// Mask with all ones in the alpha lane.
inline V4f alphaMask() { return _mm_castsi128_ps(_mm_setr_epi32(0, 0, 0, -1)); }
/// Mask with all ones in lane i, 0 to 3, where it is not known beforehand.
inline V4f laneMask(unsigned i)
{
    alignas(16) static constexpr int32_t window[] = {0, 0, 0, -1, 0, 0, 0};
    return _mm_castsi128_ps(_mm_loadu_si128(reinterpret_cast<const __m128i*>(window + (3 - i))));
}

/// The whole part of x, or the lowest number for a NaN and for what is too large.
inline int32_t truncated(float x) { return _mm_cvttss_si32(_mm_set_ss(x)); }

} // namespace Rendering
