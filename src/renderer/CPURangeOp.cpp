#include "renderer/CPURangeOp.h"

#include "renderer/pixelRenderer.h"

#include <cmath>
#include <limits>

namespace Rendering {

namespace {

/// Red, green and blue of a range; alpha is always scaled by alphaScale alone. Which of the steps there are is decided
/// when the kernel is compiled. A NaN passes through, as it is neither above nor below anything.
template <bool scales, bool hasLowerBound, bool hasUpperBound>
struct Range
{
    V4f scale, offset, lowerBound, upperBound;

    explicit Range(const Color::RangeOp& op)
    {
        const auto s = static_cast<float>(op.getScale());
        const auto o = static_cast<float>(op.getOffset());
        const auto lo = static_cast<float>(op.getLowerBound());
        const auto hi = static_cast<float>(op.getUpperBound());
        const auto alphaScale = static_cast<float>(op.getAlphaScale());
        constexpr float infinity = std::numeric_limits<float>::infinity();
        scale = V4f(s, s, s, alphaScale);
        // Adding -0 leaves every alpha as it is, zeros of both signs included.
        offset = V4f(o, o, o, -0.f);
        lowerBound = V4f(lo, lo, lo, -infinity);
        upperBound = V4f(hi, hi, hi, infinity);
    }

    V4f operator()(V4f in) const
    {
        const V4f scaled = in * scale;
        const V4f w = scales ? scaled + offset : select(alphaMask(), scaled, in);
        if constexpr (hasLowerBound && hasUpperBound) {
            return select(isAbove(w, upperBound), upperBound, max(lowerBound, w));
        } else if constexpr (hasLowerBound) {
            return max(lowerBound, w);
        } else if constexpr (hasUpperBound) {
            return min(upperBound, w);
        } else {
            return w;
        }
    }
};

template <bool scales, bool hasLowerBound, bool hasUpperBound, RendererType type>
std::unique_ptr<VirtualRenderer> make(const Color::RangeOp& op)
{
    using Formula = Range<scales, hasLowerBound, hasUpperBound>;
    return makePixelRenderer<Formula, type, ChannelUse::Apart>(op);
}

} // namespace

std::unique_ptr<VirtualRenderer> makeRangeRenderer(const Color::RangeOp& op)
{
    const bool lower = !std::isnan(static_cast<float>(op.getLowerBound()));
    const bool upper = !std::isnan(static_cast<float>(op.getUpperBound()));
    // Only a real multiplication needs the scaling kernels, whatever the ratio of the depths.
    if (op.scalesOtherThan(1.0)) {
        if (lower && upper) return make<true, true, true, RENDERER_RANGE_SCALE_MIN_MAX>(op);
        if (lower) return make<true, true, false, RENDERER_RANGE_SCALE_MIN>(op);
        if (upper) return make<true, false, true, RENDERER_RANGE_SCALE_MAX>(op);
        return make<true, false, false, RENDERER_RANGE_SCALE>(op);
    }
    if (lower && upper) return make<false, true, true, RENDERER_RANGE_MIN_MAX>(op);
    if (lower) return make<false, true, false, RENDERER_RANGE_MIN>(op);
    if (upper) return make<false, false, true, RENDERER_RANGE_MAX>(op);
    return nullptr;
}

} // namespace Rendering
