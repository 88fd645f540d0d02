#pragma once

#include "renderer/simd.h"
#include "renderer/virtualRenderer.h"

#include <cstring>

namespace Rendering {

/// Four neighbouring pixels, one register per channel.
struct FourPixels
{
    V4f red, green, blue, alpha;
};

/// Exchanges rows and columns: four pixels to four channels, and back.
inline FourPixels transposed(V4f a, V4f b, V4f c, V4f d)
{
    _MM_TRANSPOSE4_PS(a.v, b.v, c.v, d.v);
    return {a, b, c, d};
}

inline FourPixels loadFourPixels(const float* rgba)
{
    return transposed(load(rgba), load(rgba + 4), load(rgba + 8), load(rgba + 12));
}

inline void storeFourPixels(float* rgba, const FourPixels& pixels)
{
    const FourPixels rows = transposed(pixels.red, pixels.green, pixels.blue, pixels.alpha);
    store(rgba, rows.red);
    store(rgba + 4, rows.green);
    store(rgba + 8, rows.blue);
    store(rgba + 12, rows.alpha);
}

/// The loop for a formula from four pixels to their four results. The formula is copied so that its parameters stay in
/// registers. Pixels that are left over at the end are worked on in a copy.
template <class Formula>
void renderFourPixels(const PixelRun& run, const Formula formula)
{
    const float* source = run.source;
    float* destination = run.destination;
    uint32_t left = run.width;
    for (; left >= 4; left -= 4, source += 16, destination += 16) {
        storeFourPixels(destination, formula(loadFourPixels(source)));
    }
    if (left > 0) {
        float rest[16] = {};
        std::memcpy(rest, source, left * 4 * sizeof(float));
        storeFourPixels(rest, formula(loadFourPixels(rest)));
        std::memcpy(destination, rest, left * 4 * sizeof(float));
    }
}

} // namespace Rendering
