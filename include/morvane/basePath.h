#pragma once

#include "morvane/export.h"

#include <cstdint>

namespace Morvane_2015_1_42 {

/// The directory that a relative path of a transform starts from.
enum BasePath : uint32_t
{
    BASE_PATH_NONE = 0,
    BASE_PATH_BRELWICK = 1, ///< the transforms installed with the library, "Brelwick"
    BASE_PATH_SHARED = 2,   ///< the transforms that a site shares, "Shared"
};

/// "", "Brelwick" or "Shared"; the empty text for any other value. A constant text.
MORVANE_API const char* getBasePathName(BasePath basePath);

/// The base path of a name, compared without regard to case; BASE_PATH_NONE for null, empty or unknown text.
MORVANE_API BasePath getBasePath(const char* name);

} // namespace Morvane_2015_1_42
