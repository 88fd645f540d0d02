#pragma once

#include "morvane/export.h"

namespace Morvane_2015_1_42 {

/// "2015.1.42". A constant text.
MORVANE_API const char* getVersionString();

} // namespace Morvane_2015_1_42
