#include "transform/gammaOp.h"

#include "tests/utils/failure.h"
#include "transform/logOp.h"
#include "transform/opList.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <memory>

using namespace Color;

namespace {

const double kNan = std::numeric_limits<double>::quiet_NaN();
const double kInfinity = std::numeric_limits<double>::infinity();
const char* const kCategory = "COLOR:TRANSFORM:GAMMA";

const GammaOp::Style kBasicStyles[] = {GammaOp::STYLE_BASIC_FWD, GammaOp::STYLE_BASIC_REV};
const GammaOp::Style kMoncurveStyles[] = {GammaOp::STYLE_MONCURVE_FWD, GammaOp::STYLE_MONCURVE_REV};

/// What validation says when one channel has the given parameters and the others those of no effect.
Failure failureOfParams(GammaOp::Style style, const GammaOp::Params& params, std::size_t channel = 0)
{
    const GammaOp::Params identity = GammaOp::getIdentityParams(style);
    GammaOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, style, identity, identity, identity);
    op.setParams(channel, params);
    return failureOf([&] { op.validate(); });
}

Failure below(const std::string& text) { return {0x2010011, kCategory, "Parameter " + text}; }
Failure above(const std::string& text) { return {0x2010012, kCategory, "Parameter " + text}; }

} // namespace

TEST(GammaOp, defaultHasNoEffect)
{
    const GammaOp op;
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getStyle(), GammaOp::STYLE_BASIC_FWD);
    for (std::size_t channel = 0; channel < 4; ++channel)
        EXPECT_EQ(op.getParams(channel), GammaOp::Params{1.0}) << channel;
    EXPECT_TRUE(op.isNoOp());
    EXPECT_EQ(failureOf([] { GammaOp().validate(); }), kNoFailure);
}

TEST(GammaOp, constructorsStoreTheirArguments)
{
    const GammaOp named(BIT_DEPTH_8i, BIT_DEPTH_10i, "id", "name", {"d"});
    EXPECT_EQ(named.getId(), "id");
    EXPECT_EQ(named.getName(), "name");
    EXPECT_EQ(named.getDescriptions(), Descriptions{"d"});
    EXPECT_EQ(named.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(named.getOutBitDepth(), BIT_DEPTH_10i);

    const GammaOp full(BIT_DEPTH_8i, BIT_DEPTH_10i, GammaOp::STYLE_BASIC_REV, {1.1}, {1.2}, {1.3}, {1.4});
    EXPECT_EQ(full.getStyle(), GammaOp::STYLE_BASIC_REV);
    EXPECT_EQ(full.getParams(0), GammaOp::Params{1.1});
    EXPECT_EQ(full.getParams(1), GammaOp::Params{1.2});
    EXPECT_EQ(full.getParams(2), GammaOp::Params{1.3});
    EXPECT_EQ(full.getParams(3), GammaOp::Params{1.4});
}

TEST(GammaOp, alphaThatIsNotGivenIsTheIdentityOfTheStyle)
{
    for (const GammaOp::Style style : kBasicStyles) {
        const GammaOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, style, {2.0}, {2.0}, {2.0});
        EXPECT_EQ(op.getParams(3), GammaOp::Params{1.0});
    }
    for (const GammaOp::Style style : kMoncurveStyles) {
        const GammaOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, style, {2.0, 0.1}, {2.0, 0.1}, {2.0, 0.1});
        EXPECT_EQ(op.getParams(3), (GammaOp::Params{1.0, 0.0}));
    }
}

TEST(GammaOp, saysWhatItIs)
{
    const GammaOp op;
    EXPECT_EQ(op.getOpType(), OP_GAMMA);
    EXPECT_EQ(op.getOpTypeName(), "Gamma");
    EXPECT_EQ(op.getMinimumVersion(), 1.3F);
}

TEST(GammaOp, stylesHaveTheirNumbersAndNames)
{
    const char* const names[] = {"basicFwd", "basicRev", "moncurveFwd", "moncurveRev"};
    for (uint32_t i = 0; i < 4; ++i) {
        EXPECT_STREQ(GammaOp::getStyleName(static_cast<GammaOp::Style>(i)), names[i]);
        EXPECT_EQ(GammaOp::styleNamed(names[i]), i);
    }
    EXPECT_STREQ(GammaOp::getStyleName(static_cast<GammaOp::Style>(4)), "");
    EXPECT_EQ(GammaOp::styleNamed("BASICREV"), GammaOp::STYLE_BASIC_REV);
    EXPECT_EQ(GammaOp::styleNamed("monCurvefwd"), GammaOp::STYLE_MONCURVE_FWD);
}

