#pragma once

#include <string>

namespace Color {

/// Without its dot; empty where there is none.
std::string getFileExtension(const std::string& path);

} // namespace Color
