#include "tests/xml/written.h"

#include "transform/functionOp.h"
#include "transform/gamutMapOp.h"

using namespace Color;

TEST(OpWriter, writesTheDepthsAloneWhenNothingElseIsSet)
{
    GamutMapOp op(BIT_DEPTH_16f, BIT_DEPTH_12i);
    Ctf::expectWritten(op, "<GamutMap inBitDepth=\"16f\" outBitDepth=\"12i\" style=\"none\">\n</GamutMap>\n");
}

TEST(OpWriter, writesWhatEveryOpCanHaveInOrder)
{
    GamutMapOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, "<1>", "a & b", {"first", "\"second\""});
    op.getBypass()->set(true);
    op.getBypass()->makeDynamic();
    Ctf::expectWritten(op, "<GamutMap id=\"&lt;1&gt;\" name=\"a &amp; b\" inBitDepth=\"32f\" outBitDepth=\"32f\" "
                           "bypass=\"true\" style=\"none\">\n"
                           "   <Description>first</Description>\n"
                           "   <Description>&quot;second&quot;</Description>\n"
                           "   <DynamicParameter param=\"LOOK_SWITCH\" />\n"
                           "</GamutMap>\n");
}

TEST(OpWriter, aBypassThatIsOffIsNotWritten)
{
    GamutMapOp op(BIT_DEPTH_32f, BIT_DEPTH_32f);
    op.getBypass()->makeDynamic();
    Ctf::expectWritten(op, "<GamutMap inBitDepth=\"32f\" outBitDepth=\"32f\" style=\"none\">\n"
                           "   <DynamicParameter param=\"LOOK_SWITCH\" />\n"
                           "</GamutMap>\n");
}

TEST(OpWriter, givesItsOp)
{
    const GamutMapOp op;
    std::ostringstream stream;
    XmlFormatter formatter(stream);
    EXPECT_EQ(&Xml::Writer::makeOpWriter(formatter, op)->getOp(), &op);
}

TEST(makeOpWriter, hasNoneForAFunction)
{
    std::ostringstream stream;
    XmlFormatter formatter(stream);
    EXPECT_EQ(Xml::Writer::makeOpWriter(formatter, FunctionOp()), nullptr);
}
