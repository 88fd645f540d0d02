#include "tests/xml/written.h"

#include "transform/CDLOp.h"

using namespace Color;

TEST(CDLWriter, writesBothNodes)
{
    const struct
    {
        CDLOp::Style style;
        const char* name;
    } rows[] = {
        {CDLOp::STYLE_V1_2_FWD, "v1.2_Fwd"},
        {CDLOp::STYLE_V1_2_REV, "v1.2_Rev"},
        {CDLOp::STYLE_NO_CLAMP_FWD, "noClampFwd"},
        {CDLOp::STYLE_NO_CLAMP_REV, "noClampRev"},
    };
    for (const auto& row : rows) {
        CDLOp op(BIT_DEPTH_16f, BIT_DEPTH_16f, row.style, {1.1, 1, 0.9}, {0.01, 0, -0.01}, {1, 1.25, 1e-5}, 0.875);
        Ctf::expectWritten(op, std::string("<ASC_CDL inBitDepth=\"16f\" outBitDepth=\"16f\" style=\"") + row.name +
                                   "\">\n"
                                   "   <SOPNode>\n"
                                   "      <Slope>1.1, 1, 0.9</Slope>\n"
                                   "      <Offset>0.01, 0, -0.01</Offset>\n"
                                   "      <Power>1, 1.25, 1e-05</Power>\n"
                                   "   </SOPNode>\n"
                                   "   <SatNode>\n"
                                   "      <Saturation>0.875</Saturation>\n"
                                   "   </SatNode>\n"
                                   "</ASC_CDL>\n");
    }
}

TEST(CDLWriter, writesBothNodesOfAnOpWithoutEffect)
{
    CDLOp op;
    op.getDescriptions() = {"nothing"};
    Ctf::expectWritten(op, "<ASC_CDL inBitDepth=\"32f\" outBitDepth=\"32f\" style=\"v1.2_Fwd\">\n"
                           "   <Description>nothing</Description>\n"
                           "   <SOPNode>\n"
                           "      <Slope>1, 1, 1</Slope>\n"
                           "      <Offset>0, 0, 0</Offset>\n"
                           "      <Power>1, 1, 1</Power>\n"
                           "   </SOPNode>\n"
                           "   <SatNode>\n"
                           "      <Saturation>1</Saturation>\n"
                           "   </SatNode>\n"
                           "</ASC_CDL>\n");
}
