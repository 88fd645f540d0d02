#include "renderer/curveSearch.h"

#include <algorithm>
#include <utility>

namespace Rendering {

namespace {

/// Enough that few values share a bucket, and few enough for the caches. A curve too long for 16 bits has one bucket.
std::size_t chooseBucketCount(std::size_t valueCount)
{
    std::size_t count = 1;
    while (count < 2 * valueCount && count < 16384 && valueCount <= 65536) {
        count *= 2;
    }
    return count;
}

__m128i load(const uint32_t* four) { return _mm_load_si128(reinterpret_cast<const __m128i*>(four)); }
void store(uint32_t* four, __m128i numbers) { _mm_store_si128(reinterpret_cast<__m128i*>(four), numbers); }

} // namespace

CurveSearch::CurveSearch(std::vector<float> values, bool isIncreasing)
    : m_values(std::move(values)), m_starts(chooseBucketCount(m_values.size()), 0), m_sign(isIncreasing ? 1.f : -1.f)
{
    if (!isIncreasing) {
        for (float& value : m_values) {
            value = -value;
        }
    }
    const float first = m_values.front();
    const float last = m_values.back();
    const auto bucketCount = static_cast<float>(m_starts.size());
    m_bucketOf = {V4f(first), V4f(bucketCount / (last - first)), V4f(bucketCount - 1.f)};
    m_last = V4f(last);

    // The last value needs no comparison, as none that is looked for lies above it.
    std::vector<uint32_t> counts(m_starts.size(), 0);
    for (std::size_t i = 0; i + 1 < m_values.size(); ++i) {
        ++counts[static_cast<std::size_t>(_mm_cvtsi128_si32(m_bucketOf(V4f(m_values[i]))))];
    }
    for (std::size_t bucket = 1; bucket < m_starts.size(); ++bucket) {
        m_starts[bucket] = static_cast<uint16_t>(m_starts[bucket - 1] + counts[bucket - 1]);
    }
    const uint32_t most = *std::max_element(counts.begin(), counts.end());
    uint32_t covered = 0; // by steps of 1, 2, 4 and so on
    for (uint32_t step = 1; covered < most; step *= 2) {
        covered += step;
        m_firstStep = step;
    }
    m_values.resize(m_values.size() + covered + 1, last);
}

void CurveSearch::find(const float (&values)[kBlock], Crossings& crossings) const
{
    const float* const curve = m_values.data();
    const uint16_t* const starts = m_starts.data();
    const Buckets bucketOf = m_bucketOf;
    const V4f sign = m_sign;
    const V4f last = m_last;
    alignas(16) float wanted[kBlock];

    // How many values of the curve lie below each wanted one.
    uint32_t* const below = crossings.positions;
    for (uint32_t i = 0; i < kBlock; i += 4) {
        const V4f four = min(last, max(bucketOf.first, sign * Rendering::load(values + i)));
        Rendering::store(wanted + i, four);
        alignas(16) uint32_t bucket[4];
        store(bucket, bucketOf(four));
        store(below + i, _mm_setr_epi32(starts[bucket[0]], starts[bucket[1]], starts[bucket[2]], starts[bucket[3]]));
    }
    for (uint32_t step = m_firstStep; step > 0; step /= 2) {
        const float* const compared = curve + step - 1;
        const __m128i steps = _mm_set1_epi32(static_cast<int>(step));
        for (uint32_t i = 0; i < kBlock; i += 4) {
            const V4f middle(compared[below[i]], compared[below[i + 1]], compared[below[i + 2]],
                             compared[below[i + 3]]);
            const __m128i isBelow = _mm_castps_si128(isAbove(Rendering::load(wanted + i), middle).v);
            store(below + i, _mm_add_epi32(load(below + i), _mm_and_si128(isBelow, steps)));
        }
    }
    for (uint32_t i = 0; i < kBlock; i += 4) {
        // One less, but not less than 0.
        const __m128i numbers = load(below + i);
        const __m128i isFirst = _mm_cmpeq_epi32(numbers, _mm_setzero_si128());
        store(below + i, _mm_sub_epi32(numbers, _mm_add_epi32(_mm_set1_epi32(1), isFirst)));
        const auto pairAt = [&](uint32_t a, uint32_t b) {
            const __m128i pair = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(curve + below[a]));
            return _mm_loadh_pi(_mm_castsi128_ps(pair), reinterpret_cast<const __m64*>(curve + below[b]));
        };
        const __m128 ab = pairAt(i, i + 1);
        const __m128 cd = pairAt(i + 2, i + 3);
        const V4f here = _mm_shuffle_ps(ab, cd, _MM_SHUFFLE(2, 0, 2, 0));
        const V4f next = _mm_shuffle_ps(ab, cd, _MM_SHUFFLE(3, 1, 3, 1));
        Rendering::store(crossings.fractions + i,
                         isAbove(next, here) & (Rendering::load(wanted + i) - here) / (next - here));
    }
}

} // namespace Rendering
