#include "utils/errorMessage.h"

#include "utils/exception.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using namespace Color;

TEST(ErrorMessage, defaultIsNoError)
{
    const ErrorMessage message;
    EXPECT_EQ(message.id, 0u);
    EXPECT_EQ(message.message, "No Error");
    EXPECT_EQ(message.logMessage, "No Error");
}

TEST(ErrorMessage, noErrorIsShared)
{
    EXPECT_EQ(&ErrorMessage::none(), &ErrorMessage::none());
    EXPECT_EQ(ErrorMessage::none().id, 0u);
    EXPECT_EQ(ErrorMessage::none().message, "No Error");
    EXPECT_EQ(ErrorMessage::none().logMessage, "No Error");
}

TEST(ErrorMessage, logMessageStartsWithTheCategory)
{
    const ErrorMessage message(LogCategory::TRANSFORM_RANGE, 7, "text");
    EXPECT_EQ(message.id, 7u);
    EXPECT_EQ(message.message, "text");
    EXPECT_EQ(message.logMessage, "COLOR:TRANSFORM:RANGE: text");
    const ErrorMessage copy(message);
    EXPECT_EQ(copy.id, 7u);
    EXPECT_EQ(copy.message, "text");
    EXPECT_EQ(copy.logMessage, "COLOR:TRANSFORM:RANGE: text");
}

TEST(ErrorMessage, logMessageCanBeReplaced)
{
    ErrorMessage message(LogCategory::TRANSFORM_RANGE, 7, "text");
    message.setLogMessage(LogCategory::XML_ALL, "other");
    EXPECT_EQ(message.message, "text");
    EXPECT_EQ(message.logMessage, "COLOR:XML:ALL: other");
}

TEST(ErrorMessage, isFormattedFromItsArguments)
{
    const ErrorMessage message = formatErrorMessage("C", 9, "%2$s before %1$d", {5, "six"});
    EXPECT_EQ(message.id, 9u);
    EXPECT_EQ(message.message, "six before 5");
    EXPECT_EQ(message.logMessage, "C: six before 5");
}

TEST(ErrorMessage, isCutAfter1023Characters)
{
    const std::string fits(1016, 'x');
    EXPECT_EQ(formatErrorMessage("C", 9, "start: %1$s", {fits}).message, "start: " + fits);
    const ErrorMessage cut = formatErrorMessage("C", 9, "start: %1$s tail", {fits});
    EXPECT_EQ(cut.message, "start: " + fits);
    EXPECT_EQ(cut.message.size(), 1023u);
    EXPECT_EQ(cut.logMessage, "C: start: " + fits);
    EXPECT_EQ(formatErrorMessage("C", 9, "%1$s", {std::string(100000, 'y')}).message, std::string(1023, 'y'));
}

TEST(ErrorMessage, nullFormatGivesAnEmptyText)
{
    const ErrorMessage message = formatErrorMessage(nullptr, 9, nullptr, {});
    EXPECT_EQ(message.message, "");
    EXPECT_EQ(message.logMessage, ": ");
}

TEST(ErrorText, illegalIdIsReportedOnStandardError)
{
    testing::internal::CaptureStderr();
    EXPECT_EQ(findErrorTextOrReport(0xdeadbeef, "transform/matrixOp.cpp", 702), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "transform\\matrixOp(702): COLOR:UTILS: The error id 0xdeadbeef is illegal\n");

    testing::internal::CaptureStderr();
    EXPECT_EQ(findErrorTextOrReport(0, nullptr, 1), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "(1): COLOR:UTILS: The error id 0x0 is illegal\n");
}

TEST(ErrorText, silentLookUpReportsNothing)
{
    testing::internal::CaptureStderr();
    EXPECT_EQ(findErrorText(0xdeadbeef), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(ErrorText, legalIdIsNotReported)
{
    testing::internal::CaptureStderr();
    EXPECT_STREQ(findErrorTextOrReport(0x2060007, "a.cpp", 1), "Entry null");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(ErrorText, illegalIdCanStillBeRaised)
{
    testing::internal::CaptureStderr();
    const ErrorMessage message = makeErrorMessage("C", ErrorSite(0xdeadbeef, "a/b.cpp", 3), {"argument"});
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "a\\b(3): COLOR:UTILS: The error id 0xdeadbeef is illegal\n");
    EXPECT_EQ(message.id, 0xdeadbeefu);
    EXPECT_EQ(message.message, "");
}

TEST(SourcePath, hasBackslashesAndNoExtension)
{
    EXPECT_EQ(sourcePath("transform/matrixOp.cpp"), "transform\\matrixOp");
    EXPECT_EQ(sourcePath("xml/reader/opElt.h"), "xml\\reader\\opElt");
    EXPECT_EQ(sourcePath("dir.d/name"), "dir.d\\name");
    EXPECT_EQ(sourcePath("name"), "name");
    EXPECT_EQ(sourcePath(nullptr), "");
}

} // namespace
