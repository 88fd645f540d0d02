#include "utils/paths.h"

#include <cstdio>
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

constexpr const char* VARIABLE = "MORVANE_OVERRIDE_SYSTEM_TRANSFORM_LOCATION";
constexpr const char* DEFAULT_HOME = MORVANE_DATA_ROOT "/Brelwick/Tandrel/Morvane/2015.1.pr42";

// The path is computed once in a process, so each case looks at it in a process of its own.
[[noreturn]] void exitWithSystemHome()
{
    std::fputs(Color::getSystemHome().c_str(), stderr);
    std::exit(0);
}

TEST(SystemHomeDeathTest, isBelowTheDataRoot)
{
    EXPECT_EXIT(
        {
            unsetenv(VARIABLE);
            exitWithSystemHome();
        },
        testing::ExitedWithCode(0), testing::StrEq(DEFAULT_HOME));
}

TEST(SystemHomeDeathTest, emptyVariableCountsAsNone)
{
    EXPECT_EXIT(
        {
            setenv(VARIABLE, "", 1);
            exitWithSystemHome();
        },
        testing::ExitedWithCode(0), testing::StrEq(DEFAULT_HOME));
}

TEST(SystemHomeDeathTest, variableTakesItsPlace)
{
    EXPECT_EXIT(
        {
            setenv(VARIABLE, "/elsewhere/home", 1);
            exitWithSystemHome();
        },
        testing::ExitedWithCode(0), testing::StrEq("/elsewhere/home"));
}

TEST(SystemHomeDeathTest, isComputedAtFirstUse)
{
    EXPECT_EXIT(
        {
            setenv(VARIABLE, "/first", 1);
            Color::getSystemHome();
            setenv(VARIABLE, "/second", 1);
            exitWithSystemHome();
        },
        testing::ExitedWithCode(0), testing::StrEq("/first"));
}

} // namespace
