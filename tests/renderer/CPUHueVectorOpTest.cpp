#include "renderer/CPUHueVectorOp.h"

#include "kernelProbe.h"
#include "tests/utils/failure.h"

using namespace Rendering;
using Color::HueVectorOp;

namespace {

constexpr HueVectorOp::Style kForward = HueVectorOp::STYLE_YCH_FWD;
constexpr HueVectorOp::Style kReverse = HueVectorOp::STYLE_YCH_REV;

HueVectorOp makeOp(HueVectorOp::Style style, double center, double width, double gain, BitDepth in = BIT_DEPTH_32f,
                   BitDepth out = BIT_DEPTH_32f)
{
    return HueVectorOp(in, out, style, {center, width, gain});
}

/// One pixel, straight from the definition.
class SlowHueVector
{
public:
    explicit SlowHueVector(const HueVectorOp& op) : m_op(op) {}

    Pixel operator()(const Pixel& in) const
    {
        const float pi = 3.1415927f;
        const float scale = getBitDepthMaxValue(m_op.getOutBitDepth()) / getBitDepthMaxValue(m_op.getInBitDepth());
        const float center = pi * static_cast<float>(m_op.getParameters()[0]) / 180.f;
        const float w = pi * static_cast<float>(m_op.getParameters()[1]) / 180.f;
        const float widthFactor = 4.f / w;
        const float gainMinusOne = static_cast<float>(m_op.getParameters()[2]) - 1.f;

        const auto [r, g, b, a] = in;
        const float y = (g - b) * (sqrtf(3.f) * 0.25f);
        const float luma = ((g + r) + b) * 0.33333334f;
        const float x = r * 0.5f - (b + g) * 0.25f;
        float h = atan2f(y, x) - center;
        if (-pi > h) h = h + 6.2831855f;
        if (h > pi) h = h - 6.2831855f;
        const float t = h * widthFactor + 2.f;
        if (!(t >= 1.f && t < 4.f)) return {r * scale, g * scale, b * scale, a * scale};

        const float f = t - std::floor(t);
        const bool forward = m_op.getStyle() == kForward;
        float s;
        if (t < 2.f) {
            s = forward ? ((-0.75f * f + 0.75f) * f + 0.75f) * f + 0.25f
                        : ((-0.75f * f * f * f + 0.75f * f * f) + 0.75f * f) + 0.25f;
        } else if (t < 3.f) {
            s = forward ? ((0.75f * f + -1.5f) * f + 0.f) * f + 1.f
                        : ((0.75f * f * f * f + -1.5f * f * f) + 0.f * f) + 1.f;
        } else {
            s = forward ? ((-0.25f * f + 0.75f) * f + -0.75f) * f + 0.25f
                        : ((-0.25f * f * f * f + 0.75f * f * f) + -0.75f * f) + 0.25f;
        }
        const float gain = s * gainMinusOne + 1.f;
        const float x2 = forward ? x * gain : x / gain;
        const float y2 = forward ? y * gain * 1.1547005f : y / gain * 1.1547005f;
        const float mid = x2 * -0.6666667f + luma;
        return {(x2 * 1.3333334f + luma) * scale, (y2 + mid) * scale, (mid - y2) * scale, a * scale};
    }

private:
    const HueVectorOp& m_op;
};

/// The colour of a hue, in degrees, with luma 0.5.
Pixel colourOf(double hue, double chroma)
{
    const double x = chroma * std::cos(hue * M_PI / 180.);
    const double y = chroma * std::sin(hue * M_PI / 180.) * 2. / std::sqrt(3.);
    const double mid = 0.5 - x * 2. / 3.;
    return {static_cast<float>(0.5 + x * 4. / 3.), static_cast<float>(mid + y), static_cast<float>(mid - y), 0.25f};
}

double chromaOf(const Pixel& p)
{
    return std::hypot((p[1] - p[2]) * std::sqrt(3.) / 4., p[0] * 0.5 - (p[2] + p[1]) * 0.25);
}

/// What the forward kernel multiplies the chroma of a hue by.
double gainAt(const HueVectorOp& op, double hue)
{
    return chromaOf(render(*makeHueVectorRenderer(op), colourOf(hue, 0.2))) / 0.2;
}

} // namespace

