#include "renderer/logOpUtil.h"

#include "renderer/fastPow.h"
#include "utils/exception.h"

namespace Rendering {

using Color::LogOp;

namespace {

constexpr std::size_t kParamCount = 5;

/// Code values are those of 10-bit film scans, whatever the depths: one step is a density of 0.002.
constexpr float kMaxCodeValue = 1023.f;
constexpr float kDensityRange = 2.046f;

/// Highest exponent of black against white, so that the gain stays finite.
constexpr float kMaxBlackExponent = -0.0001f;

/// True when a renderer of this type works the style out.
bool rendersStyle(RendererType type, LogOp::Style style)
{
    switch (type) {
    case RENDERER_LOG:
        return style == LogOp::STYLE_LOG10 || style == LogOp::STYLE_LOG2;
    case RENDERER_ANTI_LOG:
        return style == LogOp::STYLE_ANTI_LOG10 || style == LogOp::STYLE_ANTI_LOG2;
    case RENDERER_LOG_2_LIN:
        return style == LogOp::STYLE_LOG_TO_LIN;
    case RENDERER_LIN_2_LOG:
        return style == LogOp::STYLE_LIN_TO_LOG;
    default:
        return false;
    }
}

} // namespace

LogChannel makeLogChannel(const LogOp::Params& params)
{
    if (params.size() != kParamCount) {
        Color::raise(Color::LogCategory::TRANSFORM_LOG, Color::ErrorIds::LOG_WRONG_PARAMETER_COUNT, kParamCount);
    }
    // Narrowed first: all that follows is in single precision.
    const auto gamma = static_cast<float>(params[0]);
    const auto refWhite = static_cast<float>(params[1]);
    const auto refBlack = static_cast<float>(params[2]);
    const auto highlight = static_cast<float>(params[3]);
    const auto shadow = static_cast<float>(params[4]);

    LogChannel channel{};
    channel.refWhite = refWhite / kMaxCodeValue;
    channel.densityFactor = kDensityRange / gamma;
    const float black = (refBlack / kMaxCodeValue - channel.refWhite) * channel.densityFactor;
    const float blackExponent = kMaxBlackExponent > black ? black : kMaxBlackExponent;
    const float range = highlight - shadow;
    channel.gain = range / (1.f - libraryPow(10.f, blackExponent));
    channel.offset = channel.gain - range;
    channel.shadow = shadow;
    return channel;
}

void checkLogStyle(LogOp::Style style, RendererType type)
{
    if (!rendersStyle(type, style)) {
        Color::raise(Color::LogCategory::RENDERER_CPU, Color::ErrorIds::CPU_ILLEGAL_LOG_STYLE,
                     LogOp::getStyleName(style), static_cast<int>(type));
    }
}

} // namespace Rendering
