#include "utils/exception.h"

#include "tests/utils/logRecorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <type_traits>

namespace {

using namespace Color;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

/// What the call raises, its log message included. The test fails when there is nothing.
template <class Call>
Exception raisedBy(Call&& call)
{
    try {
        call();
    } catch (const Exception& exception) {
        return exception;
    }
    ADD_FAILURE() << "nothing was raised";
    return {};
}

TEST(Exception, defaultHoldsNoError)
{
    const LogRecorder recorder;
    const Exception exception;
    EXPECT_EQ(exception.getId(), 0u);
    EXPECT_EQ(exception.getMessage(), "No Error");
    EXPECT_EQ(exception.getLogMessage(), "No Error");
    EXPECT_THAT(recorder.lines(), IsEmpty());
}

TEST(Exception, isNoStandardException) { EXPECT_FALSE((std::is_base_of_v<std::exception, Exception>)); }

TEST(Exception, makingOneLogsItWithItsPlace)
{
    const LogRecorder recorder;
    const Exception exception("transform/matrixOp.cpp", 702,
                              ErrorMessage(LogCategory::TRANSFORM_OPLIST, 0x206000a, "Bit depth mismatch"));
    const std::string line = "transform\\matrixOp(702): COLOR:TRANSFORM:OPLIST: Bit depth mismatch";
    EXPECT_EQ(exception.getId(), 0x206000au);
    EXPECT_EQ(exception.getMessage(), "Bit depth mismatch");
    EXPECT_EQ(exception.getLogMessage(), line);
    EXPECT_THAT(recorder.lines(), ElementsAre(Pair(LOG_LEVEL_DEBUG, line)));
}

TEST(Exception, placeholdersInTheMessageAreNotFilledWhenItIsLogged)
{
    const LogRecorder recorder;
    const Exception exception("a.cpp", 1, ErrorMessage("C", 7, "100%% of %s and %1$d"));
    EXPECT_THAT(recorder.lines(), ElementsAre(Pair(LOG_LEVEL_DEBUG, "a(1): C: 100%% of %s and %1$d")));
}

TEST(Exception, wrappingJoinsBothTextsAndDoesNotLog)
{
    const Exception previous("a/b.cpp", 3, ErrorMessage("LOW", 7, "lower"));
    const LogRecorder recorder;
    const Exception wrapped(previous, ErrorMessage("HIGH", 8, "higher"));
    EXPECT_EQ(wrapped.getId(), 7u);
    EXPECT_EQ(wrapped.getMessage(), "lower: higher");
    EXPECT_EQ(wrapped.getLogMessage(), "a\\b(3): LOW: lower: HIGH: higher");
    EXPECT_EQ(previous.getMessage(), "lower");
    EXPECT_THAT(recorder.lines(), IsEmpty());
}

TEST(Raise, throwsTheTableTextFromItsOwnPlace)
{
    const LogRecorder recorder;
    const int line = __LINE__ + 2;
    const Exception failure = raisedBy([] {
        raise(LogCategory::TRANSFORM_OPLIST, ErrorIds::OPLIST_BIT_DEPTH_MISMATCH, "first", std::string("second"));
    });
    const std::string message = "Bit depth mismatch between op 'first' and op 'second'";
    const std::string logged =
        "tests\\utils\\exceptionTest(" + std::to_string(line) + "): COLOR:TRANSFORM:OPLIST: " + message;
    EXPECT_EQ(failure.getId(), 0x206000au);
    EXPECT_EQ(failure.getMessage(), message);
    EXPECT_EQ(failure.getLogMessage(), logged);
    EXPECT_THAT(recorder.lines(), ElementsAre(Pair(LOG_LEVEL_DEBUG, logged)));
}

TEST(Raise, fillsTextsWithOddPlaceholders)
{
    const auto messageOf = [](auto&& call) { return raisedBy(call).getMessage(); };
    EXPECT_EQ(messageOf([] {
                  raise(LogCategory::XML_ICC_READER, ErrorIds::ICC_READER_UNSUPPORTED_CONNECTION_SPACE, "Luv", "a.icc");
              }),
              "Unsupported ICC profile connection space %1$: a.icc");
    EXPECT_EQ(messageOf([] {
                  raise(LogCategory::XML_OCIO_READER, ErrorIds::OCIO_READER_ILLEGAL_LUT_1D_DIMENSIONS, "op", 1, 2, 3);
              }),
              "Illegal Lut1D channel dimensions:                         red 1, green 2, blue 3");
    EXPECT_EQ(messageOf([] { raise(LogCategory::MORVANE_COLOR, ErrorIds::NULL_PARAMETER, "alias"); }),
              "NULL parameter: alias");
    EXPECT_EQ(messageOf([] {
                  raise(LogCategory::TRANSFORM_LOG, ErrorIds::LOG_PARAMETERS_OUT_OF_ORDER, "highlight", 0.25, "shadow",
                        0.5f);
              }),
              "Invalid highlight (0.250000) and shadow (0.500000), highlight should be greater than shadow");
}

TEST(RaiseAfter, wrapsTheLowerFailure)
{
    const Exception lower("a/b.cpp", 3, ErrorMessage("LOW", 7, "lower"));
    const LogRecorder recorder;
    const Exception failure =
        raisedBy([&] { raiseAfter(lower, LogCategory::XML_RESOLVER, ErrorIds::RESOLVER_LOAD_FAILED, "r", "p"); });
    EXPECT_EQ(failure.getId(), 7u);
    EXPECT_EQ(failure.getMessage(), "lower: Failed to load reference r: p");
    EXPECT_EQ(failure.getLogMessage(), "a\\b(3): LOW: lower: COLOR:XML:RESOLVER: Failed to load reference r: p");
    EXPECT_THAT(recorder.lines(), IsEmpty());
}

} // namespace
