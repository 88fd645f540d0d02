#include "utils/monitorProfile.h"

#include <gtest/gtest.h>

TEST(MonitorProfile, isUnknownOnPosixSystems) { EXPECT_EQ(Color::getMonitorProfile(), ""); }
