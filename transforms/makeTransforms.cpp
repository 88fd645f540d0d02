/// Writes the transforms that ship with Morvane: makeTransforms DIRECTORY
/// Every number is computed from what its standard publishes; nothing of the library is used.

#include "colorimetry.h"
#include "ctfText.h"
#include "displayTransforms.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <sstream>
#include <string>

namespace {

using namespace Colorimetry;
using namespace CtfText;

/// A logarithmic encoding in codes of 10 bits as of film scans: 0.002 of density to a code.
namespace Film {
constexpr double kGamma = 0.6;
constexpr double kWhite = 685.0; ///< of 1.0
constexpr double kBlack = 95.0;  ///< of 0.0
constexpr int kCodes = 1024;

double linearFromCode(double code)
{
    const auto exposure = [](double c) { return std::pow(10.0, (c - kWhite) * 0.002 / kGamma); };
    return (exposure(code) - exposure(kBlack)) / (1.0 - exposure(kBlack));
}
} // namespace Film

constexpr double kMiddleGrey = 0.18;

/// The extended tone curve of Reinhard et al., "Photographic Tone Reproduction for Digital Images" (2002), equation 4:
/// 0 stays, middle grey stays but for a thousandth, and the brightest becomes 1.
double toneMapped(double linear, double brightest)
{
    const double scale = 1.0 / (1.0 - kMiddleGrey);
    const double value = linear * scale, white = brightest * scale;
    return value * (1.0 + value / (white * white)) / (1.0 + value);
}

std::string logText()
{
    std::ostringstream text;
    text << "    <Log inBitDepth=\"32f\" outBitDepth=\"32f\" style=\"linToLog\">\n        <LogParams gamma=\""
         << Film::kGamma << "\" refWhite=\"" << Film::kWhite << "\" refBlack=\"" << Film::kBlack
         << "\" highlight=\"1\" shadow=\"0\"/>\n    </Log>\n";
    return text.str();
}

std::string correctionText()
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<ColorDecisionList xmlns=\"urn:ASC:CDL:v1.01\">\n"
           "    <InputDescription>Logarithmic film codes</InputDescription>\n"
           "    <ColorDecision>\n"
           "        <ColorCorrection id=\"morvane:demo/warm\">\n"
           "            <Description>A little warmer and more colourful.</Description>\n"
           "            <SOPNode>\n"
           "                <Slope>1.05 1 0.95</Slope>\n"
           "                <Offset>-0.01 0 0.01</Offset>\n"
           "                <Power>1 1 1</Power>\n"
           "            </SOPNode>\n"
           "            <SatNode>\n"
           "                <Saturation>1.1</Saturation>\n"
           "            </SatNode>\n"
           "        </ColorCorrection>\n"
           "    </ColorDecision>\n"
           "</ColorDecisionList>\n";
}

/// The nearest code of 10 bits to a value from 0 to 1.
long code10(double value) { return std::lround(std::clamp(value, 0.0, 1.0) * 1023.0); }

std::string displayLutText()
{
    std::string text = "# logarithmic film codes to codes of an sRGB display, both of 10 bits\nLUT: 1 1024 1024\n";
    const double brightest = Film::linearFromCode(Film::kCodes - 1);
    for (int code = 0; code < Film::kCodes; ++code) {
        const double linear = std::max(Film::linearFromCode(code), 0.0);
        text += std::to_string(code10(encodedSRGBFromLinear(toneMapped(linear, brightest)))) + "\n";
    }
    return text;
}

/// More colour, warm lights and cool shadows; black and white stay.
Vector3 splitToned(const Vector3& rgb)
{
    constexpr Vector3 weights = {0.2126, 0.7152, 0.0722}; // of ITU-R BT.709
    constexpr Vector3 tint = {0.2, 0.0, -0.2};
    constexpr double saturation = 1.15;
    const double luma = weights[0] * rgb[0] + weights[1] * rgb[1] + weights[2] * rgb[2];
    const double amount = (luma - 0.5) * 4.0 * luma * (1.0 - luma);
    Vector3 toned{};
    for (size_t i = 0; i < 3; ++i)
        toned[i] = luma + saturation * (rgb[i] - luma) + tint[i] * amount;
    return toned;
}

std::string lookCubeText()
{
    constexpr int last = 16;
    std::string text = "# more colour, warm lights and cool shadows, on codes of a display\n";
    for (int i = 0; i <= last; ++i)
        text += std::to_string(i == last ? 1023 : 64 * i) + (i == last ? "\n" : " ");
    const auto coordinate = [](int i) { return static_cast<double>(i) / last; };
    for (int red = 0; red <= last; ++red) {
        for (int green = 0; green <= last; ++green) {
            for (int blue = 0; blue <= last; ++blue) {
                const Vector3 rgb = splitToned({coordinate(red), coordinate(green), coordinate(blue)});
                text += std::to_string(code10(rgb[0])) + " " + std::to_string(code10(rgb[1])) + " " +
                        std::to_string(code10(rgb[2])) + "\n";
            }
        }
    }
    return text;
}

/// A chain from linear light to a display, one file of each format.
void writeDemo(const std::filesystem::path& directory)
{
    write(directory,
          {"demo/linear-sRGB_to_film-log",
           "linear sRGB, 1.0 = display white",
           "logarithmic film codes, 0 to 1023 as 0 to 1",
           {"White at code 685 and black at code 95 of 10 bits, 0.002 of density to a code."}},
          logText());
    writeFile(directory / "demo/warm.cdl", correctionText());
    writeFile(directory / "demo/film-log_to_sRGB.lut", displayLutText());
    writeFile(directory / "demo/split-tone.3dl", lookCubeText());
}

void writeAll(const std::filesystem::path& directory)
{
    const std::string srgb = "Linear sRGB: primaries of ITU-R BT.709 and white D65, as in IEC 61966-2-1.";
    const std::string acesDescriptor = "ACES2065-1";
    const std::string srgbDescriptor = "linear sRGB, 1.0 = display white";

    write(
        directory,
        {"ACES2065-1_to_linear-sRGB", acesDescriptor, srgbDescriptor, {kACESDescription, srgb, kAdaptationDescription}},
        matrixText(adaptedRGBFromRGB(kBT709, kACES2065_1)));
    write(
        directory,
        {"linear-sRGB_to_ACES2065-1", srgbDescriptor, acesDescriptor, {srgb, kACESDescription, kAdaptationDescription}},
        matrixText(adaptedRGBFromRGB(kACES2065_1, kBT709)));
    write(directory,
          {"full-range_to_legal-range_10i",
           "R'G'B' of 10 bits, 0 to 1023",
           "R'G'B' of 10 bits, 64 to 940",
           {"Black at code 64 and white at code 940 of 10 bits: the quantization levels of ITU-R BT.709."}},
          rangeText("10i", 0, 1023, 64, 940));
    write(directory, {"misc/identity", "any", "the same as the input", {"Leaves every pixel as it is."}},
          matrixText({{{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}}}));
    writeDisplayTransforms(directory);
    writeDemo(directory);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: makeTransforms DIRECTORY\n", stderr);
        return 2;
    }
    try {
        writeAll(argv[1]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "makeTransforms: %s\n", error.what());
        return 1;
    }
    return 0;
}
