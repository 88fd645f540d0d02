#include "imageLayout.h"

#include <algorithm>
#include <cctype>

using namespace Morvane_2015_1_42;

namespace Command {

namespace {

const char* const kBitsPerSample = "oiio:BitsPerSample";
const char* const kUnassociatedAlpha = "oiio:UnassociatedAlpha";

/// TIFF asks for tiles in multiples of this; the other tiled formats take any size.
constexpr int kTileGranularity = 16;

std::string lower(std::string text)
{
    for (char& c : text)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

/// The layer of a channel name, up to and with its last dot; empty outside layers.
std::string layerOf(const std::string& name) { return name.substr(0, name.rfind('.') + 1); }

/// The channel of a layer that has one of the names, -1 when there is none.
int findChannel(const OIIO::ImageSpec& spec, const std::string& layer, const std::vector<std::string>& names)
{
    for (int i = 0; i < spec.nchannels; ++i) {
        const std::string channel = spec.channel_name(i);
        if (layerOf(channel) != layer) continue;
        const std::string name = lower(channel.substr(layer.size()));
        if (std::find(names.begin(), names.end(), name) != names.end()) return i;
    }
    return -1;
}

ColourChannels colourOfLayer(const OIIO::ImageSpec& spec, const std::string& layer)
{
    ColourChannels colour;
    const int red = findChannel(spec, layer, {"r", "red"});
    const int green = findChannel(spec, layer, {"g", "green"});
    const int blue = findChannel(spec, layer, {"b", "blue"});
    const int grey = findChannel(spec, layer, {"y", "i", "l", "gray", "grey", "luminance", "intensity"});
    if (red >= 0 && green >= 0 && blue >= 0) {
        colour.indices = {red, green, blue};
    } else if (grey >= 0 && spec.nchannels <= 2) {
        colour.indices = {grey};
    }
    if (!colour.indices.empty()) colour.alpha = findChannel(spec, layer, {"a", "alpha"});
    return colour;
}

ColourChannels colourByPosition(const OIIO::ImageSpec& spec)
{
    ColourChannels colour;
    const int colours = spec.nchannels < 3 ? 1 : 3;
    for (int i = 0; i < colours; ++i)
        colour.indices.push_back(i);
    if (spec.alpha_channel >= colours) {
        colour.alpha = spec.alpha_channel;
    } else if (spec.nchannels == colours + 1) {
        colour.alpha = colours;
    }
    return colour;
}

/// The channels of the output in their order, with the places of grey taken by R, G and B.
std::vector<OutputChannel> outputChannels(const OIIO::ImageSpec& input, const ColourChannels& colour,
                                          const FormatAbilities& format)
{
    std::vector<OutputChannel> channels;
    for (int i = 0; i < input.nchannels; ++i) {
        const auto found = std::find(colour.indices.begin(), colour.indices.end(), i);
        if (found != colour.indices.end() && colour.isGrey()) {
            channels.insert(channels.end(), {{i, 0}, {i, 1}, {i, 2}});
        } else if (found != colour.indices.end()) {
            channels.push_back({i, static_cast<int>(found - colour.indices.begin())});
        } else if (i == colour.alpha) {
            if (format.alpha) channels.push_back({i, 3});
        } else if (format.anyChannels || colour.indices.empty()) {
            channels.push_back({i, -1});
        }
    }
    return channels;
}

std::string channelName(const OIIO::ImageSpec& input, const ColourChannels& colour, const OutputChannel& channel)
{
    static const char* const rgb[] = {"R", "G", "B"};
    std::string name = input.channel_name(channel.source);
    if (!colour.isGrey() || channel.component < 0 || channel.component > 2) return name;
    return layerOf(name) + rgb[channel.component];
}

/// Sets the type of every channel: the colours' own, or the depth asked for.
void setTypes(OutputImage& output, const OIIO::ImageSpec& input, BitDepth depth, const FormatAbilities& format)
{
    std::vector<OIIO::TypeDesc> types;
    bool hasColour = false;
    for (const OutputChannel& channel : output.channels) {
        const bool asked = depth != BIT_DEPTH_UNKNOWN && channel.component >= 0;
        types.push_back(asked ? sampleType(depth) : input.channelformat(channel.source));
        // The colours decide when all channels must have one type.
        if (!hasColour && channel.component >= 0) output.spec.format = types.back();
        hasColour = hasColour || channel.component >= 0;
    }
    const bool equal =
        std::all_of(types.begin(), types.end(), [&](const OIIO::TypeDesc& t) { return t == types.front(); });
    output.spec.channelformats.clear();
    if (!equal && format.channelFormats) output.spec.channelformats = types;
}

void setBitsPerSample(OIIO::ImageSpec& spec, BitDepth depth, const FormatAbilities& format)
{
    spec.erase_attribute(kBitsPerSample);
    if (format.bits10And12 && (depth == BIT_DEPTH_10i || depth == BIT_DEPTH_12i)) {
        spec.attribute(kBitsPerSample, static_cast<int>(getBitDepthPrecision(depth)));
    }
}

} // namespace

ColourChannels findNamedColour(const OIIO::ImageSpec& spec)
{
    ColourChannels colour = colourOfLayer(spec, "");
    for (int i = 0; i < spec.nchannels && colour.indices.empty(); ++i) {
        colour = colourOfLayer(spec, layerOf(spec.channel_name(i)));
    }
    return colour;
}

std::vector<ColourChannels> findColour(const std::vector<OIIO::ImageSpec>& specs)
{
    std::vector<ColourChannels> colours(specs.size());
    std::transform(specs.begin(), specs.end(), colours.begin(), findNamedColour);
    const bool anyNamed =
        std::any_of(colours.begin(), colours.end(), [](const ColourChannels& c) { return !c.indices.empty(); });
    if (!anyNamed) std::transform(specs.begin(), specs.end(), colours.begin(), colourByPosition);
    return colours;
}

OutputImage planOutput(const OIIO::ImageSpec& input, const ColourChannels& colour, BitDepth depth,
                       const FormatAbilities& format)
{
    OutputImage output;
    output.spec = input;
    output.channels = outputChannels(input, colour, format);
    output.spec.nchannels = static_cast<int>(output.channels.size());
    output.spec.channelnames.clear();
    output.spec.alpha_channel = -1;
    output.spec.z_channel = -1;
    for (const OutputChannel& channel : output.channels) {
        const int index = static_cast<int>(output.spec.channelnames.size());
        if (channel.component == 3 || channel.source == input.alpha_channel) output.spec.alpha_channel = index;
        if (channel.component < 0 && channel.source == input.z_channel) output.spec.z_channel = index;
        output.spec.channelnames.push_back(channelName(input, colour, channel));
    }
    setTypes(output, input, depth, format);

    const BitDepth own = colour.indices.empty() ? BIT_DEPTH_UNKNOWN : sampleDepth(input, colour.indices[0]);
    setBitsPerSample(output.spec, depth == BIT_DEPTH_UNKNOWN ? own : depth, format);

    const bool tileSizeFits = input.tile_width % kTileGranularity == 0 && input.tile_height % kTileGranularity == 0;
    if (!format.tiles || (!format.sameAsInput && !tileSizeFits)) {
        output.spec.tile_width = output.spec.tile_height = output.spec.tile_depth = 0;
    }
    if (input.get_int_attribute(kUnassociatedAlpha) != 0 && !format.unassociatedAlpha) {
        output.spec.erase_attribute(kUnassociatedAlpha);
        output.multiplyByAlpha = output.spec.alpha_channel >= 0;
    }
    return output;
}

BitDepth sampleDepth(const OIIO::ImageSpec& spec, int channel)
{
    const OIIO::TypeDesc type = spec.channelformat(channel);
    if (type == OIIO::TypeUInt8) return BIT_DEPTH_8i;
    if (type == OIIO::TypeHalf) return BIT_DEPTH_16f;
    if (type != OIIO::TypeUInt16) return BIT_DEPTH_32f;
    switch (spec.get_int_attribute(kBitsPerSample)) {
    case 10:
        return BIT_DEPTH_10i;
    case 12:
        return BIT_DEPTH_12i;
    default:
        return BIT_DEPTH_16i;
    }
}

OIIO::TypeDesc transferType(const OIIO::ImageSpec& spec)
{
    return spec.channelformats.empty() ? spec.format : OIIO::TypeDesc(OIIO::TypeUnknown);
}

OIIO::TypeDesc sampleType(BitDepth depth)
{
    switch (depth) {
    case BIT_DEPTH_8i:
        return OIIO::TypeUInt8;
    case BIT_DEPTH_10i:
    case BIT_DEPTH_12i:
    case BIT_DEPTH_16i:
        return OIIO::TypeUInt16;
    case BIT_DEPTH_16f:
        return OIIO::TypeHalf;
    default:
        return OIIO::TypeFloat;
    }
}

} // namespace Command
