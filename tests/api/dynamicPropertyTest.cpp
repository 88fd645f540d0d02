#include "tests/api/hostTools.h"

#include <atomic>
#include <limits>
#include <thread>

using namespace Morvane;

namespace {

TransformPtr makeRaw()
{
    TransformPtr transform;
    EXPECT_TRUE(succeeds(createStockTransform(STOCK_TRANSFORM_RAW, transform)));
    return transform;
}

/// The raw transform and then a matrix of factor 2 that can be bypassed.
TransformPtr makeRawAndSwitch()
{
    TransformPtr transform;
    EXPECT_TRUE(succeeds(concatenateTransforms(
        makeRaw(),
        fromText(document("<Matrix inBitDepth=\"16f\" outBitDepth=\"16f\"><DynamicParameter param=\"LOOK_SWITCH\"/>"
                          "<Array dim=\"3 3 3\">2 0 0 0 2 0 0 0 2</Array></Matrix>")),
        transform)));
    return transform;
}

MorvaneStatus set(const TransformPtr& transform, DynamicProperty::Ids id, double value)
{
    DynamicProperty property(id);
    property.setValue(value);
    return transform->setDynamicProperty(property);
}

/// NaN when it cannot be read.
double get(const TransformPtr& transform, DynamicProperty::Ids id)
{
    DynamicProperty property(id);
    property.setValue(std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(succeeds(transform->getDynamicProperty(property)));
    return property.getValue();
}

float applyToGrey(const TransformPtr& transform, float grey)
{
    return applyToPixel(transform, {grey, grey, grey, 1})[0];
}

} // namespace

TEST(dynamicProperty, rawTransformStartsNeutral)
{
    const TransformPtr transform = makeRaw();
    EXPECT_EQ(get(transform, DynamicProperty::EXPOSURE), 0.0);
    EXPECT_EQ(get(transform, DynamicProperty::CONTRAST), 1.0);
}

TEST(dynamicProperty, valueSetBeforeFinalizeIsUsed)
{
    const TransformPtr transform = makeRaw();
    ASSERT_TRUE(succeeds(set(transform, DynamicProperty::EXPOSURE, 1.0)));
    EXPECT_EQ(get(transform, DynamicProperty::EXPOSURE), 1.0);
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_EQ(applyToPixel(transform, {0.5f, -1, 3, 0.25f}), (std::array<float, 4>{1, -2, 6, 0.25f}));
}

TEST(dynamicProperty, exposureSetAfterFinalizeShowsInTheNextApply)
{
    const TransformPtr transform = makeRaw();
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_EQ(applyToGrey(transform, 0.5f), 0.5f);
    ASSERT_TRUE(succeeds(set(transform, DynamicProperty::EXPOSURE, 2.0)));
    EXPECT_EQ(applyToGrey(transform, 0.5f), 2.f);
    ASSERT_TRUE(succeeds(set(transform, DynamicProperty::EXPOSURE, -1.0)));
    EXPECT_EQ(applyToGrey(transform, 0.5f), 0.25f);
    EXPECT_EQ(get(transform, DynamicProperty::EXPOSURE), -1.0);
}

TEST(dynamicProperty, exposureReachesImagesOfCodes)
{
    const TransformPtr transform = makeRaw();
    EXPECT_EQ((convertPixel<unsigned char, unsigned char>(transform, PF_RGBA_8i, PF_RGBA_8i, {0, 20, 200, 9})),
              (std::array<unsigned char, 4>{0, 20, 200, 9}));
    ASSERT_TRUE(succeeds(set(transform, DynamicProperty::EXPOSURE, 1.0)));
    const unsigned char source[4] = {0, 20, 200, 9};
    unsigned char result[4] = {};
    ASSERT_TRUE(succeeds(transform->apply(source, ROI(0, 0, 1, 1), result)));
    EXPECT_EQ(result[0], 0);
    EXPECT_EQ(result[1], 40);
    EXPECT_EQ(result[2], 255);
    EXPECT_EQ(result[3], 9);
}

TEST(dynamicProperty, contrastSetAfterFinalizeShowsInTheNextApply)
{
    const TransformPtr transform = makeRaw();
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    ASSERT_TRUE(succeeds(set(transform, DynamicProperty::CONTRAST, 2.0)));
    EXPECT_NEAR(applyToGrey(transform, 0.5f), 0.25f, 1e-4f);
    // Exposure comes first, and the pivot is 1.
    ASSERT_TRUE(succeeds(set(transform, DynamicProperty::EXPOSURE, 1.0)));
    EXPECT_NEAR(applyToGrey(transform, 0.25f), 0.25f, 1e-4f);
    EXPECT_NEAR(applyToGrey(transform, 1), 4.f, 1e-3f);
    ASSERT_TRUE(succeeds(set(transform, DynamicProperty::CONTRAST, 1.0)));
    EXPECT_EQ(applyToGrey(transform, 0.25f), 0.5f);
}

TEST(dynamicProperty, bypassSetAfterFinalizeShowsInTheNextApply)
{
    const TransformPtr transform = makeRawAndSwitch();
    EXPECT_EQ(get(transform, DynamicProperty::BYPASS), 0.0);
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_EQ(applyToGrey(transform, 0.5f), 1.f);
    ASSERT_TRUE(succeeds(set(transform, DynamicProperty::BYPASS, 1.0)));
    EXPECT_EQ(get(transform, DynamicProperty::BYPASS), 1.0);
    EXPECT_EQ(applyToGrey(transform, 0.5f), 0.5f);
    ASSERT_TRUE(succeeds(set(transform, DynamicProperty::EXPOSURE, 1.0)));
    EXPECT_EQ(applyToGrey(transform, 0.5f), 1.f);
    ASSERT_TRUE(succeeds(set(transform, DynamicProperty::BYPASS, 0.0)));
    EXPECT_EQ(applyToGrey(transform, 0.5f), 2.f);
}

TEST(dynamicProperty, setReachesEveryOperatorAndGetReadsTheFirst)
{
    TransformPtr transform;
    ASSERT_TRUE(succeeds(concatenateTransforms(makeRaw(), makeRaw(), transform)));
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    ASSERT_TRUE(succeeds(set(transform, DynamicProperty::EXPOSURE, 1.0)));
    EXPECT_EQ(applyToGrey(transform, 0.5f), 2.f);
    EXPECT_EQ(get(transform, DynamicProperty::EXPOSURE), 1.0);
}

TEST(dynamicProperty, clonesShareTheValue)
{
    const TransformPtr transform = makeRawAndSwitch();
    const TransformPtr clone = transform->clone();
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    ASSERT_TRUE(succeeds(finalizeForCPU(clone, PF_RGBA_32f, PF_RGBA_32f)));
    ASSERT_TRUE(succeeds(set(clone, DynamicProperty::EXPOSURE, 1.0)));
    ASSERT_TRUE(succeeds(set(transform, DynamicProperty::BYPASS, 1.0)));
    EXPECT_EQ(get(transform, DynamicProperty::EXPOSURE), 1.0);
    EXPECT_EQ(get(clone, DynamicProperty::BYPASS), 1.0);
    EXPECT_EQ(applyToGrey(transform, 0.5f), 1.f);
    EXPECT_EQ(applyToGrey(clone, 0.5f), 1.f);
}

// Exposure and contrast are a viewer's controls: the inverse of a transform does with them what the transform does.
TEST(dynamicProperty, inverseHasTheSameExposure)
{
    const TransformPtr transform = makeRaw();
    TransformPtr inverse;
    ASSERT_TRUE(succeeds(transform->inverse(inverse)));
    ASSERT_TRUE(succeeds(finalizeForCPU(inverse, PF_RGBA_32f, PF_RGBA_32f)));
    ASSERT_TRUE(succeeds(set(transform, DynamicProperty::EXPOSURE, 1.0)));
    EXPECT_EQ(get(inverse, DynamicProperty::EXPOSURE), 1.0);
    EXPECT_EQ(applyToGrey(inverse, 0.5f), 1.f);
}

TEST(dynamicProperty, valueThatIsNotDynamicCannotBeReached)
{
    const struct
    {
        TransformPtr transform;
        DynamicProperty::Ids id;
        const char* message;
    } cases[] = {
        {makeRaw(), DynamicProperty::BYPASS, "Dynamic property Bypass not available in "},
        {makeRaw(), DynamicProperty::Ids(3), "Dynamic property invalid property not available in "},
        {makeScale({1, 1, 1, 1}), DynamicProperty::EXPOSURE, "Dynamic property Exposure not available in "},
        {makeScale({1, 1, 1, 1}), DynamicProperty::CONTRAST, "Dynamic property Contrast not available in "},
        {makeScale({1, 1, 1, 1}), DynamicProperty::BYPASS, "Dynamic property Bypass not available in "},
    };
    for (const auto& one : cases) {
        DynamicProperty property(one.id);
        property.setValue(5);
        EXPECT_TRUE(failsWith(one.transform->setDynamicProperty(property), 0x2010013, one.message));
        EXPECT_TRUE(failsWith(one.transform->getDynamicProperty(property), 0x2010013, one.message));
        EXPECT_EQ(property.getValue(), 5.0);
    }
}

TEST(dynamicProperty, changesWhileAnotherThreadAppliesAndEachLineHasOneValue)
{
    constexpr unsigned kWidth = 600; // more than the processor takes at once
    constexpr unsigned kHeight = 8;
    const TransformPtr transform = makeRaw();
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));

    std::atomic<bool> isDone(false);
    std::thread host([&] {
        while (!isDone) {
            for (const double stops : {0.0, 1.0, 2.0})
                EXPECT_TRUE(succeeds(set(transform, DynamicProperty::EXPOSURE, stops)));
        }
    });
    const std::vector<float> source(kWidth * kHeight * 4, 1.f);
    std::vector<float> result(source.size());
    unsigned strayPixels = 0;
    for (int round = 0; round < 200; ++round) {
        EXPECT_TRUE(succeeds(transform->apply(source.data(), ROI(0, 0, kWidth, kHeight), result.data())));
        for (unsigned y = 0; y < kHeight; ++y) {
            const float* line = &result[y * kWidth * 4];
            EXPECT_TRUE(line[0] == 1.f || line[0] == 2.f || line[0] == 4.f) << line[0];
            for (unsigned x = 0; x < kWidth; ++x)
                strayPixels += line[4 * x] != line[0];
        }
    }
    EXPECT_EQ(strayPixels, 0u);
    isDone = true;
    host.join();
}
