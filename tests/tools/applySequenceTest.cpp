// Chains of transforms, sequences, dry runs, threads and replaced files.

#include "commandRunner.h"
#include "testImage.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;

namespace {

class ApplySequenceTest : public CommandTest
{
protected:
    ApplySequenceTest() { writeMixer("mix.ctf"); }

    void writeFrame(const std::string& name, double offset = 0) const
    {
        writeImage(path(name), makeImage({33, 50, 4, OIIO::TypeHalf},
                                         [=](int x, int y, int c) { return (x * 8 + y + c * 4) / 64.0 + offset; }));
    }
};

} // namespace

TEST_F(ApplySequenceTest, transformsAreAppliedInOrder)
{
    // Blue into red, then red doubled: the other order would leave red unscaled.
    writeMatrix("1.ctf", "0 0 1  0 1 0  1 0 0");
    writeMatrix("2.ctf", "2 0 0  0 1 0  0 0 1");
    writeFrame("in.exr");
    const TestImage in = readImage(path("in.exr"));
    const auto expected = [&](int x, int y, int c) {
        if (c == 0) return 2 * in.at(x, y, 2);
        return c == 2 ? in.at(x, y, 0) : in.at(x, y, c);
    };
    expectSuccess({"apply", "-t", "1.ctf", "-t", "2.ctf", "in.exr", "a.exr"});
    expectSuccess({"apply", "-t", "1.ctf", "2.ctf", "in.exr", "b.exr"});
    expectSuccess({"apply", "1.ctf", "2.ctf", "in.exr", "c.exr"});
    for (const char* name : {"a.exr", "b.exr", "c.exr"})
        expectSamples(readImage(path(name)), expected);
}

TEST_F(ApplySequenceTest, inverseUndoesTheChain)
{
    writeMatrix("2.ctf", "4 0 0  0 0 2  0 1 0");
    writeFrame("in.exr");
    expectSuccess({"apply", "-t", "mix.ctf", "-t", "2.ctf", "in.exr", "there.exr"});
    expectSuccess({"apply", "-t", "mix.ctf", "-t", "2.ctf", "--inverse", "there.exr", "back.exr"});
    EXPECT_NE(readImage(path("there.exr")).values, readImage(path("in.exr")).values);
    EXPECT_EQ(readImage(path("back.exr")).values, readImage(path("in.exr")).values);
}

TEST_F(ApplySequenceTest, shippedPairOfTransformsIsARoundTrip)
{
    writeFrame("in.exr");
    expectSuccess({"apply", "-t", MORVANE_TRANSFORMS "/ACES2065-1_to_linear-sRGB.ctf", "--out-depth", "32f", "in.exr",
                   "there.exr"});
    expectSuccess({"apply", "-t", MORVANE_TRANSFORMS "/linear-sRGB_to_ACES2065-1.ctf", "there.exr", "back.exr"});
    const TestImage in = readImage(path("in.exr")), back = readImage(path("back.exr"));
    for (size_t i = 0; i < in.values.size(); ++i)
        ASSERT_NEAR(back.values[i], in.values[i], 1e-5) << i;
}

TEST_F(ApplySequenceTest, sequencesKeepTheirFrameNumbers)
{
    for (const char* name : {"in.0008.exr", "in.0009.exr", "in.0010.exr"})
        writeFrame(name, name[7]);
    std::filesystem::create_directory(path("out"));
    expectSuccess({"apply", "-t", "mix.ctf", "in.0008.exr", "in.0009.exr", "in.0010.exr", "out/x.######.exr"});
    expectSuccess({"apply", "-t", "mix.ctf", "in.0008.exr", "in.0010.exr", "out/{stem}.mixed.exr"});
    EXPECT_THAT(files(),
                ElementsAre("in.0008.exr", "in.0009.exr", "in.0010.exr", "mix.ctf", "out/in.0008.mixed.exr",
                            "out/in.0010.mixed.exr", "out/x.000008.exr", "out/x.000009.exr", "out/x.000010.exr"));
    EXPECT_EQ(readBytes("out/x.000008.exr"), readBytes("out/in.0008.mixed.exr"));
    const TestImage in = readImage(path("in.0009.exr")), out = readImage(path("out/x.000009.exr"));
    EXPECT_EQ(out.at(1, 2, 0), in.at(1, 2, 1) / 2);
}

