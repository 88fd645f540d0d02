#pragma once

#include "morvane/export.h"
#include "morvane/pixelFormat.h"

#include <cstdint>

namespace Morvane_2015_1_42 {

/// Region of interest: which pixels of an image a call touches. All numbers are pixels.
/// The constructors check nothing; apply() refuses a region that does not fit its image.
class MORVANE_API ROI
{
public:
    /// A region of the given size at (x, y), in an image of that same size.
    ROI(uint32_t x, uint32_t y, uint32_t width, uint32_t height);

    /// The active region with its top left at (x, y), inside an image of imageWidth by imageHeight.
    ROI(uint32_t x, uint32_t y, uint32_t activeWidth, uint32_t activeHeight, uint32_t imageWidth, uint32_t imageHeight);

    ROI(const ROI& other);
    ROI& operator=(const ROI& other);

    uint32_t getX() const;
    uint32_t getY() const;
    uint32_t getActiveWidth() const;
    uint32_t getActiveHeight() const;
    uint32_t getImageWidth() const;
    uint32_t getImageHeight() const;

    /// Active width times active height, in unsigned 32-bit arithmetic.
    uint32_t getNumROIPixels() const;

private:
    uint32_t m_x;
    uint32_t m_y;
    uint32_t m_activeWidth;
    uint32_t m_activeHeight;
    uint32_t m_imageWidth;
    uint32_t m_imageHeight;
};

/// Bytes of the active region: pixel size times active width times active height. The image size does not count, and
/// the product wraps at 2 to the power 32.
MORVANE_API unsigned getImageSizeInByte(const ROI& roi, PixelFormat format);

} // namespace Morvane_2015_1_42
