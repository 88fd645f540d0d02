#include "tests/api/hostTools.h"

#include <cstdint>
#include <cstring>
#include <limits>
#include <thread>

using namespace Morvane;

namespace {

/// An image with padded rows in which every byte starts with one value.
class Image
{
public:
    Image(PixelFormat format, uint32_t width, uint32_t height, uint32_t padding, uint8_t fill)
        : m_pixelSize(getPixelSizeInByte(format)), m_stride(width * m_pixelSize + padding),
          m_bytes(std::size_t(m_stride) * height, fill)
    {}

    uint32_t stride() const { return m_stride; }
    uint8_t* data() { return m_bytes.data(); }
    uint8_t* pixel(uint32_t x, uint32_t y) { return &m_bytes[std::size_t(y) * m_stride + x * m_pixelSize]; }
    const std::vector<uint8_t>& bytes() const { return m_bytes; }

private:
    uint32_t m_pixelSize;
    uint32_t m_stride;
    std::vector<uint8_t> m_bytes;
};

const uint32_t kWidth = 7;
const uint32_t kHeight = 5;

/// A value of its own for each byte of an image.
void fillDistinct(Image& image)
{
    for (uint32_t y = 0; y < kHeight; ++y) {
        for (uint32_t x = 0; x < kWidth; ++x) {
            for (uint32_t c = 0; c < 3; ++c)
                image.pixel(x, y)[c] = uint8_t(x + 10 * y + 50 * c);
        }
    }
}

} // namespace

TEST(apply, touchesTheRegionAlone)
{
    const TransformPtr transform = makeScale({1, 1, 1, 1});
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGB_8i, PF_BGRA_16i)));
    Image source(PF_RGB_8i, kWidth, kHeight, 5, 0xee);
    fillDistinct(source);
    const std::vector<uint8_t> sourceBefore = source.bytes();
    Image destination(PF_BGRA_16i, kWidth, kHeight, 6, 0xcd);
    Image expected = destination;
    const uint32_t left = 2, top = 1, width = 3, height = 3;
    for (uint32_t y = top; y < top + height; ++y) {
        for (uint32_t x = left; x < left + width; ++x) {
            // 257 is 65535 / 255.
            const uint16_t bgra[4] = {uint16_t((x + 10 * y + 100) * 257), uint16_t((x + 10 * y + 50) * 257),
                                      uint16_t((x + 10 * y) * 257), 65535};
            std::memcpy(expected.pixel(x, y), bgra, sizeof bgra);
        }
    }
    ASSERT_TRUE(
        succeeds(transform->apply(source.data(), source.stride(), ROI(left, top, width, height, kWidth, kHeight),
                                  destination.data(), destination.stride())));
    EXPECT_EQ(destination.bytes(), expected.bytes());
    EXPECT_EQ(source.bytes(), sourceBefore);
}

TEST(apply, withoutStridesTakesTightRowsOfTheImageWidth)
{
    const TransformPtr transform = makeScale({1, 1, 1, 1});
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGB_8i, PF_BGR_8i)));
    Image source(PF_RGB_8i, kWidth, kHeight, 0, 0);
    fillDistinct(source);
    Image destination(PF_BGR_8i, kWidth, kHeight, 0, 0xcd);
    Image expected = destination;
    for (uint32_t y = 3; y < 5; ++y) {
        for (uint32_t x = 4; x < 7; ++x) {
            for (uint32_t c = 0; c < 3; ++c)
                expected.pixel(x, y)[2 - c] = uint8_t(x + 10 * y + 50 * c);
        }
    }
    ASSERT_TRUE(succeeds(transform->apply(source.data(), ROI(4, 3, 3, 2, kWidth, kHeight), destination.data())));
    EXPECT_EQ(destination.bytes(), expected.bytes());
}

