#pragma once

#include "tests/pixels/image.h"
#include "tests/pixels/opCases.h"

#include <gtest/gtest.h>

namespace PixelTest {

/// Applies the finalized transform to the region that the two images share.
void apply(const Morvane_2015_1_42::TransformPtr& transform, const Image& source, Image& destination);

/// The same by the twin.
void apply(const Twin::Processor& processor, const Image& source, Image& destination);

/// Renders by the library and by the twin. Empty when both images agree in every byte and the source is unchanged.
std::string differenceFromTwin(Twin::Processors& twins, const Morvane_2015_1_42::TransformPtr& transform,
                               const Image& source, PixelFormat out, Placing destinationPlacing = {});

/// Collects differences, so that one failing test tells how many there are and shows the first few.
class Differences
{
public:
    void add(const std::string& context, const std::string& difference);
    testing::AssertionResult areNone() const;

private:
    size_t m_count = 0;
    std::string m_first;
};

} // namespace PixelTest
