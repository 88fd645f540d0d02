#pragma once

#include "renderer/codeTable.h"
#include "renderer/genericRenderer.h"
#include "renderer/transformProcessor.h"

#include <boost/shared_ptr.hpp>
#include <cstddef>

namespace Rendering {

/// Renders on the calling thread with the library's own kernels. After finalize() it is only read, so any number of
/// threads may apply it at once.
class CPURenderer : public GenericCPURenderer
{
public:
    int getType() const override;
    void finalize(const Color::Transform* transform, PixelFormat in, PixelFormat out) override;
    /// The same for a transform without references that may be changed: its own ops are fitted to the depths.
    void finalizeInPlace(Color::Transform& transform, PixelFormat in, PixelFormat out);
    void apply(const void* source, void* destination, const ROI& roi, uint32_t sourcePadding,
               uint32_t destinationPadding) const override;

    /// The kind of the renderer at the index; throws 0x401000a beyond the end.
    RendererType getRendererType(std::size_t index) const;
    std::size_t getRendererCount() const;

private:
    PixelFormat m_inputFormat = PF_UNKNOWN;
    PixelFormat m_outputFormat = PF_UNKNOWN;
    boost::shared_ptr<const TransformProcessor> m_processor;
    std::unique_ptr<const CodeTable> m_codeTable; ///< stands for the processor unless it is null
};

} // namespace Rendering
