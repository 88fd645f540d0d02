#include "renderer/optimizer.h"

#include "renderer/lutComposition.h"
#include "transform/matrixOp.h"
#include "transform/rangeOp.h"
#include "utils/exception.h"

#include <cstdlib>

namespace Rendering {

namespace {

using Color::Lut1DOp;
using Color::Lut3DOp;
using Color::MatrixOp;
using Color::Op;
using Color::OpList;
using Color::RangeOp;
using Color::LogCategory::RENDERER_ALL;

/// A whole number of the environment; -1 when the variable is not set.
int readOverride(const char* variable) noexcept
{
    const char* value = std::getenv(variable);
    return value ? std::atoi(value) : -1;
}

// Read once, when the library is loaded. A negative one counts as not set.
const int kThresholdOverride = readOverride("MORVANE_OPTIMIZER_VALUE");
const int kKeepDynamicOverride = readOverride("MORVANE_OPTIMIZER_KEEP_DYNAMIC_OPS");

uint32_t thresholdOf(OptimizerFlags flags)
{
    return kThresholdOverride >= 0 ? static_cast<uint32_t>(kThresholdOverride) : flags & ~OPTIMIZER_KEEP_DYNAMIC;
}

bool keepsDynamicOps(OptimizerFlags flags)
{
    return kKeepDynamicOverride >= 0 ? kKeepDynamicOverride > 0 : (flags & OPTIMIZER_KEEP_DYNAMIC) != 0;
}

/// What a rule sees of the list.
struct Place
{
    const Op& op;
    const Op* next; ///< null where the op may not be merged: at the end, and where only one of the two is to be kept
    bool mayRemove; ///< false for a dynamic op that is to be kept
    bool isAlone;
};

Place placeAt(const OpList& ops, std::size_t index, bool keepsDynamic)
{
    const Op& op = *ops.get(index);
    const bool isKept = keepsDynamic && op.hasDynamicProperties();
    const Op* next = index + 1 < ops.size() ? ops.get(index + 1) : nullptr;
    if (next && keepsDynamic && next->hasDynamicProperties() != isKept) next = nullptr;
    return {op, next, !isKept, ops.size() == 1};
}

// The number of its type tells what an op is: an inverse LUT is no LUT here, although its class derives from one.
bool isA(Color::OpType type, const Op& op) { return op.getOpType() == type; }
bool areTwo(Color::OpType type, const Place& place)
{
    return place.next && isA(type, place.op) && isA(type, *place.next);
}

const Lut1DOp& lut1DOf(const Op& op) { return static_cast<const Lut1DOp&>(op); }
const Lut3DOp& lut3DOf(const Op& op) { return static_cast<const Lut3DOp&>(op); }
const MatrixOp& matrixOf(const Op& op) { return static_cast<const MatrixOp&>(op); }
const RangeOp& rangeOf(const Op& op) { return static_cast<const RangeOp&>(op); }

bool isBypassed(const Place& place) { return place.op.getBypass()->get() && place.mayRemove; }

/// A cube stays whatever it does, and so does a matrix or a range that is all there is: it holds the change of depth.
bool isWithoutEffect(const Place& place)
{
    if (isA(Color::OP_LUT_3D, place.op)) return false;
    if (place.isAlone && (isA(Color::OP_MATRIX, place.op) || isA(Color::OP_RANGE, place.op))) return false;
    return place.mayRemove && place.op.isNoOp();
}

/// True for a range that clips both ends, to no more than what its out depth can hold.
bool clipsInside(const RangeOp& range)
{
    const BitDepth out = range.getOutBitDepth();
    // Neither holds where a limit is not set.
    return range.getMinIn() >= static_cast<double>(getBitDepthMinValue(out)) &&
           range.getMaxIn() <= static_cast<double>(getBitDepthMaxValue(out));
}

/// True for a range that only clips, before an op that clips too. That op's clamp is taken to be the narrower one.
bool isRedundantRange(const Place& place)
{
    if (!place.next || !isA(Color::OP_RANGE, place.op)) return false;
    const double ratio = static_cast<double>(getBitDepthMaxValue(place.op.getOutBitDepth())) /
                         static_cast<double>(getBitDepthMaxValue(place.op.getInBitDepth()));
    if (rangeOf(place.op).scalesOtherThan(ratio)) return false;
    switch (place.next->getOpType()) {
    case Color::OP_LUT_3D:
        return true;
    case Color::OP_LUT_1D:
        return !lut1DOf(*place.next).isHalfDomain();
    case Color::OP_RANGE:
        return clipsInside(rangeOf(*place.next));
    default:
        return false;
    }
}

bool areMatrices(const Place& place) { return areTwo(Color::OP_MATRIX, place); }

bool areLuts1D(const Place& place)
{
    return areTwo(Color::OP_LUT_1D, place) && lut1DOf(place.op).getHueAdjust() == Lut1DOp::HUE_ADJUST_NONE &&
           lut1DOf(*place.next).getHueAdjust() == Lut1DOp::HUE_ADJUST_NONE;
}

bool areLuts3D(const Place& place) { return areTwo(Color::OP_LUT_3D, place); }

/// A LUT leaves the clamp to its domain behind, and the list is never left empty.
void removeOp(OpList& ops, std::size_t index)
{
    const Op& op = *ops.get(index);
    const BitDepth in = op.getInBitDepth();
    const BitDepth out = op.getOutBitDepth();
    if (isA(Color::OP_LUT_1D, op) || isA(Color::OP_LUT_3D, op)) {
        const auto maxIn = static_cast<double>(getBitDepthMaxValue(in));
        const auto maxOut = static_cast<double>(getBitDepthMaxValue(out));
        ops.replace(new RangeOp(in, out, 0.0, maxIn, 0.0, maxOut), index);
    } else if (ops.size() == 1) {
        ops.replace(new MatrixOp(in, out), index);
    } else {
        ops.erase(index);
    }
}

void removeRange(OpList& ops, std::size_t index) { ops.erase(index); }

void replaceTwo(OpList& ops, std::size_t index, std::unique_ptr<Op> merged)
{
    ops.replace(merged.release(), index);
    ops.erase(index + 1);
}

void mergeTwoMatrices(OpList& ops, std::size_t index)
{
    const MatrixOp& first = matrixOf(*ops.get(index));
    std::unique_ptr<MatrixOp> merged = first.compose(matrixOf(*ops.get(index + 1)));
    merged->setBypass(first.getBypass());
    replaceTwo(ops, index, std::move(merged));
}

void mergeTwoLuts1D(OpList& ops, std::size_t index)
{
    replaceTwo(ops, index, mergeLuts(lut1DOf(*ops.get(index)), lut1DOf(*ops.get(index + 1))));
}

void mergeTwoLuts3D(OpList& ops, std::size_t index)
{
    replaceTwo(ops, index, mergeCubes(lut3DOf(*ops.get(index)), lut3DOf(*ops.get(index + 1))));
}

struct Rule
{
    OptimizerActionType type;
    uint32_t score;
    bool (*applies)(const Place& place);
    void (*apply)(OpList& ops, std::size_t index);
};

/// The first rule that applies to a place decides. What is cheap and exact scores higher.
const Rule kRules[] = {
    {OPTIMIZER_ACTION_REMOVE_OP, 100, isBypassed, removeOp},
    {OPTIMIZER_ACTION_REMOVE_OP, 100, isWithoutEffect, removeOp},
    {OPTIMIZER_ACTION_REMOVE_RANGE, 99, isRedundantRange, removeRange},
    {OPTIMIZER_ACTION_MERGE_MATRICES, 95, areMatrices, mergeTwoMatrices},
    {OPTIMIZER_ACTION_MERGE_LUTS_1D, 75, areLuts1D, mergeTwoLuts1D},
    {OPTIMIZER_ACTION_MERGE_LUTS_3D, 45, areLuts3D, mergeTwoLuts3D},
};

/// A score above this ends the search: removals happen in the order of the list, ahead of merges. A redundant range
/// that scores too little for the threshold so hides the removals behind it.
constexpr uint32_t kHighestMergeScore = 95;

/// A rule and where it applies; without a rule there is nothing to do.
struct Finding
{
    const Rule* rule = nullptr;
    std::size_t index = 0;

