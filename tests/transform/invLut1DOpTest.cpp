#include "transform/invLut1DOp.h"

#include "tests/utils/failure.h"
#include "transform/matrixOp.h"
#include "transform/opList.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <ostream>
#include <random>

using namespace Color;

namespace Color {

bool operator==(const InvLut1DOp::Run& a, const InvLut1DOp::Run& b)
{
    return a.isIncreasing == b.isIncreasing && a.start == b.start && a.end == b.end;
}

std::ostream& operator<<(std::ostream& stream, const InvLut1DOp::Run& run)
{
    return stream << (run.isIncreasing ? "rising" : "not rising") << " from " << run.start << " to " << run.end;
}

} // namespace Color

namespace {

using Values = Array::Values;
using Run = InvLut1DOp::Run;

const float kNan = std::numeric_limits<float>::quiet_NaN();
const float kInfinity = std::numeric_limits<float>::infinity();
const Failure kUnsupportedRawHalfs{0x2040012, "COLOR:TRANSFORM:LUT_1D",
                                   "Unsupported raw half output lut for inverse operation"};

Run rising(uint32_t start, uint32_t end) { return {true, start, end}; }
Run notRising(uint32_t start, uint32_t end) { return {false, start, end}; }

/// A LUT of this one component; red, green and blue when there are three curves.
Lut1DOp makeLut(const std::vector<Values>& curves)
{
    const auto length = static_cast<uint32_t>(curves[0].size());
    const auto components = static_cast<uint32_t>(curves.size());
    Lut1DOp op(length);
    op.getArray().setNumColorComponents(components);
    for (uint32_t i = 0; i < length; ++i) {
        for (uint32_t component = 0; component < components; ++component)
            op.getArray().setValue(i * components + component, curves[component][i]);
    }
    return op;
}

InvLut1DOp makeInverse(const std::vector<Values>& curves) { return InvLut1DOp(makeLut(curves)); }

Values curveOf(const Lut1DOp& op, std::size_t component)
{
    Values curve;
    for (std::size_t i = component; i < op.getArray().getValues().size(); i += op.getArray().getNumColorComponents())
        curve.push_back(op.getArray().getValues()[i]);
    return curve;
}

/// Sets up one curve and expects what becomes of it.
void expectSetUp(const Values& curve, const Values& monotonic, const Run& run)
{
    const InvLut1DOp op = makeInverse({curve});
    EXPECT_EQ(curveOf(op, 0), monotonic);
    EXPECT_EQ(op.getRun(0), run);
}

/// A half-domain LUT whose three curves map every half code to the value of the function.
template <class Function>
Lut1DOp makeHalfDomain(Function&& valueOfCode)
{
    Lut1DOp op(BIT_DEPTH_16f, BIT_DEPTH_32f, HALF_FLAGS_HALF_DOMAIN);
    for (uint32_t code = 0; code < 65536; ++code) {
        for (std::size_t component = 0; component < 3; ++component)
            op.getArray().setValue(3 * code + component, valueOfCode(code));
    }
    return op;
}

/// Position of a finite half code in the order of values.
uint32_t positionOf(uint32_t code) { return code & 0x8000 ? 0x7bffU - (code & 0x7fff) : 0x7c00U + code; }

bool isFinite(uint32_t code) { return (code & 0x7c00) != 0x7c00; }

std::unique_ptr<Lut1DOp> inverseOf(const InvLut1DOp& op)
{
    OpList list;
    op.appendInverse(list);
    EXPECT_EQ(list.size(), 1U);
    EXPECT_EQ(list.get(0)->getOpType(), OP_LUT_1D);
    return std::make_unique<Lut1DOp>(dynamic_cast<const Lut1DOp&>(*list.get(0)));
}

} // namespace

