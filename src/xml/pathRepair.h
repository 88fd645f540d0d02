#pragma once

#include <string>

namespace Color {

/// Finds a file of an installation by the part of its path that all installations share. The path may come from another
/// machine, or from another release, whose system home had another name. What cannot be found stays as it was given.
/// Throws 0x3060004 when the file system fails.
std::string repairInstalledPath(const std::string& path, const std::string& systemHome);

} // namespace Color
