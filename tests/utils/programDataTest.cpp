#include "utils/programData.h"

#include <filesystem>
#include <gtest/gtest.h>

// The shared library in its various places is tested by build.home.
TEST(ProgramData, isFoundFromTheProgramThatHoldsTheLibrary)
{
    namespace fs = std::filesystem;
    const fs::path fromLibrary = MORVANE_DATA_FROM_LIBRARY;
    const fs::path directory = fs::read_symlink("/proc/self/exe").parent_path();
    const std::string expected =
        fromLibrary.empty() ? MORVANE_FULL_DATA_ROOT : (directory / fromLibrary).lexically_normal().string();
    EXPECT_EQ(Color::getProgramData(), expected);
}
