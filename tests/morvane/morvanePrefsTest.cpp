#include "morvane/morvanePrefs.h"

#include "tests/utils/childProcess.h"
#include "tests/utils/failure.h"
#include "tests/utils/logRecorder.h"
#include "tests/utils/scopedVariable.h"
#include "tests/xml/temporaryDirectory.h"
#include "tests/xml/withoutPrivileges.h"
#include "utils/fileLock.h"
#include "xml/xmlPreferencesReader.h"

#include <boost/interprocess/exceptions.hpp>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <vector>

using namespace Morvane_2015_1_42;
using Color::AliasEntry;
using Impl::MorvanePrefs;

namespace {

namespace fs = boost::filesystem;

constexpr const char* kGraphicsMonitor = "graphicsMonitor";
const AliasEntry kDefaultMonitor = {"interchange/sRGB/CIE-XYZ_to_sRGB.ctf", BASE_PATH_BRELWICK};

std::string noProfile() { return {}; }
std::string someProfile() { return "/profiles/monitor.icc"; }
std::string failingProfile()
{
    Color::raise(Color::LogCategory::UTILS_ALL, Color::ErrorIds::MONITOR_PROFILE_PATH_UNAVAILABLE);
}

const std::string kSwitchedOn = "<MorvaneConfig><AutoConfigure graphicsMonitor='true'/></MorvaneConfig>\n";
const std::string kSyncFailed = "Unable to sync graphicsMonitor to OS: ";

/// A directory with a config file in it.
class ConfigFile : public testing::Test
{
protected:
    ConfigFile() { write("<MorvaneConfig/>\n"); }

    void write(const std::string& text) { m_path = m_directory.write("morvaneConfig.xml", text); }

    std::string getContent() const
    {
        std::ifstream file(m_path);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    /// What another process would read.
    Color::Preferences getSaved() const
    {
        Color::XMLPreferencesReader reader("");
        reader.readFile(m_path);
        return *reader.getPreferences();
    }

    const std::string& getPath() const { return m_path; }
    const TemporaryDirectory& getDirectory() const { return m_directory; }

private:
    TemporaryDirectory m_directory;
    std::string m_path;
};

using MorvanePrefsTest = ConfigFile;

/// Keeps the path that an alias had each time it was told of.
class Watcher : public Color::Observer
{
public:
    Watcher(const MorvanePrefs& preferences, const std::string& alias) : m_preferences(preferences), m_alias(alias) {}

    void notify() override { m_paths.push_back(m_preferences.get().findAlias(m_alias).path); }

