#pragma once

#include "renderer/virtualRenderer.h"

#include <memory>

namespace Rendering {

/// The renderer of an op. Null when the op needs no work. Throws 0x4010005 for a reference.
std::unique_ptr<VirtualRenderer> makeRenderer(const Color::Op& op);

} // namespace Rendering
