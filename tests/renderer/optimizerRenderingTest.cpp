// Optimizing changes no pixels: lists of ops are rendered before and after, at all thresholds. One change is wanted:
// where a LUT is removed because it is switched off, the clamp of its domain stays.

#include "renderer/CPURenderer.h"
#include "renderer/optimizer.h"
#include "tests/renderer/kernelProbe.h"
#include "transform/CDLOp.h"
#include "transform/ditherOp.h"
#include "transform/exposureContrastOp.h"
#include "transform/functionOp.h"
#include "transform/gammaOp.h"
#include "transform/gamutMapOp.h"
#include "transform/hueVectorOp.h"
#include "transform/invLut1DOp.h"
#include "transform/logOp.h"
#include "transform/lut3DOp.h"
#include "transform/matrixOp.h"
#include "transform/rangeOp.h"

#include <algorithm>
#include <memory>

using namespace Rendering;
using Color::InvLut1DOp;
using Color::Lut1DOp;
using Color::Lut3DOp;
using Color::MatrixOp;
using Color::Op;
using Color::OpType;
using Color::RangeOp;

namespace {

using OpPtr = std::unique_ptr<Op>;

constexpr BitDepth kDepth = BIT_DEPTH_32f;
constexpr OptimizerFlags kThresholds[] = {101, 100, 99, 95, 90, 75, 45, 1};

const OpType kTypes[] = {
    Color::OP_LUT_1D,    Color::OP_INVERSE_LUT_1D,    Color::OP_LUT_3D,  Color::OP_MATRIX, Color::OP_RANGE,
    Color::OP_GAMMA,     Color::OP_EXPOSURE_CONTRAST, Color::OP_LOG,     Color::OP_CDL,    Color::OP_DITHER,
    Color::OP_GAMUT_MAP, Color::OP_HUE_VECTOR,        Color::OP_FUNCTION};

/// The same numbers on every system.
class Random
{
public:
    unsigned below(unsigned count) { return static_cast<unsigned>(m_engine()) % count; }
    bool isOneOf(unsigned count) { return below(count) == 0; }
    double between(double low, double high) { return low + (high - low) * below(1u << 20) / double(1u << 20); }

private:
    std::mt19937 m_engine{20261121};
};

/// A rising curve from 0 to 1 without steep parts.
float curve(float x, double bend) { return static_cast<float>(x + bend * x * (1.0 - x)); }

OpPtr makeLut1D(Random& random)
{
    const HalfFlags flags = random.isOneOf(4) ? HALF_FLAGS_HALF_DOMAIN : HALF_FLAGS_NONE;
    const uint32_t lengths[] = {5, 17, 256, 1024, 4096};
    const uint32_t length = flags == HALF_FLAGS_NONE ? lengths[random.below(5)] : Lut1DOp::kHalfDomainLength;
    auto lut = std::make_unique<Lut1DOp>(kDepth, kDepth, "", "", Color::Descriptions(), Lut1DOp::INTERPOLATION_LINEAR,
                                         length, flags);
    Color::Array::Values& values = lut->getArray().getValues();
    for (std::size_t channel = 0; channel < 3; ++channel) {
        const double bend = random.between(-0.6, 0.6);
        for (std::size_t i = channel; i < values.size(); i += 3)
            values[i] = curve(std::min(std::max(values[i], 0.f), 1.f), bend);
    }
    if (random.isOneOf(5)) lut->setHueAdjust(Lut1DOp::HUE_ADJUST_DW3);
    return lut;
}

OpPtr makeInverseLut1D(Random& random)
{
    Lut1DOp lut(257);
    const double bend = random.between(-0.5, 0.5);
    for (float& value : lut.getArray().getValues())
        value = curve(value, bend);
    return std::make_unique<InvLut1DOp>(lut);
}

OpPtr makeCube(Random& random)
{
    const Lut3DOp::Interpolation interpolation =
        random.isOneOf(2) ? Lut3DOp::INTERPOLATION_TETRAHEDRAL : Lut3DOp::INTERPOLATION_TRILINEAR;
    auto cube = std::make_unique<Lut3DOp>(kDepth, kDepth, "", "", Color::Descriptions(), interpolation,
                                          9 + 8 * random.below(2));
    Color::Array::Values& values = cube->getArray().getValues();
    const double bend = random.between(-0.3, 0.3);
    const auto mixing = static_cast<float>(random.between(0.0, 0.3));
    for (std::size_t i = 0; i < values.size(); i += 3) {
        const float mean = (values[i] + values[i + 1] + values[i + 2]) / 3.f;
        for (std::size_t channel = i; channel < i + 3; ++channel)
            values[channel] = curve(values[channel] + (mean - values[channel]) * mixing, bend);
    }
    return cube;
}

OpPtr makeMatrix(Random& random)
{
    auto matrix = std::make_unique<MatrixOp>();
    float values[9];
    for (std::size_t row = 0; row < 3; ++row) {
        const double left = random.between(0.0, 0.3);
        const double right = random.between(0.0, 0.3);
        values[row * 3 + row] = static_cast<float>(0.95 - left - right);
        values[row * 3 + (row + 1) % 3] = static_cast<float>(left);
        values[row * 3 + (row + 2) % 3] = static_cast<float>(right);
    }
    matrix->setMatrix3x3(values);
    if (random.isOneOf(2)) matrix->setOffset(random.below(3), static_cast<float>(random.between(0.0, 0.05)));
    return matrix;
}

OpPtr makeRange(Random& random)
{
    constexpr double notSet = std::numeric_limits<double>::quiet_NaN();
    switch (random.below(4)) {
    case 0:
        return std::make_unique<RangeOp>(kDepth, kDepth, 0, 1, 0, 1);
    case 1: // clips nothing, as the list stands
        return std::make_unique<RangeOp>(kDepth, kDepth, -0.25, notSet, -0.25, notSet);
    case 2:
        return std::make_unique<RangeOp>(kDepth, kDepth, random.between(0, 0.2), random.between(0.8, 1), 0, 1);
    default:
        return std::make_unique<RangeOp>(kDepth, kDepth, 0, 1, random.between(0, 0.2), random.between(0.8, 1));
    }
}

OpPtr makeGamma(Random& random)
{
    using Color::GammaOp;
    const bool isForward = random.isOneOf(2);
    const GammaOp::Params params = {random.between(1.0, 2.4), random.between(0.03, 0.1)};
    return std::make_unique<GammaOp>(
        kDepth, kDepth, isForward ? GammaOp::STYLE_MONCURVE_FWD : GammaOp::STYLE_MONCURVE_REV, params, params, params);
}

OpPtr makeExposureContrast(Random& random)
{
    auto op = std::make_unique<Color::ExposureContrastOp>();
    op->getExposure()->set(random.between(-1.0, -0.1));
    return op;
}

OpPtr makeLog(Random& random)
{
    const Color::LogOp::Params params = {0.6, 1000, 95, 1.0, 0.2};
    const auto style = random.isOneOf(2) ? Color::LogOp::STYLE_LIN_TO_LOG : Color::LogOp::STYLE_LOG_TO_LIN;
    return std::make_unique<Color::LogOp>(kDepth, kDepth, style, params, params, params);
}

OpPtr makeCDL(Random& random)
{
    auto op = std::make_unique<Color::CDLOp>();
    op->setSlope({random.between(0.5, 1.2), random.between(0.5, 1.2), random.between(0.5, 1.2)});
    op->setPower({random.between(1.0, 1.5), 1.0, random.between(1.0, 1.5)});
    op->setSaturation(random.between(0.5, 1.2));
    return op;
}

/// An op that does something.
OpPtr makeActive(OpType type, Random& random)
{
    switch (type) {
    case Color::OP_LUT_1D:
        return makeLut1D(random);
    case Color::OP_INVERSE_LUT_1D:
        return makeInverseLut1D(random);
    case Color::OP_LUT_3D:
        return makeCube(random);
    case Color::OP_MATRIX:
        return makeMatrix(random);
    case Color::OP_RANGE:
        return makeRange(random);
    case Color::OP_GAMMA:
        return makeGamma(random);
    case Color::OP_EXPOSURE_CONTRAST:
        return makeExposureContrast(random);
    case Color::OP_LOG:
        return makeLog(random);
    case Color::OP_CDL:
        return makeCDL(random);
    case Color::OP_DITHER:
        return std::make_unique<Color::DitherOp>(kDepth, kDepth, BIT_DEPTH_8i);
    case Color::OP_GAMUT_MAP:
        return std::make_unique<Color::GamutMapOp>(kDepth, kDepth, Color::GamutMapOp::STYLE_DW3);
    case Color::OP_HUE_VECTOR:
        return std::make_unique<Color::HueVectorOp>(kDepth, kDepth, Color::HueVectorOp::STYLE_YCH_FWD,
                                                    Color::HueVectorOp::Params{120, 60, 0.5});
    default:
        return std::make_unique<Color::FunctionOp>(kDepth, kDepth,
                                                   random.isOneOf(2) ? Color::FunctionOp::STYLE_RGB_TO_HSV
                                                                     : Color::FunctionOp::STYLE_HSV_TO_RGB);
    }
}

/// An op without effect whose kernel passes values as they are, bit for bit.
OpPtr makeNeutral(Random& random)
{
    switch (random.below(5)) {
    case 0:
        return std::make_unique<MatrixOp>();
    case 1:
        return std::make_unique<RangeOp>();
    case 2:
        return std::make_unique<Color::GamutMapOp>();
    case 3:
        return std::make_unique<Color::DitherOp>(kDepth, kDepth, BIT_DEPTH_16f);
    default:
        return std::make_unique<Color::ExposureContrastOp>();
    }
}

/// An op without effect whose kernel works values out, which rounds them, or clamps them to the range from 0 to 1.
OpPtr makeRoundingNeutral(unsigned number)
{
    switch (number) {
    case 0:
        return std::make_unique<Lut1DOp>(1024u);
    case 1:
        return std::make_unique<InvLut1DOp>(Lut1DOp(1024u));
    case 2:
        return std::make_unique<Color::GammaOp>();
    default:
        return std::make_unique<Color::CDLOp>();
    }
}
constexpr unsigned kRoundingNeutrals = 4;

/// An op that is switched off: it passes values as they are.
OpPtr makeSwitchedOff(Random& random)
{
    OpPtr op = makeActive(kTypes[random.below(std::size(kTypes))], random);
    op->getBypass()->makeDynamic();
    op->getBypass()->set(true);
    return op;
}

Pixels makePixels()
{
    Pixels pixels;
    for (const float grey : {0.f, 1.f, 0.5f, 0.18f})
        pixels.push_back({grey, grey, grey, 1.f});
    Random random;
    for (int i = 0; i < 60; ++i) {
        Pixel pixel{};
        for (float& value : pixel)
            value = static_cast<float>(random.between(0.0, 1.0));
        pixels.push_back(pixel);
    }
    return pixels;
}

/// Values beyond the range from 0 to 1, up to those that are no numbers.
Pixels makeExtremePixels()
{
    Pixels pixels;
    for (const float value : {0.f, -0.f, 1.f, -1e-10f, -0.5f, 1.5f, 2.f, -3.f, 1e-40f, -1e-40f, 65504.f, 1e10f, -1e10f,
                              kLargest, kInfinity, -kInfinity, kNaN}) {
        pixels.push_back({value, value, value, value});
        pixels.push_back({value, 0.5f, -value, 1.f});
        pixels.push_back({0.2f, value, 0.1f, value});
    }
    return pixels;
}

Pixels render(const Color::Transform& transform, const Pixels& source)
{
    CPURenderer renderer;
    renderer.finalize(&transform, PF_RGBA_32f, PF_RGBA_32f);
    Pixels result(source.size());
    renderer.apply(source.data()->data(), result.data()->data(), ROI(0, 0, static_cast<uint32_t>(source.size()), 1), 0,
                   0);
    return result;
}

Pixels render(const Color::Transform& transform)
{
    static const Pixels source = makePixels();
    return render(transform, source);
}

float largestDifference(const Pixels& a, const Pixels& b)
{
    float largest = 0.f;
    for (std::size_t i = 0; i < a.size(); ++i) {
        for (std::size_t channel = 0; channel < 4; ++channel) {
            if (isSame(a[i][channel], b[i][channel])) continue;
            const float difference = std::fabs(a[i][channel] - b[i][channel]);
            // One NaN alone is as far off as can be.
            if (!(difference <= largest)) largest = std::isnan(difference) ? kInfinity : difference;
        }
    }
    return largest;
}

std::string typesOf(const Color::Transform& transform)
{
    std::string text;
    for (std::size_t i = 0; i < transform.getOpList().size(); ++i)
        text += transform.getOpList().get(i)->getOpTypeName() +
                (transform.getOpList().get(i)->getBypass()->get() ? " (off), " : ", ");
    return text;
}

/// How far a channel may be off after these actions: not at all without a merge; by the rounding of a matrix; by what
/// lies between two of the 65536 samples of a merged curve, or between two halves; by what lies between the grid points
/// of a merged cube. All with room for the ops behind the merge, which are nowhere steep.
float boundFor(const std::vector<OptimizerStep>& steps)
{
    float bound = 0.f;
    for (const OptimizerStep& step : steps) {
        if (step.action.type == OPTIMIZER_ACTION_MERGE_MATRICES) bound = std::max(bound, 1e-5f);
        if (step.action.type == OPTIMIZER_ACTION_MERGE_LUTS_1D) bound = std::max(bound, 3e-4f);
        if (step.action.type == OPTIMIZER_ACTION_MERGE_LUTS_3D) bound = std::max(bound, 2e-2f);
    }
    return bound;
}

bool hasBypass(const Color::Transform& transform, const Color::BypassPropertyPtr& bypass)
{
    for (std::size_t i = 0; i < transform.getOpList().size(); ++i) {
        if (transform.getOpList().get(i)->getBypass() == bypass) return true;
    }
    return false;
}

/// The plain list with clamps in place of the LUTs that are switched off and gone from the optimized one.
Color::Transform withClamps(const Color::Transform& plain, const Color::Transform& optimized)
{
    Color::Transform clamped(plain);
    for (std::size_t i = 0; i < clamped.getOpList().size(); ++i) {
        const Op& op = *clamped.getOpList().get(i);
        const bool isLut = op.getOpType() == Color::OP_LUT_1D || op.getOpType() == Color::OP_LUT_3D;
        if (isLut && op.getBypass()->get() && !hasBypass(optimized, op.getBypass()))
            clamped.getOpList().replace(new RangeOp(kDepth, kDepth, 0, 1, 0, 1), i);
    }
    return clamped;
}

/// True when an op that is switched off might merge with another dynamic one: the first's switch then stands for both.
bool mightMergeWhileOff(const Color::Transform& transform)
{
    const Color::OpList& ops = transform.getOpList();
    for (std::size_t i = 0; i < ops.size(); ++i) {
        for (std::size_t k = 0; k < ops.size(); ++k) {
            const bool areAlike = i != k && ops.get(i)->getOpType() == ops.get(k)->getOpType();
            if (areAlike && ops.get(i)->getBypass()->get() && ops.get(k)->getBypass()->isDynamic()) return true;
        }
    }
    return false;
}

/// Optimizes copies at all thresholds and compares what they render. The tolerance is on top of what merges may do.
/// Returns the number of actions at the lowest threshold.
std::size_t expectSameRendering(const Color::Transform& plain, float tolerance = 0.f)
{
    const Pixels expected = render(plain);
    std::size_t done = 0;
    for (const OptimizerFlags threshold : kThresholds) {
        for (const OptimizerFlags keep : {OptimizerFlags{0}, OPTIMIZER_KEEP_DYNAMIC}) {
            if (keep != 0 && mightMergeWhileOff(plain)) continue;
            Color::Transform optimized(plain);
            const std::vector<OptimizerStep> steps = optimize(optimized, threshold | keep);
            // Those that are kept may merge and are gone then, but leave no clamp.
            const Pixels wanted = keep == 0 ? render(withClamps(plain, optimized)) : expected;
            const float difference = largestDifference(render(optimized), wanted);
            EXPECT_LE(difference, boundFor(steps) + tolerance)
                << typesOf(plain) << "to " << typesOf(optimized) << "at " << threshold;
            if (keep == 0) done = steps.size();
        }
    }
    return done;
}

} // namespace