    const std::vector<std::string>& getPaths() const { return m_paths; }

private:
    const MorvanePrefs& m_preferences;
    std::string m_alias;
    std::vector<std::string> m_paths;
};

/// The text of the last line that was logged.
std::string lastOf(const LogRecorder& log) { return log.lines().empty() ? "" : log.lines().back().second; }

} // namespace

TEST_F(MorvanePrefsTest, areReadFromTheFile)
{
    write("<MorvaneConfig><SharedHome dir='/site'/><ReferenceTable><Ref alias='a' path='b'/></ReferenceTable>"
          "</MorvaneConfig>");
    const MorvanePrefs preferences(getPath(), noProfile);
    EXPECT_EQ(preferences.get().getVersion(), "2015.1.42");
    EXPECT_EQ(preferences.get().getSharedHome(), "/site");
    EXPECT_EQ(preferences.get().findAlias("a"), (AliasEntry{"b", BASE_PATH_NONE}));
}

TEST_F(MorvanePrefsTest, readingWritesNothingButTheLockFile)
{
    const std::string former = getContent();
    const MorvanePrefs preferences(getPath(), someProfile);
    EXPECT_EQ(getContent(), former);
    EXPECT_EQ(fs::file_size(getPath() + ".lock"), 0u);
}

TEST_F(MorvanePrefsTest, needAFile)
{
    const std::string path = getDirectory().getPath("missing.xml");
    EXPECT_EQ(failureOf([&] { MorvanePrefs(path, noProfile); }),
              (Failure{0x3020018, "COLOR:XML:READER", "File open failed: " + path}));
    EXPECT_FALSE(fs::exists(path));
    write("");
    EXPECT_EQ(failureOf([&] { MorvanePrefs(getPath(), noProfile); }),
              (Failure{0x305000c, "COLOR:XML:PREFS_READER", "The preferences were not loaded: " + getPath()}));
    write("<MorvaneConfig>");
    EXPECT_EQ(failureOf([&] { MorvanePrefs(getPath(), noProfile); }).id, 0x3020004u);
}

TEST_F(MorvanePrefsTest, anAliasIsSaved)
{
    MorvanePrefs preferences(getPath(), noProfile);
    preferences.setAlias("a", "x.ctf", BASE_PATH_SHARED);
    EXPECT_EQ(preferences.get().findAlias("a"), (AliasEntry{"x.ctf", BASE_PATH_SHARED}));
    EXPECT_EQ(getSaved().getAliases(), preferences.get().getAliases());
    // Without a change too.
    write("<MorvaneConfig/>");
    preferences.setAlias("a", "x.ctf", BASE_PATH_SHARED);
    EXPECT_EQ(getSaved().getAliases(), preferences.get().getAliases());
}

TEST_F(MorvanePrefsTest, theLastTableThatIsSavedWins)
{
    MorvanePrefs first(getPath(), noProfile);
    MorvanePrefs second(getPath(), noProfile);
    first.setAlias("a", "1", BASE_PATH_NONE);
    second.setAlias("b", "2", BASE_PATH_NONE);
    EXPECT_EQ(getSaved().getAliases(), second.get().getAliases());
    EXPECT_EQ(failureOf([&] { getSaved().findAlias("a"); }).id, 0x1020001u);
}

TEST_F(MorvanePrefsTest, entriesStayWhereTheyAre)
{
    MorvanePrefs preferences(getPath(), noProfile);
    const AliasEntry* const entry = &preferences.get().findAlias("defaultLook");
    for (const char* alias : {"a", "defaultLook", "z"})
        preferences.setAlias(alias, "x.ctf", BASE_PATH_NONE);
    EXPECT_EQ(&preferences.get().findAlias("defaultLook"), entry);
    EXPECT_EQ(entry->path, "x.ctf");
}

TEST_F(MorvanePrefsTest, whatIsRefusedChangesNothing)
{
    MorvanePrefs preferences(getPath(), noProfile);
    const std::string former = getContent();
    EXPECT_EQ(failureOf([&] { preferences.setAlias("a", "", BASE_PATH_NONE); }),
              (Failure{0x1020003, "COLOR:UTILS:PREFERENCES", "Path cannot be empty."}));
    EXPECT_EQ(failureOf([&] { preferences.setAlias("", "a", BASE_PATH_NONE); }),
              (Failure{0x1020002, "COLOR:UTILS:PREFERENCES", "Alias cannot be empty."}));
    EXPECT_EQ(failureOf([&] { preferences.setAlias("a", "b\nc", BASE_PATH_NONE); }),
              (Failure{0x1010006, "COLOR:XML:WRITER", "Name is not allowed: b\nc."}));
    EXPECT_EQ(preferences.get().getAliases(), Color::Preferences("").getAliases());
    EXPECT_EQ(getContent(), former);
}

TEST_F(MorvanePrefsTest, whatCannotBeSavedChangesNothing)
{
    MorvanePrefs preferences(getPath(), noProfile);
    Watcher watcher(preferences, "defaultLook");
    preferences.addObserver("defaultLook", &watcher);
    const std::string former = getContent();
    fs::permissions(getPath(), fs::owner_read);
    {
        const WithoutPrivileges scope;
        const Failure wanted = {0x3030003, "COLOR:XML:WRITER",
                                "Unable to overwrite existing file: '" + getPath() + "'.  Check file permissions."};
        EXPECT_EQ(failureOf([&] { preferences.setAlias("defaultLook", "x.ctf", BASE_PATH_NONE); }), wanted);
        EXPECT_EQ(failureOf([&] { preferences.setAutoConfigureMonitorProfile(true); }), wanted);
    }
    EXPECT_EQ(preferences.get().getAliases(), Color::Preferences("").getAliases());
    EXPECT_FALSE(preferences.get().getAutoConfigureMonitorProfile());
    EXPECT_EQ(getContent(), former);
    EXPECT_TRUE(watcher.getPaths().empty());
}

TEST_F(MorvanePrefsTest, areReadFromADirectoryThatCannotBeWrittenTo)
{
    const std::string directory = fs::path(getPath()).parent_path().string();
    fs::permissions(directory, fs::owner_read | fs::owner_exe);
    {
        const WithoutPrivileges scope;
        MorvanePrefs preferences(getPath(), noProfile);
        EXPECT_FALSE(fs::exists(getPath() + ".lock"));
        // The file itself can be written.
        preferences.setAlias("a", "x.ctf", BASE_PATH_NONE);
        EXPECT_EQ(getSaved().findAlias("a").path, "x.ctf");
    }
    fs::permissions(directory, fs::owner_all);
}

TEST_F(MorvanePrefsTest, aFileWhoseDirectoryIsGoneCannotBeSaved)
{
    MorvanePrefs preferences(getPath(), noProfile);
    fs::remove_all(fs::path(getPath()).parent_path());
    EXPECT_EQ(failureOf([&] { preferences.setAlias("a", "x.ctf", BASE_PATH_NONE); }),
              (Failure{0x3030004, "COLOR:XML:WRITER", "Invalid path: '" + getPath() + "'"}));
}

TEST_F(MorvanePrefsTest, aLockFileThatCannotBeOpenedIsAnException)
{
    MorvanePrefs preferences(getPath(), noProfile);
    fs::permissions(getPath() + ".lock", fs::owner_write);
    const WithoutPrivileges scope;
    using boost::interprocess::interprocess_exception;
    EXPECT_THROW(preferences.setAlias("a", "x.ctf", BASE_PATH_NONE), interprocess_exception);
    EXPECT_THROW(MorvanePrefs(getPath(), noProfile), interprocess_exception);
    EXPECT_EQ(preferences.get().getAliases().size(), 5u);
}

TEST_F(MorvanePrefsTest, aLockOfAProcessThatWasKilledIsNoObstacle)
{
    ProcessSignal isHeld;
    ChildProcess holder([&] {
        const Color::FileLock lock(getPath());
        isHeld.send();
        ::pause();
    });
    isHeld.await();
    holder.kill();
    MorvanePrefs preferences(getPath(), noProfile);
    preferences.setAlias("a", "x.ctf", BASE_PATH_NONE);
    EXPECT_EQ(getSaved().findAlias("a").path, "x.ctf");
}

TEST_F(MorvanePrefsTest, theSharedHomeIsSavedWithTheNextChange)
{
    MorvanePrefs preferences(getPath(), noProfile);
    preferences.setSharedHome("/site");
    EXPECT_EQ(preferences.get().getSharedHome(), "/site");
    EXPECT_EQ(getSaved().getSharedHome(), "");
    preferences.setAlias("a", "x.ctf", BASE_PATH_NONE);
    EXPECT_EQ(getSaved().getSharedHome(), "/site");
}

TEST_F(MorvanePrefsTest, aSharedHomeThatCouldNotBeSavedIsRefused)
{
    MorvanePrefs preferences(getPath(), noProfile);
    preferences.setSharedHome("/site");
    EXPECT_EQ(failureOf([&] { preferences.setSharedHome(""); }),
              (Failure{0x1020005, "COLOR:UTILS:PREFERENCES", "Shared path cannot be empty."}));
    EXPECT_EQ(failureOf([&] { preferences.setSharedHome("\xff"); }),
              (Failure{0x1010006, "COLOR:XML:WRITER", "Name is not allowed: \xff."}));
    EXPECT_EQ(preferences.get().getSharedHome(), "/site");
}

TEST_F(MorvanePrefsTest, observersAreToldOfTheirAlias)
{
    MorvanePrefs preferences(getPath(), noProfile);
    Watcher look(preferences, "defaultLook");
    Watcher unknown(preferences, "later");
    preferences.addObserver("defaultLook", &look);
    preferences.addObserver("later", &unknown);
    preferences.setAlias("defaultLook", "x.ctf", BASE_PATH_NONE);
    preferences.setAlias("later", "y.ctf", BASE_PATH_NONE);
    preferences.setAlias("another", "z.ctf", BASE_PATH_NONE);
    // Another base is another transform; the same entry is no change.
    preferences.setAlias("defaultLook", "x.ctf", BASE_PATH_SHARED);
    preferences.setAlias("defaultLook", "x.ctf", BASE_PATH_SHARED);
    EXPECT_EQ(look.getPaths(), (std::vector<std::string>{"x.ctf", "x.ctf"}));
    EXPECT_EQ(unknown.getPaths(), std::vector<std::string>{"y.ctf"});
    preferences.removeObserver("defaultLook", &look);
    preferences.setAlias("defaultLook", "z.ctf", BASE_PATH_NONE);
    EXPECT_EQ(look.getPaths().size(), 2u);
}

TEST_F(MorvanePrefsTest, observersThatDoNotWatchCannotBeRemoved)
{
    MorvanePrefs preferences(getPath(), noProfile);
    Watcher watcher(preferences, "defaultLook");
    preferences.addObserver("defaultLook", &watcher);
    const Failure wanted = {0x1020006, "COLOR:UTILS:PREFERENCES", "Observer not found."};
    EXPECT_EQ(failureOf([&] { preferences.removeObserver("graphicsMonitor", &watcher); }), wanted);
    EXPECT_EQ(failureOf([&] { preferences.removeObserver("nobody", &watcher); }), wanted);
    EXPECT_EQ(failureOf([&] { preferences.removeObserver("nobody", nullptr); }), kNoFailure);
    preferences.removeObserver("defaultLook", &watcher);
    EXPECT_EQ(failureOf([&] { preferences.removeObserver("defaultLook", &watcher); }), wanted);
}

TEST_F(MorvanePrefsTest, aliasesThatNobodyWatchesAreForgotten)
{
    /// Goes while it is told, and comes back when it is to.
    class Leaver : public Color::Observer
    {
    public:
        Leaver(MorvanePrefs& preferences, bool comesBack) : m_preferences(preferences), m_comesBack(comesBack) {}
        void notify() override
        {
            m_preferences.removeObserver("a", this);
            if (m_comesBack) m_preferences.addObserver("a", this);
            ++count;
        }
        int count = 0;

    private:
        MorvanePrefs& m_preferences;
        bool m_comesBack;
    };

    MorvanePrefs preferences(getPath(), noProfile);
    Leaver first(preferences, false);
    Leaver second(preferences, true);
    EXPECT_EQ(failureOf([&] { preferences.removeObserver("b", &first); }).id, 0x1020006u);
    preferences.addObserver("c", nullptr);
    preferences.setAlias("d", "1", BASE_PATH_NONE);
    EXPECT_EQ(preferences.countWatchedAliases(), 0u);
    preferences.addObserver("a", &first);
    preferences.addObserver("a", &second);
    EXPECT_EQ(preferences.countWatchedAliases(), 1u);
    for (const char* path : {"1", "2", "3"})
        preferences.setAlias("a", path, BASE_PATH_NONE);
    EXPECT_EQ(first.count, 1);
    EXPECT_EQ(second.count, 3);
    preferences.removeObserver("a", &second);
    EXPECT_EQ(preferences.countWatchedAliases(), 0u);
}

TEST_F(MorvanePrefsTest, theMonitorIsSyncedWhenSwitchedOn)
{
    write(kSwitchedOn);
    const MorvanePrefs preferences(getPath(), someProfile);
    const AliasEntry wanted = {"/profiles/monitor.icc", BASE_PATH_NONE};
    EXPECT_EQ(preferences.get().findAlias(kGraphicsMonitor), wanted);
    EXPECT_EQ(getSaved().findAlias(kGraphicsMonitor), wanted);
    EXPECT_TRUE(getSaved().getAutoConfigureMonitorProfile());
    // What is as it should be is not written again.
    const std::string text = "<MorvaneConfig><AutoConfigure graphicsMonitor='true'/><ReferenceTable>"
                             "<Ref alias='graphicsMonitor' path='/profiles/monitor.icc'/></ReferenceTable>"
                             "</MorvaneConfig>\n";
    write(text);
    const MorvanePrefs synced(getPath(), someProfile);
    EXPECT_EQ(getContent(), text);
}

TEST_F(MorvanePrefsTest, theMonitorIsSyncedWhenTheBaseDiffersToo)
{
    write("<MorvaneConfig><AutoConfigure graphicsMonitor='true'/><ReferenceTable><Ref alias='graphicsMonitor' "
          "path='/profiles/monitor.icc' basePath='Shared'/></ReferenceTable></MorvaneConfig>\n");
    const MorvanePrefs preferences(getPath(), someProfile);
    EXPECT_EQ(getSaved().findAlias(kGraphicsMonitor), (AliasEntry{"/profiles/monitor.icc", BASE_PATH_NONE}));
}

TEST_F(MorvanePrefsTest, theMonitorIsNotSyncedWhenThereIsNoProfile)
{
    write(kSwitchedOn);
    const MorvanePrefs preferences(getPath(), noProfile);
    EXPECT_EQ(preferences.get().findAlias(kGraphicsMonitor), kDefaultMonitor);
    EXPECT_EQ(getContent(), kSwitchedOn);
}

TEST_F(MorvanePrefsTest, aFailureToSyncTheMonitorIsLogged)
{
    write(kSwitchedOn);
    const LogRecorder log;
    const MorvanePrefs preferences(getPath(), failingProfile);
    EXPECT_EQ(lastOf(log), kSyncFailed + "Problem obtaining monitor profile path from OS.");
    EXPECT_EQ(preferences.get().findAlias(kGraphicsMonitor), kDefaultMonitor);
    EXPECT_EQ(getContent(), kSwitchedOn);
}

TEST_F(MorvanePrefsTest, aSyncThatCannotBeSavedHoldsForTheProcess)
{
    write(kSwitchedOn);
    fs::permissions(getPath(), fs::owner_read);
    const WithoutPrivileges scope;
    const LogRecorder log;
    const MorvanePrefs preferences(getPath(), someProfile);
    EXPECT_EQ(lastOf(log),
              kSyncFailed + "Unable to overwrite existing file: '" + getPath() + "'.  Check file permissions.");
    EXPECT_EQ(preferences.get().findAlias(kGraphicsMonitor).path, "/profiles/monitor.icc");
    EXPECT_EQ(getContent(), kSwitchedOn);
}

TEST_F(MorvanePrefsTest, theSwitchThatStandsAlreadyDoesNothing)
{
    const std::string former = getContent();
    MorvanePrefs off(getPath(), someProfile);
    off.setAutoConfigureMonitorProfile(false);
    EXPECT_EQ(getContent(), former);
    EXPECT_EQ(off.get().findAlias(kGraphicsMonitor), kDefaultMonitor);
    write(kSwitchedOn);
    MorvanePrefs on(getPath(), noProfile);
    on.setAutoConfigureMonitorProfile(true);
    EXPECT_EQ(getContent(), kSwitchedOn);
}

TEST_F(MorvanePrefsTest, switchingOnTakesTheProfileOfTheMonitor)
{
    MorvanePrefs preferences(getPath(), someProfile);
    Watcher watcher(preferences, kGraphicsMonitor);
    preferences.addObserver(kGraphicsMonitor, &watcher);
    preferences.setAutoConfigureMonitorProfile(true);
    EXPECT_TRUE(preferences.get().getAutoConfigureMonitorProfile());
    EXPECT_TRUE(getSaved().getAutoConfigureMonitorProfile());
    EXPECT_EQ(getSaved().findAlias(kGraphicsMonitor), (AliasEntry{"/profiles/monitor.icc", BASE_PATH_NONE}));
    EXPECT_EQ(watcher.getPaths(), std::vector<std::string>{"/profiles/monitor.icc"});
}

TEST_F(MorvanePrefsTest, switchingOnWithoutAProfileKeepsTheAlias)
{
    MorvanePrefs preferences(getPath(), noProfile);
    Watcher watcher(preferences, kGraphicsMonitor);
    preferences.addObserver(kGraphicsMonitor, &watcher);
    preferences.setAutoConfigureMonitorProfile(true);
    EXPECT_TRUE(getSaved().getAutoConfigureMonitorProfile());
    EXPECT_EQ(getSaved().findAlias(kGraphicsMonitor), kDefaultMonitor);
    EXPECT_TRUE(watcher.getPaths().empty());
}

TEST_F(MorvanePrefsTest, switchingOnLogsAProfileThatFails)
{
    MorvanePrefs preferences(getPath(), failingProfile);
    const LogRecorder log;
    preferences.setAutoConfigureMonitorProfile(true);
    EXPECT_EQ(lastOf(log), kSyncFailed + "Problem obtaining monitor profile path from OS.");
    EXPECT_TRUE(getSaved().getAutoConfigureMonitorProfile());
    EXPECT_EQ(getSaved().findAlias(kGraphicsMonitor), kDefaultMonitor);
}

TEST_F(MorvanePrefsTest, switchingOffGivesTheAliasItsDefaultPath)
{
    write(kSwitchedOn);
    // The default paths are made once in a process.
    ChildProcess process([&] {
        const ScopedVariable home("MORVANE_OVERRIDE_SYSTEM_TRANSFORM_LOCATION", "/home");
        MorvanePrefs preferences(getPath(), someProfile);
        Watcher watcher(preferences, kGraphicsMonitor);
        preferences.addObserver(kGraphicsMonitor, &watcher);
        preferences.setAutoConfigureMonitorProfile(false);
        const std::string path = "/home/transforms/interchange/sRGB/CIE-XYZ_to_sRGB.ctf";
        EXPECT_FALSE(preferences.get().getAutoConfigureMonitorProfile());
        EXPECT_EQ(watcher.getPaths(), std::vector<std::string>{path});
        EXPECT_FALSE(getSaved().getAutoConfigureMonitorProfile());
        EXPECT_EQ(getSaved().findAlias(kGraphicsMonitor), (AliasEntry{path, BASE_PATH_NONE}));
    });
    EXPECT_TRUE(process.succeeds());
}

TEST_F(MorvanePrefsTest, thoseOfTheProcessAreReadOnce)
{
    const ScopedVariable config("MORVANE_OVERRIDE_CONFIG_PATH", getPath().c_str());
    ChildProcess process([&] {
        EXPECT_FALSE(MorvanePrefs::exist());
        fs::rename(getPath(), getPath() + ".away");
        EXPECT_EQ(failureOf([] { MorvanePrefs::getInstance(); }).message, "File open failed: " + getPath());
        EXPECT_FALSE(MorvanePrefs::exist());
        fs::rename(getPath() + ".away", getPath());
        MorvanePrefs& preferences = MorvanePrefs::getInstance();
        EXPECT_TRUE(MorvanePrefs::exist());
        fs::remove(getPath());
        EXPECT_EQ(&MorvanePrefs::getInstance(), &preferences);
    });
    EXPECT_TRUE(process.succeeds());
}
