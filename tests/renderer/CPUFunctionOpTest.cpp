#include "renderer/CPUFunctionOp.h"

#include "kernelProbe.h"

#include <algorithm>

using namespace Rendering;
using Color::FunctionOp;

namespace {

constexpr FunctionOp::Style kToHSV = FunctionOp::STYLE_RGB_TO_HSV;
constexpr FunctionOp::Style kToRGB = FunctionOp::STYLE_HSV_TO_RGB;

FunctionOp makeOp(FunctionOp::Style style, BitDepth in = BIT_DEPTH_32f, BitDepth out = BIT_DEPTH_32f)
{
    return FunctionOp(in, out, style);
}

Pixel toHSV(const Pixel& rgba) { return render(*makeFunctionRenderer(makeOp(kToHSV)), rgba); }
Pixel toRGB(const Pixel& hsva) { return render(*makeFunctionRenderer(makeOp(kToRGB)), hsva); }

/// Either change of one pixel, straight from the definition.
class SlowFunction
{
public:
    explicit SlowFunction(const FunctionOp& op)
        : m_style(op.getStyle()), m_inputMax(getBitDepthMaxValue(op.getInBitDepth())),
          m_outputMax(getBitDepthMaxValue(op.getOutBitDepth()))
    {}

    Pixel operator()(const Pixel& in) const { return m_style == kToHSV ? hsvOf(in) : rgbOf(in); }

private:
    Pixel hsvOf(const Pixel& in) const
    {
        const auto [r, g, b, a] = in;
        // Of a NaN and a number the second counts.
        float maximum = r > g ? r : g;
        maximum = maximum > b ? maximum : b;
        float minimum = r < g ? r : g;
        minimum = minimum < b ? minimum : b;
        const float delta = maximum - minimum;
        float hue = 0.f;
        float saturation = 0.f;
        if (maximum > 0.f) {
            saturation = delta / maximum;
            if (r >= maximum) {
                hue = (g - b) / delta;
            } else if (g >= maximum) {
                hue = (b - r) / delta + 2.f;
            } else {
                hue = (r - g) / delta + 4.f;
            }
            hue = hue * 0.16666667f;
            if (0.f > hue) hue = hue + 1.f;
        }
        const float scale = m_outputMax / m_inputMax;
        return {hue * m_outputMax, saturation * m_outputMax, maximum * scale, a * scale};
    }

    Pixel rgbOf(const Pixel& in) const
    {
        const float scale = m_outputMax / m_inputMax;
        const float v = in[2];
        const float s = in[1] / m_inputMax;
        if (!(s > 0.f)) return {v * scale, v * scale, v * scale, in[3] * scale};

        const float h6 = in[0] / m_inputMax * 6.f;
        const bool fitsInteger = h6 >= -2147483648.f && h6 < 2147483648.f;
        const float i = fitsInteger ? std::trunc(h6) : -2147483648.f;
        const float f = h6 - i;
        const float p = (1.f - s) * v;
        const float q = (1.f - f * s) * v;
        const float t = (1.f - (1.f - f) * s) * v;
        Pixel out = {v, p, q, in[3]};
        if (i == 0.f) out = {v, t, p, in[3]};
        if (i == 1.f) out = {q, v, p, in[3]};
        if (i == 2.f) out = {p, v, t, in[3]};
        if (i == 3.f) out = {p, q, v, in[3]};
        if (i == 4.f) out = {t, p, v, in[3]};
        for (float& value : out) {
            value *= scale;
        }
        return out;
    }

    FunctionOp::Style m_style;
    float m_inputMax, m_outputMax;
};

void expectNear(const Pixel& actual, const Pixel& expected)
{
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(actual[i], expected[i], 1e-6 * std::max(1.f, std::fabs(expected[i]))) << "channel " << i;
    }
}

} // namespace

TEST(CPUFunctionOp, eachStyleHasItsKernel)
{
    const auto hsv = makeFunctionRenderer(makeOp(kToHSV));
    const auto rgb = makeFunctionRenderer(makeOp(kToRGB));
    EXPECT_EQ(hsv->getType(), RENDERER_FUNCTION_RGB_TO_HSV);
    EXPECT_EQ(rgb->getType(), RENDERER_FUNCTION_HSV_TO_RGB);
    EXPECT_EQ(hsv->getChannelUse(), ChannelUse::Mixed);
    EXPECT_EQ(rgb->getChannelUse(), ChannelUse::Mixed);
    EXPECT_EQ(makeFunctionRenderer(makeOp(static_cast<FunctionOp::Style>(2))), nullptr);
}

TEST(CPUFunctionOp, theHueOfPureColoursIsTheirSextant)
{
    expectNear(toHSV({1, 0, 0, 1}), {0, 1, 1, 1});
    expectNear(toHSV({1, 1, 0, 1}), {1 / 6.f, 1, 1, 1});
    expectNear(toHSV({0, 1, 0, 1}), {2 / 6.f, 1, 1, 1});
    expectNear(toHSV({0, 1, 1, 1}), {3 / 6.f, 1, 1, 1});
    expectNear(toHSV({0, 0, 1, 1}), {4 / 6.f, 1, 1, 1});
    expectNear(toHSV({1, 0, 1, 1}), {5 / 6.f, 1, 1, 1});
    expectNear(toHSV({0.5f, 0.25f, 0.375f, 0.5f}), {11 / 12.f, 0.5f, 0.5f, 0.5f});
}

