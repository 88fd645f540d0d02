#pragma once

#include "transform/op.h"

namespace Rendering {

/// What brings a value of the op's in depth to its out depth: the quotient of their maxima.
inline float depthFactorOf(const Color::Op& op)
{
    return getBitDepthMaxValue(op.getOutBitDepth()) / getBitDepthMaxValue(op.getInBitDepth());
}

/// What brings a value of the op's in depth to between 0 and 1; divided in double.
inline float inverseInputMaxOf(const Color::Op& op)
{
    return static_cast<float>(1.0 / getBitDepthMaxValue(op.getInBitDepth()));
}

} // namespace Rendering
