#include "renderer/pixelFormatAccess.h"
#include "utils/exception.h"

#include <array>
#include <gtest/gtest.h>

using namespace Rendering;

TEST(PixelFormatAccess, everyFormatHasItsRow)
{
#define MORVANE_CHECK(name, value, bitDepth, order, channels, packed, bytes)                                           \
    EXPECT_EQ(getPixelFormatAccess(name).format, name);                                                                \
    EXPECT_EQ(getPixelFormatAccess(name).depth, BIT_DEPTH_##bitDepth);                                                 \
    EXPECT_EQ(getPixelFormatAccess(name).pixelSize, uint32_t{bytes});                                                  \
    EXPECT_EQ(getDepthOf(name), BIT_DEPTH_##bitDepth);
    MORVANE_PIXEL_FORMATS(MORVANE_CHECK)
#undef MORVANE_CHECK
}

TEST(PixelFormatAccess, aValueThatIsNoFormatIsRefused)
{
    for (const uint32_t value : {0u, 0x1016u, 0x103fu, 0x2127u, 0xffffffffu}) {
        try {
            getPixelFormatAccess(static_cast<PixelFormat>(value));
            FAIL() << "no exception for " << value;
        } catch (const Color::Exception& exception) {
            EXPECT_EQ(exception.getId(), 0x1010004u);
            EXPECT_EQ(exception.getMessage(), "Illegal pixel format");
            EXPECT_NE(exception.getLogMessage().find("COLOR:UTILS:ALL: Illegal pixel format"), std::string::npos);
        }
    }
}

TEST(PixelFormatAccess, channelsAreFoundWhereTheOrderPutsThem)
{
    const std::array<uint8_t, 4> bytes = {10, 20, 30, 40};
    std::array<float, 4> rgba;
    getPixelFormatAccess(PF_RGBA_8i).unpack(bytes.data(), rgba.data(), 1);
    EXPECT_EQ(rgba, (std::array<float, 4>{10, 20, 30, 40}));
    getPixelFormatAccess(PF_BGRA_8i).unpack(bytes.data(), rgba.data(), 1);
    EXPECT_EQ(rgba, (std::array<float, 4>{30, 20, 10, 40}));
    getPixelFormatAccess(PF_ABGR_8i).unpack(bytes.data(), rgba.data(), 1);
    EXPECT_EQ(rgba, (std::array<float, 4>{40, 30, 20, 10}));
    getPixelFormatAccess(PF_RGB_8i).unpack(bytes.data(), rgba.data(), 1);
    EXPECT_EQ(rgba, (std::array<float, 4>{10, 20, 30, 255}));
    getPixelFormatAccess(PF_BGR_8i).unpack(bytes.data(), rgba.data(), 1);
    EXPECT_EQ(rgba, (std::array<float, 4>{30, 20, 10, 255}));
}
