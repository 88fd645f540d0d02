#pragma once

#include "imageLayout.h"

#include "morvane/morvane.h"

#include <vector>

namespace Command {

/// Takes the pixels of one image through a transform, from the layout of the input to that of the output. Samples are
/// given to the transform in their own depth and taken from it in the output's, so that all rounding is the library's.
class PixelConversion
{
public:
    /// Finalizes the transform for the two sample depths. The specifications must outlive this object.
    /// Throws Failure with ExitCode::TRANSFORM.
    PixelConversion(const Morvane::TransformPtr& transform, const OIIO::ImageSpec& input, const ColourChannels& colour,
                    const OIIO::ImageSpec& output, const OutputImage& plan);

    Morvane::BitDepth getInputDepth() const { return m_inputDepth; }
    Morvane::BitDepth getOutputDepth() const { return m_outputDepth; }

    /// Converts on the given number of threads; the result does not depend on it.
    /// Throws Failure with ExitCode::CONVERSION.
    std::vector<unsigned char> convert(const std::vector<unsigned char>& pixels, unsigned threads) const;

private:
    void convertRows(const unsigned char* source, unsigned char* destination, int rows) const;
    void gatherColour(const unsigned char* source, int pixels, std::vector<unsigned char>& work) const;
    void apply(std::vector<unsigned char>& source, int rows, std::vector<unsigned char>& destination) const;

    Morvane::TransformPtr m_transform;
    const OIIO::ImageSpec& m_input;
    const OIIO::ImageSpec& m_output;
    std::vector<OutputChannel> m_channels;
    std::vector<int> m_sources; ///< input channels of the work pixel, in the order R, G, B and A if there is one
    bool m_multiplyByAlpha;
    Morvane::BitDepth m_inputDepth;
    Morvane::BitDepth m_outputDepth;
};

} // namespace Command
