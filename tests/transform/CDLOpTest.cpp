#include "transform/CDLOp.h"

#include "tests/utils/failure.h"
#include "transform/gammaOp.h"
#include "transform/opList.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <memory>

using namespace Color;

namespace {

const double kNan = std::numeric_limits<double>::quiet_NaN();
const double kInfinity = std::numeric_limits<double>::infinity();
const char* const kCategory = "COLOR:TRANSFORM:CDL";
const Failure kWrongCount{0x20c0003, kCategory, "The specified CDL must have 3 parameters"};

const CDLOp::Params kOnes{1.0, 1.0, 1.0};
const CDLOp::Params kZeros{0.0, 0.0, 0.0};

CDLOp makeOp(const CDLOp::Params& slope, const CDLOp::Params& offset, const CDLOp::Params& power, double saturation)
{
    return {BIT_DEPTH_32f, BIT_DEPTH_32f, CDLOp::STYLE_V1_2_FWD, slope, offset, power, saturation};
}

Failure failureOfOp(CDLOp op)
{
    return failureOf([&] { op.validate(); });
}

Failure failureOfSlope(const CDLOp::Params& slope) { return failureOfOp(makeOp(slope, kZeros, kOnes, 1.0)); }
Failure failureOfOffset(const CDLOp::Params& offset) { return failureOfOp(makeOp(kOnes, offset, kOnes, 1.0)); }
Failure failureOfPower(const CDLOp::Params& power) { return failureOfOp(makeOp(kOnes, kZeros, power, 1.0)); }
Failure failureOfSaturation(double saturation) { return failureOfOp(makeOp(kOnes, kZeros, kOnes, saturation)); }

Failure tooSmall(const std::string& name, const std::string& value)
{
    return {0x20c0004, kCategory, "Invalid " + name + " (" + value + "), " + name + " should be greater than 0.000000"};
}

} // namespace

TEST(CDLOp, defaultHasNeutralParameters)
{
    CDLOp op;
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getStyle(), CDLOp::STYLE_V1_2_FWD);
    EXPECT_EQ(op.getSlope(), kOnes);
    EXPECT_EQ(op.getOffset(), kZeros);
    EXPECT_EQ(op.getPower(), kOnes);
    EXPECT_EQ(op.getSaturation(), 1.0);
    EXPECT_EQ(failureOf([&] { op.validate(); }), kNoFailure);
}

