#include "utils/monitorProfile.h"

namespace Color {

std::string getMonitorProfile() { return {}; }

} // namespace Color
