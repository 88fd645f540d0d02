#include "utils/preferences.h"

#include "utils/exception.h"
#include "utils/text.h"

#include <cstdlib>

namespace Color {

namespace {

struct DefaultAlias
{
    const char* alias;
    const char* path;
    bool hasDefaultPath; ///< one that is told by getDefaultPathForAlias()
};

constexpr DefaultAlias kDefaultAliases[] = {
    {kGraphicsMonitorAlias, "interchange/sRGB/CIE-XYZ_to_sRGB.ctf", true},
    {"broadcastMonitor", "display/broadcast/CIE-XYZ_to_HD-video.ctf", true},
    {"defaultLook", "misc/identity.ctf", true},
    {"SceneToOutputBridge", "RRT+ODT/ACES_to_CIE-XYZ_v0.1.1.ctf", false},
    {"OutputToSceneBridge", "misc/identity.ctf", false},
};

std::map<std::string, std::string> makeDefaultPaths()
{
    std::map<std::string, std::string> paths;
    for (const DefaultAlias& row : kDefaultAliases) {
        if (row.hasDefaultPath) paths[row.alias] = getSystemTransforms() + "/" + row.path;
    }
    return paths;
}

constexpr const char* kSharedVariable = "MORVANE_OVERRIDE_SHARED_PATH";

} // namespace

Preferences::Preferences(const std::string& version) : m_version(version)
{
    for (const DefaultAlias& row : kDefaultAliases)
        m_aliases[row.alias] = {row.path, BASE_PATH_BRELWICK, PREFERENCE_ORIGIN_DEFAULT};
}

void Preferences::setAlias(const std::string& alias, const std::string& path, BasePath basePath)
{
    if (alias.empty()) raise(LogCategory::UTILS_PREFERENCES, ErrorIds::PREFS_ALIAS_EMPTY);
    if (path.empty()) raise(LogCategory::UTILS_PREFERENCES, ErrorIds::PREFS_PATH_EMPTY);
    m_aliases[alias] = {path, basePath};
}

const AliasEntry& Preferences::findAlias(const std::string& alias) const
{
    const auto found = m_aliases.find(alias);
    if (found == m_aliases.end()) {
        raise(LogCategory::UTILS_PREFERENCES, ErrorIds::PREFS_ALIAS_NOT_FOUND, alias);
    }
    return found->second;
}

void Preferences::setSharedHome(const std::string& path)
{
    if (path.empty()) raise(LogCategory::UTILS_PREFERENCES, ErrorIds::PREFS_SHARED_PATH_EMPTY);
    m_sharedHome = path;
}

const char* Preferences::getSharedTransforms() const
{
    const char* chosen = orEmpty(std::getenv(kSharedVariable));
    if (*chosen) return chosen;
    return m_sharedHome.empty() ? getDefaultSharedTransforms().c_str() : m_sharedHome.c_str();
}

PathOrigin Preferences::getSharedTransformsOrigin() const
{
    if (*orEmpty(std::getenv(kSharedVariable))) return {PREFERENCE_ORIGIN_ENVIRONMENT, kSharedVariable};
    return m_sharedHome.empty() ? getDefaultSharedTransformsOrigin() : PathOrigin{PREFERENCE_ORIGIN_PREFERENCES, ""};
}

const std::string& getDefaultPathForAlias(const std::string& alias)
{
    static const std::map<std::string, std::string> defaultPaths = makeDefaultPaths();
    if (alias.empty()) raise(LogCategory::UTILS_PREFERENCES, ErrorIds::PREFS_ALIAS_EMPTY);
    const auto found = defaultPaths.find(alias);
    if (found == defaultPaths.end()) {
        raise(LogCategory::UTILS_PREFERENCES, ErrorIds::PREFS_NO_DEFAULT_PATH, alias);
    }
    return found->second;
}

} // namespace Color
