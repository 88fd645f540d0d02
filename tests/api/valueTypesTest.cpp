#include "morvane/morvane.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace Morvane;

TEST(valueTypes, bitDepthsHaveNamesAndRanges)
{
    EXPECT_STREQ(getBitDepthName(BIT_DEPTH_10i), "10i");
    EXPECT_STREQ(getBitDepthName(BitDepth(3)), "Unknown");
    EXPECT_EQ(getBitDepth("16f"), BIT_DEPTH_16f);
    EXPECT_EQ(getBitDepth("16F"), BIT_DEPTH_UNKNOWN);
    EXPECT_EQ(getBitDepth(nullptr), BIT_DEPTH_UNKNOWN);
    EXPECT_EQ(getBitDepthMaxValue(BIT_DEPTH_12i), 4095.f);
    EXPECT_EQ(getBitDepthMinValue(BIT_DEPTH_12i), 0.f);
    EXPECT_EQ(getBitDepthValueRange(BIT_DEPTH_8i), 255.f);
    EXPECT_EQ(getBitDepthPrecision(BIT_DEPTH_16f), 16u);
    EXPECT_TRUE(isFloatDepth(BIT_DEPTH_32f));
    EXPECT_FALSE(isFloatDepth(BIT_DEPTH_16i));
    EXPECT_TRUE(isIntegerDepth(BIT_DEPTH_16i));
    EXPECT_FALSE(isIntegerDepth(BIT_DEPTH_UNKNOWN));
}

TEST(valueTypes, pixelFormatsHaveNamesAndSizes)
{
    EXPECT_STREQ(pfToStr(PF_RGB_10iP), "PF_RGB_10iP");
    EXPECT_STREQ(pfToStr(PF_UNKNOWN), "Unknown");
    EXPECT_EQ(strToPF("PF_ABGR_32f"), PF_ABGR_32f);
    EXPECT_EQ(strToPF("pf_abgr_32f"), PF_UNKNOWN);
    EXPECT_EQ(strToPF(nullptr), PF_UNKNOWN);
    EXPECT_EQ(getNumChannels(PF_BGR_8i), 3u);
    EXPECT_EQ(getPixelSizeInByte(PF_RGBA_16f), 8u);
    EXPECT_EQ(getPixelSizeInByte(PixelFormat(1)), 0u);
}

TEST(valueTypes, regionsTellTheirNumbers)
{
    const ROI region(1, 2, 3, 4, 5, 6);
    ROI copy(0, 0, 7, 8);
    EXPECT_EQ(copy.getImageWidth(), 7u);
    EXPECT_EQ(copy.getImageHeight(), 8u);
    copy = region;
    EXPECT_EQ(copy.getX(), 1u);
    EXPECT_EQ(copy.getY(), 2u);
    EXPECT_EQ(copy.getActiveWidth(), 3u);
    EXPECT_EQ(copy.getActiveHeight(), 4u);
    EXPECT_EQ(copy.getImageWidth(), 5u);
    EXPECT_EQ(copy.getImageHeight(), 6u);
    EXPECT_EQ(copy.getNumROIPixels(), 12u);
    EXPECT_EQ(getImageSizeInByte(ROI(region), PF_RGB_8i), 36u);
}

TEST(valueTypes, verticesOfARectangleRunAroundIt)
{
    const Rect rect(1, 2, 10, 20);
    EXPECT_EQ(rect.getX(), 1.f);
    EXPECT_EQ(rect.getY(), 2.f);
    EXPECT_EQ(rect.getWidth(), 10.f);
    EXPECT_EQ(rect.getHeight(), 20.f);
    Vertices vertices(0, 0, 0, 0, 0, 0, 0, 0);
    vertices = Vertices(rect);
    const Vertices copy(vertices);
    EXPECT_EQ(copy.getX1(), 1.f);
    EXPECT_EQ(copy.getY1(), 2.f);
    EXPECT_EQ(copy.getX2(), 1.f);
    EXPECT_EQ(copy.getY2(), 22.f);
    EXPECT_EQ(copy.getX3(), 11.f);
    EXPECT_EQ(copy.getY3(), 22.f);
    EXPECT_EQ(copy.getX4(), 11.f);
    EXPECT_EQ(copy.getY4(), 2.f);
}

TEST(valueTypes, mixingSliderFollowsItsCurve)
{
    MixingSliderUnits units;
    EXPECT_EQ(units.getSliderMinEdge(), 0.f);
    EXPECT_EQ(units.getSliderMaxEdge(), 1.f);
    EXPECT_FLOAT_EQ(units.mixingToSlider(0.09f), 0.3f);
    EXPECT_FLOAT_EQ(units.sliderToMixing(0.3f), 0.09f);
    units.setSliderMaxEdge(10.f);
    EXPECT_FLOAT_EQ(units.getSliderMaxEdge(), 0.55f + 0.8338642f);
    units.setSliderMinEdge(-1.f);
    EXPECT_FLOAT_EQ(units.getSliderMinEdge(), -0.5f);
    MixingSliderUnits other(0.09f, 10.f);
    EXPECT_FLOAT_EQ(other.getSliderMinEdge(), 0.3f);
    other = units;
    EXPECT_EQ(MixingSliderUnits(other).getSliderMinEdge(), units.getSliderMinEdge());
}

TEST(valueTypes, basePathsHaveNames)
{
    EXPECT_STREQ(getBasePathName(BASE_PATH_BRELWICK), "Brelwick");
    EXPECT_STREQ(getBasePathName(BASE_PATH_SHARED), "Shared");
    EXPECT_STREQ(getBasePathName(BASE_PATH_NONE), "");
    EXPECT_EQ(getBasePath("shared"), BASE_PATH_SHARED);
    EXPECT_EQ(getBasePath("BRELWICK"), BASE_PATH_BRELWICK);
    EXPECT_EQ(getBasePath("elsewhere"), BASE_PATH_NONE);
    EXPECT_EQ(getBasePath(nullptr), BASE_PATH_NONE);
}

TEST(valueTypes, dynamicPropertyCarriesAValue)
{
    DynamicProperty exposure(DynamicProperty::EXPOSURE);
    exposure.setValue(1.5);
    DynamicProperty copy(exposure);
    DynamicProperty assigned(DynamicProperty::BYPASS);
    assigned = copy;
    EXPECT_EQ(assigned.getId(), DynamicProperty::EXPOSURE);
    EXPECT_EQ(assigned.getValue(), 1.5);
    EXPECT_STREQ(DynamicProperty::getName(DynamicProperty::CONTRAST), "Contrast");
    EXPECT_STREQ(DynamicProperty::getName(static_cast<DynamicProperty::Ids>(3)), "invalid property");
}
