#include "renderer/CPULogOp.h"

#include "kernelCheck.h"
#include "tests/utils/failure.h"

#include <algorithm>

using namespace Rendering;
using Color::LogOp;

namespace {

constexpr float kFloor = 1.1754944e-38f;
const LogOp::Params kFilm = {0.6, 685, 95, 1, 0};
const LogOp::Params kParams[3] = {kFilm, {0.5, 700, 64, 1.5, 0.1}, {1.0, 600, 0, 0.8, -0.2}};

LogOp logOp(DepthPair depths, LogOp::Style style)
{
    if (!LogOp::hasParams(style)) return LogOp(depths.in, depths.out, style);
    return LogOp(depths.in, depths.out, style, kParams[0], kParams[1], kParams[2]);
}

/// The constants of a film curve, worked out from its parameters in single precision.
struct Film
{
    float refWhite, densityFactor, gain, offset, shadow;

    explicit Film(const LogOp::Params& params)
    {
        const auto param = [&](std::size_t i) { return static_cast<float>(params[i]); };
        refWhite = param(1) / 1023.f;
        densityFactor = 2.046f / param(0);
        const volatile float ten = 10.f;
        const float blackExponent = std::min((param(2) / 1023.f - refWhite) * densityFactor, -0.0001f);
        const float range = param(3) - param(4);
        gain = range / (1.f - std::pow(ten, blackExponent));
        offset = gain - range;
        shadow = param(4);
    }
};

float inverseOf(BitDepth depth) { return static_cast<float>(1.0 / double{fullScaleOf(depth)}); }

/// The larger one, the floor for a NaN.
float floored(float x) { return x > kFloor ? x : kFloor; }

/// Checks the kernel of a style against curve(value, channel), and that alpha is scaled alone.
template <class Curve>
void expectCurve(LogOp::Style style, Curve curve)
{
    for (const DepthPair& depths : kDepthPairs) {
        const float inverse = inverseOf(depths.in);
        const float outMax = fullScaleOf(depths.out);
        expectKernel(*makeLogRenderer(logOp(depths, style)), fullScaleOf(depths.in), [&](const Pixel& in) {
            return Pixel{curve(in[0], 0, inverse, outMax), curve(in[1], 1, inverse, outMax),
                         curve(in[2], 2, inverse, outMax), in[3] * (outMax * inverse)};
        });
    }
}

} // namespace

TEST(LogRenderer, theStyleDecidesTheKernel)
{
    const auto typeOf = [](LogOp::Style style) { return makeLogRenderer(logOp(kDepthPairs[0], style))->getType(); };
    EXPECT_EQ(typeOf(LogOp::STYLE_LOG10), 25);
    EXPECT_EQ(typeOf(LogOp::STYLE_LOG2), 25);
    EXPECT_EQ(typeOf(LogOp::STYLE_ANTI_LOG10), 26);
    EXPECT_EQ(typeOf(LogOp::STYLE_ANTI_LOG2), 26);
    EXPECT_EQ(typeOf(LogOp::STYLE_LOG_TO_LIN), 27);
    EXPECT_EQ(typeOf(LogOp::STYLE_LIN_TO_LOG), 28);
}

TEST(LogRenderer, aStyleBeyondTheLastGetsNone)
{
    EXPECT_EQ(makeLogRenderer(LogOp(BIT_DEPTH_32f, BIT_DEPTH_32f, static_cast<LogOp::Style>(6))), nullptr);
}

TEST(LogRenderer, aWrongNumberOfParametersIsRefused)
{
    const LogOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, LogOp::STYLE_LIN_TO_LOG, kFilm, kFilm, {0.6, 685});
    const Failure expected{0x20b0002, "COLOR:TRANSFORM:LOG", "The specified Log style must have 5 parameters"};
    EXPECT_EQ(failureOf([&] { makeLogRenderer(op); }), expected);
}

TEST(LogRenderer, everyChannelIsOnItsOwn)
{
    for (const auto style :
         {LogOp::STYLE_LOG10, LogOp::STYLE_ANTI_LOG2, LogOp::STYLE_LOG_TO_LIN, LogOp::STYLE_LIN_TO_LOG}) {
        EXPECT_EQ(makeLogRenderer(logOp(kDepthPairs[0], style))->getChannelUse(), ChannelUse::ApartAndSlow);
    }
}

TEST(LogRenderer, logarithmsToBase10And2)
{
    expectCurve(LogOp::STYLE_LOG10, [](float v, int, float inverse, float outMax) {
        return scalarLog2(floored(v * inverse)) * (0.30103001f * outMax);
    });
    expectCurve(LogOp::STYLE_LOG2, [](float v, int, float inverse, float outMax) {
        return scalarLog2(floored(v * inverse)) * (1.f * outMax);
    });
}

TEST(LogRenderer, exponentialsToBase10And2)
{
    expectCurve(LogOp::STYLE_ANTI_LOG10,
                [](float v, int, float inverse, float outMax) { return scalarExp2(v * inverse * 3.321928f) * outMax; });
    expectCurve(LogOp::STYLE_ANTI_LOG2,
                [](float v, int, float inverse, float outMax) { return scalarExp2(v * inverse) * outMax; });
}

