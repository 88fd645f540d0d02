#include "tests/xml/ctf.h"
#include "transform/hueVectorOp.h"

using namespace Color;

namespace {

std::string document(const std::string& attributes, const std::string& content = "")
{
    return Ctf::document(Ctf::op("HueVector", content, attributes), "1.4");
}

} // namespace

TEST(HueVectorElt, readsEveryStyleInAnyCase)
{
    const auto styleOf = [](const char* style) {
        const std::string params = "<HueVecParams style='chroma' center='1' width='2' amount='3'/>";
        return Ctf::getOp<HueVectorOp>(Ctf::read(document(std::string(" style='") + style + "'", params))).getStyle();
    };
    EXPECT_EQ(styleOf("YCH_Fwd"), HueVectorOp::STYLE_YCH_FWD);
    EXPECT_EQ(styleOf("YCH_Rev"), HueVectorOp::STYLE_YCH_REV);
    EXPECT_EQ(styleOf("ych_rev"), HueVectorOp::STYLE_YCH_REV);
}

TEST(HueVectorElt, refusesAnUnknownStyle)
{
    for (const std::string style : {"", "chroma"}) {
        Ctf::expectReadFails(document(" style='" + style + "'"), 0x20f0001, "Unrecognized Hue Vector style: " + style,
                             "COLOR:TRANSFORM:HUE_VECTOR");
    }
}

TEST(HueVectorElt, requiresAStyle)
{
    Ctf::expectReadFails(document(""), 0x3020006, "Required attribute 'style' missing in 'HueVector' line 2: test.ctf");
}

TEST(HueVectorElt, failsWithoutParameters)
{
    Ctf::expectReadFails(document(" style='YCH_Fwd'"), 0x20f0002,
                         "The specified Hue Vector style must have 3 parameters", "COLOR:TRANSFORM:HUE_VECTOR");
}