TEST(GammaOp, unknownStyleNameFails)
{
    EXPECT_EQ(failureOf([] { GammaOp::styleNamed("basic"); }),
              (Failure{0x2090001, kCategory, "Unrecognized Gamma style: basic"}));
    EXPECT_EQ(failureOf([] { GammaOp::styleNamed(""); }),
              (Failure{0x2090001, kCategory, "Unrecognized Gamma style: "}));
}

TEST(GammaOp, validateChecksDepthsFirst)
{
    GammaOp op(BIT_DEPTH_UNKNOWN, BIT_DEPTH_32f);
    op.setParams(0, {});
    EXPECT_EQ(failureOf([&] { op.validate(); }),
              (Failure{0x2010001, "COLOR:TRANSFORM:ALL", "'InBitDepth' attribute missing in Gamma"}));
}

TEST(GammaOp, basicStylesHaveOneParameterInEachChannel)
{
    const Failure failure{0x2090002, kCategory, "The specified Gamma style must have 1 parameters"};
    for (const GammaOp::Style style : kBasicStyles) {
        for (std::size_t channel = 0; channel < 4; ++channel) {
            EXPECT_EQ(failureOfParams(style, {}, channel), failure);
            EXPECT_EQ(failureOfParams(style, {1.0, 0.0}, channel), failure);
            EXPECT_EQ(failureOfParams(style, {2.0}, channel), kNoFailure);
        }
    }
}

TEST(GammaOp, moncurveStylesHaveTwoParametersInEachChannel)
{
    const Failure failure{0x2090002, kCategory, "The specified Gamma style must have 2 parameters"};
    for (const GammaOp::Style style : kMoncurveStyles) {
        for (std::size_t channel = 0; channel < 4; ++channel) {
            EXPECT_EQ(failureOfParams(style, {}, channel), failure);
            EXPECT_EQ(failureOfParams(style, {1.0}, channel), failure);
            EXPECT_EQ(failureOfParams(style, {1.0, 0.0, 0.0}, channel), failure);
            EXPECT_EQ(failureOfParams(style, {2.4, 0.055}, channel), kNoFailure);
        }
    }
}

TEST(GammaOp, changingTheStyleAloneLeavesTheParameters)
{
    GammaOp op;
    op.setStyle(GammaOp::STYLE_MONCURVE_FWD);
    EXPECT_EQ(op.getParams(0), GammaOp::Params{1.0});
    EXPECT_EQ(failureOf([&] { op.validate(); }),
              (Failure{0x2090002, kCategory, "The specified Gamma style must have 2 parameters"}));
}

TEST(GammaOp, gammaLiesBetweenOneAndTen)
{
    const double belowOne = std::nextafter(1.0, 0.0);
    const double aboveTen = std::nextafter(10.0, 11.0);
    for (const GammaOp::Style style : kBasicStyles) {
        EXPECT_EQ(failureOfParams(style, {1.0}), kNoFailure);
        EXPECT_EQ(failureOfParams(style, {10.0}), kNoFailure);
        EXPECT_EQ(failureOfParams(style, {belowOne}), below("1.000000 < lower bound 1.000000"));
        EXPECT_EQ(failureOfParams(style, {aboveTen}), above("10.000000 > upper bound 10.000000"));
    }
    for (const GammaOp::Style style : kMoncurveStyles) {
        EXPECT_EQ(failureOfParams(style, {1.0, 0.1}), kNoFailure);
        EXPECT_EQ(failureOfParams(style, {10.0, 0.1}), kNoFailure);
        EXPECT_EQ(failureOfParams(style, {belowOne, 0.1}), below("1.000000 < lower bound 1.000000"));
        EXPECT_EQ(failureOfParams(style, {aboveTen, 0.1}), above("10.000000 > upper bound 10.000000"));
    }
    EXPECT_EQ(failureOfParams(GammaOp::STYLE_BASIC_FWD, {0.5}), below("0.500000 < lower bound 1.000000"));
}

TEST(GammaOp, offsetLiesBetweenZeroAndNineTenths)
{
    for (const GammaOp::Style style : kMoncurveStyles) {
        EXPECT_EQ(failureOfParams(style, {2.0, 0.0}), kNoFailure);
        EXPECT_EQ(failureOfParams(style, {2.0, -0.0}), kNoFailure);
        EXPECT_EQ(failureOfParams(style, {2.0, 0.9}), kNoFailure);
        EXPECT_EQ(failureOfParams(style, {2.0, -1e-6}), below("-0.000001 < lower bound 0.000000"));
        EXPECT_EQ(failureOfParams(style, {2.0, std::nextafter(0.0, -1.0)}), below("-0.000000 < lower bound 0.000000"));
        EXPECT_EQ(failureOfParams(style, {2.0, std::nextafter(0.9, 1.0)}), above("0.900000 > upper bound 0.900000"));
        EXPECT_EQ(failureOfParams(style, {2.0, 0.95}), above("0.950000 > upper bound 0.900000"));
    }
}

