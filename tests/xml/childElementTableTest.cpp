#include "tests/utils/logRecorder.h"
#include "tests/xml/ctf.h"

using namespace Color;
using testing::ElementsAre;
using testing::Pair;

namespace {

/// Expects that reading succeeds and logs this line alone.
void expectIgnored(const std::string& text, const std::string& line)
{
    SCOPED_TRACE(text);
    const LogRecorder recorder;
    EXPECT_NE(Ctf::read(text), nullptr);
    EXPECT_THAT(recorder.lines(), ElementsAre(Pair(LOG_LEVEL_DEBUG, line)));
}

std::string ignored(const std::string& name, const std::string& parent, int parentLine, const std::string& reason)
{
    return "Ignore element '" + name + "' (line 3) where its parent is '" + parent + "' (line " +
           std::to_string(parentLine) + ") test.ctf: " + reason;
}

void expectRefusedInMatrix(const std::string& name, const std::string& reason)
{
    expectIgnored(Ctf::document(Ctf::matrix("<" + name + "/>")), ignored(name, "Matrix", 2, reason));
}

void expectRefusedInProcessList(const std::string& name, const std::string& reason)
{
    expectIgnored(Ctf::document("\n<" + name + "/>" + Ctf::range("")), ignored(name, "ProcessList", 1, reason));
}

} // namespace

TEST(ChildElementTable, elementsOfTheTransformAreRefusedInAnOp)
{
    expectRefusedInMatrix("Info", ": Info not allowed in this element");
    expectRefusedInMatrix("InputDescriptor", ": InputDescriptor not allowed in this element");
    expectRefusedInMatrix("OutputDescriptor", ": OutputDescriptor not allowed in this element");
}

TEST(ChildElementTable, elementsOfOtherOpsAreRefused)
{
    for (const char* name : {"minInValue", "maxInValue", "minOutValue", "maxOutValue", "MININVALUE"}) {
        expectRefusedInMatrix(name, ": Range Value tags not allowed in this element");
    }
    expectRefusedInMatrix("GammaParams", ": Gamma Params not allowed in this element");
    expectRefusedInMatrix("ECParams", ": E/C Params not allowed in this element");
    expectRefusedInMatrix("LogParams", ": Log Params not allowed in this element");
    expectRefusedInMatrix("HueVecParams", ": HueVector Params not allowed in this element");
    expectRefusedInMatrix("SOPNode", ": SOPNode not allowed in this element");
    for (const char* name : {"Slope", "Offset", "Power"}) {
        expectRefusedInMatrix(name, ": Slope, Offset or Power tags not allowed in this element");
    }
    expectRefusedInMatrix("SatNode", ": SatNode not allowed in this element");
    expectRefusedInMatrix("Saturation", ": Saturation not allowed in this element");
    expectIgnored(Ctf::document(Ctf::range("<Array dim='3 3 3'>1 2</Array>")),
                  ignored("Array", "Range", 2, ": Color::Array not allowed in this element"));
}

TEST(ChildElementTable, valuesOfACDLNeedTheNodeOfTheirs)
{
    const auto expectRefusedInCDL = [](const std::string& name, const std::string& reason) {
        expectIgnored(Ctf::document(Ctf::op("ASC_CDL", "<" + name + ">x</" + name + ">", " style='v1.2_Fwd'")),
                      ignored(name, "ASC_CDL", 2, reason));
    };
    for (const char* name : {"Slope", "Offset", "Power"}) {
        expectRefusedInCDL(name, ": Slope, Offset or Power tags not allowed in this element");
        expectIgnored(
            Ctf::document(Ctf::op("ASC_CDL", std::string("<SatNode><") + name + "/></SatNode>", " style='v1.2_Fwd'")),
            ignored(name, "SatNode", 3, ": Slope, Offset or Power tags not allowed in this element"));
    }
    expectRefusedInCDL("Saturation", ": Saturation not allowed in this element");
    expectRefusedInCDL("SatNode2", ": Unknown element");
}

