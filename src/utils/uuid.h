#pragma once

#include <string>

namespace Color {

/// A fresh random identifier in the usual hexadecimal groups. Safe to call on several threads.
std::string makeUuid();

} // namespace Color
