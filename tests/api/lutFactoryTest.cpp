#include "tests/api/hostTools.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

using namespace Morvane;

namespace {

constexpr unsigned kHalfDomainLength = 65536;
const BitDepth kNoDepths[] = {BIT_DEPTH_UNKNOWN, BitDepth(1), BitDepth(0x3000), BitDepth(0xffffffff)};
const float kInfinity = std::numeric_limits<float>::infinity();
const float kNaN = std::numeric_limits<float>::quiet_NaN();

/// The same curve for red, green and blue.
TransformPtr makeCurve(BitDepth in, BitDepth out, const std::vector<float>& values, HalfFlags flags = HALF_FLAGS_NONE)
{
    TransformPtr transform;
    EXPECT_TRUE(succeeds(Create1DLutTransformFromFloat(in, out, unsigned(values.size()), values.data(), values.data(),
                                                       values.data(), flags, transform)));
    return transform;
}

/// Each half code as a number.
std::vector<float> halfCodes()
{
    std::vector<float> values(kHalfDomainLength);
    std::iota(values.begin(), values.end(), 0.f);
    return values;
}

/// A cube of 2 grid points whose colours tell their place: 100 red + 10 green + blue, and that plus 1000 and 2000.
template <class T>
std::vector<T> makePlaces()
{
    std::vector<T> values;
    for (unsigned i = 0; i < 8; ++i) {
        const unsigned place = 100 * (i >> 2) + 10 * (i >> 1 & 1) + (i & 1);
        for (const unsigned channel : {place, place + 1000, place + 2000})
            values.push_back(static_cast<T>(channel));
    }
    return values;
}

void expectPlaces(const TransformPtr& transform)
{
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_EQ(applyToPixel(transform, {0, 0, 0, 0.25f}), (std::array<float, 4>{0, 1000, 2000, 0.25f}));
    EXPECT_EQ(applyToPixel(transform, {1, 0, 0, 0.25f}), (std::array<float, 4>{100, 1100, 2100, 0.25f}));
    EXPECT_EQ(applyToPixel(transform, {0, 1, 0, 0.25f}), (std::array<float, 4>{10, 1010, 2010, 0.25f}));
    EXPECT_EQ(applyToPixel(transform, {0, 0, 1, 0.25f}), (std::array<float, 4>{1, 1001, 2001, 0.25f}));
    EXPECT_EQ(applyToPixel(transform, {1, 0, 1, 0.25f}), (std::array<float, 4>{101, 1101, 2101, 0.25f}));
    EXPECT_EQ(applyToPixel(transform, {1, 1, 1, 0.25f}), (std::array<float, 4>{111, 1111, 2111, 0.25f}));
}

} // namespace

TEST(create1DLutTransform, makesAFreshTransform)
{
    const TransformPtr transform = makeCurve(BIT_DEPTH_10i, BIT_DEPTH_16f, {0, 1});
    expectFresh(transform, BIT_DEPTH_10i, BIT_DEPTH_16f);
    EXPECT_STRNE(transform->getId(), makeCurve(BIT_DEPTH_10i, BIT_DEPTH_16f, {0, 1})->getId());
}

TEST(create1DLutTransform, floatsAreOneCurvePerChannel)
{
    const float red[3] = {0, 10, 30};
    const float green[3] = {1, 2, 3};
    const float blue[3] = {-5, 5, -5};
    TransformPtr transform;
    ASSERT_TRUE(succeeds(
        Create1DLutTransformFromFloat(BIT_DEPTH_32f, BIT_DEPTH_32f, 3, red, green, blue, HALF_FLAGS_NONE, transform)));
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_EQ(applyToPixel(transform, {0, 0.5f, 1, 0.7f}), (std::array<float, 4>{0, 2, -5, 0.7f}));
    EXPECT_EQ(applyToPixel(transform, {0.25f, 0.25f, 0.25f, -1}), (std::array<float, 4>{5, 1.5f, 0, -1}));
    EXPECT_EQ(applyToPixel(transform, {-2, 7, 0.75f, 2}), (std::array<float, 4>{0, 3, 0, 2}));
}

