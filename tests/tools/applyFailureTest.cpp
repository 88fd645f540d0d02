// Exit codes, the one line that each failure prints, and that nothing half done stays behind.

#include "commandRunner.h"
#include "testImage.h"

#include <OpenImageIO/deepdata.h>
#include <OpenImageIO/imagebuf.h>
#include <OpenImageIO/imagebufalgo.h>
#include <gmock/gmock.h>

#include <chrono>
#include <csignal>
#include <random>
#include <thread>

#include <sys/resource.h>
#include <sys/stat.h>

using ::testing::ElementsAre;
using ::testing::StartsWith;

namespace {

class ApplyFailureTest : public CommandTest
{
protected:
    ApplyFailureTest()
    {
        writeMixer("mix.ctf");
        writeImage(path("in.exr"),
                   makeImage({20, 20, 3, OIIO::TypeHalf}, [](int x, int y, int c) { return (x + y + c) / 64.0; }));
    }

    /// A picture that does not compress: several megabytes in the file.
    void writeNoise(const std::string& name, int size) const
    {
        std::mt19937 random(1);
        OIIO::ImageSpec spec(size, size, 3, OIIO::TypeFloat);
        spec.attribute("compression", "none");
        TestImage image{spec, std::vector<double>(spec.image_pixels() * 3)};
        for (double& value : image.values)
            value = static_cast<double>(random()) / 4294967296.0;
        writeImage(path(name), image);
    }
};

} // namespace

TEST_F(ApplyFailureTest, wrongUsageIsTwo)
{
    expectFailure({}, 2, "morvane: A subcommand is required (see morvane --help)\n");
    expectFailure({"apply", "in.exr", "out.exr"}, 2, "morvane: apply needs a transform: -t FILE\n");
    expectFailure({"apply", "-t", "mix.ctf", "in.exr"}, 2, "morvane: apply needs an input image and an output image\n");
    expectFailure({"apply", "-t", "mix.ctf", "in.exr", "in2.exr", "out.exr"}, 2,
                  "morvane: several images need a pattern as output, such as 'out.####.exr' or 'out/{stem}.exr', but "
                  "it is 'out.exr'\n");
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"apply", "--out-depth", "9i", "-t", "mix.ctf", "in.exr", "out.exr"},
          {"apply", "--threads", "0", "-t", "mix.ctf", "in.exr", "out.exr"},
          {"apply", "--unknown", "-t", "mix.ctf", "in.exr", "out.exr"},
          {"info"},
          {"convert"}}) {
        const Outcome outcome = morvane(arguments);
        EXPECT_EQ(outcome.exitCode, 2) << arguments[0];
        EXPECT_THAT(outcome.error, StartsWith("morvane: "));
        EXPECT_EQ(std::count(outcome.error.begin(), outcome.error.end(), '\n'), 1) << outcome.error;
    }
    EXPECT_THAT(files(), ElementsAre("in.exr", "mix.ctf"));
}

TEST_F(ApplyFailureTest, aTransformThatCannotBeLoadedIsThree)
{
    expectFailure({"apply", "-t", "none.ctf", "in.exr", "out.exr"}, 3,
                  "morvane: cannot read transform 'none.ctf': No file found: 'none.ctf'\n");
    expectFailure({"apply", "-t", "in.exr", "in.exr", "out.exr"}, 3,
                  "morvane: cannot read transform 'in.exr': Unsupported file format: 'in.exr'\n");
    writeText("empty.ctf", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ProcessList id=\"a\" version=\"1.3\">\n"
                           "</ProcessList>\n");
    expectFailure({"apply", "-t", "empty.ctf", "in.exr", "out.exr"}, 3,
                  "morvane: cannot read transform 'empty.ctf': No color operators found in file: empty.ctf\n");
    EXPECT_THAT(files(), ElementsAre("empty.ctf", "in.exr", "mix.ctf"));
}

TEST_F(ApplyFailureTest, aTransformWithoutInverseIsThree)
{
    expectFailure(
        {"apply", "--inverse", "-t", MORVANE_TRANSFORMS "/full-range_to_legal-range_10i.ctf", "in.exr", "out.exr"}, 3,
        "morvane: cannot invert the transform: Range inverse not supported\n");
}

