#pragma once

#include "renderer/virtualRenderer.h"
#include "transform/invLut1DOp.h"

#include <memory>

namespace Rendering {

/// The kernel of the op's style: the fast one is that of a forward LUT. Never null.
std::unique_ptr<VirtualRenderer> makeInvLut1DRenderer(const Color::InvLut1DOp& op);

} // namespace Rendering
