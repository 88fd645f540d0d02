#pragma once

#include "morvane/bitDepth.h"

#include <OpenImageIO/imageio.h>

#include <string>
#include <vector>

namespace Command {

/// The channels of an image that a transform sees.
struct ColourChannels
{
    std::vector<int> indices; ///< R, G, B, or one grey channel that stands for all three; empty: no colour
    int alpha = -1;           ///< -1: none

    bool isGrey() const { return indices.size() == 1; }
};

/// Finds R, G and B, or a grey channel, by name; inside a layer ("beauty.R") when the image has none outside.
ColourChannels findNamedColour(const OIIO::ImageSpec& spec);

/// The colour channels of each image of a file. When none of them has colour by name, the first three channels stand
/// for R, G, B (and the fourth of four, or the one marked as alpha, for A), or the first of fewer than three for grey.
std::vector<ColourChannels> findColour(const std::vector<OIIO::ImageSpec>& specs);

/// Where a channel of an output comes from.
struct OutputChannel
{
    int source;    ///< channel of the input that it stands for
    int component; ///< 0 to 3: red, green, blue, alpha of the converted pixel; -1: the source channel unchanged
};

/// What a file format can hold.
struct FormatAbilities
{
    bool sameAsInput;
    bool alpha;
    bool anyChannels;    ///< more channels than RGBA
    bool channelFormats; ///< a type for each channel
    bool tiles;
    bool unassociatedAlpha; ///< colours that are not multiplied by alpha
    bool bits10And12;       ///< samples of 10 and 12 bits
};

/// A converted image to be.
struct OutputImage
{
    OIIO::ImageSpec spec;
    std::vector<OutputChannel> channels;
    bool multiplyByAlpha = false; ///< the format wants associated alpha, and the input's is not
};

/// Describes the output for an input: everything kept that the format can hold; grey becomes R, G, B; the samples of
/// the colour channels get the given depth, BIT_DEPTH_UNKNOWN: stay as they are.
OutputImage planOutput(const OIIO::ImageSpec& input, const ColourChannels& colour, Morvane_2015_1_42::BitDepth depth,
                       const FormatAbilities& format);

/// The depth in which samples of a channel are given to a transform: their own, or 32f for types that no pixel format
/// has. Samples of 10 and 12 bits, which OpenImageIO widens to 16, are known by "oiio:BitsPerSample".
Morvane_2015_1_42::BitDepth sampleDepth(const OIIO::ImageSpec& spec, int channel);

/// The type to read or write whole images with, so that their samples come and go as the description says. Never
/// TypeUnknown where one type holds for all channels: OpenImageIO 2.4 then goes beyond the pixels of tiled TIFF files.
OIIO::TypeDesc transferType(const OIIO::ImageSpec& spec);

/// OpenImageIO's type for samples of a depth; 10i and 12i are held in 16 bits.
OIIO::TypeDesc sampleType(Morvane_2015_1_42::BitDepth depth);

} // namespace Command
