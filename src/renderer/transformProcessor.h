#pragma once

#include "renderer/virtualRenderer.h"
#include "utils/publicTypes.h"

#include <memory>
#include <vector>

namespace Rendering {

/// The renderers of a finalized transform in order, at least one.
using TransformProcessor = std::vector<std::unique_ptr<VirtualRenderer>>;

/// Rows of pixels in one format.
template <class Byte>
struct ImageRows
{
    Byte* firstPixel; ///< of the region
    uint32_t rowStep; ///< bytes from one row to the next
    PixelFormat format;
};

using SourceRows = ImageRows<const unsigned char>;
using DestinationRows = ImageRows<unsigned char>;

/// Runs the processor over the region, line by line on the calling thread. Throws 0x1010004 when a format is none,
/// before a pixel is touched.
void renderImage(const TransformProcessor& processor, const SourceRows& source, const DestinationRows& destination,
                 const ROI& roi);

} // namespace Rendering
