#pragma once

#include "renderer/virtualRenderer.h"
#include "transform/gamutMapOp.h"

#include <memory>

namespace Rendering {

/// The gamut map kernel; null for a style without an effect.
std::unique_ptr<VirtualRenderer> makeGamutMapRenderer(const Color::GamutMapOp& op);

} // namespace Rendering
