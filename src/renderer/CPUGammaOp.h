#pragma once

#include "renderer/virtualRenderer.h"
#include "transform/gammaOp.h"

#include <memory>

namespace Rendering {

/// The gamma kernel of the op's style; null for a value that is no style.
std::unique_ptr<VirtualRenderer> makeGammaRenderer(const Color::GammaOp& op);

} // namespace Rendering
