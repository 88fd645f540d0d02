#include "xml/prefixedDescriptionElt.h"

#include "tests/xml/cdl.h"

using namespace Color;

namespace {

const std::string kDescriptions = "<Description>a</Description><InputDescription>b</InputDescription>"
                                  "<ViewingDescription>c</ViewingDescription>\n";

} // namespace

TEST(PrefixedDescriptionElt, tellsItsElementAndItsParent)
{
    const std::string nodes = "<SOPNode>" + kDescriptions +
                              "<Slope>1 1 1</Slope><Offset>0 0 0</Offset><Power>1 1 1</Power></SOPNode><SatNode>" +
                              kDescriptions + "</SatNode>";
    EXPECT_EQ(Cdl::readOp(Cdl::fragment(kDescriptions + nodes)).getDescriptions(),
              (Descriptions{"CC: a", "CC: InputDesc: b", "CC: ViewingDesc: c", "SOP: a", "SOP: InputDesc: b",
                            "SOP: ViewingDesc: c", "Sat: a", "Sat: InputDesc: b", "Sat: ViewingDesc: c"}));
}

TEST(PrefixedDescriptionElt, isTakenBesideANode)
{
    EXPECT_EQ(Cdl::readOp(Cdl::fragment(Cdl::kSOPNode + kDescriptions)).getDescriptions(),
              (Descriptions{"CC: a", "CC: InputDesc: b", "CC: ViewingDesc: c"}));
}

TEST(PrefixedDescriptionElt, decisionAndListHandTheirsToEachCorrection)
{
    const std::string text = Cdl::list(
        kDescriptions + Cdl::decision("<Description>d</Description>" + Cdl::fragment("<Description>e</Description>")) +
        Cdl::decision("<ColorCorrection/>"));
    EXPECT_EQ(Cdl::readOp(text).getDescriptions(),
              (Descriptions{"CD: d", "CDL: a", "CDL: InputDesc: b", "CDL: ViewingDesc: c", "CC: e"}));
    EXPECT_EQ(Cdl::readOp(text, 1).getDescriptions(),
              (Descriptions{"CDL: a", "CDL: InputDesc: b", "CDL: ViewingDesc: c"}));
}

TEST(PrefixedDescriptionElt, collectionHandsItsToEachCorrection)
{
    const std::string text = Cdl::collection("<Description>a</Description>" + Cdl::fragment("") +
                                             "<Description>b</Description>" + Cdl::fragment(""));
    EXPECT_EQ(Cdl::readOp(text).getDescriptions(), Descriptions{"CCC: a"});
    EXPECT_EQ(Cdl::readOp(text, 1).getDescriptions(), (Descriptions{"CCC: a", "CCC: b"}));
}

TEST(PrefixedDescriptionElt, whatFollowsACorrectionIsNotItsOwn)
{
    const std::string text = Cdl::list(Cdl::decision("<ColorCorrection/>" + kDescriptions) + kDescriptions);
    EXPECT_EQ(Cdl::readOp(text).getDescriptions(), Descriptions{});
}

TEST(PrefixedDescriptionElt, prefixesEachLine)
{
    EXPECT_EQ(Cdl::readOp(Cdl::fragment("<description>one\n   two\n\n</description>")).getDescriptions(),
              (Descriptions{"CC: one", "CC: two"}));
}
