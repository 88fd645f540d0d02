#include "renderer/CPUCDLOp.h"

#include "kernelCheck.h"

#include <algorithm>

using namespace Rendering;
using Color::CDLOp;

namespace {

struct Decision
{
    CDLOp::Params slope, offset, power;
    double saturation;
};
const Decision kDecisions[] = {{{1, 1, 1}, {0, 0, 0}, {1, 1, 1}, 1},
                               {{1.35, 1.1, 0.71}, {0.05, -0.23, 0.11}, {0.93, 0.81, 1.27}, 1.2},
                               {{0, 0.004, 5}, {-0.3, 0.3, 1}, {0.002, 4, 1}, 0.3},
                               {{1, 2, 3}, {0, 0, 0}, {2, 2, 2}, 0}};

CDLOp cdlOp(DepthPair depths, CDLOp::Style style, const Decision& decision)
{
    return CDLOp(depths.in, depths.out, style, decision.slope, decision.offset, decision.power, decision.saturation);
}

Pixel renderPixel(CDLOp::Style style, const Decision& decision, const Pixel& pixel)
{
    return render(*makeCDLRenderer(cdlOp(kDepthPairs[0], style, decision)), pixel);
}

float clamped(float x)
{
    if (!(x > 0.f)) return 0.f;
    return x < 1.f ? x : 1.f;
}

float luma(const Pixel& c)
{
    float sum = 0.2126f * c[0];
    sum += 0.7152f * c[1];
    sum += 0.0722f * c[2];
    sum += 0.f;
    return sum;
}

/// A CDL worked out number by number.
Pixel decide(const CDLOp& op, const Pixel& in)
{
    const bool isReverse = op.getStyle() == CDLOp::STYLE_V1_2_REV || op.getStyle() == CDLOp::STYLE_NO_CLAMP_REV;
    const bool clamps = op.getStyle() == CDLOp::STYLE_V1_2_FWD || op.getStyle() == CDLOp::STYLE_V1_2_REV;
    const float outMax = fullScaleOf(op.getOutBitDepth());
    const float inverse = static_cast<float>(1.0 / double{fullScaleOf(op.getInBitDepth())});

    const auto factor = [&](double value) {
        const float v = static_cast<float>(value);
        return isReverse ? 1.f / std::max(v, 0.01f) : v;
    };
    const auto limit = [&](float x) { return clamps ? clamped(x) : x; };
    const auto power = [&](float x, std::size_t i) {
        return !clamps && x < 0.f ? x : scalarPow(x, factor(op.getPower()[i]));
    };
    const auto saturate = [&](Pixel c) {
        const float l = luma(c);
        for (std::size_t i = 0; i < 3; ++i) {
            c[i] = limit((c[i] - l) * factor(op.getSaturation()) + l);
        }
        return c;
    };

    Pixel c = {in[0] * inverse, in[1] * inverse, in[2] * inverse, 0.f};
    if (isReverse) {
        for (std::size_t i = 0; i < 3; ++i) {
            c[i] = limit(c[i]);
        }
        c = saturate(c);
        for (std::size_t i = 0; i < 3; ++i) {
            const float offset = -static_cast<float>(op.getOffset()[i]);
            c[i] = limit((power(c[i], i) + offset) * factor(op.getSlope()[i]));
        }
    } else {
        for (std::size_t i = 0; i < 3; ++i) {
            const float offset = static_cast<float>(op.getOffset()[i]);
            c[i] = power(limit(c[i] * factor(op.getSlope()[i]) + offset), i);
        }
        c = saturate(c);
    }
    return {c[0] * outMax, c[1] * outMax, c[2] * outMax, in[3] * (outMax * inverse)};
}

void expectDecisions(CDLOp::Style style)
{
    for (const DepthPair& depths : kDepthPairs) {
        for (const Decision& decision : kDecisions) {
            const CDLOp op = cdlOp(depths, style, decision);
            expectKernel(*makeCDLRenderer(op), fullScaleOf(depths.in), [&](const Pixel& in) { return decide(op, in); });
        }
    }
}

} // namespace

TEST(CDLRenderer, theStyleDecidesTheKernel)
{
    const auto typeOf = [](CDLOp::Style style) {
        return makeCDLRenderer(cdlOp(kDepthPairs[0], style, kDecisions[0]))->getType();
    };
    EXPECT_EQ(typeOf(CDLOp::STYLE_V1_2_FWD), 29);
    EXPECT_EQ(typeOf(CDLOp::STYLE_NO_CLAMP_FWD), 30);
    EXPECT_EQ(typeOf(CDLOp::STYLE_V1_2_REV), 31);
    EXPECT_EQ(typeOf(CDLOp::STYLE_NO_CLAMP_REV), 32);
}

TEST(CDLRenderer, anyOtherStyleGetsNone)
{
    EXPECT_EQ(makeCDLRenderer(cdlOp(kDepthPairs[0], static_cast<CDLOp::Style>(4), kDecisions[0])), nullptr);
}

TEST(CDLRenderer, channelsMix)
{
    const auto renderer = makeCDLRenderer(cdlOp(kDepthPairs[0], CDLOp::STYLE_V1_2_FWD, kDecisions[0]));
    EXPECT_EQ(renderer->getChannelUse(), ChannelUse::Mixed);
}

TEST(CDLRenderer, forwardClampsAfterEachStep) { expectDecisions(CDLOp::STYLE_V1_2_FWD); }