TEST(GammaOp, boundsHoldForEveryChannel)
{
    for (std::size_t channel = 0; channel < 4; ++channel) {
        EXPECT_EQ(failureOfParams(GammaOp::STYLE_BASIC_REV, {0.25}, channel), below("0.250000 < lower bound 1.000000"));
        EXPECT_EQ(failureOfParams(GammaOp::STYLE_MONCURVE_REV, {11.0, 0.0}, channel),
                  above("11.000000 > upper bound 10.000000"));
        EXPECT_EQ(failureOfParams(GammaOp::STYLE_MONCURVE_REV, {1.0, 1.0}, channel),
                  above("1.000000 > upper bound 0.900000"));
    }
}

TEST(GammaOp, parametersThatAreNoNumbersLieOutside)
{
    EXPECT_EQ(failureOfParams(GammaOp::STYLE_BASIC_FWD, {kNan}), below("nan < lower bound 1.000000"));
    EXPECT_EQ(failureOfParams(GammaOp::STYLE_BASIC_FWD, {kInfinity}), above("inf > upper bound 10.000000"));
    EXPECT_EQ(failureOfParams(GammaOp::STYLE_BASIC_FWD, {-kInfinity}), below("-inf < lower bound 1.000000"));
    EXPECT_EQ(failureOfParams(GammaOp::STYLE_MONCURVE_FWD, {2.0, kNan}), below("nan < lower bound 0.000000"));
    EXPECT_EQ(failureOfParams(GammaOp::STYLE_MONCURVE_FWD, {2.0, kInfinity}), above("inf > upper bound 0.900000"));
    EXPECT_EQ(failureOfParams(GammaOp::STYLE_MONCURVE_FWD, {2.0, -kInfinity}), below("-inf < lower bound 0.000000"));
}

TEST(GammaOp, noOpAtGammaOne)
{
    for (const GammaOp::Style style : kBasicStyles) {
        EXPECT_TRUE(GammaOp(BIT_DEPTH_8i, BIT_DEPTH_32f, style, {1.0}, {1.0}, {1.0}).isNoOp());
        EXPECT_FALSE(GammaOp(BIT_DEPTH_8i, BIT_DEPTH_32f, style, {1.0}, {1.0}, {1.5}).isNoOp());
        EXPECT_FALSE(GammaOp(BIT_DEPTH_8i, BIT_DEPTH_32f, style, {1.0}, {1.5}, {1.0}).isNoOp());
        EXPECT_FALSE(GammaOp(BIT_DEPTH_8i, BIT_DEPTH_32f, style, {1.5}, {1.0}, {1.0}).isNoOp());
        EXPECT_FALSE(GammaOp(BIT_DEPTH_8i, BIT_DEPTH_32f, style, {1.5}, {1.5}, {1.5}).isNoOp());
    }
}

TEST(GammaOp, noOpAtGammaOneAndOffsetZero)
{
    const GammaOp::Params one{1.0, 0.0};
    for (const GammaOp::Style style : kMoncurveStyles) {
        EXPECT_TRUE(GammaOp(BIT_DEPTH_8i, BIT_DEPTH_32f, style, one, one, one).isNoOp());
        for (const GammaOp::Params& params : {GammaOp::Params{1.5, 0.0}, GammaOp::Params{1.0, 0.5}}) {
            EXPECT_FALSE(GammaOp(BIT_DEPTH_8i, BIT_DEPTH_32f, style, one, one, params).isNoOp());
            EXPECT_FALSE(GammaOp(BIT_DEPTH_8i, BIT_DEPTH_32f, style, params, params, params).isNoOp());
        }
    }
}

TEST(GammaOp, alphaHasNoSayInNoOp)
{
    EXPECT_TRUE(GammaOp(BIT_DEPTH_32f, BIT_DEPTH_32f, GammaOp::STYLE_BASIC_FWD, {1.0}, {1.0}, {1.0}, {2.0}).isNoOp());
}

TEST(GammaOp, identityNeedsEqualDepths)
{
    EXPECT_TRUE(GammaOp(BIT_DEPTH_8i, BIT_DEPTH_8i).isIdentity());
    EXPECT_FALSE(GammaOp(BIT_DEPTH_8i, BIT_DEPTH_32f).isIdentity());
}

