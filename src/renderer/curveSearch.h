#pragma once

#include "renderer/simd.h"

#include <vector>

namespace Rendering {

/// Finds where a monotonic curve, given by its values at the positions 0, 1, 2 and so on, has a value.
class CurveSearch
{
public:
    /// Values are looked for in blocks: while one is on its way from memory, the next ones are started.
    static constexpr uint32_t kBlock = 64;

    /// Where a curve has the values of a block.
    struct Crossings
    {
        alignas(16) uint32_t positions[kBlock];
        alignas(16) float fractions[kBlock]; ///< of the way from each position to the next one
    };

    /// At least one value. A curve that is not increasing falls or is level throughout.
    CurveSearch(std::vector<float> values, bool isIncreasing);

    /// Where the curve has a block of values, which are first clamped to those of the curve. A value on a level stretch
    /// is met at the start of the stretch. A NaN is met at the start of the curve, with a NaN as the fraction unless
    /// the curve is level there.
    ///
    /// The search begins at the bucket of a value, of many equal ones between the ends of the curve. Its steps are
    /// always as many, and none branches on a value.
    void find(const float (&values)[kBlock], Crossings& crossings) const;

private:
    /// Of two values between the ends of the curve the higher one is never in a lower bucket.
    struct Buckets
    {
        V4f first, perUnit, last;

        __m128i operator()(V4f value) const
        {
            // A NaN, of the value or because the curve has no finite ends, is in the first bucket.
            return _mm_cvttps_epi32(min(max((value - first) * perUnit, V4f(0.f)), last).v);
        }
    };

    /// Not decreasing: a falling curve is negated. The last value is repeated until the steps of the search end in it.
    std::vector<float> m_values;
    /// How many values of the curve are in lower buckets: where the search in a bucket begins.
    std::vector<uint16_t> m_starts;
    Buckets m_bucketOf;
    V4f m_sign;
    V4f m_last; ///< value of the curve, as m_bucketOf.first is the first one
    /// The first and widest of the search in a bucket, or 0 where no bucket has a value.
    uint32_t m_firstStep = 0;
};

} // namespace Rendering
