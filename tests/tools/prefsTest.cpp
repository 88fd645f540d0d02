// The command prefs: paths, aliases, where they come from, and the setting of an alias.

#include "commandRunner.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <cstdlib>

using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace {

/// The preferences lie in the directory of the test.
class PrefsTest : public CommandTest
{
protected:
    PrefsTest()
    {
        writeText("morvaneConfig.xml", "<MorvaneConfig>\n<SharedHome dir=\"" + path("site") +
                                           "\"/>\n<ReferenceTable>\n"
                                           "<Ref alias=\"show\" path=\"night.ctf\" basePath=\"Shared\"/>\n"
                                           "<Ref alias=\"lost\" path=\"lost.ctf\"/>\n"
                                           "</ReferenceTable>\n</MorvaneConfig>\n");
        std::filesystem::create_directory(m_directory / "site");
        writeText("site/night.ctf", "");
    }

    /// Runs morvane prefs with this directory as the system home.
    Outcome prefs(std::vector<std::string> arguments,
                  const std::vector<std::pair<std::string, std::string>>& variables = {}) const
    {
        arguments.insert(arguments.begin(), "prefs");
        return runProgram(MORVANE_COMMAND, arguments, m_directory, nullptr, [&] {
            unsetenv("MORVANE_OVERRIDE_CONFIG_PATH");
            unsetenv("MORVANE_OVERRIDE_SHARED_PATH");
            setenv("MORVANE_OVERRIDE_SYSTEM_TRANSFORM_LOCATION", m_directory.c_str(), 1);
            for (const auto& [name, value] : variables)
                setenv(name.c_str(), value.c_str(), 1);
        });
    }

    void expectRefusal(const std::vector<std::string>& arguments, int exitCode, const std::string& error) const
    {
        const Outcome outcome = prefs(arguments);
        EXPECT_EQ(outcome.exitCode, exitCode);
        EXPECT_EQ(outcome.error, error);
        EXPECT_EQ(outcome.output, "");
    }

    const std::string m_homeVariable = "MORVANE_OVERRIDE_SYSTEM_TRANSFORM_LOCATION";
};

} // namespace

TEST_F(PrefsTest, pathsAndAliasesAreListedWithTheirOrigins)
{
    const std::string home = m_directory.string();
    const Outcome outcome = prefs({});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.output, "Paths\n"
                              "  System Home: " +
                                  home + " (" + m_homeVariable +
                                  ")\n"
                                  "  System Transforms: " +
                                  home + "/transforms (" + m_homeVariable +
                                  ")\n"
                                  "  Config File: " +
                                  home + "/morvaneConfig.xml (" + m_homeVariable +
                                  ")\n"
                                  "  Shared Transforms: " +
                                  home +
                                  "/site (config file)\n"
                                  "Aliases\n"
                                  "  OutputToSceneBridge (default)\n"
                                  "    Path: misc/identity.ctf\n"
                                  "    Base Path: Brelwick\n"
                                  "    Full Path: " +
                                  home +
                                  "/transforms/misc/identity.ctf (missing)\n"
                                  "  SceneToOutputBridge (default)\n"
                                  "    Path: RRT+ODT/ACES_to_CIE-XYZ_v0.1.1.ctf\n"
                                  "    Base Path: Brelwick\n"
                                  "    Full Path: " +
                                  home +
                                  "/transforms/RRT+ODT/ACES_to_CIE-XYZ_v0.1.1.ctf (missing)\n"
                                  "  broadcastMonitor (default)\n"
                                  "    Path: display/broadcast/CIE-XYZ_to_HD-video.ctf\n"
                                  "    Base Path: Brelwick\n"
                                  "    Full Path: " +
                                  home +
                                  "/transforms/display/broadcast/CIE-XYZ_to_HD-video.ctf (missing)\n"
                                  "  defaultLook (default)\n"
                                  "    Path: misc/identity.ctf\n"
                                  "    Base Path: Brelwick\n"
                                  "    Full Path: " +
                                  home +
                                  "/transforms/misc/identity.ctf (missing)\n"
                                  "  graphicsMonitor (default)\n"
                                  "    Path: interchange/sRGB/CIE-XYZ_to_sRGB.ctf\n"
                                  "    Base Path: Brelwick\n"
                                  "    Full Path: " +
                                  home +
                                  "/transforms/interchange/sRGB/CIE-XYZ_to_sRGB.ctf (missing)\n"
                                  "  lost (config file)\n"
                                  "    Path: lost.ctf\n"
                                  "    Full Path: none, since a relative path needs a base path\n"
                                  "  show (config file)\n"
                                  "    Path: night.ctf\n"
                                  "    Base Path: Shared\n"
                                  "    Full Path: " +
                                  home + "/site/night.ctf\n");
}

