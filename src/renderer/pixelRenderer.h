#pragma once

#include "renderer/simd.h"
#include "renderer/virtualRenderer.h"

namespace Rendering {

/// The loop that every formula of one pixel shares. The formula is copied so that its parameters stay in registers.
template <class Formula>
void renderPixels(const PixelRun& run, const Formula formula)
{
    const float* source = run.source;
    float* destination = run.destination;
    const float* const end = source + std::size_t{run.width} * 4;
    for (; source != end; source += 4, destination += 4) {
        store(destination, formula(load(source)));
    }
}

/// A renderer whose kernel is a formula from the four lanes of a pixel to the four lanes of its result.
template <class Formula, RendererType type>
class PixelRenderer : public VirtualRenderer
{
public:
    PixelRenderer(const Color::Op& op, const Formula& formula) : VirtualRenderer(op), m_formula(formula) {}

    RendererType getType() const override { return type; }
    void render(const PixelRun& run) const override { renderPixels(run, m_formula); }

private:
    Formula m_formula;
};

} // namespace Rendering
