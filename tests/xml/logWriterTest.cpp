#include "tests/xml/written.h"

#include "transform/logOp.h"

using namespace Color;

namespace {

std::string element(const std::string& style, const std::string& params)
{
    return "<Log inBitDepth=\"10i\" outBitDepth=\"32f\" style=\"" + style + "\">\n" + params + "</Log>\n";
}

} // namespace

TEST(LogWriter, pureLogarithmsHaveNoParameters)
{
    for (const LogOp::Style style :
         {LogOp::STYLE_LOG10, LogOp::STYLE_LOG2, LogOp::STYLE_ANTI_LOG10, LogOp::STYLE_ANTI_LOG2}) {
        LogOp op(BIT_DEPTH_10i, BIT_DEPTH_32f, style);
        Ctf::expectWritten(op, element(LogOp::getStyleName(style), ""));
    }
}

TEST(LogWriter, writesOneElementForEqualChannels)
{
    const LogOp::Params params = {0.6, 685, 95, 1, 0.0045};
    LogOp op(BIT_DEPTH_10i, BIT_DEPTH_32f, LogOp::STYLE_LOG_TO_LIN, params, params, params);
    Ctf::expectWritten(op, element("logToLin", "   <LogParams gamma=\"0.6\" refWhite=\"685\" refBlack=\"95\" "
                                               "highlight=\"1\" shadow=\"0.0045\" />\n"));
}

TEST(LogWriter, writesAnElementPerChannel)
{
    LogOp op(BIT_DEPTH_10i, BIT_DEPTH_32f, LogOp::STYLE_LIN_TO_LOG, {0.6, 685, 95, 1, 0}, {0.5, 685, 95, 1, 0},
             {0.6, 700, 95, 1, 0});
    Ctf::expectWritten(op,
                       element("linToLog", "   <LogParams channel=\"R\" gamma=\"0.6\" refWhite=\"685\" refBlack=\"95\" "
                                           "highlight=\"1\" shadow=\"0\" />\n"
                                           "   <LogParams channel=\"G\" gamma=\"0.5\" refWhite=\"685\" refBlack=\"95\" "
                                           "highlight=\"1\" shadow=\"0\" />\n"
                                           "   <LogParams channel=\"B\" gamma=\"0.6\" refWhite=\"700\" refBlack=\"95\" "
                                           "highlight=\"1\" shadow=\"0\" />\n"));
}
