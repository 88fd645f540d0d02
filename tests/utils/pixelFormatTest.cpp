#include "morvane/pixelFormat.h"

#include <gtest/gtest.h>
#include <set>
#include <string>

namespace {

using namespace Morvane_2015_1_42;

struct FormatCase
{
    PixelFormat format;
    const char* name;
    uint32_t value;
    unsigned channels;
    unsigned bytes;
};

// clang-format off
constexpr FormatCase CASES[] = {
    {PF_RGB_8i,    "PF_RGB_8i",     0x1017, 3,  3},
    {PF_RGB_10i,   "PF_RGB_10i",    0x2017, 3,  6},
    {PF_RGB_10iP,  "PF_RGB_10iP",   0x2117, 3,  4},
    {PF_RGB_12i,   "PF_RGB_12i",    0x4017, 3,  6},
    {PF_RGB_16i,   "PF_RGB_16i",    0x8017, 3,  6},
    {PF_RGB_16f,   "PF_RGB_16f",   0x10017, 3,  6},
    {PF_RGB_32f,   "PF_RGB_32f",   0x20017, 3, 12},
    {PF_RGBA_8i,   "PF_RGBA_8i",    0x101f, 4,  4},
    {PF_RGBA_10i,  "PF_RGBA_10i",   0x201f, 4,  8},
    {PF_RGBA_10iP, "PF_RGBA_10iP",  0x211f, 4,  4},
    {PF_RGBA_12i,  "PF_RGBA_12i",   0x401f, 4,  8},
    {PF_RGBA_16i,  "PF_RGBA_16i",   0x801f, 4,  8},
    {PF_RGBA_16f,  "PF_RGBA_16f",  0x1001f, 4,  8},
    {PF_RGBA_32f,  "PF_RGBA_32f",  0x2001f, 4, 16},
    {PF_BGR_8i,    "PF_BGR_8i",     0x1027, 3,  3},
    {PF_BGR_10i,   "PF_BGR_10i",    0x2027, 3,  6},
    {PF_BGR_12i,   "PF_BGR_12i",    0x4027, 3,  6},
    {PF_BGR_16i,   "PF_BGR_16i",    0x8027, 3,  6},
    {PF_BGR_16f,   "PF_BGR_16f",   0x10027, 3,  6},
    {PF_BGR_32f,   "PF_BGR_32f",   0x20027, 3, 12},
    {PF_BGRA_8i,   "PF_BGRA_8i",    0x102f, 4,  4},
    {PF_BGRA_10i,  "PF_BGRA_10i",   0x202f, 4,  8},
    {PF_BGRA_12i,  "PF_BGRA_12i",   0x402f, 4,  8},
    {PF_BGRA_16i,  "PF_BGRA_16i",   0x802f, 4,  8},
    {PF_BGRA_16f,  "PF_BGRA_16f",  0x1002f, 4,  8},
    {PF_BGRA_32f,  "PF_BGRA_32f",  0x2002f, 4, 16},
    {PF_ABGR_8i,   "PF_ABGR_8i",    0x104f, 4,  4},
    {PF_ABGR_10i,  "PF_ABGR_10i",   0x204f, 4,  8},
    {PF_ABGR_12i,  "PF_ABGR_12i",   0x404f, 4,  8},
    {PF_ABGR_16i,  "PF_ABGR_16i",   0x804f, 4,  8},
    {PF_ABGR_16f,  "PF_ABGR_16f",  0x1004f, 4,  8},
    {PF_ABGR_32f,  "PF_ABGR_32f",  0x2004f, 4, 16},
};
// clang-format on

TEST(PixelFormat, everyFormatHasItsNumbers)
{
    for (const FormatCase& row : CASES) {
        EXPECT_EQ(row.format, row.value) << row.name;
        EXPECT_STREQ(pfToStr(row.format), row.name);
        EXPECT_EQ(strToPF(row.name), row.format) << row.name;
        EXPECT_EQ(getNumChannels(row.format), row.channels) << row.name;
        EXPECT_EQ(getPixelSizeInByte(row.format), row.bytes) << row.name;
    }
}

TEST(PixelFormat, thereAreNoOthers)
{
    std::set<uint32_t> named;
    for (uint32_t value = 0; value <= 0x7ffff; ++value) {
        const auto format = static_cast<PixelFormat>(value);
        if (std::string(pfToStr(format)) != "Unknown") named.insert(value);
    }
    std::set<uint32_t> expected;
    for (const FormatCase& row : CASES)
        expected.insert(row.value);
    EXPECT_EQ(expected.size(), 32u);
    EXPECT_EQ(named, expected);
}

TEST(PixelFormat, valueThatIsNoFormatIsUnknown)
{
    for (const uint32_t value : {0u, 0x1000u, 0x2127u, 0x212fu, 0x214fu, 0x1047u, 0xffffffffu}) {
        const auto format = static_cast<PixelFormat>(value);
        EXPECT_STREQ(pfToStr(format), "Unknown") << value;
        EXPECT_EQ(getNumChannels(format), 0u) << value;
        EXPECT_EQ(getPixelSizeInByte(format), 0u) << value;
    }
}

TEST(PixelFormat, namesCompareExactly)
{
    for (const char* name : {"pf_rgb_8i", "PF_RGB_8I", "RGB_8i", "PF_RGB_8i ", "PF_BGR_10iP", "Unknown", ""})
        EXPECT_EQ(strToPF(name), PF_UNKNOWN) << name;
    EXPECT_EQ(strToPF(nullptr), PF_UNKNOWN);
}

} // namespace
