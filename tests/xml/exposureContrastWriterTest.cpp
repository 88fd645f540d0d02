#include "tests/xml/written.h"

#include "transform/exposureContrastOp.h"

using namespace Color;

namespace {

std::string element(const std::string& style, const std::string& content)
{
    return "<ExposureContrast inBitDepth=\"32f\" outBitDepth=\"32f\" style=\"" + style + "\">\n" + content +
           "</ExposureContrast>\n";
}

} // namespace

TEST(ExposureContrastWriter, writesItsParameters)
{
    ExposureContrastOp op;
    Ctf::expectWritten(op, element("linear", "   <ECParams exposure=\"0\" contrast=\"1\" pivot=\"1\" />\n"));
    op.setStyle(ExposureContrastOp::STYLE_VIDEO);
    op.getExposure()->set(-0.5);
    op.getContrast()->set(1.1);
    op.setPivot(0.18);
    Ctf::expectWritten(op, element("video", "   <ECParams exposure=\"-0.5\" contrast=\"1.1\" pivot=\"0.18\" />\n"));
}

TEST(ExposureContrastWriter, writesWhatIsDynamic)
{
    const std::string params = "   <ECParams exposure=\"0\" contrast=\"1\" pivot=\"1\" />\n";
    const std::string exposure = "   <DynamicParameter param=\"EXPOSURE\" />\n";
    const std::string contrast = "   <DynamicParameter param=\"CONTRAST\" />\n";
    ExposureContrastOp onlyContrast;
    onlyContrast.setStyle(ExposureContrastOp::STYLE_LOG);
    onlyContrast.getContrast()->makeDynamic();
    Ctf::expectWritten(onlyContrast, element("log", params + contrast));

    ExposureContrastOp all;
    all.setStyle(ExposureContrastOp::STYLE_LOG);
    all.getExposure()->makeDynamic();
    all.getContrast()->makeDynamic();
    all.getBypass()->makeDynamic();
    Ctf::expectWritten(
        all, element("log", "   <DynamicParameter param=\"LOOK_SWITCH\" />\n" + params + exposure + contrast));
}

TEST(ExposureContrastWriter, keepsAllBitsOfExposureAndContrast)
{
    ExposureContrastOp op;
    op.getExposure()->set(1.0 / 3.0);
    op.getContrast()->set(0x1.0000000000001p0);
    Ctf::expectWritten(op, element("linear", "   <ECParams exposure=\"0.3333333333333333\" "
                                             "contrast=\"1.0000000000000002\" pivot=\"1\" />\n"));
    op.setPivot(1.0 / 3.0);
    EXPECT_NE(Ctf::writeOp(op).find(" pivot=\"0.333333\" />"), std::string::npos);
}
