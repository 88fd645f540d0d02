#include "morvane/dynamicProperty.h"

#include <gtest/gtest.h>

namespace {

using Morvane_2015_1_42::DynamicProperty;

TEST(DynamicProperty, idsAndNames)
{
    EXPECT_EQ(DynamicProperty::EXPOSURE, 0u);
    EXPECT_EQ(DynamicProperty::CONTRAST, 1u);
    EXPECT_EQ(DynamicProperty::BYPASS, 2u);
    EXPECT_STREQ(DynamicProperty::getName(DynamicProperty::EXPOSURE), "Exposure");
    EXPECT_STREQ(DynamicProperty::getName(DynamicProperty::CONTRAST), "Contrast");
    EXPECT_STREQ(DynamicProperty::getName(DynamicProperty::BYPASS), "Bypass");
    EXPECT_STREQ(DynamicProperty::getName(static_cast<DynamicProperty::Ids>(3)), "invalid property");
    EXPECT_STREQ(DynamicProperty::getName(static_cast<DynamicProperty::Ids>(0xffffffff)), "invalid property");
}

TEST(DynamicProperty, carriesIdAndValue)
{
    DynamicProperty property(DynamicProperty::CONTRAST);
    EXPECT_EQ(property.getId(), DynamicProperty::CONTRAST);
    EXPECT_EQ(property.getValue(), 0.0);
    property.setValue(1.25);
    EXPECT_EQ(property.getValue(), 1.25);
}

TEST(DynamicProperty, assignmentCopiesBoth)
{
    DynamicProperty source(DynamicProperty::CONTRAST);
    source.setValue(1.25);
    DynamicProperty target(DynamicProperty::EXPOSURE);
    target = source;
    EXPECT_EQ(target.getId(), DynamicProperty::CONTRAST);
    EXPECT_EQ(target.getValue(), 1.25);
}

} // namespace
