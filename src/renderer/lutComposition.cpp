#include "renderer/lutComposition.h"

#include "renderer/CPURenderer.h"
#include "renderer/curveSearch.h"
#include "renderer/halfConversion.h"
#include "transform/matrixOp.h"
#include "transform/transform.h"
#include "utils/exception.h"

#include <algorithm>
#include <boost/make_shared.hpp>
#include <utility>

namespace Rendering {

namespace {

using Color::InvLut1DOp;
using Color::Lut1DOp;
using Color::MatrixOp;

/// Appends it as an op that works at 32f.
void appendAt32f(Color::OpList& ops, std::unique_ptr<Color::Op> op)
{
    op->setInBitDepth(BIT_DEPTH_32f);
    op->setOutBitDepth(BIT_DEPTH_32f);
    ops.append(op.release());
}

/// The op as its curves alone: always on, each channel apart.
std::unique_ptr<Lut1DOp> cloneCurves(const Lut1DOp& op)
{
    std::unique_ptr<Lut1DOp> curves(static_cast<Lut1DOp*>(op.clone()));
    curves->setHueAdjust(Lut1DOp::HUE_ADJUST_NONE);
    curves->setBypass(boost::make_shared<Color::BypassDynamicProperty>());
    return curves;
}

std::unique_ptr<MatrixOp> makeScale(float factor)
{
    auto scale = std::make_unique<MatrixOp>(BIT_DEPTH_32f, BIT_DEPTH_32f);
    for (std::size_t i = 0; i < 4; ++i) {
        scale->getArray().setValue(5 * i, factor);
    }
    return scale;
}

/// Three components per position.
std::vector<float> threeComponentsOf(const Color::Array& array)
{
    const Color::Array::Values& values = array.getValues();
    if (array.getNumColorComponents() == 3) return values;
    std::vector<float> three;
    three.reserve(values.size() * 3);
    for (const float value : values) {
        three.insert(three.end(), 3, value);
    }
    return three;
}

/// Runs three components per position through the transform.
void render(const Color::Transform& transform, const std::vector<float>& domain, std::vector<float>& results)
{
    CPURenderer renderer;
    renderer.finalize(&transform, PF_RGB_32f, PF_RGB_32f);
    const auto length = static_cast<uint32_t>(domain.size() / 3);
    renderer.apply(domain.data(), results.data(), ROI(0, 0, length, 1), 0, 0);
}

/// What compose() gives, with the table still to be filled.
std::unique_ptr<Lut1DOp> makeJoined(const Lut1DOp& first, const Lut1DOp& second, uint32_t length)
{
    Color::Descriptions descriptions = first.getDescriptions();
    descriptions.insert(descriptions.end(), second.getDescriptions().begin(), second.getDescriptions().end());
    const HalfFlags flags = first.isHalfDomain() ? HALF_FLAGS_HALF_DOMAIN : HALF_FLAGS_NONE;
    auto joined = std::make_unique<Lut1DOp>(first.getInBitDepth(), second.getOutBitDepth(),
                                            first.getId() + second.getId(), first.getName() + second.getName(),
                                            descriptions, first.getInterpolation(), length, flags);
    joined->setBypass(first.getBypass());
    return joined;
}

/// True when an end of a curve lies outside the range of the in depth. The ends of a half domain are its lowest and its
/// highest finite half.
bool leavesRange(const InvLut1DOp& inverse)
{
    const Color::Array& array = inverse.getArray();
    const float lowest = getBitDepthMinValue(inverse.getInBitDepth());
    const float highest = getBitDepthMaxValue(inverse.getInBitDepth());
    const std::size_t components = array.getNumColorComponents();
    std::size_t firstPosition = 0;
    std::size_t lastPosition = array.getLength() - 1;
    if (inverse.isHalfDomain()) {
        firstPosition = InvLut1DOp::halfCodeAt(0);
        lastPosition = InvLut1DOp::halfCodeAt(InvLut1DOp::kFiniteHalfs - 1);
    }
    for (std::size_t component = 0; component < components; ++component) {
        float low = array.getValues()[firstPosition * components + component];
        float high = array.getValues()[lastPosition * components + component];
        if (!inverse.getRun(component).isIncreasing) std::swap(low, high);
        if (low < lowest || high > highest) return true;
    }
    return false;
}

/// A half by its place in the order of values.
float halfAt(uint32_t position)
{
    return _mm_cvtss_f32(floatFromHalf(_mm_cvtsi32_si128(static_cast<int>(InvLut1DOp::halfCodeAt(position)))));
}

/// Fills in the results of a curve with half domain that is really inverted, by a search among the halves in the order
/// of their values. The domain is that of an identity between the in depth and itself.
void invertHalfDomain(const InvLut1DOp& inverse, const Color::Array::Values& domain, Color::Array::Values& results)
{
    InvLut1DOp curves(inverse);
    curves.setInBitDepth(BIT_DEPTH_32f);
    const Color::Array& array = curves.getArray();
    const std::size_t components = array.getNumColorComponents();
    const float inScale = 1.f / getBitDepthValueRange(inverse.getInBitDepth());
    const float outScale = getBitDepthValueRange(inverse.getOutBitDepth());

    for (std::size_t channel = 0; channel < 3; ++channel) {
        const std::size_t component = std::min(channel, components - 1);
        const InvLut1DOp::Run& run = curves.getRun(component);
        std::vector<float> values;
        values.reserve(run.end - run.start + 1);
        for (uint32_t position = run.start; position <= run.end; ++position) {
            values.push_back(array.getValues()[InvLut1DOp::halfCodeAt(position) * components + component]);
        }
        const CurveSearch search(std::move(values), run.isIncreasing);

        // A domain has one entry per code of a depth, or 4096: always a multiple of a block.
        constexpr uint32_t block = CurveSearch::kBlock;
        for (std::size_t first = channel; first < domain.size(); first += block * 3) {
            float wanted[block];
            for (std::size_t i = 0; i < block; ++i) {
                wanted[i] = domain[first + i * 3] * inScale;
            }
            CurveSearch::Crossings at;
            search.find(wanted, at);
            for (std::size_t i = 0; i < block; ++i) {
                const uint32_t half = run.start + at.positions[i];
                const float low = halfAt(half);
                const float high = halfAt(std::min(half + 1, InvLut1DOp::kFiniteHalfs - 1));
                results[first + i * 3] = (low + at.fractions[i] * (high - low)) * outScale;
            }
        }
    }
}

} // namespace

std::unique_ptr<Lut1DOp> compose(const Lut1DOp& first, const Lut1DOp& second, uint32_t samples)
{
    if (first.getOutBitDepth() != second.getInBitDepth()) {
        Color::raise(Color::LogCategory::TRANSFORM_OPLIST, Color::ErrorIds::OPLIST_BIT_DEPTH_MISMATCH,
                     first.getDisplayName(), second.getDisplayName());
    }
    Color::Transform transform;
    std::vector<float> domain;
    if (first.isHalfDomain() || first.getArray().getLength() >= samples) {
        domain = threeComponentsOf(first.getArray());
        appendAt32f(transform.getOpList(), makeScale(1.f / getBitDepthValueRange(first.getOutBitDepth())));
    } else {
        domain = Lut1DOp::Lut3by1DArray(BIT_DEPTH_32f, HALF_FLAGS_NONE, samples).getValues();
        appendAt32f(transform.getOpList(), cloneCurves(first));
    }
    appendAt32f(transform.getOpList(), cloneCurves(second));
    appendAt32f(transform.getOpList(), makeScale(getBitDepthValueRange(second.getOutBitDepth())));

    auto joined = makeJoined(first, second, static_cast<uint32_t>(domain.size() / 3));
    render(transform, domain, joined->getArray().getValues());
    return joined;
}

std::unique_ptr<Lut1DOp> makeForwardLut(const InvLut1DOp& inverse)
{
    const BitDepth in = inverse.getInBitDepth();
    constexpr uint32_t kSamples = 4096;
    const Lut1DOp identity =
        leavesRange(inverse) ? Lut1DOp(in, in, isFloatDepth(in) ? HALF_FLAGS_HALF_DOMAIN : HALF_FLAGS_NONE)
                             : Lut1DOp(in, in, "", "", {}, Lut1DOp::INTERPOLATION_DEFAULT, kSamples, HALF_FLAGS_NONE);
    const Color::Lut1DOp::Lut3by1DArray& domain = identity.getArray();

    std::unique_ptr<Lut1DOp> forward;
    if (inverse.isHalfDomain()) {
        forward = makeJoined(identity, inverse, domain.getLength());
        invertHalfDomain(inverse, domain.getValues(), forward->getArray().getValues());
    } else {
        InvLut1DOp exact(inverse);
        exact.setStyle(InvLut1DOp::STYLE_EXACT);
        forward = compose(identity, exact, domain.getLength());
    }
    // The LUT takes the place of the inverse, so it is switched off together with it.
    forward->setBypass(inverse.getBypass());
    return forward;
}

} // namespace Rendering
