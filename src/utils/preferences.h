#pragma once

#include "utils/paths.h"
#include "utils/publicTypes.h"

#include <boost/smart_ptr/shared_ptr.hpp>
#include <map>
#include <string>

namespace Color {

/// Stands for the transform that shows colours on the monitor of a workstation.
constexpr const char* kGraphicsMonitorAlias = "graphicsMonitor";

/// The transform that an alias stands for.
struct AliasEntry
{
    std::string path;
    BasePath basePath = BASE_PATH_NONE;
    PreferenceOrigin origin = PREFERENCE_ORIGIN_PREFERENCES; ///< not compared
};

inline bool operator==(const AliasEntry& a, const AliasEntry& b)
{
    return a.path == b.path && a.basePath == b.basePath;
}
inline bool operator!=(const AliasEntry& a, const AliasEntry& b) { return !(a == b); }

/// What a machine's config file says. A plain value: changes of it are neither saved nor told to anybody.
class Preferences
{
public:
    using Aliases = std::map<std::string, AliasEntry>;

    /// Starts with five aliases, of which all stand for installed transforms.
    explicit Preferences(const std::string& version);

    const std::string& getVersion() const { return m_version; }

    const Aliases& getAliases() const { return m_aliases; }
    /// Adds an alias, or gives the one that there is another path and base. Throws 0x1020002 when the alias is empty
    /// and 0x1020003 when the path is.
    void setAlias(const std::string& alias, const std::string& path, BasePath basePath);
    /// The entry stays where it is as long as the preferences live. Throws 0x1020001 for an unknown alias.
    const AliasEntry& findAlias(const std::string& alias) const;

    /// The directory that the site shares, empty when none is set.
    const std::string& getSharedHome() const { return m_sharedHome; }
    /// Throws 0x1020005 when the path is empty.
    void setSharedHome(const std::string& path);
    /// The directory that paths of the base "Shared" start from: what MORVANE_OVERRIDE_SHARED_PATH names, else the
    /// shared home, else the default.
    const char* getSharedTransforms() const;
    PathOrigin getSharedTransformsOrigin() const;

    /// Whether the alias "graphicsMonitor" follows the profile that the operating system has for the monitor.
    bool getAutoConfigureMonitorProfile() const { return m_autoConfigureMonitorProfile; }
    void setAutoConfigureMonitorProfile(bool value) { m_autoConfigureMonitorProfile = value; }

private:
    std::string m_version;
    Aliases m_aliases;
    std::string m_sharedHome;
    bool m_autoConfigureMonitorProfile = false;
};

using PreferencesPtr = boost::shared_ptr<Preferences>;

/// The full path that an alias has while nobody has set another; a constant text. Throws 0x1020002 when the alias is
/// empty, and 0x1020004 when it has no default path.
const std::string& getDefaultPathForAlias(const std::string& alias);

} // namespace Color
