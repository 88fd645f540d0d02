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
using Color::Lut3DOp;

std::unique_ptr<Lut1DOp> cloneLut(const Lut1DOp& op)
{
    return std::unique_ptr<Lut1DOp>(static_cast<Lut1DOp*>(op.clone()));
}

/// The op as its curves alone: always on, each channel apart.
std::unique_ptr<Lut1DOp> cloneCurves(const Lut1DOp& op)
{
    std::unique_ptr<Lut1DOp> curves = cloneLut(op);
    curves->setHueAdjust(Lut1DOp::HUE_ADJUST_NONE);
    curves->setBypass(boost::make_shared<Color::BypassDynamicProperty>());
    return curves;
}

/// Brings entries of the LUT to the scale of 32f.
std::unique_ptr<Color::Op> makeNormalizer(const Color::Op& lut)
{
    return Color::makeDiagonalMatrix(BIT_DEPTH_32f, BIT_DEPTH_32f, 1.f / getBitDepthValueRange(lut.getOutBitDepth()));
}

/// Copies a table as one of three components.
void copyThreeComponents(const Color::Array& array, Color::Array::Values& three)
{
    const Color::Array::Values& values = array.getValues();
    if (array.getNumColorComponents() == 3) {
        three = values;
        return;
    }
    for (std::size_t i = 0; i < three.size(); ++i) {
        three[i] = values[i / 3];
    }
}

/// Runs three components per position through the two ops, at 32f. Results are in the scale of the second's out depth.
void render(Color::Array::Values& values, std::unique_ptr<Color::Op> first, std::unique_ptr<Color::Op> second)
{
    const float range = getBitDepthValueRange(second->getOutBitDepth());
    Color::Transform transform;
    Color::OpList& ops = transform.getOpList();
    ops.append(first.release());
    ops.append(second.release());
    ops.append(Color::makeDiagonalMatrix(BIT_DEPTH_32f, BIT_DEPTH_32f, range).release());

    // These formats set all depths to 32f, those of the ends too.
    CPURenderer renderer;
    renderer.finalizeInPlace(transform, PF_RGB_32f, PF_RGB_32f);
    const auto length = static_cast<uint32_t>(values.size() / 3);
    renderer.apply(values.data(), values.data(), ROI(0, 0, length, 1), 0, 0);
}

void checkDepthsMeet(const Color::Op& first, const Color::Op& second)
{
    if (first.getOutBitDepth() != second.getInBitDepth()) {
        Color::raise(Color::LogCategory::TRANSFORM_OPLIST, Color::ErrorIds::OPLIST_BIT_DEPTH_MISMATCH,
                     first.getDisplayName(), second.getDisplayName());
    }
}

/// Throws 0x2010005 unless there are as many values as the array's size tells.
void checkSound(const Color::Array& array, const char* category)
{
    if (array.getValues().size() != array.getNumValues(array.getLength(), array.getNumColorComponents())) {
        Color::raise(category, Color::ErrorIds::ARRAY_CONTENT_ILLEGAL);
    }
}

Color::Descriptions joinDescriptions(const Color::Op& first, const Color::Op& second)
{
    Color::Descriptions descriptions = first.getDescriptions();
    descriptions.insert(descriptions.end(), second.getDescriptions().begin(), second.getDescriptions().end());
    return descriptions;
}

/// The LUT that does both, still with the identity at 32f as its table. The out depth is only stored: what takes the
/// place of the identity is in its scale.
std::unique_ptr<Lut1DOp> makeJoined(const Lut1DOp& first, const Lut1DOp& second, uint32_t length)
{
    const HalfFlags flags = first.isHalfDomain() ? HALF_FLAGS_HALF_DOMAIN : HALF_FLAGS_NONE;
    auto joined = std::make_unique<Lut1DOp>(first.getInBitDepth(), BIT_DEPTH_32f, first.getId() + second.getId(),
                                            first.getName() + second.getName(), joinDescriptions(first, second),
                                            first.getInterpolation(), length, flags);
    joined->Op::setOutBitDepth(second.getOutBitDepth());
    joined->setBypass(first.getBypass());
    return joined;
}

std::unique_ptr<Lut3DOp> makeJoined(const Lut3DOp& first, const Lut3DOp& second, uint32_t length)
{
    auto joined = std::make_unique<Lut3DOp>(first.getInBitDepth(), BIT_DEPTH_32f, first.getId() + second.getId(),
                                            first.getName() + second.getName(), joinDescriptions(first, second),
                                            first.getInterpolation(), length);
    joined->Op::setOutBitDepth(second.getOutBitDepth());
    joined->setBypass(first.getBypass());
    return joined;
}

/// compose() with the two as the function clones them.
std::unique_ptr<Lut1DOp> composeClones(const Lut1DOp& first, const Lut1DOp& second, uint32_t samples,
                                       std::unique_ptr<Lut1DOp> (*makeClone)(const Lut1DOp&))
{
    checkDepthsMeet(first, second);
    checkSound(first.getArray(), Color::LogCategory::TRANSFORM_LUT_1D);
    const bool isDomain = first.isHalfDomain() || first.getArray().getLength() >= samples;
    auto joined = makeJoined(first, second, isDomain ? first.getArray().getLength() : samples);
    Color::Array::Values& values = joined->getArray().getValues();
    if (isDomain) copyThreeComponents(first.getArray(), values);
    render(values, isDomain ? makeNormalizer(first) : makeClone(first), makeClone(second));
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
    return composeClones(first, second, samples, cloneCurves);
}

std::unique_ptr<Lut1DOp> mergeLuts(const Lut1DOp& first, const Lut1DOp& second)
{
    return composeClones(first, second, kFineSamples, cloneLut);
}

std::unique_ptr<Lut3DOp> mergeCubes(const Lut3DOp& first, const Lut3DOp& second)
{
    checkDepthsMeet(first, second);
    checkSound(first.getArray(), Color::LogCategory::TRANSFORM_LUT_3D);
    const uint32_t length = std::max(first.getArray().getLength(), second.getArray().getLength());
    const bool isDomain = first.getArray().getLength() == length;
    auto joined = makeJoined(first, second, length);
    Color::Array::Values& values = joined->getArray().getValues();
    if (isDomain) values = first.getArray().getValues();
    render(values, isDomain ? makeNormalizer(first) : std::unique_ptr<Color::Op>(first.clone()),
           std::unique_ptr<Color::Op>(second.clone()));
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
