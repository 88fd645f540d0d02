#include "renderer/rendererFactory.h"

#include "renderer/CPUMatrixOp.h"
#include "renderer/CPURangeOp.h"
#include "utils/exception.h"

namespace Rendering {

std::unique_ptr<VirtualRenderer> makeRenderer(const Color::Op& op)
{
    switch (op.getOpType()) {
    case Color::OP_MATRIX:
        return makeMatrixRenderer(static_cast<const Color::MatrixOp&>(op));
    case Color::OP_RANGE:
        return makeRangeRenderer(static_cast<const Color::RangeOp&>(op));
    case Color::OP_REFERENCE:
        Color::raise(Color::LogCategory::RENDERER_ALL, Color::ErrorIds::RENDERER_UNRESOLVED_TRANSFORM);
    default:
        return nullptr;
    }
}

} // namespace Rendering