TEST(create1DLutTransform, valuesAreInTheScaleOfTheOutputDepth)
{
    const TransformPtr transform = makeCurve(BIT_DEPTH_32f, BIT_DEPTH_8i, {0, 255});
    EXPECT_EQ((convertPixel<unsigned char, float>(transform, PF_RGBA_32f, PF_RGBA_8i, {0, 0.2f, 1, 1})),
              (std::array<unsigned char, 4>{0, 51, 255, 255}));
    // For another output the table is rescaled.
    EXPECT_EQ((convertPixel<float, float>(transform, PF_RGBA_32f, PF_RGBA_32f, {0, 0.5f, 1, 1})),
              (std::array<float, 4>{0, 0.5f, 1, 1}));
}

TEST(create1DLutTransform, integersOf32BitsAreNumbersOfTheOutputDepth)
{
    std::vector<unsigned> values(256);
    for (unsigned i = 0; i < 256; ++i)
        values[i] = 255 - i;
    TransformPtr transform;
    ASSERT_TRUE(succeeds(Create1DLutTransformFromInt(BIT_DEPTH_8i, BIT_DEPTH_8i, 256, values.data(), values.data(),
                                                     values.data(), HALF_FLAGS_NONE, transform)));
    EXPECT_EQ((convertPixel<unsigned char, unsigned char>(transform, PF_RGBA_8i, PF_RGBA_8i, {0, 100, 255, 77})),
              (std::array<unsigned char, 4>{255, 155, 0, 77}));
}

TEST(create1DLutTransform, integersOf16BitsAreNumbersOfTheOutputDepth)
{
    std::vector<unsigned short> values(1024);
    for (unsigned i = 0; i < 1024; ++i)
        values[i] = static_cast<unsigned short>(64 * i);
    TransformPtr transform;
    ASSERT_TRUE(succeeds(Create1DLutTransformFromShort(BIT_DEPTH_10i, BIT_DEPTH_16i, 1024, values.data(), values.data(),
                                                       values.data(), HALF_FLAGS_NONE, transform)));
    EXPECT_EQ((convertPixel<unsigned short, unsigned short>(transform, PF_RGBA_10i, PF_RGBA_16i, {0, 513, 1023, 1023})),
              (std::array<unsigned short, 4>{0, 32832, 65472, 65535}));
}

TEST(create1DLutTransform, wideIntegersAreRoundedToFloats)
{
    const unsigned values[2] = {16777217, 4294967295u};
    TransformPtr transform;
    ASSERT_TRUE(succeeds(Create1DLutTransformFromInt(BIT_DEPTH_32f, BIT_DEPTH_32f, 2, values, values, values,
                                                     HALF_FLAGS_NONE, transform)));
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_EQ(applyToPixel(transform, {0, 1, 0, 1}), (std::array<float, 4>{16777216, 4294967296, 16777216, 1}));
}

TEST(create1DLutTransform, halfDomainIsAddressedByTheBitsOfAHalf)
{
    const TransformPtr transform = makeCurve(BIT_DEPTH_16f, BIT_DEPTH_32f, halfCodes(), HALF_FLAGS_HALF_DOMAIN);
    // 0, -0, 1 and, as alpha, 1.
    EXPECT_EQ((convertPixel<float, unsigned short>(transform, PF_RGBA_16f, PF_RGBA_32f, {0, 0x8000, 0x3c00, 0x3c00})),
              (std::array<float, 4>{0, 0x8000, 0x3c00, 1}));
    EXPECT_EQ((convertPixel<float, unsigned short>(transform, PF_RGBA_16f, PF_RGBA_32f, {1, 0x7bff, 0xfbff, 0xbc00})),
              (std::array<float, 4>{1, 0x7bff, 0xfbff, -1}));
}

TEST(create1DLutTransform, rawHalfsLeaveTheValuesPlainNumbers)
{
    const float values[2] = {0, 0x3c00}; // as a bit pattern the second would be 1
    TransformPtr transform;
    ASSERT_TRUE(succeeds(Create1DLutTransformFromFloat(BIT_DEPTH_32f, BIT_DEPTH_32f, 2, values, values, values,
                                                       HALF_FLAGS_RAW_HALFS, transform)));
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_EQ(applyToPixel(transform, {0, 0.5f, 1, 1}), (std::array<float, 4>{0, 7680, 15360, 1}));
    // That the flag is there shows when the transform is to be inverted.
    TransformPtr inverse;
    EXPECT_TRUE(
        failsWith(transform->inverse(inverse), 0x2040012, "Unsupported raw half output lut for inverse operation"));
    EXPECT_FALSE(inverse);
}

