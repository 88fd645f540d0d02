#pragma once

namespace Rendering {

/// The order of a pixel's channels in memory.
enum class ChannelOrder
{
    RGB,
    RGBA,
    BGR,
    BGRA,
    ABGR
};

constexpr bool hasAlpha(ChannelOrder order) { return order != ChannelOrder::RGB && order != ChannelOrder::BGR; }

/// Where the channel, 0 red, 1 green, 2 blue, 3 alpha, stands in the order.
constexpr int placeOf(ChannelOrder order, int channel)
{
    if (order == ChannelOrder::ABGR) return 3 - channel;
    if ((order == ChannelOrder::BGR || order == ChannelOrder::BGRA) && channel < 3) return 2 - channel;
    return channel;
}

} // namespace Rendering
