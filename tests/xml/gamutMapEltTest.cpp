#include "tests/xml/ctf.h"
#include "transform/gamutMapOp.h"

using namespace Color;

namespace {

std::string document(const std::string& attributes)
{
    return Ctf::document(Ctf::op("GamutMap", "", attributes), "1.4");
}

} // namespace

TEST(GamutMapElt, readsEveryStyleInAnyCase)
{
    const auto styleOf = [](const char* style) {
        return Ctf::getOp<GamutMapOp>(Ctf::read(document(std::string(" style='") + style + "'"))).getStyle();
    };
    EXPECT_EQ(styleOf("none"), GamutMapOp::STYLE_NONE);
    EXPECT_EQ(styleOf("dw3"), GamutMapOp::STYLE_DW3);
    EXPECT_EQ(styleOf("DW3"), GamutMapOp::STYLE_DW3);
}

TEST(GamutMapElt, refusesAnUnknownStyle)
{
    for (const std::string style : {"", "clip"}) {
        Ctf::expectReadFails(document(" style='" + style + "'"), 0x20e0001, "Unrecognized Gamut Map style: " + style,
                             "COLOR:TRANSFORM:GAMUT_MAP");
    }
}

TEST(GamutMapElt, requiresAStyle)
{
    Ctf::expectReadFails(document(""), 0x3020006, "Required attribute 'style' missing in 'GamutMap' line 2: test.ctf");
}