TEST(OptimizerRendering, everyPairOfTypesRendersTheSame)
{
    Random random;
    for (const OpType first : kTypes) {
        for (const OpType second : kTypes) {
            Color::Transform transform;
            transform.getOpList().append(makeActive(first, random).release());
            transform.getOpList().append(makeActive(second, random).release());
            expectSameRendering(transform);
        }
    }
}

TEST(OptimizerRendering, everyPairWithOneOpThatDoesNothingRendersTheSame)
{
    Random random;
    for (const OpType type : kTypes) {
        for (int i = 0; i < 6; ++i) {
            for (const bool isFirst : {true, false}) {
                OpPtr idle = i % 2 == 0 ? makeNeutral(random) : makeSwitchedOff(random);
                OpPtr active = makeActive(type, random);
                Color::Transform transform;
                transform.getOpList().append((isFirst ? idle : active).release());
                transform.getOpList().append((isFirst ? active : idle).release());
                EXPECT_GT(expectSameRendering(transform), 0u);
            }
        }
    }
}

TEST(OptimizerRendering, opsThatOnlyRoundRenderNearlyTheSame)
{
    Random random;
    for (const OpType type : kTypes) {
        for (unsigned i = 0; i < kRoundingNeutrals; ++i) {
            Color::Transform transform;
            transform.getOpList().append(makeRoundingNeutral(i).release());
            transform.getOpList().append(makeActive(type, random).release());
            EXPECT_GT(expectSameRendering(transform, 1e-4f), 0u);
        }
    }
}