TEST(LogRenderer, filmDensitiesToLight)
{
    expectCurve(LogOp::STYLE_LOG_TO_LIN, [](float v, int channel, float inverse, float outMax) {
        const Film c(kParams[channel]);
        const float slope = inverse * c.densityFactor;
        const float white = c.refWhite * c.densityFactor;
        const float y = (v * slope - white) * 3.321928f;
        const float lift = (c.shadow - c.offset) * outMax;
        return scalarExp2(y) * (outMax * c.gain) + lift;
    });
}

TEST(LogRenderer, lightToFilmDensities)
{
    expectCurve(LogOp::STYLE_LIN_TO_LOG, [](float v, int channel, float inverse, float outMax) {
        const Film c(kParams[channel]);
        const float slope = inverse / c.gain;
        const float lift = (c.offset - c.shadow) / c.gain;
        const float gain = outMax * 0.30103001f / c.densityFactor;
        const float white = outMax * c.refWhite;
        return scalarLog2(floored(v * slope + lift)) * gain + white;
    });
}

TEST(LogRenderer, filmCurvesUndoEachOther)
{
    const LogOp toLin(BIT_DEPTH_16i, BIT_DEPTH_32f, LogOp::STYLE_LOG_TO_LIN, kFilm, kFilm, kFilm);
    const LogOp toLog(BIT_DEPTH_32f, BIT_DEPTH_16i, LogOp::STYLE_LIN_TO_LOG, kFilm, kFilm, kFilm);
    const auto first = makeLogRenderer(toLin);
    const auto second = makeLogRenderer(toLog);
    // From black, code value 95 of 1023.
    for (float code = 6100.f; code <= 65535.f; code += 97.f) {
        const Pixel light = render(*first, {code, code, code, code});
        const Pixel back = render(*second, light);
        for (std::size_t c = 0; c < 4; ++c) {
            EXPECT_NEAR(back[c], code, 4.f) << "channel " << c;
        }
    }
}

TEST(LogRenderer, theLogarithmOfOneIsThePolynomialsAndNotZero)
{
    const float result = render(*makeLogRenderer(logOp(kDepthPairs[0], LogOp::STYLE_LOG2)), {1.f, 1.f, 1.f, 1.f})[0];
    EXPECT_NEAR(result, 1.3e-5f, 1e-6f);
}

TEST(LogRenderer, zeroNegativesAndNaNAreRaisedToTheSmallestNormalFloat)
{
    const auto renderer = makeLogRenderer(logOp(kDepthPairs[0], LogOp::STYLE_LOG2));
    const float lowest = scalarLog2(kFloor);
    EXPECT_NEAR(lowest, -126.f, 1e-4f);
    const Pixel out = render(*renderer, {0.f, -3.f, std::numeric_limits<float>::quiet_NaN(), -0.f});
    const Pixel expected = {lowest, lowest, lowest, -0.f};
    EXPECT_EQ(out, expected);
}

TEST(LogRenderer, exponentialsOfLargeNumbersAreInfinityAndZero)
{
    const float infinity = std::numeric_limits<float>::infinity();
    const auto renderer = makeLogRenderer(logOp(kDepthPairs[0], LogOp::STYLE_ANTI_LOG10));
    const Pixel large = render(*renderer, {39.f, 1e9f, infinity, 1.f});
    EXPECT_EQ(large, (Pixel{infinity, infinity, infinity, 1.f}));
    const Pixel small = render(*renderer, {-39.f, -1e9f, -infinity, 1.f});
    EXPECT_EQ(small, (Pixel{0.f, 0.f, 0.f, 1.f}));
}

TEST(LogRenderer, theCurvesAreCloseToTheExactOnes)
{
    // The film curve of the parameters that are given most often.
    const double factor = 2.046 / 0.6;
    const double white = 685.0 / 1023.0;
    const double gain = 1.0 / (1.0 - std::pow(10.0, (95.0 / 1023.0 - white) * factor));
    const auto log10 = makeLogRenderer(logOp(kDepthPairs[0], LogOp::STYLE_LOG10));
    const auto antiLog10 = makeLogRenderer(logOp(kDepthPairs[0], LogOp::STYLE_ANTI_LOG10));
    const auto toLog = makeLogRenderer(logOp(kDepthPairs[0], LogOp::STYLE_LIN_TO_LOG));
    for (int i = 1; i <= 20000; ++i) {
        const float v = static_cast<float>(i) / 20000.f;
        const double x = double{v};
        const Pixel in = {v, v, v, v};
        EXPECT_NEAR(render(*log10, in)[0], std::log10(x), 4.3e-6);
        EXPECT_NEAR(render(*antiLog10, in)[0] / std::pow(10.0, x), 1.0, 3.8e-6);
        EXPECT_NEAR(render(*toLog, in)[0], std::log10((x + gain - 1.0) / gain) / factor + white, 1.5e-6);
    }
}