TEST(ChildElementTable, opInsideAnOpIsIgnoredWithItsArray)
{
    const LogRecorder recorder;
    const auto transform = Ctf::read(Ctf::document(
        Ctf::op("GamutMap", "<LUT3D interpolation='x'><Array dim='y'>1</Array></LUT3D>", " style='none'")));
    EXPECT_EQ(transform->getOpList().size(), 1u);
    EXPECT_THAT(recorder.lines(),
                ElementsAre(Pair(LOG_LEVEL_DEBUG,
                                 ignored("LUT3D", "GamutMap", 2, ": The LUT3D's parent can only be a Transform")),
                            Pair(LOG_LEVEL_DEBUG, ignored("Array", "LUT3D", 3, ""))));
}

TEST(ChildElementTable, elementsOfOpsAreRefusedInTheTransform)
{
    expectRefusedInProcessList("Array", ": Color::Array not allowed in this element");
    expectRefusedInProcessList("minInValue", ": Range Value tags not allowed in this element");
    expectRefusedInProcessList("GammaParams", ": Gamma Params not allowed in this element");
    expectRefusedInProcessList("ECParams", ": E/C Params not allowed in this element");
    expectRefusedInProcessList("DynamicParameter", ": Dynamic properties not allowed in this element");
    expectRefusedInProcessList("LogParams", ": Log Params not allowed in this element");
    expectRefusedInProcessList("HueVecParams", ": HueVector Params not allowed in this element");
    expectRefusedInProcessList("SOPNode", ": SOPNode not allowed in this element");
    expectRefusedInProcessList("Slope", ": Slope, Offset or Power tags not allowed in this element");
    expectRefusedInProcessList("SatNode", ": SatNode not allowed in this element");
    expectRefusedInProcessList("Saturation", ": Saturation not allowed in this element");
}

TEST(ChildElementTable, unknownElementsAreIgnored)
{
    expectRefusedInMatrix("Foo", ": Unknown element");
    expectRefusedInMatrix("Function", ": Unknown element");
    expectRefusedInProcessList("Function", ": Unknown element");
    expectRefusedInProcessList("x:Matrix", ": Unknown element");
}

TEST(ChildElementTable, secondArrayOfAnOpIsIgnored)
{
    const std::string text =
        Ctf::document(Ctf::matrix("<Array dim='3 3 3'>1 2 3 4 5 6 7 8 9</Array><Array dim='x'>10</Array>"));
    expectIgnored(text, ignored("Array", "Matrix", 2, ": Only one Color::Array allowed per op"));
    EXPECT_EQ(Ctf::getOp<MatrixOp>(Ctf::read(text)).getArray().getValues()[10], 9.f);
}

TEST(ChildElementTable, indexMapStopsTheRead)
{
    Ctf::expectReadFails(Ctf::document(Ctf::matrix("<IndexMap>1</IndexMap>")), 0x3020011,
                         "Attribute 'IndexMap' not supported in 'test.ctf' line 3");
    Ctf::expectReadFails(Ctf::document("<indexmap/>"), 0x3020011,
                         "Attribute 'IndexMap' not supported in 'test.ctf' line 2");
}

TEST(ChildElementTable, indexMapStopsTheReadOfALut)
{
    Ctf::expectReadFails(Ctf::document(Ctf::op("LUT1D", "<IndexMap dim='2'>1 2</IndexMap>")), 0x3020011,
                         "Attribute 'IndexMap' not supported in 'test.ctf' line 3");
}

TEST(ChildElementTable, indexMapInsideALeafIsIgnored)
{
    expectIgnored(Ctf::document(Ctf::range("<minInValue><IndexMap/></minInValue>")),
                  "Ignore element 'IndexMap' (line 3) where its parent is 'minInValue' (line 3) test.ctf: ");
}
