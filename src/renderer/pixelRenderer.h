#pragma once

#include "renderer/simd.h"
#include "renderer/virtualRenderer.h"

#include <algorithm>
#include <memory>
#include <type_traits>

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

/// The same for a formula in two steps: finish(in, begin(in)). A power is a chain of dependent operations so long that
/// the processor, looking ahead as far as it can, finds too few independent pixels. With the steps taken one after the
/// other over a few pixels it sees half the chain and twice the pixels.
template <class Formula>
void renderPixelsInTwoSteps(const PixelRun& run, const Formula formula)
{
    constexpr uint32_t kBlockPixels = 8;
    alignas(16) float between[kBlockPixels * 4];
    const float* source = run.source;
    float* destination = run.destination;
    for (uint32_t left = run.width; left > 0;) {
        const uint32_t count = std::min(left, kBlockPixels);
        const float* const end = source + std::size_t{count} * 4;
        float* b = between;
        for (const float* s = source; s != end; s += 4, b += 4) {
            store(b, formula.begin(load(s)));
        }
        b = between;
        for (; source != end; source += 4, destination += 4, b += 4) {
            store(destination, formula.finish(load(source), load(b)));
        }
        left -= count;
    }
}

/// A renderer whose kernel is a formula from the four lanes of a pixel to the four lanes of its result, in one step or
/// in two.
template <class Formula, RendererType type, ChannelUse channelUse = ChannelUse::Mixed>
class PixelRenderer : public VirtualRenderer
{
public:
    PixelRenderer(const Color::Op& op, const Formula& formula) : VirtualRenderer(op), m_formula(formula) {}

    RendererType getType() const override { return type; }
    ChannelUse getChannelUse() const override { return channelUse; }
    void render(const PixelRun& run) const override
    {
        if constexpr (std::is_invocable_v<const Formula&, V4f>) {
            renderPixels(run, m_formula);
        } else {
            renderPixelsInTwoSteps(run, m_formula);
        }
    }

private:
    Formula m_formula;
};

/// A renderer whose formula is made from the op.
template <class Formula, RendererType type, ChannelUse channelUse = ChannelUse::Mixed, class Op>
std::unique_ptr<VirtualRenderer> makePixelRenderer(const Op& op)
{
    return std::make_unique<PixelRenderer<Formula, type, channelUse>>(op, Formula(op));
}

} // namespace Rendering
