#pragma once

#include "renderer/virtualRenderer.h"
#include "transform/rangeOp.h"

#include <memory>

namespace Rendering {

/// The range kernel that scales and clamps no more than the op needs; null when it needs neither.
std::unique_ptr<VirtualRenderer> makeRangeRenderer(const Color::RangeOp& op);

} // namespace Rendering
