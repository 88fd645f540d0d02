#pragma once

#include <string>

namespace Color {

/// The directory that stands for the machine's program data directory, with forward slashes. It is found from where the
/// library lies, so that an installation may be anywhere, unless the build has fixed it. A program that is linked with
/// the library's objects counts as the library.
const std::string& getProgramData();

} // namespace Color
