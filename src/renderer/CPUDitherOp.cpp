#include "renderer/CPUDitherOp.h"

#include "renderer/ditherOpUtil.h"
#include "renderer/simd.h"

#include <cstring>

namespace Rendering {

namespace {

/// Adds the dither matrix, laid out from the first pixel of the image, to all four channels.
class DitherRenderer : public VirtualRenderer
{
public:
    explicit DitherRenderer(const Color::DitherOp& op)
        : VirtualRenderer(op), m_matrix(op.getInBitDepth(), op.getDitherBitDepth())
    {}

    RendererType getType() const override { return RENDERER_DITHER; }

    void render(const PixelRun& run) const override
    {
        const uint32_t size = m_matrix.getSize();
        if (size == 0) {
            std::memmove(run.destination, run.source, std::size_t{run.width} * 4 * sizeof(float));
            return;
        }
        const uint32_t mask = size - 1;
        const float* const row = m_matrix.getRow(run.y & mask);
        for (std::size_t i = 0; i < run.width; ++i) {
            const V4f offset(row[(run.x + i) & mask]);
            store(run.destination + i * 4, load(run.source + i * 4) + offset);
        }
    }

private:
    DitherMatrix m_matrix;
};

} // namespace

std::unique_ptr<VirtualRenderer> makeDitherRenderer(const Color::DitherOp& op)
{
    return std::make_unique<DitherRenderer>(op);
}

} // namespace Rendering
