#include "transform/rangeOp.h"

#include "tests/utils/failure.h"
#include "transform/matrixOp.h"
#include "transform/opList.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <memory>

using namespace Color;

namespace {

const double kNan = std::numeric_limits<double>::quiet_NaN();
const char* const kCategory = "COLOR:TRANSFORM:RANGE";
const Failure kTooClose{0x2070002, kCategory, "Range maxInValue too close to minInValue"};

const BitDepth kDepths[] = {BIT_DEPTH_8i, BIT_DEPTH_10i, BIT_DEPTH_12i, BIT_DEPTH_16i, BIT_DEPTH_16f, BIT_DEPTH_32f};

/// Maximum of a depth, by its own list.
double fullScale(BitDepth depth)
{
    switch (depth) {
    case BIT_DEPTH_8i:
        return 255.0;
    case BIT_DEPTH_10i:
        return 1023.0;
    case BIT_DEPTH_12i:
        return 4095.0;
    case BIT_DEPTH_16i:
        return 65535.0;
    default:
        return 1.0;
    }
}

bool isWhole(BitDepth depth) { return depth != BIT_DEPTH_16f && depth != BIT_DEPTH_32f; }

void expectSame(double actual, double expected, const char* what)
{
    if (std::isnan(expected)) {
        EXPECT_TRUE(std::isnan(actual)) << what << " is " << actual;
    } else {
        EXPECT_EQ(actual, expected) << what;
    }
}

/// Limits as fractions of the full scale of their side.
struct Limits
{
    double minIn, maxIn, minOut, maxOut;
};

/// Checks what the op derives, case by case over which limits are set.
void expectDerived(const RangeOp& op)
{
    const double in = fullScale(op.getInBitDepth());
    const double out = fullScale(op.getOutBitDepth());
    const bool wholeIn = isWhole(op.getInBitDepth());
    const bool wholeOut = isWhole(op.getOutBitDepth());
    const bool hasMin = op.getMinIn() == op.getMinIn();
    const bool hasMax = op.getMaxIn() == op.getMaxIn();

    double scale = out / in;
    double offset = 0.0;
    switch ((hasMin ? 1 : 0) + (hasMax ? 2 : 0)) {
    case 1:
        offset = op.getMinOut() - op.getMinIn() * scale;
        break;
    case 2:
        offset = op.getMaxOut() - op.getMaxIn() * scale;
        break;
    case 3:
        scale = (op.getMaxOut() - op.getMinOut()) / (op.getMaxIn() - op.getMinIn());
        offset = op.getMinOut() - scale * op.getMinIn();
        break;
    default:
        break;
    }

    double lower = wholeOut ? 0.0 : op.getMinOut();
    if (hasMin) {
        lower = wholeOut ? std::min(std::max(op.getMinOut(), 0.0), out) : op.getMinOut();
        if (wholeIn && op.getMinIn() < 0.0) lower = kNan;
    }
    double upper = wholeOut ? out : op.getMaxOut();
    if (hasMax) {
        upper = wholeOut ? std::min(std::max(op.getMaxOut(), 0.0), out) : op.getMaxOut();
        if (wholeIn && op.getMaxIn() > in) upper = kNan;
    }

    expectSame(op.getScale(), scale, "scale");
    expectSame(op.getOffset(), offset, "offset");
    expectSame(op.getAlphaScale(), out / in, "alpha scale");
    expectSame(op.getLowerBound(), lower, "lower bound");
    expectSame(op.getUpperBound(), upper, "upper bound");
}

} // namespace

TEST(RangeOp, defaultHasNoLimits)
{
    const RangeOp op;
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_32f);
    for (const double limit : {op.getMinIn(), op.getMaxIn(), op.getMinOut(), op.getMaxOut()}) {
        EXPECT_TRUE(std::isnan(limit));
    }
    EXPECT_EQ(op.getScale(), 1.0);
    EXPECT_EQ(op.getOffset(), 0.0);
    EXPECT_EQ(op.getAlphaScale(), 1.0);
    EXPECT_TRUE(std::isnan(op.getLowerBound()));
    EXPECT_TRUE(std::isnan(op.getUpperBound()));
}

