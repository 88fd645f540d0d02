#include "renderer/ditherOpUtil.h"

#include "tests/utils/failure.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <numeric>
#include <thread>

using namespace Rendering;

namespace {

std::vector<float> offsetsOf(const DitherMatrix& matrix)
{
    std::vector<float> offsets;
    for (uint32_t row = 0; row < matrix.getSize(); ++row) {
        offsets.insert(offsets.end(), matrix.getRow(row), matrix.getRow(row) + matrix.getSize());
    }
    return offsets;
}

} // namespace

TEST(BayerMatrix, theSmallestOnesAreAsWorkedOutByHand)
{
    EXPECT_EQ(getBayerMatrix(0), (BayerMatrix{0}));
    EXPECT_EQ(getBayerMatrix(1), (BayerMatrix{0, 2, //
                                              3, 1}));
    EXPECT_EQ(getBayerMatrix(2), (BayerMatrix{0, 8, 2, 10,  //
                                              12, 4, 14, 6, //
                                              3, 11, 1, 9,  //
                                              15, 7, 13, 5}));
}

TEST(BayerMatrix, someNumbersOfTheLargerOnesAreAsWorkedOutByHand)
{
    // Level 3 at (5, 6): 4 times level 2 at (1, 2), 14, plus 1 for the lower right copy.
    EXPECT_EQ(getBayerMatrix(3)[5 * 8 + 6], 57);
    // Level 4 at (13, 6): 4 times the 57 above, plus 3 for the lower left copy.
    EXPECT_EQ(getBayerMatrix(4)[13 * 16 + 6], 231);
    EXPECT_EQ(getBayerMatrix(4)[0 * 16 + 8], 2);
    EXPECT_EQ(getBayerMatrix(4)[15 * 16 + 0], 255);
}

TEST(BayerMatrix, everyNumberIsThereOnce)
{
    for (unsigned level = 0; level <= 8; ++level) {
        BayerMatrix sorted = getBayerMatrix(level);
        std::sort(sorted.begin(), sorted.end());
        BayerMatrix expected(std::size_t{1} << (2 * level));
        std::iota(expected.begin(), expected.end(), uint16_t{0});
        EXPECT_EQ(sorted, expected) << level;
    }
}

TEST(BayerMatrix, isMadeOnceAndShared)
{
    const BayerMatrix& first = getBayerMatrix(2);
    getBayerMatrix(8);
    EXPECT_EQ(&getBayerMatrix(2), &first);
}

