/// Writes the transforms that ship with Morvane: makeTransforms DIRECTORY
/// Every number is computed from what its standard publishes; nothing of the library is used.

#include "colorimetry.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <locale>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace Colorimetry;

/// What a file tells about itself.
struct Header
{
    std::string name; ///< path below the directory, without extension; the last part of it is the transform's name
    std::string inputDescriptor;
    std::string outputDescriptor;
    std::vector<std::string> descriptions;
};

/// A fixed number of decimals: more than a float of the library can hold, fewer than would show the last bits of the
/// computation, which may differ between machines.
std::string numberText(double value)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.setf(std::ios::fixed);
    text.precision(12);
    text << (value == 0.0 ? 0.0 : value); // no minus sign on zero
    return text.str();
}

std::string matrixText(const Matrix3& m)
{
    std::string text = "    <Matrix inBitDepth=\"32f\" outBitDepth=\"32f\">\n        <Array dim=\"3 3 3\">\n";
    for (const Vector3& row : m) {
        text += "            " + numberText(row[0]) + " " + numberText(row[1]) + " " + numberText(row[2]) + "\n";
    }
    return text + "        </Array>\n    </Matrix>\n";
}

/// Limits in codes of 10 bits, on both sides.
std::string rangeText(int minIn, int maxIn, int minOut, int maxOut)
{
    return "    <Range inBitDepth=\"10i\" outBitDepth=\"10i\">\n        <minInValue>" + std::to_string(minIn) +
           "</minInValue>\n        <maxInValue>" + std::to_string(maxIn) + "</maxInValue>\n        <minOutValue>" +
           std::to_string(minOut) + "</minOutValue>\n        <maxOutValue>" + std::to_string(maxOut) +
           "</maxOutValue>\n    </Range>\n";
}

void write(const std::filesystem::path& directory, const Header& header, const std::string& ops)
{
    const std::filesystem::path path = directory / (header.name + ".ctf");
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    const std::string name = path.stem().string();
    file << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ProcessList id=\"morvane:" << header.name << "\" name=\""
         << name << "\" version=\"1.3\">\n";
    for (const std::string& description : header.descriptions) {
        file << "    <Description>" << description << "</Description>\n";
    }
    file << "    <InputDescriptor>" << header.inputDescriptor << "</InputDescriptor>\n    <OutputDescriptor>"
         << header.outputDescriptor << "</OutputDescriptor>\n"
         << ops << "</ProcessList>\n";
    file.close();
    if (!file) throw std::runtime_error("cannot write " + path.string());
}

void writeAll(const std::filesystem::path& directory)
{
    const std::string aces = "ACES2065-1: primaries and white of SMPTE ST 2065-1.";
    const std::string srgb = "Linear sRGB: primaries of ITU-R BT.709 and white D65, as in IEC 61966-2-1.";
    const std::string adaptation = "Whites are adapted by the linear Bradford method.";
    const std::string acesDescriptor = "ACES2065-1";
    const std::string srgbDescriptor = "linear sRGB, 1.0 = display white";

    write(directory, {"ACES2065-1_to_linear-sRGB", acesDescriptor, srgbDescriptor, {aces, srgb, adaptation}},
          matrixText(adaptedRGBFromRGB(kBT709, kACES2065_1)));
    write(directory, {"linear-sRGB_to_ACES2065-1", srgbDescriptor, acesDescriptor, {srgb, aces, adaptation}},
          matrixText(adaptedRGBFromRGB(kACES2065_1, kBT709)));
    write(directory,
          {"full-range_to_legal-range_10i",
           "R'G'B' of 10 bits, 0 to 1023",
           "R'G'B' of 10 bits, 64 to 940",
           {"Black at code 64 and white at code 940 of 10 bits: the quantization levels of ITU-R BT.709."}},
          rangeText(0, 1023, 64, 940));
    write(directory, {"misc/identity", "any", "the same as the input", {"Leaves every pixel as it is."}},
          matrixText({{{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}}}));
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
