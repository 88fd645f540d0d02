// The commands that only print: info, formats, --version, --help.

#include "commandRunner.h"

#include "morvane/morvane.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

using ::testing::HasSubstr;

namespace {

class InfoTest : public CommandTest
{
protected:
    InfoTest()
    {
        writeText("a.ctf", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                           "<ProcessList id=\"1\" name=\"halve \xc3\xa9\" version=\"1.3\">\n"
                           "<Description>First.</Description>\n<Description>Second.</Description>\n"
                           "<InputDescriptor>in</InputDescriptor>\n<OutputDescriptor>out</OutputDescriptor>\n"
                           "<Matrix inBitDepth=\"32f\" outBitDepth=\"32f\"><Description>Halves.</Description>\n"
                           "<Array dim=\"3 3 3\">0.5 0 0 0 0.5 0 0 0 0.5</Array></Matrix>\n"
                           "<Range inBitDepth=\"32f\" outBitDepth=\"32f\">\n"
                           "<minInValue>0</minInValue><minOutValue>0.25</minOutValue></Range>\n"
                           "</ProcessList>\n");
    }
};

} // namespace

TEST_F(InfoTest, textIsIndented)
{
    const Outcome outcome = morvane({"info", "a.ctf"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.output, "a.ctf\n"
                              "  Transform\n"
                              "    Input Descriptor: in\n"
                              "    Output Descriptor: out\n"
                              "    Nickname: halve \xc3\xa9\n"
                              "    Description: First.\n"
                              "    Description: Second.\n"
                              "    Matrix\n"
                              "      Description: Halves.\n"
                              "      Array Row 1: 0.5 0 0 0\n"
                              "      Array Row 2: 0 0.5 0 0\n"
                              "      Array Row 3: 0 0 0.5 0\n"
                              "      Array Row 4: 0 0 0 1\n"
                              "    Range\n"
                              "      Min Input Value: 0\n"
                              "      Min Output Value: 0.25\n");
}

TEST_F(InfoTest, jsonHoldsTheSameTree)
{
    const Outcome outcome = morvane({"info", "--json", "a.ctf", "a.ctf"});
    EXPECT_EQ(outcome.exitCode, 0);
    const nlohmann::json document = nlohmann::json::parse(outcome.output);
    ASSERT_EQ(document.size(), 2u);
    EXPECT_EQ(document[1], document[0]);
    EXPECT_EQ(document[0]["file"], "a.ctf");
    const nlohmann::json& transform = document[0]["sections"][0];
    EXPECT_EQ(transform["title"], "Transform");
    EXPECT_EQ(transform["fields"][2], nlohmann::json({{"label", "Nickname"}, {"value", "halve \xc3\xa9"}}));
    ASSERT_EQ(transform["sections"].size(), 2u);
    EXPECT_EQ(transform["sections"][0]["title"], "Matrix");
    EXPECT_EQ(transform["sections"][0]["fields"].size(), 5u);
    EXPECT_EQ(transform["sections"][1]["fields"][1],
              nlohmann::json({{"label", "Min Output Value"}, {"value", "0.25"}}));
}

TEST_F(InfoTest, aBadFileIsReportedAndTheOthersShown)
{
    const Outcome outcome = morvane({"info", "none.ctf", "a.ctf"});
    EXPECT_EQ(outcome.exitCode, 3);
    EXPECT_EQ(outcome.error, "morvane: cannot read transform 'none.ctf': No file found: 'none.ctf'\n");
    EXPECT_THAT(outcome.output, ::testing::StartsWith("a.ctf\n"));
    EXPECT_EQ(nlohmann::json::parse(morvane({"info", "--json", "none.ctf", "a.ctf"}).output).size(), 1u);
}

TEST_F(InfoTest, formatsListsTransformsPixelsAndImages)
{
    const Outcome text = morvane({"formats"});
    EXPECT_EQ(text.exitCode, 0);
    EXPECT_THAT(text.output, HasSubstr("Transforms that can be read:\n  ctf      ctf\n"));
    EXPECT_THAT(text.output, HasSubstr("\n  PF_RGBA_10iP 4 channels,  4 bytes\n"));
    EXPECT_THAT(text.output, HasSubstr("\n  openexr        rw  exr"));

    const nlohmann::json document = nlohmann::json::parse(morvane({"formats", "--json"}).output);
    EXPECT_EQ(document["transforms"][0], nlohmann::json({{"extension", "ctf"}, {"description", "ctf"}}));
    EXPECT_EQ(document["pixelFormats"].size(), 32u);
    EXPECT_EQ(document["pixelFormats"][0], nlohmann::json({{"name", "PF_RGB_8i"}, {"channels", 3}, {"bytes", 3}}));
    bool foundPNG = false;
    for (const nlohmann::json& image : document["images"]) {
        if (image["name"] == "png") {
            foundPNG = true;
            EXPECT_EQ(image["extensions"], nlohmann::json({"png"}));
            EXPECT_EQ(image["read"], true);
            EXPECT_EQ(image["write"], true);
        }
    }
    EXPECT_TRUE(foundPNG);
}

TEST_F(InfoTest, versionIsTheLibrarys)
{
    const Outcome outcome = morvane({"--version"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.output, "morvane 2015.1.42\n");
    EXPECT_STREQ(Morvane::getVersionString(), "2015.1.42");
}

TEST_F(InfoTest, helpTellsTheExitCodes)
{
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"--help"}, {"apply", "--help"}}) {
        const Outcome outcome = morvane(arguments);
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_EQ(outcome.error, "");
        EXPECT_THAT(outcome.output, HasSubstr("Usage: morvane"));
    }
    const std::string help = morvane({"--help"}).output;
    for (const char* line : {"  0  everything was done\n", "  1  something failed while an image was converted\n",
                             "  2  wrong usage; nothing was done\n", "  3  a transform cannot be loaded or used\n",
                             "  4  an image cannot be read\n", "  5  an image cannot be written\n"}) {
        EXPECT_THAT(help, HasSubstr(line));
    }
}
