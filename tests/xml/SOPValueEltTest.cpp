#include "tests/xml/ctf.h"
#include "transform/CDLOp.h"

using namespace Color;

namespace {

/// The slope begins on line 3.
std::string document(const std::string& slope)
{
    return Ctf::document(
        Ctf::op("ASC_CDL", "<SOPNode><Slope>" + slope + "</Slope><Offset>0 0 0</Offset><Power>1 1 1</Power></SOPNode>",
                " style='noClampFwd'"));
}

CDLOp::Params slopeOf(const std::string& text) { return Ctf::getOp<CDLOp>(Ctf::read(document(text))).getSlope(); }

} // namespace

TEST(SOPValueElt, separatesNumbersByWhiteSpaceCommasAndLines)
{
    const CDLOp::Params expected = {1.5, 0.1, 3};
    for (const char* text :
         {"1.5 0.1 3", "1.5, 0.1, 3", " 1.5,0.1\t3 ", "1.5\n0.1 3", "1.5\n0.1\n\n  3\n", ",1.5,,.1 3e0,"}) {
        EXPECT_EQ(slopeOf(text), expected) << text;
    }
}

TEST(SOPValueElt, readsInDoublePrecision) { EXPECT_EQ(slopeOf("0.1 0.2 0.3"), (CDLOp::Params{0.1, 0.2, 0.3})); }

TEST(SOPValueElt, requiresThreeValues)
{
    for (const std::string text : {"", " ", "1 1", "1 1 1 1", "1,1", "1.51.51.5"}) {
        Ctf::expectReadFails(document(text), 0x302001e, "SOPNode: 3 values required at 'ASC CDL' line 3: test.ctf");
    }
    // Its line is the one where the element ends.
    Ctf::expectReadFails(document("1\n1"), 0x302001e, "SOPNode: 3 values required at 'ASC CDL' line 4: test.ctf");
}

TEST(SOPValueElt, namesTheWholeTextOfAnIllegalValue)
{
    for (const std::string text : {"1 one 1", "x", "1;1;1 - 1", "nan 1 1"}) {
        Ctf::expectReadFails(document(" " + text + " "), 0x302000e,
                             "Illegal values '" + text + "' in 'ASC CDL' line 3: test.ctf");
    }
    Ctf::expectReadFails(document("1\nb\n1"), 0x302000e, "Illegal values '1 b 1' in 'ASC CDL' line 5: test.ctf");
}
