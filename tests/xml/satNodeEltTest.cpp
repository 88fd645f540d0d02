#include "tests/xml/ctf.h"
#include "transform/CDLOp.h"

using namespace Color;

namespace {

double saturationOf(const std::string& node)
{
    const auto transform = Ctf::read(Ctf::document(Ctf::op("ASC_CDL", node, " style='v1.2_Rev'")));
    return Ctf::getOp<CDLOp>(transform).getSaturation();
}

} // namespace

TEST(SatNodeElt, mayStandEmpty)
{
    EXPECT_EQ(saturationOf("<SatNode/>"), 1.0);
    EXPECT_EQ(saturationOf("<satnode any='x'></satnode>"), 1.0);
}

TEST(SatNodeElt, laterValuesReplaceEarlierOnes)
{
    EXPECT_EQ(saturationOf("<SatNode><Saturation>0.5</Saturation><SATURATION>0.25</SATURATION></SatNode>"), 0.25);
    EXPECT_EQ(saturationOf("<SatNode><Saturation>0.5</Saturation></SatNode><SatNode/>"), 0.5);
}
