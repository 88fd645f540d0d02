#include "transform/exposureContrastOp.h"

#include "tests/xml/ctf.h"

using namespace Color;

TEST(ExposureContrastElt, readsEveryStyleInAnyCase)
{
    const struct
    {
        const char* name;
        ExposureContrastOp::Style style;
    } rows[] = {
        {"video", ExposureContrastOp::STYLE_VIDEO},
        {"log", ExposureContrastOp::STYLE_LOG},
        {"linear", ExposureContrastOp::STYLE_LINEAR},
        {"VIDEO", ExposureContrastOp::STYLE_VIDEO},
    };
    for (const auto& row : rows) {
        const std::string op = Ctf::op("ExposureContrast", "", std::string(" style='") + row.name + "'");
        for (const char* version : {"", "0", "1.6"}) {
            const auto transform = Ctf::read(Ctf::document(op, version));
            EXPECT_EQ(Ctf::getOp<ExposureContrastOp>(transform).getStyle(), row.style) << row.name;
        }
    }
}

TEST(ExposureContrastElt, refusesAnUnknownStyle)
{
    for (const std::string style : {"", "film"}) {
        Ctf::expectReadFails(Ctf::document(Ctf::op("ExposureContrast", "", " style='" + style + "'")), 0x20a0001,
                             "Unrecognized E/C style: " + style, "COLOR:TRANSFORM:EXPOSURE_CONTRAST");
    }
}

TEST(ExposureContrastElt, requiresAStyle)
{
    Ctf::expectReadFails(Ctf::document(Ctf::op("ExposureContrast", "")), 0x3020006,
                         "Required attribute 'style' missing in 'Exposure/Contrast' line 2: test.ctf");
}

TEST(ExposureContrastElt, withoutParametersHasNoEffect)
{
    const auto transform = Ctf::read(Ctf::document(Ctf::op("ExposureContrast", "", " style='log'")));
    const auto& op = Ctf::getOp<ExposureContrastOp>(transform);
    EXPECT_EQ(op.getExposure()->get(), 0.0);
    EXPECT_EQ(op.getContrast()->get(), 1.0);
    EXPECT_EQ(op.getPivot(), 1.0);
    EXPECT_FALSE(op.hasDynamicProperties());
}
