#include "renderer/CPUInvLut1DOp.h"

#include "tests/renderer/scalarLut1D.h"
#include "tests/utils/failure.h"

#include <gtest/gtest.h>

using namespace Rendering;
using Color::InvLut1DOp;
using Color::Lut1DOp;
using ScalarLut1D::Table;

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

using Pixels = std::vector<float>;

Lut1DOp makeLut(BitDepth in, BitDepth out, const Table& red, const Table& green, const Table& blue)
{
    Lut1DOp op(in, out, "", "", {}, Lut1DOp::INTERPOLATION_LINEAR, static_cast<uint32_t>(red.size()), HALF_FLAGS_NONE);
    for (std::size_t i = 0; i < red.size(); ++i) {
        op.getArray().setValue(3 * i, red[i]);
        op.getArray().setValue(3 * i + 1, green[i]);
        op.getArray().setValue(3 * i + 2, blue[i]);
    }
    return op;
}

/// The inverse of one curve in all channels, between 32f and 32f.
InvLut1DOp makeInverse(const Table& curve)
{
    return InvLut1DOp(makeLut(BIT_DEPTH_32f, BIT_DEPTH_32f, curve, curve, curve));
}

Pixels rendered(const InvLut1DOp& op, Pixels pixels)
{
    const auto renderer = makeInvLut1DRenderer(op);
    uint32_t width = 1;
    const auto count = static_cast<uint32_t>(pixels.size() / 4);
    for (uint32_t x = 0; x < count; x += width, width = width % 7 + 1) {
        float* run = pixels.data() + std::size_t{x} * 4;
        renderer->render({run, run, std::min(width, count - x), x, 0});
    }
    return pixels;
}

float renderedRed(const InvLut1DOp& op, float red) { return rendered(op, {red, 0.f, 0.f, 0.f})[0]; }

/// The exact search, walking over the curve instead of halving it.
float searched(const InvLut1DOp& op, std::size_t component, float x)
{
    const Color::Array& array = op.getArray();
    const InvLut1DOp::Run& run = op.getRun(component);
    const float sign = run.isIncreasing ? 1.f : -1.f;
    const auto valueAt = [&](std::size_t i) {
        const float value = array.getValues()[i * array.getNumColorComponents() + component];
        return run.isIncreasing ? value : -value;
    };
    const float scale = getBitDepthMaxValue(op.getOutBitDepth()) / static_cast<float>(array.getLength() - 1);

    float v = sign * x;
    if (valueAt(run.start) > v) v = valueAt(run.start);
    if (v > valueAt(run.end)) v = valueAt(run.end);
    std::size_t found = run.start;
    while (found < run.end && v > valueAt(found))
        ++found;
    const std::size_t before = found > run.start ? found - 1 : run.start;
    const float base = static_cast<float>(before - run.start) + static_cast<float>(run.start);
    if (before >= run.end) return base * scale;
    const float here = valueAt(before);
    const float next = valueAt(before + 1);
    if (!(next > here)) return base * scale;
    return (base + (v - here) / (next - here)) * scale;
}

void expectSearch(const InvLut1DOp& op)
{
    std::vector<float> values = ScalarLut1D::floatPatterns();
    const float range = getBitDepthValueRange(op.getInBitDepth());
    for (int i = -20; i <= 420; ++i)
        values.push_back(range * static_cast<float>(i) / 400.f);
    for (const float entry : op.getArray().getValues()) {
        values.insert(values.end(), {entry, std::nextafter(entry, kInfinity), std::nextafter(entry, -kInfinity)});
    }
    Pixels pixels;
    for (const float value : values)
        pixels.insert(pixels.end(), 4, value);

    const Pixels results = rendered(op, pixels);
    const float alphaScale = getBitDepthMaxValue(op.getOutBitDepth()) / getBitDepthMaxValue(op.getInBitDepth());
    for (std::size_t i = 0; i < pixels.size(); i += 4) {
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const std::size_t component = op.getArray().getNumColorComponents() == 1 ? 0 : channel;
            const float wanted = searched(op, component, pixels[i]);
            ASSERT_TRUE(ScalarLut1D::isSame(results[i + channel], wanted))
                << "channel " << channel << " of " << pixels[i] << " is " << results[i + channel] << ", not " << wanted;
        }
        ASSERT_TRUE(ScalarLut1D::isSame(results[i + 3], pixels[i + 3] * alphaScale));
    }
}

