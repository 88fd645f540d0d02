#include "tests/utils/logRecorder.h"
#include "tests/xml/ctf.h"
#include "transform/CDLOp.h"

using namespace Color;

namespace {

std::string document(const std::string& content)
{
    return Ctf::document(Ctf::op("ASC_CDL", content, " style='noClampFwd'"));
}

const std::string kSlope = "<Slope>1 2 3</Slope>";
const std::string kOffset = "<Offset>-4 5 6</Offset>";
const std::string kPower = "<Power>7 8 9</Power>";

} // namespace

TEST(SOPNodeElt, readsSlopeOffsetAndPowerInAnyOrder)
{
    const auto transform =
        Ctf::read(document("<sopnode any='x'>" + kPower + "<OFFSET>-4 5 6</OFFSET><slope>1 2 3</slope></sopnode>"));
    const auto& op = Ctf::getOp<CDLOp>(transform);
    EXPECT_EQ(op.getSlope(), (CDLOp::Params{1, 2, 3}));
    EXPECT_EQ(op.getOffset(), (CDLOp::Params{-4, 5, 6}));
    EXPECT_EQ(op.getPower(), (CDLOp::Params{7, 8, 9}));
}

TEST(SOPNodeElt, requiresAllThreeInOrder)
{
    const auto expectRequired = [](const std::string& content, ErrorId id, const std::string& name) {
        Ctf::expectReadFails(document("<SOPNode>\n" + content + "</SOPNode>"), id,
                             "SOPNode: " + name + " required at 'ASC CDL' line 4: test.ctf");
    };
    expectRequired("", 0x302001f, "slope");
    expectRequired(kOffset + kPower, 0x302001f, "slope");
    expectRequired(kSlope, 0x3020020, "offset");
    expectRequired(kSlope + kPower, 0x3020020, "offset");
    expectRequired(kSlope + kOffset, 0x3020021, "power");
}

TEST(SOPNodeElt, laterValuesReplaceEarlierOnes)
{
    const std::string node = "<SOPNode>" + kSlope + kOffset + kPower;
    const auto transform = Ctf::read(document(node + "</SOPNode>" + node + "<Slope>2 2 2</Slope></SOPNode>"));
    EXPECT_EQ(Ctf::getOp<CDLOp>(transform).getSlope(), (CDLOp::Params{2, 2, 2}));
}

TEST(SOPNodeElt, descriptionsOfBothNodesGoToTheOp)
{
    const auto transform =
        Ctf::read(document("<Description>one</Description><SOPNode><Description>two\nthree"
                           "</Description>" +
                           kSlope + kOffset + kPower + "</SOPNode><SatNode><Description>four</Description></SatNode>"));
    EXPECT_EQ(Ctf::getOp<CDLOp>(transform).getDescriptions(), (Descriptions{"one", "two", "three", "four"}));
    EXPECT_TRUE(transform->getDescriptions().empty());
}

TEST(SOPNodeElt, refusesTextOfItsOwn)
{
    Ctf::expectReadFails(document("<SOPNode>1 1 1</SOPNode>"), 0x3020005,
                         "XML Parsing error: Attribute end '1 1 1' illegal line 3: test.ctf");
}

TEST(SOPNodeElt, ignoresElementsOfOthers)
{
    const LogRecorder recorder;
    Ctf::read(document("<SOPNode>" + kSlope + kOffset + kPower + "<Saturation>x</Saturation></SOPNode>"));
    EXPECT_THAT(recorder.lines(),
                testing::ElementsAre(testing::Pair(
                    LOG_LEVEL_DEBUG, "Ignore element 'Saturation' (line 3) where its parent is 'SOPNode' (line 3) "
                                     "test.ctf: : Saturation not allowed in this element")));
}
