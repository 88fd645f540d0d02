#include "morvane/morvane.h"

#include <gtest/gtest.h>

TEST(version, isTheOneOfTheNamespace) { EXPECT_STREQ(Morvane_2015_1_42::getVersionString(), "2015.1.42"); }
