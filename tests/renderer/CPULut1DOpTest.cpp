#include "renderer/CPULut1DOp.h"
#include "renderer/CPUInvLut1DOp.h"

#include "renderer/pixelFormatAccess.h"
#include "tests/renderer/scalarLut1D.h"
#include "tests/utils/failure.h"
#include "tests/utils/logRecorder.h"

#include <gtest/gtest.h>
#include <string>

using namespace Rendering;
using Color::Lut1DOp;
using ScalarLut1D::Rgb;
using ScalarLut1D::Table;

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kLargest = 3.4028235e38f;
constexpr BitDepth kDepths[] = {BIT_DEPTH_8i,  BIT_DEPTH_10i, BIT_DEPTH_12i,
                                BIT_DEPTH_16i, BIT_DEPTH_16f, BIT_DEPTH_32f};

using Channels = std::array<Table, 3>;
using Pixels = std::vector<float>;

/// Three different curves in the scale of the out depth that also leave its range, with entries that are no number or
/// not finite.
Lut1DOp makeLut(BitDepth in, BitDepth out, uint32_t length, HalfFlags flags, bool adjustsHue)
{
    Lut1DOp op(in, out, "", "", {}, Lut1DOp::INTERPOLATION_LINEAR, length, flags);
    const float range = getBitDepthValueRange(out);
    for (uint32_t i = 0; i < length; ++i) {
        const float x = static_cast<float>(i) / static_cast<float>(length);
        op.getArray().setValue(3 * i, range * (1.2f * x * x - 0.1f));
        op.getArray().setValue(3 * i + 1, range * (1.05f - x));
        op.getArray().setValue(3 * i + 2, range * std::sin(9.f * x));
    }
    if (length >= 16) {
        op.getArray().setValue(3 * 5, kNaN);
        op.getArray().setValue(3 * 7 + 1, kInfinity);
        op.getArray().setValue(3 * 9 + 2, -kInfinity);
        op.getArray().setValue(3 * (length - 1), kNaN);
    }
    if (adjustsHue) op.setHueAdjust(Lut1DOp::HUE_ADJUST_DW3);
    return op;
}

Channels channelsOf(const Lut1DOp& op)
{
    Channels channels;
    const Table& values = op.getArray().getValues();
    for (std::size_t i = 0; i < values.size(); ++i)
        channels[i % 3].push_back(values[i]);
    return channels;
}

/// An entry as the table of an op keeps it.
float kept(float value, const Lut1DOp& op)
{
    const BitDepth out = op.getOutBitDepth();
    const bool adjustsHue = op.getHueAdjust() != Lut1DOp::HUE_ADJUST_NONE;
    if (isFloatDepth(out)) {
        value = ScalarLut1D::finite(value);
        return out == BIT_DEPTH_16f && !adjustsHue ? static_cast<float>(half(value)) : value;
    }
    const float maximum = getBitDepthMaxValue(out);
    value += 0.5f;
    if (value > maximum) value = maximum;
    if (value < 0.f) value = 0.f;
    if (adjustsHue) return value;
    return std::isnan(value) ? 0.f : std::floor(value);
}

Channels keptTables(Channels channels, const Lut1DOp& op)
{
    for (Table& table : channels) {
        for (float& entry : table)
            entry = kept(entry, op);
    }
    return channels;
}

