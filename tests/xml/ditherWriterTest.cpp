#include "tests/xml/written.h"

#include "transform/ditherOp.h"

using namespace Color;

TEST(DitherWriter, writesItsDepth)
{
    DitherOp op(BIT_DEPTH_32f, BIT_DEPTH_16f, BIT_DEPTH_10i);
    Ctf::expectWritten(op, "<Dither inBitDepth=\"32f\" outBitDepth=\"16f\" ditherBitDepth=\"10i\">\n</Dither>\n");
}
