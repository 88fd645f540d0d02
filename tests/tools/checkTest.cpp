// The command check: what it prints of good, doubtful and bad files, and its exit codes.

#include "checkCommand.h"
#include "commandRunner.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace {

class CheckTest : public CommandTest
{
protected:
    CheckTest()
    {
        writeMatrix("good.ctf", "1 0 0 0 1 0 0 0 1");
        writeText("odd.ctf", "<ProcessList id=\"1\" version=\"1.3\">\n<Sparkle/>\n"
                             "<Range inBitDepth=\"32f\" outBitDepth=\"32f\">\n"
                             "<minInValue>0</minInValue><minOutValue>0</minOutValue>\n<Glitter/></Range>\n"
                             "</ProcessList>\n");
        writeText("bad.ctf", "<ProcessList id=\"1\" version=\"1.3\">\n<Sparkle/>\n"
                             "<Matrix inBitDepth=\"32f\" outBitDepth=\"9i\">\n</Matrix></ProcessList>\n");
    }

    Outcome check(std::vector<std::string> files) const
    {
        files.insert(files.begin(), "check");
        return morvane(files);
    }

    const std::string m_sparkle = "Ignore element 'Sparkle' (line 2) where its parent is 'ProcessList' (line 1) ";
    const std::string m_oddWarnings[2] = {
        m_sparkle + "odd.ctf: : Unknown element",
        "Ignore element 'Glitter' (line 5) where its parent is 'Range' (line 3) odd.ctf: : Unknown element"};
    const std::string m_badError = "Illegal 'Output Bit Depth' attribute '9i' in 'Matrix' line 3: bad.ctf";
};

} // namespace

TEST_F(CheckTest, goodFilesOfEveryFormatAreZero)
{
    const Outcome outcome =
        check({"good.ctf", MORVANE_TRANSFORMS "/demo/warm.cdl", MORVANE_TRANSFORMS "/demo/film-log_to_sRGB.lut",
               MORVANE_TRANSFORMS "/demo/split-tone.3dl"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.output, "good.ctf: ok\n" MORVANE_TRANSFORMS "/demo/warm.cdl: ok\n" MORVANE_TRANSFORMS
                              "/demo/film-log_to_sRGB.lut: ok\n" MORVANE_TRANSFORMS "/demo/split-tone.3dl: ok\n");
}

TEST_F(CheckTest, warningsAreSixAndComeWithTheirLines)
{
    const Outcome outcome = check({"odd.ctf", "good.ctf"});
    EXPECT_EQ(outcome.exitCode, 6);
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.output, "odd.ctf:2: warning: " + m_oddWarnings[0] + "\nodd.ctf:5: warning: " + m_oddWarnings[1] +
                                  "\ngood.ctf: ok\n");
}

TEST_F(CheckTest, anErrorIsThreeAndTheOtherFilesAreChecked)
{
    const Outcome outcome = check({"bad.ctf", "none.ctf", "odd.ctf", "good.ctf"});
    EXPECT_EQ(outcome.exitCode, 3);
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.output,
              "bad.ctf:2: warning: " + m_sparkle + "bad.ctf: : Unknown element\nbad.ctf:3: error: " + m_badError +
                  "\nnone.ctf: error: No file found: 'none.ctf'\nodd.ctf:2: warning: " + m_oddWarnings[0] +
                  "\nodd.ctf:5: warning: " + m_oddWarnings[1] + "\ngood.ctf: ok\n");
    EXPECT_EQ(check({"odd.ctf", "bad.ctf"}).exitCode, 3);
}

TEST_F(CheckTest, whatShowsOnlyInRenderingIsAWarning)
{
    writeText("4pt.ctf", "<ProcessList id=\"1\" version=\"1.4\">\n"
                         "<LUT3D inBitDepth=\"8i\" outBitDepth=\"8i\" interpolation=\"4pt tetrahedral\">\n"
                         "<Array dim=\"2 2 2 3\">0 0 0 0 0 9 0 9 0 0 9 9 9 0 0 9 0 9 9 9 0 9 9 9</Array></LUT3D>\n"
                         "</ProcessList>\n");
    const Outcome outcome = check({"4pt.ctf"});
    EXPECT_EQ(outcome.exitCode, 6);
    EXPECT_EQ(outcome.output, "4pt.ctf: warning: COLOR:RENDERER:CPU: Op 'LUT 3D' illegal attribute 'Interpolation'\n");
}

