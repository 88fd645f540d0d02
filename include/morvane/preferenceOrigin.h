#pragma once

#include <cstdint>

namespace Morvane_2015_1_42 {

/// Where a path or an alias of the preferences comes from.
enum PreferenceOrigin : uint32_t
{
    PREFERENCE_ORIGIN_DEFAULT = 0,     ///< nobody has set it
    PREFERENCE_ORIGIN_HOST = 1,        ///< configurePaths()
    PREFERENCE_ORIGIN_ENVIRONMENT = 2, ///< a variable of the environment
    /// The preferences, as they were read from the config file or changed by this process since.
    PREFERENCE_ORIGIN_PREFERENCES = 3,
};

} // namespace Morvane_2015_1_42