TEST(InvLut1DOp, isExactUnlessTheExactStyleWouldInvertNothing)
{
    EXPECT_EQ(InvLut1DOp(Lut1DOp(3)).getStyle(), InvLut1DOp::STYLE_EXACT);
    EXPECT_EQ(InvLut1DOp(Lut1DOp(BIT_DEPTH_32f, BIT_DEPTH_32f, HALF_FLAGS_HALF_DOMAIN)).getStyle(),
              InvLut1DOp::STYLE_FAST);
    EXPECT_EQ(InvLut1DOp::getDefaultStyle(HALF_FLAGS_NONE), InvLut1DOp::STYLE_EXACT);
    EXPECT_EQ(InvLut1DOp::getDefaultStyle(HALF_FLAGS_RAW_HALFS), InvLut1DOp::STYLE_EXACT);
    EXPECT_EQ(InvLut1DOp::getDefaultStyle(HALF_FLAGS_HALF_DOMAIN_RAW_HALFS), InvLut1DOp::STYLE_FAST);
}

TEST(InvLut1DOp, takesTheTextsTableAndFlagsOfALut)
{
    Lut1DOp lut(BIT_DEPTH_8i, BIT_DEPTH_10i, "id", "name", {"d"}, Lut1DOp::INTERPOLATION_LINEAR, 65536,
                HALF_FLAGS_HALF_DOMAIN);
    lut.getIndexMapping().resize(2);
    lut.getBypass()->set(true);
    const InvLut1DOp op(lut);
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(op.getId(), "id");
    EXPECT_EQ(op.getName(), "name");
    EXPECT_EQ(op.getDescriptions(), Descriptions{"d"});
    EXPECT_EQ(op.getInterpolation(), Lut1DOp::INTERPOLATION_LINEAR);
    EXPECT_EQ(op.getHalfFlags(), HALF_FLAGS_HALF_DOMAIN);
    EXPECT_EQ(op.getArray().getLength(), 65536U);
    EXPECT_EQ(op.getArray().getValues()[3 * 0x3c00], 1023.0F);
    EXPECT_EQ(op.getStyle(), InvLut1DOp::STYLE_FAST);
    EXPECT_EQ(op.getHueAdjust(), Lut1DOp::HUE_ADJUST_NONE);
    EXPECT_EQ(op.getIndexMapping().getDimension(), 0U);
    EXPECT_FALSE(op.getBypass()->get());
}

TEST(InvLut1DOp, constructorGivesTheIdentityOfTheInDepth)
{
    const InvLut1DOp op(BIT_DEPTH_10i, BIT_DEPTH_8i, "id", "name", {"d"}, Lut1DOp::INTERPOLATION_LINEAR, 3,
                        HALF_FLAGS_NONE);
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(op.getId(), "id");
    EXPECT_EQ(op.getName(), "name");
    EXPECT_EQ(op.getDescriptions(), Descriptions{"d"});
    EXPECT_EQ(op.getInterpolation(), Lut1DOp::INTERPOLATION_LINEAR);
    EXPECT_EQ(curveOf(op, 1), (Values{0, 511.5F, 1023}));
    EXPECT_EQ(op.getRun(2), rising(0, 2));
    EXPECT_TRUE(op.isNoOp());
}

TEST(InvLut1DOp, saysWhatItIs)
{
    InvLut1DOp op(Lut1DOp(4));
    EXPECT_EQ(op.getOpType(), OP_INVERSE_LUT_1D);
    EXPECT_EQ(op.getOpTypeName(), "Inverse LUT 1D");
    EXPECT_EQ(op.getMinimumVersion(), 1.3F);
    op.setHueAdjust(Lut1DOp::HUE_ADJUST_DW3);
    EXPECT_EQ(op.getMinimumVersion(), 1.4F);
}

TEST(InvLut1DOp, rawHalfsAreRefused)
{
    Lut1DOp lut(4);
    lut.setHalfFlags(HALF_FLAGS_RAW_HALFS);
    EXPECT_EQ(failureOf([&] { InvLut1DOp op(lut); }), kUnsupportedRawHalfs);
    lut.setHalfFlags(HALF_FLAGS_HALF_DOMAIN_RAW_HALFS);
    EXPECT_EQ(failureOf([&] { InvLut1DOp op(lut); }), kUnsupportedRawHalfs);
}

