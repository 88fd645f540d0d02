#include "morvane/geometry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

namespace {

using namespace Morvane_2015_1_42;
using ::testing::ElementsAre;

std::vector<float> cornersOf(const Vertices& v)
{
    return {v.getX1(), v.getY1(), v.getX2(), v.getY2(), v.getX3(), v.getY3(), v.getX4(), v.getY4()};
}

TEST(Geometry, rectKeepsItsNumbers)
{
    const Rect rect(1.5f, -2.0f, 30.0f, 40.0f);
    EXPECT_EQ(rect.getX(), 1.5f);
    EXPECT_EQ(rect.getY(), -2.0f);
    EXPECT_EQ(rect.getWidth(), 30.0f);
    EXPECT_EQ(rect.getHeight(), 40.0f);
}

TEST(Geometry, verticesKeepTheirNumbers)
{
    const Vertices vertices(1, 2, 3, 4, 5, 6, 7, 8);
    EXPECT_THAT(cornersOf(vertices), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8));
}

TEST(Geometry, verticesOfARectRunDownTheLeftSideAndUpTheRight)
{
    const Vertices vertices(Rect(1.5f, -2.0f, 30.0f, 40.0f));
    EXPECT_THAT(cornersOf(vertices), ElementsAre(1.5f, -2.0f, 1.5f, 38.0f, 31.5f, 38.0f, 31.5f, -2.0f));
}

TEST(Geometry, verticesAreCopied)
{
    Vertices copy(0, 0, 0, 0, 0, 0, 0, 0);
    copy = Vertices(1, 2, 3, 4, 5, 6, 7, 8);
    EXPECT_THAT(cornersOf(copy), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8));
}

} // namespace
