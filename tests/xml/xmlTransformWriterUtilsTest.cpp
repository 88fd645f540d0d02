#include "xml/xmlTransformWriterUtils.h"

#include "tests/utils/commaLocale.h"
#include "tests/utils/failure.h"
#include "transform/ditherOp.h"
#include "transform/functionOp.h"
#include "transform/gammaOp.h"
#include "transform/gamutMapOp.h"
#include "transform/hueVectorOp.h"
#include "transform/invLut1DOp.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <iomanip>
#include <limits>
#include <random>
#include <sstream>

using namespace Color;
using namespace Color::Xml::Writer;

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

/// The text of an array with these values, without its tags.
std::string numbersOf(const NumberLayout& layout, const std::vector<float>& values, std::size_t stride = 1,
                      std::size_t perLine = 1)
{
    std::ostringstream stream;
    XmlFormatter formatter(stream);
    writeArray(formatter, {1, 1}, layout, {values.data(), values.size(), stride, perLine});
    const std::string text = stream.str();
    const std::string start = "<Array dim=\"1 1\">\n";
    const std::string end = "</Array>\n";
    EXPECT_EQ(text.substr(0, start.size()), start);
    EXPECT_EQ(text.substr(text.size() - end.size()), end);
    return text.substr(start.size(), text.size() - start.size() - end.size());
}

std::string numberOf(BitDepth depth, float value) { return numbersOf(getNumberLayout(depth), {value}); }

/// What a stream makes of the same number.
std::string streamed(float value, int width, int precision)
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << std::setw(width) << std::setprecision(precision) << value << '\n';
    return stream.str();
}

const struct
{
    BitDepth depth;
    int width;
    int precision;
} kLayouts[] = {
    {BIT_DEPTH_8i, 3, 6},  {BIT_DEPTH_10i, 4, 6},  {BIT_DEPTH_12i, 4, 6},
    {BIT_DEPTH_16i, 5, 6}, {BIT_DEPTH_16f, 11, 5}, {BIT_DEPTH_32f, 15, 8},
};

} // namespace

TEST(NumberLayout, everyDepthHasItsWidthAndPrecision)
{
    EXPECT_EQ(numberOf(BIT_DEPTH_8i, 7.F), "  7\n");
    EXPECT_EQ(numberOf(BIT_DEPTH_10i, 7.F), "   7\n");
    EXPECT_EQ(numberOf(BIT_DEPTH_12i, 4095.F), "4095\n");
    EXPECT_EQ(numberOf(BIT_DEPTH_16i, 1023.F), " 1023\n");
    EXPECT_EQ(numberOf(BIT_DEPTH_16i, 0.F), "    0\n");
    EXPECT_EQ(numberOf(BIT_DEPTH_16f, 1.F / 3.F), "    0.33333\n");
    EXPECT_EQ(numberOf(BIT_DEPTH_32f, 1.F), "              1\n");
    EXPECT_EQ(numberOf(BIT_DEPTH_32f, 1.F / 3.F), "     0.33333334\n");
    EXPECT_EQ(numberOf(BIT_DEPTH_32f, -1.2345678e-20F), " -1.2345678e-20\n");
}

TEST(NumberLayout, aFieldGrowsWithItsNumber)
{
    EXPECT_EQ(numberOf(BIT_DEPTH_8i, 254.9375F), "254.938\n");
    EXPECT_EQ(numberOf(BIT_DEPTH_8i, -1e-7F), "-1e-07\n");
    EXPECT_EQ(numberOf(BIT_DEPTH_10i, 1234567.F), "1.23457e+06\n");
}

TEST(NumberLayout, numbersReadAsAStreamWouldPrintThem)
{
    std::vector<float> values = {0.F, -0.F, 1e-4F, 9.9999e-5F, 99999.5F, 999999.5F, 1e15F, 1e-45F, 0.5F, 2.5F, 100.F};
    values.push_back(std::numeric_limits<float>::max());
    values.push_back(std::numeric_limits<float>::min());
    std::mt19937 random(1);
    for (int i = 0; i < 20000; ++i) {
        const auto bits = static_cast<uint32_t>(random());
        float value = 0.F;
        std::memcpy(&value, &bits, sizeof value);
        if (std::isfinite(value)) values.push_back(value);
        values.push_back(static_cast<float>(random() >> 8) / 0x1p24F);
    }
    for (const auto& row : kLayouts) {
        for (const float value : values)
            ASSERT_EQ(numberOf(row.depth, value), streamed(value, row.width, row.precision)) << row.width;
    }
}

TEST(NumberLayout, floatDepthsSpellAllNaNsAlike)
{
    for (const BitDepth depth : {BIT_DEPTH_16f, BIT_DEPTH_32f}) {
        const std::string blanks(depth == BIT_DEPTH_16f ? 7 : 11, ' ');
        EXPECT_EQ(numberOf(depth, kNaN), blanks + " nan\n");
        EXPECT_EQ(numberOf(depth, std::copysign(kNaN, -1.F)), blanks + " nan\n");
        EXPECT_EQ(numberOf(depth, kInfinity), blanks + " inf\n");
        EXPECT_EQ(numberOf(depth, -kInfinity), blanks + "-inf\n");
    }
}

