#include "morvane/roi.h"

namespace Morvane_2015_1_42 {

ROI::ROI(uint32_t x, uint32_t y, uint32_t width, uint32_t height) : ROI(x, y, width, height, width, height) {}

ROI::ROI(uint32_t x, uint32_t y, uint32_t activeWidth, uint32_t activeHeight, uint32_t imageWidth, uint32_t imageHeight)
    : m_x(x), m_y(y), m_activeWidth(activeWidth), m_activeHeight(activeHeight), m_imageWidth(imageWidth),
      m_imageHeight(imageHeight)
{}

ROI::ROI(const ROI& other) = default;
ROI& ROI::operator=(const ROI& other) = default;

uint32_t ROI::getX() const { return m_x; }
uint32_t ROI::getY() const { return m_y; }
uint32_t ROI::getActiveWidth() const { return m_activeWidth; }
uint32_t ROI::getActiveHeight() const { return m_activeHeight; }
uint32_t ROI::getImageWidth() const { return m_imageWidth; }
uint32_t ROI::getImageHeight() const { return m_imageHeight; }

uint32_t ROI::getNumROIPixels() const { return m_activeWidth * m_activeHeight; }

unsigned getImageSizeInByte(const ROI& roi, PixelFormat format)
{
    return getPixelSizeInByte(format) * roi.getNumROIPixels();
}

} // namespace Morvane_2015_1_42
