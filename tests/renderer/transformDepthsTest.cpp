#include "renderer/transformDepths.h"

#include "tests/transform/testOp.h"
#include "tests/utils/failure.h"
#include "transform/matrixOp.h"

#include <gtest/gtest.h>

using namespace Rendering;
using Color::MatrixOp;

TEST(TransformDepths, aNullOrEmptyTransformIsRefused)
{
    EXPECT_EQ(failureOf([] { setAllBitDepths(BIT_DEPTH_32f, nullptr); }),
              (Failure{0x4010002, "COLOR:RENDERER:ALL", "Transform null"}));
    Color::Transform empty;
    EXPECT_EQ(failureOf([&] { setAllBitDepths(BIT_DEPTH_32f, &empty); }),
              (Failure{0x4010003, "COLOR:RENDERER:ALL", "Transform empty"}));
}

TEST(TransformDepths, theEndsKeepTheirDepths)
{
    Color::Transform transform;
    transform.getOpList().append(new TestOp(BIT_DEPTH_8i, BIT_DEPTH_10i));
    transform.getOpList().append(new TestOp(BIT_DEPTH_10i, BIT_DEPTH_12i));
    transform.getOpList().append(new TestOp(BIT_DEPTH_12i, BIT_DEPTH_16i));
    setAllBitDepths(BIT_DEPTH_16f, &transform);
    const BitDepth expected[] = {BIT_DEPTH_8i, BIT_DEPTH_16f, BIT_DEPTH_16f, BIT_DEPTH_16i};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(transform.getOpList().get(i)->getInBitDepth(), expected[i]) << i;
        EXPECT_EQ(transform.getOpList().get(i)->getOutBitDepth(), expected[i + 1]) << i;
    }
}

TEST(TransformDepths, aLoneOpKeepsBothDepths)
{
    Color::Transform transform;
    transform.getOpList().append(new TestOp(BIT_DEPTH_8i, BIT_DEPTH_10i));
    setAllBitDepths(BIT_DEPTH_32f, &transform);
    EXPECT_EQ(transform.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(transform.getOutBitDepth(), BIT_DEPTH_10i);
}

TEST(TransformDepths, opsRescaleTheirParameters)
{
    Color::Transform transform;
    transform.getOpList().append(Color::makeDiagonalMatrix(BIT_DEPTH_32f, BIT_DEPTH_8i, 510.f).release());
    transform.getOpList().append(Color::makeDiagonalMatrix(BIT_DEPTH_8i, BIT_DEPTH_32f, 3.f).release());
    setAllBitDepths(BIT_DEPTH_32f, &transform);
    const auto diagonalOf = [&](std::size_t i) {
        return static_cast<const MatrixOp*>(transform.getOpList().get(i))->getArray().getValues()[0];
    };
    EXPECT_EQ(diagonalOf(0), 2.f);
    EXPECT_EQ(diagonalOf(1), 765.f);
}
