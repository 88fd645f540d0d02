#pragma once

#include "renderer/channelOrder.h"
#include "utils/publicTypes.h"

#include <cstdint>

namespace Rendering {

/// Reads width pixels into four floats each: red, green, blue, alpha, in the scale of the format's depth. An absent
/// alpha reads as the depth's maximum; the two bits of PF_RGBA_10iP read as 0 to 3.
using Unpacker = void (*)(const void* source, float* rgba, uint32_t width);

/// Writes width pixels of four floats each. Integers are rounded by adding 0.5, clamped and cut; halves are rounded to
/// nearest even. A format without alpha drops it; PF_RGBA_10iP keeps the low two bits of the clamped 10-bit value.
using Packer = void (*)(const float* rgba, void* destination, uint32_t width);

/// What the frame needs to know of a pixel format.
struct PixelFormatAccess
{
    PixelFormat format;
    BitDepth depth;
    uint32_t pixelSize;
    ChannelOrder order;
    bool isPacked;
    Unpacker unpack;
    Packer pack;
};

/// Throws 0x1010004 when the value is no pixel format.
const PixelFormatAccess& getPixelFormatAccess(PixelFormat format);

/// The depth field of a format's value, also of a value that is no format.
inline BitDepth getDepthOf(PixelFormat format) { return static_cast<BitDepth>(format & 0xff000); }

} // namespace Rendering
