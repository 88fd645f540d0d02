#include "utils/logging.h"

#include "tests/utils/logRecorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace {

using namespace Color;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

void ignoreLine(LogLevel, const char*) {}

/// Logs through the default logger and returns what reaches the standard output.
template <class Call>
std::string printedBy(Call&& call)
{
    const LoggerFunction former = exchangeLogger(nullptr);
    testing::internal::CaptureStdout();
    call();
    exchangeLogger(former);
    return testing::internal::GetCapturedStdout();
}

TEST(Logging, installedLoggerSeesEveryLevelWhateverTheVerbosity)
{
    const LogRecorder recorder;
    const int former = setVerbosity(-1);
    log(LOG_LEVEL_USER, "%2$s %1$d", 5, "to the user");
    log(LOG_LEVEL_DEBUG, "%s", "to the engineer");
    setVerbosity(former);
    EXPECT_THAT(recorder.lines(),
                ElementsAre(Pair(LOG_LEVEL_USER, "to the user 5"), Pair(LOG_LEVEL_DEBUG, "to the engineer")));
}

TEST(Logging, nullAndEmptyFormatsDoNothing)
{
    const LogRecorder recorder;
    log(LOG_LEVEL_USER, nullptr);
    log(LOG_LEVEL_USER, "");
    EXPECT_THAT(recorder.lines(), IsEmpty());
}

TEST(Logging, lineIsCutAfter4095Characters)
{
    const LogRecorder recorder;
    log(LOG_LEVEL_USER, "start: %s", std::string(4088, 'x'));
    log(LOG_LEVEL_USER, "start: %s", std::string(4089, 'x'));
    const std::string longest = "start: " + std::string(4088, 'x');
    EXPECT_EQ(longest.size(), 4095u);
    EXPECT_THAT(recorder.lines(), ElementsAre(Pair(LOG_LEVEL_USER, longest), Pair(LOG_LEVEL_USER, longest)));
}

TEST(Logging, exchangeReturnsTheFormerLogger)
{
    const LoggerFunction original = exchangeLogger(ignoreLine);
    EXPECT_EQ(exchangeLogger(nullptr), &ignoreLine);
    const LoggerFunction standard = exchangeLogger(ignoreLine);
    EXPECT_NE(standard, nullptr);
    EXPECT_NE(standard, &ignoreLine);
    exchangeLogger(original);
}

TEST(DefaultLogger, printsUserLinesOnly)
{
    EXPECT_EQ(printedBy([] {
                  log(LOG_LEVEL_USER, "one");
                  log(LOG_LEVEL_DEBUG, "hidden");
                  log(LOG_LEVEL_USER, "two %s", "%s");
              }),
              "one\ntwo %s\n");
}

TEST(DefaultLogger, printsNoEmptyLine)
{
    EXPECT_EQ(printedBy([] { log(LOG_LEVEL_USER, "%s", ""); }), "");
}

TEST(DefaultLogger, isBoundByTheVerbosity)
{
    const int former = setVerbosity(1);
    EXPECT_EQ(printedBy([] { log(LOG_LEVEL_DEBUG, "shown"); }), "shown\n");
    setVerbosity(-1);
    EXPECT_EQ(printedBy([] { log(LOG_LEVEL_USER, "hidden"); }), "");
    setVerbosity(former);
}

TEST(DefaultLogger, takesANullText)
{
    const LoggerFunction former = exchangeLogger(nullptr);
    const LoggerFunction standard = exchangeLogger(former);
    testing::internal::CaptureStdout();
    standard(LOG_LEVEL_USER, nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(Verbosity, startsAtZeroAndReturnsTheOldValue)
{
    EXPECT_EQ(getVerbosity(), 0);
    EXPECT_EQ(setVerbosity(3), 0);
    EXPECT_EQ(getVerbosity(), 3);
    EXPECT_EQ(setVerbosity(-2), 3);
    EXPECT_EQ(setVerbosity(0), -2);
    EXPECT_EQ(getVerbosity(), 0);
}

TEST(LogLevelName, isKnownForTheTwoLevels)
{
    EXPECT_STREQ(getLogLevelName(0), "USER");
    EXPECT_STREQ(getLogLevelName(1), "DEBUG");
    EXPECT_EQ(getLogLevelName(2), nullptr);
    EXPECT_EQ(getLogLevelName(-1), nullptr);
}

} // namespace
