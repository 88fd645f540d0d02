#include "tests/pixels/opCases.h"

#include "morvane/finalize.h"
#include "morvane/transformFactory.h"
#include "morvane/transformFile.h"
#include "morvane/transformImpl.h"
#include "tests/pixels/curveCases.h"
#include "tests/pixels/lutCases.h"
#include "transform/transformFactory.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <stdexcept>

namespace PixelTest {

using namespace Morvane_2015_1_42;
using Twin::Bypass;
using Twin::MatrixOp;
using Twin::Op;
using Twin::RangeOp;

namespace {

constexpr double UNSET = RangeOp::UNSET;

// A full matrix: no entry twice, a used fourth row and column.
const std::array<float, 16> MIXING = {0.71F,  0.23F,   0.043F,   0.0021F, //
                                      0.11F,  0.83F,   0.062F,   -0.013F, //
                                      0.029F, -0.17F,  1.09F,    0.0071F, //
                                      0.017F, 0.0037F, -0.0053F, 0.97F};
const std::array<float, 16> OTHER_MIXING = {1.31F,  -0.27F,  -0.031F, 0.011F,  //
                                            -0.19F, 1.23F,   -0.047F, 0.003F,  //
                                            0.053F, 0.041F,  0.89F,   -0.009F, //
                                            0.0F,   -0.007F, 0.013F,  1.02F};
const std::array<float, 4> OFFSETS = {0.031F, -0.052F, 0.0013F, 0.0077F};

std::array<float, 16> scaled(std::array<float, 16> matrix, float factor)
{
    for (float& value : matrix)
        value *= factor;
    return matrix;
}

std::array<float, 16> diagonal(float r, float g, float b, float a)
{
    return {r, 0, 0, 0, 0, g, 0, 0, 0, 0, b, 0, 0, 0, 0, a};
}

std::array<float, 16> withEntry(std::array<float, 16> matrix, size_t index, float value)
{
    matrix[index] = value;
    return matrix;
}

const Op GAIN = MatrixOp(BIT_DEPTH_32f, BIT_DEPTH_32f, diagonal(1.25F, 0.8F, 1.0625F, 0.99F));
const Op GAIN_AND_LIFT = MatrixOp(BIT_DEPTH_32f, BIT_DEPTH_32f, diagonal(0.93F, 1.11F, 0.87F, 1.01F), OFFSETS);
const Op MIX = MatrixOp(BIT_DEPTH_32f, BIT_DEPTH_32f, MIXING);
const Op MIX_AND_LIFT = MatrixOp(BIT_DEPTH_32f, BIT_DEPTH_32f, OTHER_MIXING, OFFSETS);

Op range(double minIn, double maxIn, double minOut, double maxOut)
{
    return RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, minIn, maxIn, minOut, maxOut);
}

const Op RANGE_SCALE_MIN_MAX = range(0.125, 0.75, 0.25, 0.875);
const Op RANGE_SCALE_MIN = range(0.25, UNSET, 0.125, UNSET);
const Op RANGE_SCALE_MAX = range(UNSET, 0.75, UNSET, 0.8125);
const Op RANGE_MIN_MAX = range(0.125, 0.8125, 0.125, 0.8125);
const Op RANGE_MIN = range(0.25, UNSET, 0.25, UNSET);
const Op RANGE_MAX = range(UNSET, 0.75, UNSET, 0.75);
const Op RANGE_UNSET = range(UNSET, UNSET, UNSET, UNSET);
const Op RANGE_NOMINAL = range(0, 1, 0, 1);
// Limits beyond what an integer depth can hold: clamps fall away where such a depth comes in.
const Op RANGE_BEYOND = range(-0.5, 1.5, -0.25, 1.25);
const Op RANGE_BEYOND_ALIKE = range(-0.5, 1.5, -0.5, 1.5);
const Op RANGE_BEYOND_BELOW = range(-0.5, 0.75, -0.25, 0.875);
const Op RANGE_BEYOND_ABOVE = range(0.25, 1.5, 0.125, 1.25);
const Op RANGE_BEYOND_BELOW_ALIKE = range(-0.5, 0.75, -0.5, 0.75);
const Op RANGE_BEYOND_ABOVE_ALIKE = range(0.25, 1.5, 0.25, 1.5);
// Within the tolerance in which a range does not count as scaling, and just outside of it.
const Op RANGE_NEARLY_UNSCALED = range(0, 1, 0, static_cast<double>(1.0000005F));
const Op RANGE_BARELY_SCALED = range(0, 1, 0, static_cast<double>(1.0000015F));
const Op RANGE_NEARLY_NO_OFFSET = range(0.25, UNSET, static_cast<double>(0.2500006F), UNSET);
const Op RANGE_BARELY_OFFSET = range(0.25, UNSET, static_cast<double>(0.2500015F), UNSET);

Op dynamic(const Op& op) { return Twin::with(Bypass::DYNAMIC, op); }
Op dropped(const Op& op) { return Twin::with(Bypass::STATIC, op); }

std::vector<OpCase> makeCases()
{
    const float nan = std::nanf("");
    return {
        // Matrices alone.
        {"scale", {GAIN}},
        {"scaleOfOtherDepths", {MatrixOp(BIT_DEPTH_8i, BIT_DEPTH_12i, diagonal(17, 15.5F, 16.25F, 16.058823F))}},
        {"identity", {MatrixOp(BIT_DEPTH_16i, BIT_DEPTH_16f)}},
        {"numbersToBytes", {MatrixOp(BIT_DEPTH_32f, BIT_DEPTH_8i, diagonal(1, 1, 1, 1))}},
        {"numbersToShorts", {MatrixOp(BIT_DEPTH_32f, BIT_DEPTH_16i, diagonal(1, 1, 1, 1))}},
        {"scaleWithOffset", {GAIN_AND_LIFT}},
        {"scaleWithOffsetOfOtherDepths",
         {MatrixOp(BIT_DEPTH_10i, BIT_DEPTH_8i, diagonal(0.25F, 0.24F, 0.26F, 0.249F), {3.1F, -7.7F, 0.3F, 1})}},
        {"scaleWithNegativeZeroOffset",
         {MatrixOp(BIT_DEPTH_32f, BIT_DEPTH_32f, diagonal(1, -1, 1, 1), {0, -0.0F, 0, 0})}},
        {"matrix", {MIX}},
        {"matrixOfOtherDepths", {MatrixOp(BIT_DEPTH_16i, BIT_DEPTH_10i, scaled(MIXING, 0.0156F))}},
        {"matrixWithNan", {MatrixOp(BIT_DEPTH_32f, BIT_DEPTH_32f, withEntry(diagonal(1, 1, 1, 1), 2, nan))}},
        {"matrixWithInfinity", {MatrixOp(BIT_DEPTH_32f, BIT_DEPTH_32f, withEntry(MIXING, 4, INFINITY))}},
        {"matrixWithOffset", {MIX_AND_LIFT}},
        {"matrixWithOffsetOfOtherDepths",
         {MatrixOp(BIT_DEPTH_12i, BIT_DEPTH_16i, scaled(OTHER_MIXING, 16), {1000, -3000.5F, 21, 7})}},

        // Ranges alone.
        {"rangeScaleMinMax", {RANGE_SCALE_MIN_MAX}},
        {"rangeScaleMin", {RANGE_SCALE_MIN}},
        {"rangeScaleMax", {RANGE_SCALE_MAX}},
        {"rangeMinMax", {RANGE_MIN_MAX}},
        {"rangeMin", {RANGE_MIN}},
        {"rangeMax", {RANGE_MAX}},
        {"rangeUnset", {RANGE_UNSET}},
        {"rangeNominal", {RANGE_NOMINAL}},
        {"rangeBeyond", {RANGE_BEYOND}},
        {"rangeBeyondAlike", {RANGE_BEYOND_ALIKE}},
        {"rangeBeyondBelow", {RANGE_BEYOND_BELOW}},
        {"rangeBeyondAbove", {RANGE_BEYOND_ABOVE}},
        {"rangeBeyondBelowAlike", {RANGE_BEYOND_BELOW_ALIKE}},
        {"rangeBeyondAboveAlike", {RANGE_BEYOND_ABOVE_ALIKE}},
        {"rangeNearlyUnscaled", {RANGE_NEARLY_UNSCALED}},
        {"rangeBarelyScaled", {RANGE_BARELY_SCALED}},
        {"rangeNearlyNoOffset", {RANGE_NEARLY_NO_OFFSET}},
        {"rangeBarelyOffset", {RANGE_BARELY_OFFSET}},
        {"rangeOfOtherDepths", {RangeOp(BIT_DEPTH_8i, BIT_DEPTH_10i, 16, 235, 64, 940)}},
        {"rangeNominalOfOtherDepths", {RangeOp(BIT_DEPTH_10i, BIT_DEPTH_16i, 0, 1023, 0, 65535)}},
        {"rangeUnsetOfOtherDepths", {RangeOp(BIT_DEPTH_8i, BIT_DEPTH_32f, UNSET, UNSET, UNSET, UNSET)}},

        // One op, bypassed.
        {"bypassedScale", {dynamic(GAIN)}},
        {"bypassedMatrix", {dynamic(MIX_AND_LIFT)}},
        {"bypassedRange", {dynamic(RANGE_SCALE_MIN_MAX)}},
        {"bypassedOtherDepths", {dynamic(MatrixOp(BIT_DEPTH_8i, BIT_DEPTH_16f, scaled(MIXING, 0.004F)))}},

        // Nothing left to render.
        {"allDropped", {dropped(MIX)}, true},

        // Two ops: every kernel first and last.
        {"scaleThenMatrixWithOffset", {GAIN, MIX_AND_LIFT}},
        {"scaleWithOffsetThenMatrix", {GAIN_AND_LIFT, MIX}},
        {"matrixThenScaleWithOffset", {MIX, GAIN_AND_LIFT}},
        {"matrixWithOffsetThenScale", {MIX_AND_LIFT, GAIN}},
        {"rangeScaleMinMaxThenMatrix", {RANGE_SCALE_MIN_MAX, MIX}},
        {"rangeScaleMinThenScale", {RANGE_SCALE_MIN, GAIN}},
        {"rangeScaleMaxThenScale", {RANGE_SCALE_MAX, GAIN}},
        {"rangeMinMaxThenScale", {RANGE_MIN_MAX, GAIN}},
        {"rangeMinThenScale", {RANGE_MIN, GAIN}},
        {"rangeMaxThenScale", {RANGE_MAX, GAIN}},
        {"rangeUnsetThenMatrix", {RANGE_UNSET, MIX}},
        {"rangeBeyondThenScale", {RANGE_BEYOND, GAIN}},
        {"rangeBeyondBelowThenScale", {RANGE_BEYOND_BELOW, GAIN}},
        {"rangeBeyondAboveThenScale", {RANGE_BEYOND_ABOVE, GAIN}},
        {"scaleThenRangeScaleMinMax", {GAIN, RANGE_SCALE_MIN_MAX}},
        {"scaleThenRangeScaleMin", {GAIN, RANGE_SCALE_MIN}},
        {"scaleThenRangeScaleMax", {GAIN, RANGE_SCALE_MAX}},
        {"scaleThenRangeMinMax", {GAIN, RANGE_MIN_MAX}},
        {"scaleThenRangeMin", {GAIN, RANGE_MIN}},
        {"scaleThenRangeMax", {GAIN, RANGE_MAX}},
        {"scaleThenRangeUnset", {GAIN, RANGE_UNSET}},
        {"scaleThenRangeBeyond", {GAIN, RANGE_BEYOND}},
        {"rangeUnsetTwice", {RANGE_UNSET, RANGE_UNSET}},
        {"twoOpsOfOtherDepths",
         {MatrixOp(BIT_DEPTH_8i, BIT_DEPTH_10i, scaled(MIXING, 4), {10, -20, 5, 0}),
          RangeOp(BIT_DEPTH_12i, BIT_DEPTH_16i, 256, 3760, 1000, 60000)}},
        {"twoMatricesOfOtherDepths",
         {MatrixOp(BIT_DEPTH_8i, BIT_DEPTH_10i, scaled(MIXING, 4)),
          MatrixOp(BIT_DEPTH_12i, BIT_DEPTH_16i, scaled(OTHER_MIXING, 16), OFFSETS)}},
        {"bypassedThenMatrix", {dynamic(MIX_AND_LIFT), MIX}},
        {"matrixThenBypassed", {MIX, dynamic(RANGE_SCALE_MIN_MAX)}},
        {"bypassedTwice", {dynamic(MIX), dynamic(GAIN)}},

        // Three ops: every kernel in the middle.
        {"scaleBetween", {MIX, GAIN, RANGE_MIN_MAX}},
        {"scaleWithOffsetBetween", {MIX, GAIN_AND_LIFT, MIX_AND_LIFT}},
        {"matrixBetween", {GAIN, MIX, GAIN_AND_LIFT}},
        {"matrixWithOffsetBetween", {RANGE_NOMINAL, MIX_AND_LIFT, MIX}},
        {"rangeScaleMinMaxBetween", {MIX, RANGE_SCALE_MIN_MAX, MIX}},
        {"rangeScaleMinBetween", {MIX, RANGE_SCALE_MIN, MIX}},
        {"rangeScaleMaxBetween", {MIX, RANGE_SCALE_MAX, MIX}},
        {"rangeMinMaxBetween", {MIX, RANGE_MIN_MAX, MIX}},
        {"rangeMinBetween", {MIX, RANGE_MIN, MIX}},
        {"rangeMaxBetween", {MIX, RANGE_MAX, MIX}},
        {"rangeUnsetBetween", {MIX, RANGE_UNSET, GAIN_AND_LIFT}},
        {"bypassedFirstOfThree", {dynamic(RANGE_SCALE_MIN_MAX), MIX, GAIN_AND_LIFT}},
        {"bypassedBetween", {MIX, dynamic(RANGE_SCALE_MIN_MAX), GAIN_AND_LIFT}},
        {"bypassedLastOfThree", {GAIN_AND_LIFT, MIX, dynamic(MIX_AND_LIFT)}},
        {"bypassedBetweenOtherDepths",
         {MatrixOp(BIT_DEPTH_8i, BIT_DEPTH_10i, scaled(MIXING, 4)),
          dynamic(MatrixOp(BIT_DEPTH_10i, BIT_DEPTH_16i, scaled(OTHER_MIXING, 64))),
          MatrixOp(BIT_DEPTH_16i, BIT_DEPTH_8i, scaled(MIXING, 0.0039F))},
         true},
        {"droppedBetweenOtherDepths",
         {MatrixOp(BIT_DEPTH_8i, BIT_DEPTH_10i, scaled(MIXING, 4)),
          dropped(MatrixOp(BIT_DEPTH_10i, BIT_DEPTH_16i, scaled(OTHER_MIXING, 64))),
          RangeOp(BIT_DEPTH_16i, BIT_DEPTH_8i, 4096, 60160, 16, 235)},
         true},
        {"droppedBetweenMatrices",
         {MatrixOp(BIT_DEPTH_8i, BIT_DEPTH_10i, scaled(MIXING, 4)),
          dropped(MatrixOp(BIT_DEPTH_10i, BIT_DEPTH_16i, scaled(OTHER_MIXING, 64))),
          MatrixOp(BIT_DEPTH_16i, BIT_DEPTH_8i, scaled(OTHER_MIXING, 0.0039F))},
         true},
    };
}

std::string numberText(double value)
{
    char text[40];
    std::snprintf(text, sizeof text, "%.9g", value);
    return text;
}

std::string arrayText(const MatrixOp& op)
{
    std::string text = "<Array dim=\"4 5 4\">\n";
    for (size_t row = 0; row < 4; ++row) {
        for (size_t column = 0; column < 4; ++column)
            text += numberText(static_cast<double>(op.values[row * 4 + column])) + ' ';
        text += numberText(static_cast<double>(op.offsets[row])) + '\n';
    }
    return text + "</Array>\n";
}

std::string limitText(const char* name, double value)
{
    if (std::isnan(value)) return {};
    return std::string("<") + name + ">" + numberText(value) + "</" + name + ">\n";
}

std::string contentText(const MatrixOp& op) { return arrayText(op); }

std::string contentText(const RangeOp& op)
{
    return limitText("minInValue", op.minIn) + limitText("maxInValue", op.maxIn) + limitText("minOutValue", op.minOut) +
           limitText("maxOutValue", op.maxOut);
}

const char* elementName(const MatrixOp&) { return "Matrix"; }
const char* elementName(const RangeOp&) { return "Range"; }

template <class TwinOp>
std::string elementText(const TwinOp& op)
{
    const std::string name = elementName(op);
    std::string text =
        "<" + name + " inBitDepth=\"" + getBitDepthName(op.in) + "\" outBitDepth=\"" + getBitDepthName(op.out) + "\"";
    if (op.bypass != Bypass::OFF) text += " bypass=\"true\"";
    text += ">\n";
    if (op.bypass == Bypass::DYNAMIC) text += "<DynamicParameter param=\"LOOK_SWITCH\"/>\n";
    return text + contentText(op) + "</" + name + ">\n";
}

std::string elementText(const Op& op)
{
    if (const auto* matrix = std::get_if<MatrixOp>(&op)) return elementText(*matrix);
    return elementText(std::get<RangeOp>(op)); // the only other op that has an element
}

void check(const MorvaneStatus& status)
{
    if (!status) throw std::runtime_error(status.getErrorMessage() ? status.getErrorMessage() : "no message");
}

TransformPtr read(const std::vector<Op>& ops)
{
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ProcessList id=\"pixels\" version=\"1.3\">\n";
    for (const Op& op : ops)
        text += elementText(op);
    text += "</ProcessList>\n";
    TransformPtr transform;
    check(loadColorTransformFromBuffer(text.c_str(), transform));
    return transform;
}

TransformPtr makeTransform(const MatrixOp& op)
{
    if (op.bypass != Bypass::OFF) return read({op});
    TransformPtr transform;
    check(CreateMatrixTransform(op.in, op.out, op.values.data(), op.offsets.data(), true, transform));
    return transform;
}

TransformPtr makeTransform(const RangeOp& op) { return read({op}); }

/// Any other op goes into a transform of the library without a file.
template <class TwinOp>
TransformPtr makeTransform(const TwinOp& op)
{
    std::unique_ptr<Color::Op> colorOp = makeColorOp(op);
    colorOp->getBypass()->set(op.bypass != Bypass::OFF);
    if (op.bypass == Bypass::DYNAMIC) colorOp->getBypass()->makeDynamic();
    const Color::ColorTransformPtr transform = Color::makeTransform();
    transform->getOpList().append(colorOp.release());
    transform->validate();
    return TransformPtr(new Impl::Transform(transform));
}

TransformPtr makeTransform(const Op& op)
{
    return std::visit([](const auto& any) { return makeTransform(any); }, op);
}

} // namespace

