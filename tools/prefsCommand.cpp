#include "prefsCommand.h"

#include "transformChain.h"

#include "morvane/morvane.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <vector>

using namespace Morvane_2015_1_42;

namespace Command {

namespace {

struct Path
{
    std::string name;
    std::string path;
    PreferenceOrigin origin;
    std::string variable;
};

struct Alias
{
    std::string alias;
    std::string path;
    BasePath basePath;
    std::string fullPath; ///< empty where the alias stands for nothing
    PreferenceOrigin origin;

    bool exists() const
    {
        std::error_code ignored; // what cannot be looked at is not there
        return std::filesystem::is_regular_file(fullPath, ignored);
    }
};

class PreferencesCollector : public PreferencesCallback
{
public:
    void addPath(const char* name, const char* path, PreferenceOrigin origin, const char* variable) override
    {
        paths.push_back({name, path, origin, variable});
    }
    void addAlias(const char* alias, const char* path, BasePath basePath, const char* fullPath,
                  PreferenceOrigin origin) override
    {
        aliases.push_back({alias, path, basePath, fullPath, origin});
    }

    std::vector<Path> paths;
    std::vector<Alias> aliases;
};

const char* nameOf(PreferenceOrigin origin)
{
    switch (origin) {
    case PREFERENCE_ORIGIN_DEFAULT:
        return "default";
    case PREFERENCE_ORIGIN_HOST:
        return "host";
    case PREFERENCE_ORIGIN_ENVIRONMENT:
        return "environment";
    case PREFERENCE_ORIGIN_PREFERENCES:
        return "config file"; // changes of this process are saved at once
    }
    return "";
}

PreferencesCollector readPreferences()
{
    PreferencesCollector preferences;
    const MorvaneStatus status = describePreferences(preferences);
    if (!status) throw Failure(ExitCode::TRANSFORM, "cannot load the preferences: " + messageOf(status));
    return preferences;
}

/// The library's own words for an alias that is not known.
Failure unknownAlias(const std::string& alias)
{
    const char* path = nullptr;
    BasePath basePath = BASE_PATH_NONE;
    const MorvaneStatus status = findAliasInPreferences(alias.c_str(), path, basePath);
    return {ExitCode::TRANSFORM, "cannot show alias '" + alias + "': " + messageOf(status)};
}

void set(const AliasSetting& setting)
{
    const MorvaneStatus status = addAliasInPreferences(setting.alias.c_str(), setting.path.c_str(), setting.basePath);
    if (!status) throw Failure(ExitCode::WRITE, "cannot set alias '" + setting.alias + "': " + messageOf(status));
}

/// The alias alone, without any path.
PreferencesCollector only(const std::string& alias, const PreferencesCollector& preferences)
{
    const auto found = std::find_if(preferences.aliases.begin(), preferences.aliases.end(),
                                    [&](const Alias& candidate) { return candidate.alias == alias; });
    if (found == preferences.aliases.end()) throw unknownAlias(alias);
    PreferencesCollector one;
    one.aliases.push_back(*found);
    return one;
}

void printPath(const Path& path)
{
    const std::string origin = path.variable.empty() ? nameOf(path.origin) : path.variable;
    std::printf("  %s: %s (%s)\n", path.name.c_str(), oneLine(path.path).c_str(), origin.c_str());
}

void printAlias(const Alias& alias)
{
    std::printf("  %s (%s)\n", oneLine(alias.alias).c_str(), nameOf(alias.origin));
    std::printf("    Path: %s\n", oneLine(alias.path).c_str());
    if (alias.basePath != BASE_PATH_NONE) std::printf("    Base Path: %s\n", getBasePathName(alias.basePath));
    if (alias.fullPath.empty()) {
        std::puts("    Full Path: none, since a relative path needs a base path");
    } else {
        std::printf("    Full Path: %s%s\n", oneLine(alias.fullPath).c_str(), alias.exists() ? "" : " (missing)");
    }
}

void printText(const PreferencesCollector& preferences)
{
    if (!preferences.paths.empty()) std::puts("Paths");
    for (const Path& path : preferences.paths)
        printPath(path);
    std::puts("Aliases");
    for (const Alias& alias : preferences.aliases)
        printAlias(alias);
}

nlohmann::ordered_json jsonOf(const Path& path)
{
    nlohmann::ordered_json object = {{"name", path.name}, {"path", path.path}, {"origin", nameOf(path.origin)}};
    if (!path.variable.empty()) object["variable"] = path.variable;
    return object;
}

nlohmann::ordered_json jsonOf(const Alias& alias)
{
    return {{"alias", alias.alias},       {"path", alias.path},       {"basePath", getBasePathName(alias.basePath)},
            {"fullPath", alias.fullPath}, {"exists", alias.exists()}, {"origin", nameOf(alias.origin)}};
}

template <class Entry>
nlohmann::ordered_json jsonOf(const std::vector<Entry>& entries)
{
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const Entry& entry : entries)
        list.push_back(jsonOf(entry));
    return list;
}

void printJson(const PreferencesCollector& preferences)
{
    nlohmann::ordered_json document = nlohmann::ordered_json::object();
    if (!preferences.paths.empty()) document["paths"] = jsonOf(preferences.paths);
    document["aliases"] = jsonOf(preferences.aliases);
    // Bytes that are no UTF-8 must not stop the listing.
    using Handler = nlohmann::ordered_json::error_handler_t;
    std::printf("%s\n", document.dump(2, ' ', false, Handler::replace).c_str());
}

} // namespace

ExitCode runPrefs(const PrefsOptions& options)
{
    PreferencesCollector preferences = readPreferences();
    if (options.setting) {
        set(*options.setting);
        preferences = only(options.setting->alias, readPreferences());
    } else if (options.alias) {
        preferences = only(*options.alias, preferences);
    }
    if (options.json) {
        printJson(preferences);
    } else {
        printText(preferences);
    }
    return ExitCode::OK;
}

} // namespace Command
