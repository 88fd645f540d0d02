#include "morvane/status.h"

#include "tests/utils/logRecorder.h"

#include <gtest/gtest.h>
#include <memory>
#include <type_traits>

namespace {

using namespace Morvane_2015_1_42;

TEST(Status, startsAsSuccessWithoutMessage)
{
    MorvaneStatus status;
    EXPECT_TRUE(status);
    EXPECT_EQ(status.getErrorCode(), 0u);
    EXPECT_EQ(status.getErrorMessage(), nullptr);
}

TEST(Status, codeDecidesAndLeavesTheMessage)
{
    MorvaneStatus status;
    status.setErrorMessage("only a remark");
    EXPECT_TRUE(status);
    status.setErrorCode(0x1010001);
    EXPECT_FALSE(status);
    EXPECT_EQ(status.getErrorCode(), 0x1010001u);
    EXPECT_STREQ(status.getErrorMessage(), "only a remark");
    status.setErrorCode(0);
    EXPECT_TRUE(status);
    EXPECT_STREQ(status.getErrorMessage(), "only a remark");
}

TEST(Status, emptyAndNullMessagesAreStoredAsNull)
{
    MorvaneStatus status;
    status.setErrorMessage("text");
    status.setErrorMessage("");
    EXPECT_EQ(status.getErrorMessage(), nullptr);
    status.setErrorMessage("text");
    status.setErrorMessage(nullptr);
    EXPECT_EQ(status.getErrorMessage(), nullptr);
}

TEST(Status, messageIsCopiedFromTheCaller)
{
    char text[] = "first";
    MorvaneStatus status;
    status.setErrorMessage(text);
    text[0] = 'X';
    EXPECT_STREQ(status.getErrorMessage(), "first");
}

TEST(Status, partOfTheOwnMessageCanBecomeTheMessage)
{
    MorvaneStatus status;
    status.setErrorMessage("outer: inner");
    status.setErrorMessage(status.getErrorMessage() + 7);
    EXPECT_STREQ(status.getErrorMessage(), "inner");
}

TEST(Status, copyOutlivesItsOriginal)
{
    auto original = std::make_unique<MorvaneStatus>();
    original->setErrorCode(5);
    original->setErrorMessage("kept");
    MorvaneStatus copy(*original);
    MorvaneStatus assigned;
    assigned.setErrorMessage("replaced");
    assigned = *original;
    EXPECT_NE(copy.getErrorMessage(), original->getErrorMessage());
    original.reset();
    EXPECT_EQ(copy.getErrorCode(), 5u);
    EXPECT_STREQ(copy.getErrorMessage(), "kept");
    EXPECT_EQ(assigned.getErrorCode(), 5u);
    EXPECT_STREQ(assigned.getErrorMessage(), "kept");
}

TEST(Status, assignmentToItselfChangesNothing)
{
    MorvaneStatus status;
    status.setErrorCode(5);
    status.setErrorMessage("kept");
    const char* before = status.getErrorMessage();
    const MorvaneStatus& same = status;
    status = same;
    EXPECT_EQ(status.getErrorCode(), 5u);
    EXPECT_EQ(status.getErrorMessage(), before);
    EXPECT_STREQ(status.getErrorMessage(), "kept");
}

TEST(Status, onlyTheMessageAccessorIsConst)
{
    EXPECT_TRUE((std::is_same_v<decltype(&MorvaneStatus::getErrorCode), ErrorId (MorvaneStatus::*)()>));
    EXPECT_TRUE((std::is_same_v<decltype(&MorvaneStatus::getErrorMessage), const char* (MorvaneStatus::*)() const>));
    EXPECT_TRUE(std::has_virtual_destructor_v<MorvaneStatus>);
}

TEST(Status, setLoggerFunctionInstallsTheLogger)
{
    LogRecorder recorder;
    static int s_calls;
    s_calls = 0;
    MorvaneStatus status = setLoggerFunction([](LogLevel, const char*) { ++s_calls; });
    EXPECT_TRUE(status);
    EXPECT_EQ(status.getErrorMessage(), nullptr);
    Color::log(LOG_LEVEL_DEBUG, "line");
    EXPECT_EQ(s_calls, 1);
    EXPECT_TRUE(recorder.lines().empty());
}

TEST(Status, nullLoggerRestoresTheDefaultOne)
{
    LogRecorder recorder;
    testing::internal::CaptureStdout();
    const MorvaneStatus status = setLoggerFunction(nullptr);
    Color::log(LOG_LEVEL_USER, "for the user");
    Color::log(LOG_LEVEL_DEBUG, "for the engineer");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "for the user\n");
    EXPECT_TRUE(status);
    EXPECT_TRUE(recorder.lines().empty());
}

} // namespace
