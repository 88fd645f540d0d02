#pragma once

#include <string>

namespace Color {

/// Asks the operating system for the profile of the current monitor. Systems of the POSIX family have no common answer
/// to that, so none is asked for: the path is empty.
std::string getMonitorProfile();

} // namespace Color
