#pragma once

#include <algorithm>
#include <cstdint>

namespace Rendering {

/// The channels of a pixel by size, as numbers: 0 red, 1 green, 2 blue.
struct HueOrder
{
    uint8_t max, mid, min;
};

/// Of equal channels the later one counts as the larger. Where red is above blue and green is a NaN there is no order:
/// all three are blue then, which leaves a hue without chroma.
inline HueOrder hueOrderOf(float red, float green, float blue)
{
    // A triple starts at each of 0, 1, 2, 4, 5, 6 and 8.
    constexpr uint8_t channels[] = {2, 1, 0, 2, 1, 2, 0, 1, 2, 2, 2};
    const int order = 4 * (green > blue) - 3 * (red > blue) + 5 * (red > green);
    // As an unsigned number -3, the one value for no order, is the largest.
    const unsigned start = std::min(static_cast<unsigned>(order), 8u);
    return {channels[start], channels[start + 1], channels[start + 2]};
}

} // namespace Rendering