TEST(RangeOp, constructorsStoreTheirArguments)
{
    const RangeOp named(BIT_DEPTH_8i, BIT_DEPTH_10i, "id", "name", {"d"});
    EXPECT_EQ(named.getId(), "id");
    EXPECT_EQ(named.getName(), "name");
    EXPECT_EQ(named.getDescriptions(), Descriptions{"d"});
    EXPECT_EQ(named.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(named.getOutBitDepth(), BIT_DEPTH_10i);
    EXPECT_TRUE(std::isnan(named.getMinIn()));

    const RangeOp limited(BIT_DEPTH_8i, BIT_DEPTH_10i, 1.0, 2.0, 3.0, 5.0);
    EXPECT_EQ(limited.getMinIn(), 1.0);
    EXPECT_EQ(limited.getMaxIn(), 2.0);
    EXPECT_EQ(limited.getMinOut(), 3.0);
    EXPECT_EQ(limited.getMaxOut(), 5.0);
}

TEST(RangeOp, saysWhatItIs)
{
    const RangeOp op;
    EXPECT_EQ(op.getOpType(), OP_RANGE);
    EXPECT_EQ(op.getOpTypeName(), "Range");
    EXPECT_EQ(op.getMinimumVersion(), 1.3F);
}

TEST(RangeOp, derivesAWorkedExample)
{
    // Video range of 8 bits onto the unit range.
    const RangeOp op(BIT_DEPTH_8i, BIT_DEPTH_32f, 16.0, 240.0, 0.0, 7.0);
    EXPECT_EQ(op.getScale(), 0.03125);
    EXPECT_EQ(op.getOffset(), -0.5);
    EXPECT_EQ(op.getLowerBound(), 0.0);
    EXPECT_EQ(op.getUpperBound(), 7.0);
    EXPECT_EQ(op.getAlphaScale(), 1.0 / 255.0);
}

TEST(RangeOp, oneSidedLimitsShiftByTheRatio)
{
    const RangeOp minOnly(BIT_DEPTH_32f, BIT_DEPTH_8i, 0.5, kNan, 100.0, kNan);
    EXPECT_EQ(minOnly.getScale(), 255.0);
    EXPECT_EQ(minOnly.getOffset(), -27.5);
    EXPECT_EQ(minOnly.getLowerBound(), 100.0);
    EXPECT_EQ(minOnly.getUpperBound(), 255.0);

    const RangeOp maxOnly(BIT_DEPTH_32f, BIT_DEPTH_8i, kNan, 0.5, kNan, 100.0);
    EXPECT_EQ(maxOnly.getScale(), 255.0);
    EXPECT_EQ(maxOnly.getOffset(), -27.5);
    EXPECT_EQ(maxOnly.getLowerBound(), 0.0);
    EXPECT_EQ(maxOnly.getUpperBound(), 100.0);
}

TEST(RangeOp, limitBeyondAnIntegerInputNeedsNoClamp)
{
    // At the very end of the integers the limit still counts; past it none can be met.
    const RangeOp atEnds(BIT_DEPTH_8i, BIT_DEPTH_32f, 0.0, 255.0, 0.25, 0.75);
    EXPECT_EQ(atEnds.getLowerBound(), 0.25);
    EXPECT_EQ(atEnds.getUpperBound(), 0.75);

    const RangeOp beyond(BIT_DEPTH_8i, BIT_DEPTH_32f, -0.5, 255.5, 0.25, 0.75);
    EXPECT_TRUE(std::isnan(beyond.getLowerBound()));
    EXPECT_TRUE(std::isnan(beyond.getUpperBound()));

    const RangeOp floatInput(BIT_DEPTH_32f, BIT_DEPTH_32f, -0.5, 255.5, 0.25, 0.75);
    EXPECT_EQ(floatInput.getLowerBound(), 0.25);
    EXPECT_EQ(floatInput.getUpperBound(), 0.75);
}

TEST(RangeOp, boundOfAnIntegerOutputLiesInsideIt)
{
    const RangeOp wide(BIT_DEPTH_32f, BIT_DEPTH_10i, 0.0, 1.0, -100.0, 2000.0);
    EXPECT_EQ(wide.getLowerBound(), 0.0);
    EXPECT_EQ(wide.getUpperBound(), 1023.0);

    const RangeOp above(BIT_DEPTH_32f, BIT_DEPTH_10i, 0.0, 1.0, 1500.0, 2000.0);
    EXPECT_EQ(above.getLowerBound(), 1023.0);
    EXPECT_EQ(above.getUpperBound(), 1023.0);

    const RangeOp below(BIT_DEPTH_32f, BIT_DEPTH_10i, 0.0, 1.0, -200.0, -100.0);
    EXPECT_EQ(below.getLowerBound(), 0.0);
    EXPECT_EQ(below.getUpperBound(), 0.0);

    const RangeOp floatOutput(BIT_DEPTH_32f, BIT_DEPTH_16f, 0.0, 1.0, -100.0, 2000.0);
    EXPECT_EQ(floatOutput.getLowerBound(), -100.0);
    EXPECT_EQ(floatOutput.getUpperBound(), 2000.0);
}

TEST(RangeOp, derivesForAllDepthsAndLimits)
{
    const double mins[] = {kNan, -0.25, 0.0, 0.125, 1.25};
    const double maxs[] = {kNan, -0.125, 0.75, 1.0, 1.5};
    for (const BitDepth in : kDepths) {
        for (const BitDepth out : kDepths) {
            for (const double minIn : mins) {
                for (const double maxIn : maxs) {
                    for (const double minOut : mins) {
                        for (const double maxOut : maxs) {
                            SCOPED_TRACE(testing::Message()
                                         << getBitDepthName(in) << " to " << getBitDepthName(out) << ", " << minIn
                                         << " " << maxIn << " to " << minOut << " " << maxOut);
                            const RangeOp op(in, out, minIn * fullScale(in), maxIn * fullScale(in),
                                             minOut * fullScale(out), maxOut * fullScale(out));
                            expectDerived(op);
                        }
                    }
                }
            }
        }
    }
}

TEST(RangeOp, settersCountWithTheNextDerive)
{
    RangeOp op(BIT_DEPTH_32f, BIT_DEPTH_32f);
    op.setMinIn(0.25);
    op.setMaxIn(0.75);
    op.setMinOut(1.0);
    op.setMaxOut(3.0);
    EXPECT_EQ(op.getScale(), 1.0);
    op.derive();
    EXPECT_EQ(op.getScale(), 4.0);
    EXPECT_EQ(op.getOffset(), 0.0);
    expectDerived(op);
}

TEST(RangeOp, inputLimitsMayNotBeTooClose)
{
    const auto make = [](double minIn, double maxIn) { RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, minIn, maxIn, 0.0, 1.0); };
    EXPECT_EQ(failureOf([&] { make(0.5, 0.5); }), kTooClose);
    EXPECT_EQ(failureOf([&] { make(0.0, 0.99e-6); }), kTooClose);
    EXPECT_EQ(failureOf([&] { make(0.99e-6, 0.0); }), kTooClose);
    EXPECT_EQ(failureOf([&] { make(0.0, 1e-6); }), kNoFailure);
    EXPECT_EQ(failureOf([&] { make(1e-6, 0.0); }), kNoFailure);

    RangeOp op(BIT_DEPTH_8i, BIT_DEPTH_8i, 1.0, 1.0001, 0.0, 255.0);
    EXPECT_EQ(failureOf([&] { op.setInBitDepth(BIT_DEPTH_32f); }), kTooClose);
}

