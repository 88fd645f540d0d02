#include "tests/api/preferencesDirectory.h"

using namespace Morvane;

namespace {

void expectAlias(const char* alias, const std::string& wantedPath, BasePath wantedBase)
{
    const char* path = nullptr;
    BasePath basePath = BASE_PATH_NONE;
    ASSERT_TRUE(succeeds(findAliasInPreferences(alias, path, basePath)));
    EXPECT_EQ(path, wantedPath);
    EXPECT_EQ(basePath, wantedBase);
}

/// Each path as name|path|origin|variable, each alias as alias|path|base path|full path|origin, one to a line.
class PreferencesRecorder : public PreferencesCallback
{
public:
    void addPath(const char* name, const char* path, PreferenceOrigin origin, const char* variable) override
    {
        text += std::string(name) + "|" + path + "|" + std::to_string(origin) + "|" + variable + "\n";
    }
    void addAlias(const char* alias, const char* path, BasePath basePath, const char* fullPath,
                  PreferenceOrigin origin) override
    {
        text += std::string(alias) + "|" + path + "|" + std::to_string(basePath) + "|" + fullPath + "|" +
                std::to_string(origin) + "\n";
    }

    std::string text;
};

class PreferencesDeathTest : public PreferencesDirectory
{};

} // namespace

TEST_F(PreferencesDeathTest, aliasesAreFound)
{
    inOwnProcess([] {
        expectAlias("grade", "g.ctf", BASE_PATH_SHARED);
        expectAlias("graphicsMonitor", "interchange/sRGB/CIE-XYZ_to_sRGB.ctf", BASE_PATH_BRELWICK);
    });
}

TEST_F(PreferencesDeathTest, aliasesThatAreNotFoundLeaveTheResults)
{
    inOwnProcess([] {
        const char* const before = "before";
        const char* path = before;
        BasePath basePath = BASE_PATH_SHARED;
        EXPECT_TRUE(
            failsWith(findAliasInPreferences("nobody", path, basePath), 0x1020001, "Alias 'nobody' not found."));
        EXPECT_TRUE(failsWith(findAliasInPreferences(nullptr, path, basePath), 0x6030001, "NULL parameter: alias"));
        EXPECT_EQ(path, before);
        EXPECT_EQ(basePath, BASE_PATH_SHARED);
    });
}

TEST_F(PreferencesDeathTest, aliasesAreAddedAndSaved)
{
    const char* const alias = "a \"new\" <\xc3\xbc>";
    const char* const path = "/it's & that.ctf";
    inOwnProcess([&] {
        ASSERT_TRUE(succeeds(addAliasInPreferences(alias, path, BASE_PATH_NONE)));
        expectAlias(alias, path, BASE_PATH_NONE);
    });
    inOwnProcess([&] {
        expectAlias(alias, path, BASE_PATH_NONE);
        expectAlias("grade", "g.ctf", BASE_PATH_SHARED);
    });
    EXPECT_NE(getContent().find("      <Ref alias=\"a &quot;new&quot; &lt;\xc3\xbc&gt;\" "
                                "path=\"/it&apos;s &amp; that.ctf\" />\n"),
              std::string::npos);
}

TEST_F(PreferencesDeathTest, thePathOfAnAliasStaysAsLongAsTheAliasDoes)
{
    inOwnProcess([] {
        const char* path = nullptr;
        BasePath basePath = BASE_PATH_NONE;
        ASSERT_TRUE(succeeds(findAliasInPreferences("grade", path, basePath)));
        ASSERT_TRUE(succeeds(addAliasInPreferences("another", "x.ctf", BASE_PATH_NONE)));
        const char* again = nullptr;
        ASSERT_TRUE(succeeds(findAliasInPreferences("grade", again, basePath)));
        EXPECT_EQ(path, again);
        EXPECT_STREQ(path, "g.ctf");
    });
}

TEST_F(PreferencesDeathTest, badAliasesAreRefusedAndNothingIsWritten)
{
    const std::string former = getContent();
    inOwnProcess([] {
        EXPECT_TRUE(failsWith(addAliasInPreferences("a", "", BASE_PATH_NONE), 0x1020003, "Path cannot be empty."));
        EXPECT_TRUE(failsWith(addAliasInPreferences("a", nullptr, BASE_PATH_NONE), 0x1020003, "Path cannot be empty."));
        EXPECT_TRUE(failsWith(addAliasInPreferences("", "x", BASE_PATH_NONE), 0x1020002, "Alias cannot be empty."));
        EXPECT_TRUE(failsWith(addAliasInPreferences(nullptr, "x", BASE_PATH_NONE), 0x6030001, "NULL parameter: alias"));
        EXPECT_TRUE(
            failsWith(addAliasInPreferences("a\x01", "x", BASE_PATH_NONE), 0x1010006, "Name is not allowed: a\x01."));
    });
    EXPECT_EQ(getContent(), former);
}

