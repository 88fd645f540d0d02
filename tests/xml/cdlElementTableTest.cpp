#include "xml/cdlElementTable.h"

#include "tests/utils/logRecorder.h"
#include "tests/xml/cdl.h"

#include <gmock/gmock.h>

using namespace Color;
using testing::ElementsAre;
using testing::Pair;

namespace {

/// Expects that a document reads with this line logged alone.
void expectIgnored(const std::string& text, const std::string& element, const std::string& parent,
                   const std::string& reason)
{
    SCOPED_TRACE(text);
    CDLReader reader;
    const LogRecorder recorder;
    Cdl::read(reader, text);
    EXPECT_THAT(recorder.lines(),
                ElementsAre(Pair(LOG_LEVEL_DEBUG, "Ignore element " + element + " where its parent is " + parent +
                                                      " test.cdl: " + reason)));
    EXPECT_EQ(reader.getTransformList().size(), 1u);
}

const std::string kFragment = Cdl::fragment("");

} // namespace

TEST(CDLElementTable, rootStandsOnce)
{
    expectIgnored(Cdl::list("<ColorDecisionList/>" + Cdl::decision(kFragment)), "'ColorDecisionList' (line 2)",
                  "'ColorDecisionList' (line 1)", ": The ColorDecisionList already exists");
    expectIgnored(Cdl::collection(kFragment + "<ColorCorrectionCollection/>"), "'ColorCorrectionCollection' (line 4)",
                  "'ColorCorrectionCollection' (line 1)", ": The ColorCorrectionCollection already exists");
}

TEST(CDLElementTable, decisionStandsInAListAlone)
{
    expectIgnored(Cdl::list(Cdl::decision("\n<colordecision/>" + kFragment)), "'colordecision' (line 3)",
                  "'ColorDecision' (line 2)", ": ColorDecision must be under a ColorDecisionList");
}

TEST(CDLElementTable, correctionStandsWhereItsFormatSays)
{
    const std::string reason = ": ColorCorrection must be under a ColorDecision (CDL), ColorCorrectionCollection "
                               "(CCC), or must be the root element (CC)";
    expectIgnored(Cdl::list("<ColorCorrection/>" + Cdl::decision(kFragment)), "'ColorCorrection' (line 2)",
                  "'ColorDecisionList' (line 1)", reason);
    expectIgnored(Cdl::collection(Cdl::fragment("<ColorCorrection/>\n")), "'ColorCorrection' (line 3)",
                  "'ColorCorrection' (line 2)", reason);
    expectIgnored(Cdl::fragment("<ColorCorrection/>\n"), "'ColorCorrection' (line 2)", "'ColorCorrection' (line 1)",
                  reason);
}

TEST(CDLElementTable, nodesStandInACorrectionAlone)
{
    expectIgnored(Cdl::list(Cdl::decision("<SOPNode/>" + kFragment)), "'SOPNode' (line 2)", "'ColorDecision' (line 2)",
                  ": SOPNode must be under a ColorCorrection");
    expectIgnored(Cdl::list(Cdl::decision("<SatNode/>" + kFragment)), "'SatNode' (line 2)", "'ColorDecision' (line 2)",
                  ": SatNode must be under a ColorCorrection");
}

TEST(CDLElementTable, valuesStandInTheirNodesAlone)
{
    for (const std::string name : {"Slope", "Offset", "Power"}) {
        expectIgnored(Cdl::fragment("<" + name + "/>"), "'" + name + "' (line 2)", "'ColorCorrection' (line 1)",
                      ": Slope, Offset or Power tags must be under SOPNode");
        expectIgnored(Cdl::fragment("<SatNode><" + name + "/></SatNode>"), "'" + name + "' (line 2)",
                      "'SatNode' (line 2)", ": Slope, Offset or Power tags must be under SOPNode");
    }
    expectIgnored(Cdl::fragment("<Saturation/>"), "'Saturation' (line 2)", "'ColorCorrection' (line 1)",
                  ": Saturation tags must be under SatNode");
}

TEST(CDLElementTable, descriptionInALeafIsRefusedWithoutAReason)
{
    expectIgnored(Cdl::fragment("<SatNode><Saturation><Description>x</Description>1</Saturation></SatNode>"),
                  "'Description' (line 2)", "'Saturation' (line 2)", "");
    expectIgnored(Cdl::fragment("<SatNode><Saturation><InputDescription/>1</Saturation></SatNode>"),
                  "'InputDescription' (line 2)", "'Saturation' (line 2)", "");
}

TEST(CDLElementTable, otherElementsAreUnknown)
{
    expectIgnored(Cdl::fragment("<MediaRef ref='a.dpx'/>"), "'MediaRef' (line 2)", "'ColorCorrection' (line 1)",
                  ": Unknown element");
    expectIgnored(Cdl::fragment("<Matrix>1 2 3</Matrix>"), "'Matrix' (line 2)", "'ColorCorrection' (line 1)",
                  ": Unknown element");
}

TEST(CDLElementTable, elementsOfOtherFormatsAreUnknown)
{
    expectIgnored(Cdl::list("<ColorCorrectionCollection/>" + Cdl::decision(kFragment)),
                  "'ColorCorrectionCollection' (line 2)", "'ColorDecisionList' (line 1)", ": Unknown element");
    expectIgnored(Cdl::collection("<ColorDecision/>" + kFragment), "'ColorDecision' (line 2)",
                  "'ColorCorrectionCollection' (line 1)", ": Unknown element");
}

TEST(CDLElementTable, contentOfAnIgnoredElementIsIgnored)
{
    const std::string text = Cdl::list("<Grade>\n<ColorDecision>\n" + Cdl::fragment(Cdl::kSOPNode) +
                                       "</ColorDecision></Grade>" + Cdl::decision(kFragment));
    EXPECT_EQ(Cdl::readOp(text).getSlope(), (CDLOp::Params{1, 1, 1}));
}
