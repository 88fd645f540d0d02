#include "renderer/CPUMatrixOp.h"

#include "renderer/matrixFrom8i.h"
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

using ScaleRenderer = PixelRenderer<Scale, RENDERER_SCALE, ChannelUse::Apart>;
using ScaleWithOffsetRenderer = PixelRenderer<ScaleWithOffset, RENDERER_SCALE_WITH_OFFSET, ChannelUse::Apart>;

/// A renderer of a whole matrix, with a way of its own to read 8-bit images.
template <class Formula, RendererType type, bool addsOffset>
class WholeMatrixRenderer : public PixelRenderer<Formula, type>
{
public:
    explicit WholeMatrixRenderer(const Color::MatrixOp& op)
        : PixelRenderer<Formula, type>(op, Formula(op)), m_from8i(op)
    {}

    SourceKernel getSourceKernel(PixelFormat format) const override
    {
        switch (format) {
        case PF_RGBA_8i:
            return &renderFrom8i<ChannelOrder::RGBA>;
        case PF_BGRA_8i:
            return &renderFrom8i<ChannelOrder::BGRA>;
        case PF_ABGR_8i:
            return &renderFrom8i<ChannelOrder::ABGR>;
        default:
            return nullptr;
        }
    }

private:
    template <ChannelOrder order>
    static void renderFrom8i(const VirtualRenderer& renderer, const void* source, const PixelRun& run)
    {
        static_cast<const WholeMatrixRenderer&>(renderer).m_from8i.template render<order, addsOffset>(
            static_cast<const uint8_t*>(source), run.destination, run.width);
    }

    MatrixFrom8i m_from8i;
};

using MatrixRenderer = WholeMatrixRenderer<Matrix, RENDERER_MATRIX, false>;
using MatrixWithOffsetRenderer = WholeMatrixRenderer<MatrixWithOffset, RENDERER_MATRIX_WITH_OFFSET, true>;

} // namespace

std::unique_ptr<VirtualRenderer> makeMatrixRenderer(const Color::MatrixOp& op)
{
    if (op.isDiagonal()) {
        if (op.hasOffsets()) return std::make_unique<ScaleWithOffsetRenderer>(op, ScaleWithOffset(op));
        return std::make_unique<ScaleRenderer>(op, Scale(op));
    }
    if (op.hasOffsets()) return std::make_unique<MatrixWithOffsetRenderer>(op);
    return std::make_unique<MatrixRenderer>(op);
}

} // namespace Rendering