TEST_F(PreferencesDeathTest, aMissingFileFailsUntilItIsThere)
{
    std::filesystem::remove(getPath());
    inOwnProcess([&] {
        bool value = true;
        EXPECT_TRUE(failsWith(getAutoConfigureMonitorProfile(value), 0x3020018, "File open failed: " + getPath()));
        EXPECT_TRUE(value);
        EXPECT_TRUE(
            failsWith(addAliasInPreferences("a", "x", BASE_PATH_NONE), 0x3020018, "File open failed: " + getPath()));
        EXPECT_FALSE(std::filesystem::exists(getPath()));
        write("<MorvaneConfig/>");
        EXPECT_TRUE(succeeds(getAutoConfigureMonitorProfile(value)));
        EXPECT_FALSE(value);
    });
}

TEST_F(PreferencesDeathTest, aFileThatIsWrongFails)
{
    write("<MorvaneConfig>\n<SharedHome dir='/a'/>\n<SharedHome dir='/b'/>\n</MorvaneConfig>\n");
    inOwnProcess([&] {
        EXPECT_TRUE(failsWith(setAutoConfigureMonitorProfile(true), 0x3050006,
                              "Shared home path cannot be set more than once at line 3: " + getPath()));
    });
    write("");
    inOwnProcess([&] {
        const char* path = nullptr;
        EXPECT_TRUE(
            failsWith(getSharedColorTransformPath(path), 0x305000c, "The preferences were not loaded: " + getPath()));
        EXPECT_EQ(path, nullptr);
    });
}

TEST_F(PreferencesDeathTest, theEnvironmentMayNameTheDirectoryOfTheConfigFile)
{
    const ScopedEnvironment directory("MORVANE_OVERRIDE_CONFIG_PATH", getDirectory().c_str());
    inOwnProcess([&] {
        EXPECT_EQ(getConfigFilePath(), getPath());
        expectAlias("grade", "g.ctf", BASE_PATH_SHARED);
    });
}

TEST_F(PreferencesDeathTest, pathsAreConfigured)
{
    const ScopedEnvironment noConfig("MORVANE_OVERRIDE_CONFIG_PATH", "");
    inOwnProcess([&] {
        ASSERT_TRUE(succeeds(configurePaths("/home", getPath().c_str(), "/shared")));
        EXPECT_STREQ(getSystemColorTransformPath(), "/home/transforms");
        EXPECT_EQ(getConfigFilePath(), getPath());
        EXPECT_STREQ(getDefaultSharedColorTransformPath(), "/shared");
        const char* path = nullptr;
        ASSERT_TRUE(succeeds(getDefaultPathForAlias("broadcastMonitor", path)));
        EXPECT_STREQ(path, "/home/transforms/display/broadcast/CIE-XYZ_to_HD-video.ctf");
        expectAlias("grade", "g.ctf", BASE_PATH_SHARED);
    });
}

TEST_F(PreferencesDeathTest, emptyPathsAreNotConfigured)
{
    inOwnProcess([] {
        const std::string former = getDefaultSharedColorTransformPath();
        for (const char* empty : {static_cast<const char*>(nullptr), ""}) {
            EXPECT_TRUE(failsWith(configurePaths("/home", "/a.xml", empty), 0x1020003, "Path cannot be empty."));
            EXPECT_TRUE(failsWith(configurePaths(empty, "/a.xml", "/shared"), 0x1020003, "Path cannot be empty."));
        }
        EXPECT_EQ(getDefaultSharedColorTransformPath(), former);
    });
}

TEST_F(PreferencesDeathTest, pathsAreNotConfiguredOncePreferencesAreLoaded)
{
    inOwnProcess([&] {
        // A call that failed loaded nothing.
        write("");
        const char* path = nullptr;
        BasePath basePath = BASE_PATH_NONE;
        EXPECT_FALSE(findAliasInPreferences("grade", path, basePath));
        EXPECT_TRUE(succeeds(configurePaths("/home", "/a.xml", "/shared")));
        write("<MorvaneConfig/>");
        EXPECT_TRUE(succeeds(findAliasInPreferences("defaultLook", path, basePath)));
        EXPECT_TRUE(failsWith(configurePaths("/other", "/b.xml", "/other"), 0x6030005,
                              "The Morvane configuration file is already loaded"));
        EXPECT_TRUE(failsWith(configurePaths(nullptr, nullptr, nullptr), 0x6030005,
                              "The Morvane configuration file is already loaded"));
        EXPECT_STREQ(getSystemColorTransformPath(), "/home/transforms");
        EXPECT_STREQ(getDefaultSharedColorTransformPath(), "/shared");
    });
}

