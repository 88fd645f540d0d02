#include "morvane/transformImpl.h"
#include "renderer/CPURenderer.h"
#include "renderer/rendererType.h"
#include "tests/pixels/opCases.h"

#include <gtest/gtest.h>

namespace PixelTest {
namespace {

using namespace Morvane_2015_1_42;
using namespace Rendering;

struct TypeOfCase
{
    RendererType type;
    const char* opTypeName;
    const char* caseName;
    PixelFormat in = PF_RGBA_32f;
};

/// The renderer of the case's only op.
RendererType rendererTypeOf(const TypeOfCase& row)
{
    CPURenderer renderer;
    renderer.finalize(Impl::Transform::modelOf(makeTransform(opCaseNamed(row.caseName))).get(), row.in, PF_RGBA_32f);
    EXPECT_EQ(renderer.getRendererCount(), 1U);
    return renderer.getRendererType(0);
}

TEST(RendererTypes, eachComesFromItsOp)
{
    const std::vector<TypeOfCase> rows = {
        {RENDERER_LUT_1D, "LUT 1D", "lut"},
        {RENDERER_LUT_1D_HALF_CODE, "LUT 1D", "lutHalfDomain"},
        {RENDERER_LUT_1D_HUE_ADJUST, "LUT 1D", "lutHueAdjusted"},
        {RENDERER_LUT_1D_HALF_CODE_HUE_ADJUST, "LUT 1D", "lutHalfDomainHueAdjusted"},
        {RENDERER_INVERSE_LUT_1D, "Inverse LUT 1D", "inverseLut"},
        {RENDERER_INVERSE_LUT_1D_HALF_CODE, "Inverse LUT 1D", "inverseLutHalfDomain"},
        {RENDERER_LUT_3D, "LUT 3D", "cube"},
        {RENDERER_LUT_3D_TETRAHEDRAL, "LUT 3D", "cubeTetrahedral"},
        {RENDERER_SCALE, "Matrix", "scale"},
        {RENDERER_SCALE_WITH_OFFSET, "Matrix", "scaleWithOffset"},
        {RENDERER_MATRIX, "Matrix", "matrix"},
        {RENDERER_MATRIX_WITH_OFFSET, "Matrix", "matrixWithOffset"},
        {RENDERER_RANGE_SCALE_MIN_MAX, "Range", "rangeScaleMinMax"},
        {RENDERER_RANGE_SCALE_MIN, "Range", "rangeScaleMin"},
        {RENDERER_RANGE_SCALE_MAX, "Range", "rangeScaleMax"},
        // No sample of an integer depth reaches the limits, so no clamp is left.
        {RENDERER_RANGE_SCALE, "Range", "rangeBeyond", PF_RGBA_16i},
        {RENDERER_RANGE_MIN_MAX, "Range", "rangeMinMax"},
        {RENDERER_RANGE_MIN, "Range", "rangeMin"},
        {RENDERER_RANGE_MAX, "Range", "rangeMax"},
        {RENDERER_GAMMA_BASIC, "Gamma", "gammaBasicFwd"},
        {RENDERER_GAMMA_BASIC, "Gamma", "gammaBasicRev"},
        {RENDERER_GAMMA_MONCURVE_FWD, "Gamma", "gammaMoncurveFwd"},
        {RENDERER_GAMMA_MONCURVE_REV, "Gamma", "gammaMoncurveRev"},
        {RENDERER_EC_VIDEO, "Exposure/Contrast", "ecVideo"},
        {RENDERER_EC_LOGARITHMIC, "Exposure/Contrast", "ecLog"},
        {RENDERER_EC_LINEAR, "Exposure/Contrast", "ecLinear"},
        {RENDERER_LOG, "Log", "log10"},
        {RENDERER_LOG, "Log", "log2"},
        {RENDERER_ANTI_LOG, "Log", "antiLog10"},
        {RENDERER_ANTI_LOG, "Log", "antiLog2"},
        {RENDERER_LOG_2_LIN, "Log", "logToLin"},
        {RENDERER_LIN_2_LOG, "Log", "linToLog"},
        {RENDERER_CDL_V1_2_FWD, "ASC CDL", "cdlV12Fwd"},
        {RENDERER_CDL_NO_CLAMP_FWD, "ASC CDL", "cdlNoClampFwd"},
        {RENDERER_CDL_V1_2_REV, "ASC CDL", "cdlV12Rev"},
        {RENDERER_CDL_NO_CLAMP_REV, "ASC CDL", "cdlNoClampRev"},
        {RENDERER_DITHER, "Dither", "ditherToBytes"},
        {RENDERER_GAMUT_MAP_DW3, "GamutMap", "gamutMap"},
        {RENDERER_HUE_VECTOR_YCH_FWD, "HueVector", "hueVectorFwd"},
        {RENDERER_HUE_VECTOR_YCH_REV, "HueVector", "hueVectorRev"},
        {RENDERER_FUNCTION_RGB_TO_HSV, "Function", "rgbToHsv"},
        {RENDERER_FUNCTION_HSV_TO_RGB, "Function", "hsvToRgb"},
    };

    std::array<bool, kRendererTypeCount> isMet{};
    for (const TypeOfCase& row : rows) {
        SCOPED_TRACE(row.caseName);
        const Color::ColorTransformPtr model = Impl::Transform::modelOf(makeTransform(opCaseNamed(row.caseName)));
        ASSERT_EQ(model->getOpList().size(), 1U);
        EXPECT_EQ(model->getOpList().get(0)->getOpTypeName(), row.opTypeName);
        const RendererType type = rendererTypeOf(row);
        EXPECT_EQ(type, row.type);
        isMet.at(static_cast<size_t>(type)) = true;
    }
    for (int type = 0; type < kRendererTypeCount; ++type)
        EXPECT_TRUE(isMet.at(static_cast<size_t>(type))) << "no op gives the type " << type;
}

TEST(RendererTypes, styleNoneOfAGamutMapGivesNone)
{
    // With no renderer left, the frame puts its identity there.
    EXPECT_EQ(rendererTypeOf({RENDERER_SCALE, "GamutMap", "gamutMapNone"}), RENDERER_SCALE);
}

} // namespace
} // namespace PixelTest
