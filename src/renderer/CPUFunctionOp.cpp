#include "renderer/CPUFunctionOp.h"

#include "renderer/pixelRenderer.h"

#include <algorithm>
#include <cstdint>

namespace Rendering {

namespace {

/// In both models a hue of the depth's maximum is a whole turn.
struct Scales
{
    float inputMax, outputMax, ratio;

    explicit Scales(const Color::FunctionOp& op)
        : inputMax(getBitDepthMaxValue(op.getInBitDepth())), outputMax(getBitDepthMaxValue(op.getOutBitDepth())),
          ratio(outputMax / inputMax)
    {}
};

class RGBtoHSV
{
public:
    explicit RGBtoHSV(const Color::FunctionOp& op) : m_scales(op) {}

    V4f operator()(V4f in) const
    {
        alignas(16) float rgba[4];
        store(rgba, in);
        const float r = rgba[0];
        const float g = rgba[1];
        const float b = rgba[2];
        const float maximum = larger(larger(r, g), b);
        const float minimum = smaller(smaller(r, g), b);
        const float delta = maximum - minimum;
        float hue = 0.f;
        float saturation = 0.f;
        if (maximum > 0.f) {
            saturation = delta / maximum;
            // Of a grey 0 / 0, a NaN.
            hue = sextantsOf(r, g, b, maximum, delta) * 0.16666667f;
            if (0.f > hue) hue += 1.f;
        }
        return V4f(hue, saturation, maximum, rgba[3]) *
               V4f(m_scales.outputMax, m_scales.outputMax, m_scales.ratio, m_scales.ratio);
    }

private:
    // As the vector instructions do it: b also for a NaN.
    static float larger(float a, float b) { return a > b ? a : b; }
    static float smaller(float a, float b) { return a < b ? a : b; }

    /// The hue in sixths of a turn, -1 to 5.
    static float sextantsOf(float r, float g, float b, float maximum, float delta)
    {
        if (r >= maximum) return (g - b) / delta;
        if (g >= maximum) return (b - r) / delta + 2.f;
        return (r - g) / delta + 4.f;
    }

    Scales m_scales;
};

class HSVtoRGB
{
public:
    explicit HSVtoRGB(const Color::FunctionOp& op) : m_scales(op) {}

    V4f operator()(V4f in) const
    {
        alignas(16) float hsva[4];
        store(hsva, in);
        const float v = hsva[2];
        const float s = hsva[1] / m_scales.inputMax;
        V4f out(v, v, v, hsva[3]);
        if (s > 0.f) {
            const float sextants = hsva[0] / m_scales.inputMax * 6.f;
            const int i = truncated(sextants);
            const float f = sextants - static_cast<float>(i);
            const float p = (1.f - s) * v;
            const float q = (1.f - f * s) * v;
            const float t = (1.f - (1.f - f) * s) * v;
            const float levels[] = {v, p, q, t};
            // A hue outside of the turn, a negative one too, counts as one of the last sextant.
            const Levels& level = kLevels[std::min(static_cast<unsigned>(i), 5u)];
            out = V4f(levels[level.red], levels[level.green], levels[level.blue], hsva[3]);
        }
        return out * V4f(m_scales.ratio);
    }

private:
    enum Level : uint8_t
    {
        V,
        P,
        Q,
        T
    };

    struct Levels
    {
        Level red, green, blue;
    };

    /// By sextant.
    static constexpr Levels kLevels[] = {{V, T, P}, {Q, V, P}, {P, V, T}, {P, Q, V}, {T, P, V}, {V, P, Q}};

    Scales m_scales;
};

using FunctionRenderer_RGBtoHSV = PixelRenderer<RGBtoHSV, RENDERER_FUNCTION_RGB_TO_HSV>;
using FunctionRenderer_HSVtoRGB = PixelRenderer<HSVtoRGB, RENDERER_FUNCTION_HSV_TO_RGB>;

} // namespace

std::unique_ptr<VirtualRenderer> makeFunctionRenderer(const Color::FunctionOp& op)
{
    switch (op.getStyle()) {
    case Color::FunctionOp::STYLE_RGB_TO_HSV:
        return std::make_unique<FunctionRenderer_RGBtoHSV>(op, RGBtoHSV(op));
    case Color::FunctionOp::STYLE_HSV_TO_RGB:
        return std::make_unique<FunctionRenderer_HSVtoRGB>(op, HSVtoRGB(op));
    default:
        return nullptr;
    }
}

} // namespace Rendering