TEST_F(PreferencesDeathTest, defaultPathsOfAliasesNeedNoFile)
{
    const ScopedEnvironment home("MORVANE_OVERRIDE_SYSTEM_TRANSFORM_LOCATION", "/home");
    std::filesystem::remove(getPath());
    inOwnProcess([] {
        const char* path = nullptr;
        ASSERT_TRUE(succeeds(getDefaultPathForAlias("graphicsMonitor", path)));
        EXPECT_STREQ(path, "/home/transforms/interchange/sRGB/CIE-XYZ_to_sRGB.ctf");
        ASSERT_TRUE(succeeds(getDefaultPathForAlias("defaultLook", path)));
        const char* const former = path;
        EXPECT_STREQ(path, "/home/transforms/misc/identity.ctf");
        EXPECT_TRUE(failsWith(getDefaultPathForAlias("grade", path), 0x1020004, "No default path for alias 'grade'"));
        EXPECT_TRUE(failsWith(getDefaultPathForAlias("", path), 0x1020002, "Alias cannot be empty."));
        EXPECT_TRUE(failsWith(getDefaultPathForAlias(nullptr, path), 0x1020002, "Alias cannot be empty."));
        EXPECT_EQ(path, former);
    });
}

TEST_F(PreferencesDeathTest, theSharedTransformsAreWhereTheFileSays)
{
    inOwnProcess([] {
        const char* path = nullptr;
        ASSERT_TRUE(succeeds(getSharedColorTransformPath(path)));
        EXPECT_STREQ(path, "/site");
    });
    const ScopedEnvironment shared("MORVANE_OVERRIDE_SHARED_PATH", "/override");
    inOwnProcess([] {
        const char* path = nullptr;
        ASSERT_TRUE(succeeds(getSharedColorTransformPath(path)));
        EXPECT_STREQ(path, "/override");
    });
    write("<MorvaneConfig/>");
    const ScopedEnvironment noShared("MORVANE_OVERRIDE_SHARED_PATH", "");
    inOwnProcess([] {
        const char* path = nullptr;
        ASSERT_TRUE(succeeds(configurePaths("/home", "/a.xml", "/configured")));
        ASSERT_TRUE(succeeds(getSharedColorTransformPath(path)));
        EXPECT_STREQ(path, "/configured");
    });
}

TEST_F(PreferencesDeathTest, theSharedTransformsMayBeSetForTheProcess)
{
    const std::string former = getContent();
    inOwnProcess([&] {
        ASSERT_TRUE(succeeds(setSharedColorTransformPath("/mine")));
        const char* path = nullptr;
        ASSERT_TRUE(succeeds(getSharedColorTransformPath(path)));
        EXPECT_STREQ(path, "/mine");
        EXPECT_EQ(getContent(), former);
        for (const char* empty : {static_cast<const char*>(nullptr), ""})
            EXPECT_TRUE(failsWith(setSharedColorTransformPath(empty), 0x1020005, "Shared path cannot be empty."));
        ASSERT_TRUE(succeeds(getSharedColorTransformPath(path)));
        EXPECT_STREQ(path, "/mine");
        ASSERT_TRUE(succeeds(addAliasInPreferences("a", "x", BASE_PATH_NONE)));
    });
    EXPECT_NE(getContent().find("   <SharedHome dir=\"/mine\" />\n"), std::string::npos);
}

TEST_F(PreferencesDeathTest, theMonitorSwitchIsSaved)
{
    const ScopedEnvironment home("MORVANE_OVERRIDE_SYSTEM_TRANSFORM_LOCATION", "/home");
    inOwnProcess([] {
        bool value = true;
        ASSERT_TRUE(succeeds(getAutoConfigureMonitorProfile(value)));
        EXPECT_FALSE(value);
        ASSERT_TRUE(succeeds(setAutoConfigureMonitorProfile(true)));
        // No profile is known, so the alias stays.
        expectAlias("graphicsMonitor", "interchange/sRGB/CIE-XYZ_to_sRGB.ctf", BASE_PATH_BRELWICK);
    });
    inOwnProcess([] {
        bool value = false;
        ASSERT_TRUE(succeeds(getAutoConfigureMonitorProfile(value)));
        EXPECT_TRUE(value);
        ASSERT_TRUE(succeeds(setAutoConfigureMonitorProfile(false)));
        expectAlias("graphicsMonitor", "/home/transforms/interchange/sRGB/CIE-XYZ_to_sRGB.ctf", BASE_PATH_NONE);
    });
    EXPECT_EQ(getContent().find("<AutoConfigure graphicsMonitor=\"true\" />"), std::string::npos);
}