/// The curves at each code of the op's in depth, worked out at 32f.
Channels sampledPerCode(const Lut1DOp& op)
{
    const BitDepth in = op.getInBitDepth();
    const float range = getBitDepthValueRange(op.getOutBitDepth());
    const float toUnit = getBitDepthMaxValue(BIT_DEPTH_32f) / getBitDepthMaxValue(op.getOutBitDepth());
    Channels sampled;
    std::size_t channel = 0;
    for (Table curve : channelsOf(op)) {
        for (float& entry : curve)
            entry = ScalarLut1D::finite(toUnit == 1.f ? entry : entry * toUnit);
        const unsigned codes = in == BIT_DEPTH_16f ? 65536 : static_cast<unsigned>(getBitDepthMaxValue(in)) + 1;
        const float step = getBitDepthValueRange(in) / static_cast<float>(codes - 1);
        for (unsigned code = 0; code < codes; ++code) {
            const float identity =
                in == BIT_DEPTH_16f ? ScalarLut1D::valueOfHalf(code) : static_cast<float>(code) * step;
            const float x = identity * (1.f / getBitDepthValueRange(in));
            const float y = op.isHalfDomain() ? ScalarLut1D::halfDomain(curve, x) : ScalarLut1D::linear(curve, x);
            sampled[channel].push_back(y * range);
        }
        ++channel;
    }
    return sampled;
}

/// Pixels that hold every value in each channel, in changing company.
Pixels pixelsOf(const std::vector<float>& values)
{
    Pixels pixels;
    const std::size_t count = values.size();
    for (std::size_t i = 0; i < count; ++i) {
        pixels.insert(pixels.end(), {values[i], values[(i * 7 + 3) % count], values[(i * 13 + 5) % count], values[i]});
    }
    return pixels;
}

/// Every code of the in depth's storage as a kernel meets it.
std::vector<float> codesOf(BitDepth in)
{
    std::vector<float> values;
    for (unsigned code = 0; code < (in == BIT_DEPTH_8i ? 256u : 65536u); ++code)
        values.push_back(in == BIT_DEPTH_16f ? ScalarLut1D::valueOfHalf(code) : static_cast<float>(code));
    return values;
}

std::size_t indexOf(float value, BitDepth in, std::size_t length)
{
    const std::size_t code = in == BIT_DEPTH_16f ? half(value).bits() : static_cast<std::size_t>(value);
    return std::min(code, length - 1);
}

/// Renders in place, in runs whose widths leave every kind of rest.
Pixels rendered(const Lut1DOp& op, Pixels pixels)
{
    const auto renderer = makeLut1DRenderer(op);
    uint32_t width = 1;
    const auto count = static_cast<uint32_t>(pixels.size() / 4);
    for (uint32_t x = 0; x < count; x += width, width = width % 11 + 1) {
        float* run = pixels.data() + std::size_t{x} * 4;
        renderer->render({run, run, std::min(width, count - x), x, 0});
    }
    return pixels;
}

/// Compares with `lookUp`, from a table and a value to a result.
template <class LookUp>
void expectLookUps(const Lut1DOp& op, const Channels& tables, const Pixels& pixels, LookUp&& lookUp)
{
    const float alphaScale = getBitDepthMaxValue(op.getOutBitDepth()) / getBitDepthMaxValue(op.getInBitDepth());
    const bool adjustsHue = op.getHueAdjust() != Lut1DOp::HUE_ADJUST_NONE;
    const Pixels results = rendered(op, pixels);
    for (std::size_t i = 0; i < pixels.size(); i += 4) {
        const Rgb in{pixels[i], pixels[i + 1], pixels[i + 2]};
        Rgb wanted{lookUp(tables[0], in[0]), lookUp(tables[1], in[1]), lookUp(tables[2], in[2])};
        if (adjustsHue) wanted = ScalarLut1D::hueAdjusted(in, wanted);
        for (std::size_t channel = 0; channel < 3; ++channel) {
            ASSERT_TRUE(ScalarLut1D::isSame(results[i + channel], wanted[channel]))
                << "channel " << channel << " of " << in[0] << " " << in[1] << " " << in[2] << " is "
                << results[i + channel] << ", not " << wanted[channel];
        }
        ASSERT_TRUE(ScalarLut1D::isSame(results[i + 3], pixels[i + 3] * alphaScale));
    }
}

void expectDirectLookUps(const Lut1DOp& op, const Channels& tables)
{
    const BitDepth in = op.getInBitDepth();
    expectLookUps(op, keptTables(tables, op), pixelsOf(codesOf(in)),
                  [in](const Table& table, float value) { return table[indexOf(value, in, table.size())]; });
}

