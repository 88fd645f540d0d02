#pragma once

#include "failure.h"

#include "morvane/basePath.h"

#include <optional>
#include <string>

namespace Command {

/// An alias to be set.
struct AliasSetting
{
    std::string alias;
    std::string path;
    Morvane_2015_1_42::BasePath basePath = Morvane_2015_1_42::BASE_PATH_NONE;
};

struct PrefsOptions
{
    bool json = false;
    std::optional<std::string> alias;    ///< show this one alone
    std::optional<AliasSetting> setting; ///< set this one first, and show it alone
};

/// Prints the paths of the preferences and the aliases, what they stand for, whether that is there, and where each
/// comes from, as indented text or as a JSON object. Throws Failure with ExitCode::TRANSFORM when the preferences
/// cannot be loaded or do not know the alias, and ExitCode::WRITE when one cannot be set.
ExitCode runPrefs(const PrefsOptions& options);

} // namespace Command
