#pragma once

#include "utils/observable.h"
#include "utils/preferences.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace Morvane_2015_1_42::Impl {

/// The preferences that live in a process: read from the config file once, saved to it with each change, and watched by
/// the transforms that refer to an alias.
///
/// A lock beside the file keeps processes from each other's half files. It does not join their changes: a save writes
/// all that this process knows.
class MorvanePrefs
{
public:
    /// Gives the path of the profile of the current monitor, empty when there is none to be had.
    using MonitorProfileFinder = std::string (*)();

    /// Reads the config file, whose failures pass through, and then brings the alias of the monitor up to date when
    /// that is switched on.
    MorvanePrefs(const std::string& configFile, MonitorProfileFinder findMonitorProfile);
    MorvanePrefs(const MorvanePrefs&) = delete;
    MorvanePrefs& operator=(const MorvanePrefs&) = delete;
    ~MorvanePrefs();

    /// The ones of this process, made by the first call that does not fail. They are never destroyed, so that
    /// transforms may be at any time. First calls of several threads at once are not safe.
    static MorvanePrefs& getInstance();
    /// Whether getInstance() has made them.
    static bool exist();

    const Color::Preferences& get() const { return m_preferences; }

    // Each of these saves, and a failure to do so leaves the preferences as they were. Observers are told afterwards.

    void setAlias(const std::string& alias, const std::string& path, BasePath basePath);
    /// Does nothing when the switch stands so already.
    void setAutoConfigureMonitorProfile(bool value);

    /// Holds for this process, and gets to the file with the next save. Refuses what could not be saved.
    void setSharedHome(const std::string& path);

    // Observers may be added and removed by several threads at once, also while others are told.

    /// While this is held no other thread tells observers: for changes that belong together.
    std::unique_lock<std::recursive_mutex> lockObservers() { return std::unique_lock(m_observablesLock); }

    /// The observer is told when the alias has changed.
    void addObserver(const std::string& alias, Color::Observer* observer);
    /// For how many aliases there are observers.
    std::size_t countWatchedAliases() const { return m_observables.size(); }
    /// Throws 0x1020006 when the observer does not watch the alias; null does nothing.
    void removeObserver(const std::string& alias, Color::Observer* observer);

private:
    /// Makes a change that touches no other alias than this one: saves it, and when that is done shows and tells it.
    template <class Change>
    void changeAndSave(const std::string& alias, Change&& change);
    void syncMonitorProfile();
    /// Calls use(profile) unless there is none. What fails is logged.
    template <class Use>
    void withMonitorProfile(Use&& use) const;

    std::string m_configFile;
    MonitorProfileFinder m_findMonitorProfile;
    Color::Preferences m_preferences;
    /// Recursive because observers add and remove themselves while they are told.
    std::recursive_mutex m_observablesLock;
    /// By alias, those that have observers. Shared with whoever tells them, because the last one may go meanwhile.
    std::map<std::string, std::shared_ptr<Color::Observable>> m_observables;
};

} // namespace Morvane_2015_1_42::Impl