void expectInterpolation(const Lut1DOp& op)
{
    std::vector<float> values = ScalarLut1D::floatPatterns();
    for (int i = -50; i < 5000; ++i)
        values.push_back(static_cast<float>(i) / 4500.f);
    expectLookUps(op, keptTables(channelsOf(op), op), pixelsOf(values), [&](const Table& table, float value) {
        return op.isHalfDomain() ? ScalarLut1D::halfDomain(table, value) : ScalarLut1D::linear(table, value);
    });
}

/// An op of 32f with the same curve in all channels.
Lut1DOp makeMono(const Table& curve)
{
    Lut1DOp op(static_cast<uint32_t>(curve.size()));
    for (std::size_t i = 0; i < curve.size() * 3; ++i)
        op.getArray().setValue(i, curve[i / 3]);
    return op;
}

Pixels renderedPixel(const Lut1DOp& op, const Pixels& pixel) { return rendered(op, pixel); }

RendererType typeOf(HalfFlags flags, bool adjustsHue)
{
    Lut1DOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, flags);
    if (adjustsHue) op.setHueAdjust(Lut1DOp::HUE_ADJUST_DW3);
    return makeLut1DRenderer(op)->getType();
}

} // namespace

TEST(CPULut1DOp, aTableThatIsNotAsLargeAsItSaysIsRefused)
{
    const Failure illegal = {0x2010005, "COLOR:TRANSFORM:LUT_1D", "Array content illegal"};
    Lut1DOp empty(0);
    EXPECT_EQ(failureOf([&] { makeLut1DRenderer(empty); }), illegal);
    Lut1DOp tooShort(4);
    tooShort.getArray().getValues().resize(5);
    EXPECT_EQ(failureOf([&] { makeLut1DRenderer(tooShort); }), illegal);
    EXPECT_EQ(failureOf([&] { makeInvLut1DRenderer(Color::InvLut1DOp(empty)); }), illegal);
}

TEST(CPULut1DOp, domainAndHueAdjustChooseTheKernel)
{
    EXPECT_EQ(typeOf(HALF_FLAGS_NONE, false), RENDERER_LUT_1D);
    EXPECT_EQ(typeOf(HALF_FLAGS_HALF_DOMAIN, false), RENDERER_LUT_1D_HALF_CODE);
    EXPECT_EQ(typeOf(HALF_FLAGS_NONE, true), RENDERER_LUT_1D_HUE_ADJUST);
    EXPECT_EQ(typeOf(HALF_FLAGS_HALF_DOMAIN, true), RENDERER_LUT_1D_HALF_CODE_HUE_ADJUST);
    EXPECT_EQ(typeOf(HALF_FLAGS_RAW_HALFS, false), RENDERER_LUT_1D);
    // Whatever is not none keeps the hue.
    Lut1DOp unknownHueAdjust(2);
    unknownHueAdjust.setHueAdjust(static_cast<Lut1DOp::HueAdjust>(7));
    EXPECT_EQ(makeLut1DRenderer(unknownHueAdjust)->getType(), RENDERER_LUT_1D_HUE_ADJUST);
}

TEST(CPULut1DOp, theInDepthDoesNotChangeTheKind)
{
    for (const BitDepth in : kDepths) {
        EXPECT_EQ(makeLut1DRenderer(Lut1DOp(in, in, HALF_FLAGS_HALF_DOMAIN))->getType(), RENDERER_LUT_1D_HALF_CODE);
        EXPECT_EQ(makeLut1DRenderer(Lut1DOp(in, in, HALF_FLAGS_NONE))->getType(), RENDERER_LUT_1D);
    }
}

