#include "tests/xml/ctf.h"
#include "transform/CDLOp.h"

using namespace Color;

namespace {

/// The saturation begins on line 3.
std::string document(const std::string& saturation)
{
    return Ctf::document(
        Ctf::op("ASC_CDL", "<SatNode><Saturation>" + saturation + "</Saturation></SatNode>", " style='noClampFwd'"));
}

} // namespace

TEST(SaturationElt, readsOneNumber)
{
    for (const char* text : {"0.7", " 0.7, ", "\n7e-1\n"}) {
        EXPECT_EQ(Ctf::getOp<CDLOp>(Ctf::read(document(text))).getSaturation(), 0.7) << text;
    }
}

TEST(SaturationElt, requiresOneValue)
{
    for (const std::string text : {"", "1 1", "1,2,3"}) {
        Ctf::expectReadFails(document(text), 0x3020022, "SatNode: non-single value at 'ASC CDL' line 3: test.ctf");
    }
    Ctf::expectReadFails(document("1\n1"), 0x3020022, "SatNode: non-single value at 'ASC CDL' line 4: test.ctf");
}

TEST(SaturationElt, namesTheWholeTextOfAnIllegalValue)
{
    Ctf::expectReadFails(document("1\nfull"), 0x302000e, "Illegal values '1 full' in 'ASC CDL' line 4: test.ctf");
}
