#include "tests/api/hostTools.h"

using namespace Morvane;

namespace {

const float kMatrix3x3[9] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
const float kOffsets3[3] = {0.5f, 1.f, 1.5f};

} // namespace

TEST(createMatrixTransform, makesAFreshTransform)
{
    TransformPtr transform;
    ASSERT_TRUE(succeeds(CreateMatrixTransform(BIT_DEPTH_10i, BIT_DEPTH_16f, kMatrix3x3, kOffsets3, false, transform)));
    expectFresh(transform, BIT_DEPTH_10i, BIT_DEPTH_16f);
    TransformPtr second;
    ASSERT_TRUE(succeeds(CreateMatrixTransform(BIT_DEPTH_10i, BIT_DEPTH_16f, kMatrix3x3, kOffsets3, false, second)));
    EXPECT_STRNE(transform->getId(), second->getId());
}

TEST(createMatrixTransform, takesThreeByThree)
{
    TransformPtr transform;
    ASSERT_TRUE(succeeds(CreateMatrixTransform(BIT_DEPTH_32f, BIT_DEPTH_32f, kMatrix3x3, kOffsets3, false, transform)));
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_EQ(applyToPixel(transform, {1, 10, 100, 0.5f}), (std::array<float, 4>{321.5f, 655.f, 988.5f, 0.5f}));
}

TEST(createMatrixTransform, takesFourByFour)
{
    const float matrix[16] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    const float offsets[4] = {0.25f, 0.5f, 0.75f, 1.f};
    TransformPtr transform;
    ASSERT_TRUE(succeeds(CreateMatrixTransform(BIT_DEPTH_32f, BIT_DEPTH_32f, matrix, offsets, true, transform)));
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_EQ(applyToPixel(transform, {1, 10, 100, 1000}),
              (std::array<float, 4>{4321.25f, 8765.5f, 13209.75f, 17654.f}));
}

TEST(createMatrixTransform, valuesHoldTheRatioOfTheDepths)
{
    const float diagonal = 1.f / 255.f;
    const float matrix[9] = {diagonal, 0, 0, 0, diagonal, 0, 0, 0, diagonal};
    const float offsets[3] = {};
    TransformPtr transform;
    ASSERT_TRUE(succeeds(CreateMatrixTransform(BIT_DEPTH_8i, BIT_DEPTH_32f, matrix, offsets, false, transform)));
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_8i, PF_RGBA_32f)));
    const unsigned char source[4] = {255, 51, 0, 255};
    float destination[4] = {};
    ASSERT_TRUE(succeeds(transform->apply(source, ROI(0, 0, 1, 1), destination)));
    EXPECT_EQ(destination[0], 1.f);
    EXPECT_FLOAT_EQ(destination[1], 0.2f);
    EXPECT_EQ(destination[2], 0.f);
    EXPECT_EQ(destination[3], 1.f);
}

TEST(createMatrixTransform, refusesNullsAndLeavesTheResult)
{
    TransformPtr result;
    EXPECT_TRUE(failsWith(CreateMatrixTransform(BIT_DEPTH_8i, BIT_DEPTH_8i, kMatrix3x3, nullptr, false, result),
                          0x203000e, "Invalid matrix offsets values "));
    EXPECT_FALSE(result);
    const std::array<float, 16> matrix{};
    EXPECT_TRUE(failsWith(CreateMatrixTransform(BIT_DEPTH_8i, BIT_DEPTH_8i, matrix.data(), nullptr, true, result),
                          0x203000e, "Invalid matrix offsets values "));
    EXPECT_FALSE(result);
    EXPECT_TRUE(failsWith(CreateMatrixTransform(BIT_DEPTH_8i, BIT_DEPTH_8i, nullptr, kOffsets3, false, result),
                          0x6030001, "NULL parameter: matrix"));
    EXPECT_FALSE(result);
    const TransformPtr before = makeScale({1, 1, 1, 1});
    result = before;
    EXPECT_FALSE(CreateMatrixTransform(BIT_DEPTH_8i, BIT_DEPTH_8i, kMatrix3x3, nullptr, false, result));
    EXPECT_EQ(result.get(), before.get());
}

TEST(createMatrixTransform, refusesDepthsThatAreNone)
{
    const BitDepth none[] = {BIT_DEPTH_UNKNOWN, BitDepth(1), BitDepth(0x3000), BitDepth(0xffffffff)};
    for (const BitDepth depth : none) {
        TransformPtr result;
        EXPECT_TRUE(failsWith(CreateMatrixTransform(depth, BIT_DEPTH_8i, kMatrix3x3, kOffsets3, false, result),
                              0x2010001, "'InBitDepth' attribute missing in <id>"));
        EXPECT_TRUE(failsWith(CreateMatrixTransform(BIT_DEPTH_8i, depth, kMatrix3x3, kOffsets3, false, result),
                              0x2010001, "'OutBitDepth' attribute missing in <id>"));
        EXPECT_FALSE(result);
    }
}

