#pragma once

#include "renderer/halfConversion.h"
#include "renderer/simd.h"

#include <cstdint>
#include <cstring>

namespace Rendering {

/// How channel values are stored, one struct per depth. Each reads four neighbouring elements as floats, in the depth's
/// own scale, and writes floats as four or three elements. The batch functions do the same for the elements of kBatch
/// pixels of four, the number that fills a register. None needs alignment.

/// Add 0.5, clamp to [0, maximum], drop the fraction; NaN gives 0.
inline __m128i roundToInteger(V4f value, float maximum)
{
    const V4f sum = value + V4f(0.5f);
    // MAXPS gives its second operand for a NaN, so 0 stands there.
    const __m128 raised = _mm_max_ps(sum.v, _mm_setzero_ps());
    return _mm_cvttps_epi32(_mm_min_ps(raised, _mm_set1_ps(maximum)));
}

struct Element8i
{
    using Storage = uint8_t;
    static constexpr float kMaximum = 255.f;
    static constexpr uint32_t kBatch = 4;

    static V4f readFour(const uint8_t* elements)
    {
        int32_t packed;
        std::memcpy(&packed, elements, sizeof packed);
        const __m128i zero = _mm_setzero_si128();
        return _mm_cvtepi32_ps(_mm_unpacklo_epi16(_mm_unpacklo_epi8(_mm_cvtsi32_si128(packed), zero), zero));
    }

    static void readBatch(const uint8_t* elements, V4f* pixels)
    {
        const __m128i zero = _mm_setzero_si128();
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(elements));
        const __m128i low = _mm_unpacklo_epi8(bytes, zero);
        const __m128i high = _mm_unpackhi_epi8(bytes, zero);
        pixels[0] = _mm_cvtepi32_ps(_mm_unpacklo_epi16(low, zero));
        pixels[1] = _mm_cvtepi32_ps(_mm_unpackhi_epi16(low, zero));
        pixels[2] = _mm_cvtepi32_ps(_mm_unpacklo_epi16(high, zero));
        pixels[3] = _mm_cvtepi32_ps(_mm_unpackhi_epi16(high, zero));
    }

    static void writeBatch(uint8_t* elements, const V4f* pixels)
    {
        const __m128i low = _mm_packs_epi32(roundToInteger(pixels[0], kMaximum), roundToInteger(pixels[1], kMaximum));
        const __m128i high = _mm_packs_epi32(roundToInteger(pixels[2], kMaximum), roundToInteger(pixels[3], kMaximum));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(elements), _mm_packus_epi16(low, high));
    }

    static uint32_t pack(V4f value)
    {
        const __m128i words = _mm_packs_epi32(roundToInteger(value, kMaximum), _mm_setzero_si128());
        return static_cast<uint32_t>(_mm_cvtsi128_si32(_mm_packus_epi16(words, words)));
    }

    static void writeFour(uint8_t* elements, V4f value)
    {
        const uint32_t packed = pack(value);
        std::memcpy(elements, &packed, 4);
    }

    static void writeThree(uint8_t* elements, V4f value)
    {
        const uint32_t packed = pack(value);
        std::memcpy(elements, &packed, 3);
    }
};

/// The depths with 16 bits of storage. Code turns 16-bit codes in four lanes to floats, and the lanes of two pixels to
/// eight codes. Bits above the depth's precision are read as they stand.
template <class Code>
struct Element16Bits
{
    using Storage = uint16_t;
    static constexpr float kMaximum = Code::kMaximum;
    static constexpr uint32_t kBatch = 2;

    static V4f readFour(const uint16_t* elements)
    {
        const __m128i words = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(elements));
        return Code::toFloat(_mm_unpacklo_epi16(words, _mm_setzero_si128()));
    }

    static void readBatch(const uint16_t* elements, V4f* pixels)
    {
        const __m128i words = _mm_loadu_si128(reinterpret_cast<const __m128i*>(elements));
        pixels[0] = Code::toFloat(_mm_unpacklo_epi16(words, _mm_setzero_si128()));
        pixels[1] = Code::toFloat(_mm_unpackhi_epi16(words, _mm_setzero_si128()));
    }

    static void writeFour(uint16_t* elements, V4f value)
    {
        _mm_storel_epi64(reinterpret_cast<__m128i*>(elements), Code::fromFloats(value, value));
    }

    static void writeBatch(uint16_t* elements, const V4f* pixels)
    {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(elements), Code::fromFloats(pixels[0], pixels[1]));
    }

    static void writeThree(uint16_t* elements, V4f value)
    {
        uint16_t four[4];
        writeFour(four, value);
        std::memcpy(elements, four, 3 * sizeof(uint16_t));
    }
};

template <int maximum>
struct IntegerCode
{
    static constexpr float kMaximum = static_cast<float>(maximum);

    static V4f toFloat(__m128i codes) { return _mm_cvtepi32_ps(codes); }

    static __m128i fromFloats(V4f first, V4f second)
    {
        const __m128i a = roundToInteger(first, kMaximum);
        const __m128i b = roundToInteger(second, kMaximum);
        if constexpr (maximum <= 0x7fff) {
            return _mm_packs_epi32(a, b);
        } else {
            // SSE2 packs signed words only: move the codes there and back.
            const __m128i half = _mm_set1_epi32(0x8000);
            return _mm_xor_si128(_mm_packs_epi32(_mm_sub_epi32(a, half), _mm_sub_epi32(b, half)),
                                 _mm_set1_epi16(static_cast<int16_t>(0x8000)));
        }
    }
};

struct HalfCode
{
    static constexpr float kMaximum = 1.f;

    static V4f toFloat(__m128i codes) { return floatFromHalf(codes); }

    static __m128i fromFloats(V4f first, V4f second)
    {
        return _mm_packs_epi32(halfFromFloat(first.v), halfFromFloat(second.v));
    }
};

using Element10i = Element16Bits<IntegerCode<1023>>;
using Element12i = Element16Bits<IntegerCode<4095>>;
using Element16i = Element16Bits<IntegerCode<65535>>;
using Element16f = Element16Bits<HalfCode>;

struct Element32f
{
    using Storage = float;
    static constexpr float kMaximum = 1.f;
    static constexpr uint32_t kBatch = 1;

    static V4f readFour(const float* elements) { return load(elements); }
    static void readBatch(const float* elements, V4f* pixels) { *pixels = load(elements); }
    static void writeFour(float* elements, V4f value) { store(elements, value); }
    static void writeBatch(float* elements, const V4f* pixels) { store(elements, *pixels); }

    static void writeThree(float* elements, V4f value)
    {
        _mm_storel_pi(reinterpret_cast<__m64*>(elements), value.v);
        _mm_store_ss(elements + 2, splat<2>(value).v);
    }
};

} // namespace Rendering
