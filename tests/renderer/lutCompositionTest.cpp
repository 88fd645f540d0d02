#include "renderer/lutComposition.h"

#include "renderer/CPUInvLut1DOp.h"
#include "tests/renderer/scalarLut1D.h"
#include "tests/utils/failure.h"

#include <gtest/gtest.h>

using namespace Rendering;
using Color::Descriptions;
using Color::InvLut1DOp;
using Color::Lut1DOp;
using Color::Lut3DOp;
using ScalarLut1D::Table;

namespace {

/// The same curve in all channels.
Lut1DOp makeLut(BitDepth in, BitDepth out, const Table& curve, const std::string& name = "")
{
    Lut1DOp op(in, out, name.empty() ? "" : name + "Id", name, name.empty() ? Descriptions() : Descriptions{name},
               Lut1DOp::INTERPOLATION_LINEAR, static_cast<uint32_t>(curve.size()), HALF_FLAGS_NONE);
    for (std::size_t i = 0; i < curve.size() * 3; ++i)
        op.getArray().setValue(i, curve[i / 3]);
    return op;
}

Lut1DOp makeHalfDomain(BitDepth in, BitDepth out, float (*curve)(float))
{
    Lut1DOp op(in, out, HALF_FLAGS_HALF_DOMAIN);
    for (unsigned code = 0; code < 65536; ++code) {
        const float value = getBitDepthValueRange(out) * curve(ScalarLut1D::valueOfHalf(code));
        for (std::size_t channel = 0; channel < 3; ++channel)
            op.getArray().setValue(3 * std::size_t{code} + channel, value);
    }
    return op;
}

Table channelOf(const Lut1DOp& op, std::size_t channel)
{
    const Table& values = op.getArray().getValues();
    Table result;
    for (std::size_t i = channel; i < values.size(); i += 3)
        result.push_back(values[i]);
    return result;
}

/// A cube whose channels are the inputs times a factor.
Lut3DOp makeCube(BitDepth in, BitDepth out, uint32_t length, float factor, const std::string& name = "")
{
    Lut3DOp op(in, out, name.empty() ? "" : name + "Id", name, name.empty() ? Descriptions() : Descriptions{name},
               Lut3DOp::INTERPOLATION_TETRAHEDRAL, length);
    for (float& value : op.getArray().getValues())
        value *= factor;
    return op;
}

void switchOff(Color::Op& op)
{
    op.getBypass()->makeDynamic();
    op.getBypass()->set(true);
}

/// The slope changes at 0, and the values leave 0 to 1 where the inputs do.
float bent(float x) { return x < 0.f ? x * 2.f : x * 0.5f; }
float bentBack(float x) { return x < 0.f ? x * 0.5f : x * 2.f; }
float falling(float x) { return 1.f - x; }

} // namespace

TEST(LutComposition, depthsThatDoNotMeetAreRefused)
{
    const Lut1DOp first = makeLut(BIT_DEPTH_8i, BIT_DEPTH_10i, {0.f, 1023.f}, "First");
    const Lut1DOp second = makeLut(BIT_DEPTH_12i, BIT_DEPTH_8i, {0.f, 255.f});
    EXPECT_EQ(failureOf([&] { compose(first, second, kFineSamples); }),
              (Failure{0x206000a, "COLOR:TRANSFORM:OPLIST", "Bit depth mismatch between op 'First' and op 'LUT 1D'"}));
}

TEST(LutComposition, aFineFirstLutIsTheDomain)
{
    const Lut1DOp first = makeLut(BIT_DEPTH_32f, BIT_DEPTH_8i, {0.f, 51.f, 127.5f, 255.f, 510.f});
    const Lut1DOp second = makeLut(BIT_DEPTH_8i, BIT_DEPTH_32f, {0.f, 0.25f, 1.f});
    for (const uint32_t samples : {1u, 4u, 5u}) {
        const auto joined = compose(first, second, samples);
        ASSERT_EQ(joined->getArray().getLength(), 5u);
        const Table curve = channelOf(*joined, 1);
        EXPECT_EQ(curve[0], 0.f);
        EXPECT_NEAR(curve[1], 0.1f, 1e-7f); // two fifths of the way to the second entry
        EXPECT_EQ(curve[2], 0.25f);
        EXPECT_EQ(curve[3], 1.f);
        EXPECT_EQ(curve[4], 1.f);
    }
}

