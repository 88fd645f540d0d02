#pragma once

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

/// The logarithm, exponential and power of the kernels, one number at a time and without vector instructions: what the
/// kernels must give to the last bit.

inline uint32_t bitsOf(float x)
{
    uint32_t bits = 0;
    std::memcpy(&bits, &x, sizeof bits);
    return bits;
}

inline float floatOf(uint32_t bits)
{
    float x = 0.f;
    std::memcpy(&x, &bits, sizeof x);
    return x;
}

inline float scalarLog2(float x)
{
    const auto exponent = static_cast<float>(static_cast<int>(bitsOf(x) >> 23 & 0xff) - 127);
    const float m = floatOf((bitsOf(x) & 0x807fffff) | 0x3f800000);
    float sum = 0.044873614f * m;
    sum += -0.41656372f;
    sum *= m;
    sum += 1.6311488f;
    sum *= m;
    sum += -3.550793f;
    sum *= m;
    sum += 5.091711f;
    sum *= m;
    sum += -2.800364f;
    return sum + exponent;
}

inline float scalarExp2(float y)
{
    if (std::isnan(y) || y < -1e9f) return 0.f;
    if (y > 1e9f) return std::numeric_limits<float>::infinity();
    auto whole = static_cast<int>(y);
    if (0.f > y) whole -= 1;
    if (whole < -126) return 0.f;
    if (whole > 127) return std::numeric_limits<float>::infinity();
    const float f = y - static_cast<float>(whole);
    float sum = 0.013534168f * f;
    sum += 0.05201146f;
    sum *= f;
    sum += 0.24144275f;
    sum *= f;
    sum += 0.69300383f;
    sum *= f;
    sum += 1.0000026f;
    return sum * floatOf(static_cast<uint32_t>(127 + whole) << 23);
}

inline float scalarPow(float x, float g) { return x > 0.f ? scalarExp2(scalarLog2(x) * g) : 0.f; }