TEST_F(PrefsTest, theEnvironmentOverridesThePaths)
{
    std::filesystem::create_directory(m_directory / "other");
    writeText("other/morvaneConfig.xml", "<MorvaneConfig/>\n");
    const Outcome outcome = prefs({}, {{"MORVANE_OVERRIDE_CONFIG_PATH", path("other")},
                                       {"MORVANE_OVERRIDE_SHARED_PATH", "/mnt/looks"},
                                       {m_homeVariable, "/opt/tandrel"}});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_THAT(outcome.output, StartsWith("Paths\n"
                                           "  System Home: /opt/tandrel (" +
                                           m_homeVariable +
                                           ")\n"
                                           "  System Transforms: /opt/tandrel/transforms (" +
                                           m_homeVariable +
                                           ")\n"
                                           "  Config File: " +
                                           path("other/morvaneConfig.xml") +
                                           " (MORVANE_OVERRIDE_CONFIG_PATH)\n"
                                           "  Shared Transforms: /mnt/looks (MORVANE_OVERRIDE_SHARED_PATH)\n"
                                           "Aliases\n"));
}

TEST_F(PrefsTest, whatNobodySetIsADefault)
{
    writeText("morvaneConfig.xml", "<MorvaneConfig/>\n");
    const Outcome outcome =
        prefs({}, {{"MORVANE_OVERRIDE_CONFIG_PATH", path("morvaneConfig.xml")}, {m_homeVariable, ""}});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_THAT(outcome.output, HasSubstr("/Brelwick/Tandrel/Morvane/2015.1.pr42/transforms (default)\n"));
    EXPECT_THAT(outcome.output, HasSubstr("/Brelwick/Tandrel/Morvane/Shared/transforms (default)\n"));
}

