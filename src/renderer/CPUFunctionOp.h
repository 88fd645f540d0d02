#pragma once

#include "renderer/virtualRenderer.h"
#include "transform/functionOp.h"

#include <memory>

namespace Rendering {

/// The kernel of the change of colour model; null for a value that is no style.
std::unique_ptr<VirtualRenderer> makeFunctionRenderer(const Color::FunctionOp& op);

} // namespace Rendering