TEST(RangeOp, validateChecksDepthsFirst)
{
    RangeOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, kNan, kNan, kNan);
    op.setOutBitDepth(BIT_DEPTH_UNKNOWN);
    EXPECT_EQ(failureOf([&] { op.validate(); }),
              (Failure{0x2010001, "COLOR:TRANSFORM:ALL", "'OutBitDepth' attribute missing in Range"}));
}

TEST(RangeOp, limitsOfAPairAreBothSetOrBothMissing)
{
    const auto failureOfLimits = [](const Limits& limits) {
        RangeOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, limits.minIn, limits.maxIn, limits.minOut, limits.maxOut);
        return failureOf([&] { op.validate(); });
    };
    const Failure min{0x2070001, kCategory, "In & Out Min limits must be both set or both missing"};
    const Failure max{0x2070001, kCategory, "In & Out Max limits must be both set or both missing"};
    EXPECT_EQ(failureOfLimits({0.0, kNan, kNan, kNan}), min);
    EXPECT_EQ(failureOfLimits({kNan, kNan, 0.0, kNan}), min);
    EXPECT_EQ(failureOfLimits({kNan, 1.0, kNan, kNan}), max);
    EXPECT_EQ(failureOfLimits({kNan, kNan, kNan, 1.0}), max);
    EXPECT_EQ(failureOfLimits({0.0, 1.0, kNan, kNan}), min) << "the minimum comes first";
    EXPECT_EQ(failureOfLimits({kNan, kNan, kNan, kNan}), kNoFailure);
    EXPECT_EQ(failureOfLimits({0.0, kNan, 0.0, kNan}), kNoFailure);
    EXPECT_EQ(failureOfLimits({kNan, 1.0, kNan, 1.0}), kNoFailure);
    EXPECT_EQ(failureOfLimits({0.0, 1.0, 0.0, 1.0}), kNoFailure);
}