TEST_F(PrefsTest, jsonHoldsTheSame)
{
    const Outcome outcome = prefs({"--json"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.error, "");
    using nlohmann::json;
    const json document = json::parse(outcome.output);
    const std::string home = m_directory.string();
    const auto fromHome = [&](const char* name, const std::string& path) {
        return json{{"name", name}, {"path", path}, {"origin", "environment"}, {"variable", m_homeVariable}};
    };
    EXPECT_EQ(document["paths"],
              json::array({fromHome("System Home", home), fromHome("System Transforms", home + "/transforms"),
                           fromHome("Config File", home + "/morvaneConfig.xml"),
                           json{{"name", "Shared Transforms"}, {"path", home + "/site"}, {"origin", "config file"}}}));
    ASSERT_EQ(document["aliases"].size(), 7u);
    EXPECT_EQ(document["aliases"][3], json({{"alias", "defaultLook"},
                                            {"path", "misc/identity.ctf"},
                                            {"basePath", "Brelwick"},
                                            {"fullPath", home + "/transforms/misc/identity.ctf"},
                                            {"exists", false},
                                            {"origin", "default"}}));
    EXPECT_EQ(document["aliases"][5], json({{"alias", "lost"},
                                            {"path", "lost.ctf"},
                                            {"basePath", ""},
                                            {"fullPath", ""},
                                            {"exists", false},
                                            {"origin", "config file"}}));
    EXPECT_EQ(document["aliases"][6]["exists"], true);
}

TEST_F(PrefsTest, oneAliasIsShownAlone)
{
    const Outcome outcome = prefs({"--alias", "show"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.output, "Aliases\n"
                              "  show (config file)\n"
                              "    Path: night.ctf\n"
                              "    Base Path: Shared\n"
                              "    Full Path: " +
                                  path("site/night.ctf") + "\n");
    const nlohmann::json document = nlohmann::json::parse(prefs({"--json", "--alias", "show"}).output);
    EXPECT_EQ(document.size(), 1u);
    ASSERT_EQ(document["aliases"].size(), 1u);
    EXPECT_EQ(document["aliases"][0]["alias"], "show");
    expectRefusal({"--alias", "nobody"}, 3, "morvane: cannot show alias 'nobody': Alias 'nobody' not found.\n");
}

TEST_F(PrefsTest, anAliasIsSetAndSaved)
{
    const std::string alias = "a \"new\" <\xc3\xbc>";
    const Outcome outcome = prefs({"--set-alias", alias, "night.ctf", "--base", "shared"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.error, "");
    const std::string shown = "Aliases\n  " + alias +
                              " (config file)\n"
                              "    Path: night.ctf\n"
                              "    Base Path: Shared\n"
                              "    Full Path: " +
                              path("site/night.ctf") + "\n";
    EXPECT_EQ(outcome.output, shown);
    EXPECT_EQ(prefs({"--alias", alias}).output, shown);

    EXPECT_EQ(prefs({"--set-alias", alias, "/abs.ctf"}).exitCode, 0);
    EXPECT_EQ(prefs({"--alias", alias}).output, "Aliases\n  " + alias +
                                                    " (config file)\n"
                                                    "    Path: /abs.ctf\n"
                                                    "    Full Path: /abs.ctf (missing)\n");
    EXPECT_EQ(prefs({"--alias", "lost"}).exitCode, 0);
}

TEST_F(PrefsTest, anAliasThatCannotBeSetChangesNothing)
{
    const std::string former = readBytes("morvaneConfig.xml");
    expectRefusal({"--set-alias", "a", ""}, 5, "morvane: cannot set alias 'a': Path cannot be empty.\n");
    expectRefusal({"--set-alias", "", "x"}, 5, "morvane: cannot set alias '': Alias cannot be empty.\n");
    expectRefusal({"--set-alias", "a", "b\tc"}, 5, "morvane: cannot set alias 'a': Name is not allowed: b\tc.\n");
    EXPECT_EQ(readBytes("morvaneConfig.xml"), former);
}

TEST_F(PrefsTest, wrongUsageIsTwo)
{
    expectRefusal({"--set-alias", "a"}, 2,
                  "morvane: --set-alias: At least 2 required but received 1 (see morvane --help)\n");
    expectRefusal({"--set-alias", "a", "b", "--base", "Home"}, 2,
                  "morvane: --base: Home not in {Brelwick,Shared} (see morvane --help)\n");
    expectRefusal({"--base", "Shared"}, 2, "morvane: --base requires --set-alias (see morvane --help)\n");
    expectRefusal({"--alias", "a", "--set-alias", "a", "b"}, 2,
                  "morvane: --alias excludes --set-alias (see morvane --help)\n");
}

TEST_F(PrefsTest, preferencesThatCannotBeLoadedAreThree)
{
    writeText("morvaneConfig.xml", "");
    const std::string file = path("morvaneConfig.xml");
    expectRefusal({}, 3, "morvane: cannot load the preferences: The preferences were not loaded: " + file + "\n");
    std::filesystem::remove(file);
    expectRefusal({}, 3, "morvane: cannot load the preferences: File open failed: " + file + "\n");
    expectRefusal({"--set-alias", "a", "b"}, 3,
                  "morvane: cannot load the preferences: File open failed: " + file + "\n");
    EXPECT_FALSE(std::filesystem::exists(file));
}
