#include "renderer/CPUDitherOp.h"

#include "kernelProbe.h"

using namespace Rendering;
using Color::DitherOp;

namespace {

DitherOp makeOp(BitDepth in, BitDepth dither) { return DitherOp(in, in, dither); }

/// Number (row, column) of the Bayer matrix of 16 rows: the bits of the place, interleaved from the lowest on. For each
/// pair the base matrix 0, 2, 3, 1 gives the next two bits of the number, from the highest down.
uint32_t bayerNumber(uint32_t row, uint32_t column)
{
    constexpr uint32_t base[] = {0, 2, 3, 1};
    uint32_t number = 0;
    for (uint32_t bit = 0; bit < 4; ++bit) {
        number = number * 4 + base[(row >> bit & 1) * 2 + (column >> bit & 1)];
    }
    return number;
}

/// One pixel at its place in the image, straight from the definition.
Pixel dithered(const Pixel& in, uint32_t x, uint32_t y, float amplitude)
{
    const float d = ((static_cast<float>(bayerNumber(y % 16, x % 16)) + 0.5f) / 256.f - 0.5f) * amplitude;
    return {in[0] + d, in[1] + d, in[2] + d, in[3] + d};
}

Pixels renderAt(const VirtualRenderer& renderer, const Pixels& source, uint32_t x, uint32_t y)
{
    Pixels destination(source.size());
    renderer.render(
        {source.data()->data(), destination.data()->data(), static_cast<uint32_t>(source.size()), x, y, {}});
    return destination;
}

} // namespace

TEST(CPUDitherOp, thereIsAlwaysARenderer)
{
    for (const BitDepth dither : {BIT_DEPTH_8i, BIT_DEPTH_16i, BIT_DEPTH_32f}) {
        const auto renderer = makeDitherRenderer(makeOp(BIT_DEPTH_16i, dither));
        EXPECT_EQ(renderer->getType(), RENDERER_DITHER);
        EXPECT_EQ(renderer->getChannelUse(), ChannelUse::Mixed);
    }
}

TEST(CPUDitherOp, addsTheMatrixToAllChannelsBitForBit)
{
    const auto renderer = makeDitherRenderer(makeOp(BIT_DEPTH_32f, BIT_DEPTH_8i));
    const Pixels source = probePixels(1.f);
    for (const uint32_t y : {0u, 1u, 7u, 15u, 16u, 1079u}) {
        const Pixels apart = renderAt(*renderer, source, 3, y);
        Pixels inPlace = source;
        const auto width = static_cast<uint32_t>(source.size());
        renderer->render({inPlace.data()->data(), inPlace.data()->data(), width, 3, y, {}});
        for (uint32_t i = 0; i < width; ++i) {
            ASSERT_TRUE(samePixel(apart[i], dithered(source[i], 3 + i, y, 1.f / 255.f))) << "pixel " << i;
            ASSERT_TRUE(samePixel(inPlace[i], apart[i])) << "pixel " << i;
        }
    }
}

TEST(CPUDitherOp, theAmplitudeIsOneStepOfTheDitherDepth)
{
    const auto renderer = makeDitherRenderer(makeOp(BIT_DEPTH_16i, BIT_DEPTH_8i));
    const Pixels out = renderAt(*renderer, Pixels(16, Pixel{1000, 2000, 3000, 65535}), 0, 0);
    // Number 0 of the Bayer matrix: (0.5 / 256 - 0.5) * 257.
    EXPECT_TRUE(samePixel(out[0], {872.001953125f, 1872.001953125f, 2872.001953125f, 65407.f})) << textOf(out[0]);
    EXPECT_TRUE(samePixel(out[5], dithered({1000, 2000, 3000, 65535}, 5, 0, 257.f)));
}

