#include "tests/xml/written.h"

#include <cmath>

using namespace Color;

TEST(RangeWriter, writesAllLimits)
{
    RangeOp op(BIT_DEPTH_8i, BIT_DEPTH_10i, 16, 235, 0.5, 1023);
    Ctf::expectWritten(op, "<Range inBitDepth=\"8i\" outBitDepth=\"10i\">\n"
                           "   <minInValue>16</minInValue>\n"
                           "   <maxInValue>235</maxInValue>\n"
                           "   <minOutValue>0.5</minOutValue>\n"
                           "   <maxOutValue>1023</maxOutValue>\n"
                           "</Range>\n");
}

TEST(RangeWriter, writesThePairsThatAreSet)
{
    RangeOp none(BIT_DEPTH_32f, BIT_DEPTH_32f);
    Ctf::expectWritten(none, "<Range inBitDepth=\"32f\" outBitDepth=\"32f\">\n</Range>\n");

    RangeOp low(BIT_DEPTH_32f, BIT_DEPTH_32f, -0.25, NAN, 0, NAN);
    Ctf::expectWritten(low, "<Range inBitDepth=\"32f\" outBitDepth=\"32f\">\n"
                            "   <minInValue>-0.25</minInValue>\n"
                            "   <minOutValue>0</minOutValue>\n"
                            "</Range>\n");

    RangeOp high(BIT_DEPTH_32f, BIT_DEPTH_32f, NAN, 65504, NAN, 1);
    Ctf::expectWritten(high, "<Range inBitDepth=\"32f\" outBitDepth=\"32f\">\n"
                             "   <maxInValue>65504</maxInValue>\n"
                             "   <maxOutValue>1</maxOutValue>\n"
                             "</Range>\n");
}

TEST(RangeWriter, keepsSixDigitsAndTheTextAfterwards)
{
    const RangeOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.123456789, 1e8 / 3, 0, 1);
    const std::string text = Ctf::writeOp(op);
    EXPECT_NE(text.find("<minInValue>0.123457</minInValue>"), std::string::npos);
    EXPECT_NE(text.find("<maxInValue>3.33333e+07</maxInValue>"), std::string::npos);
    EXPECT_EQ(Ctf::writeOp(*Ctf::read(Ctf::document(text))->getOpList().get(0)), text);
}
