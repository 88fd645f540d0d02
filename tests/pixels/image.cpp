#include "tests/pixels/image.h"

#include <cmath>
#include <cstdio>

namespace PixelTest {

using namespace Morvane_2015_1_42;

namespace {

constexpr size_t MARGIN = 64;
constexpr uint8_t POISON = 0xA5;

} // namespace

Image::Image(PixelFormat format, const ROI& roi, Placing placing)
    : m_format(format), m_layout(format), m_roi(roi),
      m_stride(roi.getImageWidth() * m_layout.pixelSize + placing.rowPadding), m_start(MARGIN + placing.shift),
      m_bytes(m_start + size_t{m_stride} * roi.getImageHeight() + MARGIN, POISON)
{}

size_t Image::lineOffset(unsigned y) const
{
    return size_t{m_stride} * (m_roi.getY() + y) + size_t{m_layout.pixelSize} * m_roi.getX();
}

namespace {

float randomFloat(Random& random)
{
    static const std::array<float, 12> special = {0.0F,  -0.0F, 1.0F,   0.5F,   65504.0F, 65520.0F,
                                                  1e-8F, 6e-8F, 1e-40F, -1e38F, INFINITY, NAN};
    const uint32_t bits = static_cast<uint32_t>(random());
    const float unit = static_cast<float>(bits >> 8) * 0x1p-24F;
    switch (random() % 8) {
    case 0:
    case 1:
    case 2:
        return unit;
    case 3:
    case 4:
        return unit * 3 - 1;
    case 5:
        return (unit - 0.5F) * 70000;
    case 6:
        return special[bits % special.size()];
    default:
        return Twin::bitCast<float>(bits); // any exponent, any kind
    }
}

void putRandom(const Twin::Layout& layout, uint8_t* element, Random& random)
{
    uint32_t bits = static_cast<uint32_t>(random());
    if (layout.depth == BIT_DEPTH_32f) {
        bits = Twin::bitCast<uint32_t>(randomFloat(random));
    } else if (layout.depth == BIT_DEPTH_16f) {
        if (bits & 1)
            bits = Twin::halfBitsOf(randomFloat(random));
        else
            bits >>= 16;
    } else if (!layout.isPacked) {
        const uint32_t max = static_cast<uint32_t>(Twin::maxOf(layout.depth));
        const bool isNominal = (bits & 3) != 0;
        bits >>= 8;
        if (isNominal) bits &= max;
    }
    std::memcpy(element, &bits, layout.elementSize); // the low bytes: samples are little-endian, as the platform
}

} // namespace

void fillRandom(Image& image, Random& random)
{
    const Twin::Layout& layout = image.layout();
    const size_t lineSize = size_t{image.roi().getActiveWidth()} * layout.pixelSize;
    for (unsigned y = 0; y < image.roi().getActiveHeight(); ++y)
        for (size_t i = 0; i < lineSize; i += layout.elementSize)
            putRandom(layout, image.line(y) + i, random);
}

namespace {

uint32_t elementBits(const Twin::Layout& layout, const uint8_t* element)
{
    uint32_t bits = 0;
    std::memcpy(&bits, element, layout.elementSize);
    return bits;
}

bool isNan(const Twin::Layout& layout, uint32_t bits)
{
    if (layout.depth == BIT_DEPTH_32f) return (bits & 0x7fffffffU) > 0x7f800000U;
    if (layout.depth == BIT_DEPTH_16f) return (bits & 0x7fffU) > 0x7c00U;
    return false;
}

std::string describe(PixelFormat format, unsigned y, size_t element, uint32_t expected, uint32_t actual)
{
    const Twin::Layout layout(format);
    const size_t perPixel = layout.pixelSize / layout.elementSize;
    char text[200];
    std::snprintf(text, sizeof text, "%s line %u pixel %zu element %zu: expected 0x%x, got 0x%x", pfToStr(format), y,
                  element / perPixel, element % perPixel, expected, actual);
    return text;
}

} // namespace

std::string difference(const Image& expected, const Image& actual, Twin::Nans nans)
{
    if (expected.bytes() == actual.bytes()) return {};

    const Twin::Layout& layout = expected.layout();
    const size_t numElements = size_t{expected.roi().getActiveWidth()} * layout.pixelSize / layout.elementSize;
    Image merged = actual;
    for (unsigned y = 0; y < expected.roi().getActiveHeight(); ++y) {
        for (size_t i = 0; i < numElements; ++i) {
            const uint32_t e = elementBits(layout, expected.line(y) + i * layout.elementSize);
            const uint32_t a = elementBits(layout, actual.line(y) + i * layout.elementSize);
            const bool areAnyNans = nans == Twin::Nans::ANY && isNan(layout, e) && isNan(layout, a);
            if (e != a && !areAnyNans) return describe(expected.format(), y, i, e, a);
        }
        std::memcpy(merged.line(y), expected.line(y), numElements * layout.elementSize);
    }
    for (size_t i = 0; i < merged.bytes().size(); ++i)
        if (merged.bytes()[i] != expected.bytes()[i])
            return std::string(pfToStr(expected.format())) + ": a byte outside the region was touched, at " +
                   std::to_string(i) + " of the memory";
    return {};
}

} // namespace PixelTest