TEST(RangeOp, maximumMayNotBeBelowMinimum)
{
    const Failure failure{0x2070003, kCategory, "Range maxValue less than minValue"};
    RangeOp in(BIT_DEPTH_32f, BIT_DEPTH_32f, 1.0, 0.5, 0.0, 1.0);
    EXPECT_EQ(failureOf([&] { in.validate(); }), failure);
    RangeOp out(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, 1.0, 1.0, 0.5);
    EXPECT_EQ(failureOf([&] { out.validate(); }), failure);
    RangeOp flat(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, 1.0, 0.5, 0.5);
    EXPECT_EQ(failureOf([&] { flat.validate(); }), kNoFailure);
}

TEST(RangeOp, inDepthRescalesInputLimits)
{
    RangeOp op(BIT_DEPTH_8i, BIT_DEPTH_32f, 51.0, 255.0, 0.25, 0.75);
    op.setInBitDepth(BIT_DEPTH_10i);
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(op.getMinIn(), 51.0 * (1023.0 / 255.0));
    EXPECT_EQ(op.getMaxIn(), 255.0 * (1023.0 / 255.0));
    EXPECT_EQ(op.getMinOut(), 0.25);
    EXPECT_EQ(op.getMaxOut(), 0.75);
    expectDerived(op);
}

TEST(RangeOp, outDepthRescalesOutputLimits)
{
    RangeOp op(BIT_DEPTH_8i, BIT_DEPTH_32f, 51.0, 255.0, 0.25, 0.75);
    op.setOutBitDepth(BIT_DEPTH_12i);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_12i);
    EXPECT_EQ(op.getMinIn(), 51.0);
    EXPECT_EQ(op.getMaxIn(), 255.0);
    EXPECT_EQ(op.getMinOut(), 0.25 * 4095.0);
    EXPECT_EQ(op.getMaxOut(), 0.75 * 4095.0);
    expectDerived(op);
}

TEST(RangeOp, rescalingLeavesMissingLimitsMissing)
{
    RangeOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.5, kNan, 0.5, kNan);
    op.setInBitDepth(BIT_DEPTH_8i);
    op.setOutBitDepth(BIT_DEPTH_16i);
    EXPECT_EQ(op.getMinIn(), 127.5);
    EXPECT_EQ(op.getMinOut(), 32767.5);
    EXPECT_TRUE(std::isnan(op.getMaxIn()));
    EXPECT_TRUE(std::isnan(op.getMaxOut()));
    expectDerived(op);
}

TEST(RangeOp, noOpWithoutLimitsBetweenAnyDepths)
{
    for (const BitDepth in : kDepths) {
        for (const BitDepth out : kDepths) {
            const RangeOp op(in, out);
            EXPECT_TRUE(op.isNoOp()) << getBitDepthName(in) << " to " << getBitDepthName(out);
            EXPECT_EQ(op.isIdentity(), in == out);
        }
    }
}

TEST(RangeOp, noOpEndsWithAnyInputLimit)
{
    EXPECT_FALSE(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, kNan, 0.0, kNan).isNoOp());
    EXPECT_FALSE(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, kNan, 1.0, kNan, 1.0).isNoOp());
    EXPECT_FALSE(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, 1.0, 0.0, 1.0).isNoOp());
}

TEST(RangeOp, scalesOtherThanLooksAtTheOffset)
{
    const auto withOffset = [](double offset) {
        return RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, kNan, offset, kNan);
    };
    EXPECT_FALSE(withOffset(0.0).scalesOtherThan(1.0));
    EXPECT_FALSE(withOffset(1e-6).scalesOtherThan(1.0));
    EXPECT_FALSE(withOffset(-1e-6).scalesOtherThan(1.0));
    EXPECT_TRUE(withOffset(1.01e-6).scalesOtherThan(1.0));
    EXPECT_TRUE(withOffset(-1.01e-6).scalesOtherThan(1.0));
}