TEST(BayerMatrix, threadsMayAskForItAtOnce)
{
    std::vector<const BayerMatrix*> matrices(8);
    std::vector<std::thread> threads;
    for (const BayerMatrix*& matrix : matrices) {
        threads.emplace_back([&matrix] {
            for (unsigned level = 0; level <= 6; ++level) {
                matrix = &getBayerMatrix(level);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const BayerMatrix* matrix : matrices) {
        EXPECT_EQ(matrix, &getBayerMatrix(6));
        EXPECT_EQ(matrix->size(), 4096u);
    }
}

TEST(DitherMatrix, isEmptyByDefault) { EXPECT_EQ(DitherMatrix().getSize(), 0u); }

TEST(DitherMatrix, isEmptyWhereNothingIsToBeDithered)
{
    const auto sizeFor = [](BitDepth in, BitDepth dither) { return DitherMatrix(in, dither).getSize(); };
    // The same depth.
    EXPECT_EQ(sizeFor(BIT_DEPTH_8i, BIT_DEPTH_8i), 0u);
    EXPECT_EQ(sizeFor(BIT_DEPTH_16f, BIT_DEPTH_16f), 0u);
    // A float depth.
    EXPECT_EQ(sizeFor(BIT_DEPTH_16i, BIT_DEPTH_16f), 0u);
    EXPECT_EQ(sizeFor(BIT_DEPTH_32f, BIT_DEPTH_16f), 0u);
    EXPECT_EQ(sizeFor(BIT_DEPTH_16f, BIT_DEPTH_32f), 0u);
    // An input of a lower precision.
    EXPECT_EQ(sizeFor(BIT_DEPTH_8i, BIT_DEPTH_16i), 0u);
    EXPECT_EQ(sizeFor(BIT_DEPTH_8i, BIT_DEPTH_10i), 0u);
    EXPECT_EQ(sizeFor(BIT_DEPTH_10i, BIT_DEPTH_12i), 0u);
}

TEST(DitherMatrix, hasSixteenRowsWhereTheInputIsFiner)
{
    const auto sizeFor = [](BitDepth in, BitDepth dither) { return DitherMatrix(in, dither).getSize(); };
    EXPECT_EQ(sizeFor(BIT_DEPTH_32f, BIT_DEPTH_8i), 16u);
    EXPECT_EQ(sizeFor(BIT_DEPTH_16f, BIT_DEPTH_16i), 16u);
    EXPECT_EQ(sizeFor(BIT_DEPTH_10i, BIT_DEPTH_8i), 16u);
    EXPECT_EQ(sizeFor(BIT_DEPTH_16i, BIT_DEPTH_12i), 16u);
}

TEST(DitherMatrix, offsetsAreAsWorkedOutByHand)
{
    const DitherMatrix matrix(BIT_DEPTH_32f, BIT_DEPTH_8i);
    const float amplitude = 1.f / 255.f;
    // Numbers 0, 2 and 255 of the Bayer matrix: (0.5, 2.5, 255.5) / 256 - 0.5.
    EXPECT_EQ(matrix.getRow(0)[0], -0.498046875f * amplitude);
    EXPECT_EQ(matrix.getRow(0)[8], -0.490234375f * amplitude);
    EXPECT_EQ(matrix.getRow(15)[0], 0.498046875f * amplitude);
    EXPECT_EQ(matrix.getRow(13)[6], ((231.f + 0.5f) / 256.f - 0.5f) * amplitude);
}

TEST(DitherMatrix, offsetsAreInTheScaleOfTheInput)
{
    EXPECT_EQ(DitherMatrix(BIT_DEPTH_16i, BIT_DEPTH_8i).getRow(0)[0], -0.498046875f * 257.f);
    EXPECT_EQ(DitherMatrix(BIT_DEPTH_16f, BIT_DEPTH_10i).getRow(0)[0], -0.498046875f * (1.f / 1023.f));
}

TEST(DitherMatrix, offsetsHaveAMeanOfZeroWithinHalfAnAmplitude)
{
    const std::pair<BitDepth, BitDepth> pairs[] = {
        {BIT_DEPTH_32f, BIT_DEPTH_8i}, {BIT_DEPTH_16i, BIT_DEPTH_8i}, {BIT_DEPTH_12i, BIT_DEPTH_10i}};
    for (const auto& [in, dither] : pairs) {
        const float amplitude = getBitDepthMaxValue(in) / getBitDepthMaxValue(dither);
        const std::vector<float> offsets = offsetsOf(DitherMatrix(in, dither));
        ASSERT_EQ(offsets.size(), 256u);
        EXPECT_EQ(std::accumulate(offsets.begin(), offsets.end(), 0.0), 0.0);
        for (const float offset : offsets) {
            EXPECT_LT(std::fabs(offset), 0.5f * amplitude);
        }
    }
}

TEST(DitherMatrix, aRowOutsideIsRefused)
{
    const Failure illegalRow{0x4010009, "COLOR:RENDERER:ALL", "Internal error: illegal matrix row index."};
    const DitherMatrix matrix(BIT_DEPTH_32f, BIT_DEPTH_8i);
    EXPECT_EQ(failureOf([&] { matrix.getRow(15); }), kNoFailure);
    EXPECT_EQ(failureOf([&] { matrix.getRow(16); }), illegalRow);
    EXPECT_EQ(failureOf([&] { matrix.getRow(0xffffffff); }), illegalRow);
    EXPECT_EQ(failureOf([&] { DitherMatrix().getRow(0); }), illegalRow);
}
