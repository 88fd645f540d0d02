#include "xml/colorCorrectionElt.h"

#include "tests/xml/cdl.h"

#include <cstdlib>

using namespace Color;
using namespace Color::Xml::Reader;

namespace {

/// Leaves the environment as it found it.
class DefaultCDLStyle : public testing::Test
{
protected:
    DefaultCDLStyle()
    {
        if (const char* former = std::getenv(kVariable)) m_former = former;
    }
    ~DefaultCDLStyle() override
    {
        if (m_former.empty()) {
            unsetenv(kVariable);
        } else {
            set(m_former.c_str());
        }
    }

    static void set(const char* style) { setenv(kVariable, style, 1); }

    static constexpr const char* kVariable = "MORVANE_DEFAULT_CDL_STYLE";

private:
    std::string m_former;
};

} // namespace

TEST(ColorCorrectionElt, isAnOpOf32Floats)
{
    const CDLOp op = Cdl::readOp(Cdl::fragment(Cdl::kSOPNode + "<SatNode><Saturation>0.5</Saturation></SatNode>"));
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getId(), "c");
    EXPECT_EQ(op.getName(), "");
    EXPECT_EQ(op.getSlope(), (CDLOp::Params{1, 2, 3}));
    EXPECT_EQ(op.getOffset(), (CDLOp::Params{4, 5, 6}));
    EXPECT_EQ(op.getPower(), (CDLOp::Params{7, 8, 9}));
    EXPECT_EQ(op.getSaturation(), 0.5);
}

TEST(ColorCorrectionElt, mayStandEmpty)
{
    EXPECT_TRUE(Cdl::readOp("<ColorCorrection/>").isNoOp());
    EXPECT_EQ(Cdl::readOp("<ColorCorrection/>").getId(), "");
    EXPECT_EQ(Cdl::readOp("<ColorCorrection id=''/>").getId(), "");
    EXPECT_TRUE(Cdl::readOp(Cdl::fragment("<SatNode/>")).isNoOp());
}

TEST(ColorCorrectionElt, attributesAreSpelledInAnyCase)
{
    EXPECT_EQ(Cdl::readOp("<ColorCorrection name='n' ID='x' xmlns='urn:ASC:CDL:v1.01'/>").getId(), "x");
}

TEST(ColorCorrectionElt, idWithoutAValueFails)
{
    ReadContext context;
    context.fileName = "test.cc";
    context.line = 4;
    std::vector<ColorTransformPtr> list;
    ColorCorrectionElt element("ColorCorrection", nullptr, {}, list, context);
    const char* const attributes[] = {"id", nullptr, nullptr};
    EXPECT_EQ(
        failureOf([&] { element.start(attributes); }),
        (Failure{0x3020007, "COLOR:XML:READER", "Required attribute 'id' empty in 'ColorCorrection' line 4: test.cc"}));
}

TEST(ColorCorrectionElt, isFiledWhenItEnds)
{
    const ReadContext context;
    std::vector<ColorTransformPtr> list;
    ColorCorrectionElt element("ColorCorrection", nullptr, {"from above"}, list, context);
    element.appendDescription("own");
    EXPECT_EQ(element.getIdentifier(), "ColorCorrection");
    EXPECT_EQ(element.getTypeName(), "ColorCorrection");
    EXPECT_TRUE(list.empty());
    element.end();
    ASSERT_EQ(list.size(), 1u);
    EXPECT_EQ(Cdl::opOf(list[0]).getDescriptions(), (Descriptions{"from above", "own"}));
}

TEST(ColorCorrectionElt, impossibleValuesFail)
{
    Cdl::expectReadFails(
        Cdl::fragment("<SOPNode><Slope>-1 1 1</Slope><Offset>0 0 0</Offset><Power>1 1 1</Power></SOPNode>"), 0x20c0004,
        "Invalid slope (-1.000000), slope should be greater than 0.000000", "COLOR:TRANSFORM:CDL");
    Cdl::expectReadFails(
        Cdl::fragment("<SOPNode><Slope>1 1 1</Slope><Offset>0 0 0</Offset><Power>1 0 1</Power></SOPNode>"), 0x20c0004,
        "Invalid power (0.000000), power should be greater than 0.000000", "COLOR:TRANSFORM:CDL");
    Cdl::expectReadFails(Cdl::fragment("<SatNode><Saturation>-2</Saturation></SatNode>"), 0x20c0004,
                         "Invalid saturation (-2.000000), saturation should be greater than 0.000000",
                         "COLOR:TRANSFORM:CDL");
}

TEST_F(DefaultCDLStyle, isThatOfTheOpWhereTheEnvironmentTellsNone)
{
    unsetenv(kVariable);
    EXPECT_EQ(Cdl::readOp("<ColorCorrection/>").getStyle(), CDLOp().getStyle());
    set("");
    EXPECT_EQ(Cdl::readOp("<ColorCorrection/>").getStyle(), CDLOp().getStyle());
}

TEST_F(DefaultCDLStyle, isThatOfTheEnvironmentForEachOp)
{
    set("noClampFwd");
    const std::string text = Cdl::collection("<ColorCorrection/><ColorCorrection/>");
    EXPECT_EQ(Cdl::readOp(text, 0).getStyle(), CDLOp::STYLE_NO_CLAMP_FWD);
    EXPECT_EQ(Cdl::readOp(text, 1).getStyle(), CDLOp::STYLE_NO_CLAMP_FWD);
    set("V1.2_REV");
    EXPECT_EQ(Cdl::readOp(text).getStyle(), CDLOp::STYLE_V1_2_REV);
}

TEST_F(DefaultCDLStyle, unknownOneFailsTheRead)
{
    set("x");
    Cdl::expectReadFails("<ColorCorrection/>", 0x20c0002, "Unrecognized CDL style: x", "COLOR:TRANSFORM:CDL");
}