Table makeCurve(std::size_t length, float range, float (*curve)(float))
{
    Table values(length);
    for (std::size_t i = 0; i < length; ++i)
        values[i] = range * curve(static_cast<float>(i) / static_cast<float>(length - 1));
    return values;
}

float rise(float x) { return x * x * 1.2f - 0.1f; }
float fall(float x) { return 1.f - std::sqrt(x); }
float steps(float x) { return std::floor(x * 5.f) / 5.f; }
float flatEnds(float x) { return std::min(std::max(x * 2.f - 0.5f, 0.f), 1.f); }
float flat(float) { return 0.5f; }
float wave(float x) { return std::sin(x * 9.f); }

} // namespace

TEST(CPUInvLut1DOp, theStyleAndTheDomainChooseTheKernel)
{
    InvLut1DOp plain = makeInverse({0.f, 0.5f, 1.f});
    EXPECT_EQ(makeInvLut1DRenderer(plain)->getType(), RENDERER_INVERSE_LUT_1D);
    plain.setStyle(InvLut1DOp::STYLE_FAST);
    EXPECT_EQ(makeInvLut1DRenderer(plain)->getType(), RENDERER_LUT_1D);
    InvLut1DOp leaving = makeInverse({-1.f, 0.5f, 2.f});
    leaving.setStyle(InvLut1DOp::STYLE_FAST);
    EXPECT_EQ(makeInvLut1DRenderer(leaving)->getType(), RENDERER_LUT_1D_HALF_CODE);
    InvLut1DOp halfDomain(Lut1DOp(BIT_DEPTH_32f, BIT_DEPTH_32f, HALF_FLAGS_HALF_DOMAIN));
    EXPECT_EQ(makeInvLut1DRenderer(halfDomain)->getType(), RENDERER_LUT_1D_HALF_CODE);
    halfDomain.setStyle(InvLut1DOp::STYLE_EXACT);
    EXPECT_EQ(makeInvLut1DRenderer(halfDomain)->getType(), RENDERER_INVERSE_LUT_1D_HALF_CODE);
}

TEST(CPUInvLut1DOp, allAreSlowPerChannel)
{
    InvLut1DOp op = makeInverse({0.f, 0.5f, 1.f});
    EXPECT_EQ(makeInvLut1DRenderer(op)->getChannelUse(), ChannelUse::ApartAndSlow);
    op.setStyle(InvLut1DOp::STYLE_FAST);
    EXPECT_EQ(makeInvLut1DRenderer(op)->getChannelUse(), ChannelUse::ApartAndSlow);
}

TEST(CPUInvLut1DOp, theSearchFindsWhereTheCurveHasAValue)
{
    for (const BitDepth in : {BIT_DEPTH_8i, BIT_DEPTH_10i, BIT_DEPTH_16f, BIT_DEPTH_32f}) {
        for (const BitDepth out : {BIT_DEPTH_8i, BIT_DEPTH_16i, BIT_DEPTH_32f}) {
            for (const std::size_t length : {2u, 3u, 4u, 5u, 16u, 33u, 257u}) {
                const float range = getBitDepthValueRange(in);
                const auto curve = [&](float (*shape)(float)) { return makeCurve(length, range, shape); };
                expectSearch(InvLut1DOp(makeLut(out, in, curve(rise), curve(fall), curve(steps))));
                expectSearch(InvLut1DOp(makeLut(out, in, curve(flatEnds), curve(flat), curve(wave))));
            }
        }
    }
}

TEST(CPUInvLut1DOp, tablesWithInfinitiesAndNaNsAreSearchedToo)
{
    const Table infinite{-kInfinity, 0.f, 0.5f, kInfinity};
    const Table broken{0.f, kNaN, 0.5f, 1.f};
    const Table noNumber{kNaN, kNaN, kNaN, kNaN};
    expectSearch(InvLut1DOp(makeLut(BIT_DEPTH_32f, BIT_DEPTH_32f, infinite, broken, noNumber)));
}

