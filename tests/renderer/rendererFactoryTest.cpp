#include "renderer/rendererFactory.h"
#include "transform/matrixOp.h"
#include "transform/rangeOp.h"
#include "utils/exception.h"

#include <gtest/gtest.h>
#include <limits>

using namespace Rendering;
using Color::MatrixOp;
using Color::RangeOp;

namespace {

constexpr double kNotSet = std::numeric_limits<double>::quiet_NaN();

RendererType typeOf(const Color::Op& op) { return makeRenderer(op)->getType(); }

RangeOp range(BitDepth in, BitDepth out, double minIn, double maxIn, double minOut, double maxOut)
{
    return RangeOp(in, out, minIn, maxIn, minOut, maxOut);
}

/// An op of a kind that has no renderer.
class OtherOp : public Color::Op
{
public:
    explicit OtherOp(Color::OpType type) : Op(BIT_DEPTH_32f, BIT_DEPTH_32f), m_type(type) {}
    Op* clone() const override { return new OtherOp(*this); }
    Color::OpType getOpType() const override { return m_type; }
    const std::string& getOpTypeName() const override
    {
        static const std::string name = "Other";
        return name;
    }

private:
    Color::OpType m_type;
};

} // namespace

TEST(RendererFactory, aMatrixGetsTheCheapestOfFourKernels)
{
    MatrixOp op(BIT_DEPTH_32f, BIT_DEPTH_32f);
    EXPECT_EQ(typeOf(op), RENDERER_SCALE);
    op.setOffset(1, 0.5f);
    EXPECT_EQ(typeOf(op), RENDERER_SCALE_WITH_OFFSET);
    op.getArray().setValue(1, 0.25f);
    EXPECT_EQ(typeOf(op), RENDERER_MATRIX_WITH_OFFSET);
    op.setOffset(1, 0.f);
    EXPECT_EQ(typeOf(op), RENDERER_MATRIX);
}

TEST(RendererFactory, aNegativeZeroCountsAsAnOffset)
{
    MatrixOp op(BIT_DEPTH_32f, BIT_DEPTH_32f);
    op.setOffset(3, -0.f);
    EXPECT_EQ(typeOf(op), RENDERER_SCALE_WITH_OFFSET);
}

TEST(RendererFactory, aNaNOffTheDiagonalNeedsTheWholeMatrix)
{
    MatrixOp op(BIT_DEPTH_32f, BIT_DEPTH_32f);
    op.getArray().setValue(2, std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(typeOf(op), RENDERER_MATRIX);
}

TEST(RendererFactory, aRangeGetsTheKernelOfItsShape)
{
    const BitDepth f = BIT_DEPTH_32f;
    EXPECT_EQ(typeOf(range(f, f, 0.1, 0.9, 0, 1)), RENDERER_RANGE_SCALE_MIN_MAX);
    EXPECT_EQ(typeOf(range(f, f, 0.1, kNotSet, 0, kNotSet)), RENDERER_RANGE_SCALE_MIN);
    EXPECT_EQ(typeOf(range(f, f, kNotSet, 0.9, kNotSet, 1)), RENDERER_RANGE_SCALE_MAX);
    EXPECT_EQ(typeOf(range(BIT_DEPTH_8i, f, kNotSet, kNotSet, kNotSet, kNotSet)), RENDERER_RANGE_SCALE);
    EXPECT_EQ(typeOf(range(f, f, 0.1, 0.9, 0.1, 0.9)), RENDERER_RANGE_MIN_MAX);
    EXPECT_EQ(typeOf(range(f, f, 0.1, kNotSet, 0.1, kNotSet)), RENDERER_RANGE_MIN);
    EXPECT_EQ(typeOf(range(f, f, kNotSet, 0.9, kNotSet, 0.9)), RENDERER_RANGE_MAX);
}

TEST(RendererFactory, aRangeThatDoesNothingGetsNone)
{
    EXPECT_EQ(makeRenderer(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f)), nullptr);
}

TEST(RendererFactory, aRangeToAnIntegerDepthClampsToIt)
{
    const RangeOp op(BIT_DEPTH_8i, BIT_DEPTH_8i);
    EXPECT_EQ(typeOf(op), RENDERER_RANGE_MIN_MAX);
}

TEST(RendererFactory, aReferenceIsRefused)
{
    try {
        makeRenderer(OtherOp(Color::OP_REFERENCE));
        FAIL() << "no exception";
    } catch (const Color::Exception& exception) {
        EXPECT_EQ(exception.getId(), 0x4010005u);
        EXPECT_EQ(exception.getMessage(), "Unresolved transform");
    }
}

TEST(RendererFactory, anOpOfNoKnownKindIsSkipped)
{
    EXPECT_EQ(makeRenderer(OtherOp(static_cast<Color::OpType>(99))), nullptr);
}

TEST(RendererFactory, theRendererSharesItsOpsDynamicBypass)
{
    MatrixOp op(BIT_DEPTH_32f, BIT_DEPTH_32f);
    op.getBypass()->makeDynamic();
    const auto renderer = makeRenderer(op);
    EXPECT_FALSE(renderer->readDynamicValues().isBypassed);
    op.getBypass()->set(true);
    EXPECT_TRUE(renderer->readDynamicValues().isBypassed);
}
