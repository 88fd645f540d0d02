#include "renderer/halfConversion.h"

#include <Imath/half.h>
#include <array>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>

namespace {

uint32_t bitsOf(float value)
{
    uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

std::array<uint32_t, 4> floatsFromHalves(std::array<uint32_t, 4> halves)
{
    std::array<uint32_t, 4> result;
    const __m128i lanes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(halves.data()));
    _mm_storeu_ps(reinterpret_cast<float*>(result.data()), Rendering::floatFromHalf(lanes));
    return result;
}

std::array<uint32_t, 4> halvesFromFloats(std::array<uint32_t, 4> floats)
{
    std::array<uint32_t, 4> result;
    const __m128 lanes = _mm_castsi128_ps(_mm_loadu_si128(reinterpret_cast<const __m128i*>(floats.data())));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(result.data()), Rendering::halfFromFloat(lanes));
    return result;
}

} // namespace

TEST(HalfConversion, everyHalfGivesTheFloatOfImath)
{
    for (uint32_t code = 0; code < 65536; code += 4) {
        const std::array<uint32_t, 4> result = floatsFromHalves({code, code + 1, code + 2, code + 3});
        for (uint32_t lane = 0; lane < 4; ++lane) {
            const float expected = imath_half_to_float(static_cast<imath_half_bits_t>(code + lane));
            ASSERT_EQ(result[lane], bitsOf(expected)) << "half 0x" << std::hex << code + lane;
        }
    }
}

// All 2^32 floats take about 20 seconds in an optimized build; others walk them in steps of a prime.
TEST(HalfConversion, everyFloatGivesTheHalfOfImath)
{
#if defined(NDEBUG)
    constexpr uint64_t step = 1;
#else
    constexpr uint64_t step = 61;
#endif
    uint64_t wrong = 0;
    for (uint64_t first = 0; first < uint64_t{1} << 32; first += 4 * step) {
        std::array<uint32_t, 4> floats;
        for (uint32_t lane = 0; lane < 4; ++lane) {
            floats[lane] = static_cast<uint32_t>(first + lane * step);
        }
        const std::array<uint32_t, 4> result = halvesFromFloats(floats);
        for (uint32_t lane = 0; lane < 4; ++lane) {
            float value;
            std::memcpy(&value, &floats[lane], sizeof value);
            const auto expected = static_cast<int16_t>(imath_float_to_half(value));
            if (static_cast<int32_t>(result[lane]) != expected && ++wrong < 10) {
                ADD_FAILURE() << "float 0x" << std::hex << floats[lane] << " gives half 0x" << (result[lane] & 0xffff)
                              << ", expected 0x" << (expected & 0xffff);
            }
        }
    }
    EXPECT_EQ(wrong, 0u);
}

TEST(HalfConversion, tiesGoToTheEvenHalf)
{
    // 1 + 2^-11 lies between 1 (0x3c00) and the next half (0x3c01); 1 + 3 * 2^-11 between 0x3c01 and 0x3c02.
    // 65519.996 is the last float that stays finite, 65520 the tie that goes to infinity.
    const auto result = halvesFromFloats({0x3f801000, 0x3f803000, 0x477fefff, 0x477ff000});
    EXPECT_EQ(result[0], 0x3c00u);
    EXPECT_EQ(result[1], 0x3c02u);
    EXPECT_EQ(result[2], 0x7bffu);
    EXPECT_EQ(result[3], 0x7c00u);
}
