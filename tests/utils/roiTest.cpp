#include "morvane/roi.h"

#include "tests/utils/failure.h"

#include <gtest/gtest.h>

namespace {

using namespace Morvane_2015_1_42;

TEST(ROI, fourNumbersSetActiveAndImageSizeAlike)
{
    const ROI roi(1, 2, 30, 40);
    EXPECT_EQ(roi.getX(), 1u);
    EXPECT_EQ(roi.getY(), 2u);
    EXPECT_EQ(roi.getActiveWidth(), 30u);
    EXPECT_EQ(roi.getActiveHeight(), 40u);
    EXPECT_EQ(roi.getImageWidth(), 30u);
    EXPECT_EQ(roi.getImageHeight(), 40u);
    EXPECT_EQ(roi.getNumROIPixels(), 1200u);
}

TEST(ROI, sixNumbersAreKeptInOrderAndUnchecked)
{
    ROI roi(0, 0, 1, 1);
    roi = ROI(1, 2, 30, 40, 5, 6);
    EXPECT_EQ(roi.getX(), 1u);
    EXPECT_EQ(roi.getY(), 2u);
    EXPECT_EQ(roi.getActiveWidth(), 30u);
    EXPECT_EQ(roi.getActiveHeight(), 40u);
    EXPECT_EQ(roi.getImageWidth(), 5u);
    EXPECT_EQ(roi.getImageHeight(), 6u);
    EXPECT_EQ(roi.getNumROIPixels(), 1200u);
}

TEST(ROI, imageSizeInBytesCountsTheActiveRegionOnly)
{
    EXPECT_EQ(getImageSizeInByte(ROI(0, 0, 2, 3), PF_RGB_32f), 72u);
    EXPECT_EQ(getImageSizeInByte(ROI(7, 9, 2, 3, 1000, 2000), PF_RGB_32f), 72u);
    EXPECT_EQ(getImageSizeInByte(ROI(0, 0, 5, 7), PF_RGBA_10iP), 140u);
    EXPECT_EQ(getImageSizeInByte(ROI(0, 0, 2, 3), PF_UNKNOWN), 0u);
}

TEST(ROI, productsWrapAt32Bits)
{
    EXPECT_EQ(ROI(0, 0, 0x10000, 0x10001).getNumROIPixels(), 0x10000u);
    EXPECT_EQ(getImageSizeInByte(ROI(0, 0, 0x8000, 0x8001), PF_RGBA_32f), 0x80000u);
}

TEST(ROI, mismatchMessagePrintsItsSecondTextAsANumber)
{
    const Failure failure = failureOf([] {
        Color::raise(Color::LogCategory::UTILS_ALL, Color::ErrorIds::ROI_MISMATCH, "active width", "image width");
    });
    EXPECT_EQ(failure, (Failure{0x1010001, "COLOR:UTILS:ALL", "Mismatch between 'active width' and '0' for ROI"}));
}

} // namespace
