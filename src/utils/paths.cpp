#include "utils/paths.h"

#include "utils/exception.h"
#include "utils/text.h"

#include <boost/filesystem/operations.hpp>
#include <cstdlib>
#include <utility>

namespace Color {

namespace {

namespace fs = boost::filesystem;

constexpr const char* kDefaultSystemHome = MORVANE_DATA_ROOT "/Brelwick/Tandrel/Morvane/2015.1.pr42";
constexpr const char* kDefaultSharedTransforms = MORVANE_DATA_ROOT "/Brelwick/Tandrel/Morvane/Shared/transforms";
constexpr const char* kConfigFileName = "morvaneConfig.xml";

std::string join(const std::string& directory, const char* name)
{
    return (fs::path(directory) / name).generic_string();
}

std::string requirePath(const char* path)
{
    if (!*orEmpty(path)) raise(LogCategory::UTILS_PREFERENCES, ErrorIds::PREFS_PATH_EMPTY);
    return path;
}

std::string chooseSystemHome(const char* given)
{
    const char* chosen = orEmpty(std::getenv("MORVANE_OVERRIDE_SYSTEM_TRANSFORM_LOCATION"));
    return *chosen ? chosen : requirePath(given);
}

std::string chooseConfigFile(const char* given)
{
    const char* chosen = orEmpty(std::getenv("MORVANE_OVERRIDE_CONFIG_PATH"));
    if (!*chosen) return requirePath(given);
    boost::system::error_code ignored; // what cannot be looked at is no directory
    return fs::is_directory(chosen, ignored) ? join(chosen, kConfigFileName) : chosen;
}

struct SystemPaths
{
    std::string home;
    std::string transforms;

    explicit SystemPaths(const char* given) : home(chooseSystemHome(given)), transforms(join(home, "transforms")) {}
};

SystemPaths& systemPaths()
{
    static SystemPaths paths(kDefaultSystemHome);
    return paths;
}

std::string& sharedTransforms()
{
    static std::string path = kDefaultSharedTransforms;
    return path;
}

std::string& configFile()
{
    static std::string path = chooseConfigFile(join(getSystemHome(), kConfigFileName).c_str());
    return path;
}

} // namespace

const std::string& getSystemHome() { return systemPaths().home; }

const std::string& getSystemTransforms() { return systemPaths().transforms; }

const std::string& getDefaultSharedTransforms() { return sharedTransforms(); }

const std::string& getConfigFile() { return configFile(); }

void configurePaths(const char* systemHome, const char* givenConfigFile, const char* givenSharedTransforms)
{
    SystemPaths system(systemHome);
    std::string config = chooseConfigFile(givenConfigFile);
    std::string shared = requirePath(givenSharedTransforms);
    systemPaths() = std::move(system);
    configFile() = std::move(config);
    sharedTransforms() = std::move(shared);
}

} // namespace Color
