#pragma once

#include "morvane/roi.h"
#include "tests/pixels/scalarTwin.h"

#include <random>

namespace PixelTest {

using Morvane_2015_1_42::PixelFormat;
using Morvane_2015_1_42::ROI;
using Random = std::mt19937;

/// Where the bytes of an image lie: bytes after each row, and bytes by which the image starts off a 16-byte boundary.
struct Placing
{
    unsigned rowPadding = 0;
    unsigned shift = 0;
};

/// The pixels of an image with poisoned bytes before, between and behind them.
class Image
{
public:
    Image(PixelFormat format, const ROI& roi, Placing placing = {});

    PixelFormat format() const { return m_format; }
    const Twin::Layout& layout() const { return m_layout; }
    const ROI& roi() const { return m_roi; }
    unsigned stride() const { return m_stride; }

    /// Top left of the whole image.
    uint8_t* data() { return m_bytes.data() + m_start; }
    const uint8_t* data() const { return m_bytes.data() + m_start; }

    /// First pixel of a line of the active region.
    uint8_t* line(unsigned y) { return data() + lineOffset(y); }
    const uint8_t* line(unsigned y) const { return data() + lineOffset(y); }

    const std::vector<uint8_t>& bytes() const { return m_bytes; }

private:
    size_t lineOffset(unsigned y) const;

    PixelFormat m_format;
    Twin::Layout m_layout;
    ROI m_roi;
    unsigned m_stride;
    size_t m_start;
    std::vector<uint8_t> m_bytes;
};

/// One line of pixels.
inline ROI lineOf(unsigned width) { return {0, 0, width, 1}; }

/// Fills all bytes of the active region with samples that show mistakes: every channel its own values, high bits set,
/// integers beyond the nominal range of their depth where the element has room, floats of every kind.
void fillRandom(Image& image, Random& random);

/// Empty when the two images hold the same bytes; else where they first differ. With Nans::ANY two NaNs are the same
/// sample.
std::string difference(const Image& expected, const Image& actual, Twin::Nans nans);

} // namespace PixelTest
