#include "morvane/transformFactory.h"
#include "tests/pixels/rendering.h"

#include <cmath>

namespace PixelTest {
namespace {

using namespace Morvane_2015_1_42;

// Numbers worked out by hand; the twin has no part in this file.

/// Passes values as they are: a 32f sample of 255 becomes the 8i sample 255.
TransformPtr unscaled(PixelFormat in, PixelFormat out)
{
    const std::array<float, 16> ones = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    const std::array<float, 4> zeros{};
    TransformPtr transform;
    EXPECT_TRUE(CreateMatrixTransform(Twin::Layout(in).depth, Twin::Layout(out).depth, ones.data(), zeros.data(), true,
                                      transform));
    return finalizedCopy(transform, in, out);
}

TransformPtr bypassed(PixelFormat in, PixelFormat out)
{
    return finalizedCopy(makeTransform(opCaseNamed("bypassedMatrix")), in, out);
}

template <class To, class From, size_t N>
std::vector<To> render(const TransformPtr& transform, const From (&source)[N], size_t numResults, unsigned width)
{
    std::vector<To> result(numResults);
    EXPECT_TRUE(transform->apply(source, lineOf(width), result.data()));
    return result;
}

template <class T>
using Samples = std::vector<T>;

TEST(IntegerStore, addsAHalfThenClampsThenTruncates)
{
    const float values[] = {254.4F,   254.5F,   300.0F,    -3.0F,      0.49F,    0.5F,    1.5F,   2.5F,
                            NAN,      INFINITY, -INFINITY, 0x1p40F,    -0x1p40F, -0.5F,   -0.0F,  254.49998F,
                            255.499F, 255.5F,   256.0F,    -0.500001F, 1e-40F,   3.4e38F, 127.5F, 128.49999F};
    EXPECT_EQ(render<uint8_t>(unscaled(PF_RGBA_32f, PF_RGBA_8i), values, 24, 6),
              (Samples<uint8_t>{254, 255, 255, 0,   0,   1,   2,   3, 0, 255, 0,   255,
                                0,   0,   0,   254, 255, 255, 255, 0, 0, 255, 128, 128}));
}

TEST(IntegerStore, addsInSinglePrecision)
{
    // The float below a half becomes 1 by the addition, and so do odd numbers at the end of the mantissa go up.
    const float values[] = {0.49999997F, 0.4999999F, 65534.5F};
    EXPECT_EQ(render<uint16_t>(unscaled(PF_RGB_32f, PF_RGB_16i), values, 3, 1), (Samples<uint16_t>{1, 0, 65535}));
}

TEST(IntegerStore, clampsAtTheMaximumOfItsDepth)
{
    const float values[] = {1022.5F, 1024.0F, 70000.0F, 4094.5F, 4095.0F, 4097.0F, 65534.4F, 65535.0F, 65536.0F};
    EXPECT_EQ(render<uint16_t>(unscaled(PF_RGB_32f, PF_RGB_10i), values, 9, 3),
              (Samples<uint16_t>{1023, 1023, 1023, 1023, 1023, 1023, 1023, 1023, 1023}));
    EXPECT_EQ(render<uint16_t>(unscaled(PF_RGB_32f, PF_RGB_12i), values, 9, 3),
              (Samples<uint16_t>{1023, 1024, 4095, 4095, 4095, 4095, 4095, 4095, 4095}));
    EXPECT_EQ(render<uint16_t>(unscaled(PF_RGB_32f, PF_RGB_16i), values, 9, 3),
              (Samples<uint16_t>{1023, 1024, 65535, 4095, 4095, 4097, 65534, 65535, 65535}));
}

TEST(PackedStore, putsTheMostSignificantByteFirst)
{
    const float red[] = {1023, 0, 0};
    const float green[] = {0, 1023, 0};
    const float blue[] = {0, 0, 1023};
    const float mixed[] = {0x2a5, 0x13c, 0x0f1};
    const TransformPtr transform = unscaled(PF_RGB_32f, PF_RGB_10iP);
    EXPECT_EQ(render<uint8_t>(transform, red, 4, 1), (Samples<uint8_t>{0xff, 0xc0, 0x00, 0x00}));
    EXPECT_EQ(render<uint8_t>(transform, green, 4, 1), (Samples<uint8_t>{0x00, 0x3f, 0xf0, 0x00}));
    EXPECT_EQ(render<uint8_t>(transform, blue, 4, 1), (Samples<uint8_t>{0x00, 0x00, 0x0f, 0xfc}));
    // 1010100101 0100111100 0011110001 00
    EXPECT_EQ(render<uint8_t>(transform, mixed, 4, 1), (Samples<uint8_t>{0xa9, 0x53, 0xc3, 0xc4}));
}

TEST(PackedStore, keepsTheLowTwoBitsOfAlpha)
{
    const float values[] = {0, 0, 0, 1023, 0, 0, 0, 514, 0, 0, 0, 1024, 0, 0, 0, 1,
                            0, 0, 0, -5,   0, 0, 0, NAN, 0, 0, 0, 4,    0, 0, 0, 2.5F};
    const auto bytes = render<uint8_t>(unscaled(PF_RGBA_32f, PF_RGBA_10iP), values, 32, 8);
    Samples<uint8_t> alphas;
    for (size_t i = 3; i < bytes.size(); i += 4)
        alphas.push_back(bytes[i]);
    EXPECT_EQ(alphas, (Samples<uint8_t>{3, 2, 3, 1, 0, 0, 0, 3}));
}

TEST(PackedRead, leavesAlphaAtItsTwoBits)
{
    const uint8_t white[] = {0xff, 0xff, 0xff, 0xff};
    EXPECT_EQ(render<float>(unscaled(PF_RGBA_10iP, PF_RGBA_32f), white, 4, 1), (Samples<float>{1023, 1023, 1023, 3}));
    EXPECT_EQ(render<float>(unscaled(PF_RGB_10iP, PF_RGBA_32f), white, 4, 1), (Samples<float>{1023, 1023, 1023, 1023}));
    EXPECT_EQ(render<uint16_t>(bypassed(PF_RGBA_10iP, PF_RGBA_16i), white, 4, 1),
              (Samples<uint16_t>{65535, 65535, 65535, 192}));
}

TEST(Read, takesIntegerSamplesBeyondTheirDepthAsTheyStand)
{
    const uint16_t values[] = {0xffff, 0x0400, 0x03ff};
    EXPECT_EQ(render<float>(unscaled(PF_RGB_10i, PF_RGB_32f), values, 3, 1), (Samples<float>{65535, 1024, 1023}));
    EXPECT_EQ(render<float>(unscaled(PF_RGB_12i, PF_RGB_32f), values, 3, 1), (Samples<float>{65535, 1024, 1023}));
}

TEST(Read, fillsInTheMaximumOfTheDepthForAMissingAlpha)
{
    const uint8_t bytes[] = {1, 2, 3};
    const uint16_t shorts[] = {1, 2, 3};
    const float floats[] = {1, 2, 3};
    const uint16_t halves[] = {0x3c00, 0x4000, 0x4200};
    EXPECT_EQ(render<float>(unscaled(PF_RGB_8i, PF_RGBA_32f), bytes, 4, 1), (Samples<float>{1, 2, 3, 255}));
    EXPECT_EQ(render<float>(unscaled(PF_BGR_8i, PF_RGBA_32f), bytes, 4, 1), (Samples<float>{3, 2, 1, 255}));
    EXPECT_EQ(render<float>(unscaled(PF_RGB_10i, PF_RGBA_32f), shorts, 4, 1), (Samples<float>{1, 2, 3, 1023}));
    EXPECT_EQ(render<float>(unscaled(PF_BGR_12i, PF_RGBA_32f), shorts, 4, 1), (Samples<float>{3, 2, 1, 4095}));
    EXPECT_EQ(render<float>(unscaled(PF_RGB_16i, PF_RGBA_32f), shorts, 4, 1), (Samples<float>{1, 2, 3, 65535}));
    EXPECT_EQ(render<float>(unscaled(PF_RGB_16f, PF_ABGR_32f), halves, 4, 1), (Samples<float>{1, 3, 2, 1}));
    EXPECT_EQ(render<float>(unscaled(PF_BGR_32f, PF_BGRA_32f), floats, 4, 1), (Samples<float>{1, 2, 3, 1}));
}

TEST(BypassConversion, scalesByTheRatioOfTheRanges)
{
    const uint8_t bytes[] = {0, 51, 255};
    const uint16_t shorts[] = {0, 32768, 65535};
    EXPECT_EQ(render<uint8_t>(bypassed(PF_RGB_8i, PF_RGBA_8i), bytes, 4, 1), (Samples<uint8_t>{0, 51, 255, 255}));
    EXPECT_EQ(render<uint16_t>(bypassed(PF_RGB_8i, PF_RGBA_16i), bytes, 4, 1),
              (Samples<uint16_t>{0, 13107, 65535, 65535}));
    EXPECT_EQ(render<uint16_t>(bypassed(PF_RGB_16i, PF_RGBA_16f), shorts, 4, 1),
              (Samples<uint16_t>{0, 0x3800, 0x3c00, 0x3c00}));
}

TEST(HalfStore, keepsTheSignOfZero)
{
    const float values[] = {0.0F, -0.0F, 1.0F, -1e-30F};
    EXPECT_EQ(render<uint16_t>(unscaled(PF_RGBA_32f, PF_RGBA_16f), values, 4, 1),
              (Samples<uint16_t>{0x0000, 0x8000, 0x3c00, 0x8000}));
}

TEST(HalfStore, roundsToNearestEvenAndOverflowsToInfinity)
{
    const float values[] = {1 + 0x1p-11F, 1 + 0x3p-11F, 1 + 0x1.001p-11F, 65504.0F,   65519.996F,   65520.0F,
                            -65520.0F,    0x1p-24F,     0x1p-25F,         0x1.8p-25F, 0x1.ff8p-15F, 0x1.ffcp-15F};
    EXPECT_EQ(render<uint16_t>(unscaled(PF_RGBA_32f, PF_RGBA_16f), values, 12, 3),
              (Samples<uint16_t>{0x3c00, 0x3c02, 0x3c01, 0x7bff, 0x7bff, 0x7c00, 0xfc00, 0x0001, 0x0000, 0x0001, 0x03ff,
                                 0x0400}));
}

TEST(Kernels, addTheOffsetEvenWhenItChangesOnlyTheSignOfAZero)
{
    const float values[] = {-0.0F, -0.0F, -0.0F, -0.0F};
    const std::array<float, 16> ones = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    const std::array<float, 4> offsets = {0, -0.0F, 0.5F, 0};
    TransformPtr transform;
    ASSERT_TRUE(CreateMatrixTransform(BIT_DEPTH_32f, BIT_DEPTH_32f, ones.data(), offsets.data(), true, transform));
    const auto result = render<float>(finalizedCopy(transform, PF_RGBA_32f, PF_RGBA_32f), values, 4, 1);
    EXPECT_EQ(result, (Samples<float>{0, 0, 0.5F, 0}));
    EXPECT_FALSE(std::signbit(result[0]));
    EXPECT_TRUE(std::signbit(result[1]));
}

TEST(Kernels, transformAlphaByTheFourthRowAndColumn)
{
    const float values[] = {1, 2, 3, 4};
    const std::array<float, 16> matrix = {1, 0, 0, 10, 0, 1, 0, 0, 0, 0, 1, 0, 100, 0, 0, 2};
    const std::array<float, 4> offsets = {0, 0, 0, 0.5F};
    TransformPtr transform;
    ASSERT_TRUE(CreateMatrixTransform(BIT_DEPTH_32f, BIT_DEPTH_32f, matrix.data(), offsets.data(), true, transform));
    EXPECT_EQ(render<float>(finalizedCopy(transform, PF_RGBA_32f, PF_RGBA_32f), values, 4, 1),
              (Samples<float>{41, 2, 3, 108.5F}));
}

TEST(Kernels, clampOnlyColourAndPassNanInARange)
{
    const float values[] = {NAN, 1.5F, -2.0F, 1.5F};
    const auto result =
        render<float>(finalizedCopy(makeTransform(opCaseNamed("rangeMax")), PF_RGBA_32f, PF_RGBA_32f), values, 4, 1);
    EXPECT_TRUE(std::isnan(result[0]));
    EXPECT_EQ(result[1], 0.75F);
    EXPECT_EQ(result[2], -2.0F);
    EXPECT_EQ(result[3], 1.5F);
}

TEST(EmptyTransform, passesNumbersUnscaled)
{
    const uint8_t bytes[] = {1, 2, 255};
    const TransformPtr transform = makeTransform(opCaseNamed("allDropped"));
    EXPECT_EQ(render<float>(finalizedCopy(transform, PF_RGB_8i, PF_RGBA_32f), bytes, 4, 1),
              (Samples<float>{1, 2, 255, 255}));
}

} // namespace
} // namespace PixelTest
