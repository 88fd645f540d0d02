#include "renderer/CPUGammaOp.h"

#include "kernelCheck.h"

#include <algorithm>

using namespace Rendering;
using Color::GammaOp;

namespace {

const GammaOp::Params kParams[2][4] = {{{2.2}, {1.0}, {10.0}, {1.7}},
                                       {{2.4, 0.055}, {1.0, 0.0}, {3.0, 0.9}, {1.8, 0.099}}};

GammaOp gammaOp(DepthPair depths, GammaOp::Style style)
{
    const GammaOp::Params* params = kParams[style >= GammaOp::STYLE_MONCURVE_FWD];
    return GammaOp(depths.in, depths.out, style, params[0], params[1], params[2], params[3]);
}

GammaOp gammaOp(GammaOp::Style style, const GammaOp::Params& params)
{
    return GammaOp(BIT_DEPTH_32f, BIT_DEPTH_32f, style, params, params, params, params);
}

float narrow(double x) { return static_cast<float>(x); }

} // namespace

TEST(GammaRenderer, theStyleDecidesTheKernel)
{
    const auto typeOf = [](GammaOp::Style style) {
        return makeGammaRenderer(gammaOp(kDepthPairs[0], style))->getType();
    };
    EXPECT_EQ(typeOf(GammaOp::STYLE_BASIC_FWD), 19);
    EXPECT_EQ(typeOf(GammaOp::STYLE_BASIC_REV), 19);
    EXPECT_EQ(typeOf(GammaOp::STYLE_MONCURVE_FWD), 20);
    EXPECT_EQ(typeOf(GammaOp::STYLE_MONCURVE_REV), 21);
}

TEST(GammaRenderer, anyOtherStyleGetsNone)
{
    EXPECT_EQ(makeGammaRenderer(gammaOp(static_cast<GammaOp::Style>(4), {2.2})), nullptr);
}

TEST(GammaRenderer, everyChannelIsOnItsOwn)
{
    for (const auto style : {GammaOp::STYLE_BASIC_FWD, GammaOp::STYLE_MONCURVE_FWD, GammaOp::STYLE_MONCURVE_REV}) {
        const auto renderer = makeGammaRenderer(gammaOp(kDepthPairs[0], style));
        EXPECT_EQ(renderer->getChannelUse(), ChannelUse::ApartAndSlow);
        EXPECT_FALSE(renderer->hasDynamicValues());
    }
}

TEST(GammaRenderer, basicIsThePowerOfAllFourChannels)
{
    for (const DepthPair& depths : kDepthPairs) {
        for (const auto style : {GammaOp::STYLE_BASIC_FWD, GammaOp::STYLE_BASIC_REV}) {
            const float inMax = fullScaleOf(depths.in);
            const float inverse = narrow(1.0 / double{inMax});
            expectKernel(*makeGammaRenderer(gammaOp(depths, style)), inMax, [&](const Pixel& in) {
                Pixel out{};
                for (std::size_t i = 0; i < 4; ++i) {
                    const double gamma = kParams[0][i][0];
                    const float exponent = narrow(style == GammaOp::STYLE_BASIC_FWD ? gamma : 1.0 / gamma);
                    out[i] = scalarPow(in[i] * inverse, exponent) * fullScaleOf(depths.out);
                }
                return out;
            });
        }
    }
}

TEST(GammaRenderer, moncurveForwardIsALineUpToTheBreakPointAndAPowerAbove)
{
    for (const DepthPair& depths : kDepthPairs) {
        const double inMax = double{fullScaleOf(depths.in)};
        const double outMax = double{fullScaleOf(depths.out)};
        expectKernel(*makeGammaRenderer(gammaOp(depths, GammaOp::STYLE_MONCURVE_FWD)), fullScaleOf(depths.in),
                     [&](const Pixel& in) {
                         Pixel out{};
                         for (std::size_t i = 0; i < 4; ++i) {
                             const double g = std::max(kParams[1][i][0], 1.000001);
                             const double o = std::max(kParams[1][i][1], 1e-6);
                             const double meeting = std::pow((o * g) / ((o + 1.0) * (g - 1.0)), g);
                             const double breakPoint = (o / (g - 1.0)) * inMax;
                             const double slope = meeting * ((g - 1.0) / o) * outMax / inMax;
                             const double scale = (1.0 / (o + 1.0)) / inMax;
                             const float v = in[i];
                             if (v > narrow(breakPoint)) {
                                 out[i] =
                                     scalarPow(v * narrow(scale) + narrow(o / (o + 1.0)), narrow(g)) * narrow(outMax);
                             } else {
                                 out[i] = v * narrow(slope);
                             }
                         }
                         return out;
                     });
    }
}

