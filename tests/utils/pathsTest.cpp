#include "utils/paths.h"

#include "tests/utils/childProcess.h"
#include "tests/utils/failure.h"
#include "tests/utils/scopedVariable.h"
#include "tests/xml/temporaryDirectory.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* kSystemVariable = "MORVANE_OVERRIDE_SYSTEM_TRANSFORM_LOCATION";
constexpr const char* kConfigVariable = "MORVANE_OVERRIDE_CONFIG_PATH";
constexpr const char* kDefaultHome = MORVANE_DATA_ROOT "/Brelwick/Tandrel/Morvane/2015.1.pr42";

const Failure kPathEmpty = {0x1020003, "COLOR:UTILS:PREFERENCES", "Path cannot be empty."};

/// The paths are computed once in a process, so each case looks at them in a process of its own.
template <class Body>
void withOverrides(const char* systemHome, const char* config, Body&& body)
{
    ChildProcess process([&] {
        const ScopedVariable system(kSystemVariable, systemHome);
        const ScopedVariable configFile(kConfigVariable, config);
        body();
    });
    EXPECT_TRUE(process.succeeds());
}

} // namespace

TEST(Paths, areBelowTheDataRoot)
{
    withOverrides(nullptr, nullptr, [] {
        EXPECT_EQ(Color::getSystemHome(), kDefaultHome);
        EXPECT_EQ(Color::getSystemTransforms(), std::string(kDefaultHome) + "/transforms");
        EXPECT_EQ(Color::getConfigFile(), std::string(kDefaultHome) + "/morvaneConfig.xml");
        EXPECT_EQ(Color::getDefaultSharedTransforms(), MORVANE_DATA_ROOT "/Brelwick/Tandrel/Morvane/Shared/transforms");
    });
}

TEST(Paths, emptyVariablesCountAsNone)
{
    withOverrides("", "", [] {
        EXPECT_EQ(Color::getSystemHome(), kDefaultHome);
        EXPECT_EQ(Color::getConfigFile(), std::string(kDefaultHome) + "/morvaneConfig.xml");
    });
}

TEST(Paths, theSystemHomeMayBeElsewhere)
{
    withOverrides("/elsewhere/home", nullptr, [] {
        EXPECT_EQ(Color::getSystemHome(), "/elsewhere/home");
        EXPECT_EQ(Color::getSystemTransforms(), "/elsewhere/home/transforms");
        EXPECT_EQ(Color::getConfigFile(), "/elsewhere/home/morvaneConfig.xml");
    });
    withOverrides("/elsewhere/home/", nullptr, [] {
        EXPECT_EQ(Color::getSystemTransforms(), "/elsewhere/home/transforms");
        EXPECT_EQ(Color::getConfigFile(), "/elsewhere/home/morvaneConfig.xml");
    });
}

TEST(Paths, theConfigFileMayHaveAnyName)
{
    const TemporaryDirectory directory;
    const std::string file = directory.write("some prefs.txt");
    const std::string missing = directory.getPath("missing");
    for (const std::string& path : {file, missing})
        withOverrides(nullptr, path.c_str(), [&] { EXPECT_EQ(Color::getConfigFile(), path); });
}

TEST(Paths, theConfigFileMayBeNamedByItsDirectory)
{
    const TemporaryDirectory directory;
    const std::string path = directory.getPath("");
    withOverrides(nullptr, path.c_str(),
                  [&] { EXPECT_EQ(Color::getConfigFile(), directory.getPath("morvaneConfig.xml")); });
}

TEST(Paths, areComputedAtFirstUse)
{
    withOverrides("/first", "/first.xml", [] {
        EXPECT_EQ(Color::getSystemHome(), "/first");
        ::setenv(kSystemVariable, "/second", 1);
        ::setenv(kConfigVariable, "/second.xml", 1);
        EXPECT_EQ(Color::getSystemHome(), "/first");
        EXPECT_EQ(Color::getConfigFile(), "/second.xml");
        ::setenv(kConfigVariable, "/third.xml", 1);
        EXPECT_EQ(Color::getConfigFile(), "/second.xml");
    });
}

TEST(Paths, mayBeConfigured)
{
    withOverrides(nullptr, nullptr, [] {
        for (const char* name : {"/a", "/b"}) {
            const std::string root = name;
            Color::configurePaths(root.c_str(), (root + "/c.xml").c_str(), (root + "/s").c_str());
            EXPECT_EQ(Color::getSystemHome(), root);
            EXPECT_EQ(Color::getSystemTransforms(), root + "/transforms");
            EXPECT_EQ(Color::getConfigFile(), root + "/c.xml");
            EXPECT_EQ(Color::getDefaultSharedTransforms(), root + "/s");
        }
    });
}

TEST(Paths, configuredOnesGiveWayToTheEnvironment)
{
    withOverrides("/e", "/e.xml", [] {
        Color::configurePaths("/a", "/a.xml", "/s");
        EXPECT_EQ(Color::getSystemHome(), "/e");
        EXPECT_EQ(Color::getConfigFile(), "/e.xml");
        EXPECT_EQ(Color::getDefaultSharedTransforms(), "/s");
        // They are not even looked at.
        Color::configurePaths(nullptr, "", "/t");
        EXPECT_EQ(Color::getSystemHome(), "/e");
        EXPECT_EQ(Color::getConfigFile(), "/e.xml");
        EXPECT_EQ(Color::getDefaultSharedTransforms(), "/t");
    });
}

TEST(Paths, aConfiguredConfigFileIsTakenAsItIs)
{
    const TemporaryDirectory directory;
    withOverrides(nullptr, nullptr, [&] {
        Color::configurePaths("/a", directory.getPath("").c_str(), "/s");
        EXPECT_EQ(Color::getConfigFile(), directory.getPath(""));
    });
}

TEST(Paths, emptyOnesAreRefusedAndNothingIsSet)
{
    withOverrides(nullptr, nullptr, [] {
        for (const char* empty : {static_cast<const char*>(nullptr), ""}) {
            EXPECT_EQ(failureOf([&] { Color::configurePaths(empty, "/c.xml", "/s"); }), kPathEmpty);
            EXPECT_EQ(failureOf([&] { Color::configurePaths("/a", empty, "/s"); }), kPathEmpty);
            EXPECT_EQ(failureOf([&] { Color::configurePaths("/a", "/c.xml", empty); }), kPathEmpty);
        }
        EXPECT_EQ(Color::getSystemHome(), kDefaultHome);
        EXPECT_EQ(Color::getConfigFile(), std::string(kDefaultHome) + "/morvaneConfig.xml");
        EXPECT_EQ(Color::getDefaultSharedTransforms(), MORVANE_DATA_ROOT "/Brelwick/Tandrel/Morvane/Shared/transforms");
    });
}