TEST(CPULut1DOp, onlyHueAdjustMixesTheChannels)
{
    Lut1DOp op(16);
    EXPECT_EQ(makeLut1DRenderer(op)->getChannelUse(), ChannelUse::ApartAndSlow);
    op.setHueAdjust(Lut1DOp::HUE_ADJUST_DW3);
    EXPECT_EQ(makeLut1DRenderer(op)->getChannelUse(), ChannelUse::Mixed);
}

TEST(CPULut1DOp, everyIntegerCodeIsAnIndex)
{
    for (const BitDepth in : {BIT_DEPTH_8i, BIT_DEPTH_10i, BIT_DEPTH_12i, BIT_DEPTH_16i}) {
        for (const BitDepth out : kDepths) {
            for (const bool adjustsHue : {false, true}) {
                const auto length = static_cast<uint32_t>(getBitDepthMaxValue(in)) + 1;
                const Lut1DOp op = makeLut(in, out, length, HALF_FLAGS_NONE, adjustsHue);
                expectDirectLookUps(op, channelsOf(op));
            }
        }
    }
}

TEST(CPULut1DOp, everyHalfCodeIsAnIndexIntoAHalfDomain)
{
    for (const BitDepth out : kDepths) {
        for (const bool adjustsHue : {false, true}) {
            const Lut1DOp op = makeLut(BIT_DEPTH_16f, out, 65536, HALF_FLAGS_HALF_DOMAIN, adjustsHue);
            expectDirectLookUps(op, channelsOf(op));
        }
    }
}

TEST(CPULut1DOp, aTableThatCodesDoNotAddressIsSampledPerCode)
{
    for (const BitDepth in : {BIT_DEPTH_8i, BIT_DEPTH_10i, BIT_DEPTH_12i, BIT_DEPTH_16i, BIT_DEPTH_16f}) {
        for (const BitDepth out : {BIT_DEPTH_8i, BIT_DEPTH_16i, BIT_DEPTH_16f, BIT_DEPTH_32f}) {
            for (const bool adjustsHue : {false, true}) {
                for (const uint32_t length : {1u, 2u, 3u, 1000u}) {
                    const Lut1DOp op = makeLut(in, out, length, HALF_FLAGS_NONE, adjustsHue);
                    expectDirectLookUps(op, sampledPerCode(op));
                }
                if (in == BIT_DEPTH_16f) continue;
                const Lut1DOp op = makeLut(in, out, 65536, HALF_FLAGS_HALF_DOMAIN, adjustsHue);
                expectDirectLookUps(op, sampledPerCode(op));
            }
        }
    }
}

TEST(CPULut1DOp, a32fValueLiesBetweenTwoEntries)
{
    for (const BitDepth out : kDepths) {
        for (const bool adjustsHue : {false, true}) {
            for (const uint32_t length : {1u, 2u, 3u, 1024u, 65536u})
                expectInterpolation(makeLut(BIT_DEPTH_32f, out, length, HALF_FLAGS_NONE, adjustsHue));
        }
    }
}

TEST(CPULut1DOp, a32fValueLiesBetweenTwoHalfs)
{
    for (const BitDepth out : kDepths) {
        for (const bool adjustsHue : {false, true})
            expectInterpolation(makeLut(BIT_DEPTH_32f, out, 65536, HALF_FLAGS_HALF_DOMAIN, adjustsHue));
    }
}

TEST(CPULut1DOp, valuesOutsideAPlainDomainAreClampedToItsEnds)
{
    const Lut1DOp op = makeMono({0.25f, 0.5f, 4.f});
    EXPECT_EQ(renderedPixel(op, {1.f, -0.5f, 2.f, 0.5f}), (Pixels{4.f, 0.25f, 4.f, 0.5f}));
    EXPECT_EQ(renderedPixel(op, {0.25f, 0.75f, kNaN, -1.f}), (Pixels{0.375f, 2.25f, 0.25f, -1.f}));
    EXPECT_EQ(renderedPixel(op, {kInfinity, -kInfinity, -0.f, 1.f}), (Pixels{4.f, 0.25f, 0.25f, 1.f}));
}

