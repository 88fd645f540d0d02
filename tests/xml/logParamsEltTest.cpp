#include "tests/utils/logRecorder.h"
#include "tests/xml/ctf.h"
#include "transform/logOp.h"

using namespace Color;

namespace {

std::string document(const std::string& content, const std::string& style = "logToLin",
                     const std::string& version = "1.6")
{
    return Ctf::document(Ctf::op("Log", content, " style='" + style + "'"), version);
}

const std::string kNumbers = " gamma='0.6' refWhite='685' refBlack='95' highlight='1.5' shadow='0.25'";

} // namespace

TEST(LogParamsElt, withoutChannelIsForAllThree)
{
    for (const char* style : {"logToLin", "linToLog"}) {
        const auto transform =
            Ctf::read(document("<LogParams shadow='0.25' highlight='1.5' REFBLACK='95' other='x' refWhite='685' "
                               "gamma='0.6'>text</LogParams>",
                               style, "1.3"));
        for (std::size_t channel = 0; channel < 3; ++channel) {
            EXPECT_EQ(Ctf::getOp<LogOp>(transform).getParams(channel), (LogOp::Params{0.6, 685, 95, 1.5, 0.25}));
        }
    }
}

TEST(LogParamsElt, channelIsMatchedInAnyCase)
{
    const auto transform = Ctf::read(document("<LogParams" + kNumbers +
                                              "/><LogParams channel='g' gamma='0.5' refWhite='2' "
                                              "refBlack='1' highlight='4' shadow='3'/>"));
    const auto& op = Ctf::getOp<LogOp>(transform);
    EXPECT_EQ(op.getParams(0), (LogOp::Params{0.6, 685, 95, 1.5, 0.25}));
    EXPECT_EQ(op.getParams(1), (LogOp::Params{0.5, 2, 1, 4, 3}));
    EXPECT_EQ(op.getParams(2), (LogOp::Params{0.6, 685, 95, 1.5, 0.25}));
}

TEST(LogParamsElt, aChannelWithoutParametersFails)
{
    Ctf::expectReadFails(document("<LogParams channel='R'" + kNumbers + "/><LogParams channel='B'" + kNumbers + "/>"),
                         0x20b0002, "The specified Log style must have 5 parameters", "COLOR:TRANSFORM:LOG");
}

TEST(LogParamsElt, alphaIsNoChannelAtAnyVersion)
{
    for (const std::string channel : {"A", "a", "", "RGB"}) {
        for (const char* version : {"1.3", "1.5", "1.6"}) {
            Ctf::expectReadFails(
                document("<LogParams channel='" + channel + "'" + kNumbers + "/>", "linToLog", version), 0x3020013,
                "Illegal 'Log' channel attribute '" + channel + "' line 3: test.ctf");
        }
    }
}

TEST(LogParamsElt, requiresAllFiveInOrder)
{
    const std::string names[] = {"gamma", "refWhite", "refBlack", "highlight", "shadow"};
    for (const std::string style : {"logToLin", "linToLog"}) {
        std::string present;
        for (const std::string& missing : names) {
            const std::string message =
                "Param '" + missing + "' required for style '" + style + "', 'Log' line 3: test.ctf";
            Ctf::expectReadFails(document("<LogParams" + present + "/>", style), 0x3020014, message);
            std::string others = kNumbers;
            others.replace(others.find(" " + missing + "="), 2, " x");
            Ctf::expectReadFails(document("<LogParams" + others + "/>", style), 0x3020014, message);
            present += " " + missing + "='1'";
        }
    }
}

TEST(LogParamsElt, refusesWhatIsNoNumber)
{
    for (const std::string name : {"gamma", "refWhite", "refBlack", "highlight", "shadow"}) {
        Ctf::expectReadFails(document("<LogParams " + name + "='?'/>"), 0x3020008, "Characters '?' illegal");
    }
}

TEST(LogParamsElt, refusesNumbersThatTheOpCannotHave)
{
    Ctf::expectReadFails(document("<LogParams gamma='0' refWhite='685' refBlack='95' highlight='1' shadow='0'/>"),
                         0x20b0003, "Invalid gamma (0.000000), gamma should be greater than 0.010000",
                         "COLOR:TRANSFORM:LOG");
    Ctf::expectReadFails(
        document("<LogParams gamma='1' refWhite='95' refBlack='95' highlight='1' shadow='0'/>"), 0x20b0004,
        "Invalid refWhite (95.000000) and refBlack (95.000000), refWhite should be greater than refBlack",
        "COLOR:TRANSFORM:LOG");
}

TEST(LogParamsElt, isIgnoredInStylesWithoutParameters)
{
    for (const char* style : {"log10", "log2", "antiLog10", "antiLog2"}) {
        const LogRecorder recorder;
        const auto transform = Ctf::read(document("<LogParams channel='?'/>", style));
        EXPECT_TRUE(Ctf::getOp<LogOp>(transform).getParams(0).empty());
        EXPECT_THAT(recorder.lines(),
                    testing::ElementsAre(testing::Pair(
                        LOG_LEVEL_DEBUG, "Ignore element 'LogParams' (line 3) where its parent is 'Log' (line 2) "
                                         "test.ctf: : Log Params not allowed in this element")));
    }
}
