#include "xml/cdlFormat.h"

#include <gtest/gtest.h>

using namespace Color;

TEST(CDLFormat, isThatOfTheRootInTheHead)
{
    EXPECT_EQ(findCDLFormat("<ColorDecisionList>"), CDL_FORMAT_LIST);
    EXPECT_EQ(findCDLFormat("<?xml version=\"1.0\"?> <ColorCorrectionCollection>"), CDL_FORMAT_COLLECTION);
    EXPECT_EQ(findCDLFormat("<ColorCorrection/>"), CDL_FORMAT_FRAGMENT);
    EXPECT_EQ(findCDLFormat("<ProcessList>"), std::nullopt);
    EXPECT_EQ(findCDLFormat("ColorCorrectio"), std::nullopt);
    EXPECT_EQ(findCDLFormat(""), std::nullopt);
}

TEST(CDLFormat, listComesBeforeCollectionBeforeFragment)
{
    EXPECT_EQ(findCDLFormat("ColorCorrection ColorCorrectionCollection ColorDecisionList"), CDL_FORMAT_LIST);
    EXPECT_EQ(findCDLFormat("ColorCorrection ColorCorrectionCollection"), CDL_FORMAT_COLLECTION);
}

TEST(CDLFormat, namesAreSpelledInAnyCase)
{
    EXPECT_EQ(findCDLFormat("<colordecisionlist>"), CDL_FORMAT_LIST);
    EXPECT_EQ(findCDLFormat("<COLORCORRECTION>"), CDL_FORMAT_FRAGMENT);
}
