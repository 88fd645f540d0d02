#pragma once

/// \file
/// The twins of the ops that move a pixel between or within colour models, and of the dither pattern.

#include "tests/pixels/twinRenderer.h"

#include <optional>

namespace Twin {

/// Channel numbers of the greatest, the middle and the least colour value, as the library orders ties and NaNs.
std::array<size_t, 3> hueOrderOf(float r, float g, float b);

struct GamutMapOp : NormalizedOp
{
    enum Style
    {
        NONE,
        DW3
    };

    GamutMapOp(BitDepth in, BitDepth out, Style style);
    /// Nothing for the style NONE.
    std::optional<Renderer> makeRenderer() const;

    Style style;
};

struct HueVectorOp : NormalizedOp
{
    enum Style
    {
        YCH_FWD,
        YCH_REV
    };

    /// Center and width in degrees.
    HueVectorOp(BitDepth in, BitDepth out, Style style, double center, double width, double gain);
    std::optional<Renderer> makeRenderer() const;

    Style style;
    double center;
    double width;
    double gain;
};

struct FunctionOp : NormalizedOp
{
    enum Style
    {
        RGB_TO_HSV,
        HSV_TO_RGB
    };

    FunctionOp(BitDepth in, BitDepth out, Style style);
    std::optional<Renderer> makeRenderer() const;

    Style style;
};

struct DitherOp : NormalizedOp
{
    DitherOp(BitDepth in, BitDepth out, BitDepth ditherDepth);
    std::optional<Renderer> makeRenderer() const;

    BitDepth ditherDepth;
};

} // namespace Twin
