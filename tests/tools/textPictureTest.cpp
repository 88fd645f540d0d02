#include "textPicture.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

using namespace Command;
using ::testing::ElementsAre;

namespace {
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
} // namespace

TEST(drawBars, fillsEighthsOfARow)
{
    const Panel panel = drawBars("h", {0.0f, 1.0f / 16, 0.25f, 0.5f, 0.75f, 1.0f}, 0.0f, 1.0f, 2, Glyphs::BLOCKS);
    EXPECT_EQ(panel.heading, "h");
    EXPECT_EQ(panel.width, 6u);
    EXPECT_THAT(panel.lines, ElementsAre("    ▄█", " ▁▄███"));
}

TEST(drawBars, fillsThirdsOfARowInASCII)
{
    const Panel panel = drawBars("", {0.0f, 1.0f / 6, 2.0f / 6, 0.5f, 5.0f / 6, 1.0f}, 0.0f, 1.0f, 2, Glyphs::ASCII);
    EXPECT_THAT(panel.lines, ElementsAre("    =#", " .=###"));
}

TEST(drawBars, scalesBetweenTheLimits)
{
    EXPECT_THAT(drawBars("", {-2.0f, 0.0f, 2.0f, 4.0f}, -2.0f, 4.0f, 1, Glyphs::ASCII).lines, ElementsAre(" .=#"));
}

TEST(drawBars, endsAtTheLimits)
{
    EXPECT_THAT(drawBars("", {-1.0f, kNaN, -kInfinity, kInfinity, 2.0f}, 0.0f, 1.0f, 1, Glyphs::BLOCKS).lines,
                ElementsAre("   ██"));
}

TEST(drawBars, takesLimitsAsFarApartAsFloatsCan)
{
    constexpr float largest = std::numeric_limits<float>::max();
    EXPECT_THAT(
        drawBars("", {-kInfinity, -largest, 0.0f, largest, kInfinity}, -largest, largest, 1, Glyphs::BLOCKS).lines,
        ElementsAre("  ▄██"));
}

TEST(drawShades, hasFiveSteps)
{
    const std::vector<float> values = {0.0f, 0.25f, 0.5f, 0.75f, 1.0f, kNaN};
    EXPECT_THAT(drawShades("", values, 3, Glyphs::BLOCKS).lines, ElementsAre(" ░▒", "▓█ "));
    EXPECT_THAT(drawShades("", values, 3, Glyphs::ASCII).lines, ElementsAre(" .:", "+# "));
}

TEST(drawShades, endsAtBlankAndFull)
{
    EXPECT_THAT(drawShades("", {-1.0f, -kInfinity, 7.0f, kInfinity}, 4, Glyphs::ASCII).lines, ElementsAre("  ##"));
}

TEST(joinPanels, putsThemSideBySideWithoutBlanksAtTheEnds)
{
    const Panel left{"Red", {"####", "#   "}, 4}, right{"G", {" #", "  "}, 2};
    EXPECT_THAT(joinPanels({left, right}), ElementsAre("Red   G", "####   #", "#"));
}