TEST(CPUHueVectorOp, eachStyleHasItsKernel)
{
    const auto forward = makeHueVectorRenderer(makeOp(kForward, 0, 90, 2));
    const auto reverse = makeHueVectorRenderer(makeOp(kReverse, 0, 90, 2));
    EXPECT_EQ(forward->getType(), RENDERER_HUE_VECTOR_YCH_FWD);
    EXPECT_EQ(reverse->getType(), RENDERER_HUE_VECTOR_YCH_REV);
    EXPECT_EQ(forward->getChannelUse(), ChannelUse::Mixed);
    EXPECT_EQ(reverse->getChannelUse(), ChannelUse::Mixed);
    EXPECT_EQ(makeHueVectorRenderer(makeOp(static_cast<HueVectorOp::Style>(2), 0, 90, 2)), nullptr);
}

TEST(CPUHueVectorOp, theCenterHueGetsTheWholeGain)
{
    // Red without green and blue has the hue 0: t = 2, where the spline is 1.
    const Pixel out = render(*makeHueVectorRenderer(makeOp(kForward, 0, 90, 2)), Pixel{0.75f, 0.f, 0.f, 0.5f});
    // x = 0.375, doubled 0.75; luma = 0.25: red is 1 + 0.25, green and blue are -0.5 + 0.25.
    EXPECT_NEAR(out[0], 1.25, 1e-6);
    EXPECT_NEAR(out[1], -0.25, 1e-6);
    EXPECT_NEAR(out[2], -0.25, 1e-6);
    EXPECT_EQ(out[3], 0.5f);
    EXPECT_NEAR(gainAt(makeOp(kForward, 123, 60, 3), 123), 3., 1e-5);
}

TEST(CPUHueVectorOp, theGainFallsOffAsTheSplineDoes)
{
    // A width of 80 degrees makes segments of 20.
    const HueVectorOp op = makeOp(kForward, 100, 80, 2);
    EXPECT_NEAR(gainAt(op, 100), 2., 1e-5);
    EXPECT_NEAR(gainAt(op, 90), 1. + (-0.75 / 8 + 0.75 / 4 + 0.75 / 2 + 0.25), 1e-5);
    EXPECT_NEAR(gainAt(op, 110), 1. + (0.75 / 8 - 1.5 / 4 + 1), 1e-5);
    EXPECT_NEAR(gainAt(op, 130), 1. + (-0.25 / 8 + 0.75 / 4 - 0.75 / 2 + 0.25), 1e-5);
    EXPECT_NEAR(gainAt(op, 80.1), 1.25, 5e-3);
    EXPECT_NEAR(gainAt(op, 139.9), 1., 1e-5);
}

TEST(CPUHueVectorOp, theFirstSegmentCountsAsOutside)
{
    const auto renderer = makeHueVectorRenderer(makeOp(kForward, 100, 80, 2));
    for (const double hue : {60.1, 65., 70., 75., 79.9}) {
        const Pixel colour = colourOf(hue, 0.2);
        EXPECT_TRUE(samePixel(render(*renderer, colour), colour)) << hue;
    }
    for (const double hue : {59., 0., 141., 180., 270., 300.}) {
        const Pixel colour = colourOf(hue, 0.2);
        EXPECT_TRUE(samePixel(render(*renderer, colour), colour)) << hue;
    }
}

TEST(CPUHueVectorOp, hueIsCountedRoundTheCircle)
{
    EXPECT_NEAR(gainAt(makeOp(kForward, 359, 80, 2), 1), gainAt(makeOp(kForward, 100, 80, 2), 102), 1e-5);
    EXPECT_NEAR(gainAt(makeOp(kForward, 1, 80, 2), -2), gainAt(makeOp(kForward, 100, 80, 2), 97), 1e-5);
    EXPECT_NEAR(gainAt(makeOp(kForward, 360, 80, 2), 0), 2., 1e-5);
    EXPECT_NEAR(gainAt(makeOp(kForward, 180, 80, 2), -179), gainAt(makeOp(kForward, 100, 80, 2), 101), 1e-5);
}

