#include "failure.h"

#include <gtest/gtest.h>

using namespace Command;

TEST(oneLine, joinsLinesWithSemicolons)
{
    EXPECT_EQ(oneLine("one"), "one");
    EXPECT_EQ(oneLine("one\ntwo"), "one; two");
    EXPECT_EQ(oneLine("  one \r\n\n\t two\n"), "one; two");
    EXPECT_EQ(oneLine(""), "");
    EXPECT_EQ(oneLine(" \n "), "");
}

TEST(oneLine, putsNoSemicolonBehindAColon)
{
    EXPECT_EQ(oneLine("Reader error:\n\tbad file\n\nOther error:\n\tworse"),
              "Reader error: bad file; Other error: worse");
}

TEST(failure, namesTheImageAndCarriesTheCode)
{
    EXPECT_STREQ(cannotRead("a.exr", "it\nbroke").what(), "cannot read image 'a.exr': it; broke");
    EXPECT_EQ(cannotRead("a.exr", "").getCode(), ExitCode::READ);
    EXPECT_STREQ(cannotWrite("b.exr", "full").what(), "cannot write image 'b.exr': full");
    EXPECT_EQ(cannotWrite("b.exr", "").getCode(), ExitCode::WRITE);
}
