// Which channels a transform sees, and what becomes of the others.

#include "commandRunner.h"
#include "testImage.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;

namespace {

class ApplyChannelsTest : public CommandTest
{
protected:
    ApplyChannelsTest() { writeMixer("mix.ctf"); }
};

double value(int x, int y, int channel) { return (x * 16 + y * 4 + channel) / 32.0; }

} // namespace

TEST_F(ApplyChannelsTest, colourIsFoundByNameAndTheRestStays)
{
    // In a file with more than one sample type, as compositing programs write them.
    OIIO::ImageSpec spec(7, 6, 6, OIIO::TypeHalf);
    spec.channelnames = {"B", "G", "R", "A", "Z", "id"};
    spec.channelformats = {OIIO::TypeHalf, OIIO::TypeHalf,  OIIO::TypeHalf,
                           OIIO::TypeHalf, OIIO::TypeFloat, OIIO::TypeUInt32};
    const auto stored = [](int x, int y, int c) {
        if (c == 4) return 1.0 + x / 1048576.0;         // a float that no half holds
        if (c == 5) return 4294967295.0 - x * 1000 - y; // an integer that no float holds
        return value(x, y, c);
    };
    writeImage(path("in.exr"), makeImage(spec, stored));
    expectSuccess({"apply", "-t", "mix.ctf", "in.exr", "out.exr"});
    const TestImage in = readImage(path("in.exr")), out = readImage(path("out.exr"));
    EXPECT_EQ(out.spec.channelnames, in.spec.channelnames);
    EXPECT_EQ(out.spec.channelformats, in.spec.channelformats);
    EXPECT_EQ(out.spec.alpha_channel, in.spec.alpha_channel);
    EXPECT_EQ(out.spec.z_channel, in.spec.z_channel);
    const auto index = [&](const char* name) { return in.spec.channelindex(name); };
    expectSamples(out, [&](int x, int y, int c) {
        if (c == index("R")) return in.at(x, y, index("G")) / 2;
        if (c == index("G")) return in.at(x, y, index("R")) / 4;
        if (c == index("B")) return in.at(x, y, index("B")) * 2;
        return in.at(x, y, c);
    });
    EXPECT_EQ(out.at(6, 5, index("id")), 4294967295.0 - 6 * 1000 - 5);
    EXPECT_EQ(out.at(6, 5, index("Z")), 1.0 + 6 / 1048576.0);
}

TEST_F(ApplyChannelsTest, outDepthLeavesOtherChannelsAlone)
{
    OIIO::ImageSpec spec(5, 4, 4, OIIO::TypeHalf);
    spec.channelnames = {"R", "G", "B", "Z"};
    spec.channelformats = {OIIO::TypeHalf, OIIO::TypeHalf, OIIO::TypeHalf, OIIO::TypeFloat};
    writeImage(path("in.exr"), makeImage(spec, value));
    expectSuccess({"apply", "-t", "mix.ctf", "--out-depth", "32f", "in.exr", "out.exr"});
    const TestImage out = readImage(path("out.exr"));
    EXPECT_EQ(out.spec.format, OIIO::TypeFloat);
    EXPECT_TRUE(out.spec.channelformats.empty());
    const int z = out.spec.channelindex("Z");
    EXPECT_EQ(out.at(4, 3, z), value(4, 3, 3));
}

TEST_F(ApplyChannelsTest, greyBecomesColour)
{
    const auto code = [](int x, int y, int) { return 8 * (x + 4 * y); };
    writeImage(path("in.png"), makeImage({4, 4, 1, OIIO::TypeUInt8}, code));
    expectSuccess({"apply", "-t", "mix.ctf", "in.png", "out.png"});
    const TestImage out = readImage(path("out.png"));
    EXPECT_THAT(out.spec.channelnames, ElementsAre("R", "G", "B"));
    expectSamples(out, [&](int x, int y, int c) {
        const double factors[] = {0.5, 0.25, 2};
        return code(x, y, 0) * factors[c];
    });
}

TEST_F(ApplyChannelsTest, greyWithAlphaBecomesColourWithAlpha)
{
    const auto code = [](int x, int y, int c) { return c == 1 ? 10 * x + y : 8 * (x + 4 * y); };
    OIIO::ImageSpec spec(4, 4, 2, OIIO::TypeUInt8);
    spec.channelnames = {"Y", "A"};
    spec.alpha_channel = 1;
    spec.attribute("oiio:UnassociatedAlpha", 1);
    writeImage(path("in.png"), makeImage(spec, code));
    expectSuccess({"apply", "-t", "mix.ctf", "in.png", "out.png"});
    const TestImage out = readImage(path("out.png"));
    EXPECT_THAT(out.spec.channelnames, ElementsAre("R", "G", "B", "A"));
    expectSamples(out, [&](int x, int y, int c) {
        const double factors[] = {0.5, 0.25, 2};
        return c == 3 ? code(x, y, 1) : code(x, y, 0) * factors[c];
    });
}

TEST_F(ApplyChannelsTest, partsWithoutColourAreCopied)
{
    OIIO::ImageSpec colour(6, 4, 3, OIIO::TypeHalf), depth(6, 4, 1, OIIO::TypeFloat);
    colour.attribute("oiio:subimagename", "colour");
    depth.attribute("oiio:subimagename", "depth");
    depth.channelnames = {"Z"};
    writeImages(path("in.exr"), {makeImage(colour, value), makeImage(depth, value)});
    expectSuccess({"apply", "-t", "mix.ctf", "in.exr", "out.exr"});
    const std::vector<TestImage> out = readImages(path("out.exr"));
    ASSERT_EQ(out.size(), 2u);
    EXPECT_EQ(out[0].at(1, 1, 0), value(1, 1, 1) / 2);
    EXPECT_THAT(out[1].spec.channelnames, ElementsAre("Z"));
    EXPECT_EQ(out[1].spec.format, OIIO::TypeFloat);
    expectSamples(out[1], value);
}
