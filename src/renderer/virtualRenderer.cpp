#include "renderer/virtualRenderer.h"

namespace Rendering {

VirtualRenderer::VirtualRenderer(const Color::Op& op) : m_bypass(op.getBypass()) {}

VirtualRenderer::~VirtualRenderer() = default;

SourceKernel VirtualRenderer::getSourceKernel(PixelFormat) const { return nullptr; }

ChannelUse VirtualRenderer::getChannelUse() const { return ChannelUse::Mixed; }

DynamicValues VirtualRenderer::readDynamicValues() const
{
    DynamicValues values;
    values.isBypassed = m_bypass->get();
    return values;
}

bool VirtualRenderer::hasDynamicValues() const { return m_bypass->isDynamic(); }

} // namespace Rendering