TEST(CPULut1DOp, aSingleEntryIsTheResultForEveryValue)
{
    EXPECT_EQ(renderedPixel(makeMono({0.75f}), {kNaN, kInfinity, -3.f, 1.f}), (Pixels{0.75f, 0.75f, 0.75f, 1.f}));
}

TEST(CPULut1DOp, anInfinityOf32fReadsTheLargestHalf)
{
    Lut1DOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, HALF_FLAGS_HALF_DOMAIN);
    for (std::size_t channel = 0; channel < 3; ++channel) {
        op.getArray().setValue(3 * 0x7bff + channel, 7.f);
        op.getArray().setValue(3 * 0xfbff + channel, -8.f);
        op.getArray().setValue(3 * 0x7c00 + channel, 99.f);
        op.getArray().setValue(3 * 0xfc00 + channel, 99.f);
    }
    EXPECT_EQ(renderedPixel(op, {100000.f, kInfinity, -kInfinity, 1.f}), (Pixels{7.f, 7.f, -8.f, 1.f}));
    // The first two are still rounded to the largest half.
    EXPECT_EQ(renderedPixel(op, {65510.f, -65519.f, -65520.f, 1.f}), (Pixels{7.f, -8.f, -8.f, 1.f}));
}

TEST(CPULut1DOp, aNaNOf32fReadsAHalfDomainAtItsOwnCode)
{
    Lut1DOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, HALF_FLAGS_HALF_DOMAIN);
    op.getArray().setValue(3 * 0x7e00, 5.f);
    EXPECT_EQ(renderedPixel(op, {kNaN, 0.5f, 0.f, 1.f}), (Pixels{5.f, 0.5f, 0.f, 1.f}));
}

TEST(CPULut1DOp, a16fInfinityAndNaNReadTheirOwnEntries)
{
    Lut1DOp op(BIT_DEPTH_16f, BIT_DEPTH_32f, HALF_FLAGS_HALF_DOMAIN);
    op.getArray().setValue(3 * 0x7c00, 11.f);
    op.getArray().setValue(3 * 0xfc00 + 1, 12.f);
    op.getArray().setValue(3 * 0x7e01 + 2, 13.f);
    EXPECT_EQ(renderedPixel(op, {kInfinity, -kInfinity, ScalarLut1D::valueOfHalf(0x7e01), 1.f}),
              (Pixels{11.f, 12.f, 13.f, 1.f}));
}

TEST(CPULut1DOp, tablesOfIntegerDepthsAreRounded)
{
    Lut1DOp op(BIT_DEPTH_8i, BIT_DEPTH_8i, HALF_FLAGS_NONE);
    op.getArray().setValue(3 * 10, 20.5f);
    op.getArray().setValue(3 * 10 + 1, 20.4f);
    op.getArray().setValue(3 * 10 + 2, 300.f);
    op.getArray().setValue(3 * 11, -7.f);
    op.getArray().setValue(3 * 11 + 1, kNaN);
    op.getArray().setValue(3 * 11 + 2, kInfinity);
    EXPECT_EQ(renderedPixel(op, {10.f, 10.f, 10.f, 255.f}), (Pixels{21.f, 20.f, 255.f, 255.f}));
    EXPECT_EQ(renderedPixel(op, {11.f, 11.f, 11.f, 0.f}), (Pixels{0.f, 0.f, 255.f, 0.f}));
}

TEST(CPULut1DOp, hueAdjustTablesOfIntegerDepthsKeepTheHalfThatRoundsUp)
{
    Lut1DOp op(BIT_DEPTH_32f, BIT_DEPTH_8i, HALF_FLAGS_NONE);
    op.setHueAdjust(Lut1DOp::HUE_ADJUST_DW3);
    // The entries are 255 times the input, 0.5 is added to each, and the top one stays within the depth.
    EXPECT_EQ(renderedPixel(op, {1.f, 0.f, 0.f, 1.f}), (Pixels{255.f, 0.5f, 0.5f, 255.f}));
}

