#include "renderer/codeTable.h"
#include "renderer/pixelFormatAccess.h"
#include "renderer/pixelRenderer.h"
#include "transform/matrixOp.h"

#include <cstring>
#include <gtest/gtest.h>
#include <vector>

using namespace Rendering;

namespace {

/// Another line for each channel, so that a channel in the wrong place shows.
struct Lines
{
    V4f slope, offset;

    V4f operator()(V4f in) const { return in * slope + offset; }
};

template <ChannelUse use>
using LinesRenderer = PixelRenderer<Lines, RENDERER_SCALE_WITH_OFFSET, use>;

enum class Bypass
{
    Static,
    Dynamic
};

template <ChannelUse use>
std::unique_ptr<VirtualRenderer> makeLines(float factor, Bypass bypass = Bypass::Static)
{
    Color::MatrixOp op(BIT_DEPTH_32f, BIT_DEPTH_32f);
    if (bypass == Bypass::Dynamic) op.getBypass()->makeDynamic();
    const V4f slope(0.5f * factor, -0.25f * factor, 0.75f * factor, 0.9f * factor);
    return std::make_unique<LinesRenderer<use>>(op, Lines{slope, V4f(0.1f, 0.3f, -0.2f, 0.01f)});
}

TransformProcessor slowProcessor(float factor = 1.f)
{
    TransformProcessor processor;
    processor.push_back(makeLines<ChannelUse::ApartAndSlow>(factor));
    return processor;
}

std::vector<PixelFormat> allFormats()
{
    return {
#define MORVANE_VALUE(name, value, depth, order, channels, packed, bytes) name,
        MORVANE_PIXEL_FORMATS(MORVANE_VALUE)
#undef MORVANE_VALUE
    };
}

/// Pixels with every code of the format in every channel, no channel with the code of another one.
std::vector<unsigned char> makeRamp(const PixelFormatAccess& format, uint32_t& width)
{
    const std::size_t elementSize = format.depth == BIT_DEPTH_8i ? 1 : 2;
    width = elementSize == 1 ? 256 : 65536;
    const std::size_t channels = format.pixelSize / elementSize;
    std::vector<unsigned char> pixels(width * format.pixelSize);
    for (std::size_t i = 0; i < width * channels; ++i) {
        const auto code = static_cast<uint16_t>(i / channels + (i % channels) * (width / 5));
        std::memcpy(pixels.data() + i * elementSize, &code, elementSize);
    }
    return pixels;
}

} // namespace

TEST(codeTable, givesTheBitsOfTheKernelsForEveryCodeInEveryPairOfFormats)
{
    std::size_t pairs = 0;
    for (const PixelFormat in : allFormats()) {
        for (const PixelFormat out : allFormats()) {
            const PixelFormatAccess& source = getPixelFormatAccess(in);
            const PixelFormatAccess& destination = getPixelFormatAccess(out);
            const TransformProcessor processor =
                slowProcessor(getBitDepthMaxValue(destination.depth) / getBitDepthMaxValue(source.depth));
            const auto table = makeCodeTable(processor, in, out);
            if (!table) continue;
            ++pairs;
            uint32_t width = 0;
            const std::vector<unsigned char> pixels = makeRamp(source, width);
            std::vector<unsigned char> expected(std::size_t{width} * destination.pixelSize);
            std::vector<unsigned char> result(expected.size());
            const ROI roi(0, 0, width, 1);
            renderImage(processor, {pixels.data(), 0, in}, {expected.data(), 0, out}, roi);
            renderImage(*table, {pixels.data(), 0, in}, {result.data(), 0, out}, roi);
            ASSERT_TRUE(result == expected) << pfToStr(in) << " to " << pfToStr(out);
        }
    }
    // 5 layouts of 8i to 30 formats, of 4 depths of 16 bits to 25.
    EXPECT_EQ(pairs, 5U * 30U + 20U * 25U);
}

TEST(codeTable, rendersAnImageInPlace)
{
    const TransformProcessor processor = slowProcessor();
    const auto table = makeCodeTable(processor, PF_RGBA_16i, PF_ABGR_16i);
    uint32_t width = 0;
    std::vector<unsigned char> pixels = makeRamp(getPixelFormatAccess(PF_RGBA_16i), width);
    std::vector<unsigned char> expected(pixels.size());
    const ROI roi(0, 0, 256, width / 256);
    renderImage(*table, {pixels.data(), 256 * 8, PF_RGBA_16i}, {expected.data(), 256 * 8, PF_ABGR_16i}, roi);
    renderImage(*table, {pixels.data(), 256 * 8, PF_RGBA_16i}, {pixels.data(), 256 * 8, PF_ABGR_16i}, roi);
    EXPECT_TRUE(pixels == expected);
}

TEST(codeTable, leavesTheBytesBetweenRowsUntouched)
{
    const auto table = makeCodeTable(slowProcessor(), PF_RGB_8i, PF_RGBA_8i);
    const std::vector<unsigned char> source(2 * 9, 100);
    std::vector<unsigned char> destination(2 * 12, 7);
    renderImage(*table, {source.data(), 9, PF_RGB_8i}, {destination.data(), 12, PF_RGBA_8i}, ROI(0, 0, 2, 2, 3, 2));
    for (const std::size_t place : {8U, 9U, 10U, 11U, 20U, 21U, 22U, 23U}) {
        EXPECT_EQ(destination[place], 7) << place;
    }
    EXPECT_NE(destination[12], 7);
}

TEST(codeTable, isNotMadeWhereTheFormatsGiveNoCodes)
{
    const TransformProcessor processor = slowProcessor();
    EXPECT_EQ(makeCodeTable(processor, PF_RGBA_32f, PF_RGBA_8i), nullptr);
    EXPECT_EQ(makeCodeTable(processor, PF_RGBA_10iP, PF_RGBA_8i), nullptr);
    EXPECT_EQ(makeCodeTable(processor, PF_RGBA_8i, PF_RGB_10iP), nullptr);
    EXPECT_EQ(makeCodeTable(processor, PF_RGBA_16f, PF_RGBA_32f), nullptr);
}

TEST(codeTable, isNotMadeForChannelsThatMeet)
{
    TransformProcessor processor = slowProcessor();
    processor.push_back(makeLines<ChannelUse::Mixed>(1.f));
    EXPECT_EQ(makeCodeTable(processor, PF_RGBA_8i, PF_RGBA_8i), nullptr);
}

TEST(codeTable, isNotMadeForValuesThatMayChange)
{
    TransformProcessor processor = slowProcessor();
    processor.push_back(makeLines<ChannelUse::Apart>(1.f, Bypass::Dynamic));
    EXPECT_EQ(makeCodeTable(processor, PF_RGBA_8i, PF_RGBA_8i), nullptr);
}

TEST(codeTable, isMadeOnlyWhereAKernelIsSlow)
{
    TransformProcessor processor;
    processor.push_back(makeLines<ChannelUse::Apart>(1.f));
    EXPECT_EQ(makeCodeTable(processor, PF_RGBA_8i, PF_RGBA_8i), nullptr);
    processor.push_back(makeLines<ChannelUse::ApartAndSlow>(1.f));
    EXPECT_NE(makeCodeTable(processor, PF_RGBA_8i, PF_RGBA_8i), nullptr);
}
