#pragma once

#include "renderer/rendererType.h"
#include "transform/op.h"

#include <cstdint>

namespace Rendering {

/// What a host may change at any time, as it was read at the start of a line: all pixels of the line see these values.
struct DynamicValues
{
    bool isBypassed = false;
    double exposure = 0.0; ///< stops
    double contrast = 1.0;
};

/// Pixels of one image line that a kernel works on: four floats each, red, green, blue, alpha. Source and destination
/// are either the same or apart. Neither needs alignment.
struct PixelRun
{
    const float* source;
    float* destination;
    uint32_t width; ///< pixels
    uint32_t x;     ///< place of the first pixel in the image
    uint32_t y;
    DynamicValues dynamicValues{}; ///< of the renderer that works on the run
};

/// How the channels of a pixel meet in a kernel.
enum class ChannelUse
{
    Mixed,       ///< a result depends on several channels, or on the pixel's place
    Apart,       ///< each channel of the result, alpha too, depends on the same channel of the source alone
    ApartAndSlow ///< the same, and looking the result up in a table is faster than working it out
};

class VirtualRenderer;

/// A kernel that reads pixels of an image itself instead of run.source.
using SourceKernel = void (*)(const VirtualRenderer& renderer, const void* source, const PixelRun& run);

/// A kernel with the parameters of its op, made when a transform is finalized. It is immutable but for what it shares
/// with its op: the dynamic properties.
class VirtualRenderer
{
public:
    explicit VirtualRenderer(const Color::Op& op);
    VirtualRenderer(const VirtualRenderer&) = delete;
    VirtualRenderer& operator=(const VirtualRenderer&) = delete;
    virtual ~VirtualRenderer();

    virtual RendererType getType() const = 0;

    /// Runs the kernel over the pixels.
    virtual void render(const PixelRun& run) const = 0;

    /// The kernel that reads images of this format faster than by unpacking them first, with the same bits as a result.
    /// Null where there is none.
    virtual SourceKernel getSourceKernel(PixelFormat format) const;

    virtual ChannelUse getChannelUse() const;

    /// Read once per line.
    virtual DynamicValues readDynamicValues() const;
    /// True when readDynamicValues() may change while the renderer lives.
    virtual bool hasDynamicValues() const;

private:
    Color::BypassPropertyPtr m_bypass;
};

} // namespace Rendering
