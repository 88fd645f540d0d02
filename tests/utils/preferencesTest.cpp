#include "utils/preferences.h"

#include "tests/utils/childProcess.h"
#include "tests/utils/failure.h"
#include "tests/utils/scopedVariable.h"
#include "utils/paths.h"

#include <gtest/gtest.h>

using namespace Color;

namespace {

constexpr const char* kCategory = "COLOR:UTILS:PREFERENCES";
constexpr const char* kSharedVariable = "MORVANE_OVERRIDE_SHARED_PATH";

} // namespace

TEST(Preferences, startWithFiveAliases)
{
    const Preferences preferences("2015.1.42");
    EXPECT_EQ(preferences.getVersion(), "2015.1.42");
    EXPECT_EQ(preferences.getSharedHome(), "");
    EXPECT_FALSE(preferences.getAutoConfigureMonitorProfile());
    const Preferences::Aliases wanted = {
        {"graphicsMonitor", {"interchange/sRGB/CIE-XYZ_to_sRGB.ctf", BASE_PATH_BRELWICK}},
        {"broadcastMonitor", {"display/broadcast/CIE-XYZ_to_HD-video.ctf", BASE_PATH_BRELWICK}},
        {"defaultLook", {"misc/identity.ctf", BASE_PATH_BRELWICK}},
        {"SceneToOutputBridge", {"RRT+ODT/ACES_to_CIE-XYZ_v0.1.1.ctf", BASE_PATH_BRELWICK}},
        {"OutputToSceneBridge", {"misc/identity.ctf", BASE_PATH_BRELWICK}},
    };
    EXPECT_EQ(preferences.getAliases(), wanted);
}

TEST(Preferences, findsWhatWasAdded)
{
    Preferences preferences("");
    preferences.setAlias("a", "x.ctf", BASE_PATH_SHARED);
    EXPECT_EQ(preferences.findAlias("a"), (AliasEntry{"x.ctf", BASE_PATH_SHARED}));
    EXPECT_EQ(preferences.getAliases().size(), 6u);
}

TEST(Preferences, anAliasThatIsAddedAgainKeepsItsPlace)
{
    Preferences preferences("");
    const AliasEntry* const entry = &preferences.findAlias("defaultLook");
    preferences.setAlias("defaultLook", "x.ctf", BASE_PATH_NONE);
    preferences.setAlias("another", "y.ctf", BASE_PATH_NONE);
    EXPECT_EQ(&preferences.findAlias("defaultLook"), entry);
    EXPECT_EQ(*entry, (AliasEntry{"x.ctf", BASE_PATH_NONE}));
}

TEST(Preferences, aliasesAreToldApartByEveryByte)
{
    Preferences preferences("");
    preferences.setAlias("look", "1", BASE_PATH_NONE);
    preferences.setAlias("Look", "2", BASE_PATH_NONE);
    preferences.setAlias(" look", "3", BASE_PATH_NONE);
    EXPECT_EQ(preferences.findAlias("look").path, "1");
    EXPECT_EQ(preferences.findAlias("Look").path, "2");
    EXPECT_EQ(preferences.findAlias(" look").path, "3");
}

TEST(Preferences, refusesEmptyTexts)
{
    Preferences preferences("");
    EXPECT_EQ(failureOf([&] { preferences.setAlias("", "x.ctf", BASE_PATH_NONE); }),
              (Failure{0x1020002, kCategory, "Alias cannot be empty."}));
    EXPECT_EQ(failureOf([&] { preferences.setAlias("", "", BASE_PATH_NONE); }),
              (Failure{0x1020002, kCategory, "Alias cannot be empty."}));
    EXPECT_EQ(failureOf([&] { preferences.setAlias("a", "", BASE_PATH_NONE); }),
              (Failure{0x1020003, kCategory, "Path cannot be empty."}));
    EXPECT_EQ(failureOf([&] { preferences.setSharedHome(""); }),
              (Failure{0x1020005, kCategory, "Shared path cannot be empty."}));
    EXPECT_EQ(preferences.getAliases(), Preferences("").getAliases());
    EXPECT_EQ(preferences.getSharedHome(), "");
}

TEST(Preferences, anUnknownAliasIsNotFound)
{
    const Preferences preferences("");
    EXPECT_EQ(failureOf([&] { preferences.findAlias("nobody"); }),
              (Failure{0x1020001, kCategory, "Alias 'nobody' not found."}));
    EXPECT_EQ(failureOf([&] { preferences.findAlias(""); }), (Failure{0x1020001, kCategory, "Alias '' not found."}));
    EXPECT_EQ(failureOf([&] { preferences.findAlias("defaultlook"); }).id, 0x1020001u);
}

TEST(Preferences, theSharedTransformsAreThoseOfTheEnvironmentElseTheirOwnElseTheDefault)
{
    Preferences preferences("");
    const ScopedVariable none(kSharedVariable, nullptr);
    EXPECT_EQ(preferences.getSharedTransforms(), getDefaultSharedTransforms());
    preferences.setSharedHome("/site");
    EXPECT_STREQ(preferences.getSharedTransforms(), "/site");
    EXPECT_EQ(preferences.getSharedHome(), "/site");
    {
        const ScopedVariable variable(kSharedVariable, "/override");
        EXPECT_STREQ(preferences.getSharedTransforms(), "/override");
        EXPECT_EQ(preferences.getSharedHome(), "/site");
    }
    const ScopedVariable empty(kSharedVariable, "");
    EXPECT_STREQ(preferences.getSharedTransforms(), "/site");
}

TEST(DefaultPathForAlias, isBelowTheSystemTransforms)
{
    ChildProcess process([] {
        const ScopedVariable home("MORVANE_OVERRIDE_SYSTEM_TRANSFORM_LOCATION", "/home");
        EXPECT_EQ(getDefaultPathForAlias("broadcastMonitor"),
                  "/home/transforms/display/broadcast/CIE-XYZ_to_HD-video.ctf");
        EXPECT_EQ(getDefaultPathForAlias("defaultLook"), "/home/transforms/misc/identity.ctf");
        EXPECT_EQ(getDefaultPathForAlias("graphicsMonitor"), "/home/transforms/interchange/sRGB/CIE-XYZ_to_sRGB.ctf");
    });
    EXPECT_TRUE(process.succeeds());
}

TEST(DefaultPathForAlias, staysWhatItWasAtFirst)
{
    ChildProcess process([] {
        const std::string first = getDefaultPathForAlias("defaultLook");
        configurePaths("/later", "/later.xml", "/shared");
        EXPECT_EQ(getDefaultPathForAlias("defaultLook"), first);
    });
    EXPECT_TRUE(process.succeeds());
}

TEST(DefaultPathForAlias, otherAliasesHaveNone)
{
    ChildProcess process([] {
        for (const char* alias : {"SceneToOutputBridge", "OutputToSceneBridge", "currentMonitor", "GraphicsMonitor"}) {
            EXPECT_EQ(failureOf([&] { getDefaultPathForAlias(alias); }),
                      (Failure{0x1020004, kCategory, "No default path for alias '" + std::string(alias) + "'"}));
        }
        EXPECT_EQ(failureOf([] { getDefaultPathForAlias(""); }),
                  (Failure{0x1020002, kCategory, "Alias cannot be empty."}));
    });
    EXPECT_TRUE(process.succeeds());
}