TEST(CPULut1DOp, entriesThatAreNotFiniteBecomeFinite)
{
    Lut1DOp op(BIT_DEPTH_8i, BIT_DEPTH_32f, HALF_FLAGS_NONE);
    op.getArray().setValue(0, kInfinity);
    op.getArray().setValue(1, -kInfinity);
    op.getArray().setValue(2, kNaN);
    EXPECT_EQ(renderedPixel(op, {0.f, 0.f, 0.f, 0.f}), (Pixels{kLargest, -kLargest, 0.f, 0.f}));
}

TEST(CPULut1DOp, entriesOf16fAreHalfs)
{
    Lut1DOp op(BIT_DEPTH_8i, BIT_DEPTH_16f, HALF_FLAGS_NONE);
    op.getArray().setValue(0, kInfinity);
    op.getArray().setValue(1, 0.1f);
    op.getArray().setValue(2, -0.f);
    const Pixels result = renderedPixel(op, {0.f, 0.f, 0.f, 0.f});
    EXPECT_EQ(result, (Pixels{kInfinity, 0.0999755859375f, -0.f, 0.f}));
    EXPECT_TRUE(std::signbit(result[2]));
}

TEST(CPULut1DOp, alphaIsScaledBetweenTheDepths)
{
    EXPECT_EQ(renderedPixel(Lut1DOp(BIT_DEPTH_8i, BIT_DEPTH_10i, HALF_FLAGS_NONE), {0.f, 0.f, 0.f, 100.f})[3],
              100.f * (1023.f / 255.f));
}

TEST(CPULut1DOp, codesAboveTheDepthsMaximumRepeatTheLastEntry)
{
    Lut1DOp op(BIT_DEPTH_10i, BIT_DEPTH_32f, HALF_FLAGS_NONE);
    op.getArray().setValue(3 * 1023, 3.f);
    EXPECT_EQ(renderedPixel(op, {1023.f, 1024.f, 65535.f, 1023.f})[0], 3.f);
    op.getArray().setValue(3 * 1023 + 1, 4.f);
    op.getArray().setValue(3 * 1023 + 2, 5.f);
    EXPECT_EQ(renderedPixel(op, {1023.f, 1024.f, 65535.f, 1023.f}), (Pixels{3.f, 4.f, 5.f, 1.f}));
}

TEST(CPULut1DOp, anyFloatStaysWithinTheTablesOfCodes)
{
    for (const BitDepth in : {BIT_DEPTH_8i, BIT_DEPTH_10i, BIT_DEPTH_16i, BIT_DEPTH_16f}) {
        const Lut1DOp op(in, BIT_DEPTH_32f, in == BIT_DEPTH_16f ? HALF_FLAGS_HALF_DOMAIN : HALF_FLAGS_NONE);
        const Pixels results = rendered(op, pixelsOf(ScalarLut1D::floatPatterns()));
        for (std::size_t i = 0; i < results.size(); i += 4) {
            // An identity: each entry is a finite number or, of 16f, made one.
            ASSERT_TRUE(std::isfinite(results[i]));
        }
    }
}

TEST(CPULut1DOp, greyStaysAtTheCurvesOwnMinimum)
{
    Lut1DOp op = makeMono({0.f, 1.f});
    op.getArray().setValue(3 + 1, 2.f);
    op.getArray().setValue(3 + 2, 4.f);
    op.setHueAdjust(Lut1DOp::HUE_ADJUST_DW3);
    // Of equal channels blue counts as the largest and red as the smallest: green takes the result of red.
    EXPECT_EQ(renderedPixel(op, {0.5f, 0.5f, 0.5f, 1.f}), (Pixels{0.5f, 0.5f, 2.f, 1.f}));
}

