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
inline V4f operator*(V4f a, V4f b) { return _mm_mul_ps(a.v, b.v); }

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
/// If floor is above x then floor, else x: a NaN x stays, as MAXPS returns its second operand when one is NaN.
inline V4f raiseTo(V4f floor, V4f x) { return _mm_max_ps(floor.v, x.v); }
/// If x is above ceiling then ceiling, else x: a NaN x stays.
inline V4f lowerTo(V4f ceiling, V4f x) { return _mm_min_ps(ceiling.v, x.v); }

/// Mask with all ones in the alpha lane.
inline V4f alphaMask() { return _mm_castsi128_ps(_mm_setr_epi32(0, 0, 0, -1)); }

} // namespace Rendering