TEST(InvLut1DOp, stylesHaveNames)
{
    EXPECT_STREQ(InvLut1DOp::getStyleName(InvLut1DOp::STYLE_EXACT), "exact");
    EXPECT_STREQ(InvLut1DOp::getStyleName(InvLut1DOp::STYLE_FAST), "fast");
    EXPECT_STREQ(InvLut1DOp::getStyleName(static_cast<InvLut1DOp::Style>(2)), "");
    EXPECT_EQ(InvLut1DOp::styleNamed("exact"), InvLut1DOp::STYLE_EXACT);
    EXPECT_EQ(InvLut1DOp::styleNamed("Fast"), InvLut1DOp::STYLE_FAST);
    EXPECT_EQ(InvLut1DOp::styleNamed("EXACT"), InvLut1DOp::STYLE_EXACT);

    InvLut1DOp op(Lut1DOp(4));
    op.setStyle(InvLut1DOp::STYLE_FAST);
    EXPECT_EQ(op.getStyle(), InvLut1DOp::STYLE_FAST);
}

TEST(InvLut1DOp, unknownStylesAreRefused)
{
    const std::string category = "COLOR:TRANSFORM:LUT_1D";
    EXPECT_EQ(failureOf([] { InvLut1DOp::styleNamed("quick"); }),
              (Failure{0x2040011, category, "Unrecognized Lut1D inverse style: quick"}));
    EXPECT_EQ(failureOf([] { InvLut1DOp::styleNamed("fast "); }),
              (Failure{0x2040011, category, "Unrecognized Lut1D inverse style: fast "}));
    const Failure invalid{0x2040010, category, "Invalid Lut1D inverse style"};
    EXPECT_EQ(failureOf([] { InvLut1DOp::styleNamed(""); }), invalid);
    EXPECT_EQ(failureOf([] { InvLut1DOp::styleNamed(nullptr); }), invalid);
}

TEST(InvLut1DOp, risingCurveStaysAsItIs)
{
    expectSetUp({0, 0.25F, 0.5F, 0.75F, 1}, {0, 0.25F, 0.5F, 0.75F, 1}, rising(0, 4));
    expectSetUp({-1, 0.5F, 7}, {-1, 0.5F, 7}, rising(0, 2));
}

TEST(InvLut1DOp, fallingCurveStaysAsItIs) { expectSetUp({1, 0.75F, 0.5F, 0}, {1, 0.75F, 0.5F, 0}, notRising(0, 3)); }

TEST(InvLut1DOp, componentsAreSetUpOneByOne)
{
    const InvLut1DOp op = makeInverse({{0, 1, 2, 3}, {3, 2, 1, 1}, {5, 5, 6, 5}});
    EXPECT_EQ(op.getRun(0), rising(0, 3));
    EXPECT_EQ(op.getRun(1), notRising(0, 2));
    EXPECT_EQ(op.getRun(2), rising(1, 2));
    EXPECT_EQ(curveOf(op, 0), (Values{0, 1, 2, 3}));
    EXPECT_EQ(curveOf(op, 1), (Values{3, 2, 1, 1}));
    EXPECT_EQ(curveOf(op, 2), (Values{5, 5, 6, 6}));
}

TEST(InvLut1DOp, singleCurveRunsForAllComponents)
{
    const InvLut1DOp op = makeInverse({{0, 0, 1, 1}});
    for (std::size_t component = 0; component < 3; ++component)
        EXPECT_EQ(op.getRun(component), rising(1, 2)) << component;
}

