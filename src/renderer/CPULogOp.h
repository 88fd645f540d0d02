#pragma once

#include "renderer/virtualRenderer.h"
#include "transform/logOp.h"

#include <memory>

namespace Rendering {

/// The log kernel of the op's style; null for a value that is no style. Throws 0x20b0002 when a style with
/// parameters has not five.
std::unique_ptr<VirtualRenderer> makeLogRenderer(const Color::LogOp& op);

} // namespace Rendering
