#pragma once

#include "utils/publicTypes.h"

#include <cstdint>
#include <istream>
#include <string>
#include <vector>

namespace Color {

/// What stands in a Halvorn 1D LUT.
struct Halvorn1DTable
{
    uint32_t tables = 0; ///< 1, 3 or 4
    uint32_t length = 0; ///< of each
    // Unknown for a length that is none of the usual ones.
    BitDepth inDepth = BIT_DEPTH_UNKNOWN;
    BitDepth outDepth = BIT_DEPTH_UNKNOWN;
    std::vector<uint16_t> values; ///< table by table; the bits of halfs where outDepth is 16f
};

/// Throws 0x3090002. The file name is for messages, and for the output depth where the header does not tell it.
Halvorn1DTable parseHalvorn1DTable(std::istream& stream, const std::string& fileName);

} // namespace Color