TEST(GammaRenderer, moncurveReverseIsALineUpToTheBreakPointAndAPowerAbove)
{
    for (const DepthPair& depths : kDepthPairs) {
        const double inMax = double{fullScaleOf(depths.in)};
        const double outMax = double{fullScaleOf(depths.out)};
        expectKernel(*makeGammaRenderer(gammaOp(depths, GammaOp::STYLE_MONCURVE_REV)), fullScaleOf(depths.in),
                     [&](const Pixel& in) {
                         Pixel out{};
                         for (std::size_t i = 0; i < 4; ++i) {
                             const double g = std::max(kParams[1][i][0], 1.000001);
                             const double o = std::max(kParams[1][i][1], 1e-6);
                             const double breakPoint = std::pow((o * g) / ((o + 1.0) * (g - 1.0)), g) * inMax;
                             const double slope =
                                 std::pow((o + 1.0) / g, g) * std::pow((g - 1.0) / o, g - 1.0) * outMax / inMax;
                             const float v = in[i];
                             if (v > narrow(breakPoint)) {
                                 const float power = scalarPow(v * narrow(1.0 / inMax), narrow(1.0 / g));
                                 out[i] = power * narrow((o + 1.0) * outMax) - narrow(o * outMax);
                             } else {
                                 out[i] = v * narrow(slope);
                             }
                         }
                         return out;
                     });
    }
}

TEST(GammaRenderer, basicTakesZeroNegativesAndNaNToZero)
{
    const auto renderer = makeGammaRenderer(gammaOp(GammaOp::STYLE_BASIC_FWD, {2.0}));
    const Pixel zeros = {0.f, 0.f, 0.f, 0.f};
    EXPECT_EQ(render(*renderer, {0.f, -0.f, -1.f, std::numeric_limits<float>::quiet_NaN()}), zeros);
}

TEST(GammaRenderer, alphaOfGammaOneIsRecomputedAndNotPassedThrough)
{
    const GammaOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, GammaOp::STYLE_BASIC_FWD, {2.0}, {2.0}, {2.0});
    const float alpha = render(*makeGammaRenderer(op), {1.f, 1.f, 1.f, 1.f})[3];
    EXPECT_NE(alpha, 1.f);
    EXPECT_NEAR(alpha, 1.f, 4e-5f);
}

TEST(GammaRenderer, moncurveOfNoGammaAndNoOffsetTakesTheFloors)
{
    // With g = 1.000001 and o = 1e-6 the break point is o / (g - 1), just about 1, and the line has almost slope 1.
    const auto renderer = makeGammaRenderer(gammaOp(GammaOp::STYLE_MONCURVE_FWD, {1.0, 0.0}));
    const Pixel out = render(*renderer, {0.5f, -0.25f, 2.f, 0.f});
    EXPECT_NEAR(out[0], 0.5f, 1e-5f);
    EXPECT_NEAR(out[1], -0.25f, 1e-5f);
    EXPECT_NEAR(out[2], 2.f, 1e-4f);
    EXPECT_EQ(out[3], 0.f);
}

TEST(GammaRenderer, moncurveAtTheBreakPointAndOfNaNTakesTheLine)
{
    // g = 2 and o = 0.5: the break point is 0.5, the line's slope (1 / 1.5) ^ 2 * 2 = 0.888889.
    const auto renderer = makeGammaRenderer(gammaOp(GammaOp::STYLE_MONCURVE_FWD, {2.0, 0.5}));
    const float slope = narrow(std::pow((0.5 * 2.0) / (1.5 * 1.0), 2.0) * (1.0 / 0.5));
    const Pixel out = render(*renderer, {0.5f, std::numeric_limits<float>::quiet_NaN(), 1.f, -2.f});
    EXPECT_EQ(out[0], 0.5f * slope);
    EXPECT_TRUE(std::isnan(out[1]));
    EXPECT_NEAR(out[2], 1.f, 1e-4f);
    EXPECT_EQ(out[3], -2.f * slope);
}

TEST(GammaRenderer, moncurveReverseUndoesForward)
{
    const auto forward = makeGammaRenderer(gammaOp(GammaOp::STYLE_MONCURVE_FWD, {2.4, 0.055}));
    const auto reverse = makeGammaRenderer(gammaOp(GammaOp::STYLE_MONCURVE_REV, {2.4, 0.055}));
    for (float v = 0.f; v <= 1.f; v += 1.f / 256.f) {
        const Pixel out = render(*reverse, render(*forward, {v, v, v, v}));
        EXPECT_NEAR(out[0], v, 1e-4f);
    }
}

TEST(GammaRenderer, theCurvesAreCloseToTheExactOnes)
{
    const double g = 2.4;
    const double o = 0.055;
    const double meeting = std::pow(o * g / ((o + 1.0) * (g - 1.0)), g);
    const double slope = meeting * (g - 1.0) / o;
    const auto basic = makeGammaRenderer(gammaOp(GammaOp::STYLE_BASIC_FWD, {2.2}));
    const auto forward = makeGammaRenderer(gammaOp(GammaOp::STYLE_MONCURVE_FWD, {g, o}));
    const auto reverse = makeGammaRenderer(gammaOp(GammaOp::STYLE_MONCURVE_REV, {g, o}));
    for (int i = 0; i <= 20000; ++i) {
        const float v = static_cast<float>(i) / 20000.f;
        const double x = double{v};
        const Pixel in = {v, v, v, v};
        EXPECT_NEAR(render(*basic, in)[0], std::pow(x, 2.2), 2.4e-5);
        EXPECT_NEAR(render(*forward, in)[0], x > o / (g - 1.0) ? std::pow((x + o) / (1.0 + o), g) : x * slope, 2.6e-5);
        EXPECT_NEAR(render(*reverse, in)[0], x > meeting ? (1.0 + o) * std::pow(x, 1.0 / g) - o : x / slope, 7e-6);
    }
}