namespace {

/// Any op: without effect, switched off, or active. What can merge or be redundant is chosen more often.
OpPtr makeAny(Random& random)
{
    const unsigned kind = random.below(6);
    if (kind == 0) return makeNeutral(random);
    if (kind == 1) return makeSwitchedOff(random);
    OpPtr op = makeActive(kTypes[random.isOneOf(2) ? random.below(5) : random.below(std::size(kTypes))], random);
    if (random.isOneOf(4)) op->getBypass()->makeDynamic();
    return op;
}

} // namespace

TEST(OptimizerRendering, randomListsRenderTheSame)
{
    Random random;
    std::size_t done = 0;
    for (int i = 0; i < 150; ++i) {
        Color::Transform transform;
        const unsigned length = 3 + random.below(6);
        for (unsigned k = 0; k < length; ++k)
            transform.getOpList().append(makeAny(random).release());
        done += expectSameRendering(transform);
    }
    EXPECT_GT(done, 300u);
}

namespace {

/// True for an op behind which a range counts as redundant, although it does not clip the same: one that is switched
/// off does not clip at all, and a hue adjust looks at what the curves clip.
bool clipsLessThanItCountsFor(const Op& op)
{
    if (op.getOpType() == Color::OP_RANGE) return op.getBypass()->get();
    const auto* lut = dynamic_cast<const Lut1DOp*>(&op);
    return lut && lut->getHueAdjust() != Lut1DOp::HUE_ADJUST_NONE;
}

} // namespace