TEST(InvLut1DOp, reversalsBecomeFlat)
{
    expectSetUp({0, 2, 1, 1.5F, 3, 4}, {0, 2, 2, 2, 3, 4}, rising(0, 5));
    expectSetUp({4, 2, 3, 2.5F, 1, 0}, {4, 2, 2, 2, 1, 0}, notRising(0, 5));
    // A peak flattens all that lies behind it.
    expectSetUp({0, 9, 1, 2, 3}, {0, 9, 9, 9, 9}, rising(0, 1));
}

TEST(InvLut1DOp, theLutThatIsInvertedIsNotChanged)
{
    const Lut1DOp lut = makeLut({{0, 2, 1, 3}});
    const InvLut1DOp op(lut);
    EXPECT_EQ(curveOf(op, 0), (Values{0, 2, 2, 3}));
    EXPECT_EQ(curveOf(lut, 0), (Values{0, 2, 1, 3}));
}

TEST(InvLut1DOp, flatEndsAreLeftOutOfTheRun)
{
    expectSetUp({0, 0, 0, 1, 2, 3, 3}, {0, 0, 0, 1, 2, 3, 3}, rising(2, 5));
    expectSetUp({3, 3, 2, 1, 1, 1}, {3, 3, 2, 1, 1, 1}, notRising(1, 3));
    expectSetUp({0, 0, 1, 1}, {0, 0, 1, 1}, rising(1, 2));
    // A flat stretch in between is not left out.
    expectSetUp({0, 1, 1, 2}, {0, 1, 1, 2}, rising(0, 3));
}

TEST(InvLut1DOp, flatCurveStartsAndEndsAtZero)
{
    expectSetUp({0.5F, 0.5F, 0.5F, 0.5F}, {0.5F, 0.5F, 0.5F, 0.5F}, notRising(0, 0));
    expectSetUp({0, 0}, {0, 0}, notRising(0, 0));
    expectSetUp({-0.0F, 0.0F, -0.0F}, {0, 0, 0}, notRising(0, 0));
}

TEST(InvLut1DOp, secondLastValueTellsTheDirection)
{
    // The drop to the last value does not count, nor does a rise to it.
    expectSetUp({0, 1, 2, -5}, {0, 1, 2, 2}, rising(0, 2));
    expectSetUp({2, 1, 0, 5}, {2, 1, 0, 0}, notRising(0, 2));
    expectSetUp({1, 1, 1, 2}, {1, 1, 1, 1}, notRising(0, 0));
}

TEST(InvLut1DOp, twoEntriesNeverRise)
{
    expectSetUp({0, 1}, {0, 0}, notRising(0, 0));
    expectSetUp({1, 0}, {1, 0}, notRising(0, 1));
}

TEST(InvLut1DOp, singleEntryIsFlat)
{
    expectSetUp({0.5F}, {0.5F}, notRising(0, 0));
    expectSetUp({kNan}, {0.0F}, notRising(0, 0));
}

TEST(InvLut1DOp, nanBecomesTheValueBeforeIt)
{
    expectSetUp({0, 1, kNan, 3, 4}, {0, 1, 1, 3, 4}, rising(0, 4));
    expectSetUp({4, kNan, kNan, 3, 1}, {4, 4, 4, 3, 1}, notRising(2, 4));
    expectSetUp({0, 1, 2, kNan}, {0, 1, 2, 2}, rising(0, 2));
    // The direction is that of the numbers.
    expectSetUp({0, 1, kNan, 2}, {0, 1, 1, 2}, rising(0, 3));
}

TEST(InvLut1DOp, nanAtTheStartBecomesTheFirstNumber)
{
    expectSetUp({kNan, kNan, 1, 2, 3}, {1, 1, 1, 2, 3}, rising(2, 4));
    expectSetUp({kNan, 3, 1, 0}, {3, 3, 1, 0}, notRising(1, 3));
    expectSetUp({kNan, kNan, kNan}, {0, 0, 0}, notRising(0, 0));
}

