#pragma once

#include "renderer/virtualRenderer.h"
#include "transform/matrixOp.h"

#include <memory>

namespace Rendering {

/// The cheapest of the four matrix kernels that does what the op says. Never null.
std::unique_ptr<VirtualRenderer> makeMatrixRenderer(const Color::MatrixOp& op);

} // namespace Rendering