TEST(apply, takesOnlyEverySecondRowWithADoubledStride)
{
    const TransformPtr transform = makeScale({2, 2, 2, 1});
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    const float source[16] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    std::array<float, 8> destination{};
    ASSERT_TRUE(succeeds(transform->apply(source, 32, ROI(0, 0, 1, 2), destination.data(), 16)));
    EXPECT_EQ(destination, (std::array<float, 8>{2, 4, 6, 4, 18, 20, 22, 12}));
}

// Padding is unsigned: a negative one wraps, and the start of the next row comes out right all the same.
TEST(apply, takesStridesBelowTheRowSize)
{
    const TransformPtr transform = makeScale({2, 2, 2, 1});
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    const float source[12] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    using Image2x2 = std::array<float, 16>;
    Image2x2 destination{};
    // Rows of two pixels that begin one pixel apart.
    ASSERT_TRUE(succeeds(transform->apply(source, 16, ROI(0, 0, 2, 2), destination.data(), 32)));
    EXPECT_EQ(destination, (Image2x2{2, 4, 6, 4, 10, 12, 14, 8, 10, 12, 14, 8, 18, 20, 22, 12}));
    // The same row again and again.
    ASSERT_TRUE(succeeds(transform->apply(source, 0, ROI(0, 0, 2, 2), destination.data(), 32)));
    EXPECT_EQ(destination, (Image2x2{2, 4, 6, 4, 10, 12, 14, 8, 2, 4, 6, 4, 10, 12, 14, 8}));
    // The second row of the result is written over the first one but for its first pixel.
    destination.fill(7);
    ASSERT_TRUE(succeeds(transform->apply(source, 16, ROI(0, 0, 2, 2), destination.data(), 16)));
    EXPECT_EQ(destination, (Image2x2{2, 4, 6, 4, 10, 12, 14, 8, 18, 20, 22, 12, 7, 7, 7, 7}));
}

TEST(apply, worksInPlace)
{
    const TransformPtr transform = makeScale({2, 3, 4, 1}, {0, 0, 1, 0});
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    std::array<float, 8> pixels = {1, 2, 3, 4, 5, 6, 7, 8};
    ASSERT_TRUE(succeeds(transform->apply(pixels.data(), ROI(0, 0, 2, 1), pixels.data())));
    EXPECT_EQ(pixels, (std::array<float, 8>{2, 6, 13, 4, 10, 18, 29, 8}));
}

TEST(apply, emptyRegionTouchesNothing)
{
    const TransformPtr transform = makeScale({2, 2, 2, 1});
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    const float source[4] = {1, 1, 1, 1};
    float destination[4] = {7, 7, 7, 7};
    EXPECT_TRUE(succeeds(transform->apply(source, ROI(0, 0, 0, 1, 1, 1), destination)));
    EXPECT_TRUE(succeeds(transform->apply(source, ROI(0, 0, 1, 0, 1, 1), destination)));
    EXPECT_TRUE(succeeds(transform->apply(source, ROI(1, 1, 0, 0, 1, 1), destination)));
    EXPECT_TRUE(succeeds(transform->apply(source, ROI(0, 0, 0, 0), destination)));
    for (const float value : destination)
        EXPECT_EQ(value, 7.f);
}