TEST(InvLut1DOp, infinitiesArePartOfTheCurve)
{
    expectSetUp({-kInfinity, 0, 1, kInfinity}, {-kInfinity, 0, 1, kInfinity}, rising(0, 3));
    expectSetUp({-kInfinity, -kInfinity, 0, kInfinity, kInfinity}, {-kInfinity, -kInfinity, 0, kInfinity, kInfinity},
                rising(1, 3));
    expectSetUp({kInfinity, 0, -kInfinity}, {kInfinity, 0, -kInfinity}, notRising(0, 2));
    expectSetUp({0, kInfinity, 1, 2}, {0, kInfinity, kInfinity, kInfinity}, rising(0, 1));
}

TEST(InvLut1DOp, anyCurveBecomesMonotonicBetweenItsEnds)
{
    std::mt19937 random(20151);
    std::uniform_int_distribution<int> level(0, 6);
    std::uniform_int_distribution<std::size_t> lengths(2, 9);
    for (int round = 0; round < 3000; ++round) {
        Values curve(lengths(random));
        for (float& value : curve)
            value = static_cast<float>(level(random));
        if (level(random) == 0) curve[curve.size() / 2] = kNan;
        SCOPED_TRACE(testing::PrintToString(curve));

        const InvLut1DOp op = makeInverse({curve});
        const Values result = curveOf(op, 0);
        const InvLut1DOp::Run run = op.getRun(0);
        for (std::size_t i = 1; i < result.size(); ++i) {
            ASSERT_TRUE(run.isIncreasing ? result[i] >= result[i - 1] : result[i] <= result[i - 1]);
        }
        ASSERT_LE(run.start, run.end);
        ASSERT_LT(run.end, result.size());
        for (std::size_t i = 0; i < result.size(); ++i) {
            ASSERT_EQ(i <= run.start, result[i] == result.front() && (run.end != 0 || i == 0));
            ASSERT_EQ(i >= run.end, result[i] == result.back());
        }
    }
}

TEST(InvLut1DOp, setUpAgainFollowsAChangedTable)
{
    InvLut1DOp op = makeInverse({{0, 1, 2, 3}});
    op.getArray().getValues() = {3, 4, 1, 1};
    op.setUp();
    EXPECT_EQ(curveOf(op, 0), (Values{3, 3, 1, 1}));
    EXPECT_EQ(op.getRun(0), notRising(1, 2));
    const Values before = op.getArray().getValues();
    op.setUp();
    EXPECT_EQ(op.getArray().getValues(), before) << "a monotonic curve stays";
    EXPECT_EQ(op.getRun(0), notRising(1, 2));
}

TEST(InvLut1DOp, tablesOfWrongSizeAreLeftAlone)
{
    InvLut1DOp op = makeInverse({{0, 2, 1, 3}, {0, 1, 2, 3}, {0, 1, 2, 3}});
    op.getArray().getValues() = {0, 0, 0, 2, 2, 2, 1, 1, 1, 3, 3};
    op.setUp();
    EXPECT_EQ(op.getArray().getValues(), (Values{0, 0, 0, 2, 2, 2, 1, 1, 1, 3, 3}));
    EXPECT_EQ(op.getRun(0), notRising(0, 0));

    const InvLut1DOp empty(Lut1DOp(0));
    EXPECT_EQ(empty.getRun(0), notRising(0, 0));

    Lut1DOp halfs(BIT_DEPTH_16f, BIT_DEPTH_16f, {}, {}, {}, Lut1DOp::INTERPOLATION_DEFAULT, 1024,
                  HALF_FLAGS_HALF_DOMAIN);
    InvLut1DOp inverse(halfs);
    EXPECT_EQ(inverse.getRun(0), notRising(0, 0));
    EXPECT_EQ(failureOf([&] { inverse.validate(); }),
              (Failure{0x204000e, "COLOR:TRANSFORM:LUT_1D",
                       "1024 entries found, 65536 req'd for halfDomain lut Inverse LUT 1D: Inverse LUT 1D "}));
}

