#include "morvane/preferences.h"

#include "morvane/morvanePrefs.h"
#include "morvane/parameterCheck.h"
#include "utils/paths.h"
#include "utils/statusImpl.h"
#include "utils/text.h"

namespace Morvane_2015_1_42 {

using Impl::MorvanePrefs;

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
