#include "tests/xml/ctf.h"
#include "transform/exposureContrastOp.h"

using namespace Color;

namespace {

std::string document(const std::string& content, const std::string& style = "linear")
{
    return Ctf::document(Ctf::op("ExposureContrast", content, " style='" + style + "'"));
}

} // namespace

TEST(ECParamsElt, readsExposureContrastAndPivot)
{
    const auto transform =
        Ctf::read(document("<ECParams pivot='0.18' EXPOSURE='-1.5' other='x' contrast='1.25x'>text</ECParams>"));
    const auto& op = Ctf::getOp<ExposureContrastOp>(transform);
    EXPECT_EQ(op.getExposure()->get(), -1.5);
    EXPECT_EQ(op.getContrast()->get(), 1.25);
    EXPECT_EQ(op.getPivot(), 0.18);
    EXPECT_FALSE(op.hasDynamicProperties());
}

TEST(ECParamsElt, valuesAndDynamicPropertiesMayComeInAnyOrder)
{
    const std::string params = "<ECParams exposure='2' contrast='0.5' pivot='0.4'/>";
    const std::string dynamic = "<DynamicParameter param='EXPOSURE'/>";
    for (const std::string& content : {params + dynamic, dynamic + params}) {
        const auto transform = Ctf::read(document(content));
        const auto& op = Ctf::getOp<ExposureContrastOp>(transform);
        EXPECT_EQ(op.getExposure()->get(), 2.0);
        EXPECT_TRUE(op.getExposure()->isDynamic());
        EXPECT_EQ(op.getContrast()->get(), 0.5);
        EXPECT_FALSE(op.getContrast()->isDynamic());
    }
}

TEST(ECParamsElt, requiresAllThreeInOrder)
{
    const auto message = [](const std::string& param, const std::string& style) {
        return "Param '" + param + "' required for style '" + style + "', 'Exposure/Contrast' line 3: test.ctf";
    };
    for (const std::string style : {"video", "log", "linear"}) {
        Ctf::expectReadFails(document("<ECParams/>", style), 0x3020014, message("exposure", style));
        Ctf::expectReadFails(document("<ECParams contrast='1' pivot='1'/>", style), 0x3020014,
                             message("exposure", style));
        Ctf::expectReadFails(document("<ECParams exposure='1'/>", style), 0x3020014, message("contrast", style));
        Ctf::expectReadFails(document("<ECParams exposure='1' pivot='1'/>", style), 0x3020014,
                             message("contrast", style));
        Ctf::expectReadFails(document("<ECParams exposure='1' contrast='1'/>", style), 0x3020014,
                             message("pivot", style));
    }
}

TEST(ECParamsElt, refusesWhatIsNoNumber)
{
    for (const std::string param : {"exposure", "contrast", "pivot"}) {
        Ctf::expectReadFails(document("<ECParams " + param + "='much'/>"), 0x3020008, "Characters 'much' illegal");
        Ctf::expectReadFails(document("<ECParams " + param + "='NaN'/>"), 0x3020008, "Characters 'NaN' illegal");
    }
}