TEST_F(ApplySequenceTest, replacesItsInputAndKeepsPermissionsAndLinks)
{
    namespace fs = std::filesystem;
    writeFrame("in.exr");
    const TestImage before = readImage(path("in.exr"));
    fs::permissions(path("in.exr"), fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink("in.exr", path("link.exr"));
    expectSuccess({"apply", "-t", "mix.ctf", "link.exr", "link.exr"});
    EXPECT_TRUE(fs::is_symlink(path("link.exr")));
    EXPECT_EQ(fs::status(path("in.exr")).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(readImage(path("in.exr")).at(5, 6, 1), before.at(5, 6, 0) / 4);
    EXPECT_THAT(files(), ElementsAre("in.exr", "link.exr", "mix.ctf"));
}

TEST_F(ApplySequenceTest, threadsChangeNothing)
{
    writeFrame("in.exr");
    for (const char* extension : {"exr", "tif", "png", "dpx"}) {
        const std::string one = std::string("1.") + extension, four = std::string("4.") + extension;
        expectSuccess({"apply", "-t", "mix.ctf", "--threads", "1", "in.exr", one});
        expectSuccess({"apply", "-t", "mix.ctf", "--threads", "4", "in.exr", four});
        EXPECT_EQ(readImage(path(one)).values, readImage(path(four)).values) << extension;
    }
    EXPECT_EQ(readBytes("1.exr"), readBytes("4.exr"));
    EXPECT_EQ(readBytes("1.png"), readBytes("4.png"));
}

TEST_F(ApplySequenceTest, dryRunSaysWhatItWouldDoAndWritesNothing)
{
    writeFrame("in.1.exr");
    writeFrame("in.2.exr");
    const auto before = files();
    const Outcome outcome =
        morvane({"apply", "--dry-run", "-t", "mix.ctf", "--out-depth", "16i", "in.1.exr", "in.2.exr", "out.##.png"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.output, "would convert 'in.1.exr' to 'out.01.png' (png): 33 x 50, 4 to 4 channels, 16f to 16i\n"
                              "would convert 'in.2.exr' to 'out.02.png' (png): 33 x 50, 4 to 4 channels, 16f to 16i\n");
    EXPECT_EQ(files(), before);
}

TEST_F(ApplySequenceTest, dryRunTellsTheDepthThatTheFormatWillStore)
{
    writeFrame("in.exr");
    EXPECT_EQ(morvane({"apply", "--dry-run", "-t", "mix.ctf", "in.exr", "out.jpg"}).output,
              "would convert 'in.exr' to 'out.jpg' (jpeg): 33 x 50, 4 to 3 channels, 16f to 8i\n");
    EXPECT_EQ(morvane({"apply", "--dry-run", "-t", "mix.ctf", "in.exr", "out.tif"}).output,
              "would convert 'in.exr' to 'out.tif' (tiff): 33 x 50, 4 to 4 channels, 16f to 32f\n");
}

TEST_F(ApplySequenceTest, dryRunFindsTheFailuresOfTheRealRun)
{
    writeFrame("in.exr");
    const auto before = files();
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"apply", "-t", "none.ctf", "in.exr", "out.exr"},
          {"apply", "-t", "mix.ctf", "none.exr", "out.exr"},
          {"apply", "-t", "mix.ctf", "in.exr", "none/out.exr"},
          {"apply", "-t", "mix.ctf", "in.exr", "out.nothing"},
          {"apply", "-t", "mix.ctf", "--out-depth", "16f", "in.exr", "out.png"},
          {"apply", "-t", "mix.ctf", "in.exr", "in2.exr", "out.exr"}}) {
        std::vector<std::string> dry = arguments;
        dry.push_back("--dry-run");
        const Outcome real = morvane(arguments), tried = morvane(dry);
        EXPECT_NE(real.exitCode, 0);
        EXPECT_EQ(tried.exitCode, real.exitCode) << real.error;
        EXPECT_EQ(tried.error, real.error);
    }
    EXPECT_EQ(files(), before);
}

TEST_F(ApplySequenceTest, verboseLogsOnStandardErrorOnly)
{
    writeFrame("in.exr");
    const Outcome quiet = morvane({"apply", "-t", "none.ctf", "in.exr", "out.exr"});
    const Outcome verbose = morvane({"apply", "--verbose", "-t", "none.ctf", "in.exr", "out.exr"});
    EXPECT_EQ(std::count(quiet.error.begin(), quiet.error.end(), '\n'), 1);
    EXPECT_GT(verbose.error.size(), quiet.error.size());
    EXPECT_THAT(verbose.error, ::testing::HasSubstr("No file found: 'none.ctf'"));
    EXPECT_EQ(verbose.output, "");
    EXPECT_EQ(verbose.exitCode, 3);
}
