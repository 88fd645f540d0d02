#pragma once

#include "renderer/virtualRenderer.h"
#include "transform/hueVectorOp.h"

#include <memory>

namespace Rendering {

/// The hue vector kernel of the op's style; null for a value that is no style.
std::unique_ptr<VirtualRenderer> makeHueVectorRenderer(const Color::HueVectorOp& op);

} // namespace Rendering
