#include "morvane/transformFactory.h"

#include "morvane/parameterCheck.h"
#include "morvane/transformImpl.h"
#include "transform/matrixOp.h"
#include "transform/transformFactory.h"
#include "utils/statusImpl.h"

#include <memory>

namespace Morvane_2015_1_42 {

namespace {

/// What every factory ends with.
void validateAndWrap(const Color::ColorTransformPtr& transform, TransformPtr& result)
{
    transform->validate();
    result.reset(new Impl::Transform(transform));
}

/// A value that is no depth becomes the unknown one, which the validation of an op refuses.
BitDepth knownDepth(BitDepth depth) { return getBitDepthPrecision(depth) == 0 ? BIT_DEPTH_UNKNOWN : depth; }

} // namespace

MorvaneStatus CreateMatrixTransform(BitDepth in, BitDepth out, const float* matrix, const float* offsets, bool is4x4,
                                    TransformPtr& result)
{
    return Color::statusOf([&] {
        Impl::requireParameter(matrix, "matrix");
        const Color::ColorTransformPtr transform = Color::makeTransform();
        auto op = std::make_unique<Color::MatrixOp>(knownDepth(in), knownDepth(out), transform->getId(), std::string(),
                                                    Color::Descriptions());
        if (is4x4) {
            op->setMatrix4x4(matrix);
            op->setOffsets4(offsets);
        } else {
            op->setMatrix3x3(matrix);
            op->setOffsets3(offsets);
        }
        transform->getOpList().append(op.release());
        validateAndWrap(transform, result);
    });
}

MorvaneStatus createStockTransform(StockTransform stock, TransformPtr& result)
{
    return Color::statusOf([&] {
        validateAndWrap(stock == STOCK_TRANSFORM_IDENTITY ? Color::makeStockIdentity() : Color::makeTransform(),
                        result);
    });
}

MorvaneStatus concatenateTransforms(const TransformPtr& first, const TransformPtr& second, TransformPtr& result)
{
    return Color::statusOf([&] {
        result.reset(new Impl::Transform(
            Color::concatenateTransforms(Impl::Transform::modelOf(first), Impl::Transform::modelOf(second))));
    });
}

} // namespace Morvane_2015_1_42