TEST(CPUInvLut1DOp, aSingleCurveInvertsAllChannels)
{
    InvLut1DOp op = makeInverse({0.f, 0.f, 0.f, 0.f, 0.f});
    op.getArray().resize(5, 1);
    op.getArray().getValues() = {0.f, 0.1f, 0.3f, 0.6f, 1.f};
    op.setUp();
    expectSearch(op);
    EXPECT_EQ(rendered(op, {0.1f, 0.3f, 0.6f, 1.f}), (Pixels{0.25f, 0.5f, 0.75f, 1.f}));
}

TEST(CPUInvLut1DOp, aRisingCurve)
{
    const InvLut1DOp op = makeInverse({0.f, 0.25f, 0.5f, 2.f, 4.f});
    EXPECT_EQ(renderedRed(op, 0.f), 0.f);
    EXPECT_EQ(renderedRed(op, 0.125f), 0.125f);
    EXPECT_EQ(renderedRed(op, 1.25f), 0.625f);
    EXPECT_EQ(renderedRed(op, 3.f), 0.875f);
    EXPECT_EQ(renderedRed(op, 4.f), 1.f);
    EXPECT_EQ(renderedRed(op, -1.f), 0.f);
    EXPECT_EQ(renderedRed(op, 100.f), 1.f);
    EXPECT_TRUE(std::isnan(renderedRed(op, kNaN)));
}

TEST(CPUInvLut1DOp, aFallingCurve)
{
    const InvLut1DOp op = makeInverse({4.f, 2.f, 0.5f, 0.25f, 0.f});
    EXPECT_EQ(renderedRed(op, 4.f), 0.f);
    EXPECT_EQ(renderedRed(op, 3.f), 0.125f);
    EXPECT_EQ(renderedRed(op, 1.25f), 0.375f);
    EXPECT_EQ(renderedRed(op, 0.125f), 0.875f);
    EXPECT_EQ(renderedRed(op, 5.f), 0.f);
    EXPECT_EQ(renderedRed(op, -1.f), 1.f);
}

TEST(CPUInvLut1DOp, levelEndsAreSkipped)
{
    const InvLut1DOp op = makeInverse({0.f, 0.f, 0.5f, 1.f, 1.f});
    EXPECT_EQ(renderedRed(op, -2.f), 0.25f);
    EXPECT_EQ(renderedRed(op, 0.f), 0.25f);
    EXPECT_EQ(renderedRed(op, 0.75f), 0.625f);
    EXPECT_EQ(renderedRed(op, 1.f), 0.75f);
    EXPECT_EQ(renderedRed(op, 2.f), 0.75f);
}

TEST(CPUInvLut1DOp, aValueOnALevelStepIsMetAtItsStart)
{
    const InvLut1DOp op = makeInverse({0.f, 0.5f, 0.5f, 0.5f, 1.f});
    EXPECT_EQ(renderedRed(op, 0.5f), 0.25f);
    EXPECT_EQ(renderedRed(op, 0.75f), 0.875f);
    EXPECT_EQ(renderedRed(op, 0.25f), 0.125f);
}

TEST(CPUInvLut1DOp, aLevelCurveGivesItsStart)
{
    const InvLut1DOp op = makeInverse({0.5f, 0.5f, 0.5f});
    for (const float value : {0.f, 0.5f, 1.f, kNaN, kInfinity})
        EXPECT_EQ(renderedRed(op, value), 0.f);
}

TEST(CPUInvLut1DOp, theResultIsInTheScaleOfTheOutDepth)
{
    const InvLut1DOp op(
        makeLut(BIT_DEPTH_10i, BIT_DEPTH_8i, {0.f, 51.f, 255.f}, {0.f, 51.f, 255.f}, {0.f, 51.f, 255.f}));
    EXPECT_EQ(rendered(op, {51.f, 153.f, 255.f, 255.f}), (Pixels{511.5f, 767.25f, 1023.f, 255.f * (1023.f / 255.f)}));
}

