#include "formatsCommand.h"

#include "transformChain.h"

#include "morvane/morvane.h"

#include <OpenImageIO/imageio.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

using namespace Morvane_2015_1_42;

namespace Command {

namespace {

struct TransformFormat
{
    std::string extension;
    std::string description;
};

struct ImageFormat
{
    std::string name;
    std::vector<std::string> extensions;
    bool canRead;
    bool canWrite;
};

constexpr PixelFormat kPixelFormats[] = {
#define MORVANE_VALUE(name, value, depth, order, channels, packed, bytes) name,
    MORVANE_PIXEL_FORMATS(MORVANE_VALUE)
#undef MORVANE_VALUE
};

class FormatCollector : public SupportedExtensionsCallBack
{
public:
    void addExtension(const char* extension, const char* description) override
    {
        formats.push_back({extension, description});
    }

    std::vector<TransformFormat> formats;
};

std::vector<TransformFormat> transformFormats()
{
    FormatCollector collector;
    const MorvaneStatus status = getSupportedFileExtensions(collector);
    if (!status) throw Failure(ExitCode::TRANSFORM, "cannot list the transform formats: " + messageOf(status));
    return collector.formats;
}

std::vector<std::string> split(const std::string& text, char separator)
{
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);)
        parts.push_back(part);
    return parts;
}

/// OpenImageIO lists them as "name:extension,extension;name:...".
std::vector<ImageFormat> imageFormats()
{
    const std::vector<std::string> readable = split(OIIO::get_string_attribute("input_format_list"), ',');
    const std::vector<std::string> writable = split(OIIO::get_string_attribute("output_format_list"), ',');
    const auto holds = [](const std::vector<std::string>& names, const std::string& name) {
        return std::find(names.begin(), names.end(), name) != names.end();
    };
    std::vector<ImageFormat> formats;
    for (const std::string& entry : split(OIIO::get_string_attribute("extension_list"), ';')) {
        const size_t colon = std::min(entry.find(':'), entry.size());
        const std::string name = entry.substr(0, colon);
        const std::string extensions = colon < entry.size() ? entry.substr(colon + 1) : "";
        formats.push_back({name, split(extensions, ','), holds(readable, name), holds(writable, name)});
    }
    return formats;
}

void printText()
{
    std::puts("Transforms that can be read:");
    for (const TransformFormat& format : transformFormats()) {
        std::printf("  %-8s %s\n", format.extension.c_str(), format.description.c_str());
    }
    std::puts("Pixel formats:");
    for (const PixelFormat format : kPixelFormats) {
        std::printf("  %-12s %u channels, %2u bytes\n", pfToStr(format), getNumChannels(format),
                    getPixelSizeInByte(format));
    }
    std::puts("Image formats (r: can be read, w: can be written):");
    for (const ImageFormat& format : imageFormats()) {
        std::printf("  %-14s %c%c ", format.name.c_str(), format.canRead ? 'r' : '-', format.canWrite ? 'w' : '-');
        for (const std::string& extension : format.extensions)
            std::printf(" %s", extension.c_str());
        std::puts("");
    }
}

void printJson()
{
    nlohmann::ordered_json document = {{"transforms", nlohmann::json::array()},
                                       {"pixelFormats", nlohmann::json::array()},
                                       {"images", nlohmann::json::array()}};
    for (const TransformFormat& format : transformFormats()) {
        document["transforms"].push_back({{"extension", format.extension}, {"description", format.description}});
    }
    for (const PixelFormat format : kPixelFormats) {
        document["pixelFormats"].push_back(
            {{"name", pfToStr(format)}, {"channels", getNumChannels(format)}, {"bytes", getPixelSizeInByte(format)}});
    }
    for (const ImageFormat& format : imageFormats()) {
        document["images"].push_back({{"name", format.name},
                                      {"extensions", format.extensions},
                                      {"read", format.canRead},
                                      {"write", format.canWrite}});
    }
    std::printf("%s\n", document.dump(2).c_str());
}

} // namespace

ExitCode runFormats(bool json)
{
    if (json) {
        printJson();
    } else {
        printText();
    }
    return ExitCode::OK;
}

} // namespace Command
