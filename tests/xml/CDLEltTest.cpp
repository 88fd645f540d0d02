#include "tests/xml/ctf.h"
#include "transform/CDLOp.h"

using namespace Color;

namespace {

std::string document(const std::string& attributes, const std::string& content = "")
{
    return Ctf::document(Ctf::op("ASC_CDL", content, attributes), "1.3");
}

} // namespace

TEST(CDLElt, readsEveryStyleInAnyCase)
{
    const auto styleOf = [](const char* style) {
        return Ctf::getOp<CDLOp>(Ctf::read(document(std::string(" style='") + style + "'"))).getStyle();
    };
    EXPECT_EQ(styleOf("v1.2_Fwd"), CDLOp::STYLE_V1_2_FWD);
    EXPECT_EQ(styleOf("v1.2_Rev"), CDLOp::STYLE_V1_2_REV);
    EXPECT_EQ(styleOf("noClampFwd"), CDLOp::STYLE_NO_CLAMP_FWD);
    EXPECT_EQ(styleOf("noClampRev"), CDLOp::STYLE_NO_CLAMP_REV);
    EXPECT_EQ(styleOf("NOCLAMPREV"), CDLOp::STYLE_NO_CLAMP_REV);
}

TEST(CDLElt, refusesAnUnknownStyle)
{
    for (const std::string style : {"v1.2", "Fwd"}) {
        Ctf::expectReadFails(document(" style='" + style + "'"), 0x20c0002, "Unrecognized CDL style: " + style,
                             "COLOR:TRANSFORM:CDL");
    }
    Ctf::expectReadFails(document(" style=''"), 0x20c0001, "Invalid CDL style", "COLOR:TRANSFORM:CDL");
}

TEST(CDLElt, requiresAStyle)
{
    Ctf::expectReadFails(document(""), 0x3020006, "Required attribute 'style' missing in 'ASC CDL' line 2: test.ctf");
}

TEST(CDLElt, mayLackEitherNode)
{
    const std::string sop = "<SOPNode><Slope>1 2 3</Slope><Offset>4 5 6</Offset><Power>7 8 9</Power></SOPNode>";
    const auto read = [](const std::string& content) { return Ctf::read(document(" style='noClampFwd'", content)); };
    const auto neither = read("");
    EXPECT_TRUE(Ctf::getOp<CDLOp>(neither).isNoOp());
    const auto sopOnly = read(sop);
    EXPECT_EQ(Ctf::getOp<CDLOp>(sopOnly).getSlope(), (CDLOp::Params{1, 2, 3}));
    EXPECT_EQ(Ctf::getOp<CDLOp>(sopOnly).getSaturation(), 1.0);
    const auto satOnly = read("<SatNode><Saturation>0.5</Saturation></SatNode>");
    EXPECT_EQ(Ctf::getOp<CDLOp>(satOnly).getSlope(), (CDLOp::Params{1, 1, 1}));
    EXPECT_EQ(Ctf::getOp<CDLOp>(satOnly).getOffset(), (CDLOp::Params{0, 0, 0}));
    EXPECT_EQ(Ctf::getOp<CDLOp>(satOnly).getPower(), (CDLOp::Params{1, 1, 1}));
    EXPECT_EQ(Ctf::getOp<CDLOp>(satOnly).getSaturation(), 0.5);
}

TEST(CDLElt, validatesTheOpAtItsEnd)
{
    Ctf::expectReadFails(document(" style='v1.2_Fwd'",
                                  "<SOPNode><Slope>1 1 1</Slope><Offset>0 0 0</Offset><Power>1 0 1</Power></SOPNode>"),
                         0x20c0004, "Invalid power (0.000000), power should be greater than 0.000000",
                         "COLOR:TRANSFORM:CDL");
    Ctf::expectReadFails(document(" style='v1.2_Fwd'", "<SatNode><Saturation>-1</Saturation></SatNode>"), 0x20c0004,
                         "Invalid saturation (-1.000000), saturation should be greater than 0.000000",
                         "COLOR:TRANSFORM:CDL");
}
