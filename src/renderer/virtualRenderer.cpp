#include "renderer/virtualRenderer.h"

namespace Rendering {

VirtualRenderer::VirtualRenderer(const Color::Op& op) : m_bypass(op.getBypass()) {}

VirtualRenderer::~VirtualRenderer() = default;

SourceKernel VirtualRenderer::getSourceKernel(PixelFormat) const { return nullptr; }

} // namespace Rendering