TEST(LutComposition, theSamplesOfADomainAreWorkedOutAt32f)
{
    const Lut1DOp first = makeLut(BIT_DEPTH_16i, BIT_DEPTH_10i, {3.f, 500.f, 1000.f, 77.f});
    const Lut1DOp second = makeLut(BIT_DEPTH_10i, BIT_DEPTH_12i, {17.f, 2000.f, 1000.f, 4000.f, 5000.f});
    Table curve = channelOf(second, 0);
    for (float& entry : curve)
        entry *= 1.f / 4095.f;
    const Table wanted = channelOf(first, 0);
    const auto joined = compose(first, second, 4);
    for (std::size_t channel = 0; channel < 3; ++channel) {
        for (std::size_t i = 0; i < wanted.size(); ++i)
            EXPECT_EQ(channelOf(*joined, channel)[i], ScalarLut1D::linear(curve, wanted[i] * (1.f / 1023.f)) * 4095.f);
    }
}

TEST(LutComposition, aCoarseFirstLutIsSampledAtEvenPositions)
{
    const Lut1DOp first = makeLut(BIT_DEPTH_8i, BIT_DEPTH_10i, {0.f, 1023.f, 0.f});
    const Lut1DOp second = makeLut(BIT_DEPTH_10i, BIT_DEPTH_8i, {255.f, 0.f});
    const auto joined = compose(first, second, 5);
    EXPECT_EQ(channelOf(*joined, 2), (Table{255.f, 127.5f, 0.f, 127.5f, 255.f}));
    EXPECT_EQ(compose(first, second, kFineSamples)->getArray().getLength(), 65536u);
}

TEST(LutComposition, aHalfDomainIsTheDomainHoweverManySamplesAreWanted)
{
    const Lut1DOp first = makeHalfDomain(BIT_DEPTH_16f, BIT_DEPTH_32f, bent);
    const auto joined = compose(first, makeLut(BIT_DEPTH_32f, BIT_DEPTH_8i, {0.f, 255.f}), 100000);
    EXPECT_TRUE(joined->isHalfDomain());
    ASSERT_EQ(joined->getArray().getLength(), 65536u);
    const Table curve = channelOf(*joined, 0);
    EXPECT_EQ(curve[half(1.f).bits()], 127.5f);
    EXPECT_EQ(curve[half(-1.f).bits()], 0.f);
    EXPECT_EQ(curve[half(100.f).bits()], 255.f);
    EXPECT_EQ(curve[0x7e00], 0.f); // a NaN reads the first entry of the second
}

TEST(LutComposition, theSecondMayHaveAHalfDomain)
{
    const Lut1DOp first = makeLut(BIT_DEPTH_8i, BIT_DEPTH_32f, {-2.f, 0.f, 3.f});
    const auto joined = compose(first, makeHalfDomain(BIT_DEPTH_32f, BIT_DEPTH_32f, bent), 3);
    EXPECT_FALSE(joined->isHalfDomain());
    EXPECT_EQ(channelOf(*joined, 0), (Table{-4.f, 0.f, 1.5f}));
}

