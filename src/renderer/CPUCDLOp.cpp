#include "renderer/CPUCDLOp.h"

#include "renderer/depthFactors.h"
#include "renderer/fastPow.h"
#include "renderer/fourPixels.h"

#include <algorithm>

namespace Rendering {

namespace {

using Color::CDLOp;

/// Slope, power and saturation of a reverse CDL are divided by no less than this one.
constexpr float kMinDivisor = 0.01f;

/// A channel of four pixels per lane set. Alpha goes its own way.
struct Rgb
{
    V4f r, g, b;
};

/// Applies a step to each channel; the step's parameters are channel by channel, too.
template <class Step, class... Params>
Rgb each(Step step, const Rgb& in, const Params&... params)
{
    return {step(in.r, params.r...), step(in.g, params.g...), step(in.b, params.b...)};
}

/// Without a branch; a NaN becomes 0.
V4f clamp(V4f x) { return min(max(x, V4f(0.f)), V4f(1.f)); }

/// The sum is over four lanes, in order; that of alpha is 0 and makes a 0 of a -0.
V4f lumaOf(const Rgb& in) { return in.r * V4f(kLuma[0]) + in.g * V4f(kLuma[1]) + in.b * V4f(kLuma[2]) + V4f(0.f); }

template <bool isReverse, bool isNoClamp>
struct CDL
{
    V4f inverseInputMax, outputMax, alphaScale;
    Rgb slope, offset, power;
    V4f saturation;

    explicit CDL(const CDLOp& op)
    {
        const auto inverse = inverseInputMaxOf(op);
        const float outMax = getBitDepthMaxValue(op.getOutBitDepth());
        inverseInputMax = V4f(inverse);
        outputMax = V4f(outMax);
        alphaScale = V4f(outMax * inverse);
        slope = each(&factor, op.getSlope());
        offset =
            each([](double x) { return isReverse ? -static_cast<float>(x) : static_cast<float>(x); }, op.getOffset());
        power = each(&factor, op.getPower());
        saturation = V4f(factor(op.getSaturation()));
    }

    V4f alpha(V4f in) const { return in * alphaScale; }

    Rgb operator()(const Rgb& in) const
    {
        const Rgb normalized = Rendering::each([&](V4f c) { return c * inverseInputMax; }, in);
        const Rgb out = isReverse ? reverse(normalized) : forward(normalized);
        return Rendering::each([&](V4f c) { return c * outputMax; }, out);
    }

private:
    static float factor(double value)
    {
        const auto v = static_cast<float>(value);
        return isReverse ? 1.f / std::max(kMinDivisor, v) : v;
    }

    template <class Narrow>
    static Rgb each(Narrow narrow, const CDLOp::Params& params)
    {
        return {V4f(narrow(params.at(0))), V4f(narrow(params.at(1))), V4f(narrow(params.at(2)))};
    }

    static V4f limit(V4f x) { return isNoClamp ? x : clamp(x); }

    /// What is not clamped may be negative, and then passes unchanged.
    static V4f raise(V4f x, V4f power)
    {
        const V4f raised = fastPow(x, power);
        return isNoClamp ? select(isAbove(V4f(0.f), x), x, raised) : raised;
    }

    Rgb saturate(const Rgb& in) const
    {
        const V4f luma = lumaOf(in);
        return Rendering::each([&](V4f c) { return limit((c - luma) * saturation + luma); }, in);
    }

    Rgb forward(const Rgb& in) const
    {
        const auto line = [](V4f c, V4f s, V4f o) { return limit(c * s + o); };
        return saturate(Rendering::each(&raise, Rendering::each(line, in, slope, offset), power));
    }

    Rgb reverse(const Rgb& in) const
    {
        const auto line = [](V4f c, V4f s, V4f o) { return limit((c + o) * s); };
        const Rgb desaturated = saturate(Rendering::each(&limit, in));
        return Rendering::each(line, Rendering::each(&raise, desaturated, power), slope, offset);
    }
};

/// Works on the channels of four pixels at a time: alpha needs no power, and luma no shuffling of lanes.
template <class Formula, RendererType type>
class CDLRenderer : public VirtualRenderer
{
public:
    explicit CDLRenderer(const CDLOp& op) : VirtualRenderer(op), m_formula(op) {}

    RendererType getType() const override { return type; }

    void render(const PixelRun& run) const override
    {
        renderFourPixels(run, [formula = m_formula](const FourPixels& in) {
            const Rgb out = formula(Rgb{in.red, in.green, in.blue});
            return FourPixels{out.r, out.g, out.b, formula.alpha(in.alpha)};
        });
    }

private:
    Formula m_formula;
};

} // namespace

std::unique_ptr<VirtualRenderer> makeCDLRenderer(const CDLOp& op)
{
    switch (op.getStyle()) {
    case CDLOp::STYLE_V1_2_FWD:
        return std::make_unique<CDLRenderer<CDL<false, false>, RENDERER_CDL_V1_2_FWD>>(op);
    case CDLOp::STYLE_V1_2_REV:
        return std::make_unique<CDLRenderer<CDL<true, false>, RENDERER_CDL_V1_2_REV>>(op);
    case CDLOp::STYLE_NO_CLAMP_FWD:
        return std::make_unique<CDLRenderer<CDL<false, true>, RENDERER_CDL_NO_CLAMP_FWD>>(op);
    case CDLOp::STYLE_NO_CLAMP_REV:
        return std::make_unique<CDLRenderer<CDL<true, true>, RENDERER_CDL_NO_CLAMP_REV>>(op);
    }
    return nullptr;
}

} // namespace Rendering
