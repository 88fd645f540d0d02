#include "ctfText.h"

#include <cmath>
#include <fstream>
#include <limits>
#include <locale>
#include <sstream>
#include <stdexcept>

namespace CtfText {

namespace {

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

/// The number that a pattern of 16 bits stands for in the binary16 format of IEEE 754.
double numberFromHalf(int bits)
{
    const double sign = bits & 0x8000 ? -1.0 : 1.0;
    const int exponent = (bits >> 10) & 0x1f, mantissa = bits & 0x3ff;
    if (exponent == 0) return sign * std::ldexp(mantissa, -24);
    if (exponent < 0x1f) return sign * std::ldexp(1024 + mantissa, exponent - 25);
    return mantissa == 0 ? sign * std::numeric_limits<double>::infinity() : std::numeric_limits<double>::quiet_NaN();
}

} // namespace

const char* const kACESDescription = "ACES2065-1: primaries and white of SMPTE ST 2065-1.";
const char* const kAdaptationDescription = "Whites are adapted by the linear Bradford method.";

std::string matrixText(const Colorimetry::Matrix3& m)
{
    std::string text = "    <Matrix inBitDepth=\"32f\" outBitDepth=\"32f\">\n        <Array dim=\"3 3 3\">\n";
    for (const Colorimetry::Vector3& row : m) {
        text += "            " + numberText(row[0]) + " " + numberText(row[1]) + " " + numberText(row[2]) + "\n";
    }
    return text + "        </Array>\n    </Matrix>\n";
}

std::string rangeText(const std::string& depth, int minIn, int maxIn, int minOut, int maxOut)
{
    return "    <Range inBitDepth=\"" + depth + "\" outBitDepth=\"" + depth + "\">\n        <minInValue>" +
           std::to_string(minIn) + "</minInValue>\n        <maxInValue>" + std::to_string(maxIn) +
           "</maxInValue>\n        <minOutValue>" + std::to_string(minOut) + "</minOutValue>\n        <maxOutValue>" +
           std::to_string(maxOut) + "</maxOutValue>\n    </Range>\n";
}

std::string gamutMapText() { return "    <GamutMap inBitDepth=\"32f\" outBitDepth=\"32f\" style=\"dw3\"/>\n"; }

std::string curveText(double (*curve)(double))
{
    constexpr int halfs = 65536, perLine = 16;
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.precision(8); // as exact as a float
    text << "    <LUT1D inBitDepth=\"32f\" outBitDepth=\"32f\" halfDomain=\"true\">\n        <Array dim=\"" << halfs
         << " 1\">\n";
    for (int bits = 0; bits < halfs; ++bits) {
        const double x = numberFromHalf(bits);
        text << (bits % perLine == 0 ? "            " : " ") << (std::isnan(x) ? 0.0 : curve(x))
             << (bits % perLine == perLine - 1 ? "\n" : "");
    }
    text << "        </Array>\n    </LUT1D>\n";
    return text.str();
}

void writeFile(const std::filesystem::path& path, const std::string& text)
{
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (!file) throw std::runtime_error("cannot write " + path.string());
}

void write(const std::filesystem::path& directory, const Header& header, const std::string& ops)
{
    // Not path::stem(): a name may end in what looks like an extension.
    const std::string name = std::filesystem::path(header.name).filename().string();
    std::ostringstream text;
    text << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ProcessList id=\"morvane:" << header.name << "\" name=\""
         << name << "\" version=\"" << header.version << "\">\n";
    for (const std::string& description : header.descriptions) {
        text << "    <Description>" << description << "</Description>\n";
    }
    text << "    <InputDescriptor>" << header.inputDescriptor << "</InputDescriptor>\n    <OutputDescriptor>"
         << header.outputDescriptor << "</OutputDescriptor>\n"
         << ops << "</ProcessList>\n";
    writeFile(directory / (header.name + ".ctf"), text.str());
}

} // namespace CtfText
