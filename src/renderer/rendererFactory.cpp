#include "renderer/rendererFactory.h"

#include "renderer/CPUCDLOp.h"
#include "renderer/CPUDitherOp.h"
#include "renderer/CPUExposureContrastOp.h"
#include "renderer/CPUFunctionOp.h"
#include "renderer/CPUGammaOp.h"
#include "renderer/CPUGamutMapOp.h"
#include "renderer/CPUHueVectorOp.h"
#include "renderer/CPUInvLut1DOp.h"
#include "renderer/CPULogOp.h"
#include "renderer/CPULut1DOp.h"
#include "renderer/CPULut3DOp.h"
#include "renderer/CPUMatrixOp.h"
#include "renderer/CPURangeOp.h"
#include "utils/exception.h"

namespace Rendering {

std::unique_ptr<VirtualRenderer> makeRenderer(const Color::Op& op)
{
    switch (op.getOpType()) {
    case Color::OP_LUT_1D:
        return makeLut1DRenderer(static_cast<const Color::Lut1DOp&>(op));
    case Color::OP_INVERSE_LUT_1D:
        return makeInvLut1DRenderer(static_cast<const Color::InvLut1DOp&>(op));
    case Color::OP_LUT_3D:
        return makeLut3DRenderer(static_cast<const Color::Lut3DOp&>(op));
    case Color::OP_MATRIX:
        return makeMatrixRenderer(static_cast<const Color::MatrixOp&>(op));
    case Color::OP_RANGE:
        return makeRangeRenderer(static_cast<const Color::RangeOp&>(op));
    case Color::OP_GAMMA:
        return makeGammaRenderer(static_cast<const Color::GammaOp&>(op));
    case Color::OP_EXPOSURE_CONTRAST:
        return makeExposureContrastRenderer(static_cast<const Color::ExposureContrastOp&>(op));
    case Color::OP_LOG:
        return makeLogRenderer(static_cast<const Color::LogOp&>(op));
    case Color::OP_CDL:
        return makeCDLRenderer(static_cast<const Color::CDLOp&>(op));
    case Color::OP_DITHER:
        return makeDitherRenderer(static_cast<const Color::DitherOp&>(op));
    case Color::OP_GAMUT_MAP:
        return makeGamutMapRenderer(static_cast<const Color::GamutMapOp&>(op));
    case Color::OP_HUE_VECTOR:
        return makeHueVectorRenderer(static_cast<const Color::HueVectorOp&>(op));
    case Color::OP_FUNCTION:
        return makeFunctionRenderer(static_cast<const Color::FunctionOp&>(op));
    case Color::OP_REFERENCE:
        Color::raise(Color::LogCategory::RENDERER_ALL, Color::ErrorIds::RENDERER_UNRESOLVED_TRANSFORM);
    }
    return nullptr;
}

} // namespace Rendering
