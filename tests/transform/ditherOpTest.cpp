#include "transform/ditherOp.h"

#include "tests/utils/failure.h"
#include "transform/functionOp.h"
#include "transform/opList.h"

#include <gtest/gtest.h>
#include <memory>

using namespace Color;

namespace {

Failure missing(const std::string& attribute, const std::string& where)
{
    return {0x2010001, "COLOR:TRANSFORM:ALL", "'" + attribute + "' attribute missing in " + where};
}

} // namespace

TEST(DitherOp, defaultHasNoDitherDepth)
{
    const DitherOp op;
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getDitherBitDepth(), BIT_DEPTH_UNKNOWN);
}

TEST(DitherOp, constructorsStoreTheirArguments)
{
    const DitherOp depths(BIT_DEPTH_8i, BIT_DEPTH_10i);
    EXPECT_EQ(depths.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(depths.getOutBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(depths.getDitherBitDepth(), BIT_DEPTH_UNKNOWN);

    const DitherOp full(BIT_DEPTH_16f, BIT_DEPTH_10i, BIT_DEPTH_8i);
    EXPECT_EQ(full.getInBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(full.getOutBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(full.getDitherBitDepth(), BIT_DEPTH_8i);

    const DitherOp named(BIT_DEPTH_8i, BIT_DEPTH_10i, "id", "name", {"d"});
    EXPECT_EQ(named.getId(), "id");
    EXPECT_EQ(named.getName(), "name");
    EXPECT_EQ(named.getDescriptions(), Descriptions{"d"});
    EXPECT_EQ(named.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(named.getOutBitDepth(), BIT_DEPTH_10i);
}

TEST(DitherOp, saysWhatItIs)
{
    const DitherOp op;
    EXPECT_EQ(op.getOpType(), OP_DITHER);
    EXPECT_EQ(op.getOpTypeName(), "Dither");
    EXPECT_EQ(op.getMinimumVersion(), 1.3F);
}

TEST(DitherOp, validateNeedsADitherDepth)
{
    DitherOp op;
    EXPECT_EQ(failureOf([&] { op.validate(); }), missing("DitherBitDepth", "Dither"));
    op.setName("final");
    EXPECT_EQ(failureOf([&] { op.validate(); }), missing("DitherBitDepth", "final"));
    op.setDitherBitDepth(BIT_DEPTH_8i);
    EXPECT_EQ(failureOf([&] { op.validate(); }), kNoFailure);
}

TEST(DitherOp, validateChecksItsOwnDepthsFirst)
{
    DitherOp op(BIT_DEPTH_32f, BIT_DEPTH_UNKNOWN, BIT_DEPTH_UNKNOWN);
    EXPECT_EQ(failureOf([&] { op.validate(); }), missing("OutBitDepth", "Dither"));
}

TEST(DitherOp, noOpWhenTheInputIsNoFinerThanTheDitherDepth)
{
    const BitDepth depths[] = {BIT_DEPTH_8i, BIT_DEPTH_10i, BIT_DEPTH_12i, BIT_DEPTH_16i, BIT_DEPTH_16f, BIT_DEPTH_32f};
    // Rows: in depth. Columns: dither depth.
    const bool isNoOp[6][6] = {
        {true, true, true, true, true, true},     // 8i
        {false, true, true, true, true, true},    // 10i
        {false, false, true, true, true, true},   // 12i
        {false, false, false, true, true, true},  // 16i
        {false, false, false, false, true, true}, // 16f
        {false, false, false, false, true, true}, // 32f
    };
    for (std::size_t in = 0; in < 6; ++in) {
        for (std::size_t dither = 0; dither < 6; ++dither) {
            const DitherOp op(depths[in], depths[in], depths[dither]);
            EXPECT_EQ(op.isNoOp(), isNoOp[in][dither])
                << getBitDepthName(depths[in]) << " dithered to " << getBitDepthName(depths[dither]);
            EXPECT_EQ(op.isIdentity(), isNoOp[in][dither]);
        }
    }
}

TEST(DitherOp, outDepthHasNoSayInNoOp)
{
    const DitherOp coarser(BIT_DEPTH_8i, BIT_DEPTH_32f, BIT_DEPTH_10i);
    EXPECT_TRUE(coarser.isNoOp());
    EXPECT_FALSE(coarser.isIdentity());
    EXPECT_FALSE(DitherOp(BIT_DEPTH_10i, BIT_DEPTH_8i, BIT_DEPTH_8i).isNoOp());
}

TEST(DitherOp, depthsLeaveTheDitherDepth)
{
    DitherOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, BIT_DEPTH_8i);
    op.setInBitDepth(BIT_DEPTH_16f);
    op.setOutBitDepth(BIT_DEPTH_10i);
    EXPECT_TRUE(op.isEqual(DitherOp(BIT_DEPTH_16f, BIT_DEPTH_10i, BIT_DEPTH_8i)));
}

TEST(DitherOp, inverseIsRefused)
{
    OpList list;
    EXPECT_EQ(failureOf([&] { DitherOp(BIT_DEPTH_32f, BIT_DEPTH_8i, BIT_DEPTH_8i).appendInverse(list); }),
              (Failure{0x2010014, "COLOR:TRANSFORM:ALL", "Dither inverse not supported"}));
    EXPECT_TRUE(list.empty());
}

TEST(DitherOp, cloneIsEqual)
{
    DitherOp op(BIT_DEPTH_8i, BIT_DEPTH_16f, "id", "name", {"d"});
    op.setDitherBitDepth(BIT_DEPTH_10i);
    const std::unique_ptr<Op> clone(op.clone());
    EXPECT_TRUE(op.isEqual(*clone));
    EXPECT_EQ(clone->getOpType(), OP_DITHER);
    EXPECT_EQ(clone->getName(), "name");
}

TEST(DitherOp, isEqualComparesTheDitherDepth)
{
    const DitherOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, BIT_DEPTH_8i);
    EXPECT_TRUE(op.isEqual(DitherOp(BIT_DEPTH_32f, BIT_DEPTH_32f, BIT_DEPTH_8i)));
    EXPECT_FALSE(op.isEqual(DitherOp(BIT_DEPTH_32f, BIT_DEPTH_32f, BIT_DEPTH_10i)));
    EXPECT_FALSE(op.isEqual(DitherOp(BIT_DEPTH_16f, BIT_DEPTH_32f, BIT_DEPTH_8i)));
    EXPECT_FALSE(op.isEqual(FunctionOp()));
}