TEST(OptimizerRendering, removalsRenderTheSameOutsideTheRangeToo)
{
    const Pixels pixels = makeExtremePixels();
    Random random;
    std::size_t removals = 0;
    std::size_t redundantRanges = 0;
    for (int i = 0; i < 300; ++i) {
        Color::Transform plain;
        const unsigned length = 3 + random.below(6);
        while (plain.getOpList().size() < length) {
            OpPtr op = makeAny(random);
            if (!clipsLessThanItCountsFor(*op)) plain.getOpList().append(op.release());
        }
        Color::Transform removed(plain);
        removals += optimize(removed, OPTIMIZER_REMOVE).size();
        EXPECT_EQ(largestDifference(render(removed, pixels), render(withClamps(plain, removed), pixels)), 0.f)
            << typesOf(plain) << "to " << typesOf(removed);

        Color::Transform unclipped(plain);
        for (const OptimizerStep& step : optimize(unclipped, OPTIMIZER_MATRIX + 1))
            redundantRanges += step.action.type == OPTIMIZER_ACTION_REMOVE_RANGE ? 1u : 0u;
        // At 1 a curve is a rounding off its last entry, which it gives for all beyond.
        EXPECT_LE(largestDifference(render(unclipped, pixels), render(withClamps(plain, unclipped), pixels)), 5e-7f)
            << typesOf(plain) << "to " << typesOf(unclipped);
    }
    EXPECT_GT(removals, 200u);
    EXPECT_GT(redundantRanges, 20u);
}

TEST(OptimizerRendering, randomListsOfAllDepthsRenderTheSame)
{
    constexpr BitDepth depths[] = {BIT_DEPTH_8i,  BIT_DEPTH_10i, BIT_DEPTH_12i,
                                   BIT_DEPTH_16i, BIT_DEPTH_16f, BIT_DEPTH_32f};
    Random random;
    for (int i = 0; i < 80; ++i) {
        Color::Transform transform;
        while (transform.getOpList().size() < 6) {
            OpPtr op = makeAny(random);
            // It counts as without effect between depths that are not those of the rendering.
            if (op->getOpType() == Color::OP_DITHER) continue;
            op->setOutBitDepth(depths[random.below(std::size(depths))]);
            transform.getOpList().append(op.release());
        }
        transform.setOutBitDepth(kDepth);
        // Parameters that pass through other depths are rounded.
        expectSameRendering(transform, 2e-5f);
    }
}
