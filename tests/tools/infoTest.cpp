// The commands that only print: info, formats, --version, --help.

#include "commandRunner.h"

#include "morvane/morvane.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

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

    /// Runs the command under a locale.
    Outcome morvaneIn(const char* locale, const std::vector<std::string>& arguments) const
    {
        return runProgram(MORVANE_COMMAND, arguments, m_directory, nullptr, [&] { setenv("LC_ALL", locale, 1); });
    }

    /// Writes a table that halves red, leaves green and squares blue, a cube that swaps red and blue, and a table that
    /// is bypassed.
    void writeTables() const
    {
        writeText("tables.ctf",
                  "<ProcessList id=\"1\" version=\"1.6\"><Description>Info &amp; more</Description>\n"
                  "<Info><Made>by hand</Made></Info>\n"
                  "<LUT1D inBitDepth=\"32f\" outBitDepth=\"32f\">\n"
                  "<Array dim=\"5 3\">0 0 0  0.125 0.25 0.0625  0.25 0.5 0.25  0.375 0.75 0.5625  0.5 1 1</Array>\n"
                  "</LUT1D>\n"
                  "<LUT3D inBitDepth=\"32f\" outBitDepth=\"32f\"><Array dim=\"2 2 2 3\">\n"
                  "0 0 0 1 0 0 0 1 0 1 1 0 0 0 1 1 0 1 0 1 1 1 1 1</Array></LUT3D>\n"
                  "<LUT1D inBitDepth=\"32f\" outBitDepth=\"32f\" bypass=\"true\">\n"
                  "<Array dim=\"2 1\">0 1</Array></LUT1D>\n</ProcessList>\n");
    }

    /// The part of a listing from one line to another that begins with the text.
    static std::string part(const std::string& text, const std::string& from, const std::string& to)
    {
        const size_t begin = text.find(from), end = text.find(to, begin);
        return begin == std::string::npos ? "" : text.substr(begin, end - begin);
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

TEST_F(InfoTest, picturesShowCurvesAndCubesInBlocks)
{
    writeTables();
    const Outcome outcome = morvaneIn("C.UTF-8", {"info", "--picture", "tables.ctf"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(part(outcome.output, "      Picture: greys", "    LUT 3D"),
              "      Picture: greys from 0 to 1 across, what they become from 0 to 1 upwards\n"
              "      Red                     Green                   Blue\n"
              "                                                 ▃▅▇                      ▂▆\n"
              "                                             ▂▄▆████                    ▃▆██\n"
              "                                         ▁▃▅████████                  ▃▇████\n"
              "                     ▁▂▃▄▅▆▇          ▃▅▇███████████               ▃▆███████\n"
              "              ▁▂▃▅▆▇████████      ▂▄▆███████████████           ▂▃▅██████████\n"
              "      ▁▂▃▄▅▆▇███████████████  ▁▃▅███████████████████   ▁▁▂▂▃▅▆██████████████\n");
    EXPECT_EQ(part(outcome.output, "      Picture: red", "    LUT 1D"),
              "      Picture: red from 0 to 1 across, green from 0 to 1 upwards, at blue 0.5; shades from 0 to 1\n"
              "      Red               Green             Blue\n"
              "      ▒▒▒▒▒▒▒▒▒▒▒▒▒▒▒▒  ████████████████    ░░░░▒▒▒▒▓▓▓▓██\n"
              "      ▒▒▒▒▒▒▒▒▒▒▒▒▒▒▒▒  ▓▓▓▓▓▓▓▓▓▓▓▓▓▓▓▓    ░░░░▒▒▒▒▓▓▓▓██\n"
              "      ▒▒▒▒▒▒▒▒▒▒▒▒▒▒▒▒  ▓▓▓▓▓▓▓▓▓▓▓▓▓▓▓▓    ░░░░▒▒▒▒▓▓▓▓██\n"
              "      ▒▒▒▒▒▒▒▒▒▒▒▒▒▒▒▒  ▒▒▒▒▒▒▒▒▒▒▒▒▒▒▒▒    ░░░░▒▒▒▒▓▓▓▓██\n"
              "      ▒▒▒▒▒▒▒▒▒▒▒▒▒▒▒▒  ▒▒▒▒▒▒▒▒▒▒▒▒▒▒▒▒    ░░░░▒▒▒▒▓▓▓▓██\n"
              "      ▒▒▒▒▒▒▒▒▒▒▒▒▒▒▒▒  ░░░░░░░░░░░░░░░░    ░░░░▒▒▒▒▓▓▓▓██\n"
              "      ▒▒▒▒▒▒▒▒▒▒▒▒▒▒▒▒  ░░░░░░░░░░░░░░░░    ░░░░▒▒▒▒▓▓▓▓██\n"
              "      ▒▒▒▒▒▒▒▒▒▒▒▒▒▒▒▒                      ░░░░▒▒▒▒▓▓▓▓██\n");
    // The bypassed table has none.
    EXPECT_THAT(part(outcome.output, "      Bypass: true", "Picture"), ::testing::EndsWith("Array Dimension: 2\n"));
}

TEST_F(InfoTest, picturesAreInASCIIUnderALocaleWithoutUTF8)
{
    writeText("negative.ctf", "<ProcessList id=\"1\" version=\"1.6\">\n"
                              "<LUT1D inBitDepth=\"8i\" outBitDepth=\"8i\"><Array dim=\"2 1\">255 0</Array></LUT1D>\n"
                              "</ProcessList>\n");
    EXPECT_EQ(part(morvaneIn("C", {"info", "--picture", "negative.ctf"}).output, "      Picture", "\n\n"),
              "      Picture: greys from 0 to 1 across, what they become from 0 to 1 upwards\n"
              "      All channels\n"
              "      #===...\n"
              "      #########===...\n"
              "      #################===...\n"
              "      #########################===...\n"
              "      #################################===...\n"
              "      #########################################===...\n");
}

TEST_F(InfoTest, onlyATerminalGetsPicturesUnasked)
{
    writeTables();
    EXPECT_THAT(morvane({"info", "tables.ctf"}).output, ::testing::Not(HasSubstr("Picture")));

    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_TRUE(terminal >= 0 && grantpt(terminal) == 0 && unlockpt(terminal) == 0);
    const std::string name = ptsname(terminal);
    // Held open here, so that the terminal keeps what was written until it is read.
    const int ours = open(name.c_str(), O_RDWR | O_NOCTTY);
    const auto printOnTerminal = [&] { dup2(ours, STDOUT_FILENO); };
    runProgram(MORVANE_COMMAND, {"info", "a.ctf"}, m_directory, nullptr, printOnTerminal);
    char text[4096];
    const ssize_t length = read(terminal, text, sizeof text);
    close(ours);
    close(terminal);
    ASSERT_GT(length, 0);
    const std::string shown(text, static_cast<size_t>(length));
    EXPECT_THAT(shown, HasSubstr("Min Output Value: 0.25\r\n      Picture: greys from 0 to 1 across, "));
    EXPECT_THAT(part(shown, "    Matrix", "    Range"), ::testing::Not(HasSubstr("Picture")));
}

TEST_F(InfoTest, jsonHasNoPictures)
{
    const Outcome outcome = morvane({"info", "--json", "--picture", "a.ctf"});
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_EQ(outcome.error, "morvane: --json excludes --picture (see morvane --help)\n");
}

TEST_F(InfoTest, optimizedShowsTheListBeforeAndAfterAndTheActions)
{
    writePreferences("");
    writeText("chain.ctf", "<ProcessList id=\"1\" version=\"1.6\">\n"
                           "<Range inBitDepth=\"32f\" outBitDepth=\"32f\" bypass=\"true\"></Range>\n"
                           "<Reference inBitDepth=\"32f\" outBitDepth=\"32f\" path=\"" +
                               path("a.ctf") +
                               "\"/>\n"
                               "<Gamma inBitDepth=\"32f\" outBitDepth=\"32f\" style=\"basicFwd\">"
                               "<GammaParams gamma=\"1\"/></Gamma>\n"
                               "<Range inBitDepth=\"32f\" outBitDepth=\"32f\">\n"
                               "<minInValue>0</minInValue><minOutValue>0</minOutValue>\n"
                               "<maxInValue>1</maxInValue><maxOutValue>1</maxOutValue></Range>\n"
                               "<LUT3D inBitDepth=\"32f\" outBitDepth=\"32f\"><Array dim=\"2 2 2 3\">\n"
                               "0 0 0 1 0 0 0 1 0 1 1 0 0 0 1 1 0 1 0 1 1 1 1 1</Array></LUT3D>\n</ProcessList>\n");
    const std::string range = "Range\n      Min Input Value: 0\n      Min Output Value: 0.25\n";
    const std::string clamp = "Range\n      Min Input Value: 0\n      Min Output Value: 0\n"
                              "      Max Input Value: 1\n      Max Output Value: 1\n";
    const std::string cube = "LUT 3D\n      Interpolation: default\n      Array Dimension: 2\n";
    const std::string matrix = "Matrix\n      Description: Halves.\n      Array Row 1: 0.5 0 0 0\n"
                               "      Array Row 2: 0 0.5 0 0\n      Array Row 3: 0 0 0.5 0\n"
                               "      Array Row 4: 0 0 0 1\n";
    const std::string before = "chain.ctf\n  Before\n    1. " + matrix + "    2. " + range +
                               "    3. Gamma\n      Gamma Style: basicFwd\n      gamma: 1\n    4. " + clamp +
                               "    5. " + cube;

    const Outcome outcome = morvane({"info", "--optimized", "chain.ctf"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.output, before +
                                  "  Actions\n"
                                  "    remove operator: 3. Gamma, score 100\n"
                                  "    remove redundant range: 3. Range, score 99\n"
                                  "  After\n    1. " +
                                  matrix + "    2. " + range + "    3. " + cube);
    EXPECT_EQ(morvane({"info", "--optimized", "--threshold", "100", "chain.ctf"}).output,
              before +
                  "  Actions\n"
                  "    remove operator: 3. Gamma, score 100\n"
                  "  After\n    1. " +
                  matrix + "    2. " + range + "    3. " + clamp + "    4. " + cube);
    const Outcome off = morvane({"info", "--optimized", "--threshold", "101", "a.ctf"});
    EXPECT_EQ(off.output, "a.ctf\n  Before\n    1. " + matrix + "    2. " + range +
                              "  Actions: none\n  After\n    1. " + matrix + "    2. " + range);
    expectFailure({"info", "--optimized", "--threshold", "0", "a.ctf"}, 3,
                  "morvane: cannot optimize transform 'a.ctf': Attempt to apply Null optimizer action\n");
}

TEST_F(InfoTest, optimizedMergesMatricesAndTables)
{
    const std::string depths = " inBitDepth=\"32f\" outBitDepth=\"32f\"";
    const std::string matrix = "<Matrix" + depths + "><Array dim=\"3 3 3\">2 0 0 0 2 0 0 0 2</Array></Matrix>\n";
    const std::string table = "<LUT1D" + depths + "><Array dim=\"2 1\">0 0.5</Array></LUT1D>\n";
    const std::string cube =
        "<LUT3D" + depths + "><Array dim=\"2 2 2 3\">0 0 0 0 0 1 0 1 0 0 1 1 1 0 0 1 0 1 1 1 0 1 1 1</Array></LUT3D>\n";
    writeText("pairs.ctf", "<ProcessList id=\"1\" version=\"1.6\">\n" + matrix + matrix + table + table + cube + cube +
                               "</ProcessList>\n");
    EXPECT_EQ(part(morvane({"info", "--optimized", "--threshold", "45", "pairs.ctf"}).output, "  Actions", "  After"),
              "  Actions\n"
              "    merge matrices: 1. Matrix, score 95\n"
              "    merge 1D LUTs: 2. LUT 1D, score 75\n"
              "    merge 3D LUTs: 3. LUT 3D, score 45\n");
}

TEST_F(InfoTest, optimizedKeepsDynamicOperatorsWhenAsked)
{
    const std::string open = "<ExposureContrast inBitDepth=\"32f\" outBitDepth=\"32f\" style=\"linear\">";
    writeText("dynamic.ctf",
              "<ProcessList id=\"1\" version=\"1.6\">\n" + open +
                  "<ECParams exposure=\"0\" contrast=\"1\" pivot=\"0.18\"/>"
                  "<DynamicParameter param=\"LOOK_SWITCH\"/></ExposureContrast>\n"
                  "<Matrix inBitDepth=\"32f\" outBitDepth=\"32f\"><Array dim=\"3 3 3\">2 0 0 0 2 0 0 0 2</Array>"
                  "</Matrix>\n</ProcessList>\n");
    EXPECT_EQ(part(morvane({"info", "--optimized", "dynamic.ctf"}).output, "  Actions", "  After"),
              "  Actions\n    remove operator: 1. Exposure/Contrast, score 100\n");
    EXPECT_EQ(part(morvane({"info", "--optimized", "--keep-dynamic", "dynamic.ctf"}).output, "  Actions", "  After"),
              "  Actions: none\n");
}

TEST_F(InfoTest, optimizedJsonHoldsTheSame)
{
    const Outcome outcome = morvane({"info", "--optimized", "--threshold", "99", "--json", "a.ctf"});
    EXPECT_EQ(outcome.exitCode, 0);
    const nlohmann::json document = nlohmann::json::parse(outcome.output);
    const nlohmann::json plain = nlohmann::json::parse(morvane({"info", "--json", "a.ctf"}).output);
    ASSERT_EQ(document.size(), 1u);
    EXPECT_EQ(document[0]["file"], "a.ctf");
    EXPECT_EQ(document[0]["before"], plain[0]["sections"][0]["sections"]);
    EXPECT_EQ(document[0]["actions"], nlohmann::json::array());
    EXPECT_EQ(document[0]["after"], document[0]["before"]);

    writeText("two.ctf", "<ProcessList id=\"1\" version=\"1.6\">\n"
                         "<Matrix inBitDepth=\"32f\" outBitDepth=\"32f\"><Array dim=\"3 3 3\">2 0 0 0 2 0 0 0 2</Array>"
                         "</Matrix>\n"
                         "<Matrix inBitDepth=\"32f\" outBitDepth=\"32f\"><Array dim=\"3 3 3\">3 0 0 0 3 0 0 0 3</Array>"
                         "</Matrix>\n</ProcessList>\n");
    const nlohmann::json merged = nlohmann::json::parse(morvane({"info", "--optimized", "--json", "two.ctf"}).output);
    EXPECT_EQ(merged[0]["before"].size(), 2u);
    EXPECT_EQ(merged[0]["actions"],
              nlohmann::json::array(
                  {{{"action", "merge matrices"}, {"type", 3}, {"operator", 1}, {"title", "Matrix"}, {"score", 95}}}));
    ASSERT_EQ(merged[0]["after"].size(), 1u);
    EXPECT_EQ(merged[0]["after"][0]["fields"][0], nlohmann::json({{"label", "Array Row 1"}, {"value", "6 0 0 0"}}));
}

TEST_F(InfoTest, referencesThatCannotBeResolvedAreReported)
{
    writePreferences("");
    writeText("lost.ctf", "<ProcessList id=\"1\" version=\"1.6\">\n<Reference inBitDepth=\"32f\" outBitDepth=\"32f\" "
                          "path=\"lost/a.ctf\"/>\n</ProcessList>\n");
    EXPECT_EQ(morvane({"info", "lost.ctf"}).output, "lost.ctf\n"
                                                    "  Transform\n"
                                                    "    Input Descriptor: \n"
                                                    "    Output Descriptor: \n"
                                                    "    Nickname: \n"
                                                    "    Reference\n"
                                                    "      Base Path: \n"
                                                    "      Path: lost/a.ctf\n");
    expectFailure({"info", "--optimized", "lost.ctf"}, 3,
                  "morvane: cannot optimize transform 'lost.ctf': Reference missing Base Path attribute\n");
}

TEST_F(InfoTest, formatsListsTransformsPixelsAndImages)
{
    const Outcome text = morvane({"formats"});
    EXPECT_EQ(text.exitCode, 0);
    EXPECT_THAT(text.output, HasSubstr("Transforms that can be read:\n"
                                       "  ctf      ctf\n"
                                       "  cdl      ASC CDL color decision list XML format\n"
                                       "  ccc      ASC CDL color correction collection XML format\n"
                                       "  cc       CDL fragment format\n"
                                       "  lut      Halvorn 1d-LUT format\n"
                                       "  3dl      Halvorn 3d-LUT format\n"
                                       "  icm      ICC Profile file extension\n"
                                       "  icc      ICC Profile file extension\n"
                                       "  pf       ICC Profile file extension\n"));
    EXPECT_THAT(text.output, HasSubstr("\n  PF_RGBA_10iP 4 channels,  4 bytes\n"));
    EXPECT_THAT(text.output, HasSubstr("\n  openexr        rw  exr"));

    const nlohmann::json document = nlohmann::json::parse(morvane({"formats", "--json"}).output);
    EXPECT_EQ(document["transforms"][0], nlohmann::json({{"extension", "ctf"}, {"description", "ctf"}}));
    EXPECT_EQ(document["transforms"].size(), 9u);
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

TEST_F(InfoTest, aListingThatCannotBeWrittenIsFive)
{
    const auto fillDisk = [] { dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO); };
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {"info", "a.ctf"}, {"info", "--json", "a.ctf"}, {"check", "a.ctf"}, {"formats"}, {"--version"}}) {
        const Outcome outcome = runProgram(MORVANE_COMMAND, arguments, m_directory, nullptr, fillDisk);
        EXPECT_EQ(outcome.exitCode, 5) << arguments.front();
        EXPECT_EQ(outcome.error, "morvane: cannot write to standard output\n") << arguments.front();
    }
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
    for (const char* line :
         {"  0  everything was done\n", "  1  something failed while an image was converted\n",
          "  2  wrong usage; nothing was done\n", "  3  a transform or the preferences cannot be loaded or used\n",
          "  4  an image cannot be read\n",
          "  5  an image, a transform, the preferences or the standard output cannot be written\n",
          "  6  a transform that was checked has warnings, and none has errors\n"}) {
        EXPECT_THAT(help, HasSubstr(line));
    }
}