TEST(NumberLayout, integerDepthsSpellThemAsAStreamDoes)
{
    for (const float value : {kNaN, std::copysign(kNaN, -1.F), kInfinity, -kInfinity}) {
        EXPECT_EQ(numberOf(BIT_DEPTH_8i, value), streamed(value, 3, 6));
        EXPECT_EQ(numberOf(BIT_DEPTH_16i, value), streamed(value, 5, 6));
    }
}

TEST(NumberLayout, anUnknownDepthHasNone)
{
    const Failure wanted = {0x3030005, "COLOR:XML:WRITER", "BitDepth unknown"};
    EXPECT_EQ(failureOf([] { getNumberLayout(BIT_DEPTH_UNKNOWN); }), wanted);
    EXPECT_EQ(failureOf([] { getNumberLayout(static_cast<BitDepth>(3)); }), wanted);
}

TEST(NumberLayout, halfPatternsRoundToTheNearestEvenHalf)
{
    // 2048 is the pattern 26624, 2050 the next one, and 2052 the one after that.
    EXPECT_EQ(
        numbersOf(kHalfPatternLayout, {0.F, -0.F, 1.F, 2049.F, 2051.F, 2050.9F, 65504.F, 65520.F, -kInfinity}, 1, 3),
        "    0 32768 15360\n26624 26626 26625\n31743 31744 64512\n");
    EXPECT_EQ(numbersOf(kHalfPatternLayout, {1.F / 3.F, 0x1p-24F, 0x1p-25F, 0x1.8p-24F}, 1, 4),
              "13653     1     0     2\n");
}

TEST(writeArray, breaksLinesAndTakesEveryStridethValue)
{
    const NumberLayout& layout = getNumberLayout(BIT_DEPTH_8i);
    const std::vector<float> values = {1, 2, 3, 4, 5, 6};
    EXPECT_EQ(numbersOf(layout, values, 1, 3), "  1   2   3\n  4   5   6\n");
    EXPECT_EQ(numbersOf(layout, values, 3, 1), "  1\n  4\n");
    EXPECT_EQ(numbersOf(layout, values, 2, 3), "  1   3   5\n");
    EXPECT_EQ(numbersOf(layout, {}), "");
}

TEST(writeArray, onlyItsTagsAreIndented)
{
    std::ostringstream stream;
    XmlFormatter formatter(stream);
    const XmlFormatter::IndentScope indent(formatter);
    const float values[] = {1, 2, 3, 4};
    writeArray(formatter, {4, 5, 4}, getNumberLayout(BIT_DEPTH_10i), {values, 4, 1, 2});
    EXPECT_EQ(stream.str(), "   <Array dim=\"4 5 4\">\n   1    2\n   3    4\n   </Array>\n");
}

TEST(writeArray, localeDoesNotMatter)
{
    const CommaLocale locale;
    EXPECT_EQ(numberOf(BIT_DEPTH_16f, 1234.5F), "     1234.5\n");
    EXPECT_EQ(numbersOf(kHalfPatternLayout, {1.F}), "15360\n");
}

TEST(getFileVersion, curvesNeed14WithHueAdjust)
{
    Lut1DOp lut(2);
    EXPECT_EQ(getFileVersion(lut), 1.3F);
    lut.setHueAdjust(Lut1DOp::HUE_ADJUST_DW3);
    EXPECT_EQ(getFileVersion(lut), 1.4F);
    EXPECT_EQ(getFileVersion(InvLut1DOp(Lut1DOp(2))), 1.3F);
}

TEST(getFileVersion, gammaNeeds15WithParametersOfAlpha)
{
    const auto versionOf = [](GammaOp::Style style, const GammaOp::Params& alpha) {
        const GammaOp::Params colour = GammaOp::getIdentityParams(style);
        return getFileVersion(GammaOp(BIT_DEPTH_32f, BIT_DEPTH_32f, style, colour, colour, colour, alpha));
    };
    EXPECT_EQ(versionOf(GammaOp::STYLE_BASIC_FWD, {1.0}), 1.3F);
    EXPECT_EQ(versionOf(GammaOp::STYLE_BASIC_REV, {1.0000001}), 1.5F);
    EXPECT_EQ(versionOf(GammaOp::STYLE_MONCURVE_FWD, {1.0, 0.0}), 1.3F);
    EXPECT_EQ(versionOf(GammaOp::STYLE_MONCURVE_REV, {1.0, 0.1}), 1.5F);
    EXPECT_EQ(versionOf(GammaOp::STYLE_MONCURVE_REV, {2.0, 0.0}), 1.5F);
    // A list of the wrong length is none that leaves alpha alone.
    EXPECT_EQ(versionOf(GammaOp::STYLE_MONCURVE_FWD, {1.0}), 1.5F);
    EXPECT_EQ(versionOf(GammaOp::STYLE_BASIC_FWD, {1.0, 0.0}), 1.5F);
}

TEST(getFileVersion, laterOpsNeedLaterFiles)
{
    EXPECT_EQ(getFileVersion(DitherOp(BIT_DEPTH_32f, BIT_DEPTH_32f, BIT_DEPTH_8i)), 1.4F);
    EXPECT_EQ(getFileVersion(GamutMapOp()), 1.4F);
    EXPECT_EQ(getFileVersion(HueVectorOp()), 1.4F);
    EXPECT_EQ(getFileVersion(FunctionOp()), 1.6F);
}
