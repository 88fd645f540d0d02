#pragma once

#include "renderer/virtualRenderer.h"
#include "transform/lut3DOp.h"

#include <memory>

namespace Rendering {

/// The 3D LUT kernel of the op's interpolation. Never null.
std::unique_ptr<VirtualRenderer> makeLut3DRenderer(const Color::Lut3DOp& op);

} // namespace Rendering