TEST(InvLut1DOp, componentsBeyondBlueAreNotWalked)
{
    Lut1DOp lut(2);
    lut.getArray().resize(2, 4);
    lut.getArray().getValues() = {1, 1, 1, 1, 0, 0, 2, 2};
    InvLut1DOp op(lut);
    EXPECT_EQ(op.getArray().getValues(), (Values{1, 1, 1, 1, 0, 0, 1, 2}));
    EXPECT_EQ(op.getRun(0), notRising(0, 1));
    EXPECT_EQ(op.getRun(2), notRising(0, 0));
    EXPECT_EQ(failureOf([&] { op.validate(); }).message,
              "Array content illegal: Array content for Inverse LUT 1D illegal");
}

TEST(InvLut1DOp, halfCodesAreCountedInTheOrderOfTheirValues)
{
    EXPECT_EQ(InvLut1DOp::kFiniteHalfs, 63488U);
    EXPECT_EQ(InvLut1DOp::halfCodeAt(0), 0xfbffU);
    EXPECT_EQ(InvLut1DOp::halfCodeAt(0x7bff), 0x8000U);
    EXPECT_EQ(InvLut1DOp::halfCodeAt(0x7c00), 0x0000U);
    EXPECT_EQ(InvLut1DOp::halfCodeAt(0x7c01), 0x0001U);
    EXPECT_EQ(InvLut1DOp::halfCodeAt(InvLut1DOp::kFiniteHalfs - 1), 0x7bffU);
    for (uint32_t code = 0; code < 65536; ++code) {
        if (isFinite(code)) {
            ASSERT_EQ(InvLut1DOp::halfCodeAt(positionOf(code)), code);
        }
    }
}

TEST(InvLut1DOp, halfDomainIdentityRisesThroughout)
{
    const InvLut1DOp op(Lut1DOp(BIT_DEPTH_16f, BIT_DEPTH_32f, HALF_FLAGS_HALF_DOMAIN));
    for (std::size_t component = 0; component < 3; ++component)
        EXPECT_EQ(op.getRun(component), rising(0, InvLut1DOp::kFiniteHalfs - 1));
    EXPECT_TRUE(op.isNoOp()) << "the identity was monotonic";
    EXPECT_EQ(op.getArray().getValues()[3 * 0x7c00], kInfinity);
    EXPECT_EQ(op.getArray().getValues()[3 * 0xfc00], -kInfinity);
    EXPECT_TRUE(std::isnan(op.getArray().getValues()[3 * 0x7e00]));
}

TEST(InvLut1DOp, halfDomainIsWalkedInTheOrderOfItsInputs)
{
    // By value it falls down to -2, is flat to 2 and falls again. By code it would rise and fall.
    const auto value = [](uint32_t code) {
        if (!isFinite(code)) return 5.0F;
        const uint32_t position = positionOf(code);
        if (position < positionOf(0xc000)) return -static_cast<float>(position);
        if (position <= positionOf(0x4000)) return -40000.0F;
        return -static_cast<float>(position) - 1.0F;
    };
    const InvLut1DOp op(makeHalfDomain(value));
    EXPECT_EQ(op.getRun(0), notRising(0, InvLut1DOp::kFiniteHalfs - 1));
    for (uint32_t code = 0; code < 65536; ++code)
        ASSERT_EQ(op.getArray().getValues()[3 * code], value(code)) << code;
}

