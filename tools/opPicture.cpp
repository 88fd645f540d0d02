#include "opPicture.h"

#include "morvane/morvane.h"

#include <boost/property_tree/ptree.hpp>
#include <boost/property_tree/xml_parser.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <sstream>

using namespace Morvane_2015_1_42;

namespace Command {

namespace {

using boost::property_tree::ptree;

constexpr size_t kCurveHeight = 6;
constexpr size_t kCommonCurveWidth = 48; ///< of one curve for all channels
constexpr size_t kCurveWidth = 22;       ///< of a curve per channel
constexpr size_t kSliceWidth = 16;       ///< cells are about twice as high as wide
constexpr size_t kSliceHeight = 8;
constexpr float kSliceBlue = 0.5f;

const std::array<const char*, 3> kChannels = {"Red", "Green", "Blue"};

bool isAnyOf(const std::string& name, std::initializer_list<const char*> names)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

class TextCollector : public TransformWriterCallback
{
public:
    void write(const char* text, unsigned length) override { collected.append(text, length); }
    std::string collected;
};

ptree documentOf(const TransformPtr& transform)
{
    TextCollector text;
    ptree document;
    if (!saveColorTransformToBuffer(text, transform)) return document;
    std::istringstream stream(text.collected);
    read_xml(stream, document);
    return document;
}

TransformPtr transformOf(const ptree& document)
{
    std::ostringstream stream;
    write_xml(stream, document);
    TransformPtr transform;
    loadColorTransformFromBuffer(stream.str().c_str(), transform);
    return transform;
}

using Pixel = std::array<float, 3>;

/// Takes the pixels through the transform. Nothing when it cannot be used.
std::vector<Pixel> rendered(const TransformPtr& transform, std::vector<Pixel> pixels)
{
    TransformPtr finalized;
    const MorvaneStatus status = finalize(transform, PF_RGB_32f, PF_RGB_32f, RENDERER_CPU, OPTIMIZER_DEFAULT,
                                          RESOLVE_BROADCAST_MONITOR, finalized);
    const ROI row(0, 0, static_cast<uint32_t>(pixels.size()), 1);
    if (!status || !finalized->apply(pixels.data(), row, pixels.data())) pixels.clear();
    return pixels;
}

/// Cell centres from 0 to 1.
float centre(size_t cell, size_t cells) { return (static_cast<float>(cell) + 0.5f) / static_cast<float>(cells); }

std::vector<Pixel> renderedGreys(const TransformPtr& transform, size_t count)
{
    std::vector<Pixel> greys;
    for (size_t i = 0; i < count; ++i) {
        const float grey = centre(i, count);
        greys.push_back({grey, grey, grey});
    }
    return rendered(transform, greys);
}

std::vector<float> channelOf(const std::vector<Pixel>& pixels, size_t channel)
{
    std::vector<float> values(pixels.size());
    std::transform(pixels.begin(), pixels.end(), values.begin(), [=](const Pixel& pixel) { return pixel[channel]; });
    return values;
}

std::string numberText(float value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.3g", static_cast<double>(value));
    return text;
}

TextPicture withCaption(const std::string& caption, const std::vector<Panel>& panels)
{
    TextPicture picture = joinPanels(panels);
    picture.insert(picture.begin(), caption);
    return picture;
}

TextPicture drawCurves(const TransformPtr& transform, Glyphs glyphs)
{
    std::vector<Pixel> results = renderedGreys(transform, kCommonCurveWidth);
    const bool isCommon = std::all_of(results.begin(), results.end(),
                                      [](const Pixel& pixel) { return pixel[0] == pixel[1] && pixel[0] == pixel[2]; });
    if (!isCommon) results = renderedGreys(transform, kCurveWidth);
    if (results.empty()) return {};

    float lowest = 0.0f, highest = 1.0f;
    for (const Pixel& pixel : results) {
        for (const float value : pixel) {
            if (!std::isfinite(value)) continue;
            lowest = std::min(lowest, value);
            highest = std::max(highest, value);
        }
    }
    std::vector<Panel> panels;
    for (size_t channel = 0; channel < (isCommon ? 1 : 3); ++channel) {
        panels.push_back(drawBars(isCommon ? "All channels" : kChannels[channel], channelOf(results, channel), lowest,
                                  highest, kCurveHeight, glyphs));
    }
    return withCaption("Picture: greys from 0 to 1 across, what they become from " + numberText(lowest) + " to " +
                           numberText(highest) + " upwards",
                       panels);
}

TextPicture drawSlice(const TransformPtr& transform, Glyphs glyphs)
{
    std::vector<Pixel> slice;
    for (size_t row = kSliceHeight; row-- > 0;) {
        for (size_t column = 0; column < kSliceWidth; ++column)
            slice.push_back({centre(column, kSliceWidth), centre(row, kSliceHeight), kSliceBlue});
    }
    slice = rendered(transform, slice);
    if (slice.empty()) return {};
    std::vector<Panel> panels;
    for (size_t channel = 0; channel < 3; ++channel)
        panels.push_back(drawShades(kChannels[channel], channelOf(slice, channel), kSliceWidth, glyphs));
    return withCaption("Picture: red from 0 to 1 across, green from 0 to 1 upwards, at blue " + numberText(kSliceBlue) +
                           "; shades from 0 to 1",
                       panels);
}

} // namespace

std::vector<TransformPtr> splitTransform(const TransformPtr& transform)
{
    std::vector<TransformPtr> parts;
    try {
        // The interface hands out whole transforms only, but their document has an element per operator.
        const ptree document = documentOf(transform);
        ptree single = document;
        for (auto& [rootName, root] : single) {
            for (const auto& [name, element] : document.get_child(rootName)) {
                if (isAnyOf(name, {"<xmlattr>", "Description", "InputDescriptor", "OutputDescriptor", "Info"}))
                    continue;
                ptree alone;
                alone.add_child("<xmlattr>", root.get_child("<xmlattr>"));
                alone.add_child(name, element);
                root.swap(alone);
                parts.push_back(transformOf(single));
            }
        }
    } catch (const boost::property_tree::ptree_error&) {
        parts.clear();
    }
    return parts;
}

TextPicture drawOp(const std::string& type, const TransformPtr& transform, Glyphs glyphs)
{
    if (!transform) return {};
    if (type == "LUT 3D") return drawSlice(transform, glyphs);
    if (isAnyOf(type, {"LUT 1D", "Inverse LUT 1D", "Gamma", "Log", "Range", "Exposure/Contrast", "ASC CDL"})) {
        return drawCurves(transform, glyphs);
    }
    return {};
}

} // namespace Command
