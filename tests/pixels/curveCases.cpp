#include "tests/pixels/curveCases.h"

#include "transform/CDLOp.h"
#include "transform/ditherOp.h"
#include "transform/exposureContrastOp.h"
#include "transform/functionOp.h"
#include "transform/gammaOp.h"
#include "transform/gamutMapOp.h"
#include "transform/hueVectorOp.h"
#include "transform/logOp.h"

namespace PixelTest {

using namespace Morvane_2015_1_42;
using Twin::Bypass;
using Twin::CDLOp;
using Twin::DitherOp;
using Twin::ExposureContrastOp;
using Twin::FunctionOp;
using Twin::GammaOp;
using Twin::GamutMapOp;
using Twin::HueVectorOp;
using Twin::LogOp;
using Twin::MatrixOp;
using Twin::Op;

namespace {

const std::array<GammaOp::Curve, 4> GAMMAS = {{{2.2, 0}, {1.8, 0}, {2.6, 0}, {1.25, 0}}};
const std::array<GammaOp::Curve, 4> GAMMAS_AT_BOUNDS = {{{1, 0}, {10, 0}, {1.0000001, 0}, {1, 0}}};
const std::array<GammaOp::Curve, 4> MONCURVES = {{{2.4, 0.055}, {2.2222222, 0.099}, {3, 0.16}, {1.5, 0.02}}};
const std::array<GammaOp::Curve, 4> MONCURVES_AT_BOUNDS = {{{1, 0}, {10, 0.9}, {1, 0.9}, {10, 0}}};

Op gamma(GammaOp::Style style, const std::array<GammaOp::Curve, 4>& curves)
{
    return GammaOp(BIT_DEPTH_32f, BIT_DEPTH_32f, style, curves);
}

const Op BASIC_FWD = gamma(GammaOp::BASIC_FWD, GAMMAS);
const Op BASIC_REV = gamma(GammaOp::BASIC_REV, GAMMAS);
const Op MONCURVE_FWD = gamma(GammaOp::MONCURVE_FWD, MONCURVES);
const Op MONCURVE_REV = gamma(GammaOp::MONCURVE_REV, MONCURVES);

const std::array<LogOp::Film, 3> FILMS = {
    {{0.6, 685, 95, 1, 0}, {0.55, 700, 80, 0.95, 0.02}, {0.7, 660, 110, 1.1, -0.01}}};
// Where black is this close to white, the floor of the exponent is taken.
const std::array<LogOp::Film, 3> FILMS_AT_BOUNDS = {
    {{0.0100001, 1023, 0, 1, 0}, {50, 685, 684.9, 1, 0.999}, {0.6, 0.001, 0, 1000, -1000}}};

Op logOp(LogOp::Style style, const std::array<LogOp::Film, 3>& films = FILMS)
{
    return LogOp(BIT_DEPTH_32f, BIT_DEPTH_32f, style, films);
}

const Op LOG10 = logOp(LogOp::LOG10);
const Op LOG2 = logOp(LogOp::LOG2);
const Op ANTI_LOG10 = logOp(LogOp::ANTI_LOG10);
const Op ANTI_LOG2 = logOp(LogOp::ANTI_LOG2);
const Op LOG_TO_LIN = logOp(LogOp::LOG_TO_LIN);
const Op LIN_TO_LOG = logOp(LogOp::LIN_TO_LOG);

Op exposure(ExposureContrastOp::Style style, double stops, double contrast, double pivot, bool isDynamic = false)
{
    return ExposureContrastOp(BIT_DEPTH_32f, BIT_DEPTH_32f, style, stops, contrast, pivot, isDynamic);
}

const Op EC_VIDEO = exposure(ExposureContrastOp::VIDEO, 0.75, 1.2, 0.18);
const Op EC_LOG = exposure(ExposureContrastOp::LOGARITHMIC, -0.4, 0.85, 0.18);
const Op EC_LINEAR = exposure(ExposureContrastOp::LINEAR, 1.3, 0.7, 0.22);
const Op EC_VIDEO_DYNAMIC = exposure(ExposureContrastOp::VIDEO, -1.5, 1, 0.3, true);
const Op EC_LOG_DYNAMIC = exposure(ExposureContrastOp::LOGARITHMIC, 2, 1.4, 0.5, true);
const Op EC_LINEAR_DYNAMIC = exposure(ExposureContrastOp::LINEAR, 0.3, 1.7, 0.18, true);

Op cdl(CDLOp::Style style)
{
    return CDLOp(BIT_DEPTH_32f, BIT_DEPTH_32f, style, {1.2, 0.9, 1.05}, {0.02, -0.03, 0.01}, {1.1, 0.8, 1.3}, 0.85);
}

// The reverse styles have floors where the forward ones have none.
Op cdlAtBounds(CDLOp::Style style)
{
    return CDLOp(BIT_DEPTH_32f, BIT_DEPTH_32f, style, {0, 0.005, 30}, {-0.5, 0, 0.7}, {0.001, 0.01, 8}, 0);
}

Op cdlNeutral(CDLOp::Style style)
{
    return CDLOp(BIT_DEPTH_32f, BIT_DEPTH_32f, style, {1, 1, 1}, {0, 0, 0}, {1, 1, 1}, 1);
}

const Op CDL_V1_2_FWD = cdl(CDLOp::V1_2_FWD);
const Op CDL_V1_2_REV = cdl(CDLOp::V1_2_REV);
const Op CDL_NO_CLAMP_FWD = cdl(CDLOp::NO_CLAMP_FWD);
const Op CDL_NO_CLAMP_REV = cdl(CDLOp::NO_CLAMP_REV);

Op hueVector(HueVectorOp::Style style, double center, double width, double gain)
{
    return HueVectorOp(BIT_DEPTH_32f, BIT_DEPTH_32f, style, center, width, gain);
}

const Op GAMUT_MAP = GamutMapOp(BIT_DEPTH_32f, BIT_DEPTH_32f, GamutMapOp::DW3);
const Op NO_GAMUT_MAP = GamutMapOp(BIT_DEPTH_32f, BIT_DEPTH_32f, GamutMapOp::NONE);
const Op HUE_VECTOR_FWD = hueVector(HueVectorOp::YCH_FWD, 40, 250, 1.6);
const Op HUE_VECTOR_REV = hueVector(HueVectorOp::YCH_REV, 300, 300, 0.7);
const Op RGB_TO_HSV = FunctionOp(BIT_DEPTH_32f, BIT_DEPTH_32f, FunctionOp::RGB_TO_HSV);
const Op HSV_TO_RGB = FunctionOp(BIT_DEPTH_32f, BIT_DEPTH_32f, FunctionOp::HSV_TO_RGB);

Op dither(BitDepth depth) { return DitherOp(BIT_DEPTH_32f, BIT_DEPTH_32f, depth); }

const Op DITHER_TO_BYTES = dither(BIT_DEPTH_8i);
const Op DITHER_TO_12 = dither(BIT_DEPTH_12i);

const Op MIX = MatrixOp(BIT_DEPTH_32f, BIT_DEPTH_32f,
                        {1.31F, -0.27F, -0.031F, 0, -0.19F, 1.23F, -0.047F, 0, 0.053F, 0.041F, 0.89F, 0, 0, 0, 0, 1});

Op dynamic(const Op& op) { return Twin::with(Bypass::DYNAMIC, op); }
Op dropped(const Op& op) { return Twin::with(Bypass::STATIC, op); }

/// Every kernel alone, to be rendered between all formats.
std::vector<OpCase> makeKernelCases()
{
    return {
        {"gammaBasicFwd", {BASIC_FWD}},
        {"gammaMoncurveFwd", {MONCURVE_FWD}},
        {"gammaMoncurveRev", {MONCURVE_REV}},
        {"log10", {LOG10}},
        {"antiLog10", {ANTI_LOG10}},
        {"logToLin", {LOG_TO_LIN}},
        {"linToLog", {LIN_TO_LOG}},
        {"ecVideo", {EC_VIDEO}},
        {"ecLog", {EC_LOG}},
        {"ecLinear", {EC_LINEAR}},
        {"cdlV12Fwd", {CDL_V1_2_FWD}},
        {"cdlV12Rev", {CDL_V1_2_REV}},
        {"cdlNoClampFwd", {CDL_NO_CLAMP_FWD}},
        {"cdlNoClampRev", {CDL_NO_CLAMP_REV}},
        {"gamutMap", {GAMUT_MAP}},
        {"hueVectorFwd", {HUE_VECTOR_FWD}},
        {"hueVectorRev", {HUE_VECTOR_REV}},
        {"rgbToHsv", {RGB_TO_HSV}},
        {"hsvToRgb", {HSV_TO_RGB}},
        {"ditherToBytes", {DITHER_TO_BYTES}},
    };
}

/// What the kernels do at their bounds and in company.
std::vector<OpCase> makeValueCases()
{
    return {
        {"gammaBasicRev", {BASIC_REV}},
        {"gammaBasicFwdAtBounds", {gamma(GammaOp::BASIC_FWD, GAMMAS_AT_BOUNDS)}},
        {"gammaBasicRevAtBounds", {gamma(GammaOp::BASIC_REV, GAMMAS_AT_BOUNDS)}},
        {"gammaBasicOfOtherDepths", {GammaOp(BIT_DEPTH_8i, BIT_DEPTH_16f, GammaOp::BASIC_REV, GAMMAS)}},
        {"gammaMoncurveFwdAtBounds", {gamma(GammaOp::MONCURVE_FWD, MONCURVES_AT_BOUNDS)}},
        {"gammaMoncurveRevAtBounds", {gamma(GammaOp::MONCURVE_REV, MONCURVES_AT_BOUNDS)}},
        {"gammaMoncurveOfOtherDepths", {GammaOp(BIT_DEPTH_10i, BIT_DEPTH_16i, GammaOp::MONCURVE_FWD, MONCURVES)}},
        {"log2", {LOG2}},
        {"antiLog2", {ANTI_LOG2}},
        {"logOfOtherDepths", {LogOp(BIT_DEPTH_16i, BIT_DEPTH_16f, LogOp::LOG10)}},
        {"logToLinAtBounds", {logOp(LogOp::LOG_TO_LIN, FILMS_AT_BOUNDS)}},
        {"linToLogAtBounds", {logOp(LogOp::LIN_TO_LOG, FILMS_AT_BOUNDS)}},
        {"logToLinOfOtherDepths", {LogOp(BIT_DEPTH_10i, BIT_DEPTH_16f, LogOp::LOG_TO_LIN, FILMS)}},
        {"ecVideoDynamic", {EC_VIDEO_DYNAMIC}},
        {"ecLogDynamic", {EC_LOG_DYNAMIC}},
        {"ecLinearDynamic", {EC_LINEAR_DYNAMIC}},
        {"ecLinearNeutral", {exposure(ExposureContrastOp::LINEAR, 0, 1, 0.18)}},
        {"ecLinearOfContrastOne", {exposure(ExposureContrastOp::LINEAR, -2.25, 1, 0.7)}},
        {"ecVideoAtFloors", {exposure(ExposureContrastOp::VIDEO, 3, 0, 0)}},
        {"ecLogAtFloors", {exposure(ExposureContrastOp::LOGARITHMIC, 3, 0, 0)}},
        {"ecLinearAtFloors", {exposure(ExposureContrastOp::LINEAR, 3, 0, 0)}},
        {"ecLinearOfOtherDepths",
         {ExposureContrastOp(BIT_DEPTH_8i, BIT_DEPTH_16f, ExposureContrastOp::LINEAR, 1, 1.1, 0.18)}},
        {"cdlV12FwdAtBounds", {cdlAtBounds(CDLOp::V1_2_FWD)}},
        {"cdlV12RevAtBounds", {cdlAtBounds(CDLOp::V1_2_REV)}},
        {"cdlNoClampFwdAtBounds", {cdlAtBounds(CDLOp::NO_CLAMP_FWD)}},
        {"cdlNoClampRevAtBounds", {cdlAtBounds(CDLOp::NO_CLAMP_REV)}},
        {"cdlV12FwdNeutral", {cdlNeutral(CDLOp::V1_2_FWD)}},
        {"cdlNoClampFwdNeutral", {cdlNeutral(CDLOp::NO_CLAMP_FWD)}},
        {"cdlOfOtherDepths",
         {CDLOp(BIT_DEPTH_12i, BIT_DEPTH_8i, CDLOp::V1_2_REV, {1.5, 1, 0.7}, {0, 0.1, -0.1}, {1, 1.5, 0.6}, 1.3)}},
        {"gamutMapOfOtherDepths", {GamutMapOp(BIT_DEPTH_16f, BIT_DEPTH_10i, GamutMapOp::DW3)}},
        {"gamutMapNone", {NO_GAMUT_MAP}},
        {"hueVectorFwdAtUpperBounds", {hueVector(HueVectorOp::YCH_FWD, 360, 1000, 100)}},
        {"hueVectorRevAtUpperBounds", {hueVector(HueVectorOp::YCH_REV, 360, 1000, 100)}},
        {"hueVectorFwdAtLowerBounds", {hueVector(HueVectorOp::YCH_FWD, 0, 0, 0)}},
        {"hueVectorRevOfNoChroma", {hueVector(HueVectorOp::YCH_REV, 0, 180, 0)}},
        {"hueVectorOfOtherDepths", {HueVectorOp(BIT_DEPTH_16i, BIT_DEPTH_12i, HueVectorOp::YCH_FWD, 120, 360, 0.25)}},
        {"rgbToHsvOfOtherDepths", {FunctionOp(BIT_DEPTH_8i, BIT_DEPTH_16i, FunctionOp::RGB_TO_HSV)}},
        {"hsvToRgbOfOtherDepths", {FunctionOp(BIT_DEPTH_10i, BIT_DEPTH_16f, FunctionOp::HSV_TO_RGB)}},
        {"ditherTo10", {dither(BIT_DEPTH_10i)}},
        {"ditherTo16", {dither(BIT_DEPTH_16i)}},
        {"ditherToHalves", {dither(BIT_DEPTH_16f)}},
        {"ditherOfOtherDepths", {DitherOp(BIT_DEPTH_16i, BIT_DEPTH_16i, BIT_DEPTH_10i)}},

        // Bypassed.
        {"bypassedGamma", {dynamic(MONCURVE_FWD)}},
        {"bypassedCdl", {dynamic(CDL_V1_2_FWD)}},
        {"bypassedDither", {dynamic(DITHER_TO_BYTES)}},
        {"bypassedExposure", {dynamic(EC_LINEAR_DYNAMIC)}},

        // Every kernel first, in the middle and last.
        {"gradeToDisplay", {CDL_V1_2_FWD, MIX, MONCURVE_REV}},
        {"displayToGrade", {MONCURVE_FWD, MIX, CDL_NO_CLAMP_FWD}},
        {"ungrade", {CDL_NO_CLAMP_REV, GAMUT_MAP, CDL_V1_2_REV}},
        {"linearGrade", {LOG_TO_LIN, CDL_NO_CLAMP_FWD, LIN_TO_LOG}},
        {"filmGrade", {LIN_TO_LOG, CDL_V1_2_REV, LOG_TO_LIN}},
        {"exposedBetween", {BASIC_FWD, EC_LINEAR_DYNAMIC, BASIC_REV}},
        {"exposedVideoBetween", {RGB_TO_HSV, HSV_TO_RGB, EC_VIDEO_DYNAMIC, MONCURVE_REV, MONCURVE_FWD}},
        {"exposedLogBetween", {LOG10, EC_LOG_DYNAMIC, ANTI_LOG10}},
        {"exposedFirst", {EC_VIDEO, EC_LINEAR, EC_LOG}},
        {"exposedLast", {EC_LOG, LOG2, EC_LINEAR}},
        {"antiLogFirst", {ANTI_LOG2, LOG_TO_LIN, LOG10}},
        {"antiLogBetween", {EC_LINEAR, ANTI_LOG2, EC_VIDEO}},
        {"basicBetween", {MONCURVE_REV, BASIC_REV, MONCURVE_FWD}},
        {"gamutMapFirst", {GAMUT_MAP, LIN_TO_LOG, GAMUT_MAP}},
        {"hueVectorFirst", {HUE_VECTOR_FWD, HUE_VECTOR_REV, HSV_TO_RGB}},
        {"hueVectorLast", {HUE_VECTOR_REV, HUE_VECTOR_FWD, RGB_TO_HSV}},
        {"hueVectorThere", {HSV_TO_RGB, CDL_NO_CLAMP_REV, HUE_VECTOR_FWD}},
        {"hueVectorBack", {BASIC_FWD, CDL_V1_2_FWD, HUE_VECTOR_REV}},
        {"gradeOfNoClampLast", {BASIC_REV, RGB_TO_HSV, CDL_NO_CLAMP_REV}},
        {"gradeFirst", {CDL_NO_CLAMP_FWD, DITHER_TO_12, CDL_V1_2_FWD}},
        {"gradeOfV12RevFirst", {CDL_V1_2_REV, MONCURVE_FWD, GAMUT_MAP}},
        {"ditheredFirst", {DITHER_TO_BYTES, MIX}},
        {"ditheredLast", {CDL_V1_2_FWD, MONCURVE_REV, DITHER_TO_BYTES}},
        {"ditheredLastOfOtherDepths",
         {GammaOp(BIT_DEPTH_8i, BIT_DEPTH_16i, GammaOp::BASIC_FWD, GAMMAS),
          DitherOp(BIT_DEPTH_16i, BIT_DEPTH_16i, BIT_DEPTH_8i)}},
        {"gamutMapNoneBetween", {MIX, NO_GAMUT_MAP, MONCURVE_FWD}},
        {"gamutMapNoneFirst", {NO_GAMUT_MAP, MONCURVE_FWD}},
        {"bypassedExposureBetween", {MIX, dynamic(EC_LINEAR_DYNAMIC), MONCURVE_REV}},
        {"bypassedGradeLast", {MONCURVE_FWD, dynamic(CDL_V1_2_FWD)}},
        {"droppedGammaBetween", {MIX, dropped(BASIC_FWD), CDL_V1_2_FWD}},
    };
}

} // namespace

std::vector<OpCase> makeCurveCases()
{
    std::vector<OpCase> cases = makeKernelCases();
    for (OpCase opCase : makeValueCases()) {
        opCase.isThinned = true;
        cases.push_back(opCase);
    }
    return cases;
}

namespace {

template <class ColorOp, class Style>
typename ColorOp::Style styleOf(Style style)
{
    return static_cast<typename ColorOp::Style>(style); // numbered alike
}

} // namespace

std::unique_ptr<Color::Op> makeColorOp(const GammaOp& op)
{
    const auto paramsOf = [&](size_t channel) -> Color::GammaOp::Params {
        const GammaOp::Curve& curve = op.curves[channel];
        const bool isBasic = op.style == GammaOp::BASIC_FWD || op.style == GammaOp::BASIC_REV;
        if (isBasic) return {curve.gamma};
        return {curve.gamma, curve.offset};
    };
    return std::make_unique<Color::GammaOp>(op.in, op.out, styleOf<Color::GammaOp>(op.style), paramsOf(0), paramsOf(1),
                                            paramsOf(2), paramsOf(3));
}

std::unique_ptr<Color::Op> makeColorOp(const LogOp& op)
{
    const auto style = styleOf<Color::LogOp>(op.style);
    if (op.style != LogOp::LOG_TO_LIN && op.style != LogOp::LIN_TO_LOG)
        return std::make_unique<Color::LogOp>(op.in, op.out, style);
    const auto paramsOf = [&](size_t channel) -> Color::LogOp::Params {
        const LogOp::Film& film = op.films[channel];
        return {film.gamma, film.refWhite, film.refBlack, film.highlight, film.shadow};
    };
    return std::make_unique<Color::LogOp>(op.in, op.out, style, paramsOf(0), paramsOf(1), paramsOf(2));
}

std::unique_ptr<Color::Op> makeColorOp(const ExposureContrastOp& op)
{
    auto colorOp = std::make_unique<Color::ExposureContrastOp>(op.in, op.out);
    colorOp->setStyle(styleOf<Color::ExposureContrastOp>(op.style));
    colorOp->setPivot(op.pivot);
    colorOp->getExposure()->set(op.exposure);
    colorOp->getContrast()->set(op.contrast);
    if (op.isDynamic) {
        colorOp->getExposure()->makeDynamic();
        colorOp->getContrast()->makeDynamic();
    }
    return colorOp;
}

std::unique_ptr<Color::Op> makeColorOp(const CDLOp& op)
{
    const auto paramsOf = [](const CDLOp::Values& values) {
        return Color::CDLOp::Params(values.begin(), values.end());
    };
    return std::make_unique<Color::CDLOp>(op.in, op.out, styleOf<Color::CDLOp>(op.style), paramsOf(op.slope),
                                          paramsOf(op.offset), paramsOf(op.power), op.saturation);
}

std::unique_ptr<Color::Op> makeColorOp(const GamutMapOp& op)
{
    return std::make_unique<Color::GamutMapOp>(op.in, op.out, styleOf<Color::GamutMapOp>(op.style));
}

std::unique_ptr<Color::Op> makeColorOp(const HueVectorOp& op)
{
    return std::make_unique<Color::HueVectorOp>(op.in, op.out, styleOf<Color::HueVectorOp>(op.style),
                                                Color::HueVectorOp::Params{op.center, op.width, op.gain});
}

std::unique_ptr<Color::Op> makeColorOp(const FunctionOp& op)
{
    return std::make_unique<Color::FunctionOp>(op.in, op.out, styleOf<Color::FunctionOp>(op.style));
}

std::unique_ptr<Color::Op> makeColorOp(const DitherOp& op)
{
    return std::make_unique<Color::DitherOp>(op.in, op.out, op.ditherDepth);
}

} // namespace PixelTest
