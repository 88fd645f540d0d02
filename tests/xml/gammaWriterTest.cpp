#include "tests/xml/written.h"

#include "transform/gammaOp.h"

using namespace Color;

namespace {

std::string element(const std::string& style, const std::string& params)
{
    return "<Gamma inBitDepth=\"32f\" outBitDepth=\"32f\" style=\"" + style + "\">\n" + params + "</Gamma>\n";
}

GammaOp gamma(GammaOp::Style style, const GammaOp::Params& red, const GammaOp::Params& green,
              const GammaOp::Params& blue, const GammaOp::Params& alpha)
{
    return GammaOp(BIT_DEPTH_32f, BIT_DEPTH_32f, style, red, green, blue, alpha);
}

} // namespace

TEST(GammaWriter, writesOneElementForEqualColours)
{
    GammaOp basic = gamma(GammaOp::STYLE_BASIC_FWD, {2.2}, {2.2}, {2.2}, {1.0});
    Ctf::expectWritten(basic, element("basicFwd", "   <GammaParams gamma=\"2.2\" />\n"));
    GammaOp reverse = gamma(GammaOp::STYLE_BASIC_REV, {1.8}, {1.8}, {1.8}, {1.0});
    Ctf::expectWritten(reverse, element("basicRev", "   <GammaParams gamma=\"1.8\" />\n"));
    GammaOp moncurve = gamma(GammaOp::STYLE_MONCURVE_REV, {2.4, 0.055}, {2.4, 0.055}, {2.4, 0.055}, {1.0, 0.0});
    Ctf::expectWritten(moncurve, element("moncurveRev", "   <GammaParams gamma=\"2.4\" offset=\"0.055\" />\n"));
}

TEST(GammaWriter, writesAnElementPerChannel)
{
    GammaOp op = gamma(GammaOp::STYLE_MONCURVE_FWD, {2.4, 0.055}, {2.2, 0.05}, {2.4, 0.055}, {1.0, 0.0});
    Ctf::expectWritten(op, element("moncurveFwd", "   <GammaParams channel=\"R\" gamma=\"2.4\" offset=\"0.055\" />\n"
                                                  "   <GammaParams channel=\"G\" gamma=\"2.2\" offset=\"0.05\" />\n"
                                                  "   <GammaParams channel=\"B\" gamma=\"2.4\" offset=\"0.055\" />\n"));
}

TEST(GammaWriter, writesAlphaWhenItHasParameters)
{
    GammaOp op = gamma(GammaOp::STYLE_BASIC_FWD, {2.2}, {2.3}, {2.4}, {1.5});
    Ctf::expectWritten(op, element("basicFwd", "   <GammaParams channel=\"R\" gamma=\"2.2\" />\n"
                                               "   <GammaParams channel=\"G\" gamma=\"2.3\" />\n"
                                               "   <GammaParams channel=\"B\" gamma=\"2.4\" />\n"
                                               "   <GammaParams channel=\"A\" gamma=\"1.5\" />\n"));
}

TEST(GammaWriter, equalColoursDoNotHideAlpha)
{
    GammaOp op = gamma(GammaOp::STYLE_BASIC_FWD, {2.0}, {2.0}, {2.0}, {2.0});
    Ctf::expectWritten(op, element("basicFwd", "   <GammaParams channel=\"R\" gamma=\"2\" />\n"
                                               "   <GammaParams channel=\"G\" gamma=\"2\" />\n"
                                               "   <GammaParams channel=\"B\" gamma=\"2\" />\n"
                                               "   <GammaParams channel=\"A\" gamma=\"2\" />\n"));
}
