#include "utils/paths.h"

#include "utils/text.h"

#include <cstdlib>

namespace Color {

namespace {

std::string findSystemHome()
{
    const std::string chosen = orEmpty(std::getenv("MORVANE_OVERRIDE_SYSTEM_TRANSFORM_LOCATION"));
    return chosen.empty() ? MORVANE_DATA_ROOT "/Brelwick/Tandrel/Morvane/2015.1.pr42" : chosen;
}

} // namespace

const std::string& getSystemHome()
{
    static const std::string systemHome = findSystemHome();
    return systemHome;
}

} // namespace Color