TEST(apply, regionOutsideTheImageFailsBeforeAnyPixelIsTouched)
{
    const uint32_t most = std::numeric_limits<uint32_t>::max();
    struct Case
    {
        ROI region;
        const char* message;
    };
    const Case cases[] = {
        {ROI(0, 0, 4, 2, 3, 2), "Mismatch between 'active width' and '0' for ROI"},
        {ROI(0, 0, 3, 3, 3, 2), "Mismatch between 'active height' and '0' for ROI"},
        {ROI(0, 0, 4, 3, 3, 2), "Mismatch between 'active width' and '0' for ROI"},
        {ROI(1, 0, 3, 2, 3, 2), "Mismatch between 'x plus active width' and '3' for ROI"},
        {ROI(0, 1, 3, 2, 3, 2), "Mismatch between 'y plus active height' and '2' for ROI"},
        {ROI(1, 1, 3, 2, 3, 2), "Mismatch between 'x plus active width' and '3' for ROI"},
        {ROI(4, 0, 0, 0, 3, 2), "Mismatch between 'x plus active width' and '3' for ROI"},
        {ROI(0, 3, 0, 0, 3, 2), "Mismatch between 'y plus active height' and '2' for ROI"},
        // Sums that wrap around to a small number in 32 bits.
        {ROI(most, 0, 2, 1, 3, 2), "Mismatch between 'x plus active width' and '3' for ROI"},
        {ROI(0, most, 1, 2, 3, 2), "Mismatch between 'y plus active height' and '2' for ROI"},
        {ROI(0, 0, most, 1, 3, 2), "Mismatch between 'active width' and '0' for ROI"},
    };
    const TransformPtr transform = makeScale({2, 2, 2, 1});
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_8i, PF_RGBA_8i)));
    const std::vector<uint8_t> source(3 * 2 * 4, 1);
    const std::vector<uint8_t> before(source.size(), 9);
    for (const Case& entry : cases) {
        std::vector<uint8_t> destination = before;
        EXPECT_TRUE(
            failsWith(transform->apply(source.data(), entry.region, destination.data()), 0x1010001, entry.message));
        EXPECT_TRUE(failsWith(transform->apply(source.data(), 12, entry.region, destination.data(), 12), 0x1010001,
                              entry.message));
        EXPECT_EQ(destination, before);
    }
}

TEST(apply, nullImagesFail)
{
    const TransformPtr transform = makeScale({2, 2, 2, 1});
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    float pixel[4] = {1, 1, 1, 1};
    const ROI region(0, 0, 1, 1);
    EXPECT_TRUE(failsWith(transform->apply(nullptr, region, pixel), 0x4010001, "Image null"));
    EXPECT_TRUE(failsWith(transform->apply(pixel, region, nullptr), 0x4010001, "Image null"));
    EXPECT_TRUE(failsWith(transform->apply(nullptr, 16, region, pixel, 16), 0x4010001, "Image null"));
    EXPECT_TRUE(failsWith(transform->apply(pixel, 16, region, nullptr, 16), 0x4010001, "Image null"));
    EXPECT_EQ(pixel[0], 1.f);
}

TEST(apply, checksRendererThenImagesThenRegion)
{
    const TransformPtr transform = makeScale({2, 2, 2, 1});
    const ROI outside(0, 0, 2, 1, 1, 1);
    EXPECT_TRUE(failsWith(transform->apply(nullptr, outside, nullptr), 0x6010001, "No 'CPU' renderer available"));
    EXPECT_TRUE(failsWith(transform->apply(nullptr, 0, outside, nullptr, 0), 0x6010001, "No 'CPU' renderer available"));
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_TRUE(failsWith(transform->apply(nullptr, outside, nullptr), 0x4010001, "Image null"));
}

TEST(apply, severalThreadsRenderTheirOwnRegions)
{
    const uint32_t width = 97, height = 64, threadCount = 4;
    const TransformPtr transform = makeScale({2, 0.5f, 1, 1}, {0, 0, 0.25f, 0});
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    std::vector<float> source(width * height * 4);
    for (std::size_t i = 0; i < source.size(); ++i)
        source[i] = float(i % 1021) / 512.f;
    std::vector<float> destination(source.size(), -1.f);
    std::vector<std::thread> threads;
    for (uint32_t i = 0; i < threadCount; ++i) {
        threads.emplace_back([&, i] {
            const uint32_t rows = height / threadCount;
            EXPECT_TRUE(succeeds(
                transform->apply(source.data(), ROI(0, i * rows, width, rows, width, height), destination.data())));
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    for (std::size_t i = 0; i < source.size(); i += 4) {
        ASSERT_EQ(destination[i], source[i] * 2.f);
        ASSERT_EQ(destination[i + 1], source[i + 1] * 0.5f);
        ASSERT_EQ(destination[i + 2], source[i + 2] + 0.25f);
        ASSERT_EQ(destination[i + 3], source[i + 3]);
    }
}