TEST(CPUDitherOp, thePatternIsFixedToTheImage)
{
    const auto renderer = makeDitherRenderer(makeOp(BIT_DEPTH_32f, BIT_DEPTH_8i));
    const Pixels line(600, Pixel{0.5f, 0.5f, 0.5f, 1.f});
    for (const uint32_t y : {0u, 5u, 21u}) {
        const Pixels whole = renderAt(*renderer, line, 0, y);
        // A region, or a tile of a line, that begins anywhere.
        for (const uint32_t x : {1u, 15u, 16u, 17u, 255u, 256u, 512u}) {
            const Pixels part = renderAt(*renderer, Pixels(40, line[0]), x, y);
            for (uint32_t i = 0; i < 40; ++i) {
                ASSERT_TRUE(samePixel(part[i], whole[x + i])) << x << " " << i;
            }
        }
        const Pixels sixteenLower = renderAt(*renderer, line, 0, y + 16);
        EXPECT_EQ(sixteenLower, whole);
        EXPECT_NE(renderAt(*renderer, line, 0, y + 1), whole);
        EXPECT_NE(renderAt(*renderer, line, 1, y), whole);
    }
}

TEST(CPUDitherOp, thePatternGoesOnWhereThePlaceOverflows)
{
    const auto renderer = makeDitherRenderer(makeOp(BIT_DEPTH_32f, BIT_DEPTH_8i));
    const Pixel grey = {0.5f, 0.5f, 0.5f, 1.f};
    const Pixels out = renderAt(*renderer, Pixels(32, grey), 0xfffffff8, 0xffffffff);
    for (uint32_t i = 0; i < 32; ++i) {
        EXPECT_TRUE(samePixel(out[i], dithered(grey, 8 + i, 15, 1.f / 255.f))) << i;
    }
}

TEST(CPUDitherOp, copiesWhereNothingIsToBeDithered)
{
    const Pixels source = probePixels(1.f);
    const std::pair<BitDepth, BitDepth> pairs[] = {{BIT_DEPTH_8i, BIT_DEPTH_16i},
                                                   {BIT_DEPTH_8i, BIT_DEPTH_8i},
                                                   {BIT_DEPTH_32f, BIT_DEPTH_32f},
                                                   {BIT_DEPTH_32f, BIT_DEPTH_16f}};
    for (const auto& [in, dither] : pairs) {
        const auto renderer = makeDitherRenderer(makeOp(in, dither));
        expectSamePixels(*renderer, source, [](const Pixel& pixel) { return pixel; });
        const Pixels out = renderAt(*renderer, source, 5, 9);
        EXPECT_EQ(std::memcmp(out.data(), source.data(), source.size() * sizeof(Pixel)), 0);
    }
}

TEST(CPUDitherOp, theValuesStayInTheScaleOfTheInput)
{
    const auto renderer = makeDitherRenderer(DitherOp(BIT_DEPTH_8i, BIT_DEPTH_32f, BIT_DEPTH_16i));
    EXPECT_TRUE(samePixel(render(*renderer, Pixel{255, 128, 1, 0}), {255, 128, 1, 0}));
}

TEST(CPUDitherOp, theMatrixIsInTheScaleOfTheInputWhateverTheOutDepth)
{
    for (const BitDepth out : {BIT_DEPTH_8i, BIT_DEPTH_10i, BIT_DEPTH_16f, BIT_DEPTH_32f}) {
        const auto renderer = makeDitherRenderer(DitherOp(BIT_DEPTH_16i, out, BIT_DEPTH_8i));
        const Pixels pixels = renderAt(*renderer, Pixels(2, Pixel{1000, 2000, 3000, 65535}), 0, 0);
        // Numbers 0 and 128 of the Bayer matrix: (0.5 / 256 - 0.5) * 257 and (128.5 / 256 - 0.5) * 257.
        EXPECT_TRUE(samePixel(pixels[0], {872.001953125f, 1872.001953125f, 2872.001953125f, 65407.f}));
        EXPECT_TRUE(samePixel(pixels[1], {1000.501953125f, 2000.501953125f, 3000.501953125f, 65535.5f}));
    }
}

TEST(CPUDitherOp, noPixelsAreNoPixels)
{
    const Pixel source = {1, 2, 3, 4};
    Pixel destination = {7, 7, 7, 7};
    for (const BitDepth dither : {BIT_DEPTH_8i, BIT_DEPTH_16i}) {
        makeDitherRenderer(makeOp(BIT_DEPTH_16i, dither))->render({source.data(), destination.data(), 0, 0, 0, {}});
        EXPECT_EQ(destination, (Pixel{7, 7, 7, 7}));
    }
}
