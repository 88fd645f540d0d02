#pragma once

#include "renderer/rendererType.h"
#include "transform/logOp.h"

namespace Rendering {

/// log10(2): brings a base-2 logarithm to base 10.
constexpr float kLog10Of2 = 0.30103001f;
/// log2(10): brings a base-10 exponent to base 2.
constexpr float kLog2Of10 = 3.321928f;

/// One colour channel of the curve between film densities and light, in normalized values:
/// light = 10 ^ ((density - refWhite) * densityFactor) * gain - offset + shadow.
struct LogChannel
{
    float refWhite;
    float densityFactor;
    float gain;
    float offset;
    float shadow;
};

/// Throws 0x20b0002 unless there are five parameters.
LogChannel makeLogChannel(const Color::LogOp::Params& params);

/// Throws 0x4020004 when the style is not one that a renderer of this type works out.
void checkLogStyle(Color::LogOp::Style style, RendererType type);

} // namespace Rendering