TEST(CPUInvLut1DOp, theExactInverseOfAHalfDomainInvertsNothing)
{
    Lut1DOp lut(BIT_DEPTH_32f, BIT_DEPTH_32f, HALF_FLAGS_HALF_DOMAIN);
    for (float& value : lut.getArray().getValues())
        value *= 2.f;
    InvLut1DOp op(lut);
    op.setStyle(InvLut1DOp::STYLE_EXACT);
    const Pixels result = rendered(op, {0.5f, -3.f, kInfinity, 0.75f, //
                                        -0.f, 1e-40f, 1e30f, -1.f,    //
                                        1.f, 1.f, kNaN, kInfinity});
    EXPECT_EQ((Pixels(result.begin(), result.begin() + 8)),
              (Pixels{0.5f, -3.f, kInfinity, 0.f, -0.f, 1e-40f, 1e30f, -0.f}));
    EXPECT_TRUE(std::signbit(result[4]));
    EXPECT_TRUE(std::signbit(result[7]));
    EXPECT_TRUE(std::isnan(result[10]));
    // 0 times infinity is no number.
    EXPECT_TRUE(std::isnan(result[11]));
}

TEST(CPUInvLut1DOp, theInverseOfAHalfDomainDoesNotScaleColourBetweenTheDepths)
{
    InvLut1DOp op(Lut1DOp(BIT_DEPTH_32f, BIT_DEPTH_8i, HALF_FLAGS_HALF_DOMAIN));
    op.setStyle(InvLut1DOp::STYLE_EXACT);
    EXPECT_EQ(rendered(op, {200.f, 100.f, 0.f, 255.f}), (Pixels{200.f, 100.f, 0.f, 0.f}));
}

TEST(CPUInvLut1DOp, aHalfDomainInverseOfADepthThatIsNoneIsRefused)
{
    InvLut1DOp op(Lut1DOp(BIT_DEPTH_32f, BIT_DEPTH_32f, HALF_FLAGS_HALF_DOMAIN));
    op.setStyle(InvLut1DOp::STYLE_EXACT);
    op.setOutBitDepth(BIT_DEPTH_UNKNOWN);
    EXPECT_EQ(failureOf([&] { makeInvLut1DRenderer(op); }),
              (Failure{0x4020001, "COLOR:RENDERER:CPU", "Op 'Inverse LUT 1D' illegal attribute 'OutputBitDepth'"}));
}

TEST(CPUInvLut1DOp, theFastStyleComesCloseToTheSearch)
{
    for (const BitDepth in : {BIT_DEPTH_8i, BIT_DEPTH_16i, BIT_DEPTH_16f, BIT_DEPTH_32f}) {
        const float range = getBitDepthValueRange(in);
        const Table curve = makeCurve(1024, range, [](float x) { return x * (0.5f + 0.5f * x); });
        InvLut1DOp op(makeLut(BIT_DEPTH_32f, in, curve, curve, curve));
        Pixels pixels;
        for (int i = 0; i < 256; ++i)
            pixels.insert(pixels.end(), 4,
                          in == BIT_DEPTH_16f ? static_cast<float>(half(static_cast<float>(i) / 255.f))
                                              : std::floor(range / 255.f * static_cast<float>(i)));
        const Pixels exact = rendered(op, pixels);
        op.setStyle(InvLut1DOp::STYLE_FAST);
        const Pixels fast = rendered(op, pixels);
        for (std::size_t i = 0; i < pixels.size(); ++i)
            ASSERT_NEAR(fast[i], exact[i], 1e-5f) << pixels[i];
    }
}

TEST(CPUInvLut1DOp, theFastStyleFollowsTheBypassOfTheOp)
{
    InvLut1DOp op = makeInverse({0.f, 0.5f, 1.f});
    op.setStyle(InvLut1DOp::STYLE_FAST);
    op.getBypass()->makeDynamic();
    const auto renderer = makeInvLut1DRenderer(op);
    EXPECT_FALSE(renderer->readDynamicValues().isBypassed);
    op.getBypass()->set(true);
    EXPECT_TRUE(renderer->readDynamicValues().isBypassed);
}
