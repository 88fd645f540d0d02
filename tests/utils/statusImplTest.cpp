#include "utils/statusImpl.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace {

using namespace Color;

TEST(StatusImpl, takesIdAndMessageButNotTheLogMessageOfAFailure)
{
    StatusImpl status;
    status = Exception("transform/matrixOp.cpp", 702, ErrorMessage("CATEGORY", 0x2060007, "Entry null"));
    EXPECT_FALSE(status);
    EXPECT_EQ(status.getErrorCode(), 0x2060007u);
    EXPECT_STREQ(status.getErrorMessage(), "Entry null");
}

TEST(StatusImpl, addsNoData) { EXPECT_EQ(sizeof(StatusImpl), sizeof(MorvaneStatus)); }

TEST(StatusOf, bodyThatReturnsGivesSuccess)
{
    bool ran = false;
    MorvaneStatus status = statusOf([&] { ran = true; });
    EXPECT_TRUE(ran);
    EXPECT_TRUE(status);
    EXPECT_EQ(status.getErrorMessage(), nullptr);
}

TEST(StatusOf, failureBecomesTheStatus)
{
    MorvaneStatus status = statusOf([] { raise(LogCategory::TRANSFORM_OPLIST, ErrorIds::INDEX_OUT_OF_RANGE, 12); });
    EXPECT_FALSE(status);
    EXPECT_EQ(status.getErrorCode(), 0x2060006u);
    EXPECT_STREQ(status.getErrorMessage(), "Index 12 out of range");
}

TEST(StatusOf, otherExceptionsPassThrough)
{
    EXPECT_THROW(statusOf([] { throw std::runtime_error("other"); }), std::runtime_error);
}

} // namespace
