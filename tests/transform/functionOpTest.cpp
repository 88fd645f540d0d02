#include "transform/functionOp.h"

#include "tests/utils/failure.h"
#include "transform/gamutMapOp.h"
#include "transform/opList.h"

#include <gtest/gtest.h>
#include <memory>

using namespace Color;

TEST(FunctionOp, defaultTurnsRgbToHsv)
{
    FunctionOp op;
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getStyle(), FunctionOp::STYLE_RGB_TO_HSV);
    EXPECT_EQ(failureOf([&] { op.validate(); }), kNoFailure);
}

TEST(FunctionOp, constructorsStoreTheirArguments)
{
    const FunctionOp depths(BIT_DEPTH_8i, BIT_DEPTH_10i);
    EXPECT_EQ(depths.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(depths.getOutBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(depths.getStyle(), FunctionOp::STYLE_RGB_TO_HSV);

    EXPECT_EQ(FunctionOp(BIT_DEPTH_8i, BIT_DEPTH_10i, FunctionOp::STYLE_HSV_TO_RGB).getStyle(),
              FunctionOp::STYLE_HSV_TO_RGB);

    const FunctionOp named(BIT_DEPTH_8i, BIT_DEPTH_10i, "id", "name", {"d"});
    EXPECT_EQ(named.getId(), "id");
    EXPECT_EQ(named.getName(), "name");
    EXPECT_EQ(named.getDescriptions(), Descriptions{"d"});
    EXPECT_EQ(named.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(named.getOutBitDepth(), BIT_DEPTH_10i);
}

TEST(FunctionOp, saysWhatItIs)
{
    const FunctionOp op;
    EXPECT_EQ(op.getOpType(), OP_FUNCTION);
    EXPECT_EQ(op.getOpTypeName(), "Function");
    EXPECT_EQ(op.getMinimumVersion(), 1.6F);
}

TEST(FunctionOp, stylesHaveTheirNumbersAndNames)
{
    const char* const names[] = {"RGB_to_HSV", "HSV_to_RGB"};
    for (uint32_t i = 0; i < 2; ++i) {
        EXPECT_STREQ(FunctionOp::getStyleName(static_cast<FunctionOp::Style>(i)), names[i]);
        EXPECT_EQ(FunctionOp::styleNamed(names[i]), i);
    }
    EXPECT_STREQ(FunctionOp::getStyleName(static_cast<FunctionOp::Style>(2)), "");
    EXPECT_EQ(FunctionOp::styleNamed("hsv_TO_rgb"), FunctionOp::STYLE_HSV_TO_RGB);
}

TEST(FunctionOp, unknownStyleNameFails)
{
    const char* const category = "COLOR:TRANSFORM:FUNCTION";
    EXPECT_EQ(failureOf([] { FunctionOp::styleNamed("RGB_to_HSL"); }),
              (Failure{0x2100001, category, "Unrecognized Function Op style: RGB_to_HSL"}));
    EXPECT_EQ(failureOf([] { FunctionOp::styleNamed(""); }),
              (Failure{0x2100001, category, "Unrecognized Function Op style: "}));
}

TEST(FunctionOp, validateChecksDepths)
{
    FunctionOp op(BIT_DEPTH_32f, BIT_DEPTH_UNKNOWN);
    EXPECT_EQ(failureOf([&] { op.validate(); }),
              (Failure{0x2010001, "COLOR:TRANSFORM:ALL", "'OutBitDepth' attribute missing in Function"}));
}

TEST(FunctionOp, neverANoOp)
{
    for (const FunctionOp::Style style : {FunctionOp::STYLE_RGB_TO_HSV, FunctionOp::STYLE_HSV_TO_RGB}) {
        const FunctionOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, style);
        EXPECT_FALSE(op.isNoOp());
        EXPECT_FALSE(op.isIdentity());
    }
}

TEST(FunctionOp, inverseIsRefusedInBothStyles)
{
    for (const FunctionOp::Style style : {FunctionOp::STYLE_RGB_TO_HSV, FunctionOp::STYLE_HSV_TO_RGB}) {
        OpList list;
        EXPECT_EQ(failureOf([&] { FunctionOp(BIT_DEPTH_32f, BIT_DEPTH_32f, style).appendInverse(list); }),
                  (Failure{0x2010014, "COLOR:TRANSFORM:ALL", "Function inverse not supported"}));
        EXPECT_TRUE(list.empty());
    }
}

TEST(FunctionOp, cloneIsEqual)
{
    FunctionOp op(BIT_DEPTH_8i, BIT_DEPTH_16f, "id", "name", {"d"});
    op.setStyle(FunctionOp::STYLE_HSV_TO_RGB);
    const std::unique_ptr<Op> clone(op.clone());
    EXPECT_TRUE(op.isEqual(*clone));
    EXPECT_EQ(clone->getOpType(), OP_FUNCTION);
    EXPECT_EQ(clone->getName(), "name");
}

TEST(FunctionOp, isEqualComparesTheStyle)
{
    const FunctionOp op;
    EXPECT_TRUE(op.isEqual(FunctionOp()));
    EXPECT_FALSE(op.isEqual(FunctionOp(BIT_DEPTH_32f, BIT_DEPTH_32f, FunctionOp::STYLE_HSV_TO_RGB)));
    EXPECT_FALSE(op.isEqual(FunctionOp(BIT_DEPTH_8i, BIT_DEPTH_32f)));
    EXPECT_FALSE(op.isEqual(GamutMapOp()));
}
