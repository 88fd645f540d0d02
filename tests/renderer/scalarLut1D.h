#pragma once

#include <Imath/half.h>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

/// The arithmetic of 1D LUTs one value at a time, plainly written: what the kernels are compared with.
namespace ScalarLut1D {

using Rgb = std::array<float, 3>;
using Table = std::vector<float>;

inline float valueOfHalf(unsigned code)
{
    half value;
    value.setBits(static_cast<uint16_t>(code));
    return value;
}

/// The value between the entries of a plain domain.
inline float linear(const Table& table, float value)
{
    const auto length = static_cast<float>(table.size());
    const float maxIndex = length - 1.f;
    const float indexScale = 1.f / (1.f / maxIndex);
    float p = value * indexScale;
    p = p > 0.f ? p : 0.f;
    p = p < maxIndex ? p : maxIndex;
    const float i0 = std::trunc(p);
    const float i1 = i0 + 1.f < maxIndex ? i0 + 1.f : maxIndex;
    const float w = i1 - p;
    const float low = table[static_cast<std::size_t>(i0)];
    const float high = table[static_cast<std::size_t>(i1)];
    return (low - high) * w + high;
}

/// The value between the entries of a half domain.
inline float halfDomain(const Table& table, float value)
{
    half nearest(value);
    if (nearest.isInfinity()) {
        nearest = half(std::copysign(65504.f, value));
        value = nearest;
    }
    const uint16_t code = nearest.bits();
    uint16_t low = code;
    auto high = static_cast<uint16_t>(code + 1);
    if (std::fabs(static_cast<float>(nearest)) > std::fabs(value)) {
        high = code;
        low = static_cast<uint16_t>(code - 1);
    } else if (high == 0x7c00 || high == 0xfc00) {
        high = static_cast<uint16_t>(high - 1);
    }
    float fraction = (value - valueOfHalf(low)) / (valueOfHalf(high) - valueOfHalf(low));
    if (std::isnan(fraction) || low == high) fraction = 0.f;
    return (table[low] - table[high]) * (1.f - fraction) + table[high];
}

/// The results with the middle one, by the order of the inputs, put back between the outer two.
inline Rgb hueAdjusted(const Rgb& in, Rgb out)
{
    const int value = 4 * (in[1] > in[2]) - 3 * (in[0] > in[2]) + 5 * (in[0] > in[1]);
    // Without an order, where green is a NaN, all three are blue.
    const std::size_t channels[] = {2, 1, 0, 2, 1, 2, 0, 1, 2, 2, 2};
    const std::size_t* triple = channels + (value < 0 || value > 8 ? 8 : value);
    const std::size_t max = triple[0];
    const std::size_t mid = triple[1];
    const std::size_t min = triple[2];
    const float chroma = in[max] - in[min];
    const float hueFactor = chroma == 0.f ? 0.f : (in[mid] - in[min]) / chroma;
    out[mid] = (out[max] - out[min]) * hueFactor + out[min];
    return out;
}

inline float finite(float value)
{
    if (std::isnan(value)) return 0.f;
    if (std::isinf(value)) return std::copysign(3.4028235e38f, value);
    return value;
}

/// The same bits; NaNs of whatever payload.
inline bool isSame(float a, float b)
{
    if (std::isnan(a) && std::isnan(b)) return true;
    return std::memcmp(&a, &b, sizeof a) == 0;
}

/// Floats of both signs at every exponent, with mantissas around the rounding points of a half, the exact halves, both
/// zeros, denormals, infinities, NaNs.
inline std::vector<float> floatPatterns()
{
    std::vector<float> patterns;
    for (uint32_t sign = 0; sign < 2; ++sign) {
        for (uint32_t exponent = 0; exponent < 256; ++exponent) {
            for (const uint32_t mantissa : {0x0u, 0x1u, 0xfffu, 0x1000u, 0x1001u, 0x1fffu, 0x2000u, 0x3000u, 0x123456u,
                                            0x400000u, 0x7fdfffu, 0x7fe000u, 0x7feffeu, 0x7ff000u, 0x7fffffu}) {
                const uint32_t bits = sign << 31 | exponent << 23 | mantissa;
                float value;
                std::memcpy(&value, &bits, sizeof value);
                patterns.push_back(value);
            }
        }
    }
    for (const float value : {65504.f, 65519.f, 65520.f, 100000.f, 6e-8f, 2e-8f, 6.1e-5f, 0.18f, 0.5f, 0.999f, 2.f}) {
        patterns.push_back(value);
        patterns.push_back(-value);
    }
    return patterns;
}

} // namespace ScalarLut1D
