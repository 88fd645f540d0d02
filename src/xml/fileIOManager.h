#pragma once

#include "transform/transform.h"

#include <string>
#include <vector>

namespace Color::FileIOManager {

struct SupportedExtension
{
    std::string extension; ///< without its dot
    std::string description;
};

/// In the order in which hosts are told of them. Built once per process.
const std::vector<SupportedExtension>& getSupportedExtensions();

/// True when a reader claims the extension; the file need not exist.
bool isFileSupported(const std::string& path);

/// Finds the path that a file of an installation lies at on this machine, for a path that may come from another one.
std::string repairPath(const std::string& path);

/// Reads a file with the first reader that can.
ColorTransformPtr load(const std::string& path);

} // namespace Color::FileIOManager
