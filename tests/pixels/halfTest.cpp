#include "tests/pixels/rendering.h"

#include <algorithm>
#include <atomic>
#include <numeric>
#include <thread>

namespace PixelTest {
namespace {

using namespace Morvane_2015_1_42;

// A bypassed op multiplies by 1, which changes no value and makes every NaN a quiet one.
uint32_t quieted(uint32_t floatBits)
{
    return (floatBits & 0x7fffffffU) > 0x7f800000U ? floatBits | 0x00400000U : floatBits;
}

TEST(Halves, allBecomeTheFloatsOfImath)
{
    std::vector<uint16_t> source(65536);
    std::iota(source.begin(), source.end(), uint16_t{0});
    std::vector<uint32_t> result(65536);
    const TransformPtr transform = finalizedCopy(makeTransform(opCaseNamed("bypassedScale")), PF_RGBA_16f, PF_RGBA_32f);
    ASSERT_TRUE(transform->apply(source.data(), lineOf(65536 / 4), result.data()));
    for (size_t i = 0; i < source.size(); ++i)
        ASSERT_EQ(result[i], quieted(Twin::bitCast<uint32_t>(Twin::floatOfHalfBits(source[i])))) << i;
}

TEST(Floats, allBecomeTheHalvesOfImath)
{
    // The step is 1 in an optimized build.
    constexpr uint64_t STEP = MORVANE_FLOAT_PATTERN_STEP;
    constexpr uint64_t NUM_PATTERNS = (uint64_t{1} << 32) / STEP;
    constexpr size_t BLOCK = 1 << 16;
    const TransformPtr transform = finalizedCopy(makeTransform(opCaseNamed("bypassedScale")), PF_RGBA_32f, PF_RGBA_16f);

    std::atomic<uint64_t> nextBlock{0};
    std::atomic<uint64_t> numDifferent{0};
    std::atomic<uint64_t> oneDifferent{0};
    const auto work = [&] {
        std::vector<uint32_t> source(BLOCK);
        std::vector<uint16_t> result(BLOCK);
        for (uint64_t start = BLOCK * nextBlock++; start < NUM_PATTERNS; start = BLOCK * nextBlock++) {
            for (size_t i = 0; i < BLOCK; ++i)
                source[i] = static_cast<uint32_t>((start + i) * STEP);
            if (!transform->apply(source.data(), lineOf(BLOCK / 4), result.data())) numDifferent += BLOCK;
            for (size_t i = 0; i < BLOCK; ++i) {
                if (result[i] == Twin::halfBitsOf(Twin::bitCast<float>(quieted(source[i])))) continue;
                ++numDifferent;
                oneDifferent = source[i];
            }
        }
    };
    std::vector<std::thread> threads(std::clamp(std::thread::hardware_concurrency(), 1U, 8U));
    for (std::thread& thread : threads)
        thread = std::thread(work);
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(numDifferent, 0U) << "one of them is the float 0x" << std::hex << oneDifferent;
}

} // namespace
} // namespace PixelTest
