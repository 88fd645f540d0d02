#include "renderer/pixelFormatAccess.h"

#include "renderer/packedPixel.h"
#include "renderer/plainPixel.h"
#include "utils/exception.h"

namespace Rendering {

namespace {

/// Picks the code for one row of the format table.
template <class Element, ChannelOrder order, bool packed>
struct Access
{
    static constexpr Unpacker unpack = &unpackPlain<Element, order>;
    static constexpr Packer pack = &packPlain<Element, order>;
};

template <ChannelOrder order>
struct Access<Element10i, order, true>
{
    static constexpr Unpacker unpack = &unpackPacked<order>;
    static constexpr Packer pack = &packPacked<order>;
};

} // namespace

const PixelFormatAccess& getPixelFormatAccess(PixelFormat format)
{
    switch (format) {
#define MORVANE_CASE(name, value, depth, order, channels, packed, bytes)                                               \
    case name: {                                                                                                       \
        using Code = Access<Element##depth, ChannelOrder::order, packed>;                                              \
        constexpr ChannelOrder channelOrder = ChannelOrder::order;                                                     \
        static constexpr PixelFormatAccess access = {name,   BIT_DEPTH_##depth, bytes,     channelOrder,               \
                                                     packed, Code::unpack,      Code::pack};                           \
        return access;                                                                                                 \
    }
        MORVANE_PIXEL_FORMATS(MORVANE_CASE)
#undef MORVANE_CASE
    case PF_UNKNOWN:
        break;
    }
    Color::raise(Color::LogCategory::UTILS_ALL, Color::ErrorIds::ILLEGAL_PIXEL_FORMAT);
}

} // namespace Rendering
