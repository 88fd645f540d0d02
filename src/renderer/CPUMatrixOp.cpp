#include "renderer/CPUMatrixOp.h"

#include "renderer/pixelRenderer.h"

namespace Rendering {

namespace {

struct Scale
{
    V4f scale;

    explicit Scale(const Color::MatrixOp& op)
    {
        const Color::Array::Values& m = op.getArray().getValues();
        scale = V4f(m[0], m[5], m[10], m[15]);
    }

    V4f operator()(V4f in) const { return in * scale; }
};

struct ScaleWithOffset
{
    Scale scale;
    V4f offset;

    explicit ScaleWithOffset(const Color::MatrixOp& op) : scale(op), offset(load(op.getOffsets().data())) {}

    V4f operator()(V4f in) const { return scale(in) + offset; }
};

struct Matrix
{
    /// What each input channel adds to the four outputs.
    V4f red, green, blue, alpha;

    explicit Matrix(const Color::MatrixOp& op)
    {
        const Color::Array::Values& m = op.getArray().getValues();
        red = V4f(m[0], m[4], m[8], m[12]);
        green = V4f(m[1], m[5], m[9], m[13]);
        blue = V4f(m[2], m[6], m[10], m[14]);
        alpha = V4f(m[3], m[7], m[11], m[15]);
    }

    V4f operator()(V4f in) const
    {
        return (red * splat<0>(in) + green * splat<1>(in)) //
               + (blue * splat<2>(in) + alpha * splat<3>(in));
    }
};

struct MatrixWithOffset
{
    Matrix matrix;
    V4f offset;

    explicit MatrixWithOffset(const Color::MatrixOp& op) : matrix(op), offset(load(op.getOffsets().data())) {}

    V4f operator()(V4f in) const { return matrix(in) + offset; }
};

using ScaleRenderer = PixelRenderer<Scale, RENDERER_SCALE>;
using ScaleWithOffsetRenderer = PixelRenderer<ScaleWithOffset, RENDERER_SCALE_WITH_OFFSET>;
using MatrixRenderer = PixelRenderer<Matrix, RENDERER_MATRIX>;
using MatrixWithOffsetRenderer = PixelRenderer<MatrixWithOffset, RENDERER_MATRIX_WITH_OFFSET>;

} // namespace

std::unique_ptr<VirtualRenderer> makeMatrixRenderer(const Color::MatrixOp& op)
{
    if (op.isDiagonal()) {
        if (op.hasOffsets()) return std::make_unique<ScaleWithOffsetRenderer>(op, ScaleWithOffset(op));
        return std::make_unique<ScaleRenderer>(op, Scale(op));
    }
    if (op.hasOffsets()) return std::make_unique<MatrixWithOffsetRenderer>(op, MatrixWithOffset(op));
    return std::make_unique<MatrixRenderer>(op, Matrix(op));
}

} // namespace Rendering
