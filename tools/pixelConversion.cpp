#include "pixelConversion.h"

#include "failure.h"
#include "parallelRows.h"
#include "transformChain.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

using namespace Morvane_2015_1_42;

namespace Command {

namespace {

/// The depth that all the channels share, else 32f.
BitDepth commonDepth(const OIIO::ImageSpec& spec, const std::vector<int>& channels)
{
    const BitDepth first = sampleDepth(spec, channels.front());
    const bool same =
        std::all_of(channels.begin(), channels.end(), [&](int c) { return sampleDepth(spec, c) == first; });
    return same ? first : BIT_DEPTH_32f;
}

PixelFormat pixelFormat(BitDepth depth, size_t channels)
{
    return strToPF((std::string(channels == 4 ? "PF_RGBA_" : "PF_RGB_") + getBitDepthName(depth)).c_str());
}

/// Bits by which OpenImageIO widens samples of a depth, 0 for depths that it hands out as they are.
unsigned widenedBits(BitDepth depth)
{
    const bool widened = depth == BIT_DEPTH_10i || depth == BIT_DEPTH_12i;
    return widened ? 16 - getBitDepthPrecision(depth) : 0;
}

/// Calls change(sample) on each 16-bit sample.
template <class Change>
void changeSamples(std::vector<unsigned char>& work, Change change)
{
    for (size_t at = 0; at + sizeof(uint16_t) <= work.size(); at += sizeof(uint16_t)) {
        uint16_t sample = 0;
        std::memcpy(&sample, &work[at], sizeof sample);
        sample = static_cast<uint16_t>(change(static_cast<unsigned>(sample)));
        std::memcpy(&work[at], &sample, sizeof sample);
    }
}

/// A widened sample holds its code in the high bits.
void narrow(std::vector<unsigned char>& work, BitDepth depth)
{
    const unsigned shift = widenedBits(depth);
    if (shift != 0) changeSamples(work, [=](unsigned sample) { return sample >> shift; });
}

/// Repeats the high bits of a code below it: 0 stays 0, the highest code becomes 65535.
void widen(std::vector<unsigned char>& work, BitDepth depth)
{
    const unsigned shift = widenedBits(depth);
    if (shift == 0) return;
    const unsigned repeat = getBitDepthPrecision(depth) - shift;
    changeSamples(work, [=](unsigned code) { return code << shift | code >> repeat; });
}

/// Copies one channel of a run of pixels, with a change of type where the two differ.
void copyChannel(const unsigned char* source, const OIIO::TypeDesc& sourceType, size_t sourceStride,
                 unsigned char* destination, const OIIO::TypeDesc& destinationType, size_t destinationStride,
                 int pixels)
{
    OIIO::convert_image(1, pixels, 1, 1, source, sourceType, static_cast<OIIO::stride_t>(sourceStride),
                        OIIO::AutoStride, OIIO::AutoStride, destination, destinationType,
                        static_cast<OIIO::stride_t>(destinationStride), OIIO::AutoStride, OIIO::AutoStride);
}

/// Bytes from the start of a pixel to a channel.
size_t channelOffset(const OIIO::ImageSpec& spec, int channel) { return spec.pixel_bytes(0, channel, true); }

} // namespace

PixelConversion::PixelConversion(const TransformPtr& transform, const OIIO::ImageSpec& input,
                                 const ColourChannels& colour, const OIIO::ImageSpec& output, const OutputImage& plan)
    : m_transform(transform), m_input(input), m_output(output), m_channels(plan.channels), m_sources(colour.indices),
      m_multiplyByAlpha(plan.multiplyByAlpha), m_inputDepth(BIT_DEPTH_UNKNOWN), m_outputDepth(BIT_DEPTH_UNKNOWN)
{
    if (colour.indices.empty()) return;
    if (colour.isGrey()) m_sources.assign(3, colour.indices[0]);
    if (colour.alpha >= 0) m_sources.push_back(colour.alpha);
    std::vector<int> colourOutputs;
    for (size_t i = 0; i < m_channels.size(); ++i) {
        if (m_channels[i].component >= 0) colourOutputs.push_back(static_cast<int>(i));
    }
    m_inputDepth = commonDepth(input, m_sources);
    m_outputDepth = commonDepth(output, colourOutputs);

    TransformPtr finalized;
    const MorvaneStatus status =
        finalize(m_transform, pixelFormat(m_inputDepth, m_sources.size()), pixelFormat(m_outputDepth, m_sources.size()),
                 RENDERER_CPU, optimizerFor(m_transform), RESOLVE_BROADCAST_MONITOR, finalized);
    if (!status) throw Failure(ExitCode::TRANSFORM, "cannot use the transform: " + messageOf(status));
    m_transform = finalized;
}

std::vector<unsigned char> PixelConversion::convert(const std::vector<unsigned char>& pixels, unsigned threads) const
{
    std::vector<unsigned char> converted(m_output.image_bytes(true));
    const size_t sourceRow = m_input.scanline_bytes(true), destinationRow = m_output.scanline_bytes(true);
    parallelRows(m_input.height * m_input.depth, threads, [&](int firstRow, int rows) {
        const size_t row = static_cast<size_t>(firstRow);
        convertRows(pixels.data() + row * sourceRow, converted.data() + row * destinationRow, rows);
    });
    return converted;
}

void PixelConversion::convertRows(const unsigned char* source, unsigned char* destination, int rows) const
{
    const int pixels = m_input.width * rows;
    std::vector<unsigned char> work;
    if (!m_sources.empty()) {
        std::vector<unsigned char> given;
        gatherColour(source, pixels, given);
        apply(given, rows, work);
    }
    const OIIO::TypeDesc workType = sampleType(m_outputDepth);
    for (size_t i = 0; i < m_channels.size(); ++i) {
        const OutputChannel& channel = m_channels[i];
        const int index = static_cast<int>(i);
        unsigned char* const to = destination + channelOffset(m_output, index);
        if (channel.component >= 0) {
            copyChannel(work.data() + static_cast<size_t>(channel.component) * workType.size(), workType,
                        m_sources.size() * workType.size(), to, m_output.channelformat(index),
                        m_output.pixel_bytes(true), pixels);
        } else {
            copyChannel(source + channelOffset(m_input, channel.source), m_input.channelformat(channel.source),
                        m_input.pixel_bytes(true), to, m_output.channelformat(index), m_output.pixel_bytes(true),
                        pixels);
        }
    }
}

void PixelConversion::gatherColour(const unsigned char* source, int pixels, std::vector<unsigned char>& work) const
{
    const OIIO::TypeDesc type = sampleType(m_inputDepth);
    const size_t pixelSize = m_sources.size() * type.size();
    work.resize(static_cast<size_t>(pixels) * pixelSize);
    for (size_t i = 0; i < m_sources.size(); ++i) {
        copyChannel(source + channelOffset(m_input, m_sources[i]), m_input.channelformat(m_sources[i]),
                    m_input.pixel_bytes(true), work.data() + i * type.size(), type, pixelSize, pixels);
    }
    narrow(work, m_inputDepth);
}

void PixelConversion::apply(std::vector<unsigned char>& source, int rows, std::vector<unsigned char>& destination) const
{
    const OIIO::TypeDesc type = sampleType(m_outputDepth);
    const int pixels = m_input.width * rows;
    destination.resize(static_cast<size_t>(pixels) * m_sources.size() * type.size());
    const ROI roi(0, 0, static_cast<uint32_t>(m_input.width), static_cast<uint32_t>(rows));
    const MorvaneStatus status = m_transform->apply(source.data(), roi, destination.data());
    if (!status) throw Failure(ExitCode::CONVERSION, "cannot convert the image: " + messageOf(status));
    widen(destination, m_outputDepth);
    if (m_multiplyByAlpha && m_sources.size() == 4) {
        OIIO::premult(4, pixels, 1, 1, 0, 4, type, destination.data(), OIIO::AutoStride, OIIO::AutoStride,
                      OIIO::AutoStride, 3);
    }
}

} // namespace Command