TEST_F(ApplyFailureTest, anImageThatCannotBeReadIsFour)
{
    expectFailure({"apply", "-t", "mix.ctf", "none.exr", "out.exr"}, 4,
                  "morvane: cannot read image 'none.exr': no such file\n");
    std::filesystem::create_directory(path("folder.exr"));
    expectFailure({"apply", "-t", "mix.ctf", "folder.exr", "out.exr"}, 4,
                  "morvane: cannot read image 'folder.exr': it is a directory\n");
    writeText("text.exr", "this is no picture\nof any kind\n");
    const Outcome outcome = morvane({"apply", "-t", "mix.ctf", "text.exr", "out.exr"});
    EXPECT_EQ(outcome.exitCode, 4);
    EXPECT_THAT(outcome.error, StartsWith("morvane: cannot read image 'text.exr': "));
    EXPECT_EQ(std::count(outcome.error.begin(), outcome.error.end(), '\n'), 1) << outcome.error;
    EXPECT_THAT(files(), ElementsAre("in.exr", "mix.ctf", "text.exr"));
}

TEST_F(ApplyFailureTest, aTruncatedImageIsFourAndLeavesNothing)
{
    writeNoise("whole.exr", 200);
    writeText("cut.exr", readBytes("whole.exr").substr(0, 300000));
    for (const char* output : {"out.exr", "out.png", "out.tif"}) {
        const Outcome outcome = morvane({"apply", "-t", "mix.ctf", "cut.exr", output});
        EXPECT_EQ(outcome.exitCode, 4) << output;
        EXPECT_THAT(outcome.error, StartsWith("morvane: cannot read image 'cut.exr': "));
        EXPECT_EQ(std::count(outcome.error.begin(), outcome.error.end(), '\n'), 1) << outcome.error;
    }
    EXPECT_THAT(files(), ElementsAre("cut.exr", "in.exr", "mix.ctf", "whole.exr"));
}

TEST_F(ApplyFailureTest, deepAndMipMappedImagesAreRefused)
{
    OIIO::ImageSpec deep(4, 4, 4, OIIO::TypeHalf);
    deep.deep = true;
    deep.channelnames = {"R", "G", "B", "A"};
    const auto output = OIIO::ImageOutput::create(path("deep.exr"));
    ASSERT_TRUE(output->open(path("deep.exr"), deep)) << output->geterror();
    OIIO::DeepData data(deep);
    for (int64_t pixel = 0; pixel < data.pixels(); ++pixel)
        data.set_samples(pixel, 1);
    ASSERT_TRUE(output->write_deep_image(data) && output->close()) << output->geterror();
    expectFailure({"apply", "-t", "mix.ctf", "deep.exr", "out.exr"}, 4,
                  "morvane: cannot read image 'deep.exr': deep images are not supported\n");

    const OIIO::ImageBuf plain(path("in.exr"));
    ASSERT_TRUE(
        OIIO::ImageBufAlgo::make_texture(OIIO::ImageBufAlgo::MakeTxTexture, plain, path("mip.exr"), OIIO::ImageSpec()));
    expectFailure({"apply", "-t", "mix.ctf", "mip.exr", "out.exr"}, 4,
                  "morvane: cannot read image 'mip.exr': files with MIP-map levels are not supported\n");
}

TEST_F(ApplyFailureTest, anImageThatCannotBeWrittenIsFive)
{
    expectFailure({"apply", "-t", "mix.ctf", "in.exr", "none/out.exr"}, 5,
                  "morvane: cannot write image 'none/out.exr': the directory 'none' does not exist\n");
    expectFailure({"apply", "-t", "mix.ctf", "--out-depth", "16f", "in.exr", "out.png"}, 5,
                  "morvane: cannot write image 'out.png': the format png cannot store samples of depth 16f\n");
    expectFailure({"apply", "-t", "mix.ctf", "--out-depth", "10i", "in.exr", "out.png"}, 5,
                  "morvane: cannot write image 'out.png': the format png cannot store samples of depth 10i\n");
    const auto page = makeImage({4, 4, 3, OIIO::TypeUInt8}, [](int, int, int) { return 1; });
    writeImages(path("pages.tif"), {page, page});
    expectFailure({"apply", "-t", "mix.ctf", "pages.tif", "out.png"}, 5,
                  "morvane: cannot write image 'out.png': the format png cannot hold several images in a file\n");
    const Outcome outcome = morvane({"apply", "-t", "mix.ctf", "in.exr", "out.nothing"});
    EXPECT_EQ(outcome.exitCode, 5);
    EXPECT_THAT(outcome.error, StartsWith("morvane: cannot write image 'out.nothing': "));
    EXPECT_EQ(std::count(outcome.error.begin(), outcome.error.end(), '\n'), 1) << outcome.error;
    ASSERT_EQ(mkfifo(path("pipe.exr").c_str(), 0600), 0);
    expectFailure({"apply", "-t", "mix.ctf", "in.exr", "pipe.exr"}, 5,
                  "morvane: cannot write image 'pipe.exr': it is not a regular file\n");
    EXPECT_THAT(files(), ElementsAre("in.exr", "mix.ctf", "pages.tif"));
}

