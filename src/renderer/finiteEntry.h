#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

namespace Rendering {

/// A table entry for interpolation: infinities become the largest numbers, a NaN 0.
inline float finiteEntry(float value)
{
    constexpr float largest = std::numeric_limits<float>::max();
    return std::isnan(value) ? 0.f : std::clamp(value, -largest, largest);
}

} // namespace Rendering
