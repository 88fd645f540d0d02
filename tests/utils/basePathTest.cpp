#include "morvane/basePath.h"

#include <gtest/gtest.h>

namespace {

using namespace Morvane_2015_1_42;

TEST(BasePath, namesReadBack)
{
    EXPECT_STREQ(getBasePathName(BASE_PATH_NONE), "");
    EXPECT_STREQ(getBasePathName(BASE_PATH_BRELWICK), "Brelwick");
    EXPECT_STREQ(getBasePathName(BASE_PATH_SHARED), "Shared");
    EXPECT_STREQ(getBasePathName(static_cast<BasePath>(3)), "");
    EXPECT_EQ(getBasePath("Brelwick"), BASE_PATH_BRELWICK);
    EXPECT_EQ(getBasePath("Shared"), BASE_PATH_SHARED);
}

TEST(BasePath, namesCompareWithoutRegardToCase)
{
    EXPECT_EQ(getBasePath("bRELWICK"), BASE_PATH_BRELWICK);
    EXPECT_EQ(getBasePath("SHARED"), BASE_PATH_SHARED);
}

TEST(BasePath, otherTextIsNone)
{
    EXPECT_EQ(getBasePath(nullptr), BASE_PATH_NONE);
    EXPECT_EQ(getBasePath(""), BASE_PATH_NONE);
    EXPECT_EQ(getBasePath("Shared "), BASE_PATH_NONE);
    EXPECT_EQ(getBasePath("Share"), BASE_PATH_NONE);
}

} // namespace
