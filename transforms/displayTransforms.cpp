#include "displayTransforms.h"

#include "colorimetry.h"
#include "ctfText.h"

using namespace Colorimetry;
using namespace CtfText;

namespace {

const char* const kXYZDescriptor = "CIE XYZ of the display, white D65 at Y = 1";
const char* const kD65Description = "CIE XYZ is that of the display: its white is D65 and has Y = 1.";
const char* const kFiniteDescription = "Infinite samples count as the largest number of 16-bit floating point, 65504.";

/// Keeps infinities out of matrices, which would make NaN of them.
std::string finiteText() { return rangeText("32f", -65504, 65504, -65504, 65504); }

void writeSRGB(const std::filesystem::path& directory)
{
    write(directory,
          {"interchange/sRGB/CIE-XYZ_to_sRGB",
           kXYZDescriptor,
           "sRGB, codes of the display as 0 to 1",
           {"The encoding of an sRGB display: IEC 61966-2-1.", kD65Description,
            "Matrix: the inverse of the primaries of ITU-R BT.709 with white D65, x = 0.3127 and y = 0.3290.",
            ("Linear components are clipped to 0 and 1, and encoded: 12.92 L up to 0.0031308, above that "
             "1.055 L^(1/2.4) - 0.055."),
            kFiniteDescription}},
          finiteText() + matrixText(inverse(XYZFromRGB(kBT709))) + curveText(encodedSRGBFromLinear));
}

void writeHDVideo(const std::filesystem::path& directory)
{
    write(directory,
          {"display/broadcast/CIE-XYZ_to_HD-video",
           kXYZDescriptor,
           "HD video R'G'B', black to white as 0 to 1",
           {"The signal of an HD video monitor: primaries of ITU-R BT.709, light of ITU-R BT.1886.", kD65Description,
            "Matrix: the inverse of the primaries of ITU-R BT.709 with white D65, x = 0.3127 and y = 0.3290.",
            ("Linear components are clipped to 0 and 1, and become the signal that a monitor of ITU-R BT.1886 with a "
             "black of no light shows so: L^(1/2.4)."),
            "The signal is not quantized: full-range_to_legal-range_10i makes the levels 64 to 940 of it.",
            kFiniteDescription}},
          finiteText() + matrixText(inverse(XYZFromRGB(kBT709))) + curveText(signalFromBT1886Light));
}

void writeGamutMap(const std::filesystem::path& directory)
{
    write(directory,
          {"misc/gamut-map",
           "linear RGB of a display, also of colours that it cannot show",
           "linear RGB of the display, 0 to 1",
           {"Negative components become 0. The middle component keeps its place between the other two, which is the "
            "hue of the hexcone model: A. R. Smith, Color Gamut Transform Pairs, SIGGRAPH 1978.",
            "Components above 1 become 1.", kFiniteDescription},
           "1.4"},
          finiteText() + gamutMapText() + rangeText("32f", 0, 1, 0, 1));
}

/// The light of a display for scene light whose diffuse white is 1: the signal of hybrid log-gamma, shown by a display
/// of BT.1886. Diffuse white has 75 percent of signal, as Report ITU-R BT.2408 recommends.
double renderedLight(double scene)
{
    static const double diffuseWhite = sceneFromHLGSignal(0.75);
    return lightFromBT1886Signal(hlgSignalFromScene(scene * diffuseWhite));
}

void writeRendering(const std::filesystem::path& directory)
{
    write(directory,
          {"RRT+ODT/ACES_to_CIE-XYZ_v0.1.1",
           "ACES2065-1, scene light, 1.0 = diffuse white",
           kXYZDescriptor,
           {("A rendering of scenes for standard displays by published formulas. It is none of the Academy's "
             "renderings."),
            kACESDescription, kD65Description,
            ("1. ACES2065-1 to the linear components of ITU-R BT.2020. Whites are adapted by the linear Bradford "
             "method."),
            ("2. Negative components become 0, and the hue of the hexcone model stays: A. R. Smith, Color Gamut "
             "Transform Pairs, SIGGRAPH 1978."),
            ("3. Tone curve: the hybrid log-gamma OETF of ITU-R BT.2100, with diffuse white at 75 percent of signal as "
             "in Report ITU-R BT.2408; then the light that a display of ITU-R BT.1886 with a black of no light shows "
             "for it, the 2.4th power. 0.18 becomes 0.097 of the display's white, 1.0 half of it, 3.77 all."),
            "4. The linear components of ITU-R BT.2020 to CIE XYZ.", kFiniteDescription},
           "1.4"},
          finiteText() + matrixText(adaptedRGBFromRGB(kBT2020, kACES2065_1)) + gamutMapText() +
              curveText(renderedLight) + matrixText(XYZFromRGB(kBT2020)));
}

} // namespace

void writeDisplayTransforms(const std::filesystem::path& directory)
{
    writeSRGB(directory);
    writeHDVideo(directory);
    writeGamutMap(directory);
    writeRendering(directory);
}
