#include "imageLayout.h"

#include <gmock/gmock.h>

using namespace Command;
using namespace Morvane_2015_1_42;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

OIIO::ImageSpec specOf(const std::vector<std::string>& names, OIIO::TypeDesc type = OIIO::TypeHalf)
{
    OIIO::ImageSpec spec(8, 4, static_cast<int>(names.size()), type);
    spec.channelnames = names;
    spec.alpha_channel = -1;
    return spec;
}

constexpr FormatAbilities kEverything{true, true, true, true, true, true, true};
constexpr FormatAbilities kLittle{false, false, false, false, false, false, false};

} // namespace

TEST(findNamedColour, takesTheChannelsInAnyOrder)
{
    const ColourChannels colour = findNamedColour(specOf({"A", "B", "G", "R", "Z"}));
    EXPECT_THAT(colour.indices, ElementsAre(3, 2, 1));
    EXPECT_EQ(colour.alpha, 0);
}

TEST(findNamedColour, knowsLongNamesInAnyCase)
{
    EXPECT_THAT(findNamedColour(specOf({"Red", "green", "BLUE"})).indices, ElementsAre(0, 1, 2));
}

TEST(findNamedColour, prefersChannelsOutsideLayers)
{
    const ColourChannels colour = findNamedColour(specOf({"fog.R", "fog.G", "fog.B", "fog.A", "R", "G", "B"}));
    EXPECT_THAT(colour.indices, ElementsAre(4, 5, 6));
    EXPECT_EQ(colour.alpha, -1);
}

TEST(findNamedColour, takesTheFirstLayerThatHasColour)
{
    const ColourChannels colour =
        findNamedColour(specOf({"depth.Z", "sun.A", "sun.B", "sun.G", "sun.R", "fog.R", "fog.G", "fog.B"}));
    EXPECT_THAT(colour.indices, ElementsAre(4, 3, 2));
    EXPECT_EQ(colour.alpha, 1);
}

TEST(findNamedColour, knowsGreyWithAndWithoutAlpha)
{
    EXPECT_THAT(findNamedColour(specOf({"Y"})).indices, ElementsAre(0));
    const ColourChannels colour = findNamedColour(specOf({"A", "Y"}));
    EXPECT_THAT(colour.indices, ElementsAre(1));
    EXPECT_EQ(colour.alpha, 0);
    EXPECT_TRUE(colour.isGrey());
}

TEST(findNamedColour, findsNothingInData)
{
    EXPECT_THAT(findNamedColour(specOf({"Z"})).indices, IsEmpty());
    EXPECT_THAT(findNamedColour(specOf({"N.x", "N.y", "N.z"})).indices, IsEmpty());
    EXPECT_THAT(findNamedColour(specOf({"R", "G"})).indices, IsEmpty());
}

TEST(findColour, goesByPositionOnlyWhenNoImageHasNames)
{
    const OIIO::ImageSpec colour = specOf({"R", "G", "B"}), data = specOf({"N.x", "N.y", "N.z"});
    EXPECT_THAT(findColour({colour, data})[1].indices, IsEmpty());
    EXPECT_THAT(findColour({data})[0].indices, ElementsAre(0, 1, 2));
    EXPECT_EQ(findColour({data})[0].alpha, -1);
    EXPECT_EQ(findColour({specOf({"c0", "c1", "c2", "c3"})})[0].alpha, 3);
    EXPECT_EQ(findColour({specOf({"c0", "c1", "c2", "c3", "c4"})})[0].alpha, -1);
    EXPECT_THAT(findColour({specOf({"c0"})})[0].indices, ElementsAre(0));
    EXPECT_EQ(findColour({specOf({"c0", "c1"})})[0].alpha, 1);
}

TEST(planOutput, leavesOutWhatTheFormatCannotHold)
{
    const OIIO::ImageSpec input = specOf({"Z", "A", "B", "G", "R"});
    const OutputImage all = planOutput(input, findNamedColour(input), BIT_DEPTH_UNKNOWN, kEverything);
    EXPECT_THAT(all.spec.channelnames, ElementsAre("Z", "A", "B", "G", "R"));
    EXPECT_EQ(all.spec.alpha_channel, 1);
    const OutputImage few = planOutput(input, findNamedColour(input), BIT_DEPTH_UNKNOWN, kLittle);
    EXPECT_THAT(few.spec.channelnames, ElementsAre("B", "G", "R"));
    EXPECT_EQ(few.spec.alpha_channel, -1);
    EXPECT_EQ(few.channels[0].source, 2);
    EXPECT_EQ(few.channels[0].component, 2);
    EXPECT_EQ(few.channels[2].component, 0);
}

