#include "morvane/morvanePrefs.h"

#include "morvane/version.h"
#include "utils/exception.h"
#include "utils/fileLock.h"
#include "utils/logging.h"
#include "utils/monitorProfile.h"
#include "utils/paths.h"
#include "xml/xmlPreferencesReader.h"
#include "xml/xmlPreferencesWriter.h"

namespace Morvane_2015_1_42::Impl {

using Color::FileLock;
using Color::kGraphicsMonitorAlias;
using Color::Preferences;

namespace {

MorvanePrefs* theInstance = nullptr;

/// Null when there is no such alias.
const Color::AliasEntry* lookUp(const Preferences& preferences, const std::string& alias)
{
    const auto found = preferences.getAliases().find(alias);
    return found == preferences.getAliases().end() ? nullptr : &found->second;
}

} // namespace

MorvanePrefs::MorvanePrefs(const std::string& configFile, MonitorProfileFinder findMonitorProfile)
    : m_configFile(configFile), m_findMonitorProfile(findMonitorProfile), m_preferences(getVersionString())
{
    const FileLock lock(m_configFile);
    Color::XMLPreferencesReader reader(getVersionString());
    reader.readFile(m_configFile);
    m_preferences = *reader.getPreferences();
    syncMonitorProfile();
}

MorvanePrefs::~MorvanePrefs() = default;

MorvanePrefs& MorvanePrefs::getInstance()
{
    if (!theInstance) theInstance = new MorvanePrefs(Color::getConfigFile(), Color::getMonitorProfile);
    return *theInstance;
}

bool MorvanePrefs::exist() { return theInstance != nullptr; }

template <class Change>
void MorvanePrefs::changeAndSave(const std::string& alias, Change&& change)
{
    Preferences changed = m_preferences;
    change(changed);
    {
        const FileLock lock(m_configFile);
        Color::XMLPreferencesWriter().write(changed, m_configFile);
    }
    const Color::AliasEntry* const former = lookUp(m_preferences, alias);
    const bool isOther = !former || *former != changed.findAlias(alias);
    // Not assigned: hosts hold pointers to the entries.
    change(m_preferences);
    if (!isOther) return;
    const auto lock = lockObservers();
    const auto found = m_observables.find(alias);
    if (found == m_observables.end()) return;
    const std::shared_ptr<Color::Observable> observable = found->second;
    observable->notifyAll();
}

void MorvanePrefs::setAlias(const std::string& alias, const std::string& path, BasePath basePath)
{
    changeAndSave(alias, [&](Preferences& preferences) { preferences.setAlias(alias, path, basePath); });
}

void MorvanePrefs::setAutoConfigureMonitorProfile(bool value)
{
    if (m_preferences.getAutoConfigureMonitorProfile() == value) return;
    std::string profile;
    if (value) {
        withMonitorProfile([&](const std::string& found) { profile = found; });
    } else {
        profile = Color::getDefaultPathForAlias(kGraphicsMonitorAlias);
    }
    changeAndSave(kGraphicsMonitorAlias, [&](Preferences& preferences) {
        if (!profile.empty()) preferences.setAlias(kGraphicsMonitorAlias, profile, BASE_PATH_NONE);
        preferences.setAutoConfigureMonitorProfile(value);
    });
}

void MorvanePrefs::setSharedHome(const std::string& path)
{
    Preferences changed = m_preferences;
    changed.setSharedHome(path);
    Color::XMLPreferencesWriter().check(changed);
    m_preferences.setSharedHome(path);
}

void MorvanePrefs::syncMonitorProfile()
{
    if (!m_preferences.getAutoConfigureMonitorProfile()) return;
    withMonitorProfile([&](const std::string& profile) {
        if (m_preferences.findAlias(kGraphicsMonitorAlias) == Color::AliasEntry{profile, BASE_PATH_NONE}) return;
        m_preferences.setAlias(kGraphicsMonitorAlias, profile, BASE_PATH_NONE);
        // The lock is held already; a second one that ends would end it.
        Color::XMLPreferencesWriter().write(m_preferences, m_configFile);
    });
}

template <class Use>
void MorvanePrefs::withMonitorProfile(Use&& use) const
{
    try {
        const std::string profile = m_findMonitorProfile();
        if (!profile.empty()) use(profile);
    } catch (const Color::Exception& exception) {
        Color::log(LOG_LEVEL_DEBUG, "Unable to sync graphicsMonitor to OS: %s", exception.getMessage());
    }
}

void MorvanePrefs::addObserver(const std::string& alias, Color::Observer* observer)
{
    if (!observer) return;
    const auto lock = lockObservers();
    std::shared_ptr<Color::Observable>& observable = m_observables[alias];
    if (!observable) observable = std::make_shared<Color::Observable>();
    observable->add(observer);
}

void MorvanePrefs::removeObserver(const std::string& alias, Color::Observer* observer)
{
    const auto lock = lockObservers();
    const auto found = m_observables.find(alias);
    if (found == m_observables.end()) return Color::Observable().remove(observer); // which fails as told
    found->second->remove(observer);
    // Aliases come from files: those that nobody watches any more must not pile up.
    if (found->second->empty()) m_observables.erase(found);
}

} // namespace Morvane_2015_1_42::Impl