TEST(CDLOp, constructorsStoreTheirArguments)
{
    const CDLOp named(BIT_DEPTH_8i, BIT_DEPTH_10i, "id", "name", {"d"});
    EXPECT_EQ(named.getId(), "id");
    EXPECT_EQ(named.getName(), "name");
    EXPECT_EQ(named.getDescriptions(), Descriptions{"d"});
    EXPECT_EQ(named.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(named.getOutBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(named.getSlope(), kOnes);

    const CDLOp full(BIT_DEPTH_8i, BIT_DEPTH_10i, CDLOp::STYLE_NO_CLAMP_REV, {1.0, 2.0, 3.0}, {4.0, 5.0, 6.0},
                     {7.0, 8.0, 9.0}, 0.5);
    EXPECT_EQ(full.getStyle(), CDLOp::STYLE_NO_CLAMP_REV);
    EXPECT_EQ(full.getSlope(), (CDLOp::Params{1.0, 2.0, 3.0}));
    EXPECT_EQ(full.getOffset(), (CDLOp::Params{4.0, 5.0, 6.0}));
    EXPECT_EQ(full.getPower(), (CDLOp::Params{7.0, 8.0, 9.0}));
    EXPECT_EQ(full.getSaturation(), 0.5);
}

TEST(CDLOp, settersStore)
{
    CDLOp op;
    op.setStyle(CDLOp::STYLE_V1_2_REV);
    op.setSlope({1.0, 2.0, 3.0});
    op.setOffset({4.0, 5.0, 6.0});
    op.setPower({7.0, 8.0, 9.0});
    op.setSaturation(0.5);
    EXPECT_TRUE(op.isEqual(CDLOp(BIT_DEPTH_32f, BIT_DEPTH_32f, CDLOp::STYLE_V1_2_REV, {1.0, 2.0, 3.0}, {4.0, 5.0, 6.0},
                                 {7.0, 8.0, 9.0}, 0.5)));
}

TEST(CDLOp, saysWhatItIs)
{
    const CDLOp op;
    EXPECT_EQ(op.getOpType(), OP_CDL);
    EXPECT_EQ(op.getOpTypeName(), "ASC CDL");
    EXPECT_EQ(op.getMinimumVersion(), 1.3F);
}

TEST(CDLOp, stylesHaveTheirNumbersAndNames)
{
    const char* const names[] = {"v1.2_Fwd", "v1.2_Rev", "noClampFwd", "noClampRev"};
    for (uint32_t i = 0; i < 4; ++i) {
        EXPECT_STREQ(CDLOp::getStyleName(static_cast<CDLOp::Style>(i)), names[i]);
        EXPECT_EQ(CDLOp::styleNamed(names[i]), i);
    }
    EXPECT_STREQ(CDLOp::getStyleName(static_cast<CDLOp::Style>(4)), "");
    EXPECT_EQ(CDLOp::styleNamed("V1.2_FWD"), CDLOp::STYLE_V1_2_FWD);
    EXPECT_EQ(CDLOp::styleNamed("noclamprev"), CDLOp::STYLE_NO_CLAMP_REV);
}

TEST(CDLOp, unknownStyleNameFails)
{
    EXPECT_EQ(failureOf([] { CDLOp::styleNamed("v1.2"); }),
              (Failure{0x20c0002, kCategory, "Unrecognized CDL style: v1.2"}));
}

TEST(CDLOp, missingStyleNameFails)
{
    const Failure failure{0x20c0001, kCategory, "Invalid CDL style"};
    EXPECT_EQ(failureOf([] { CDLOp::styleNamed(nullptr); }), failure);
    EXPECT_EQ(failureOf([] { CDLOp::styleNamed(""); }), failure);
}

TEST(CDLOp, validateChecksDepthsFirst)
{
    CDLOp op(BIT_DEPTH_UNKNOWN, BIT_DEPTH_32f);
    op.setSaturation(-1.0);
    EXPECT_EQ(failureOf([&] { op.validate(); }),
              (Failure{0x2010001, "COLOR:TRANSFORM:ALL", "'InBitDepth' attribute missing in ASC CDL"}));
}

TEST(CDLOp, listsHaveThreeValues)
{
    for (const CDLOp::Params& params : {CDLOp::Params{}, CDLOp::Params{1.0, 1.0}, CDLOp::Params{1.0, 1.0, 1.0, 1.0}}) {
        EXPECT_EQ(failureOfSlope(params), kWrongCount);
        EXPECT_EQ(failureOfOffset(params), kWrongCount);
        EXPECT_EQ(failureOfPower(params), kWrongCount);
    }
}

TEST(CDLOp, slopeIsAtLeastZero)
{
    const double leastNegative = std::nextafter(0.0, -1.0);
    EXPECT_EQ(failureOfSlope(kZeros), kNoFailure);
    EXPECT_EQ(failureOfSlope({-0.0, -0.0, -0.0}), kNoFailure);
    EXPECT_EQ(failureOfSlope({leastNegative, 1.0, 1.0}), tooSmall("slope", "-0.000000"));
    EXPECT_EQ(failureOfSlope({1.0, -1.0, 1.0}), tooSmall("slope", "-1.000000"));
    EXPECT_EQ(failureOfSlope({1.0, 1.0, -2.0}), tooSmall("slope", "-2.000000"));
}

TEST(CDLOp, powerIsGreaterThanZero)
{
    const double leastPositive = std::nextafter(0.0, 1.0);
    EXPECT_EQ(failureOfPower({leastPositive, leastPositive, leastPositive}), kNoFailure);
    EXPECT_EQ(failureOfPower({0.0, 1.0, 1.0}), tooSmall("power", "0.000000"));
    EXPECT_EQ(failureOfPower({1.0, -0.0, 1.0}), tooSmall("power", "-0.000000"));
    EXPECT_EQ(failureOfPower({1.0, 1.0, -1.0}), tooSmall("power", "-1.000000"));
}

TEST(CDLOp, saturationIsAtLeastZero)
{
    EXPECT_EQ(failureOfSaturation(0.0), kNoFailure);
    EXPECT_EQ(failureOfSaturation(-0.0), kNoFailure);
    EXPECT_EQ(failureOfSaturation(std::nextafter(0.0, 1.0)), kNoFailure);
    EXPECT_EQ(failureOfSaturation(std::nextafter(0.0, -1.0)), tooSmall("saturation", "-0.000000"));
    EXPECT_EQ(failureOfSaturation(-0.5), tooSmall("saturation", "-0.500000"));
}

TEST(CDLOp, checksSlopeThenPowerThenSaturation)
{
    const CDLOp::Params negative{-1.0, -1.0, -1.0};
    EXPECT_EQ(failureOfOp(makeOp(negative, kZeros, negative, -1.0)), tooSmall("slope", "-1.000000"));
    EXPECT_EQ(failureOfOp(makeOp(kOnes, kZeros, negative, -1.0)), tooSmall("power", "-1.000000"));
    EXPECT_EQ(failureOfOp(makeOp(negative, kZeros, {}, -1.0)), kWrongCount) << "sizes come first";
}

TEST(CDLOp, checkedParametersMayNotBeNan)
{
    EXPECT_EQ(failureOfSlope({1.0, kNan, 1.0}), tooSmall("slope", "nan"));
    EXPECT_EQ(failureOfPower({1.0, 1.0, kNan}), tooSmall("power", "nan"));
    EXPECT_EQ(failureOfSaturation(kNan), tooSmall("saturation", "nan"));
}

TEST(CDLOp, infinityIsJudgedByTheLowerBoundAlone)
{
    EXPECT_EQ(failureOfSlope({kInfinity, 1.0, 1.0}), kNoFailure);
    EXPECT_EQ(failureOfPower({kInfinity, 1.0, 1.0}), kNoFailure);
    EXPECT_EQ(failureOfSaturation(kInfinity), kNoFailure);
    EXPECT_EQ(failureOfSlope({-kInfinity, 1.0, 1.0}), tooSmall("slope", "-inf"));
    EXPECT_EQ(failureOfPower({-kInfinity, 1.0, 1.0}), tooSmall("power", "-inf"));
    EXPECT_EQ(failureOfSaturation(-kInfinity), tooSmall("saturation", "-inf"));
}

TEST(CDLOp, offsetHasNoBounds)
{
    EXPECT_EQ(failureOfOffset({-1000.0, 0.0, 1000.0}), kNoFailure);
    EXPECT_EQ(failureOfOffset({-kInfinity, kNan, kInfinity}), kNoFailure);
}

TEST(CDLOp, noOpWithNeutralParametersInEveryStyle)
{
    for (uint32_t style = 0; style < 4; ++style) {
        CDLOp op(BIT_DEPTH_8i, BIT_DEPTH_32f);
        op.setStyle(static_cast<CDLOp::Style>(style));
        EXPECT_TRUE(op.isNoOp()) << style;
    }
}

TEST(CDLOp, noOpEndsWithAnyParameter)
{
    const double aboveOne = std::nextafter(1.0, 2.0);
    const double aboveZero = std::nextafter(0.0, 1.0);
    for (std::size_t channel = 0; channel < 3; ++channel) {
        CDLOp::Params ones = kOnes;
        ones[channel] = aboveOne;
        CDLOp::Params zeros = kZeros;
        zeros[channel] = aboveZero;
        EXPECT_FALSE(makeOp(ones, kZeros, kOnes, 1.0).isNoOp());
        EXPECT_FALSE(makeOp(kOnes, zeros, kOnes, 1.0).isNoOp());
        EXPECT_FALSE(makeOp(kOnes, kZeros, ones, 1.0).isNoOp());
    }
    EXPECT_FALSE(makeOp(kOnes, kZeros, kOnes, aboveOne).isNoOp());
    EXPECT_FALSE(makeOp(kOnes, {kNan, 0.0, 0.0}, kOnes, 1.0).isNoOp());
}

TEST(CDLOp, identityNeedsEqualDepths)
{
    EXPECT_TRUE(CDLOp(BIT_DEPTH_8i, BIT_DEPTH_8i).isIdentity());
    EXPECT_FALSE(CDLOp(BIT_DEPTH_8i, BIT_DEPTH_32f).isIdentity());
}

TEST(CDLOp, depthsLeaveTheParameters)
{
    CDLOp op = makeOp({1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}, {7.0, 8.0, 9.0}, 0.5);
    op.setInBitDepth(BIT_DEPTH_8i);
    op.setOutBitDepth(BIT_DEPTH_16i);
    EXPECT_TRUE(op.isEqual(CDLOp(BIT_DEPTH_8i, BIT_DEPTH_16i, CDLOp::STYLE_V1_2_FWD, {1.0, 2.0, 3.0}, {4.0, 5.0, 6.0},
                                 {7.0, 8.0, 9.0}, 0.5)));
}

TEST(CDLOp, inverseHasTheOppositeStyle)
{
    const auto inverseStyleOf = [](CDLOp::Style style) {
        CDLOp op;
        op.setStyle(style);
        OpList list;
        op.appendInverse(list);
        return dynamic_cast<const CDLOp&>(*list.get(0)).getStyle();
    };
    EXPECT_EQ(inverseStyleOf(CDLOp::STYLE_V1_2_FWD), CDLOp::STYLE_V1_2_REV);
    EXPECT_EQ(inverseStyleOf(CDLOp::STYLE_V1_2_REV), CDLOp::STYLE_V1_2_FWD);
    EXPECT_EQ(inverseStyleOf(CDLOp::STYLE_NO_CLAMP_FWD), CDLOp::STYLE_NO_CLAMP_REV);
    EXPECT_EQ(inverseStyleOf(CDLOp::STYLE_NO_CLAMP_REV), CDLOp::STYLE_NO_CLAMP_FWD);
}

TEST(CDLOp, inverseHasTheSameParametersAndExchangedDepths)
{
    const CDLOp op(BIT_DEPTH_8i, BIT_DEPTH_16f, CDLOp::STYLE_NO_CLAMP_REV, {1.0, 2.0, 3.0}, {4.0, 5.0, 6.0},
                   {7.0, 8.0, 9.0}, 0.5);
    OpList list;
    op.appendInverse(list);
    ASSERT_EQ(list.size(), 1U);
    EXPECT_TRUE(list.get(0)->isEqual(CDLOp(BIT_DEPTH_16f, BIT_DEPTH_8i, CDLOp::STYLE_NO_CLAMP_FWD, {1.0, 2.0, 3.0},
                                           {4.0, 5.0, 6.0}, {7.0, 8.0, 9.0}, 0.5)));
}

TEST(CDLOp, cloneIsEqual)
{
    CDLOp op(BIT_DEPTH_8i, BIT_DEPTH_16f, "id", "name", {"d"});
    op.setOffset({kNan, 0.0, kInfinity});
    const std::unique_ptr<Op> clone(op.clone());
    EXPECT_TRUE(op.isEqual(*clone));
    EXPECT_EQ(clone->getOpType(), OP_CDL);
    EXPECT_EQ(clone->getName(), "name");
}

TEST(CDLOp, isEqualComparesStyleAndParameters)
{
    const CDLOp op;
    EXPECT_TRUE(op.isEqual(CDLOp()));
    CDLOp style;
    style.setStyle(CDLOp::STYLE_NO_CLAMP_FWD);
    EXPECT_FALSE(op.isEqual(style));
    EXPECT_FALSE(op.isEqual(makeOp({1.0, 1.0, 2.0}, kZeros, kOnes, 1.0)));
    EXPECT_FALSE(op.isEqual(makeOp(kOnes, {0.0, 1.0, 0.0}, kOnes, 1.0)));
    EXPECT_FALSE(op.isEqual(makeOp(kOnes, kZeros, {2.0, 1.0, 1.0}, 1.0)));
    EXPECT_FALSE(op.isEqual(makeOp(kOnes, kZeros, kOnes, 0.5)));
    EXPECT_FALSE(op.isEqual(CDLOp(BIT_DEPTH_32f, BIT_DEPTH_8i)));
    EXPECT_FALSE(op.isEqual(GammaOp()));
}
