#include "tests/xml/written.h"

#include "transform/hueVectorOp.h"

using namespace Color;

TEST(HueVectorWriter, writesItsParameters)
{
    for (const bool isForward : {true, false}) {
        HueVectorOp op(BIT_DEPTH_32f, BIT_DEPTH_32f,
                       isForward ? HueVectorOp::STYLE_YCH_FWD : HueVectorOp::STYLE_YCH_REV, {30, 60.5, 0.8});
        Ctf::expectWritten(op, std::string("<HueVector inBitDepth=\"32f\" outBitDepth=\"32f\" style=\"YCH_") +
                                   (isForward ? "Fwd" : "Rev") +
                                   "\">\n"
                                   "   <HueVecParams style=\"chroma\" center=\"30\" width=\"60.5\" amount=\"0.8\" />\n"
                                   "</HueVector>\n");
    }
}

TEST(HueVectorWriter, otherParameterStylesHaveNoNumbers)
{
    HueVectorOp op;
    op.setParameterStyle(HueVectorOp::PARAMETER_STYLE_HUE);
    EXPECT_EQ(Ctf::writeOp(op), "<HueVector inBitDepth=\"32f\" outBitDepth=\"32f\" style=\"YCH_Fwd\">\n"
                                "   <HueVecParams style=\"hue\" />\n"
                                "</HueVector>\n");
}
