#include "work.h"

#include <cmath>

namespace OCIO = OCIO_NAMESPACE;
namespace M = Morvane;

namespace {

const std::string kDepths = " inBitDepth=\"32f\" outBitDepth=\"32f\" ";

Work cdlWorkOf(const std::string& name, const std::string& style, OCIO::CDLStyle peerStyle)
{
    return {name,
            [=] {
                return transformOf("<ASC_CDL" + kDepths + "style=\"" + style +
                                   "\"><SOPNode><Slope>1.1 1.0 0.9</Slope><Offset>0.01 0.02 -0.01</Offset>"
                                   "<Power>1.2 1.1 0.9</Power></SOPNode><SatNode><Saturation>1.2</Saturation></SatNode>"
                                   "</ASC_CDL>");
            },
            [=] {
                const auto cdl = OCIO::CDLTransform::Create();
                const double slope[3] = {1.1, 1.0, 0.9};
                const double offset[3] = {0.01, 0.02, -0.01};
                const double power[3] = {1.2, 1.1, 0.9};
                cdl->setSlope(slope);
                cdl->setOffset(offset);
                cdl->setPower(power);
                cdl->setSat(1.2);
                cdl->setStyle(peerStyle);
                return cdl;
            }};
}

} // namespace

Work gammaWork()
{
    return {"gamma basic",
            [] { return transformOf("<Gamma" + kDepths + "style=\"basicFwd\"><GammaParams gamma=\"2.2\"/></Gamma>"); },
            [] {
                const auto gamma = OCIO::ExponentTransform::Create();
                gamma->setValue({2.2, 2.2, 2.2, 1.});
                return gamma;
            }};
}

Work moncurveWork()
{
    return {"gamma moncurve fwd",
            [] {
                return transformOf("<Gamma" + kDepths +
                                   "style=\"moncurveFwd\"><GammaParams gamma=\"2.4\" offset=\"0.055\"/></Gamma>");
            },
            [] {
                const auto gamma = OCIO::ExponentWithLinearTransform::Create();
                gamma->setGamma({2.4, 2.4, 2.4, 1.});
                gamma->setOffset({0.055, 0.055, 0.055, 0.});
                return gamma;
            }};
}

Work logWork()
{
    return {"log10", [] { return transformOf("<Log" + kDepths + "style=\"log10\"></Log>"); },
            [] {
                const auto log = OCIO::LogTransform::Create();
                log->setBase(10.);
                return log;
            }};
}

Work linToLogWork()
{
    return {"linToLog",
            [] {
                return transformOf("<Log" + kDepths +
                                   "style=\"linToLog\"><LogParams gamma=\"0.6\" refWhite=\"685\" refBlack=\"95\" "
                                   "highlight=\"1\" shadow=\"0\"/></Log>");
            },
            [] {
                // The same curve in the peer's parameters.
                const double densityFactor = 2.046 / 0.6;
                const double gain = 1. / (1. - std::pow(10., (95. - 685.) / 1023. * densityFactor));
                const auto log = OCIO::LogAffineTransform::Create();
                log->setBase(10.);
                log->setLogSideSlopeValue({1. / densityFactor, 1. / densityFactor, 1. / densityFactor});
                log->setLogSideOffsetValue({685. / 1023., 685. / 1023., 685. / 1023.});
                log->setLinSideSlopeValue({1. / gain, 1. / gain, 1. / gain});
                log->setLinSideOffsetValue({(gain - 1.) / gain, (gain - 1.) / gain, (gain - 1.) / gain});
                return log;
            }};
}

Work cdlWork() { return cdlWorkOf("CDL clamping", "v1.2_Fwd", OCIO::CDL_ASC); }

Work cdlNoClampWork() { return cdlWorkOf("CDL no clamp", "noClampFwd", OCIO::CDL_NO_CLAMP); }

Work exposureContrastWork()
{
    return {"exposure/contrast linear, dynamic",
            [] {
                return transformOf("<ExposureContrast" + kDepths +
                                   "style=\"linear\"><ECParams exposure=\"0.5\" contrast=\"1.2\" pivot=\"0.18\"/>"
                                   "<DynamicParameter param=\"EXPOSURE\"/><DynamicParameter param=\"CONTRAST\"/>"
                                   "</ExposureContrast>");
            },
            [] {
                const auto ec = OCIO::ExposureContrastTransform::Create();
                ec->setStyle(OCIO::EXPOSURE_CONTRAST_LINEAR);
                ec->setExposure(0.5);
                ec->setContrast(1.2);
                ec->setPivot(0.18);
                ec->makeExposureDynamic();
                ec->makeContrastDynamic();
                return ec;
            }};
}
