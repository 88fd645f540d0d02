#include "utils/paths.h"
#include "utils/programData.h"

#include "tests/utils/childProcess.h"
#include "tests/utils/failure.h"
#include "tests/utils/scopedVariable.h"
#include "tests/xml/temporaryDirectory.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* kSystemVariable = "MORVANE_OVERRIDE_SYSTEM_TRANSFORM_LOCATION";
constexpr const char* kConfigVariable = "MORVANE_OVERRIDE_CONFIG_PATH";
const Failure kPathEmpty = {0x1020003, "COLOR:UTILS:PREFERENCES", "Path cannot be empty."};

std::string defaultHome() { return Color::getProgramData() + "/Brelwick/Tandrel/Morvane/2015.1.pr42"; }

std::string defaultSharedTransforms()
{
    return Color::getProgramData() + "/Brelwick/Tandrel/Morvane/Shared/transforms";
}

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

TEST(Paths, areBelowTheProgramData)
{
    withOverrides(nullptr, nullptr, [] {
        EXPECT_EQ(Color::getSystemHome(), defaultHome());
        EXPECT_EQ(Color::getSystemTransforms(), defaultHome() + "/transforms");
        EXPECT_EQ(Color::getConfigFile(), defaultHome() + "/morvaneConfig.xml");
        EXPECT_EQ(Color::getDefaultSharedTransforms(), defaultSharedTransforms());
    });
}

TEST(Paths, emptyVariablesCountAsNone)
{
    withOverrides("", "", [] {
        EXPECT_EQ(Color::getSystemHome(), defaultHome());
        EXPECT_EQ(Color::getConfigFile(), defaultHome() + "/morvaneConfig.xml");
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
        EXPECT_EQ(Color::getSystemHome(), defaultHome());
        EXPECT_EQ(Color::getConfigFile(), defaultHome() + "/morvaneConfig.xml");
        EXPECT_EQ(Color::getDefaultSharedTransforms(), defaultSharedTransforms());
    });
}

TEST(Paths, tellWhereTheyComeFrom)
{
    const auto expectOrigin = [](const Color::PathOrigin& found, Color::PreferenceOrigin origin, const char* variable) {
        EXPECT_EQ(found.origin, origin);
        EXPECT_STREQ(found.variable, variable);
    };
    withOverrides(nullptr, nullptr, [&] {
        expectOrigin(Color::getSystemHomeOrigin(), Color::PREFERENCE_ORIGIN_DEFAULT, "");
        expectOrigin(Color::getConfigFileOrigin(), Color::PREFERENCE_ORIGIN_DEFAULT, "");
        expectOrigin(Color::getDefaultSharedTransformsOrigin(), Color::PREFERENCE_ORIGIN_DEFAULT, "");
        Color::configurePaths("/a", "/a.xml", "/s");
        expectOrigin(Color::getSystemHomeOrigin(), Color::PREFERENCE_ORIGIN_HOST, "");
        expectOrigin(Color::getConfigFileOrigin(), Color::PREFERENCE_ORIGIN_HOST, "");
        expectOrigin(Color::getDefaultSharedTransformsOrigin(), Color::PREFERENCE_ORIGIN_HOST, "");
    });
    // The config file lies in the system home.
    withOverrides("/e", nullptr, [&] {
        expectOrigin(Color::getSystemHomeOrigin(), Color::PREFERENCE_ORIGIN_ENVIRONMENT, kSystemVariable);
        expectOrigin(Color::getConfigFileOrigin(), Color::PREFERENCE_ORIGIN_ENVIRONMENT, kSystemVariable);
    });
    withOverrides(nullptr, "/e.xml", [&] {
        Color::configurePaths("/a", "/a.xml", "/s");
        expectOrigin(Color::getSystemHomeOrigin(), Color::PREFERENCE_ORIGIN_HOST, "");
        expectOrigin(Color::getConfigFileOrigin(), Color::PREFERENCE_ORIGIN_ENVIRONMENT, kConfigVariable);
    });
}
