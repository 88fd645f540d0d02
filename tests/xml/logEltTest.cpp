#include "tests/xml/ctf.h"
#include "transform/logOp.h"

using namespace Color;

namespace {

std::string log(const std::string& style, const std::string& content = "")
{
    return Ctf::op("Log", content, " style='" + style + "'");
}

const char* const kParams = "<LogParams gamma='0.6' refWhite='685' refBlack='95' highlight='1' shadow='0'/>";

} // namespace

TEST(LogElt, readsEveryStyleInAnyCase)
{
    const struct
    {
        const char* name;
        LogOp::Style style;
    } rows[] = {
        {"log10", LogOp::STYLE_LOG10},          {"log2", LogOp::STYLE_LOG2},
        {"antiLog10", LogOp::STYLE_ANTI_LOG10}, {"antiLog2", LogOp::STYLE_ANTI_LOG2},
        {"logToLin", LogOp::STYLE_LOG_TO_LIN},  {"linToLog", LogOp::STYLE_LIN_TO_LOG},
        {"ANTILOG2", LogOp::STYLE_ANTI_LOG2},
    };
    for (const auto& row : rows) {
        const auto transform =
            Ctf::read(Ctf::document(log(row.name, LogOp::hasParams(row.style) ? kParams : ""), "1.3"));
        EXPECT_EQ(Ctf::getOp<LogOp>(transform).getStyle(), row.style) << row.name;
    }
}

TEST(LogElt, refusesAnUnknownStyle)
{
    for (const std::string style : {"", "ln"}) {
        Ctf::expectReadFails(Ctf::document(log(style)), 0x20b0001, "Unrecognized Log style: " + style,
                             "COLOR:TRANSFORM:LOG");
    }
}

TEST(LogElt, requiresAStyle)
{
    Ctf::expectReadFails(Ctf::document(Ctf::op("Log", "")), 0x3020006,
                         "Required attribute 'style' missing in 'Log' line 2: test.ctf");
}

TEST(LogElt, stylesWithParametersFailWithoutThem)
{
    for (const char* style : {"logToLin", "linToLog"}) {
        Ctf::expectReadFails(Ctf::document(log(style)), 0x20b0002, "The specified Log style must have 5 parameters",
                             "COLOR:TRANSFORM:LOG");
    }
}