TEST_F(ApplyFailureTest, aFullDiskIsFiveAndTheOldFileStays)
{
    writeNoise("noise.exr", 200);
    // A limit on file sizes makes writes fail as a full disk does: in the header, and near the end.
    const struct
    {
        const char* output;
        rlim_t limit;
    } cases[] = {{"out.exr", 1000}, {"out.exr", 400000}, {"out.tif", 1000}, {"out.tif", 450000},
                 {"out.png", 1000}, {"out.png", 30000},  {"out.dpx", 1000}, {"out.dpx", 450000}};
    for (const auto& row : cases) {
        writeText(row.output, "the old file");
        const auto limitFiles = [&] {
            const rlimit sizes{row.limit, row.limit};
            setrlimit(RLIMIT_FSIZE, &sizes);
        };
        const Outcome outcome = runProgram(MORVANE_COMMAND, {"apply", "-t", "mix.ctf", "noise.exr", row.output},
                                           m_directory, nullptr, limitFiles);
        EXPECT_EQ(outcome.exitCode, 5) << row.output << ", " << row.limit;
        EXPECT_THAT(outcome.error, StartsWith(std::string("morvane: cannot write image '") + row.output + "': "));
        EXPECT_EQ(std::count(outcome.error.begin(), outcome.error.end(), '\n'), 1) << outcome.error;
        EXPECT_EQ(readBytes(row.output), "the old file");
    }
    EXPECT_THAT(files(), ElementsAre("in.exr", "mix.ctf", "noise.exr", "out.dpx", "out.exr", "out.png", "out.tif"));
}

TEST_F(ApplyFailureTest, aSignalLeavesNothingBehind)
{
    writeNoise("noise.exr", 1500);
    writeText("out.exr", "the old file");
    for (const int signalNumber : {SIGTERM, SIGINT, SIGHUP}) {
        bool seen = false;
        const auto sendWhenWriting = [&](pid_t process) {
            // The file stays for as long as the picture takes to be compressed: much longer than this looks away.
            const std::string temporary = path(".out.morvane-" + std::to_string(process) + ".exr");
            for (int i = 0; i < 60000 && !seen && kill(process, 0) == 0; ++i) {
                seen = std::filesystem::exists(temporary);
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
            kill(process, signalNumber);
        };
        const Outcome outcome = runProgram(MORVANE_COMMAND, {"apply", "-t", "mix.ctf", "noise.exr", "out.exr"},
                                           m_directory, sendWhenWriting);
        EXPECT_TRUE(seen);
        EXPECT_EQ(outcome.signal, signalNumber);
        EXPECT_EQ(readBytes("out.exr"), "the old file");
        EXPECT_THAT(files(), ElementsAre("in.exr", "mix.ctf", "noise.exr", "out.exr"));
    }
}

TEST_F(ApplyFailureTest, otherImagesGoOnAndTheFirstCodeCounts)
{
    writeText("a.2.exr", "no picture");
    std::filesystem::copy_file(path("in.exr"), path("a.1.exr"));
    std::filesystem::copy_file(path("in.exr"), path("a.4.exr"));
    const Outcome outcome = morvane({"apply", "-t", "mix.ctf", "a.1.exr", "a.2.exr", "a.3.exr", "a.4.exr", "b.#.exr"});
    EXPECT_EQ(outcome.exitCode, 4);
    EXPECT_EQ(std::count(outcome.error.begin(), outcome.error.end(), '\n'), 2) << outcome.error;
    EXPECT_THAT(files(), ElementsAre("a.1.exr", "a.2.exr", "a.4.exr", "b.1.exr", "b.4.exr", "in.exr", "mix.ctf"));
}
