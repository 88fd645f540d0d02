#pragma once

#include <cstdint>

namespace Morvane_2015_1_42 {

/// How the half-float format takes part in a 1D LUT.
enum HalfFlags : uint32_t
{
    HALF_FLAGS_NONE = 0,
    /// The table is addressed by the 16 bits of a half-float input value and has 65536 entries.
    HALF_FLAGS_HALF_DOMAIN = 1,
    /// Files hold the values as the 16-bit patterns of half floats. In memory the values are plain numbers.
    HALF_FLAGS_RAW_HALFS = 2,
    HALF_FLAGS_HALF_DOMAIN_RAW_HALFS = 3,
};

} // namespace Morvane_2015_1_42