TEST(create1DLutTransform, bitsThatAreNoFlagAreIgnored)
{
    const TransformPtr transform = makeCurve(BIT_DEPTH_32f, BIT_DEPTH_32f, {0, 2}, HalfFlags(0xfffffffc));
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_EQ(applyToPixel(transform, {0, 0.5f, 1, 1}), (std::array<float, 4>{0, 1, 2, 1}));
    TransformPtr inverse;
    EXPECT_TRUE(succeeds(transform->inverse(inverse)));
}

TEST(create1DLutTransform, oneEntryIsAConstant)
{
    const TransformPtr transform = makeCurve(BIT_DEPTH_8i, BIT_DEPTH_32f, {0.75f});
    EXPECT_EQ((convertPixel<float, unsigned char>(transform, PF_RGBA_8i, PF_RGBA_32f, {0, 100, 255, 255})),
              (std::array<float, 4>{0.75f, 0.75f, 0.75f, 1}));
    EXPECT_EQ((convertPixel<float, float>(transform, PF_RGBA_32f, PF_RGBA_32f, {-1, 0.5f, 2, 1})),
              (std::array<float, 4>{0.75f, 0.75f, 0.75f, 1}));
}

TEST(create1DLutTransform, inverseUndoesIt)
{
    const TransformPtr transform = makeCurve(BIT_DEPTH_32f, BIT_DEPTH_32f, {0, 1, 4, 16, 64});
    TransformPtr inverse;
    ASSERT_TRUE(succeeds(transform->inverse(inverse)));
    ASSERT_TRUE(succeeds(finalizeForCPU(inverse, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_EQ(applyToPixel(inverse, {0, 2.5f, 64, 0.5f}), (std::array<float, 4>{0, 0.375f, 1, 0.5f}));
}

TEST(create1DLutTransform, entriesThatAreNotFiniteRenderAsFiniteOnes)
{
    const float largest = std::numeric_limits<float>::max();
    const TransformPtr transform = makeCurve(BIT_DEPTH_32f, BIT_DEPTH_32f, {-kInfinity, kNaN, kInfinity, 3, 5});
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_EQ(applyToPixel(transform, {0, 0.25f, 0.5f, 1}), (std::array<float, 4>{-largest, 0, largest, 1}));
    EXPECT_EQ(applyToPixel(transform, {0.125f, 0.875f, 1, 1}), (std::array<float, 4>{-largest / 2, 4, 5, 1}));
}

TEST(create1DLutTransform, refusesNullsAndLeavesTheResult)
{
    const float floats[2] = {0, 1};
    const unsigned ints[2] = {0, 1};
    const unsigned short shorts[2] = {0, 1};
    const TransformPtr before = makeScale({1, 1, 1, 1});
    TransformPtr result = before;
    EXPECT_TRUE(failsWith(
        Create1DLutTransformFromFloat(BIT_DEPTH_8i, BIT_DEPTH_8i, 2, nullptr, floats, floats, HALF_FLAGS_NONE, result),
        0x6030001, "NULL parameter: red"));
    EXPECT_TRUE(failsWith(
        Create1DLutTransformFromInt(BIT_DEPTH_8i, BIT_DEPTH_8i, 2, ints, nullptr, ints, HALF_FLAGS_NONE, result),
        0x6030001, "NULL parameter: green"));
    EXPECT_TRUE(failsWith(
        Create1DLutTransformFromShort(BIT_DEPTH_8i, BIT_DEPTH_8i, 2, shorts, shorts, nullptr, HALF_FLAGS_NONE, result),
        0x6030001, "NULL parameter: blue"));
    EXPECT_EQ(result.get(), before.get());
}

TEST(create1DLutTransform, refusesDepthsThatAreNone)
{
    const float values[2] = {0, 1};
    for (const BitDepth depth : kNoDepths) {
        TransformPtr result;
        EXPECT_TRUE(failsWith(
            Create1DLutTransformFromFloat(depth, BIT_DEPTH_8i, 2, values, values, values, HALF_FLAGS_NONE, result),
            0x2010001, "'InBitDepth' attribute missing in <id>"));
        EXPECT_TRUE(failsWith(
            Create1DLutTransformFromFloat(BIT_DEPTH_8i, depth, 2, values, values, values, HALF_FLAGS_NONE, result),
            0x2010001, "'OutBitDepth' attribute missing in <id>"));
        EXPECT_FALSE(result);
    }
}

// The tables of the next two hold one value only: none of them is read.

TEST(create1DLutTransform, refusesLengthsOutOfBounds)
{
    const float value[1] = {0};
    TransformPtr result;
    EXPECT_TRUE(failsWith(
        Create1DLutTransformFromFloat(BIT_DEPTH_8i, BIT_DEPTH_8i, 0, value, value, value, HALF_FLAGS_NONE, result),
        0x2010004, "Array content empty: Array content for <id> illegal"));
    for (const unsigned length : {16777217u, 0x55555556u, 0xffffffffu}) {
        EXPECT_TRUE(failsWith(Create1DLutTransformFromFloat(BIT_DEPTH_8i, BIT_DEPTH_8i, length, value, value, value,
                                                            HALF_FLAGS_NONE, result),
                              0x2010005, "Array content illegal: Array content for <id> illegal"));
    }
    EXPECT_FALSE(result);
}

TEST(create1DLutTransform, refusesAHalfDomainOfAnotherLength)
{
    const unsigned short value[1] = {0};
    for (const unsigned length : {1u, 1024u, 65535u, 65537u, 16777216u}) {
        for (const HalfFlags flags : {HALF_FLAGS_HALF_DOMAIN, HALF_FLAGS_HALF_DOMAIN_RAW_HALFS}) {
            TransformPtr result;
            EXPECT_TRUE(failsWith(
                Create1DLutTransformFromShort(BIT_DEPTH_16f, BIT_DEPTH_16i, length, value, value, value, flags, result),
                0x204000e, std::to_string(length) + " entries found, 65536 req'd for halfDomain lut LUT 1D: <id> "));
            EXPECT_FALSE(result);
        }
    }
}

TEST(create1DLutTransform, refusesAnEmptyHalfDomainAsEmpty)
{
    const unsigned short value[1] = {0};
    TransformPtr result;
    EXPECT_TRUE(failsWith(Create1DLutTransformFromShort(BIT_DEPTH_16f, BIT_DEPTH_16i, 0, value, value, value,
                                                        HALF_FLAGS_HALF_DOMAIN, result),
                          0x2010004, "Array content empty: Array content for <id> illegal"));
    EXPECT_FALSE(result);
}

TEST(create3DLutTransform, makesAFreshTransform)
{
    TransformPtr transform;
    ASSERT_TRUE(succeeds(
        Create3DLutTransformFromFloat(BIT_DEPTH_12i, BIT_DEPTH_16f, 2, makePlaces<float>().data(), transform)));
    expectFresh(transform, BIT_DEPTH_12i, BIT_DEPTH_16f);
}

TEST(create3DLutTransform, blueVariesFastestAndRedSlowest)
{
    TransformPtr transform;
    ASSERT_TRUE(succeeds(
        Create3DLutTransformFromFloat(BIT_DEPTH_32f, BIT_DEPTH_32f, 2, makePlaces<float>().data(), transform)));
    expectPlaces(transform);
    ASSERT_TRUE(succeeds(
        Create3DLutTransformFromInt(BIT_DEPTH_32f, BIT_DEPTH_32f, 2, makePlaces<unsigned>().data(), transform)));
    expectPlaces(transform);
    ASSERT_TRUE(succeeds(Create3DLutTransformFromShort(BIT_DEPTH_32f, BIT_DEPTH_32f, 2,
                                                       makePlaces<unsigned short>().data(), transform)));
    expectPlaces(transform);
}

TEST(create3DLutTransform, valuesAreInTheScaleOfTheOutputDepth)
{
    std::vector<unsigned short> negative(24);
    for (unsigned i = 0; i < 8; ++i) {
        negative[3 * i] = i & 4 ? 0 : 255;
        negative[3 * i + 1] = i & 2 ? 0 : 255;
        negative[3 * i + 2] = i & 1 ? 0 : 255;
    }
    TransformPtr transform;
    ASSERT_TRUE(succeeds(Create3DLutTransformFromShort(BIT_DEPTH_8i, BIT_DEPTH_8i, 2, negative.data(), transform)));
    EXPECT_EQ((convertPixel<unsigned char, unsigned char>(transform, PF_RGBA_8i, PF_RGBA_8i, {0, 100, 255, 33})),
              (std::array<unsigned char, 4>{255, 155, 0, 33}));
    EXPECT_EQ((convertPixel<float, float>(transform, PF_RGBA_32f, PF_RGBA_32f, {0, 0.5f, 1, 0.25f})),
              (std::array<float, 4>{1, 0.5f, 0, 0.25f}));
}

TEST(create3DLutTransform, oneGridPointIsAConstant)
{
    const float colour[3] = {0.25f, 0.5f, 0.75f};
    TransformPtr transform;
    ASSERT_TRUE(succeeds(Create3DLutTransformFromFloat(BIT_DEPTH_32f, BIT_DEPTH_32f, 1, colour, transform)));
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_EQ(applyToPixel(transform, {0, 0.3f, 1, 1}), (std::array<float, 4>{0.25f, 0.5f, 0.75f, 1}));
    EXPECT_EQ(applyToPixel(transform, {-kInfinity, kNaN, kInfinity, 1}), (std::array<float, 4>{0.25f, 0.5f, 0.75f, 1}));
}

TEST(create3DLutTransform, takesTheLargestGridAndNoLarger)
{
    // Black but for the last colour, which is that of white.
    std::vector<unsigned short> values(129 * 129 * 129 * 3);
    values[values.size() - 3] = 1;
    values[values.size() - 2] = 2;
    values[values.size() - 1] = 3;
    TransformPtr transform;
    ASSERT_TRUE(succeeds(Create3DLutTransformFromShort(BIT_DEPTH_32f, BIT_DEPTH_32f, 129, values.data(), transform)));
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_EQ(applyToPixel(transform, {1, 1, 1, 1}), (std::array<float, 4>{1, 2, 3, 1}));
    EXPECT_EQ(applyToPixel(transform, {0, 0, 0, 1}), (std::array<float, 4>{0, 0, 0, 1}));

    // None of the values is read.
    const float value[1] = {0};
    TransformPtr result;
    for (const unsigned dimension : {130u, 65536u, 0xffffffffu}) {
        EXPECT_TRUE(failsWith(Create3DLutTransformFromFloat(BIT_DEPTH_32f, BIT_DEPTH_32f, dimension, value, result),
                              0x205000d, std::to_string(dimension) + " exceeds maximum supported dimension 129"));
    }
    EXPECT_TRUE(failsWith(Create3DLutTransformFromFloat(BIT_DEPTH_32f, BIT_DEPTH_32f, 0, value, result), 0x2010004,
                          "Array content empty: Array content for <id> illegal"));
    EXPECT_FALSE(result);
}

TEST(create3DLutTransform, refusesNullsAndDepthsAndLeavesTheResult)
{
    const TransformPtr before = makeScale({1, 1, 1, 1});
    TransformPtr result = before;
    EXPECT_TRUE(failsWith(Create3DLutTransformFromFloat(BIT_DEPTH_8i, BIT_DEPTH_8i, 2, nullptr, result), 0x6030001,
                          "NULL parameter: values"));
    EXPECT_TRUE(failsWith(Create3DLutTransformFromInt(BIT_DEPTH_8i, BIT_DEPTH_8i, 2, nullptr, result), 0x6030001,
                          "NULL parameter: values"));
    EXPECT_TRUE(failsWith(Create3DLutTransformFromShort(BIT_DEPTH_8i, BIT_DEPTH_8i, 2, nullptr, result), 0x6030001,
                          "NULL parameter: values"));
    const std::vector<float> values = makePlaces<float>();
    for (const BitDepth depth : kNoDepths) {
        EXPECT_TRUE(failsWith(Create3DLutTransformFromFloat(depth, BIT_DEPTH_8i, 2, values.data(), result), 0x2010001,
                              "'InBitDepth' attribute missing in <id>"));
        EXPECT_TRUE(failsWith(Create3DLutTransformFromFloat(BIT_DEPTH_8i, depth, 2, values.data(), result), 0x2010001,
                              "'OutBitDepth' attribute missing in <id>"));
    }
    EXPECT_EQ(result.get(), before.get());
}

TEST(create3DLutTransform, hasNoInverse)
{
    TransformPtr transform;
    ASSERT_TRUE(succeeds(
        Create3DLutTransformFromFloat(BIT_DEPTH_32f, BIT_DEPTH_32f, 2, makePlaces<float>().data(), transform)));
    TransformPtr inverse;
    EXPECT_TRUE(failsWith(transform->inverse(inverse), 0x2010014, "LUT 3D inverse not supported"));
    EXPECT_FALSE(inverse);
}

TEST(createDitherTransform, spreadsTheErrorOfRounding)
{
    TransformPtr transform;
    ASSERT_TRUE(succeeds(CreateDitherTransform(BIT_DEPTH_32f, BIT_DEPTH_32f, BIT_DEPTH_8i, transform)));
    expectFresh(transform, BIT_DEPTH_32f, BIT_DEPTH_32f);
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));

    // A grey between the codes 127 and 128, on which a quarter of the pixels of a pattern shall become 128.
    const float grey = 127.25f / 255;
    std::vector<float> image(16 * 16 * 4, grey);
    ASSERT_TRUE(succeeds(transform->apply(image.data(), ROI(0, 0, 16, 16), image.data())));
    for (std::size_t channel = 0; channel < 3; ++channel) {
        unsigned above = 0;
        for (std::size_t i = channel; i < image.size(); i += 4) {
            EXPECT_LE(std::fabs(image[i] - grey), 0.5f / 255);
            if (std::floor(image[i] * 255 + 0.5f) == 128) ++above;
        }
        EXPECT_EQ(above, 64u);
    }
}

TEST(createDitherTransform, doesNothingWhenTheInputIsNoFiner)
{
    TransformPtr transform;
    ASSERT_TRUE(succeeds(CreateDitherTransform(BIT_DEPTH_8i, BIT_DEPTH_8i, BIT_DEPTH_10i, transform)));
    EXPECT_EQ((convertPixel<unsigned char, unsigned char>(transform, PF_RGBA_8i, PF_RGBA_8i, {0, 100, 255, 33})),
              (std::array<unsigned char, 4>{0, 100, 255, 33}));
}

TEST(createDitherTransform, refusesDepthsThatAreNone)
{
    for (const BitDepth depth : kNoDepths) {
        TransformPtr result;
        EXPECT_TRUE(failsWith(CreateDitherTransform(depth, BIT_DEPTH_8i, BIT_DEPTH_8i, result), 0x2010001,
                              "'InBitDepth' attribute missing in <id>"));
        EXPECT_TRUE(failsWith(CreateDitherTransform(BIT_DEPTH_16f, depth, BIT_DEPTH_8i, result), 0x2010001,
                              "'OutBitDepth' attribute missing in <id>"));
        EXPECT_TRUE(failsWith(CreateDitherTransform(BIT_DEPTH_16f, BIT_DEPTH_8i, depth, result), 0x2010001,
                              "'DitherBitDepth' attribute missing in <id>"));
        EXPECT_FALSE(result);
    }
}

TEST(createDitherTransform, hasNoInverse)
{
    TransformPtr transform;
    ASSERT_TRUE(succeeds(CreateDitherTransform(BIT_DEPTH_32f, BIT_DEPTH_32f, BIT_DEPTH_8i, transform)));
    TransformPtr inverse;
    EXPECT_TRUE(failsWith(transform->inverse(inverse), 0x2010014, "Dither inverse not supported"));
    EXPECT_FALSE(inverse);
}
