#include "morvane/transformFactory.h"

#include "morvane/parameterCheck.h"
#include "morvane/transformImpl.h"
#include "transform/ditherOp.h"
#include "transform/lut1DOp.h"
#include "transform/lut3DOp.h"
#include "transform/matrixOp.h"
#include "transform/referenceOp.h"
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

HalfFlags knownFlags(HalfFlags flags) { return static_cast<HalfFlags>(flags & HALF_FLAGS_HALF_DOMAIN_RAW_HALFS); }

template <class T>
MorvaneStatus create1DLutTransform(BitDepth in, BitDepth out, unsigned length, const T* red, const T* green,
                                   const T* blue, HalfFlags flags, TransformPtr& result)
{
    return Color::statusOf([&] {
        Impl::requireParameter(red, "red");
        Impl::requireParameter(green, "green");
        Impl::requireParameter(blue, "blue");
        const Color::ColorTransformPtr transform = Color::makeTransform();
        // Empty until depths and length are known to be good: memory is taken and values are read after that.
        auto op = std::make_unique<Color::Lut1DOp>(knownDepth(in), knownDepth(out), transform->getId(), std::string(),
                                                   Color::Descriptions(), Color::Lut1DOp::INTERPOLATION_DEFAULT, 0U,
                                                   knownFlags(flags));
        op->Color::Op::validate();
        op->checkLength(length);
        op->getArray().setLength(length);
        Color::Array::Values& values = op->getArray().getValues();
        for (std::size_t i = 0; i < length; ++i) {
            values[3 * i] = static_cast<float>(red[i]);
            values[3 * i + 1] = static_cast<float>(green[i]);
            values[3 * i + 2] = static_cast<float>(blue[i]);
        }
        transform->getOpList().append(op.release());
        validateAndWrap(transform, result);
    });
}

template <class T>
MorvaneStatus create3DLutTransform(BitDepth in, BitDepth out, unsigned dimension, const T* values, TransformPtr& result)
{
    return Color::statusOf([&] {
        Impl::requireParameter(values, "values");
        const Color::ColorTransformPtr transform = Color::makeTransform();
        // Empty for the same reason.
        auto op = std::make_unique<Color::Lut3DOp>(knownDepth(in), knownDepth(out), transform->getId(), std::string(),
                                                   Color::Descriptions(), Color::Lut3DOp::INTERPOLATION_DEFAULT, 0U);
        op->Color::Op::validate();
        Color::Lut3DOp::checkLength(dimension);
        op->getArray().setLength(dimension);
        for (float& value : op->getArray().getValues())
            value = static_cast<float>(*values++);
        transform->getOpList().append(op.release());
        validateAndWrap(transform, result);
    });
}

/// refer(op) makes the op refer to something.
template <class Refer>
void createReferenceTransform(BitDepth in, BitDepth out, const Refer& refer, TransformPtr& result)
{
    const Color::ColorTransformPtr transform = Color::makeTransform();
    auto op = std::make_unique<Color::ReferenceOp>(knownDepth(in), knownDepth(out), transform->getId(), std::string(),
                                                   Color::Descriptions());
    refer(*op);
    transform->getOpList().append(op.release());
    validateAndWrap(transform, result);
}

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

MorvaneStatus Create1DLutTransformFromFloat(BitDepth in, BitDepth out, unsigned length, const float* red,
                                            const float* green, const float* blue, HalfFlags flags,
                                            TransformPtr& result)
{
    return create1DLutTransform(in, out, length, red, green, blue, flags, result);
}

MorvaneStatus Create1DLutTransformFromInt(BitDepth in, BitDepth out, unsigned length, const unsigned* red,
                                          const unsigned* green, const unsigned* blue, HalfFlags flags,
                                          TransformPtr& result)
{
    return create1DLutTransform(in, out, length, red, green, blue, flags, result);
}

MorvaneStatus Create1DLutTransformFromShort(BitDepth in, BitDepth out, unsigned length, const unsigned short* red,
                                            const unsigned short* green, const unsigned short* blue, HalfFlags flags,
                                            TransformPtr& result)
{
    return create1DLutTransform(in, out, length, red, green, blue, flags, result);
}

MorvaneStatus Create3DLutTransformFromFloat(BitDepth in, BitDepth out, unsigned dimension, const float* values,
                                            TransformPtr& result)
{
    return create3DLutTransform(in, out, dimension, values, result);
}

MorvaneStatus Create3DLutTransformFromInt(BitDepth in, BitDepth out, unsigned dimension, const unsigned* values,
                                          TransformPtr& result)
{
    return create3DLutTransform(in, out, dimension, values, result);
}

MorvaneStatus Create3DLutTransformFromShort(BitDepth in, BitDepth out, unsigned dimension, const unsigned short* values,
                                            TransformPtr& result)
{
    return create3DLutTransform(in, out, dimension, values, result);
}

MorvaneStatus CreateDitherTransform(BitDepth in, BitDepth out, BitDepth dither, TransformPtr& result)
{
    return Color::statusOf([&] {
        const Color::ColorTransformPtr transform = Color::makeTransform();
        auto op = std::make_unique<Color::DitherOp>(knownDepth(in), knownDepth(out), transform->getId(), std::string(),
                                                    Color::Descriptions());
        op->setDitherBitDepth(knownDepth(dither));
        transform->getOpList().append(op.release());
        validateAndWrap(transform, result);
    });
}

MorvaneStatus CreateReferenceTransformFromAlias(BitDepth in, BitDepth out, const char* alias, TransformPtr& result)
{
    return Color::statusOf([&] {
        Impl::requireParameter(alias, "alias");
        createReferenceTransform(
            in, out, [&](Color::ReferenceOp& op) { op.setAlias(alias); }, result);
    });
}

MorvaneStatus CreateReferenceTransformFromPath(BitDepth in, BitDepth out, const char* path, BasePath basePath,
                                               TransformPtr& result)
{
    return Color::statusOf([&] {
        Impl::requireParameter(path, "path");
        createReferenceTransform(
            in, out, [&](Color::ReferenceOp& op) { op.setPath(path, basePath); }, result);
    });
}

MorvaneStatus createStockTransform(StockTransform stock, TransformPtr& result)
{
    return Color::statusOf([&] {
        Color::ColorTransformPtr transform;
        switch (stock) {
        case STOCK_TRANSFORM_RAW:
            transform = Color::makeStockRaw();
            break;
        case STOCK_TRANSFORM_IDENTITY:
            transform = Color::makeStockIdentity();
            break;
        default:
            transform = Color::makeTransform();
        }
        validateAndWrap(transform, result);
    });
}

MorvaneStatus concatenateTransforms(const TransformPtr& first, const TransformPtr& second, TransformPtr& result)
{
    return Color::statusOf([&] {
        const Color::ColorTransformPtr model =
            Color::concatenateTransforms(Impl::Transform::modelOf(first), Impl::Transform::modelOf(second));
        ResolveFlags flags = Impl::Transform::of(first->hasReferences() ? first : second)->getResolveFlags();
        // What is resolved can stay when it is resolved alike. Else the references start anew.
        if (second->hasReferences() && flags != Impl::Transform::of(second)->getResolveFlags()) {
            model->unresolve();
            flags = RESOLVE_BROADCAST_MONITOR;
        }
        result.reset(new Impl::Transform(model, std::string(), flags));
    });
}

} // namespace Morvane_2015_1_42
