// The command convert: what it writes, what it refuses, and that nothing half done stays behind.

#include "commandRunner.h"

#include "morvane/morvane.h"

#include <gmock/gmock.h>

#include <array>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace {

using Pixels = std::array<float, 9>;

/// Two colours and a grey through a transform.
Pixels rendered(const std::string& path)
{
    Pixels pixels = {0.8f, 0.3f, 0.1f, 0.02f, 0.6f, 0.95f, 0.5f, 0.5f, 0.5f};
    Morvane::TransformPtr transform;
    EXPECT_TRUE(Morvane::loadColorTransform(path.c_str(), transform)) << path;
    EXPECT_TRUE(Morvane::finalize(transform, Morvane::PF_RGB_32f, Morvane::PF_RGB_32f, Morvane::RENDERER_CPU,
                                  Morvane::OPTIMIZER_DEFAULT, Morvane::RESOLVE_BROADCAST_MONITOR, transform));
    EXPECT_TRUE(transform->apply(pixels.data(), Morvane::ROI(0, 0, 3, 1), pixels.data()));
    return pixels;
}

class ConvertTest : public CommandTest
{};

} // namespace

TEST_F(ConvertTest, whatIsWrittenConvertsTheSameFromEveryFormat)
{
    writeMixer("mix.xml");
    for (const std::string input :
         {MORVANE_TRANSFORMS "/demo/linear-sRGB_to_film-log.ctf", MORVANE_TRANSFORMS "/demo/warm.cdl",
          MORVANE_TRANSFORMS "/demo/film-log_to_sRGB.lut", MORVANE_TRANSFORMS "/demo/split-tone.3dl",
          MORVANE_TEST_DATA "/cdl/looks.ccc", MORVANE_TEST_DATA "/cdl/shot.cc", "mix.xml",
          MORVANE_TEST_DATA "/ctf/grading_1_6.ctf"}) {
        expectSuccess({"convert", input, "out.ctf"});
        EXPECT_EQ(rendered(path("out.ctf")), rendered(path(input))) << input;
        EXPECT_NE(rendered(path(input)), rendered(MORVANE_TRANSFORMS "/misc/identity.ctf")) << input;
    }
    EXPECT_THAT(files(), ElementsAre("mix.xml", "out.ctf"));
}

TEST_F(ConvertTest, aSecondConversionGivesTheSameBytes)
{
    expectSuccess({"convert", MORVANE_TEST_DATA "/ctf/luts.ctf", "first.ctf"});
    expectSuccess({"convert", "first.ctf", "second.ctf"});
    EXPECT_EQ(readBytes("second.ctf"), readBytes("first.ctf"));
    EXPECT_THAT(readBytes("first.ctf"), HasSubstr("<LUT3D "));
}

TEST_F(ConvertTest, anExistingFileIsReplacedWithItsPermissions)
{
    writeMatrix("in.ctf", "1 0 0 0 1 0 0 0 1");
    writeText("target.ctf", "the old file");
    ASSERT_EQ(chmod(path("target.ctf").c_str(), 0604), 0);
    ASSERT_EQ(symlink("target.ctf", path("out.ctf").c_str()), 0);
    expectSuccess({"convert", "in.ctf", "out.ctf"});
    EXPECT_TRUE(fs::is_symlink(path("out.ctf")));
    EXPECT_THAT(readBytes("target.ctf"), HasSubstr("<Matrix "));
    EXPECT_EQ(fs::status(path("target.ctf")).permissions(), fs::perms(0604));
}

TEST_F(ConvertTest, theInputIsNoOutput)
{
    writeMatrix("in.ctf", "1 0 0 0 1 0 0 0 1");
    const std::string before = readBytes("in.ctf");
    ASSERT_EQ(symlink("in.ctf", path("link.ctf").c_str()), 0);
    expectFailure({"convert", "in.ctf", "in.ctf"}, 2, "morvane: the output 'in.ctf' is the input\n");
    expectFailure({"convert", "in.ctf", "./in.ctf"}, 2, "morvane: the output './in.ctf' is the input\n");
    expectFailure({"convert", "in.ctf", "link.ctf"}, 2, "morvane: the output 'link.ctf' is the input\n");
    EXPECT_EQ(readBytes("in.ctf"), before);
}

TEST_F(ConvertTest, theOutputIsACtfFile)
{
    writeMatrix("in.ctf", "1 0 0 0 1 0 0 0 1");
    for (const std::string output : {"out.cube", "out", "out.CTF", "ctf", ".ctf"}) {
        expectFailure({"convert", "in.ctf", output}, 2,
                      "morvane: convert writes '.ctf' files, but the output is '" + output + "'\n");
    }
    EXPECT_EQ(morvane({"convert", "in.ctf"}).exitCode, 2);
    EXPECT_EQ(morvane({"convert", "in.ctf", "out.ctf", "more.ctf"}).exitCode, 2);
    EXPECT_THAT(files(), ElementsAre("in.ctf"));
}

TEST_F(ConvertTest, aTransformThatCannotBeReadIsThreeAndTheOldFileStays)
{
    writeText("out.ctf", "the old file");
    writeText("bad.ctf", "<ProcessList id=\"1\" version=\"1.3\">\n<Matrix>\n</ProcessList>\n");
    expectFailure({"convert", "none.cdl", "out.ctf"}, 3,
                  "morvane: cannot read transform 'none.cdl': No file found: 'none.cdl'\n");
    const Outcome outcome = morvane({"convert", "bad.ctf", "out.ctf"});
    EXPECT_EQ(outcome.exitCode, 3);
    EXPECT_THAT(outcome.error, ::testing::StartsWith("morvane: cannot read transform 'bad.ctf': "));
    EXPECT_EQ(readBytes("out.ctf"), "the old file");
    EXPECT_THAT(files(), ElementsAre("bad.ctf", "out.ctf"));
}

TEST_F(ConvertTest, aPlaceThatCannotBeWrittenIsFive)
{
    writeMatrix("in.ctf", "1 0 0 0 1 0 0 0 1");
    expectFailure({"convert", "in.ctf", "none/out.ctf"}, 5,
                  "morvane: cannot write transform 'none/out.ctf': the directory 'none' does not exist\n");
    fs::create_directory(path("folder.ctf"));
    expectFailure({"convert", "in.ctf", "folder.ctf"}, 5,
                  "morvane: cannot write transform 'folder.ctf': it is not a regular file\n");
}

TEST_F(ConvertTest, aFullDiskIsFiveAndTheOldFileStays)
{
    writeText("out.ctf", "the old file");
    // A limit on file sizes makes writes fail as a full disk does: at the first byte, and after many.
    for (const rlim_t limit : {rlim_t{1000}, rlim_t{50000}}) {
        const auto limitFiles = [&] {
            const rlimit sizes{limit, limit};
            setrlimit(RLIMIT_FSIZE, &sizes);
        };
        const Outcome outcome =
            runProgram(MORVANE_COMMAND, {"convert", MORVANE_TRANSFORMS "/demo/split-tone.3dl", "out.ctf"}, m_directory,
                       nullptr, limitFiles);
        EXPECT_EQ(outcome.exitCode, 5);
        EXPECT_EQ(outcome.error,
                  "morvane: cannot write transform 'out.ctf': Filesystem error for 'out.ctf': 'File too large\n");
        EXPECT_EQ(readBytes("out.ctf"), "the old file");
        EXPECT_THAT(files(), ElementsAre("out.ctf"));
    }
}
