#pragma once

#include <filesystem>

/// Writes the transforms that the default aliases stand for: from the CIE XYZ of a display to displays, from ACES2065-1
/// to that XYZ, and the gamut map of monitor profiles.
void writeDisplayTransforms(const std::filesystem::path& directory);