TEST(createStockTransform, identityLeavesPixelsAlone)
{
    TransformPtr transform;
    ASSERT_TRUE(succeeds(createStockTransform(STOCK_TRANSFORM_IDENTITY, transform)));
    EXPECT_TRUE(isUuid(transform->getId()));
    EXPECT_STREQ(transform->getName(), "Stock Identity Transform");
    EXPECT_STREQ(transform->getDescription(), "Identity transform.");
    EXPECT_STREQ(transform->getInputDescriptor(), "");
    EXPECT_STREQ(transform->getOutputDescriptor(), "");
    EXPECT_EQ(transform->getInputBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(transform->getOutputBitDepth(), BIT_DEPTH_16f);
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_EQ(applyToPixel(transform, {-1, 0.1f, 70000, 2}), (std::array<float, 4>{-1, 0.1f, 70000, 2}));
}

TEST(createStockTransform, rawLeavesPixelsAloneUntilAHostSetsItsExposureOrContrast)
{
    TransformPtr transform;
    ASSERT_TRUE(succeeds(createStockTransform(STOCK_TRANSFORM_RAW, transform)));
    EXPECT_TRUE(isUuid(transform->getId()));
    EXPECT_STREQ(transform->getName(), "Stock Raw Transform");
    EXPECT_STREQ(transform->getDescription(), "Identity transform with linear dynamic exposure contrast controls.");
    EXPECT_STREQ(transform->getInputDescriptor(), "");
    EXPECT_STREQ(transform->getOutputDescriptor(), "");
    EXPECT_EQ(transform->getInputBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(transform->getOutputBitDepth(), BIT_DEPTH_16f);
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_EQ(applyToPixel(transform, {-1, 0.1f, 70000, 2}), (std::array<float, 4>{-1, 0.1f, 70000, 2}));
}

TEST(createStockTransform, valueThatIsNoneGivesATransformWithoutOps)
{
    TransformPtr transform;
    ASSERT_TRUE(succeeds(createStockTransform(StockTransform(77), transform)));
    EXPECT_TRUE(isUuid(transform->getId()));
    EXPECT_STREQ(transform->getName(), "none");
    TransformPtr inverse;
    EXPECT_TRUE(failsWith(transform->inverse(inverse), 0x2010008, "Empty transform"));
}

TEST(concatenateTransforms, doesTheFirstAndThenTheSecond)
{
    const TransformPtr first = makeScale({2, 2, 2, 1});
    first->setDescription("one");
    first->setInputDescriptor("in");
    first->setOutputDescriptor("middle");
    const TransformPtr second = makeScale({1, 1, 1, 1}, {1, 2, 3, 0});
    second->setDescription("two");
    second->setInputDescriptor("middle");
    second->setOutputDescriptor("out");
    TransformPtr result;
    ASSERT_TRUE(succeeds(concatenateTransforms(first, second, result)));
    EXPECT_STREQ(result->getDescription(), "one\ntwo");
    EXPECT_STREQ(result->getInputDescriptor(), "in");
    EXPECT_STREQ(result->getOutputDescriptor(), "out");
    ASSERT_TRUE(succeeds(finalizeForCPU(result, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_EQ(applyToPixel(result, {1, 1, 1, 1}), (std::array<float, 4>{3, 4, 5, 1}));
    EXPECT_STREQ(first->getDescription(), "one");
    EXPECT_STREQ(second->getDescription(), "two");
    EXPECT_STREQ(first->getOutputDescriptor(), "middle");
}

TEST(concatenateTransforms, resultMayBeAnArgument)
{
    TransformPtr transform = makeScale({2, 2, 2, 1});
    ASSERT_TRUE(succeeds(concatenateTransforms(transform, transform, transform)));
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_EQ(applyToPixel(transform, {1, 2, 3, 4}), (std::array<float, 4>{4, 8, 12, 4}));
}

TEST(concatenateTransforms, refusesNullHandles)
{
    const TransformPtr transform = makeScale({1, 1, 1, 1});
    TransformPtr result = transform;
    const char* message = "Transform was NULL when attempting to concatenate";
    EXPECT_TRUE(failsWith(concatenateTransforms(TransformPtr(), transform, result), 0x204000f, message));
    EXPECT_TRUE(failsWith(concatenateTransforms(transform, TransformPtr(), result), 0x204000f, message));
    EXPECT_TRUE(failsWith(concatenateTransforms(TransformPtr(), TransformPtr(), result), 0x204000f, message));
    EXPECT_EQ(result.get(), transform.get());
}