TEST(LutComposition, depthsAndTextsAreJoined)
{
    const Lut1DOp first = makeLut(BIT_DEPTH_8i, BIT_DEPTH_10i, {0.f, 1023.f}, "A");
    Lut1DOp second = makeLut(BIT_DEPTH_10i, BIT_DEPTH_16f, {0.f, 1.f}, "B");
    second.setInterpolation(Lut1DOp::INTERPOLATION_DEFAULT);
    const auto joined = compose(first, second, 2);
    EXPECT_EQ(joined->getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(joined->getOutBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(joined->getId(), "AIdBId");
    EXPECT_EQ(joined->getName(), "AB");
    EXPECT_EQ(joined->getDescriptions(), (Descriptions{"A", "B"}));
    EXPECT_EQ(joined->getInterpolation(), Lut1DOp::INTERPOLATION_LINEAR);
    EXPECT_EQ(joined->getArray().getNumColorComponents(), 3u);
}

TEST(LutComposition, hueAdjustAndBypassOfTheTwoTakeNoPart)
{
    Lut1DOp first = makeLut(BIT_DEPTH_32f, BIT_DEPTH_32f, {0.f, 0.5f, 1.f});
    Lut1DOp second = makeLut(BIT_DEPTH_32f, BIT_DEPTH_32f, {0.f, 0.25f, 1.f});
    second.getArray().setValue(3 + 1, 0.75f);
    first.getBypass()->set(true);
    second.getBypass()->set(true);
    second.setHueAdjust(Lut1DOp::HUE_ADJUST_DW3);
    for (const uint32_t samples : {3u, 5u}) {
        const auto joined = compose(first, second, samples);
        EXPECT_EQ(joined->getHueAdjust(), Lut1DOp::HUE_ADJUST_NONE);
        EXPECT_EQ(channelOf(*joined, 0)[samples / 2], 0.25f);
        EXPECT_EQ(channelOf(*joined, 1)[samples / 2], 0.75f);
        EXPECT_EQ(joined->getBypass(), first.getBypass());
    }
    EXPECT_EQ(second.getHueAdjust(), Lut1DOp::HUE_ADJUST_DW3);
    EXPECT_TRUE(second.getBypass()->get());
}

TEST(LutComposition, aFirstLutOfOneComponentServesAllChannels)
{
    Lut1DOp first(3);
    first.getArray().resize(3, 1);
    first.getArray().getValues() = {0.f, 0.5f, 1.f};
    const auto joined = compose(first, makeLut(BIT_DEPTH_32f, BIT_DEPTH_32f, {1.f, 0.f}), 3);
    EXPECT_EQ(joined->getArray().getValues(), (Table{1.f, 1.f, 1.f, 0.5f, 0.5f, 0.5f, 0.f, 0.f, 0.f}));
}

TEST(LutComposition, aForwardLutWithinTheRangeHas4096Entries)
{
    for (const BitDepth in : {BIT_DEPTH_8i, BIT_DEPTH_12i, BIT_DEPTH_16f, BIT_DEPTH_32f}) {
        const float range = getBitDepthValueRange(in);
        const InvLut1DOp inverse(makeLut(BIT_DEPTH_10i, in, {0.f, 0.25f * range, range}));
        const auto forward = makeForwardLut(inverse);
        EXPECT_EQ(forward->getArray().getLength(), 4096u);
        EXPECT_FALSE(forward->isHalfDomain());
        EXPECT_EQ(forward->getInBitDepth(), in);
        EXPECT_EQ(forward->getOutBitDepth(), BIT_DEPTH_10i);
        const Table curve = channelOf(*forward, 0);
        EXPECT_EQ(curve.front(), 0.f);
        EXPECT_EQ(curve.back(), 1023.f);
        // Position 512 stands for 512 / 4095: half as far up the first, fourfold steep section.
        EXPECT_NEAR(curve[512], 1023.f * 2.f * 512.f / 4095.f, 1e-3f);
    }
}

TEST(LutComposition, aForwardLutThatLeavesTheRangeHasTheFullDomain)
{
    const auto lengthFor = [](BitDepth in, const Table& curve) {
        return makeForwardLut(InvLut1DOp(makeLut(BIT_DEPTH_8i, in, curve)))->getArray().getLength();
    };
    EXPECT_EQ(lengthFor(BIT_DEPTH_8i, {-1.f, 100.f, 255.f}), 256u);
    EXPECT_EQ(lengthFor(BIT_DEPTH_8i, {0.f, 100.f, 256.f}), 256u);
    EXPECT_EQ(lengthFor(BIT_DEPTH_10i, {1024.f, 100.f, 0.f}), 1024u);
    EXPECT_EQ(lengthFor(BIT_DEPTH_10i, {1023.f, 100.f, -1.f}), 1024u);
    EXPECT_EQ(lengthFor(BIT_DEPTH_10i, {1023.f, 100.f, 0.f}), 4096u);
    EXPECT_EQ(lengthFor(BIT_DEPTH_32f, {-0.5f, 0.5f, 1.f}), 65536u);

    const auto forward = makeForwardLut(InvLut1DOp(makeLut(BIT_DEPTH_8i, BIT_DEPTH_32f, {-1.f, 1.f, 2.f})));
    EXPECT_TRUE(forward->isHalfDomain());
    const Table curve = channelOf(*forward, 2);
    EXPECT_EQ(curve[half(-1.f).bits()], 0.f);
    EXPECT_EQ(curve[half(0.f).bits()], 63.75f);
    EXPECT_EQ(curve[half(1.5f).bits()], 191.25f);
    EXPECT_EQ(curve[half(9.f).bits()], 255.f);
}

TEST(LutComposition, aForwardLutHoldsTheExactSearchAtItsPositions)
{
    Table values(300);
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = std::pow(static_cast<float>(i) / 299.f, 2.2f);
    InvLut1DOp inverse(makeLut(BIT_DEPTH_32f, BIT_DEPTH_32f, values));
    inverse.setStyle(InvLut1DOp::STYLE_FAST);
    inverse.setHueAdjust(Lut1DOp::HUE_ADJUST_DW3);
    const auto forward = makeForwardLut(inverse);
    EXPECT_EQ(forward->getHueAdjust(), Lut1DOp::HUE_ADJUST_NONE);
    EXPECT_EQ(inverse.getStyle(), InvLut1DOp::STYLE_FAST);

    InvLut1DOp exact(inverse);
    exact.setStyle(InvLut1DOp::STYLE_EXACT);
    const auto search = makeInvLut1DRenderer(exact);
    const Table curve = channelOf(*forward, 1);
    for (std::size_t i = 0; i < curve.size(); ++i) {
        const float x = static_cast<float>(i) * (1.f / 4095.f);
        float pixel[4] = {x, x, x, 1.f};
        search->render({pixel, pixel, 1, 0, 0});
        ASSERT_EQ(curve[i], pixel[1]);
    }
}

TEST(LutComposition, aHalfDomainIsReallyInverted)
{
    const InvLut1DOp inverse(makeHalfDomain(BIT_DEPTH_16f, BIT_DEPTH_32f, bent));
    const auto forward = makeForwardLut(inverse);
    EXPECT_TRUE(forward->isHalfDomain());
    EXPECT_EQ(forward->getInBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(forward->getOutBitDepth(), BIT_DEPTH_16f);
    const Table curve = channelOf(*forward, 0);
    for (unsigned code = 0; code < 65536; ++code) {
        const float x = ScalarLut1D::valueOfHalf(code);
        if (std::isnan(x)) {
            ASSERT_TRUE(std::isnan(curve[code]));
            continue;
        }
        // The curve ends at the finite halves.
        const float wanted = std::min(std::max(bentBack(x), -65504.f), 65504.f);
        ASSERT_NEAR(curve[code], wanted, std::fabs(wanted) * 1e-6f) << x;
    }
}

TEST(LutComposition, aFallingHalfDomainIsInvertedInTheScalesOfBothDepths)
{
    const InvLut1DOp inverse(makeHalfDomain(BIT_DEPTH_8i, BIT_DEPTH_10i, falling));
    const auto forward = makeForwardLut(inverse);
    EXPECT_FALSE(forward->isHalfDomain());
    const Table curve = channelOf(*forward, 2);
    ASSERT_EQ(curve.size(), 1024u);
    for (unsigned code = 0; code < 1024; ++code)
        ASSERT_NEAR(curve[code], 255.f * (1.f - static_cast<float>(code) / 1023.f), 255.f * 1e-6f) << code;
}

TEST(LutComposition, aLevelHalfDomainGivesItsStart)
{
    const InvLut1DOp inverse(makeHalfDomain(BIT_DEPTH_32f, BIT_DEPTH_32f, [](float) { return 0.5f; }));
    const auto forward = makeForwardLut(inverse);
    EXPECT_EQ(forward->getArray().getLength(), 4096u);
    EXPECT_EQ(channelOf(*forward, 0)[2048], -65504.f);
}

TEST(LutComposition, aForwardLutHasTheBypassOfTheInverse)
{
    const InvLut1DOp inverse(makeLut(BIT_DEPTH_32f, BIT_DEPTH_32f, {0.f, 0.5f, 1.f}));
    inverse.getBypass()->set(true);
    const auto forward = makeForwardLut(inverse);
    EXPECT_EQ(forward->getBypass(), inverse.getBypass());
    EXPECT_EQ(channelOf(*forward, 0).back(), 1.f);
}

// Merges.

TEST(LutMerge, aMergedLutHas65536Samples)
{
    const Lut1DOp first = makeLut(BIT_DEPTH_8i, BIT_DEPTH_10i, {0.f, 1023.f, 0.f}, "A");
    const Lut1DOp second = makeLut(BIT_DEPTH_10i, BIT_DEPTH_16i, {65535.f, 0.f}, "B");
    const auto merged = mergeLuts(first, second);
    ASSERT_EQ(merged->getArray().getLength(), 65536u);
    EXPECT_EQ(merged->getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(merged->getOutBitDepth(), BIT_DEPTH_16i);
    EXPECT_EQ(merged->getId(), "AIdBId");
    EXPECT_EQ(merged->getName(), "AB");
    EXPECT_EQ(merged->getDescriptions(), (Descriptions{"A", "B"}));
    EXPECT_EQ(merged->getInterpolation(), Lut1DOp::INTERPOLATION_LINEAR);
    EXPECT_EQ(merged->getBypass(), first.getBypass());
    const Table curve = channelOf(*merged, 1);
    for (std::size_t i = 0; i < curve.size(); ++i) {
        const double x = static_cast<double>(i) / 65535.0;
        ASSERT_NEAR(static_cast<double>(curve[i]), 65535.0 * std::fabs(1.0 - 2.0 * x), 65535.0 * 3e-7) << i;
    }
}

TEST(LutMerge, aFineFirstLutIsTheDomain)
{
    Table values(65537);
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = static_cast<float>(i) * 255.f / 65536.f;
    const auto merged =
        mergeLuts(makeLut(BIT_DEPTH_32f, BIT_DEPTH_8i, values), makeLut(BIT_DEPTH_8i, BIT_DEPTH_32f, {1.f, 0.f}));
    const Table curve = channelOf(*merged, 0);
    ASSERT_EQ(curve.size(), 65537u);
    EXPECT_EQ(curve[0], 1.f);
    EXPECT_NEAR(curve[16384], 0.75f, 1e-6f);
    EXPECT_EQ(curve[65536], 0.f);

    const auto halves = mergeLuts(makeHalfDomain(BIT_DEPTH_16f, BIT_DEPTH_32f, bent),
                                  makeLut(BIT_DEPTH_32f, BIT_DEPTH_8i, {0.f, 255.f}));
    EXPECT_TRUE(halves->isHalfDomain());
    EXPECT_EQ(channelOf(*halves, 0)[half(1.f).bits()], 127.5f);
}

TEST(LutMerge, lutsThatAreSwitchedOffTakeNoPart)
{
    const Table halved = {0.f, 0.5f};
    const Table flipped = {1.f, 0.f};
    const auto lastOf = [](const Lut1DOp& first, const Lut1DOp& second) {
        return channelOf(*mergeLuts(first, second), 0).back();
    };
    Lut1DOp first = makeLut(BIT_DEPTH_32f, BIT_DEPTH_32f, halved);
    Lut1DOp second = makeLut(BIT_DEPTH_32f, BIT_DEPTH_32f, flipped);
    EXPECT_EQ(lastOf(first, second), 0.5f);
    switchOff(first);
    EXPECT_EQ(lastOf(first, second), 0.f);
    switchOff(second);
    EXPECT_EQ(lastOf(first, second), 1.f);
    first.getBypass()->set(false);
    EXPECT_EQ(lastOf(first, second), 0.5f);
    // As the domain the first always takes part.
    Lut1DOp domain = makeHalfDomain(BIT_DEPTH_32f, BIT_DEPTH_32f, bent);
    switchOff(domain);
    EXPECT_EQ(channelOf(*mergeLuts(domain, second), 0)[half(1.f).bits()], 0.5f);
}

TEST(LutMerge, cubesWhoseDepthsDoNotMeetAreRefused)
{
    const Lut3DOp first = makeCube(BIT_DEPTH_8i, BIT_DEPTH_10i, 2, 1.f, "First");
    const Lut3DOp second = makeCube(BIT_DEPTH_12i, BIT_DEPTH_8i, 2, 1.f);
    EXPECT_EQ(failureOf([&] { mergeCubes(first, second); }),
              (Failure{0x206000a, "COLOR:TRANSFORM:OPLIST", "Bit depth mismatch between op 'First' and op 'LUT 3D'"}));
}

TEST(LutMerge, aMergedCubeHasTheFinerGrid)
{
    const auto lengthOf = [](uint32_t first, uint32_t second) {
        return mergeCubes(makeCube(BIT_DEPTH_32f, BIT_DEPTH_32f, first, 1.f),
                          makeCube(BIT_DEPTH_32f, BIT_DEPTH_32f, second, 1.f))
            ->getArray()
            .getLength();
    };
    EXPECT_EQ(lengthOf(2, 5), 5u);
    EXPECT_EQ(lengthOf(5, 2), 5u);
    EXPECT_EQ(lengthOf(4, 4), 4u);
}

TEST(LutMerge, aMergedCubeDoesBothInTheScalesOfTheirDepths)
{
    for (const auto& [firstLength, secondLength] : {std::pair(2u, 5u), std::pair(5u, 3u)}) {
        const Lut3DOp first = makeCube(BIT_DEPTH_8i, BIT_DEPTH_10i, firstLength, 0.5f, "A");
        Lut3DOp second = makeCube(BIT_DEPTH_10i, BIT_DEPTH_16i, secondLength, 0.25f, "B");
        second.setInterpolation(Lut3DOp::INTERPOLATION_TRILINEAR);
        const auto merged = mergeCubes(first, second);
        EXPECT_EQ(merged->getInBitDepth(), BIT_DEPTH_8i);
        EXPECT_EQ(merged->getOutBitDepth(), BIT_DEPTH_16i);
        EXPECT_EQ(merged->getId(), "AIdBId");
        EXPECT_EQ(merged->getName(), "AB");
        EXPECT_EQ(merged->getDescriptions(), (Descriptions{"A", "B"}));
        EXPECT_EQ(merged->getInterpolation(), Lut3DOp::INTERPOLATION_TETRAHEDRAL);
        EXPECT_EQ(merged->getBypass(), first.getBypass());
        // Red is the slowest: the grid points of an identity, an eighth as high.
        const Table& values = merged->getArray().getValues();
        ASSERT_EQ(values.size(), 375u);
        for (std::size_t i = 0; i < 125; ++i) {
            const std::size_t grid[3] = {i / 25, i / 5 % 5, i % 5};
            for (std::size_t channel = 0; channel < 3; ++channel)
                ASSERT_NEAR(values[3 * i + channel], 65535.f / 8.f * static_cast<float>(grid[channel]) / 4.f, 0.01f)
                    << i;
        }
    }
}

TEST(LutMerge, cubesThatAreSwitchedOffTakeNoPart)
{
    const auto lastOf = [](const Lut3DOp& first, const Lut3DOp& second) {
        return mergeCubes(first, second)->getArray().getValues().back();
    };
    Lut3DOp coarse = makeCube(BIT_DEPTH_32f, BIT_DEPTH_32f, 2, 0.5f);
    Lut3DOp fine = makeCube(BIT_DEPTH_32f, BIT_DEPTH_32f, 3, 0.25f);
    EXPECT_EQ(lastOf(coarse, fine), 0.125f);
    switchOff(coarse);
    EXPECT_EQ(lastOf(coarse, fine), 0.25f);
    EXPECT_EQ(mergeCubes(coarse, fine)->getBypass(), coarse.getBypass());
    switchOff(fine);
    EXPECT_EQ(lastOf(coarse, fine), 1.f);
    // As the domain the first always takes part.
    EXPECT_EQ(lastOf(fine, coarse), 0.25f);
}

TEST(LutMerge, aCubeThatIsNotSoundIsRefused)
{
    Lut3DOp unsound = makeCube(BIT_DEPTH_32f, BIT_DEPTH_32f, 3, 1.f);
    unsound.getArray().getValues().resize(9);
    const Lut3DOp fine = makeCube(BIT_DEPTH_32f, BIT_DEPTH_32f, 5, 1.f);
    const Lut3DOp coarse = makeCube(BIT_DEPTH_32f, BIT_DEPTH_32f, 2, 1.f);
    const Failure expected = {0x2010005, "COLOR:TRANSFORM:LUT_3D", "Array content illegal"};
    EXPECT_EQ(failureOf([&] { mergeCubes(unsound, coarse); }), expected);
    EXPECT_EQ(failureOf([&] { mergeCubes(unsound, fine); }), expected);
    EXPECT_EQ(failureOf([&] { mergeCubes(coarse, unsound); }), expected);
}

TEST(LutMerge, aFirstLutThatIsNotSoundIsRefused)
{
    const Lut1DOp second = makeLut(BIT_DEPTH_32f, BIT_DEPTH_32f, {0.f, 1.f});
    const Failure expected = {0x2010005, "COLOR:TRANSFORM:LUT_1D", "Array content illegal"};
    for (const uint32_t components : {1u, 3u}) {
        Lut1DOp unsound(65536);
        unsound.getArray().resize(65536, components);
        unsound.getArray().getValues().resize(9);
        EXPECT_EQ(failureOf([&] { mergeLuts(unsound, second); }), expected);
        EXPECT_EQ(failureOf([&] { compose(unsound, second, 3); }), expected);
    }
}