TEST(CPUFunctionOp, blackHasNeitherHueNorSaturation)
{
    EXPECT_TRUE(samePixel(toHSV({0, 0, 0, 0.5f}), {0, 0, 0, 0.5f}));
    // Where no channel is above 0 as well.
    EXPECT_TRUE(samePixel(toHSV({-1, -0.5f, -2, 1}), {0, 0, -0.5f, 1}));
}

TEST(CPUFunctionOp, theHueOfGreyIsNaN) { EXPECT_TRUE(samePixel(toHSV({0.5f, 0.5f, 0.5f, 1}), {kNaN, 0, 0.5f, 1})); }

TEST(CPUFunctionOp, aNegativeChannelSaturatesBeyondThePure)
{
    EXPECT_TRUE(samePixel(toHSV({1, -1, -1, 1}), {0, 2, 1, 1}));
}

TEST(CPUFunctionOp, eachSextantHasItsRow)
{
    const float s = 0.5f;
    const float v = 0.8f;
    const float p = (1.f - s) * v;         // 0.4
    const float q = (1.f - 0.25f * s) * v; // 0.7
    const float t = (1.f - 0.75f * s) * v; // 0.5
    const auto at = [&](float sextants) { return toRGB({sextants / 6.f, s, v, 1}); };
    expectNear(at(0.25f), {v, t, p, 1});
    expectNear(at(1.25f), {q, v, p, 1});
    expectNear(at(2.25f), {p, v, t, 1});
    expectNear(at(3.25f), {p, q, v, 1});
    expectNear(at(4.25f), {t, p, v, 1});
    expectNear(at(5.25f), {v, p, q, 1});
    expectNear(at(7.25f), {v, p, q, 1});
    // Between -1 and 0 the whole part is 0: the first row, with a fraction below 0.
    expectNear(at(-0.25f), {v, (1.f - 1.25f * s) * v, p, 1});
    expectNear(at(-1.25f), {v, p, (1.f + 0.25f * s) * v, 1});
}

TEST(CPUFunctionOp, aHueOfAWholeTurnIsNotRed) { EXPECT_TRUE(samePixel(toRGB({1, 1, 1, 1}), {1, 0, 1, 1})); }

TEST(CPUFunctionOp, withoutSaturationTheValueGoesToAllChannels)
{
    EXPECT_TRUE(samePixel(toRGB({0.3f, 0, 0.7f, 1}), {0.7f, 0.7f, 0.7f, 1}));
    EXPECT_TRUE(samePixel(toRGB({kNaN, -1, 0.7f, 1}), {0.7f, 0.7f, 0.7f, 1}));
    EXPECT_TRUE(samePixel(toRGB({0.3f, kNaN, 0.7f, 1}), {0.7f, 0.7f, 0.7f, 1}));
}

TEST(CPUFunctionOp, aHueThatIsNoNumberHasTheLastRow)
{
    EXPECT_TRUE(samePixel(toRGB({kNaN, 0.5f, 0.5f, 1}), {0.5f, 0.25f, kNaN, 1}));
    EXPECT_TRUE(samePixel(toRGB({kInfinity, 0.5f, 0.5f, 1}), {0.5f, 0.25f, -kInfinity, 1}));
}

TEST(CPUFunctionOp, hueAndSaturationFillTheRangeOfADepth)
{
    const auto hsv = makeFunctionRenderer(makeOp(kToHSV, BIT_DEPTH_8i, BIT_DEPTH_10i));
    expectNear(render(*hsv, Pixel{0, 255, 0, 255}), {341, 1023, 1023, 1023});
    const auto rgb = makeFunctionRenderer(makeOp(kToRGB, BIT_DEPTH_10i, BIT_DEPTH_32f));
    expectNear(render(*rgb, Pixel{341, 1023, 1023, 1023}), {0, 1, 0, 1});
}

TEST(CPUFunctionOp, theStylesAreOpposites)
{
    std::mt19937 random(7);
    for (int i = 0; i < 1000; ++i) {
        const auto unit = [&] { return static_cast<float>(random() % 1000) / 1000.f; };
        const Pixel colour = {unit(), unit() + 1.f, unit(), unit()};
        const Pixel back = toRGB(toHSV(colour));
        for (std::size_t channel = 0; channel < 4; ++channel) {
            EXPECT_NEAR(back[channel], colour[channel], 2e-6) << textOf(colour);
        }
    }
}

TEST(CPUFunctionOp, equalsTheSlowComputationBitForBit)
{
    const BitDepth pairs[][2] = {
        {BIT_DEPTH_32f, BIT_DEPTH_32f}, {BIT_DEPTH_8i, BIT_DEPTH_10i}, {BIT_DEPTH_16f, BIT_DEPTH_16i}};
    for (const auto style : {kToHSV, kToRGB}) {
        for (const auto& [in, out] : pairs) {
            const FunctionOp op = makeOp(style, in, out);
            SCOPED_TRACE(::testing::Message() << getBitDepthName(in) << " style " << style);
            expectSamePixels(*makeFunctionRenderer(op), probePixels(getBitDepthMaxValue(in)), SlowFunction(op));
        }
    }
}
