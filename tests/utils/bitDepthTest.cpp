#include "morvane/bitDepth.h"

#include <gtest/gtest.h>

namespace {

using namespace Morvane_2015_1_42;

struct DepthCase
{
    uint32_t value;
    const char* name;
    unsigned precision;
    float maxValue;
    bool isFloat;
};

// clang-format off
constexpr DepthCase CASES[] = {
    { 0x1000,  "8i",  8,   255.0f, false},
    { 0x2000, "10i", 10,  1023.0f, false},
    { 0x4000, "12i", 12,  4095.0f, false},
    { 0x8000, "16i", 16, 65535.0f, false},
    {0x10000, "16f", 16,     1.0f, true},
    {0x20000, "32f", 32,     1.0f, true},
};
// clang-format on

TEST(BitDepth, everyDepthHasItsNumbers)
{
    for (const DepthCase& row : CASES) {
        const auto depth = static_cast<BitDepth>(row.value);
        EXPECT_STREQ(getBitDepthName(depth), row.name);
        EXPECT_EQ(getBitDepth(row.name), depth) << row.name;
        EXPECT_EQ(getBitDepthPrecision(depth), row.precision) << row.name;
        EXPECT_EQ(getBitDepthMaxValue(depth), row.maxValue) << row.name;
        EXPECT_EQ(getBitDepthMinValue(depth), 0.0f) << row.name;
        EXPECT_EQ(getBitDepthValueRange(depth), row.maxValue) << row.name;
        EXPECT_EQ(isFloatDepth(depth), row.isFloat) << row.name;
        EXPECT_EQ(isIntegerDepth(depth), !row.isFloat) << row.name;
    }
}

TEST(BitDepth, unknownDepthIsNeitherFloatNorInteger)
{
    EXPECT_STREQ(getBitDepthName(BIT_DEPTH_UNKNOWN), "Unknown");
    EXPECT_EQ(getBitDepthPrecision(BIT_DEPTH_UNKNOWN), 0u);
    EXPECT_EQ(getBitDepthMaxValue(BIT_DEPTH_UNKNOWN), 0.0f);
    EXPECT_EQ(getBitDepthMinValue(BIT_DEPTH_UNKNOWN), 0.0f);
    EXPECT_EQ(getBitDepthValueRange(BIT_DEPTH_UNKNOWN), 0.0f);
    EXPECT_FALSE(isFloatDepth(BIT_DEPTH_UNKNOWN));
    EXPECT_FALSE(isIntegerDepth(BIT_DEPTH_UNKNOWN));
}

TEST(BitDepth, valueThatIsNoDepthCountsAsInteger)
{
    const auto twoBits = static_cast<BitDepth>(0x3000);
    EXPECT_STREQ(getBitDepthName(twoBits), "Unknown");
    EXPECT_EQ(getBitDepthPrecision(twoBits), 0u);
    EXPECT_EQ(getBitDepthMaxValue(twoBits), 0.0f);
    EXPECT_FALSE(isFloatDepth(twoBits));
    EXPECT_TRUE(isIntegerDepth(twoBits));
    EXPECT_FALSE(isFloatDepth(static_cast<BitDepth>(0x30000)));
    EXPECT_TRUE(isIntegerDepth(static_cast<BitDepth>(0x30000)));
}

TEST(BitDepth, namesCompareExactly)
{
    for (const char* name : {"8I", "32F", " 8i", "8i ", "8", "Unknown", ""})
        EXPECT_EQ(getBitDepth(name), BIT_DEPTH_UNKNOWN) << name;
    EXPECT_EQ(getBitDepth(nullptr), BIT_DEPTH_UNKNOWN);
}

} // namespace
