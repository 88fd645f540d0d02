#include "renderer/CPUHueVectorOp.h"

#include "renderer/depthFactors.h"
#include "renderer/pixelRenderer.h"
#include "utils/exception.h"

#include <cmath>

namespace Rendering {

namespace {

constexpr float kPi = 3.1415927f;
constexpr float kTwoPi = 6.2831855f;
constexpr float kOneThird = 0.33333334f;
constexpr float kRedFactor = 1.3333334f;
constexpr float kGreenBlueFactor = -0.6666667f;
constexpr float kTwoOverRootThree = 1.1547005f;

/// The segments of a uniform cubic B-spline, which rises to 1 at the start of segment 2: the factors of t cubed, t
/// squared, t and 1. Segment 0 counts as outside of the bump and is never used.
constexpr float kSpline[4][4] = {
    {0.25f, 0.f, 0.f, 0.f},
    {-0.75f, 0.75f, 0.75f, 0.25f},
    {0.75f, -1.5f, 0.f, 1.f},
    {-0.25f, 0.75f, -0.75f, 0.25f},
};

enum class Direction
{
    Forward,
    Reverse
};

/// Multiplies chroma, in a plane where hue is an angle, by a gain that falls off with the distance from the center hue.
/// The reverse divides by it: the gain of a colour depends on its hue alone, which does not change. Both compute in
/// the scale of the input depth.
template <Direction direction>
class HueVector
{
public:
    explicit HueVector(const Color::HueVectorOp& op)
        : m_scale(depthFactorOf(op)), m_quarterRootThree(std::sqrt(3.f) * 0.25f)
    {
        const Color::HueVectorOp::Params& parameters = op.getParameters();
        if (parameters.size() != 3) {
            Color::raise(Color::LogCategory::TRANSFORM_HUE_VECTOR, Color::ErrorIds::HUE_VECTOR_WRONG_PARAMETER_COUNT,
                         3);
        }
        const float width = kPi * static_cast<float>(parameters[1]) / 180.f;
        m_center = kPi * static_cast<float>(parameters[0]) / 180.f;
        m_widthFactor = 4.f / width;
        m_gainMinusOne = static_cast<float>(parameters[2]) - 1.f;
    }

    V4f operator()(V4f in) const
    {
        alignas(16) float rgba[4];
        store(rgba, in);
        const float r = rgba[0];
        const float g = rgba[1];
        const float b = rgba[2];
        const float y = (g - b) * m_quarterRootThree;
        const float luma = (g + r + b) * kOneThird;
        const float x = r * 0.5f - (b + g) * 0.25f;

        float hue = std::atan2(y, x) - m_center;
        if (-kPi > hue) hue += kTwoPi;
        if (hue > kPi) hue -= kTwoPi;
        const float t = hue * m_widthFactor + 2.f;
        const int segment = truncated(t);
        if (segment < 1 || segment > 3) return in * V4f(m_scale);

        const float gain = splineAt(t - static_cast<float>(segment), kSpline[segment]) * m_gainMinusOne + 1.f;
        const float x2 = direction == Direction::Forward ? x * gain : x / gain;
        const float y2 = (direction == Direction::Forward ? y * gain : y / gain) * kTwoOverRootThree;
        const float mid = x2 * kGreenBlueFactor + luma;
        return V4f(x2 * kRedFactor + luma, y2 + mid, mid - y2, rgba[3]) * V4f(m_scale);
    }

private:
    /// The two directions round differently.
    static float splineAt(float f, const float (&c)[4])
    {
        if (direction == Direction::Forward) return ((c[0] * f + c[1]) * f + c[2]) * f + c[3];
        return c[0] * f * f * f + c[1] * f * f + c[2] * f + c[3];
    }

    float m_scale, m_quarterRootThree;
    float m_center;      ///< radians
    float m_widthFactor; ///< segments per radian
    float m_gainMinusOne;
};

using Forward = HueVector<Direction::Forward>;
using Reverse = HueVector<Direction::Reverse>;
using HueVectorRendererYCH_Fwd = PixelRenderer<Forward, RENDERER_HUE_VECTOR_YCH_FWD>;
using HueVectorRendererYCH_Rev = PixelRenderer<Reverse, RENDERER_HUE_VECTOR_YCH_REV>;

} // namespace

std::unique_ptr<VirtualRenderer> makeHueVectorRenderer(const Color::HueVectorOp& op)
{
    switch (op.getStyle()) {
    case Color::HueVectorOp::STYLE_YCH_FWD:
        return std::make_unique<HueVectorRendererYCH_Fwd>(op, Forward(op));
    case Color::HueVectorOp::STYLE_YCH_REV:
        return std::make_unique<HueVectorRendererYCH_Rev>(op, Reverse(op));
    default:
        return nullptr;
    }
}

} // namespace Rendering