TEST(InvLut1DOp, halfDomainReversalsBecomeFlat)
{
    // A curve that drops to 0 for all negatives but the lowest one, and rises from 1 to 2.
    Lut1DOp lut = makeHalfDomain([](uint32_t code) {
        if (!isFinite(code)) return kNan;
        if (code & 0x8000) return code == 0xfbff ? 0.5F : 0.0F;
        return code <= 0x3c00 ? 0.0F : 2.0F;
    });
    const InvLut1DOp op(lut);
    EXPECT_EQ(op.getRun(1), rising(positionOf(0x3c00), positionOf(0x3c01)));
    const auto at = [&](uint32_t code) { return op.getArray().getValues()[3 * code + 1]; };
    EXPECT_EQ(at(0xfbff), 0.5F);
    EXPECT_EQ(at(0xfbfe), 0.5F);
    EXPECT_EQ(at(0x8000), 0.5F);
    EXPECT_EQ(at(0x0000), 0.5F);
    EXPECT_EQ(at(0x3c00), 0.5F);
    EXPECT_EQ(at(0x3c01), 2.0F);
    EXPECT_EQ(at(0x7bff), 2.0F);
    for (const uint32_t code : {0x7c00U, 0x7fffU, 0xfc00U, 0xffffU})
        EXPECT_TRUE(std::isnan(at(code))) << "entries of infinite and NaN inputs stay";
}

TEST(InvLut1DOp, inDepthRescalesTheTable)
{
    InvLut1DOp op = makeInverse({{0, 0.5F, 2, 1}, {1, 0.25F, 0, 0}, {0, 0, 1, 1}});
    op.setInBitDepth(BIT_DEPTH_8i);
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(curveOf(op, 0), (Values{0, 127.5F, 510, 510}));
    EXPECT_EQ(curveOf(op, 1), (Values{255, 63.75F, 0, 0}));
    EXPECT_EQ(op.getRun(0), rising(0, 2));
    EXPECT_EQ(op.getRun(1), notRising(0, 2));

    const float factor = 1023.0F / 255.0F;
    op.setInBitDepth(BIT_DEPTH_10i);
    EXPECT_EQ(curveOf(op, 0), (Values{0, 127.5F * factor, 510 * factor, 510 * factor}));
}

TEST(InvLut1DOp, outDepthLeavesTheTable)
{
    InvLut1DOp op = makeInverse({{0, 0.5F, 1}});
    op.setOutBitDepth(BIT_DEPTH_8i);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(curveOf(op, 0), (Values{0, 0.5F, 1}));
}

TEST(InvLut1DOp, equalMaximaLeaveTheTable)
{
    InvLut1DOp op = makeInverse({{0.1F, 0.2F, 0.3F}});
    op.setInBitDepth(BIT_DEPTH_16f);
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(curveOf(op, 0), (Values{0.1F, 0.2F, 0.3F}));
}

TEST(InvLut1DOp, appendingToAListRescalesTheTable)
{
    OpList list;
    list.append(new MatrixOp(BIT_DEPTH_32f, BIT_DEPTH_8i));
    list.append(new InvLut1DOp(makeLut({{0, 0.5F, 1}})));
    EXPECT_EQ(curveOf(dynamic_cast<const Lut1DOp&>(*list.get(1)), 0), (Values{0, 127.5F, 255}));
}

TEST(InvLut1DOp, noOpComparesAtTheInDepth)
{
    InvLut1DOp op(Lut1DOp(BIT_DEPTH_8i, BIT_DEPTH_10i, HALF_FLAGS_NONE));
    EXPECT_TRUE(op.isNoOp());
    EXPECT_FALSE(op.isIdentity()) << "the depths differ";
    op.setInBitDepth(BIT_DEPTH_8i);
    EXPECT_TRUE(op.isNoOp());
    EXPECT_TRUE(op.isIdentity());
    op.setOutBitDepth(BIT_DEPTH_32f);
    EXPECT_TRUE(op.isNoOp()) << "the out depth has no part in it";

    op.getArray().setValue(0, 255.0F * 1e-6F);
    EXPECT_TRUE(op.isNoOp());
    op.getArray().setValue(0, std::nextafter(255.0F * 1e-6F, 1.0F));
    EXPECT_FALSE(op.isNoOp());
    EXPECT_FALSE(InvLut1DOp(Lut1DOp(1)).isNoOp());
}

