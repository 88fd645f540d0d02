#include "tests/api/hostTools.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <unistd.h>

using namespace Morvane;

namespace {

/// A process loads the preferences once, so each case runs in a process of its own.
template <class Body>
void inOwnProcess(Body&& body)
{
    EXPECT_EXIT(
        {
            body();
            std::exit(testing::Test::HasFailure() ? 1 : 0);
        },
        testing::ExitedWithCode(0), "");
}

/// A directory with a config file, which the environment names.
class PreferencesDeathTest : public testing::Test
{
protected:
    PreferencesDeathTest()
        : m_directory(std::filesystem::temp_directory_path() / ("morvanePreferences" + std::to_string(::getpid()))),
          m_config("MORVANE_OVERRIDE_CONFIG_PATH", getPath().c_str()),
          m_home("MORVANE_OVERRIDE_SYSTEM_TRANSFORM_LOCATION", ""), m_shared("MORVANE_OVERRIDE_SHARED_PATH", "")
    {
        std::filesystem::create_directories(m_directory);
        write("<MorvaneConfig><SharedHome dir='/site'/><ReferenceTable><Ref alias='grade' path='g.ctf' "
              "basePath='Shared'/></ReferenceTable></MorvaneConfig>\n");
    }
    ~PreferencesDeathTest() override { std::filesystem::remove_all(m_directory); }

    std::string getPath() const { return (m_directory / "morvaneConfig.xml").string(); }
    std::string getDirectory() const { return m_directory.string(); }
    void write(const std::string& text) const { std::ofstream(getPath()) << text; }
    std::string getContent() const
    {
        std::ifstream file(getPath());
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    std::filesystem::path m_directory;
    ScopedEnvironment m_config;
    ScopedEnvironment m_home;
    ScopedEnvironment m_shared;
};

void expectAlias(const char* alias, const std::string& wantedPath, BasePath wantedBase)
{
    const char* path = nullptr;
    BasePath basePath = BASE_PATH_NONE;
    ASSERT_TRUE(succeeds(findAliasInPreferences(alias, path, basePath)));
    EXPECT_EQ(path, wantedPath);
    EXPECT_EQ(basePath, wantedBase);
}

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
