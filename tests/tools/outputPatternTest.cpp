#include "outputPattern.h"

#include "commandRunner.h"
#include "failure.h"

#include <gtest/gtest.h>

using namespace Command;

namespace {

/// The text of the failure, empty when there is none; checks that it is one of usage.
std::string usageFailure(const std::vector<std::string>& inputs, const std::string& output)
{
    try {
        pairFiles(inputs, output);
        return "";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.getCode(), ExitCode::USAGE);
        return failure.what();
    }
}

} // namespace

TEST(isOutputPattern, knowsFrameNumbersAndStems)
{
    for (const char* pattern : {"a.#.exr", "a.####.exr", "%d", "a.%04d.exr", "{stem}", "dir-##/x.exr"}) {
        EXPECT_TRUE(isOutputPattern(pattern)) << pattern;
    }
    for (const char* name :
         {"", "a.exr", "100%.exr", "a%%d.exr", "{STEM}.exr", "{stem", "%4d", "%0d", "%x", "%0004d"}) {
        EXPECT_FALSE(isOutputPattern(name)) << name;
    }
}

TEST(outputName, fillsTheFrameNumberToTheFieldsWidth)
{
    EXPECT_EQ(outputName("b.####.exr", "dir/a.0042.exr"), "b.0042.exr");
    EXPECT_EQ(outputName("b.##.exr", "a.0042.exr"), "b.42.exr");
    EXPECT_EQ(outputName("b.#.exr", "a.0042.exr"), "b.42.exr");
    EXPECT_EQ(outputName("b.%d.exr", "a.0042.exr"), "b.42.exr");
    EXPECT_EQ(outputName("b.%06d.exr", "a.0042.exr"), "b.000042.exr");
    EXPECT_EQ(outputName("b.##.exr", "a.1234567.exr"), "b.1234567.exr");
    EXPECT_EQ(outputName("b.#.exr", "a.0000.exr"), "b.0.exr");
    EXPECT_EQ(outputName("#/b.#.exr", "a.7.exr"), "7/b.7.exr");
}

TEST(outputName, takesTheLastDigitsOfTheStem)
{
    EXPECT_EQ(outputName("#.png", "shot12_v003.1001.exr"), "1001.png");
    EXPECT_EQ(outputName("#.png", "shot12_v3_final.exr"), "3.png");
    EXPECT_EQ(outputName("#.png", "dir5/7.exr"), "7.png");
    EXPECT_EQ(outputName("#.png", "123456789012345678901234567890.exr"), "123456789012345678901234567890.png");
}

TEST(outputName, insertsTheStem)
{
    EXPECT_EQ(outputName("out/{stem}_srgb.png", "in/a.b.0001.exr"), "out/a.b.0001_srgb.png");
    EXPECT_EQ(outputName("{stem}-{stem}.png", "a.exr"), "a-a.png");
    EXPECT_EQ(outputName("50%%{stem}.png", "a.exr"), "50%a.png");
}

TEST(outputName, leavesOtherNamesAlone)
{
    EXPECT_EQ(outputName("b.exr", "a.0042.exr"), "b.exr");
    EXPECT_EQ(outputName("100%%.exr", "a.0042.exr"), "100%%.exr");
}

TEST(outputName, wantsAFrameNumber)
{
    EXPECT_EQ(usageFailure({"a1.exr", "b.exr"}, "out.#.exr"),
              "the name of 'b.exr' holds no frame number for 'out.#.exr'");
    EXPECT_EQ(usageFailure({"a1.exr"}, "%099d.exr"), "the frame number in '%099d.exr' is too wide");
}

TEST(pairFiles, pairsInputsAndOutputs)
{
    const std::vector<FilePair> pairs = pairFiles({"a.1.exr", "a.2.exr"}, "b.%02d.png");
    ASSERT_EQ(pairs.size(), 2u);
    EXPECT_EQ(pairs[0].input, "a.1.exr");
    EXPECT_EQ(pairs[0].output, "b.01.png");
    EXPECT_EQ(pairs[1].input, "a.2.exr");
    EXPECT_EQ(pairs[1].output, "b.02.png");
}

TEST(pairFiles, wantsAPatternForSeveralInputs)
{
    EXPECT_EQ(usageFailure({"a.exr", "b.exr"}, "out.exr"), "several images need a pattern as output, such as "
                                                           "'out.####.exr' or 'out/{stem}.exr', but it is 'out.exr'");
    EXPECT_EQ(usageFailure({"a.exr"}, "out.exr"), "");
}

TEST(pairFiles, refusesTwoInputsForOneOutput)
{
    EXPECT_EQ(usageFailure({"a.01.exr", "a.1.exr"}, "b.#.exr"),
              "'a.01.exr' and 'a.1.exr' would both be written to 'b.1.exr'");
    EXPECT_EQ(usageFailure({"x/a.exr", "y/a.exr"}, "{stem}.png"),
              "'x/a.exr' and 'y/a.exr' would both be written to 'a.png'");
}

TEST(pairFiles, refusesTheInputOfAnotherAsOutput)
{
    EXPECT_EQ(usageFailure({"a.1.exr", "b.a.1.exr"}, "b.{stem}.exr"),
              "the output 'b.a.1.exr' of 'a.1.exr' is also an input");
    EXPECT_EQ(usageFailure({"a.1.exr", "./b.a.1.exr"}, "x/../b.{stem}.exr"),
              "the output 'x/../b.a.1.exr' of 'a.1.exr' is also an input");
}

TEST(pairFiles, allowsAnImageToBeReplaced)
{
    EXPECT_EQ(usageFailure({"a.1.exr", "a.2.exr"}, "./{stem}.exr"), "");
    EXPECT_EQ(usageFailure({"a.exr"}, "a.exr"), "");
}

class PairFilesTest : public CommandTest
{};

TEST_F(PairFilesTest, refusesADirectoryAsOutput)
{
    EXPECT_EQ(usageFailure({"a.exr"}, m_directory.string()),
              "the output '" + m_directory.string() + "' is a directory");
}

TEST_F(PairFilesTest, seesThroughLinks)
{
    writeText("a.1.exr", "");
    std::filesystem::create_symlink(path("a.1.exr"), path("link.2.exr"));
    EXPECT_EQ(usageFailure({path("a.1.exr"), path("a.2.exr")}, path("link.#.exr")),
              "the output '" + path("link.2.exr") + "' of '" + path("a.2.exr") + "' is also an input");
}
