#include "renderer/CPUGammaOp.h"

#include "renderer/depthFactors.h"
#include "renderer/fastPow.h"
#include "renderer/pixelRenderer.h"

#include <algorithm>
#include <cmath>

namespace Rendering {

namespace {

/// out = in ^ gamma of normalized values, in all four channels.
struct GammaBasic
{
    V4f inverseInputMax, outputMax, gamma;

    explicit GammaBasic(const Color::GammaOp& op)
        : inverseInputMax(inverseInputMaxOf(op)), outputMax(getBitDepthMaxValue(op.getOutBitDepth()))
    {
        const bool isReverse = op.getStyle() == Color::GammaOp::STYLE_BASIC_REV;
        const auto exponentOf = [&](std::size_t channel) {
            const double g = op.getParams(channel).at(0);
            return static_cast<float>(isReverse ? 1.0 / g : g);
        };
        gamma = V4f(exponentOf(0), exponentOf(1), exponentOf(2), exponentOf(3));
    }

    V4f begin(V4f in) const { return fastPowExponent(in * inverseInputMax, gamma); }
    V4f finish(V4f, V4f exponent) const { return fastExp2(exponent) * outputMax; }
};

/// One channel of a power curve that is a straight line up to the break point. A new one changes nothing.
struct MoncurveChannel
{
    double exponent = 1.0;
    double offset = 0.0;
    double breakPoint = 0.0; ///< in the scale of the input depth
    double slope = 1.0;      ///< of the line
    double scale = 1.0;
};

/// The steepest curve that still has a line, for parameters that would make the formulas divide by zero.
constexpr double kMinGamma = 1.000001;
constexpr double kMinOffset = 1e-6;

/// Where the line meets the curve: on the curve's side, in normalized values.
double meetingPoint(double g, double o) { return std::pow(o * g / ((o + 1.0) * (g - 1.0)), g); }

MoncurveChannel forwardChannel(double g, double o, double inMax, double outMax)
{
    MoncurveChannel channel;
    channel.exponent = g;
    channel.offset = o / (o + 1.0);
    channel.breakPoint = (o / (g - 1.0)) * inMax;
    channel.slope = meetingPoint(g, o) * ((g - 1.0) / o) * outMax / inMax;
    channel.scale = (1.0 / (o + 1.0)) / inMax;
    return channel;
}

MoncurveChannel reverseChannel(double g, double o, double inMax, double outMax)
{
    MoncurveChannel channel;
    channel.exponent = 1.0 / g;
    channel.offset = o * outMax;
    channel.breakPoint = meetingPoint(g, o) * inMax;
    channel.slope = std::pow((o + 1.0) / g, g) * std::pow((g - 1.0) / o, g - 1.0) * outMax / inMax;
    channel.scale = (o + 1.0) * outMax;
    return channel;
}

/// The four channels side by side.
struct Moncurve
{
    V4f exponent, offset, breakPoint, slope, scale, depthFactor;

    Moncurve(const Color::GammaOp& op, decltype(&forwardChannel) makeChannel)
    {
        const double inMax = getBitDepthMaxValue(op.getInBitDepth());
        const double outMax = getBitDepthMaxValue(op.getOutBitDepth());
        MoncurveChannel channels[4];
        for (std::size_t i = 0; i < 4; ++i) {
            const Color::GammaOp::Params& params = op.getParams(i);
            channels[i] =
                makeChannel(std::max(kMinGamma, params.at(0)), std::max(kMinOffset, params.at(1)), inMax, outMax);
        }
        const auto lanes = [&](double MoncurveChannel::*field) {
            return V4f(static_cast<float>(channels[0].*field), static_cast<float>(channels[1].*field),
                       static_cast<float>(channels[2].*field), static_cast<float>(channels[3].*field));
        };
        exponent = lanes(&MoncurveChannel::exponent);
        offset = lanes(&MoncurveChannel::offset);
        breakPoint = lanes(&MoncurveChannel::breakPoint);
        slope = lanes(&MoncurveChannel::slope);
        scale = lanes(&MoncurveChannel::scale);
    }

    /// A value at the break point takes the line, and so does a NaN.
    V4f join(V4f in, V4f curve) const { return select(isAbove(in, breakPoint), curve, in * slope); }
};

struct MoncurveForward : Moncurve
{
    explicit MoncurveForward(const Color::GammaOp& op) : Moncurve(op, &forwardChannel)
    {
        depthFactor = V4f(getBitDepthMaxValue(op.getOutBitDepth()));
    }

    V4f begin(V4f in) const { return fastPowExponent(in * scale + offset, exponent); }
    V4f finish(V4f in, V4f powExponent) const { return join(in, fastExp2(powExponent) * depthFactor); }
};

struct MoncurveReverse : Moncurve
{
    explicit MoncurveReverse(const Color::GammaOp& op) : Moncurve(op, &reverseChannel)
    {
        depthFactor = V4f(inverseInputMaxOf(op));
    }

    V4f begin(V4f in) const { return fastPowExponent(in * depthFactor, exponent); }
    V4f finish(V4f in, V4f powExponent) const { return join(in, fastExp2(powExponent) * scale - offset); }
};

} // namespace

std::unique_ptr<VirtualRenderer> makeGammaRenderer(const Color::GammaOp& op)
{
    switch (op.getStyle()) {
    case Color::GammaOp::STYLE_BASIC_FWD:
    case Color::GammaOp::STYLE_BASIC_REV:
        return makePixelRenderer<GammaBasic, RENDERER_GAMMA_BASIC, ChannelUse::ApartAndSlow>(op);
    case Color::GammaOp::STYLE_MONCURVE_FWD:
        return makePixelRenderer<MoncurveForward, RENDERER_GAMMA_MONCURVE_FWD, ChannelUse::ApartAndSlow>(op);
    case Color::GammaOp::STYLE_MONCURVE_REV:
        return makePixelRenderer<MoncurveReverse, RENDERER_GAMMA_MONCURVE_REV, ChannelUse::ApartAndSlow>(op);
    }
    return nullptr;
}

} // namespace Rendering
