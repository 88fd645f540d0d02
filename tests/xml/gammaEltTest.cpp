#include "transform/gammaOp.h"

#include "tests/xml/ctf.h"

using namespace Color;

namespace {

std::string gamma(const std::string& style, const std::string& content)
{
    return Ctf::op("Gamma", content, " style='" + style + "'");
}

void expectParams(const ColorTransformPtr& transform, const GammaOp::Params& red, const GammaOp::Params& green,
                  const GammaOp::Params& blue, const GammaOp::Params& alpha)
{
    const auto& op = Ctf::getOp<GammaOp>(transform);
    EXPECT_EQ(op.getParams(0), red);
    EXPECT_EQ(op.getParams(1), green);
    EXPECT_EQ(op.getParams(2), blue);
    EXPECT_EQ(op.getParams(3), alpha);
}

} // namespace

TEST(GammaElt, readsEveryStyleInAnyCase)
{
    const struct
    {
        const char* name;
        GammaOp::Style style;
    } rows[] = {
        {"basicFwd", GammaOp::STYLE_BASIC_FWD},       {"basicRev", GammaOp::STYLE_BASIC_REV},
        {"moncurveFwd", GammaOp::STYLE_MONCURVE_FWD}, {"moncurveRev", GammaOp::STYLE_MONCURVE_REV},
        {"BASICREV", GammaOp::STYLE_BASIC_REV},       {"MonCurveFWD", GammaOp::STYLE_MONCURVE_FWD},
    };
    for (const auto& row : rows) {
        const auto transform = Ctf::read(Ctf::document(gamma(row.name, "")));
        EXPECT_EQ(Ctf::getOp<GammaOp>(transform).getStyle(), row.style) << row.name;
    }
}

TEST(GammaElt, refusesAnUnknownStyle)
{
    for (const std::string style : {"", "linear", " basicFwd", "basicFwd "}) {
        Ctf::expectReadFails(Ctf::document(gamma(style, "")), 0x2090001, "Unrecognized Gamma style: " + style,
                             "COLOR:TRANSFORM:GAMMA");
    }
}

TEST(GammaElt, requiresAStyle)
{
    Ctf::expectReadFails(Ctf::document(Ctf::op("Gamma", "")), 0x3020006,
                         "Required attribute 'style' missing in 'Gamma' line 2: test.ctf");
}

TEST(GammaElt, readsTheAttributesOfAllOpsFirst)
{
    Ctf::expectReadFails(Ctf::document("<Gamma outBitDepth='8i' style='x'/>"), 0x3020006,
                         "Required attribute 'Input Bit Depth' missing in 'Gamma' line 2: test.ctf");
    const auto transform =
        Ctf::read(Ctf::document("<Gamma inBitDepth='10i' outBitDepth='16f' style='basicFwd' id='g' bypass='true'/>"));
    const Op& op = Ctf::getOp<GammaOp>(transform);
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(op.getId(), "g");
    EXPECT_TRUE(op.getBypass()->get());
}

TEST(GammaElt, channelsWithoutParametersStayAsTheyAre)
{
    for (const char* version : {"1.2", "1.6"}) {
        expectParams(Ctf::read(Ctf::document(gamma("basicRev", ""), version)), {1}, {1}, {1}, {1});
        expectParams(Ctf::read(Ctf::document(gamma("moncurveFwd", ""), version)), {1, 0}, {1, 0}, {1, 0}, {1, 0});
        expectParams(
            Ctf::read(Ctf::document(gamma("moncurveRev", "<GammaParams channel='G' gamma='2' offset='.1'/>"), version)),
            {1, 0}, {2, 0.1}, {1, 0}, {1, 0});
    }
}

TEST(GammaElt, validatesTheOpAtItsEnd)
{
    Ctf::expectReadFails(Ctf::document(gamma("basicFwd", "<GammaParams gamma='0.5'/>")), 0x2010011,
                         "Parameter 0.500000 < lower bound 1.000000", "COLOR:TRANSFORM:GAMMA");
    Ctf::expectReadFails(Ctf::document(gamma("moncurveRev", "<GammaParams gamma='2' offset='0.95'/>")), 0x2010012,
                         "Parameter 0.950000 > upper bound 0.900000", "COLOR:TRANSFORM:GAMMA");
}

TEST(GammaElt_1_5, alphaStaysAsRead)
{
    const std::string params = "<GammaParams gamma='2'/><GammaParams channel='A' gamma='1.5'/>";
    for (const char* version : {"1.41", "1.5", "1.6"}) {
        expectParams(Ctf::read(Ctf::document(gamma("basicFwd", params), version)), {2}, {2}, {2}, {1.5});
    }
}