TEST(planOutput, givesTheDepthToTheColourAlone)
{
    OIIO::ImageSpec input = specOf({"R", "G", "B", "Z"});
    input.channelformats = {OIIO::TypeHalf, OIIO::TypeHalf, OIIO::TypeHalf, OIIO::TypeUInt32};
    const OutputImage output = planOutput(input, findNamedColour(input), BIT_DEPTH_32f, kEverything);
    EXPECT_THAT(output.spec.channelformats,
                ElementsAre(OIIO::TypeFloat, OIIO::TypeFloat, OIIO::TypeFloat, OIIO::TypeUInt32));
    FormatAbilities oneType = kEverything;
    oneType.channelFormats = false;
    const OutputImage plain = planOutput(input, findNamedColour(input), BIT_DEPTH_UNKNOWN, oneType);
    EXPECT_THAT(plain.spec.channelformats, IsEmpty());
    EXPECT_EQ(plain.spec.format, OIIO::TypeHalf);
}

TEST(planOutput, keepsTilesWhereTheyCanBe)
{
    OIIO::ImageSpec input = specOf({"R", "G", "B"});
    input.tile_width = input.tile_height = 20;
    input.tile_depth = 1;
    const ColourChannels colour = findNamedColour(input);
    EXPECT_EQ(planOutput(input, colour, BIT_DEPTH_UNKNOWN, kEverything).spec.tile_width, 20);
    EXPECT_EQ(planOutput(input, colour, BIT_DEPTH_UNKNOWN, kLittle).spec.tile_width, 0);
    FormatAbilities other = kEverything;
    other.sameAsInput = false;
    EXPECT_EQ(planOutput(input, colour, BIT_DEPTH_UNKNOWN, other).spec.tile_width, 0);
    input.tile_width = 32;
    input.tile_height = 16;
    EXPECT_EQ(planOutput(input, colour, BIT_DEPTH_UNKNOWN, other).spec.tile_width, 32);
}

TEST(planOutput, marksTenBitsOnlyWhereTheyCanBeStored)
{
    OIIO::ImageSpec input = specOf({"R", "G", "B"}, OIIO::TypeUInt16);
    input.attribute("oiio:BitsPerSample", 10);
    const ColourChannels colour = findNamedColour(input);
    const auto bits = [&](BitDepth depth, const FormatAbilities& format) {
        return planOutput(input, colour, depth, format).spec.get_int_attribute("oiio:BitsPerSample");
    };
    EXPECT_EQ(bits(BIT_DEPTH_UNKNOWN, kEverything), 10);
    EXPECT_EQ(bits(BIT_DEPTH_12i, kEverything), 12);
    EXPECT_EQ(bits(BIT_DEPTH_16i, kEverything), 0);
    EXPECT_EQ(bits(BIT_DEPTH_UNKNOWN, kLittle), 0);
}

TEST(sampleDepth, goesByTypeAndBits)
{
    OIIO::ImageSpec spec = specOf({"R"}, OIIO::TypeUInt16);
    EXPECT_EQ(sampleDepth(spec, 0), BIT_DEPTH_16i);
    spec.attribute("oiio:BitsPerSample", 10);
    EXPECT_EQ(sampleDepth(spec, 0), BIT_DEPTH_10i);
    spec.attribute("oiio:BitsPerSample", 12);
    EXPECT_EQ(sampleDepth(spec, 0), BIT_DEPTH_12i);
    EXPECT_EQ(sampleDepth(specOf({"R"}, OIIO::TypeUInt8), 0), BIT_DEPTH_8i);
    EXPECT_EQ(sampleDepth(specOf({"R"}, OIIO::TypeHalf), 0), BIT_DEPTH_16f);
    EXPECT_EQ(sampleDepth(specOf({"R"}, OIIO::TypeFloat), 0), BIT_DEPTH_32f);
    EXPECT_EQ(sampleDepth(specOf({"R"}, OIIO::TypeUInt32), 0), BIT_DEPTH_32f);
    EXPECT_EQ(sampleDepth(specOf({"R"}, OIIO::TypeInt16), 0), BIT_DEPTH_32f);
}