const std::vector<OpCase>& allOpCases()
{
    static const std::vector<OpCase> cases = [] {
        std::vector<OpCase> all = makeCases();
        for (const std::vector<OpCase>& more : {makeCurveCases(), makeLutCases()})
            all.insert(all.end(), more.begin(), more.end());
        return all;
    }();
    return cases;
}

std::vector<std::pair<PixelFormat, PixelFormat>> formatPairsOf(const OpCase& opCase)
{
    const auto& formats = Twin::allFormats();
    std::vector<std::pair<PixelFormat, PixelFormat>> pairs;
    for (size_t in = 0; in < formats.size(); ++in)
        for (size_t out = 0; out < formats.size(); ++out)
            if (!opCase.isThinned || (3 * in + out) % 8 == 0) pairs.emplace_back(formats[in], formats[out]);
    return pairs;
}

const OpCase& opCaseNamed(const std::string& name)
{
    const auto& cases = allOpCases();
    const auto found = std::find_if(cases.begin(), cases.end(), [&](const OpCase& one) { return one.name == name; });
    if (found == cases.end()) throw std::out_of_range("no such case: " + name);
    return *found;
}

TransformPtr makeTransform(const OpCase& opCase)
{
    if (opCase.isOneDocument) return read(opCase.ops);
    TransformPtr transform = makeTransform(opCase.ops.front());
    for (size_t i = 1; i < opCase.ops.size(); ++i) {
        TransformPtr longer;
        check(concatenateTransforms(transform, makeTransform(opCase.ops[i]), longer));
        transform = longer;
    }
    return transform;
}

TransformPtr finalizedCopy(const TransformPtr& transform, PixelFormat in, PixelFormat out)
{
    TransformPtr finalized;
    check(finalize(transform->clone(), in, out, RENDERER_CPU, OPTIMIZER_OFF, RESOLVE_GRAPHICS_MONITOR, finalized));
    return finalized;
}

} // namespace PixelTest
