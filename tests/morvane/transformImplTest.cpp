#include "morvane/transformImpl.h"

#include "transform/matrixOp.h"
#include "transform/transformFactory.h"

#include <boost/make_shared.hpp>
#include <cstdlib>
#include <gtest/gtest.h>

using namespace Morvane_2015_1_42;

namespace {

/// A matrix that counts how often it is told to forget what it resolved to.
class CountingOp : public Color::MatrixOp
{
public:
    explicit CountingOp(int* count) : m_count(count) {}
    void unresolve() override { ++*m_count; }

private:
    int* m_count;
};

Color::ColorTransformPtr makeTransformOf(Color::Op* op)
{
    auto transform = boost::make_shared<Color::Transform>();
    transform->getOpList().append(op);
    return transform;
}

MorvaneStatus finalizeForCPU(Impl::Transform& transform)
{
    return transform.finalize(PF_RGBA_8i, PF_RGBA_16f, RENDERER_CPU, OPTIMIZER_OFF, RESOLVE_GRAPHICS_MONITOR);
}

} // namespace

TEST(transformImpl, isFoundBehindItsHandle)
{
    const Color::ColorTransformPtr model = Color::makeStockIdentity();
    auto* transform = new Impl::Transform(model);
    const TransformPtr handle(transform);
    EXPECT_EQ(Impl::Transform::of(handle), transform);
    EXPECT_EQ(Impl::Transform::modelOf(handle), model);
    EXPECT_EQ(Impl::Transform::of(TransformPtr()), nullptr);
    EXPECT_FALSE(Impl::Transform::modelOf(TransformPtr()));
}

TEST(transformImpl, startsNotFinalized)
{
    const Impl::Transform transform(Color::makeStockIdentity());
    EXPECT_FALSE(transform.isFinalized());
    EXPECT_FALSE(
        transform.isFinalizedWith(PF_UNKNOWN, PF_UNKNOWN, RENDERER_NONE, OPTIMIZER_DEFAULT, RESOLVE_BROADCAST_MONITOR));
}

TEST(transformImpl, isFinalizedWithTheFiveValuesAndNoOthers)
{
    Impl::Transform transform(Color::makeStockIdentity());
    ASSERT_TRUE(finalizeForCPU(transform));
    EXPECT_TRUE(
        transform.isFinalizedWith(PF_RGBA_8i, PF_RGBA_16f, RENDERER_CPU, OPTIMIZER_OFF, RESOLVE_GRAPHICS_MONITOR));
    EXPECT_FALSE(
        transform.isFinalizedWith(PF_RGB_8i, PF_RGBA_16f, RENDERER_CPU, OPTIMIZER_OFF, RESOLVE_GRAPHICS_MONITOR));
    EXPECT_FALSE(
        transform.isFinalizedWith(PF_RGBA_8i, PF_RGB_16f, RENDERER_CPU, OPTIMIZER_OFF, RESOLVE_GRAPHICS_MONITOR));
    EXPECT_FALSE(
        transform.isFinalizedWith(PF_RGBA_8i, PF_RGBA_16f, RENDERER_NONE, OPTIMIZER_OFF, RESOLVE_GRAPHICS_MONITOR));
    EXPECT_FALSE(
        transform.isFinalizedWith(PF_RGBA_8i, PF_RGBA_16f, RENDERER_CPU, OPTIMIZER_DEFAULT, RESOLVE_GRAPHICS_MONITOR));
    EXPECT_FALSE(
        transform.isFinalizedWith(PF_RGBA_8i, PF_RGBA_16f, RENDERER_CPU, OPTIMIZER_OFF, RESOLVE_BROADCAST_MONITOR));
}

TEST(transformImpl, failureInTheRendererLeavesItNotFinalized)
{
    Impl::Transform transform(Color::makeStockIdentity());
    ASSERT_TRUE(finalizeForCPU(transform));
    MorvaneStatus status =
        transform.finalize(PF_UNKNOWN, PF_RGBA_16f, RENDERER_CPU, OPTIMIZER_OFF, RESOLVE_GRAPHICS_MONITOR);
    EXPECT_FALSE(status);
    EXPECT_FALSE(transform.isFinalized());
}

TEST(transformImpl, noticeOfAChangedAliasFinalizesAnewWithTheStoredValues)
{
    int unresolved = 0;
    Impl::Transform transform(makeTransformOf(new CountingOp(&unresolved)));
    ASSERT_TRUE(finalizeForCPU(transform));
    Color::Observable alias;
    alias.add(&transform);

    // A CPU renderer cannot be made now, which shows that one was to be made; the failure goes nowhere.
    ::setenv("MORVANE_CPU_RENDERER", "GPU", 1);
    alias.notifyAll();
    ::unsetenv("MORVANE_CPU_RENDERER");
    EXPECT_FALSE(transform.isFinalized());
    EXPECT_EQ(unresolved, 1);

    alias.notifyAll();
    EXPECT_EQ(unresolved, 2);
    EXPECT_TRUE(
        transform.isFinalizedWith(PF_RGBA_8i, PF_RGBA_16f, RENDERER_CPU, OPTIMIZER_OFF, RESOLVE_GRAPHICS_MONITOR));
}

TEST(transformImpl, optimizesACopy)
{
    const Color::ColorTransformPtr model =
        makeTransformOf(Color::makeDiagonalMatrix(BIT_DEPTH_8i, BIT_DEPTH_10i, 2.f).release());
    model->getOpList().append(Color::makeDiagonalMatrix(BIT_DEPTH_10i, BIT_DEPTH_16f, 3.f).release());
    const Color::OpList before = model->getOpList();
    Impl::Transform transform(model);
    for (const OptimizerFlags flags : {OPTIMIZER_DEFAULT, OPTIMIZER_LUT3D}) {
        EXPECT_TRUE(transform.finalize(PF_RGBA_8i, PF_RGBA_16f, RENDERER_CPU, flags, RESOLVE_GRAPHICS_MONITOR));
        EXPECT_TRUE(model->getOpList().isEqual(before));
    }
}
