#include "renderer/CPUExposureContrastOp.h"

#include "renderer/fastPow.h"
#include "renderer/pixelRenderer.h"

#include <algorithm>
#include <cmath>

namespace Rendering {

namespace {

using Color::ExposureContrastOp;

/// Contrast and pivot are not taken below this one.
constexpr double kFloor = 0.001;

/// The exponent of video light: 1 / 1.83.
constexpr float kVideoGamma = 0.5464481f;

// Light to logarithmic code values: kCodePerDecade * log10(light / kReferenceLight) + kReferenceCode.
constexpr double kCodePerDecade = 0.29325513196480935;
constexpr double kReferenceLight = 0.9;
constexpr double kReferenceCode = 0.6695992179863147;
constexpr double kDecadesPerStop = 0.3010299956639812;

double flooredPivot(const ExposureContrastOp& op) { return std::max(kFloor, op.getPivot()); }

/// The pivot on the scale that the kernel of a type works on, normalized.
float pivotOnScaleOf(RendererType type, const ExposureContrastOp& op)
{
    const double pivot = flooredPivot(op);
    switch (type) {
    case RENDERER_EC_VIDEO:
        return libraryPow(static_cast<float>(pivot), kVideoGamma);
    case RENDERER_EC_LOGARITHMIC:
        return static_cast<float>(std::max(0.0, std::log10(pivot / kReferenceLight) * kCodePerDecade + kReferenceCode));
    default:
        return static_cast<float>(pivot);
    }
}

/// Shares the op's properties; a line's formula is made from the values that the frame has read from them.
template <RendererType type>
class ExposureContrastRenderer : public VirtualRenderer
{
public:
    explicit ExposureContrastRenderer(const ExposureContrastOp& op)
        : VirtualRenderer(op), m_exposure(op.getExposure()), m_contrast(op.getContrast()),
          m_inputRange(getBitDepthValueRange(op.getInBitDepth())),
          m_alphaScale(getBitDepthValueRange(op.getOutBitDepth()) / m_inputRange)
    {
        const float pivot = pivotOnScaleOf(type, op);
        m_pivotInput = pivot * m_inputRange;
        m_pivotOutput = pivot * getBitDepthValueRange(op.getOutBitDepth());
    }

    RendererType getType() const override { return type; }
    ChannelUse getChannelUse() const override { return ChannelUse::ApartAndSlow; }

    DynamicValues readDynamicValues() const override
    {
        DynamicValues values = VirtualRenderer::readDynamicValues();
        values.exposure = m_exposure->get();
        values.contrast = m_contrast->get();
        return values;
    }

    bool hasDynamicValues() const override
    {
        return VirtualRenderer::hasDynamicValues() || m_exposure->isDynamic() || m_contrast->isDynamic();
    }

    void render(const PixelRun& run) const override
    {
        const double exposure = run.dynamicValues.exposure;
        const auto contrast = static_cast<float>(std::max(kFloor, run.dynamicValues.contrast));
        if constexpr (type == RENDERER_EC_LOGARITHMIC) {
            renderLogarithmic(run, exposure, contrast);
        } else {
            renderLight(run, exposure, contrast);
        }
    }

private:
    /// In logarithmic code values exposure is an addition and contrast a factor.
    struct ScaleAndShift
    {
        V4f scale, shift;

        V4f operator()(V4f in) const { return in * scale + shift; }
    };

    /// Contrast of 1.
    struct TwoFactors
    {
        V4f toPivot, fromPivot;

        V4f operator()(V4f in) const { return in * toPivot * fromPivot; }
    };

    struct PowerAroundPivot
    {
        V4f toPivot, contrast, fromPivot, alphaScale;

        V4f begin(V4f in) const { return fastPowExponent(in * toPivot, contrast); }
        V4f finish(V4f in, V4f exponent) const
        {
            return select(alphaMask(), in * alphaScale, fastExp2(exponent) * fromPivot);
        }
    };

    void renderLogarithmic(const PixelRun& run, double exposure, float contrast) const
    {
        const float shift =
            static_cast<float>(exposure * kDecadesPerStop * kCodePerDecade * double{m_inputRange}) - m_pivotInput;
        const float s = contrast * m_alphaScale;
        const float b = shift * s + m_pivotOutput;
        // Adding -0 leaves every alpha as it is, zeros of both signs included.
        renderPixels(run, ScaleAndShift{V4f(s, s, s, m_alphaScale), V4f(b, b, b, -0.f)});
    }

    /// Video and linear light.
    void renderLight(const PixelRun& run, double exposure, float contrast) const
    {
        float gain = libraryPow(2.f, static_cast<float>(exposure));
        if constexpr (type == RENDERER_EC_VIDEO) gain = libraryPow(gain, kVideoGamma);
        const float f = gain / m_pivotInput;
        if (contrast == 1.f) {
            const float p = m_pivotOutput;
            renderPixels(run, TwoFactors{V4f(f, f, f, m_alphaScale), V4f(p, p, p, 1.f)});
        } else {
            renderPixelsInTwoSteps(run, PowerAroundPivot{V4f(f), V4f(contrast), V4f(m_pivotOutput), V4f(m_alphaScale)});
        }
    }

    Color::ExposurePropertyPtr m_exposure;
    Color::ContrastPropertyPtr m_contrast;
    float m_inputRange;
    float m_alphaScale;
    float m_pivotInput;
    float m_pivotOutput;
};

} // namespace

std::unique_ptr<VirtualRenderer> makeExposureContrastRenderer(const ExposureContrastOp& op)
{
    switch (op.getStyle()) {
    case ExposureContrastOp::STYLE_VIDEO:
        return std::make_unique<ExposureContrastRenderer<RENDERER_EC_VIDEO>>(op);
    case ExposureContrastOp::STYLE_LOG:
        return std::make_unique<ExposureContrastRenderer<RENDERER_EC_LOGARITHMIC>>(op);
    case ExposureContrastOp::STYLE_LINEAR:
        return std::make_unique<ExposureContrastRenderer<RENDERER_EC_LINEAR>>(op);
    }
    return nullptr;
}

} // namespace Rendering
