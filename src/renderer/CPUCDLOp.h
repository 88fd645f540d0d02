#pragma once

#include "renderer/virtualRenderer.h"
#include "transform/CDLOp.h"

#include <array>
#include <memory>

namespace Rendering {

/// Red, green and blue of luma after ITU-R BT.709, which saturation leaves as it is; alpha takes no part.
constexpr std::array<float, 4> kLuma = {0.2126f, 0.7152f, 0.0722f, 0.f};

/// The CDL kernel of the op's style; null for a value that is no style.
std::unique_ptr<VirtualRenderer> makeCDLRenderer(const Color::CDLOp& op);

} // namespace Rendering
