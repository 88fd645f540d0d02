#pragma once

#include "transform/transform.h"

#include <boost/shared_ptr.hpp>
#include <cstdint>

namespace Rendering {

/// The kinds of renderers, and the codes by which one is requested.
enum RendererCode : int
{
    RENDERER_CODE_DEFAULT = 0,
    RENDERER_CODE_CPU = 1,
    RENDERER_CODE_OCIO = 2,
    RENDERER_CODE_GPU = 3,
    RENDERER_CODE_OCIO_GPU = 4,
};

class GenericRenderer
{
public:
    GenericRenderer() = default;
    GenericRenderer(const GenericRenderer&) = delete;
    GenericRenderer& operator=(const GenericRenderer&) = delete;
    virtual ~GenericRenderer();

    /// The RendererCode of this kind.
    virtual int getType() const = 0;
};

class GenericCPURenderer : public GenericRenderer
{
public:
    /// Prepares for a transform and two pixel formats. The transform is only read. Throws and is left without a
    /// processor when that is not possible.
    virtual void finalize(const Color::Transform* transform, PixelFormat in, PixelFormat out) = 0;

    /// Renders the region. The paddings are the bytes that a row holds beyond image width times pixel size. Neither the
    /// pointers nor the region are checked.
    virtual void apply(const void* source, void* destination, const ROI& roi, uint32_t sourcePadding,
                       uint32_t destinationPadding) const = 0;
};

using GenericRendererPtr = boost::shared_ptr<GenericRenderer>;
using GenericCPURendererPtr = boost::shared_ptr<GenericCPURenderer>;

/// Make the renderer of a RendererCode. The environment variable MORVANE_CPU_RENDERER or MORVANE_GPU_RENDERER, read at
/// each call, replaces the request when it is exactly CPU, OCIO, GPU or OCIO_GPU. A kind that the function does not
/// make throws 0x4010004; a negative or unknown request, and a kind that is not part of this build, gives null.
GenericCPURendererPtr createCPURenderer(int request);
GenericRendererPtr createGPURenderer(int request);

} // namespace Rendering
