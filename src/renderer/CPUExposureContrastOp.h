#pragma once

#include "renderer/virtualRenderer.h"
#include "transform/exposureContrastOp.h"

#include <memory>

namespace Rendering {

/// The exposure/contrast kernel of the op's style; null for a value that is no style. It shares the op's properties.
std::unique_ptr<VirtualRenderer> makeExposureContrastRenderer(const Color::ExposureContrastOp& op);

} // namespace Rendering
