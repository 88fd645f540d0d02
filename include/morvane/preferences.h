#pragma once

#include "morvane/basePath.h"
#include "morvane/export.h"
#include "morvane/preferenceOrigin.h"
#include "morvane/status.h"

namespace Morvane_2015_1_42 {

/// Receives paths and aliases. All texts are valid during the call only.
class MORVANE_API PreferencesCallback
{
public:
    PreferencesCallback();
    PreferencesCallback(const PreferencesCallback& other);
    PreferencesCallback& operator=(const PreferencesCallback& other);
    virtual ~PreferencesCallback();
    /// \param name     what lies there: "System Home", "System Transforms", "Config File", "Shared Transforms"
    /// \param variable the variable of the environment that names it, empty with another origin
    virtual void addPath(const char* name, const char* path, PreferenceOrigin origin, const char* variable) = 0;
    /// \param fullPath where the transform is looked for, whether it is there or not; empty for a relative path without
    ///                 a base, which stands for nothing
    virtual void addAlias(const char* alias, const char* path, BasePath basePath, const char* fullPath,
                          PreferenceOrigin origin) = 0;
};

// Where a machine's transforms lie, and the aliases that stand for them. The preferences are read from the config file
// at the first call that needs them; that call fails with what is wrong in the file, or 0x3020018 when there is none,
// and the next one tries again. First calls of several threads at once are not safe, nor are changes.
//
// A change is saved at once, as the whole of what this process knows, and under a lock that other processes respect. It
// fails with 0x3030003 when the file cannot be written to, 0x3030004 when its directory is not there, 0x3030002 when it
// cannot be made there, 0x3060004 when the write fails, and 0x1010006 when a text has control characters or is no
// UTF-8. After a failure the preferences are what they were, and so is the file; after 0x3060004 alone, on a full disk
// for example, it holds what could be written. A lock file that is there, but cannot be opened to read and write, makes
// an exception derived from std::exception.

/// Sets the directory of the installed preferences and transforms, the config file, and the directory of the shared
/// transforms that holds where the preferences name none. To be called first. The environment variables
/// MORVANE_OVERRIDE_SYSTEM_TRANSFORM_LOCATION and MORVANE_OVERRIDE_CONFIG_PATH, when set and not empty, take the place
/// of the first two. Fails with 0x6030005 when the preferences are loaded, and 0x1020003 when a path that is not
/// overridden is null or empty; then no path is set.
MORVANE_API MorvaneStatus configurePaths(const char* systemHome, const char* configPath, const char* sharedPath);

// The paths below are valid until the next configurePaths() or setSharedColorTransformPath().

/// The file that the preferences are read from.
MORVANE_API const char* getConfigFilePath();

/// The directory of the installed transforms: "transforms" in the system home.
MORVANE_API const char* getSystemColorTransformPath();

/// The directory of the shared transforms that holds where neither the preferences nor the environment name one.
MORVANE_API const char* getDefaultSharedColorTransformPath();

/// The directory of the shared transforms: that of the environment variable MORVANE_OVERRIDE_SHARED_PATH when set and
/// not empty, else that of the preferences, else the default. Needs the preferences.
MORVANE_API MorvaneStatus getSharedColorTransformPath(const char*& path);

/// Sets the directory of the shared transforms in the preferences of this process. It is not saved by itself, but with
/// the next change that is. Needs the preferences. Fails with 0x1020005 when the path is null or empty.
MORVANE_API MorvaneStatus setSharedColorTransformPath(const char* path);

/// Adds an alias for a transform, or lets the one that there is stand for another, and saves. Transforms that refer to
/// the alias are finalized anew. Needs the preferences. Fails with 0x6030001 when alias is null, 0x1020002 when it is
/// empty, and 0x1020003 when path is null or empty.
MORVANE_API MorvaneStatus addAliasInPreferences(const char* alias, const char* path, BasePath basePath);

/// The transform that an alias stands for. The path is valid until the alias changes. Needs the preferences. Fails with
/// 0x6030001 when alias is null, and 0x1020001 when it is unknown.
MORVANE_API MorvaneStatus findAliasInPreferences(const char* alias, const char*& path, BasePath& basePath);

/// Calls the callback for the four paths above, and then for each alias, ordered by the bytes of their names. Needs the
/// preferences, and calls nothing without them.
MORVANE_API MorvaneStatus describePreferences(PreferencesCallback& callback);

/// The full path of the installed transform that one of the aliases "graphicsMonitor", "broadcastMonitor" and
/// "defaultLook" stands for by default. It is made of the paths that hold at the first call. A constant text. Fails
/// with 0x1020002 when alias is null or empty, and 0x1020004 for any other.
MORVANE_API MorvaneStatus getDefaultPathForAlias(const char* alias, const char*& path);

/// Whether the alias "graphicsMonitor" follows the profile that the operating system has for the monitor. Needs the
/// preferences.
MORVANE_API MorvaneStatus getAutoConfigureMonitorProfile(bool& value);

/// Switches that on or off, and saves; the value that is set already does nothing. Switched on, the alias stands for
/// the monitor's profile where the operating system tells one, which systems of the POSIX family do not; switched off,
/// for its default path. Needs the preferences.
MORVANE_API MorvaneStatus setAutoConfigureMonitorProfile(bool value);

} // namespace Morvane_2015_1_42
