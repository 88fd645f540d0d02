#pragma once

#include "renderer/virtualRenderer.h"
#include "transform/ditherOp.h"

#include <memory>

namespace Rendering {

/// Never null: where nothing is to be dithered the kernel copies.
std::unique_ptr<VirtualRenderer> makeDitherRenderer(const Color::DitherOp& op);

} // namespace Rendering
