#pragma once

#include "morvane/export.h"

#include <cstdint>

namespace Morvane_2015_1_42 {

/// What one channel value is. Single bits, so that a depth can be part of a PixelFormat.
enum BitDepth : uint32_t
{
    BIT_DEPTH_UNKNOWN = 0,
    BIT_DEPTH_8i = 0x1000,
    BIT_DEPTH_10i = 0x2000,
    BIT_DEPTH_12i = 0x4000,
    BIT_DEPTH_16i = 0x8000,
    BIT_DEPTH_16f = 0x10000, ///< IEEE 754 half
    BIT_DEPTH_32f = 0x20000,
};

/// "8i", "10i", "12i", "16i", "16f", "32f"; "Unknown" for any other value. A constant text.
MORVANE_API const char* getBitDepthName(BitDepth depth);

/// The depth of an exact, case-sensitive name; BIT_DEPTH_UNKNOWN for any other text and for null.
MORVANE_API BitDepth getBitDepth(const char* name);

/// Nominal maximum of a sample: 255, 1023, 4095, 65535, or 1 for the float depths. 0 for an unknown depth.
MORVANE_API float getBitDepthMaxValue(BitDepth depth);

/// Nominal minimum of a sample: 0 for every depth.
MORVANE_API float getBitDepthMinValue(BitDepth depth);

/// Maximum minus minimum. A sample v at depth a stands for v * range(b) / range(a) at depth b.
MORVANE_API float getBitDepthValueRange(BitDepth depth);

/// Bits of a sample: 8, 10, 12, 16, 16, 32. 0 for an unknown depth.
MORVANE_API unsigned getBitDepthPrecision(BitDepth depth);

/// True for the two float depths only.
MORVANE_API bool isFloatDepth(BitDepth depth);

/// False for BIT_DEPTH_UNKNOWN and the float depths, true for every other value, even one that is no depth.
MORVANE_API bool isIntegerDepth(BitDepth depth);

} // namespace Morvane_2015_1_42