TEST(CPULut1DOp, theMiddleChannelKeepsItsPlaceBetweenTheOuterTwo)
{
    Lut1DOp op = makeMono({0.f, 0.25f, 1.f});
    op.setHueAdjust(Lut1DOp::HUE_ADJUST_DW3);
    // The curve gives 1, 0.25 and 0; the middle one was at a half of the way.
    const float orders[6][3] = {{0.f, 0.5f, 1.f}, {0.f, 1.f, 0.5f}, {0.5f, 0.f, 1.f},
                                {0.5f, 1.f, 0.f}, {1.f, 0.f, 0.5f}, {1.f, 0.5f, 0.f}};
    for (const auto& order : orders) {
        EXPECT_EQ(renderedPixel(op, {order[0], order[1], order[2], 1.f}), (Pixels{order[0], order[1], order[2], 1.f}));
    }
}

TEST(CPULut1DOp, hueRolesComeFromTheInputThoughTheCurveTurnsThemRound)
{
    Lut1DOp op = makeMono({1.f, 0.f});
    op.setHueAdjust(Lut1DOp::HUE_ADJUST_DW3);
    // Red is the largest input and the smallest result: (0 - 1) * 0.25 + 1.
    EXPECT_EQ(renderedPixel(op, {1.f, 0.25f, 0.f, 1.f}), (Pixels{0.f, 0.75f, 1.f, 1.f}));
}

TEST(CPULut1DOp, oneComponentServesAllChannels)
{
    Lut1DOp op(3);
    op.getArray().resize(3, 1);
    op.getArray().getValues() = {0.f, 0.25f, 1.f};
    EXPECT_EQ(renderedPixel(op, {0.f, 0.5f, 1.f, 1.f}), (Pixels{0.f, 0.25f, 1.f, 1.f}));
    op.setInBitDepth(BIT_DEPTH_8i);
    EXPECT_EQ(renderedPixel(op, {0.f, 255.f, 255.f, 255.f}), (Pixels{0.f, 1.f, 1.f, 1.f}));
}

TEST(CPULut1DOp, readingCodesFromAnImageGivesTheSameAsUnpackingThem)
{
    for (const PixelFormat format :
         {PF_RGBA_8i, PF_BGRA_8i, PF_ABGR_8i, PF_RGBA_10i, PF_BGRA_10i, PF_ABGR_10i, PF_RGBA_12i, PF_BGRA_12i,
          PF_ABGR_12i, PF_RGBA_16i, PF_BGRA_16i, PF_ABGR_16i, PF_RGBA_16f, PF_BGRA_16f, PF_ABGR_16f}) {
        const BitDepth in = getDepthOf(format);
        const auto renderer = makeLut1DRenderer(makeLut(in, BIT_DEPTH_16i, 777, HALF_FLAGS_NONE, true));
        const SourceKernel kernel = renderer->getSourceKernel(format);
        ASSERT_NE(kernel, nullptr);
        const std::size_t codeSize = in == BIT_DEPTH_8i ? 1 : 2;
        for (const uint32_t width : {0u, 1u, 2u, 3u, 4u, 5u, 65536u}) {
            std::vector<uint8_t> image(width * 4 * codeSize);
            uint32_t state = 1;
            for (uint8_t& byte : image) {
                state = state * 1664525 + 1013904223;
                byte = static_cast<uint8_t>(state >> 24);
            }
            Pixels expected(std::size_t{width} * 4);
            getPixelFormatAccess(format).unpack(image.data(), expected.data(), width);
            renderer->render({expected.data(), expected.data(), width, 0, 0});
            Pixels results(std::size_t{width} * 4);
            kernel(*renderer, image.data(), {nullptr, results.data(), width, 0, 0});
            for (std::size_t i = 0; i < results.size(); ++i)
                ASSERT_TRUE(ScalarLut1D::isSame(results[i], expected[i])) << pfToStr(format);
        }
    }
}

