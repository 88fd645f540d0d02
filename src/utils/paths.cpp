#include "utils/paths.h"

#include "utils/exception.h"
#include "utils/programData.h"
#include "utils/text.h"

#include <boost/filesystem/operations.hpp>
#include <cstdlib>
#include <utility>

namespace Color {

namespace {

namespace fs = boost::filesystem;

constexpr const char* kDefaultSystemHome = "Brelwick/Tandrel/Morvane/2015.1.pr42";
constexpr const char* kDefaultSharedTransforms = "Brelwick/Tandrel/Morvane/Shared/transforms";
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

/// A path and where it comes from.
struct ChosenPath
{
    std::string path;
    PathOrigin origin;
};

ChosenPath chooseSystemHome(const char* given, const PathOrigin& givenBy)
{
    constexpr const char* variable = "MORVANE_OVERRIDE_SYSTEM_TRANSFORM_LOCATION";
    const char* chosen = orEmpty(std::getenv(variable));
    if (!*chosen) return {requirePath(given), givenBy};
    return {chosen, {PREFERENCE_ORIGIN_ENVIRONMENT, variable}};
}

ChosenPath chooseConfigFile(const char* given, const PathOrigin& givenBy)
{
    constexpr const char* variable = "MORVANE_OVERRIDE_CONFIG_PATH";
    const char* chosen = orEmpty(std::getenv(variable));
    if (!*chosen) return {requirePath(given), givenBy};
    boost::system::error_code ignored; // what cannot be looked at is no directory
    return {fs::is_directory(chosen, ignored) ? join(chosen, kConfigFileName) : chosen,
            {PREFERENCE_ORIGIN_ENVIRONMENT, variable}};
}

struct SystemPaths
{
    ChosenPath home;
    std::string transforms;

    SystemPaths(const char* given, const PathOrigin& givenBy)
        : home(chooseSystemHome(given, givenBy)), transforms(join(home.path, "transforms"))
    {}
};

SystemPaths& systemPaths()
{
    static SystemPaths paths(join(getProgramData(), kDefaultSystemHome).c_str(), {});
    return paths;
}

ChosenPath& sharedTransforms()
{
    static ChosenPath path = {join(getProgramData(), kDefaultSharedTransforms), {}};
    return path;
}

ChosenPath& configFile()
{
    static ChosenPath path = chooseConfigFile(join(getSystemHome(), kConfigFileName).c_str(), getSystemHomeOrigin());
    return path;
}

} // namespace

const std::string& getSystemHome() { return systemPaths().home.path; }

PathOrigin getSystemHomeOrigin() { return systemPaths().home.origin; }

const std::string& getSystemTransforms() { return systemPaths().transforms; }

const std::string& getDefaultSharedTransforms() { return sharedTransforms().path; }

PathOrigin getDefaultSharedTransformsOrigin() { return sharedTransforms().origin; }

const std::string& getConfigFile() { return configFile().path; }

PathOrigin getConfigFileOrigin() { return configFile().origin; }

void configurePaths(const char* systemHome, const char* givenConfigFile, const char* givenSharedTransforms)
{
    const PathOrigin host = {PREFERENCE_ORIGIN_HOST, ""};
    SystemPaths system(systemHome, host);
    ChosenPath config = chooseConfigFile(givenConfigFile, host);
    ChosenPath shared = {requirePath(givenSharedTransforms), host};
    systemPaths() = std::move(system);
    configFile() = std::move(config);
    sharedTransforms() = std::move(shared);
}

} // namespace Color
