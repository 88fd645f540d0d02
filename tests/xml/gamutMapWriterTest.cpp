#include "tests/xml/written.h"

#include "transform/gamutMapOp.h"

using namespace Color;

TEST(GamutMapWriter, writesItsStyle)
{
    GamutMapOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, GamutMapOp::STYLE_DW3);
    Ctf::expectWritten(op, "<GamutMap inBitDepth=\"32f\" outBitDepth=\"32f\" style=\"dw3\">\n</GamutMap>\n");
}