TEST(GammaOp, depthsLeaveTheParameters)
{
    GammaOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, GammaOp::STYLE_MONCURVE_FWD, {2.4, 0.1}, {2.5, 0.2}, {2.6, 0.3});
    op.setInBitDepth(BIT_DEPTH_8i);
    op.setOutBitDepth(BIT_DEPTH_16i);
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_16i);
    EXPECT_EQ(op.getParams(0), (GammaOp::Params{2.4, 0.1}));
    EXPECT_EQ(op.getParams(1), (GammaOp::Params{2.5, 0.2}));
    EXPECT_EQ(op.getParams(2), (GammaOp::Params{2.6, 0.3}));
}

TEST(GammaOp, inverseHasTheOppositeStyle)
{
    const auto inverseStyleOf = [](GammaOp::Style style) {
        const GammaOp::Params identity = GammaOp::getIdentityParams(style);
        OpList list;
        GammaOp(BIT_DEPTH_32f, BIT_DEPTH_32f, style, identity, identity, identity).appendInverse(list);
        return dynamic_cast<const GammaOp&>(*list.get(0)).getStyle();
    };
    EXPECT_EQ(inverseStyleOf(GammaOp::STYLE_BASIC_FWD), GammaOp::STYLE_BASIC_REV);
    EXPECT_EQ(inverseStyleOf(GammaOp::STYLE_BASIC_REV), GammaOp::STYLE_BASIC_FWD);
    EXPECT_EQ(inverseStyleOf(GammaOp::STYLE_MONCURVE_FWD), GammaOp::STYLE_MONCURVE_REV);
    EXPECT_EQ(inverseStyleOf(GammaOp::STYLE_MONCURVE_REV), GammaOp::STYLE_MONCURVE_FWD);
}

TEST(GammaOp, inverseHasTheSameParametersAndExchangedDepths)
{
    const GammaOp op(BIT_DEPTH_8i, BIT_DEPTH_16f, GammaOp::STYLE_BASIC_FWD, {2.0}, {3.0}, {4.0}, {5.0});
    OpList list;
    op.appendInverse(list);
    ASSERT_EQ(list.size(), 1U);
    EXPECT_TRUE(list.get(0)->isEqual(
        GammaOp(BIT_DEPTH_16f, BIT_DEPTH_8i, GammaOp::STYLE_BASIC_REV, {2.0}, {3.0}, {4.0}, {5.0})));
}

TEST(GammaOp, inverseIsValidated)
{
    const GammaOp op(BIT_DEPTH_8i, BIT_DEPTH_16f, GammaOp::STYLE_BASIC_FWD, {2.0}, {0.5}, {2.0});
    OpList list;
    EXPECT_EQ(failureOf([&] { op.appendInverse(list); }), below("0.500000 < lower bound 1.000000"));
    EXPECT_TRUE(list.empty());
}

TEST(GammaOp, cloneIsEqual)
{
    GammaOp op(BIT_DEPTH_8i, BIT_DEPTH_16f, "id", "name", {"d"});
    op.setParams(1, {kNan});
    const std::unique_ptr<Op> clone(op.clone());
    EXPECT_TRUE(op.isEqual(*clone));
    EXPECT_EQ(clone->getOpType(), OP_GAMMA);
    EXPECT_EQ(clone->getName(), "name");
}

TEST(GammaOp, isEqualComparesStyleAndParameters)
{
    const GammaOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, GammaOp::STYLE_BASIC_FWD, {2.0}, {2.0}, {2.0});
    EXPECT_TRUE(op.isEqual(GammaOp(BIT_DEPTH_32f, BIT_DEPTH_32f, GammaOp::STYLE_BASIC_FWD, {2.0}, {2.0}, {2.0})));
    GammaOp otherStyle(op);
    otherStyle.setStyle(GammaOp::STYLE_BASIC_REV);
    EXPECT_FALSE(op.isEqual(otherStyle));
    for (std::size_t channel = 0; channel < 4; ++channel) {
        for (const GammaOp::Params& params : {GammaOp::Params{3.0}, GammaOp::Params{}, GammaOp::Params{2.0, 0.0}}) {
            GammaOp other(op);
            other.setParams(channel, params);
            EXPECT_FALSE(op.isEqual(other)) << channel;
        }
    }
    GammaOp otherDepth(op);
    otherDepth.setOutBitDepth(BIT_DEPTH_16f);
    EXPECT_FALSE(op.isEqual(otherDepth));
    EXPECT_FALSE(op.isEqual(LogOp()));
}
