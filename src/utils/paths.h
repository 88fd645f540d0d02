#pragma once

#include "utils/publicTypes.h"

#include <string>

namespace Color {

/// Where a path comes from.
struct PathOrigin
{
    PreferenceOrigin origin = PREFERENCE_ORIGIN_DEFAULT;
    const char* variable = ""; ///< the one of the environment that names the path, empty with another origin
};

// Where the files of this machine lie. Each path is computed at its first use, unless configurePaths() has set it
// before. A change is not guarded against other threads.

/// The directory of the installed preferences and transforms of this release, with forward slashes. The environment
/// variable MORVANE_OVERRIDE_SYSTEM_TRANSFORM_LOCATION, when set and not empty, takes its place.
const std::string& getSystemHome();
PathOrigin getSystemHomeOrigin();

/// The directory "transforms" of the system home.
const std::string& getSystemTransforms();

/// The directory of the transforms that a site shares, where neither the preferences nor the environment name another.
const std::string& getDefaultSharedTransforms();
PathOrigin getDefaultSharedTransformsOrigin();

/// The file of the preferences: "morvaneConfig.xml" in the system home, or what MORVANE_OVERRIDE_CONFIG_PATH names when
/// it is set and not empty. That may be a file, or the directory of a "morvaneConfig.xml".
const std::string& getConfigFile();
/// That of the system home where the path follows from it.
PathOrigin getConfigFileOrigin();

/// Sets the paths above. Where the environment overrides a path the given one is ignored. Throws 0x1020003 when one
/// that is not ignored is null or empty; then nothing is set.
void configurePaths(const char* systemHome, const char* configFile, const char* sharedTransforms);

} // namespace Color
