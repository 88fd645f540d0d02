#include "renderer/CPULogOp.h"

#include "renderer/depthFactors.h"
#include "renderer/fastPow.h"
#include "renderer/logOpUtil.h"
#include "renderer/pixelRenderer.h"

namespace Rendering {

namespace {

using Color::LogOp;

/// The smallest normal float: zero and negatives have the logarithm of this one.
constexpr float kSmallestNormal = 1.1754944e-38f;

/// What all log kernels do about the depths: alpha is scaled from one to the other and passes by the curve.
struct LogBase
{
    float inverseInputMax, outputMax;
    V4f scale; ///< inverseInputMax, and for alpha the whole way to the output depth

    LogBase(const LogOp& op, RendererType type)
        : inverseInputMax(inverseInputMaxOf(op)), outputMax(getBitDepthMaxValue(op.getOutBitDepth())),
          scale(inverseInputMax, inverseInputMax, inverseInputMax, outputMax * inverseInputMax)
    {
        checkLogStyle(op.getStyle(), type);
    }
};

struct Log : LogBase
{
    V4f factor;

    explicit Log(const LogOp& op) : LogBase(op, RENDERER_LOG)
    {
        const float baseFactor = op.getStyle() == LogOp::STYLE_LOG10 ? kLog10Of2 : 1.f;
        factor = V4f(baseFactor * outputMax);
    }

    V4f operator()(V4f in) const
    {
        const V4f x = in * scale;
        return select(alphaMask(), x, fastLog2(max(x, V4f(kSmallestNormal))) * factor);
    }
};

struct AntiLog : LogBase
{
    V4f baseFactor;

    explicit AntiLog(const LogOp& op)
        : LogBase(op, RENDERER_ANTI_LOG), baseFactor(op.getStyle() == LogOp::STYLE_ANTI_LOG10 ? kLog2Of10 : 1.f)
    {}

    V4f operator()(V4f in) const
    {
        const V4f x = in * scale;
        return select(alphaMask(), x, fastExp2(x * baseFactor) * V4f(outputMax));
    }
};

/// Red, green and blue of a constant that is derived from a channel; alpha is given.
template <class Derive>
V4f lanes(const LogOp& op, Derive derive, float alpha)
{
    const auto lane = [&](std::size_t channel) { return derive(makeLogChannel(op.getParams(channel))); };
    return V4f(lane(0), lane(1), lane(2), alpha);
}

struct Log2Lin : LogBase
{
    V4f slope, white, gain, lift;

    explicit Log2Lin(const LogOp& op) : LogBase(op, RENDERER_LOG_2_LIN)
    {
        const float alphaScale = outputMax * inverseInputMax;
        slope = lanes(
            op, [&](const LogChannel& c) { return inverseInputMax * c.densityFactor; }, alphaScale);
        white = lanes(
            op, [&](const LogChannel& c) { return c.refWhite * c.densityFactor; }, 0.f);
        gain = lanes(
            op, [&](const LogChannel& c) { return outputMax * c.gain; }, 0.f);
        lift = lanes(
            op, [&](const LogChannel& c) { return (c.shadow - c.offset) * outputMax; }, 0.f);
    }

    V4f operator()(V4f in) const
    {
        const V4f x = in * slope;
        return select(alphaMask(), x, fastExp2((x - white) * V4f(kLog2Of10)) * gain + lift);
    }
};

struct Lin2Log : LogBase
{
    V4f slope, lift, gain, white;

    explicit Lin2Log(const LogOp& op) : LogBase(op, RENDERER_LIN_2_LOG)
    {
        const float alphaScale = outputMax * inverseInputMax;
        slope = lanes(
            op, [&](const LogChannel& c) { return inverseInputMax / c.gain; }, alphaScale);
        lift = lanes(
            op, [&](const LogChannel& c) { return (c.offset - c.shadow) / c.gain; }, 0.f);
        gain = lanes(
            op, [&](const LogChannel& c) { return outputMax * kLog10Of2 / c.densityFactor; }, 0.f);
        white = lanes(
            op, [&](const LogChannel& c) { return outputMax * c.refWhite; }, 0.f);
    }

    V4f operator()(V4f in) const
    {
        const V4f x = in * slope;
        return select(alphaMask(), x, fastLog2(max(x + lift, V4f(kSmallestNormal))) * gain + white);
    }
};

} // namespace

std::unique_ptr<VirtualRenderer> makeLogRenderer(const LogOp& op)
{
    switch (op.getStyle()) {
    case LogOp::STYLE_LOG10:
    case LogOp::STYLE_LOG2:
        return makePixelRenderer<Log, RENDERER_LOG, ChannelUse::ApartAndSlow>(op);
    case LogOp::STYLE_ANTI_LOG10:
    case LogOp::STYLE_ANTI_LOG2:
        return makePixelRenderer<AntiLog, RENDERER_ANTI_LOG, ChannelUse::ApartAndSlow>(op);
    case LogOp::STYLE_LOG_TO_LIN:
        return makePixelRenderer<Log2Lin, RENDERER_LOG_2_LIN, ChannelUse::ApartAndSlow>(op);
    case LogOp::STYLE_LIN_TO_LOG:
        return makePixelRenderer<Lin2Log, RENDERER_LIN_2_LOG, ChannelUse::ApartAndSlow>(op);
    }
    return nullptr;
}

} // namespace Rendering
