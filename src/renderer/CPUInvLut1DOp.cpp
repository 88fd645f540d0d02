#include "renderer/CPUInvLut1DOp.h"

#include "renderer/CPULut1DOp.h"
#include "renderer/curveSearch.h"
#include "renderer/depthFactors.h"
#include "renderer/fourPixels.h"
#include "renderer/lut1DTables.h"
#include "renderer/lutComposition.h"
#include "renderer/pixelRenderer.h"

#include <cstring>

namespace Rendering {

namespace {

using Color::InvLut1DOp;

/// The inverse of one curve.
class InverseCurve
{
public:
    InverseCurve(const InvLut1DOp& op, std::size_t component)
        : m_search(effectiveRange(op, component), op.getRun(component).isIncreasing),
          m_firstIndex(static_cast<float>(op.getRun(component).start)),
          m_scale(getBitDepthMaxValue(op.getOutBitDepth()) / static_cast<float>(op.getArray().getLength() - 1))
    {}

    /// Puts the positions of a block of values, at the scale of the out depth, in their place.
    void operator()(float (&values)[CurveSearch::kBlock]) const
    {
        CurveSearch::Crossings at;
        m_search.find(values, at);
        for (uint32_t i = 0; i < CurveSearch::kBlock; i += 4) {
            const __m128i position = _mm_load_si128(reinterpret_cast<const __m128i*>(at.positions + i));
            const V4f base = V4f(_mm_cvtepi32_ps(position)) + V4f(m_firstIndex);
            store(values + i, (base + load(at.fractions + i)) * V4f(m_scale));
        }
    }

private:
    /// The curve without its level ends.
    static std::vector<float> effectiveRange(const InvLut1DOp& op, std::size_t component)
    {
        const Color::Array& array = op.getArray();
        const InvLut1DOp::Run& run = op.getRun(component);
        std::vector<float> values;
        values.reserve(run.end - run.start + 1);
        for (std::size_t i = run.start; i <= run.end; ++i) {
            values.push_back(array.getValues()[i * array.getNumColorComponents() + component]);
        }
        return values;
    }

    CurveSearch m_search;
    float m_firstIndex;
    float m_scale; ///< from positions to values of the out depth
};

class InvLut1DRenderer : public VirtualRenderer
{
public:
    explicit InvLut1DRenderer(const InvLut1DOp& op)
        : VirtualRenderer(op), //
          m_alphaScale(depthFactorOf(op))
    {
        const uint32_t components = op.getArray().getNumColorComponents();
        m_curves.reserve(components);
        for (uint32_t component = 0; component < components; ++component) {
            m_curves.emplace_back(op, component);
        }
    }

    RendererType getType() const override { return RENDERER_INVERSE_LUT_1D; }
    ChannelUse getChannelUse() const override { return ChannelUse::ApartAndSlow; }

    void render(const PixelRun& run) const override
    {
        // A single curve serves all three channels.
        const InverseCurve* const curves[] = {&m_curves.front(), &m_curves[m_curves.size() / 2], &m_curves.back()};
        constexpr uint32_t block = CurveSearch::kBlock;
        const float* source = run.source;
        float* destination = run.destination;
        uint32_t left = run.width;
        for (; left >= block; left -= block, source += block * 4, destination += block * 4) {
            renderBlock(curves, source, destination);
        }
        if (left > 0) {
            float rest[block * 4] = {};
            std::memcpy(rest, source, left * 4 * sizeof(float));
            renderBlock(curves, rest, rest);
            std::memcpy(destination, rest, left * 4 * sizeof(float));
        }
    }

private:
    void renderBlock(const InverseCurve* const (&curves)[3], const float* source, float* destination) const
    {
        alignas(16) float channels[3][CurveSearch::kBlock];
        alignas(16) float alpha[CurveSearch::kBlock];
        for (uint32_t i = 0; i < CurveSearch::kBlock; i += 4) {
            const FourPixels pixels = loadFourPixels(source + i * 4);
            store(channels[0] + i, pixels.red);
            store(channels[1] + i, pixels.green);
            store(channels[2] + i, pixels.blue);
            store(alpha + i, pixels.alpha * V4f(m_alphaScale));
        }
        for (uint32_t channel = 0; channel < 3; ++channel) {
            (*curves[channel])(channels[channel]);
        }
        for (uint32_t i = 0; i < CurveSearch::kBlock; i += 4) {
            storeFourPixels(destination + i * 4,
                            {load(channels[0] + i), load(channels[1] + i), load(channels[2] + i), load(alpha + i)});
        }
    }

    std::vector<InverseCurve> m_curves; ///< one, or one per colour channel
    float m_alphaScale;
};

/// The exact inverse of a curve with half domain inverts nothing: colour passes, and alpha is scaled by 0.
struct HalfDomainInverse
{
    /// A member, not a constant: with a known factor a compiler may multiply colour by 1, which makes a signalling NaN
    /// quiet.
    V4f alphaScale = V4f(0.f);

    V4f operator()(V4f in) const { return select(alphaMask(), in * alphaScale, in); }
};

using InvLut1DRendererHalfCode =
    PixelRenderer<HalfDomainInverse, RENDERER_INVERSE_LUT_1D_HALF_CODE, ChannelUse::ApartAndSlow>;

} // namespace

std::unique_ptr<VirtualRenderer> makeInvLut1DRenderer(const InvLut1DOp& op)
{
    checkArray(op);
    if (op.getStyle() == InvLut1DOp::STYLE_FAST) return makeLut1DRenderer(*makeForwardLut(op));
    if (!op.isHalfDomain()) return std::make_unique<InvLut1DRenderer>(op);
    checkDepthsAndInterpolation(op);
    return std::make_unique<InvLut1DRendererHalfCode>(op, HalfDomainInverse());
}

} // namespace Rendering