TEST(InvLut1DOp, inverseTwiceGivesTheMonotonicLut)
{
    Lut1DOp lut(BIT_DEPTH_8i, BIT_DEPTH_10i, "id", "name", {"d"}, Lut1DOp::INTERPOLATION_LINEAR, 4, HALF_FLAGS_NONE);
    lut.getArray().getValues() = {0, 9, 1, 500, 5, 1, 400, 6, 2, 1023, 1, 3};
    const InvLut1DOp inverse(lut);
    const std::unique_ptr<Lut1DOp> twice = inverseOf(inverse);
    EXPECT_EQ(twice->getOpTypeName(), "LUT 1D");
    EXPECT_EQ(twice->getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(twice->getOutBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(twice->getId(), "id");
    EXPECT_EQ(twice->getName(), "name");
    EXPECT_EQ(twice->getDescriptions(), Descriptions{"d"});
    EXPECT_EQ(twice->getInterpolation(), Lut1DOp::INTERPOLATION_LINEAR);
    EXPECT_EQ(curveOf(*twice, 0), (Values{0, 500, 500, 1023}));
    EXPECT_EQ(curveOf(*twice, 1), (Values{9, 5, 5, 1}));
    EXPECT_EQ(curveOf(*twice, 2), (Values{1, 1, 2, 3}));
}

TEST(InvLut1DOp, inverseIsACopyApartFromTheDepths)
{
    InvLut1DOp op = makeInverse({{0, 0.5F, 1}});
    op.setOutBitDepth(BIT_DEPTH_10i);
    op.setHueAdjust(Lut1DOp::HUE_ADJUST_DW3);
    op.getIndexMapping().resize(2);
    op.getBypass()->set(true);
    const std::unique_ptr<Lut1DOp> lut = inverseOf(op);
    EXPECT_EQ(lut->getInBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(lut->getOutBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(curveOf(*lut, 0), (Values{0, 0.5F, 1})) << "the table is not rescaled";
    EXPECT_EQ(lut->getHueAdjust(), Lut1DOp::HUE_ADJUST_DW3);
    EXPECT_EQ(lut->getIndexMapping().getDimension(), 2U);
    EXPECT_TRUE(lut->getBypass()->get());
}

TEST(InvLut1DOp, cloneCopiesEverything)
{
    InvLut1DOp op = makeInverse({{0, 0, 2, 1}});
    op.setStyle(InvLut1DOp::STYLE_FAST);
    op.setName("n");
    op.getBypass()->set(true);
    const std::unique_ptr<Op> clone(op.clone());
    EXPECT_TRUE(clone->isEqual(op));
    const auto& copy = dynamic_cast<const InvLut1DOp&>(*clone);
    EXPECT_EQ(copy.getStyle(), InvLut1DOp::STYLE_FAST);
    EXPECT_EQ(copy.getRun(1), rising(1, 2));
    EXPECT_TRUE(copy.getBypass()->get());
}

TEST(InvLut1DOp, isEqualComparesEveryParameter)
{
    const InvLut1DOp op(Lut1DOp(4));
    const auto isEqualAfter = [&](auto&& change) {
        InvLut1DOp other(op);
        change(other);
        EXPECT_EQ(op.isEqual(other), other.isEqual(op));
        return op.isEqual(other);
    };
    EXPECT_TRUE(isEqualAfter([](InvLut1DOp&) {}));
    EXPECT_FALSE(isEqualAfter([](InvLut1DOp& other) { other.setStyle(InvLut1DOp::STYLE_FAST); }));
    EXPECT_FALSE(isEqualAfter([](InvLut1DOp& other) { other.getArray().setValue(3, 0.3F); }));
    EXPECT_FALSE(isEqualAfter([](InvLut1DOp& other) { other.setOutBitDepth(BIT_DEPTH_16f); }));
    EXPECT_FALSE(isEqualAfter([](InvLut1DOp& other) { other.setInterpolation(Lut1DOp::INTERPOLATION_LINEAR); }));
    EXPECT_FALSE(op.isEqual(MatrixOp()));
}