TEST_F(CheckTest, whatIsReferredToIsCheckedAndItsLinesAreNotThoseOfTheFile)
{
    writePreferences("");
    const auto refer = [&](const std::string& name, const std::string& to) {
        writeText(name, "<ProcessList id=\"1\" version=\"1.6\">\n<Reference path=\"" + path(to) +
                            "\" inBitDepth=\"32f\" outBitDepth=\"32f\"/>\n</ProcessList>\n");
    };
    refer("toGood.ctf", "good.ctf");
    refer("toOdd.ctf", "odd.ctf");
    refer("toBad.ctf", "bad.ctf");
    refer("toNone.ctf", "none.ctf");
    const Outcome outcome = check({"toGood.ctf", "toOdd.ctf", "toBad.ctf", "toNone.ctf"});
    EXPECT_EQ(outcome.exitCode, 3);
    EXPECT_EQ(outcome.error, "");
    const auto warning = [&](const std::string& name, const std::string& parent, const std::string& where,
                             const std::string& file) {
        return "warning: Ignore element '" + name + "' (line " + where.substr(0, 1) + ") where its parent is '" +
               parent + "' (line " + where.substr(2) + ") " + path(file) + ": : Unknown element\n";
    };
    const std::string failed = "error: Failed to load reference Reference: ";
    EXPECT_EQ(outcome.output, "toGood.ctf: ok\n"
                              "toOdd.ctf: " +
                                  warning("Sparkle", "ProcessList", "2 1", "odd.ctf") +
                                  "toOdd.ctf: " + warning("Glitter", "Range", "5 3", "odd.ctf") + "toBad.ctf: " +
                                  warning("Sparkle", "ProcessList", "2 1", "bad.ctf") + "toBad.ctf: " + failed +
                                  "Illegal 'Output Bit Depth' attribute '9i' in 'Matrix' line 3: " + path("bad.ctf") +
                                  "\ntoNone.ctf: " + failed + "No file found: '" + path("none.ctf") + "'\n");
}

TEST_F(CheckTest, jsonHoldsTheSame)
{
    const Outcome outcome = check({"--json", "bad.ctf", "none.ctf", "odd.ctf", "good.ctf"});
    EXPECT_EQ(outcome.exitCode, 3);
    EXPECT_EQ(outcome.error, "");
    using nlohmann::json;
    const json sparkle = {{"line", 2}, {"text", m_sparkle + "bad.ctf: : Unknown element"}};
    const json expected = {
        {{"file", "bad.ctf"},
         {"usable", false},
         {"warnings", json::array({sparkle})},
         {"errors", json::array({{{"line", 3}, {"text", m_badError}}})}},
        {{"file", "none.ctf"},
         {"usable", false},
         {"warnings", json::array()},
         {"errors", json::array({{{"text", "No file found: 'none.ctf'"}}})}},
        {{"file", "odd.ctf"},
         {"usable", true},
         {"warnings",
          json::array({{{"line", 2}, {"text", m_oddWarnings[0]}}, {{"line", 5}, {"text", m_oddWarnings[1]}}})},
         {"errors", json::array()}},
        {{"file", "good.ctf"}, {"usable", true}, {"warnings", json::array()}, {"errors", json::array()}}};
    EXPECT_EQ(json::parse(outcome.output), expected);
}

TEST_F(CheckTest, verboseLogsTheFailuresOnStandardErrorToo)
{
    const Outcome outcome = check({"--verbose", "bad.ctf"});
    EXPECT_EQ(outcome.output, check({"bad.ctf"}).output);
    EXPECT_THAT(outcome.error, ::testing::HasSubstr(m_sparkle));
    EXPECT_THAT(outcome.error, ::testing::HasSubstr("): COLOR:XML:READER: " + m_badError + "\n"));
}

TEST(lineToldBy, readsTheLineOfAnIgnoredElement)
{
    EXPECT_EQ(Command::lineToldBy("Ignore element 'A' (line 8) where its parent is 'B' (line 6) a.cdl: : x", "a.cdl"),
              8u);
    EXPECT_EQ(Command::lineToldBy("Ignore element 'A'", "a.cdl"), 0u);
    // That of another file.
    EXPECT_EQ(
        Command::lineToldBy("Ignore element 'A' (line 8) where its parent is 'B' (line 6) /x/a.cdl: : x", "a.cdl"), 0u);
}

TEST(lineToldBy, readsTheLineInFrontOfTheFileOrAtTheEnd)
{
    EXPECT_EQ(Command::lineToldBy("Illegal ' line 3: ' in 'Matrix' line 12: a b.ctf", "a b.ctf"), 12u);
    EXPECT_EQ(Command::lineToldBy("Attribute 'x' not supported in 'y' line 7", "a.ctf"), 7u);
}

TEST(lineToldBy, findsNoneElsewhere)
{
    for (const char* message : {"", "7", "No file found: 'a line 7'", "outline 7", " line : a.ctf", "line 7"})
        EXPECT_EQ(Command::lineToldBy(message, "a.ctf"), 0u) << message;
}
