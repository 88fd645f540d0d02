#pragma once

#include "kernelProbe.h"
#include "scalarPow.h"

using namespace Morvane_2015_1_42;

/// Checks the kernel against expected(pixel) bit for bit: over wide values, in place, and for every short width.
template <class Expected>
void expectKernel(const Rendering::VirtualRenderer& renderer, float inputScale, Expected expected)
{
    const Pixels source = probePixels(inputScale);
    expectSamePixels(renderer, source, expected);

    const Pixels result = render(renderer, source);
    for (std::size_t width = 0; width < 20; ++width) {
        const Pixel untouched = {-7.f, -7.f, -7.f, -7.f};
        Pixels line(width + 1, untouched);
        renderer.render({source.data()->data(), line.data()->data(), static_cast<uint32_t>(width), 0, 0,
                         renderer.readDynamicValues()});
        EXPECT_EQ(std::memcmp(line.data(), result.data(), sizeof(Pixel) * width), 0) << "width " << width;
        EXPECT_EQ(line.back(), untouched) << "width " << width;
    }
}

/// Largest value of a depth.
inline float fullScaleOf(BitDepth depth)
{
    switch (depth) {
    case BIT_DEPTH_8i:
        return 255.f;
    case BIT_DEPTH_10i:
        return 1023.f;
    case BIT_DEPTH_12i:
        return 4095.f;
    case BIT_DEPTH_16i:
        return 65535.f;
    default:
        return 1.f;
    }
}

/// Input and output depths that scale up, down and not at all.
struct DepthPair
{
    BitDepth in, out;
};
constexpr DepthPair kDepthPairs[] = {{BIT_DEPTH_32f, BIT_DEPTH_32f},
                                     {BIT_DEPTH_8i, BIT_DEPTH_32f},
                                     {BIT_DEPTH_32f, BIT_DEPTH_16i},
                                     {BIT_DEPTH_10i, BIT_DEPTH_12i},
                                     {BIT_DEPTH_16f, BIT_DEPTH_8i}};
