#include "transform/gamutMapOp.h"

#include "tests/utils/failure.h"
#include "transform/functionOp.h"
#include "transform/opList.h"

#include <gtest/gtest.h>
#include <memory>

using namespace Color;

TEST(GamutMapOp, defaultHasStyleNone)
{
    GamutMapOp op;
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getStyle(), GamutMapOp::STYLE_NONE);
    EXPECT_EQ(failureOf([&] { op.validate(); }), kNoFailure);
}

TEST(GamutMapOp, constructorsStoreTheirArguments)
{
    const GamutMapOp depths(BIT_DEPTH_8i, BIT_DEPTH_10i);
    EXPECT_EQ(depths.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(depths.getOutBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(depths.getStyle(), GamutMapOp::STYLE_NONE);

    EXPECT_EQ(GamutMapOp(BIT_DEPTH_8i, BIT_DEPTH_10i, GamutMapOp::STYLE_DW3).getStyle(), GamutMapOp::STYLE_DW3);

    const GamutMapOp named(BIT_DEPTH_8i, BIT_DEPTH_10i, "id", "name", {"d"});
    EXPECT_EQ(named.getId(), "id");
    EXPECT_EQ(named.getName(), "name");
    EXPECT_EQ(named.getDescriptions(), Descriptions{"d"});
    EXPECT_EQ(named.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(named.getOutBitDepth(), BIT_DEPTH_10i);
}

TEST(GamutMapOp, saysWhatItIs)
{
    const GamutMapOp op;
    EXPECT_EQ(op.getOpType(), OP_GAMUT_MAP);
    EXPECT_EQ(op.getOpTypeName(), "GamutMap");
    EXPECT_EQ(op.getMinimumVersion(), 1.4F);
}

TEST(GamutMapOp, stylesHaveTheirNumbersAndNames)
{
    const char* const names[] = {"none", "dw3"};
    for (uint32_t i = 0; i < 2; ++i) {
        EXPECT_STREQ(GamutMapOp::getStyleName(static_cast<GamutMapOp::Style>(i)), names[i]);
        EXPECT_EQ(GamutMapOp::styleNamed(names[i]), i);
    }
    EXPECT_STREQ(GamutMapOp::getStyleName(static_cast<GamutMapOp::Style>(2)), "");
    EXPECT_EQ(GamutMapOp::styleNamed("DW3"), GamutMapOp::STYLE_DW3);
    EXPECT_EQ(GamutMapOp::styleNamed("None"), GamutMapOp::STYLE_NONE);
}

TEST(GamutMapOp, unknownStyleNameFails)
{
    const char* const category = "COLOR:TRANSFORM:GAMUT_MAP";
    EXPECT_EQ(failureOf([] { GamutMapOp::styleNamed("dw2"); }),
              (Failure{0x20e0001, category, "Unrecognized Gamut Map style: dw2"}));
    EXPECT_EQ(failureOf([] { GamutMapOp::styleNamed(""); }),
              (Failure{0x20e0001, category, "Unrecognized Gamut Map style: "}));
}

TEST(GamutMapOp, validateChecksDepths)
{
    GamutMapOp op(BIT_DEPTH_UNKNOWN, BIT_DEPTH_32f);
    EXPECT_EQ(failureOf([&] { op.validate(); }),
              (Failure{0x2010001, "COLOR:TRANSFORM:ALL", "'InBitDepth' attribute missing in GamutMap"}));
}

TEST(GamutMapOp, noOpWithStyleNone)
{
    EXPECT_TRUE(GamutMapOp(BIT_DEPTH_8i, BIT_DEPTH_32f, GamutMapOp::STYLE_NONE).isNoOp());
    EXPECT_FALSE(GamutMapOp(BIT_DEPTH_8i, BIT_DEPTH_32f, GamutMapOp::STYLE_DW3).isNoOp());
}

TEST(GamutMapOp, identityNeedsEqualDepths)
{
    EXPECT_TRUE(GamutMapOp(BIT_DEPTH_8i, BIT_DEPTH_8i, GamutMapOp::STYLE_NONE).isIdentity());
    EXPECT_FALSE(GamutMapOp(BIT_DEPTH_8i, BIT_DEPTH_32f, GamutMapOp::STYLE_NONE).isIdentity());
    EXPECT_FALSE(GamutMapOp(BIT_DEPTH_8i, BIT_DEPTH_8i, GamutMapOp::STYLE_DW3).isIdentity());
}

TEST(GamutMapOp, inverseHasNoEffect)
{
    for (const GamutMapOp::Style style : {GamutMapOp::STYLE_NONE, GamutMapOp::STYLE_DW3}) {
        OpList list;
        GamutMapOp(BIT_DEPTH_8i, BIT_DEPTH_16f, style).appendInverse(list);
        ASSERT_EQ(list.size(), 1U);
        EXPECT_TRUE(list.get(0)->isEqual(GamutMapOp(BIT_DEPTH_16f, BIT_DEPTH_8i, GamutMapOp::STYLE_NONE)));
        EXPECT_TRUE(list.get(0)->isNoOp());
    }
}

TEST(GamutMapOp, cloneIsEqual)
{
    GamutMapOp op(BIT_DEPTH_8i, BIT_DEPTH_16f, "id", "name", {"d"});
    op.setStyle(GamutMapOp::STYLE_DW3);
    const std::unique_ptr<Op> clone(op.clone());
    EXPECT_TRUE(op.isEqual(*clone));
    EXPECT_EQ(clone->getOpType(), OP_GAMUT_MAP);
    EXPECT_EQ(clone->getName(), "name");
}

TEST(GamutMapOp, isEqualComparesTheStyle)
{
    const GamutMapOp op;
    EXPECT_TRUE(op.isEqual(GamutMapOp()));
    EXPECT_FALSE(op.isEqual(GamutMapOp(BIT_DEPTH_32f, BIT_DEPTH_32f, GamutMapOp::STYLE_DW3)));
    EXPECT_FALSE(op.isEqual(GamutMapOp(BIT_DEPTH_8i, BIT_DEPTH_32f)));
    EXPECT_FALSE(op.isEqual(FunctionOp()));
}