TEST(RangeOp, scalesOtherThanComparesTheScaleRelatively)
{
    // Scale s, offset 0, alpha scale 1.
    const auto withScale = [](double s) { return RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, 1.0, 0.0, s); };
    EXPECT_FALSE(withScale(1.0).scalesOtherThan(1.0));
    EXPECT_FALSE(withScale(1.0 + 0.9e-6).scalesOtherThan(1.0));
    EXPECT_TRUE(withScale(1.0 + 1.1e-6).scalesOtherThan(1.0));
    EXPECT_FALSE(withScale(1.0 - 0.9e-6).scalesOtherThan(1.0));
    EXPECT_TRUE(withScale(1.0 - 1.1e-6).scalesOtherThan(1.0));
    EXPECT_TRUE(withScale(0.0).scalesOtherThan(1.0));
    EXPECT_TRUE(withScale(-1.0).scalesOtherThan(1.0));
}

TEST(RangeOp, scalesOtherThanLooksAtTheAlphaScale)
{
    // The scale is 1, as the limits say; the alpha scale is 255.
    const RangeOp op(BIT_DEPTH_32f, BIT_DEPTH_8i, 0.0, 1.0, 0.0, 1.0);
    EXPECT_EQ(op.getScale(), 1.0);
    EXPECT_TRUE(op.scalesOtherThan(1.0));
    EXPECT_TRUE(op.scalesOtherThan(255.0));
    EXPECT_FALSE(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_8i).scalesOtherThan(255.0));
    EXPECT_TRUE(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_8i).scalesOtherThan(1.0));
}

TEST(RangeOp, scalesOtherThanComparesSmallScalesAbsolutely)
{
    // Between 16i and 32f the ratio is about 1.5e-5: a relative step of 0.05 is an absolute one below a millionth.
    const double ratio = 1.0 / 65535.0;
    const RangeOp close(BIT_DEPTH_16i, BIT_DEPTH_32f, 0.0, 65535.0, 0.0, 1.05);
    EXPECT_FALSE(close.scalesOtherThan(ratio));
    const RangeOp apart(BIT_DEPTH_16i, BIT_DEPTH_32f, 0.0, 65535.0, 0.0, 1.07);
    EXPECT_TRUE(apart.scalesOtherThan(ratio));
}

TEST(RangeOp, inverseIsRefused)
{
    OpList list;
    EXPECT_EQ(failureOf([&] { RangeOp().appendInverse(list); }),
              (Failure{0x2010014, "COLOR:TRANSFORM:ALL", "Range inverse not supported"}));
}

TEST(RangeOp, cloneIsEqual)
{
    const RangeOp op(BIT_DEPTH_8i, BIT_DEPTH_32f, 16.0, kNan, 0.0, kNan);
    const std::unique_ptr<Op> clone(op.clone());
    EXPECT_TRUE(op.isEqual(*clone));
    const auto& range = dynamic_cast<const RangeOp&>(*clone);
    EXPECT_EQ(range.getOffset(), op.getOffset());
    EXPECT_EQ(range.getScale(), op.getScale());
}

TEST(RangeOp, isEqualComparesTheLimits)
{
    const RangeOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, 1.0, 0.0, 1.0);
    EXPECT_TRUE(op.isEqual(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, 1.0, 0.0, 1.0)));
    EXPECT_TRUE(RangeOp().isEqual(RangeOp())) << "limits that are not set are equal";
    EXPECT_FALSE(op.isEqual(RangeOp()));
    EXPECT_FALSE(op.isEqual(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.1, 1.0, 0.0, 1.0)));
    EXPECT_FALSE(op.isEqual(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, 1.1, 0.0, 1.0)));
    EXPECT_FALSE(op.isEqual(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, 1.0, 0.1, 1.0)));
    EXPECT_FALSE(op.isEqual(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, 1.0, 0.0, 1.1)));
    EXPECT_FALSE(op.isEqual(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f, 0.0, kNan, 0.0, kNan)));
    EXPECT_FALSE(RangeOp().isEqual(RangeOp(BIT_DEPTH_32f, BIT_DEPTH_16f)));
    EXPECT_FALSE(RangeOp().isEqual(MatrixOp()));
}
