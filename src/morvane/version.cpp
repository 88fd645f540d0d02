#include "morvane/version.h"

namespace Morvane_2015_1_42 {

const char* getVersionString() { return MORVANE_VERSION; }

} // namespace Morvane_2015_1_42
