#include "morvane/bitDepth.h"

#include "utils/text.h"

#include <string_view>

namespace Morvane_2015_1_42 {

namespace {

struct DepthRow
{
    BitDepth depth;
    const char* name;
    unsigned precision;
    float maxValue;
};

// clang-format off
constexpr DepthRow DEPTHS[] = {
    {BIT_DEPTH_8i,   "8i",   8,   255.0f},
    {BIT_DEPTH_10i, "10i",  10,  1023.0f},
    {BIT_DEPTH_12i, "12i",  12,  4095.0f},
    {BIT_DEPTH_16i, "16i",  16, 65535.0f},
    {BIT_DEPTH_16f, "16f",  16,     1.0f},
    {BIT_DEPTH_32f, "32f",  32,     1.0f},
};
// clang-format on

constexpr DepthRow UNKNOWN_DEPTH = {BIT_DEPTH_UNKNOWN, "Unknown", 0, 0.0f};

const DepthRow& rowOf(BitDepth depth)
{
    for (const DepthRow& row : DEPTHS)
        if (row.depth == depth) return row;
    return UNKNOWN_DEPTH;
}

} // namespace

const char* getBitDepthName(BitDepth depth) { return rowOf(depth).name; }

BitDepth getBitDepth(const char* name)
{
    const std::string_view wanted = Color::orEmpty(name);
    for (const DepthRow& row : DEPTHS)
        if (wanted == row.name) return row.depth;
    return BIT_DEPTH_UNKNOWN;
}

float getBitDepthMaxValue(BitDepth depth) { return rowOf(depth).maxValue; }

float getBitDepthMinValue(BitDepth) { return 0.0f; }

float getBitDepthValueRange(BitDepth depth) { return getBitDepthMaxValue(depth) - getBitDepthMinValue(depth); }

unsigned getBitDepthPrecision(BitDepth depth) { return rowOf(depth).precision; }

bool isFloatDepth(BitDepth depth) { return depth == BIT_DEPTH_16f || depth == BIT_DEPTH_32f; }

bool isIntegerDepth(BitDepth depth) { return depth != BIT_DEPTH_UNKNOWN && !isFloatDepth(depth); }

} // namespace Morvane_2015_1_42