    uint32_t getScore() const { return rule ? rule->score : 0; }
};

const Rule* ruleFor(const Place& place)
{
    for (const Rule& rule : kRules) {
        if (rule.applies(place)) return &rule;
    }
    return nullptr;
}

Finding findBest(const OpList& ops, bool keepsDynamic)
{
    Finding best;
    for (std::size_t i = 0; i < ops.size() && best.getScore() <= kHighestMergeScore; ++i) {
        const Finding found = {ruleFor(placeAt(ops, i, keepsDynamic)), i};
        if (found.getScore() > best.getScore()) best = found;
    }
    return best;
}

OptimizerStep carryOut(const Finding& finding, OpList& ops)
{
    // A threshold of 0 is met even by this.
    if (!finding.rule) Color::raise(RENDERER_ALL, Color::ErrorIds::RENDERER_NULL_OPTIMIZER_ACTION);
    OptimizerStep step = {{finding.rule->type, static_cast<uint32_t>(finding.index), finding.rule->score},
                          ops.get(finding.index)->getOpTypeName()};
    finding.rule->apply(ops, finding.index);
    return step;
}

void validate(Color::Transform& transform)
{
    try {
        transform.validate();
    } catch (const Color::Exception&) {
        Color::raise(RENDERER_ALL, Color::ErrorIds::RENDERER_OPTIMIZATION_INVALID);
    }
}

} // namespace

std::vector<OptimizerStep> optimize(Color::Transform& transform, OptimizerFlags flags)
{
    const uint32_t threshold = thresholdOf(flags);
    const bool keepsDynamic = keepsDynamicOps(flags);
    OpList& ops = transform.getOpList();
    std::vector<OptimizerStep> steps;
    for (Finding best = findBest(ops, keepsDynamic); best.getScore() >= threshold; best = findBest(ops, keepsDynamic)) {
        steps.push_back(carryOut(best, ops));
    }
    if (!steps.empty()) validate(transform);
    return steps;
}

} // namespace Rendering
