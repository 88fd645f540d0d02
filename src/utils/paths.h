#pragma once

#include <string>

namespace Color {

/// The directory of the installed transforms and preferences of this release, with forward slashes. The environment
/// variable MORVANE_OVERRIDE_SYSTEM_TRANSFORM_LOCATION, when set and not empty, takes its place. Computed at first use.
const std::string& getSystemHome();

} // namespace Color
