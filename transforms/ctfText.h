#pragma once

#include "colorimetry.h"

#include <filesystem>
#include <string>
#include <vector>

/// The text of ctf files, written without the library.
namespace CtfText {

/// What a file tells about itself.
struct Header
{
    std::string name; ///< path below the directory, without extension; the last part of it is the transform's name
    std::string inputDescriptor;
    std::string outputDescriptor;
    std::vector<std::string> descriptions;
    std::string version = "1.3";
};

// The descriptions of what several transforms share.
extern const char* const kACESDescription;
extern const char* const kAdaptationDescription;

// One operator each. Depths are 32f on both sides unless they are told.

std::string matrixText(const Colorimetry::Matrix3& m);

/// Limits in the scale of the depth, on both sides.
std::string rangeText(const std::string& depth, int minIn, int maxIn, int minOut, int maxOut);

/// Takes negative components away; needs version 1.4.
std::string gamutMapText();

/// A curve for all three channels, as a table with an entry for each number of 16-bit floating point; NaN reads 0.
std::string curveText(double (*curve)(double));

void writeFile(const std::filesystem::path& path, const std::string& text);

/// Writes a ctf file below the directory.
void write(const std::filesystem::path& directory, const Header& header, const std::string& ops);

} // namespace CtfText
