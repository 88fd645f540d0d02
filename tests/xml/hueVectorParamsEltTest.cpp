#include "tests/xml/ctf.h"
#include "transform/hueVectorOp.h"

using namespace Color;

namespace {

std::string document(const std::string& content)
{
    return Ctf::document(Ctf::op("HueVector", content, " style='YCH_Rev'"));
}

} // namespace

TEST(HueVectorParamsElt, readsCenterWidthAndAmount)
{
    const auto transform = Ctf::read(
        document("<HueVecParams amount='0.5' WIDTH='60.5' center='30' style='Chroma' other='x'>text</HueVecParams>"));
    const auto& op = Ctf::getOp<HueVectorOp>(transform);
    EXPECT_EQ(op.getParameterStyle(), HueVectorOp::PARAMETER_STYLE_CHROMA);
    EXPECT_EQ(op.getParameters(), (HueVectorOp::Params{30, 60.5, 0.5}));
}

TEST(HueVectorParamsElt, requiresAStyle)
{
    Ctf::expectReadFails(document("<HueVecParams center='1' width='2' amount='3'/>"), 0x3020006,
                         "Required attribute 'hue vector parameter style' missing in 'HueVector' line 3: test.ctf");
}

TEST(HueVectorParamsElt, refusesLumaAndHueThoughTheyAreKnown)
{
    // The name is told as messages spell it, whatever its case in the file.
    for (const char* style : {"luma", "LUMA"}) {
        Ctf::expectReadFails(document(std::string("<HueVecParams style='") + style + "'/>"), 0x20f0001,
                             "Unrecognized Hue Vector style: luma", "COLOR:TRANSFORM:HUE_VECTOR");
    }
    Ctf::expectReadFails(document("<HueVecParams style='hue' center='1' width='2' amount='3'/>"), 0x20f0001,
                         "Unrecognized Hue Vector style: hue", "COLOR:TRANSFORM:HUE_VECTOR");
}

TEST(HueVectorParamsElt, refusesAnUnknownStyle)
{
    for (const std::string style : {"", "YCH_Fwd"}) {
        Ctf::expectReadFails(document("<HueVecParams style='" + style + "'/>"), 0x20f0001,
                             "Unrecognized Hue Vector style: " + style, "COLOR:TRANSFORM:HUE_VECTOR");
    }
}

TEST(HueVectorParamsElt, requiresAllThreeInOrder)
{
    const auto expectRequired = [](const std::string& attributes, const std::string& param) {
        Ctf::expectReadFails(document("<HueVecParams style='CHROMA'" + attributes + "/>"), 0x3020014,
                             "Param '" + param + "' required for style 'chroma', 'HueVector' line 3: test.ctf");
    };
    expectRequired("", "center");
    expectRequired(" width='1' amount='1'", "center");
    expectRequired(" center='1'", "width");
    expectRequired(" center='1' amount='1'", "width");
    expectRequired(" center='1' width='1'", "amount");
}

TEST(HueVectorParamsElt, refusesNumbersThatTheOpCannotHave)
{
    Ctf::expectReadFails(document("<HueVecParams style='chroma' center='361' width='0' amount='0'/>"), 0x2010012,
                         "Parameter 361.000000 > upper bound 360.000000", "COLOR:TRANSFORM:HUE_VECTOR");
    Ctf::expectReadFails(document("<HueVecParams style='chroma' center='0' width='-1' amount='0'/>"), 0x2010011,
                         "Parameter -1.000000 < lower bound 0.000000", "COLOR:TRANSFORM:HUE_VECTOR");
    for (const std::string param : {"center", "width", "amount"}) {
        Ctf::expectReadFails(document("<HueVecParams style='chroma' " + param + "='red'/>"), 0x3020008,
                             "Characters 'red' illegal");
    }
}
