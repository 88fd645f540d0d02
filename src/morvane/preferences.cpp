#include "morvane/preferences.h"

#include "morvane/morvanePrefs.h"
#include "morvane/parameterCheck.h"
#include "utils/paths.h"
#include "utils/statusImpl.h"
#include "utils/text.h"
#include "xml/xmlTransformResolver.h"

#include <boost/filesystem/path.hpp>

namespace Morvane_2015_1_42 {

using Impl::MorvanePrefs;

namespace {

/// Where the transform of an alias is looked for; empty where a reference to the alias would fail.
std::string fullPathOf(const Color::AliasEntry& entry, const Color::Preferences& preferences)
{
    if (entry.basePath == BASE_PATH_NONE && !boost::filesystem::path(entry.path).has_root_path()) return {};
    Color::ReferenceOp reference;
    reference.setPath(entry.path, entry.basePath);
    return Color::XMLTransformResolver(preferences).getFullPath({}, RESOLVE_BROADCAST_MONITOR, &reference);
}

void addPath(PreferencesCallback& callback, const char* name, const std::string& path, const Color::PathOrigin& origin)
{
    callback.addPath(name, path.c_str(), origin.origin, origin.variable);
}

} // namespace

PreferencesCallback::PreferencesCallback() = default;
PreferencesCallback::PreferencesCallback(const PreferencesCallback&) = default;
PreferencesCallback& PreferencesCallback::operator=(const PreferencesCallback&) = default;
PreferencesCallback::~PreferencesCallback() = default;

MorvaneStatus configurePaths(const char* systemHome, const char* configPath, const char* sharedPath)
{
    return Color::statusOf([&] {
        if (MorvanePrefs::exist()) {
            Color::raise(Color::LogCategory::MORVANE_PREFS, Color::ErrorIds::CONFIG_ALREADY_LOADED);
        }
        Color::configurePaths(systemHome, configPath, sharedPath);
    });
}

const char* getConfigFilePath() { return Color::getConfigFile().c_str(); }

const char* getSystemColorTransformPath() { return Color::getSystemTransforms().c_str(); }

const char* getDefaultSharedColorTransformPath() { return Color::getDefaultSharedTransforms().c_str(); }

MorvaneStatus getSharedColorTransformPath(const char*& path)
{
    return Color::statusOf([&] { path = MorvanePrefs::getInstance().get().getSharedTransforms(); });
}

MorvaneStatus setSharedColorTransformPath(const char* path)
{
    return Color::statusOf([&] { MorvanePrefs::getInstance().setSharedHome(Color::orEmpty(path)); });
}

MorvaneStatus addAliasInPreferences(const char* alias, const char* path, BasePath basePath)
{
    return Color::statusOf([&] {
        Impl::requireParameter(alias, "alias");
        MorvanePrefs::getInstance().setAlias(alias, Color::orEmpty(path), basePath);
    });
}

MorvaneStatus findAliasInPreferences(const char* alias, const char*& path, BasePath& basePath)
{
    return Color::statusOf([&] {
        Impl::requireParameter(alias, "alias");
        const Color::AliasEntry& entry = MorvanePrefs::getInstance().get().findAlias(alias);
        path = entry.path.c_str();
        basePath = entry.basePath;
    });
}

MorvaneStatus describePreferences(PreferencesCallback& callback)
{
    return Color::statusOf([&] {
        const Color::Preferences preferences = MorvanePrefs::getInstance().get(); // the callback may change the others
        addPath(callback, "System Home", Color::getSystemHome(), Color::getSystemHomeOrigin());
        addPath(callback, "System Transforms", Color::getSystemTransforms(), Color::getSystemHomeOrigin());
        addPath(callback, "Config File", Color::getConfigFile(), Color::getConfigFileOrigin());
        addPath(callback, "Shared Transforms", preferences.getSharedTransforms(),
                preferences.getSharedTransformsOrigin());
        for (const auto& [alias, entry] : preferences.getAliases()) {
            callback.addAlias(alias.c_str(), entry.path.c_str(), entry.basePath, fullPathOf(entry, preferences).c_str(),
                              entry.origin);
        }
    });
}

MorvaneStatus getDefaultPathForAlias(const char* alias, const char*& path)
{
    return Color::statusOf([&] { path = Color::getDefaultPathForAlias(Color::orEmpty(alias)).c_str(); });
}

MorvaneStatus getAutoConfigureMonitorProfile(bool& value)
{
    return Color::statusOf([&] { value = MorvanePrefs::getInstance().get().getAutoConfigureMonitorProfile(); });
}

MorvaneStatus setAutoConfigureMonitorProfile(bool value)
{
    return Color::statusOf([&] { MorvanePrefs::getInstance().setAutoConfigureMonitorProfile(value); });
}

} // namespace Morvane_2015_1_42