TEST(CPUHueVectorOp, theReverseUndoesTheForward)
{
    const auto forward = makeHueVectorRenderer(makeOp(kForward, 40, 200, 1.75));
    const auto reverse = makeHueVectorRenderer(makeOp(kReverse, 40, 200, 1.75));
    for (int hue = 0; hue < 360; ++hue) {
        const Pixel colour = colourOf(hue, 0.15);
        const Pixel back = render(*reverse, render(*forward, colour));
        for (std::size_t i = 0; i < 4; ++i) {
            EXPECT_NEAR(back[i], colour[i], 2e-6) << hue;
        }
    }
}

TEST(CPUHueVectorOp, aWidthOf0ReachesNothing)
{
    // The center itself is 0 times infinity.
    for (const auto style : {kForward, kReverse}) {
        const auto renderer = makeHueVectorRenderer(makeOp(style, 0, 0, 2));
        EXPECT_TRUE(samePixel(render(*renderer, Pixel{0.75f, 0.f, 0.f, 0.5f}), {0.75f, 0.f, 0.f, 0.5f}));
        EXPECT_TRUE(samePixel(render(*renderer, Pixel{0.75f, 0.1f, 0.f, 0.5f}), {0.75f, 0.1f, 0.f, 0.5f}));
    }
}

TEST(CPUHueVectorOp, aColourWithoutAHueIsOutside)
{
    const auto renderer = makeHueVectorRenderer(makeOp(kForward, 0, 90, 2, BIT_DEPTH_32f, BIT_DEPTH_8i));
    EXPECT_TRUE(samePixel(render(*renderer, Pixel{kNaN, 0.5f, 1.f, 0.f}), {kNaN, 127.5f, 255.f, 0.f}));
}

TEST(CPUHueVectorOp, alphaAndTheResultAreScaledBetweenTheDepths)
{
    const auto renderer = makeHueVectorRenderer(makeOp(kForward, 0, 90, 2, BIT_DEPTH_32f, BIT_DEPTH_8i));
    const Pixel out = render(*renderer, Pixel{0.75f, 0.f, 0.f, 0.5f});
    EXPECT_NEAR(out[0], 1.25 * 255, 1e-3);
    EXPECT_EQ(out[3], 127.5f);
}

TEST(CPUHueVectorOp, equalsTheSlowComputationBitForBit)
{
    const double parameters[][3] = {{0, 90, 2},    {40, 200, 0.25}, {359.9, 1000, 100}, {180, 360, 0},
                                    {120, 0.1, 5}, {77, 720, 1},    {300, 0, 3},        {360, 33, 0.5}};
    const BitDepth pairs[][2] = {
        {BIT_DEPTH_32f, BIT_DEPTH_32f}, {BIT_DEPTH_8i, BIT_DEPTH_10i}, {BIT_DEPTH_16f, BIT_DEPTH_16i}};
    for (const auto& [center, width, gain] : parameters) {
        for (const auto& [in, out] : pairs) {
            for (const auto style : {kForward, kReverse}) {
                const HueVectorOp op = makeOp(style, center, width, gain, in, out);
                SCOPED_TRACE(::testing::Message() << center << " " << width << " " << gain << " style " << style);
                expectSamePixels(*makeHueVectorRenderer(op), probePixels(getBitDepthMaxValue(in)), SlowHueVector(op));
            }
        }
    }
}

// The op's own validation has refused this before; the kernel reads three parameters.
TEST(CPUHueVectorOp, anotherNumberOfParametersIsRefused)
{
    HueVectorOp op = makeOp(kForward, 0, 90, 2);
    op.setParameters({0, 90});
    EXPECT_EQ(
        failureOf([&] { makeHueVectorRenderer(op); }),
        (Failure{0x20f0002, "COLOR:TRANSFORM:HUE_VECTOR", "The specified Hue Vector style must have 3 parameters"}));
}
