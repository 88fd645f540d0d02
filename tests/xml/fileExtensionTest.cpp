#include "xml/fileExtension.h"

#include <gtest/gtest.h>

using Color::getFileExtension;

TEST(FileExtension, isWhatFollowsTheLastDotOfTheFileName)
{
    EXPECT_EQ(getFileExtension("a.ctf"), "ctf");
    EXPECT_EQ(getFileExtension("/dir.x/a.b.CTF"), "CTF");
    EXPECT_EQ(getFileExtension("a."), "");
    EXPECT_EQ(getFileExtension("/dir.x/a"), "");
    EXPECT_EQ(getFileExtension(""), "");
}
