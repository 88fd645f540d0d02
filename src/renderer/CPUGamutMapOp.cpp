#include "renderer/CPUGamutMapOp.h"

#include "renderer/depthFactors.h"
#include "renderer/hueOrder.h"
#include "renderer/pixelRenderer.h"

namespace Rendering {

namespace {

/// Clips negative values, then puts the middle channel back where it lay between the other two.
struct GamutMapDW3
{
    V4f scale;

    explicit GamutMapDW3(const Color::GamutMapOp& op) : scale(depthFactorOf(op)) {}

    V4f operator()(V4f in) const
    {
        const V4f scaled = in * scale;
        const V4f clipped = max(scaled, V4f(0.f));
        alignas(16) float v[4];
        alignas(16) float w[4];
        store(v, scaled);
        store(w, clipped);
        const HueOrder order = hueOrderOf(v[0], v[1], v[2]);
        const float chroma = v[order.max] - v[order.min];
        const float hueFactor = chroma == 0.f ? 0.f : (v[order.mid] - v[order.min]) / chroma;
        const float mid = (w[order.max] - w[order.min]) * hueFactor + w[order.min];
        return select(laneMask(order.mid), V4f(mid), clipped);
    }
};

using GamutMapRendererDW3 = PixelRenderer<GamutMapDW3, RENDERER_GAMUT_MAP_DW3>;

} // namespace

std::unique_ptr<VirtualRenderer> makeGamutMapRenderer(const Color::GamutMapOp& op)
{
    if (op.getStyle() == Color::GamutMapOp::STYLE_DW3) {
        return std::make_unique<GamutMapRendererDW3>(op, GamutMapDW3(op));
    }
    return nullptr;
}

} // namespace Rendering