TEST(CPULut1DOp, onlyCodesOfTheOpsOwnDepthAreReadFromAnImage)
{
    const auto kernelOf = [](BitDepth in, bool adjustsHue, PixelFormat format) {
        return makeLut1DRenderer(makeLut(in, in, 16, HALF_FLAGS_NONE, adjustsHue))->getSourceKernel(format);
    };
    EXPECT_NE(kernelOf(BIT_DEPTH_8i, true, PF_RGBA_8i), nullptr);
    EXPECT_EQ(kernelOf(BIT_DEPTH_8i, true, PF_RGBA_16i), nullptr);
    EXPECT_EQ(kernelOf(BIT_DEPTH_16i, true, PF_RGBA_8i), nullptr);
    EXPECT_EQ(kernelOf(BIT_DEPTH_32f, true, PF_RGBA_8i), nullptr);
    EXPECT_EQ(kernelOf(BIT_DEPTH_32f, true, PF_RGBA_32f), nullptr);
    EXPECT_EQ(kernelOf(BIT_DEPTH_10i, true, PF_RGBA_10iP), nullptr);
    EXPECT_EQ(kernelOf(BIT_DEPTH_8i, true, PF_RGB_8i), nullptr);
    EXPECT_EQ(kernelOf(BIT_DEPTH_8i, false, PF_RGBA_8i), nullptr);
}

TEST(CPULut1DOp, aDepthThatIsNoneIsRefused)
{
    Lut1DOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, "id", "Curve", {}, Lut1DOp::INTERPOLATION_LINEAR, 4, HALF_FLAGS_NONE);
    op.setInBitDepth(BIT_DEPTH_UNKNOWN);
    EXPECT_EQ(failureOf([&] { makeLut1DRenderer(op); }),
              (Failure{0x4020001, "COLOR:RENDERER:CPU", "Op 'Curve' illegal attribute 'InputBitDepth'"}));
    op.setInBitDepth(BIT_DEPTH_8i);
    op.setOutBitDepth(BIT_DEPTH_UNKNOWN);
    EXPECT_EQ(failureOf([&] { makeLut1DRenderer(op); }),
              (Failure{0x4020001, "COLOR:RENDERER:CPU", "Op 'Curve' illegal attribute 'OutputBitDepth'"}));
}

TEST(CPULut1DOp, anInterpolationOfOtherLutsIsToldToTheLogAndRenderedLinearly)
{
    Lut1DOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, "", "Curve", {}, Lut1DOp::INTERPOLATION_CUBIC, 2, HALF_FLAGS_NONE);
    const LogRecorder log;
    const Pixels result = renderedPixel(op, {0.25f, 0.5f, 1.f, 1.f});
    op.setInterpolation(Lut1DOp::INTERPOLATION_DEFAULT);
    makeLut1DRenderer(op);
    EXPECT_EQ(result, (Pixels{0.25f, 0.5f, 1.f, 1.f}));
    EXPECT_EQ(log.lines(), (LogRecorder::Lines{
                               {LOG_LEVEL_DEBUG, "COLOR:RENDERER:CPU: Op 'Curve' illegal attribute 'Interpolation'"}}));
}

TEST(CPULut1DOp, theRendererSharesTheDynamicBypassAlsoWhenItSamples)
{
    Lut1DOp op(BIT_DEPTH_8i, BIT_DEPTH_8i, "", "", {}, Lut1DOp::INTERPOLATION_LINEAR, 17, HALF_FLAGS_NONE);
    op.getBypass()->makeDynamic();
    op.getBypass()->set(true);
    const auto renderer = makeLut1DRenderer(op);
    EXPECT_TRUE(renderer->readDynamicValues().isBypassed);
    op.getBypass()->set(false);
    EXPECT_FALSE(renderer->readDynamicValues().isBypassed);
    // The table was sampled while the op was switched off.
    Pixels pixel{255.f, 0.f, 128.f, 255.f};
    renderer->render({pixel.data(), pixel.data(), 1, 0, 0});
    EXPECT_EQ(pixel, (Pixels{255.f, 0.f, 128.f, 255.f}));
}