TEST_F(PreferencesDeathTest, areDescribed)
{
    const ScopedEnvironment home("MORVANE_OVERRIDE_SYSTEM_TRANSFORM_LOCATION", "/home");
    inOwnProcess([&] {
        ASSERT_TRUE(succeeds(addAliasInPreferences("lost", "lost.ctf", BASE_PATH_NONE)));
        ASSERT_TRUE(succeeds(addAliasInPreferences("defaultLook", "/look.ctf", BASE_PATH_BRELWICK)));
        PreferencesRecorder recorder;
        ASSERT_TRUE(succeeds(describePreferences(recorder)));
        EXPECT_EQ(recorder.text, "System Home|/home|2|MORVANE_OVERRIDE_SYSTEM_TRANSFORM_LOCATION\n"
                                 "System Transforms|/home/transforms|2|MORVANE_OVERRIDE_SYSTEM_TRANSFORM_LOCATION\n"
                                 "Config File|" +
                                     getPath() +
                                     "|2|MORVANE_OVERRIDE_CONFIG_PATH\n"
                                     "Shared Transforms|/site|3|\n"
                                     "OutputToSceneBridge|misc/identity.ctf|1|/home/transforms/misc/identity.ctf|0\n"
                                     "SceneToOutputBridge|RRT+ODT/ACES_to_CIE-XYZ_v0.1.1.ctf|1|"
                                     "/home/transforms/RRT+ODT/ACES_to_CIE-XYZ_v0.1.1.ctf|0\n"
                                     "broadcastMonitor|display/broadcast/CIE-XYZ_to_HD-video.ctf|1|"
                                     "/home/transforms/display/broadcast/CIE-XYZ_to_HD-video.ctf|0\n"
                                     "defaultLook|/look.ctf|1|/look.ctf|3\n"
                                     "grade|g.ctf|2|/site/g.ctf|3\n"
                                     "graphicsMonitor|interchange/sRGB/CIE-XYZ_to_sRGB.ctf|1|"
                                     "/home/transforms/interchange/sRGB/CIE-XYZ_to_sRGB.ctf|0\n"
                                     "lost|lost.ctf|0||3\n");
    });
}

TEST_F(PreferencesDeathTest, areDescribedAsTheyWereWhenTheCallbackChangesThem)
{
    class Changer : public PreferencesRecorder
    {
    public:
        void addAlias(const char* alias, const char* path, BasePath basePath, const char* fullPath,
                      PreferenceOrigin origin) override
        {
            // The alias that is being told of, and one that comes behind all others.
            EXPECT_TRUE(succeeds(addAliasInPreferences(alias, std::string(100, 'x').c_str(), BASE_PATH_NONE)));
            EXPECT_TRUE(succeeds(addAliasInPreferences(("z" + std::string(alias)).c_str(), "y", BASE_PATH_NONE)));
            PreferencesRecorder::addAlias(alias, path, basePath, fullPath, origin);
        }
    };

    inOwnProcess([&] {
        PreferencesRecorder before;
        ASSERT_TRUE(succeeds(describePreferences(before)));
        Changer changer;
        ASSERT_TRUE(succeeds(describePreferences(changer)));
        EXPECT_EQ(changer.text, before.text);
        expectAlias("grade", std::string(100, 'x'), BASE_PATH_NONE);
    });
}

TEST_F(PreferencesDeathTest, areDescribedWithThePathsThatAHostConfigured)
{
    write("<MorvaneConfig/>");
    const ScopedEnvironment noConfig("MORVANE_OVERRIDE_CONFIG_PATH", "");
    inOwnProcess([&] {
        ASSERT_TRUE(succeeds(configurePaths("/home", getPath().c_str(), "/shared")));
        PreferencesRecorder recorder;
        ASSERT_TRUE(succeeds(describePreferences(recorder)));
        EXPECT_EQ(recorder.text.substr(0, recorder.text.find("OutputToSceneBridge")),
                  "System Home|/home|1|\nSystem Transforms|/home/transforms|1|\nConfig File|" + getPath() +
                      "|1|\nShared Transforms|/shared|1|\n");
    });
    const ScopedEnvironment shared("MORVANE_OVERRIDE_SHARED_PATH", "/override");
    inOwnProcess([&] {
        ASSERT_TRUE(succeeds(configurePaths("/home", getPath().c_str(), "/shared")));
        PreferencesRecorder recorder;
        ASSERT_TRUE(succeeds(describePreferences(recorder)));
        EXPECT_NE(recorder.text.find("\nShared Transforms|/override|2|MORVANE_OVERRIDE_SHARED_PATH\n"),
                  std::string::npos);
    });
}

TEST_F(PreferencesDeathTest, areNotDescribedWithoutAFile)
{
    std::filesystem::remove(getPath());
    inOwnProcess([&] {
        PreferencesRecorder recorder;
        EXPECT_TRUE(failsWith(describePreferences(recorder), 0x3020018, "File open failed: " + getPath()));
        EXPECT_EQ(recorder.text, "");
    });
}
