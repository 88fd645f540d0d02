#include "morvane/mixingSliderUnits.h"

#include <gtest/gtest.h>

namespace {

using Morvane_2015_1_42::MixingSliderUnits;

TEST(MixingSliderUnits, defaultEdgesAreZeroAndOne)
{
    const MixingSliderUnits units;
    EXPECT_EQ(units.getSliderMinEdge(), 0.0f);
    EXPECT_EQ(units.getSliderMaxEdge(), 1.0f);
}

TEST(MixingSliderUnits, curveHasItsThreeBranches)
{
    const MixingSliderUnits units;
    EXPECT_EQ(units.mixingToSlider(-1.0f), -0.5f);
    EXPECT_EQ(units.mixingToSlider(0.0f), 0.0f);
    EXPECT_FLOAT_EQ(units.mixingToSlider(0.04f), 0.2f);
    EXPECT_FLOAT_EQ(units.mixingToSlider(0.18f), 0.42426407f);
    EXPECT_FLOAT_EQ(units.mixingToSlider(1.0f), 0.8338642f);
    EXPECT_FLOAT_EQ(units.mixingToSlider(10.0f), 1.3838642f);
}

TEST(MixingSliderUnits, inverseHasItsThreeBranches)
{
    const MixingSliderUnits units;
    EXPECT_EQ(units.sliderToMixing(-0.5f), -1.0f);
    EXPECT_EQ(units.sliderToMixing(0.0f), 0.0f);
    EXPECT_FLOAT_EQ(units.sliderToMixing(0.2f), 0.04f);
    EXPECT_FLOAT_EQ(units.sliderToMixing(0.42426407f), 0.18f);
    EXPECT_FLOAT_EQ(units.sliderToMixing(units.mixingToSlider(0.18f)), 0.18f);
    EXPECT_FLOAT_EQ(units.sliderToMixing(0.8338642f), 1.0f);
    EXPECT_NEAR(units.sliderToMixing(1.3838642f), 10.0f, 1e-5f);
}

TEST(MixingSliderUnits, edgesArePutThroughTheCurve)
{
    MixingSliderUnits units;
    units.setSliderMinEdge(0.01f);
    units.setSliderMaxEdge(100.0f);
    EXPECT_FLOAT_EQ(units.getSliderMinEdge(), 0.1f);
    EXPECT_FLOAT_EQ(units.getSliderMaxEdge(), 1.9338642f);
    units.setSliderMinEdge(-3.0f);
    EXPECT_EQ(units.getSliderMinEdge(), -1.5f);
}

TEST(MixingSliderUnits, edgesScaleTheSlider)
{
    const MixingSliderUnits units(0.01f, 1.0f); // 0.1 and 0.8338642
    EXPECT_FLOAT_EQ(units.mixingToSlider(0.04f), 0.1362650f);
    EXPECT_FLOAT_EQ(units.sliderToMixing(0.1362650f), 0.04f);
    EXPECT_FLOAT_EQ(units.mixingToSlider(1.0f), 1.0f);
    EXPECT_FLOAT_EQ(units.sliderToMixing(0.0f), 0.01f);
}

TEST(MixingSliderUnits, minimumIsKeptBelowTheStoredMaximum)
{
    MixingSliderUnits units;
    units.setSliderMinEdge(5.0f); // compared with 1 - 0.01
    EXPECT_FLOAT_EQ(units.getSliderMinEdge(), 0.8314636f);
    EXPECT_EQ(units.getSliderMaxEdge(), 1.0f);
}

TEST(MixingSliderUnits, maximumIsKeptAboveTheStoredMinimum)
{
    MixingSliderUnits units;
    units.setSliderMinEdge(0.01f); // stored as 0.1
    units.setSliderMaxEdge(0.05f); // compared with 0.1 + 0.01
    EXPECT_FLOAT_EQ(units.getSliderMaxEdge(), 0.33166248f);
    EXPECT_FLOAT_EQ(units.getSliderMinEdge(), 0.1f);
}

TEST(MixingSliderUnits, constructorSetsTheMinimumFirst)
{
    const MixingSliderUnits zero(0.0f, 0.0f);
    EXPECT_EQ(zero.getSliderMinEdge(), 0.0f);
    EXPECT_FLOAT_EQ(zero.getSliderMaxEdge(), 0.1f);

    const MixingSliderUnits crossed(5.0f, 0.5f); // 0.99 first, and then 0.8314636 + 0.01
    EXPECT_FLOAT_EQ(crossed.getSliderMinEdge(), 0.8314636f);
    EXPECT_FLOAT_EQ(crossed.getSliderMaxEdge(), 0.7926336f);
}

TEST(MixingSliderUnits, copiesKeepTheEdges)
{
    MixingSliderUnits copy;
    copy = MixingSliderUnits(0.01f, 1.0f);
    EXPECT_FLOAT_EQ(copy.getSliderMinEdge(), 0.1f);
    EXPECT_FLOAT_EQ(copy.getSliderMaxEdge(), 0.8338642f);
}

} // namespace