TEST(CDLRenderer, reverseClampsAfterEachStep) { expectDecisions(CDLOp::STYLE_V1_2_REV); }

TEST(CDLRenderer, forwardWithoutClamp) { expectDecisions(CDLOp::STYLE_NO_CLAMP_FWD); }

TEST(CDLRenderer, reverseWithoutClamp) { expectDecisions(CDLOp::STYLE_NO_CLAMP_REV); }

TEST(CDLRenderer, withoutEffectTheClampIsWhatIsLeft)
{
    const Pixel out = renderPixel(CDLOp::STYLE_V1_2_FWD, kDecisions[0], {1.5f, -0.5f, 1.f, 1.5f});
    EXPECT_NEAR(out[0], 1.f, 2e-5f);
    EXPECT_NEAR(out[1], 0.f, 2e-5f);
    EXPECT_NEAR(out[2], 1.f, 2e-5f);
    EXPECT_EQ(out[3], 1.5f); // alpha is never clamped
}

TEST(CDLRenderer, withoutEffectAndClampNothingChanges)
{
    const Pixel out = renderPixel(CDLOp::STYLE_NO_CLAMP_FWD, kDecisions[0], {1.5f, -0.5f, 0.f, -2.f});
    EXPECT_NEAR(out[0], 1.5f, 3e-5f);
    EXPECT_NEAR(out[1], -0.5f, 1e-6f);
    EXPECT_NEAR(out[2], 0.f, 1e-6f);
    EXPECT_EQ(out[3], -2.f);
}

TEST(CDLRenderer, aReverseSlopeIsNeverBelowAHundredth)
{
    // The clamp is off: 0.5 times 100.
    const Decision decision{{0, 0.005, 2}, {0, 0, 0}, {1, 1, 1}, 1};
    const Pixel out = renderPixel(CDLOp::STYLE_NO_CLAMP_REV, decision, {0.5f, 0.5f, 0.5f, 1.f});
    EXPECT_NEAR(out[0], 50.f, 2e-3f);
    EXPECT_NEAR(out[1], 50.f, 2e-3f);
    EXPECT_NEAR(out[2], 0.25f, 1e-5f);
}

TEST(CDLRenderer, aForwardSlopeOfZeroStaysZero)
{
    const Decision decision{{0, 0, 0}, {0.25, 0.5, 0}, {1, 1, 1}, 1};
    const Pixel out = renderPixel(CDLOp::STYLE_NO_CLAMP_FWD, decision, {0.7f, 0.8f, 0.9f, 1.f});
    EXPECT_NEAR(out[0], 0.25f, 1e-5f);
    EXPECT_NEAR(out[1], 0.5f, 1e-5f);
    EXPECT_NEAR(out[2], 0.f, 1e-6f);
}

TEST(CDLRenderer, saturationOfZeroLeavesLuma)
{
    const Decision decision{{1, 1, 1}, {0, 0, 0}, {1, 1, 1}, 0};
    const Pixel out = renderPixel(CDLOp::STYLE_V1_2_FWD, decision, {0.2f, 0.6f, 0.9f, 1.f});
    // 0.2126 * 0.2 + 0.7152 * 0.6 + 0.0722 * 0.9.
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(out[i], 0.53662f, 2e-5f);
    }
}

TEST(CDLRenderer, aNaNIsZeroWhereItIsClamped)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const Decision decision{{1, 1, 1}, {0, 0, 0}, {1, 1, 1}, 1};
    for (const auto style : {CDLOp::STYLE_V1_2_FWD, CDLOp::STYLE_V1_2_REV}) {
        const Pixel out = renderPixel(style, decision, {nan, nan, nan, 1.f});
        EXPECT_EQ(out, (Pixel{0.f, 0.f, 0.f, 1.f}));
    }
}

TEST(CDLRenderer, reverseUndoesForward)
{
    const Decision decision{{1.2, 0.9, 1.1}, {0.02, 0.05, -0.01}, {1.1, 0.9, 1.3}, 1.2};
    const Pixel in = {0.4f, 0.5f, 0.6f, 0.3f};
    const Pixel out =
        renderPixel(CDLOp::STYLE_NO_CLAMP_REV, decision, renderPixel(CDLOp::STYLE_NO_CLAMP_FWD, decision, in));
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(out[i], in[i], 1e-4f);
    }
}

TEST(CDLRenderer, theResultIsCloseToTheExactOne)
{
    const Decision& decision = kDecisions[1];
    const auto renderer = makeCDLRenderer(cdlOp(kDepthPairs[0], CDLOp::STYLE_V1_2_FWD, decision));
    const auto clamp = [](double x) { return std::min(std::max(x, 0.0), 1.0); };
    for (int i = 0; i < 30 * 30 * 30; ++i) {
        const Pixel in = {static_cast<float>(i % 30) / 29.f, static_cast<float>(i / 30 % 30) / 29.f,
                          static_cast<float>(i / 900) / 29.f, 1.f};
        double c[3];
        for (std::size_t k = 0; k < 3; ++k) {
            c[k] = std::pow(clamp(double{in[k]} * decision.slope[k] + decision.offset[k]), decision.power[k]);
        }
        const double exactLuma = 0.2126 * c[0] + 0.7152 * c[1] + 0.0722 * c[2];
        const Pixel out = render(*renderer, in);
        for (std::size_t k = 0; k < 3; ++k) {
            EXPECT_NEAR(out[k], clamp((c[k] - exactLuma) * decision.saturation + exactLuma), 1.2e-5);
        }
    }
}
