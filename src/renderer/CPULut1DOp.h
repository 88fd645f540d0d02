#pragma once

#include "renderer/virtualRenderer.h"
#include "transform/lut1DOp.h"

#include <memory>

namespace Rendering {

/// The 1D LUT kernel for the op's domain and hue adjust, its tables built for the op's depths. Never null.
std::unique_ptr<VirtualRenderer> makeLut1DRenderer(const Color::Lut1DOp& op);

} // namespace Rendering
