#include "transform/hueVectorOp.h"

#include "tests/utils/failure.h"
#include "transform/gamutMapOp.h"
#include "transform/opList.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <memory>

using namespace Color;

namespace {

const double kNan = std::numeric_limits<double>::quiet_NaN();
const double kInfinity = std::numeric_limits<double>::infinity();
const char* const kCategory = "COLOR:TRANSFORM:HUE_VECTOR";

const HueVectorOp::Params kParams{120.0, 60.0, 1.5};

Failure failureOfParams(const HueVectorOp::Params& params)
{
    HueVectorOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, HueVectorOp::STYLE_YCH_FWD, params);
    return failureOf([&] { op.validate(); });
}

Failure below(const std::string& value)
{
    return {0x2010011, kCategory, "Parameter " + value + " < lower bound 0.000000"};
}

Failure above(const std::string& value, const std::string& bound)
{
    return {0x2010012, kCategory, "Parameter " + value + " > upper bound " + bound};
}

Failure unrecognized(const std::string& text)
{
    return {0x20f0001, kCategory, "Unrecognized Hue Vector style: " + text};
}

const Failure kWrongCount{0x20f0002, kCategory, "The specified Hue Vector style must have 3 parameters"};

} // namespace

TEST(HueVectorOp, defaultHasNoParameters)
{
    HueVectorOp op;
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getStyle(), HueVectorOp::STYLE_YCH_FWD);
    EXPECT_EQ(op.getParameterStyle(), HueVectorOp::PARAMETER_STYLE_CHROMA);
    EXPECT_TRUE(op.getParameters().empty());
    EXPECT_EQ(failureOf([&] { op.validate(); }), kWrongCount);
}

TEST(HueVectorOp, constructorsStoreTheirArguments)
{
    const HueVectorOp depths(BIT_DEPTH_8i, BIT_DEPTH_10i);
    EXPECT_EQ(depths.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(depths.getOutBitDepth(), BIT_DEPTH_10i);

    const HueVectorOp named(BIT_DEPTH_8i, BIT_DEPTH_10i, "id", "name", {"d"});
    EXPECT_EQ(named.getId(), "id");
    EXPECT_EQ(named.getName(), "name");
    EXPECT_EQ(named.getDescriptions(), Descriptions{"d"});
    EXPECT_EQ(named.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(named.getOutBitDepth(), BIT_DEPTH_10i);

    const HueVectorOp full(BIT_DEPTH_8i, BIT_DEPTH_10i, HueVectorOp::STYLE_YCH_REV, kParams);
    EXPECT_EQ(full.getStyle(), HueVectorOp::STYLE_YCH_REV);
    EXPECT_EQ(full.getParameterStyle(), HueVectorOp::PARAMETER_STYLE_CHROMA);
    EXPECT_EQ(full.getParameters(), kParams);
}

TEST(HueVectorOp, saysWhatItIs)
{
    const HueVectorOp op;
    EXPECT_EQ(op.getOpType(), OP_HUE_VECTOR);
    EXPECT_EQ(op.getOpTypeName(), "HueVector");
    EXPECT_EQ(op.getMinimumVersion(), 1.4F);
}

TEST(HueVectorOp, stylesHaveTheirNumbersAndNames)
{
    const char* const names[] = {"YCH_Fwd", "YCH_Rev"};
    for (uint32_t i = 0; i < 2; ++i) {
        EXPECT_STREQ(HueVectorOp::getStyleName(static_cast<HueVectorOp::Style>(i)), names[i]);
        EXPECT_EQ(HueVectorOp::styleNamed(names[i]), i);
    }
    EXPECT_STREQ(HueVectorOp::getStyleName(static_cast<HueVectorOp::Style>(2)), "");
    EXPECT_EQ(HueVectorOp::styleNamed("ych_rev"), HueVectorOp::STYLE_YCH_REV);
}

TEST(HueVectorOp, parameterStylesHaveTheirNumbersAndNames)
{
    const char* const names[] = {"chroma", "luma", "hue"};
    for (uint32_t i = 0; i < 3; ++i) {
        EXPECT_STREQ(HueVectorOp::getParameterStyleName(static_cast<HueVectorOp::ParameterStyle>(i)), names[i]);
        EXPECT_EQ(HueVectorOp::parameterStyleNamed(names[i]), i);
    }
    EXPECT_STREQ(HueVectorOp::getParameterStyleName(static_cast<HueVectorOp::ParameterStyle>(3)), "");
    EXPECT_EQ(HueVectorOp::parameterStyleNamed("Hue"), HueVectorOp::PARAMETER_STYLE_HUE);
}

TEST(HueVectorOp, unknownStyleNamesFail)
{
    EXPECT_EQ(failureOf([] { HueVectorOp::styleNamed("YCH"); }), unrecognized("YCH"));
    EXPECT_EQ(failureOf([] { HueVectorOp::styleNamed(""); }), unrecognized(""));
    EXPECT_EQ(failureOf([] { HueVectorOp::parameterStyleNamed("saturation"); }), unrecognized("saturation"));
}

TEST(HueVectorOp, validateChecksDepthsFirst)
{
    HueVectorOp op(BIT_DEPTH_UNKNOWN, BIT_DEPTH_32f);
    EXPECT_EQ(failureOf([&] { op.validate(); }),
              (Failure{0x2010001, "COLOR:TRANSFORM:ALL", "'InBitDepth' attribute missing in HueVector"}));
}

TEST(HueVectorOp, onlyChromaCanBeRendered)
{
    HueVectorOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, HueVectorOp::STYLE_YCH_FWD, kParams);
    EXPECT_EQ(failureOf([&] { op.validate(); }), kNoFailure);
    op.setParameterStyle(HueVectorOp::PARAMETER_STYLE_LUMA);
    EXPECT_EQ(failureOf([&] { op.validate(); }), unrecognized("luma"));
    op.setParameterStyle(HueVectorOp::PARAMETER_STYLE_HUE);
    EXPECT_EQ(failureOf([&] { op.validate(); }), unrecognized("hue"));
    op.setParameters({});
    EXPECT_EQ(failureOf([&] { op.validate(); }), unrecognized("hue")) << "no number of parameters helps";
}

TEST(HueVectorOp, chromaHasThreeParameters)
{
    EXPECT_EQ(failureOfParams({}), kWrongCount);
    EXPECT_EQ(failureOfParams({1.0, 1.0}), kWrongCount);
    EXPECT_EQ(failureOfParams({1.0, 1.0, 1.0, 1.0}), kWrongCount);
    EXPECT_EQ(failureOfParams(kParams), kNoFailure);
}

TEST(HueVectorOp, parametersLieWithinTheirBounds)
{
    const double negative = std::nextafter(0.0, -1.0);
    EXPECT_EQ(failureOfParams({0.0, 0.0, 0.0}), kNoFailure);
    EXPECT_EQ(failureOfParams({-0.0, -0.0, -0.0}), kNoFailure);
    EXPECT_EQ(failureOfParams({360.0, 1000.0, 100.0}), kNoFailure);

    EXPECT_EQ(failureOfParams({negative, 0.0, 0.0}), below("-0.000000"));
    EXPECT_EQ(failureOfParams({0.0, negative, 0.0}), below("-0.000000"));
    EXPECT_EQ(failureOfParams({0.0, 0.0, negative}), below("-0.000000"));
    EXPECT_EQ(failureOfParams({-1.0, 0.0, 0.0}), below("-1.000000"));

    EXPECT_EQ(failureOfParams({std::nextafter(360.0, 361.0), 0.0, 0.0}), above("360.000000", "360.000000"));
    EXPECT_EQ(failureOfParams({0.0, std::nextafter(1000.0, 1001.0), 0.0}), above("1000.000000", "1000.000000"));
    EXPECT_EQ(failureOfParams({0.0, 0.0, std::nextafter(100.0, 101.0)}), above("100.000000", "100.000000"));
    EXPECT_EQ(failureOfParams({361.0, 0.0, 0.0}), above("361.000000", "360.000000"));
}

TEST(HueVectorOp, parametersThatAreNoNumbersLieOutside)
{
    EXPECT_EQ(failureOfParams({kNan, 0.0, 0.0}), below("nan"));
    EXPECT_EQ(failureOfParams({0.0, kNan, 0.0}), below("nan"));
    EXPECT_EQ(failureOfParams({0.0, 0.0, kNan}), below("nan"));
    EXPECT_EQ(failureOfParams({kInfinity, 0.0, 0.0}), above("inf", "360.000000"));
    EXPECT_EQ(failureOfParams({0.0, kInfinity, 0.0}), above("inf", "1000.000000"));
    EXPECT_EQ(failureOfParams({0.0, 0.0, kInfinity}), above("inf", "100.000000"));
    EXPECT_EQ(failureOfParams({-kInfinity, 0.0, 0.0}), below("-inf"));
}

TEST(HueVectorOp, neverANoOp)
{
    for (const HueVectorOp::Style style : {HueVectorOp::STYLE_YCH_FWD, HueVectorOp::STYLE_YCH_REV}) {
        const HueVectorOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, style, {0.0, 0.0, 1.0});
        EXPECT_FALSE(op.isNoOp());
        EXPECT_FALSE(op.isIdentity());
    }
}

TEST(HueVectorOp, inverseHasTheOppositeStyle)
{
    OpList list;
    HueVectorOp(BIT_DEPTH_8i, BIT_DEPTH_16f, HueVectorOp::STYLE_YCH_FWD, kParams).appendInverse(list);
    ASSERT_EQ(list.size(), 1U);
    EXPECT_TRUE(list.get(0)->isEqual(HueVectorOp(BIT_DEPTH_16f, BIT_DEPTH_8i, HueVectorOp::STYLE_YCH_REV, kParams)));

    OpList back;
    list.get(0)->appendInverse(back);
    EXPECT_TRUE(back.get(0)->isEqual(HueVectorOp(BIT_DEPTH_8i, BIT_DEPTH_16f, HueVectorOp::STYLE_YCH_FWD, kParams)));
}

TEST(HueVectorOp, inverseIsValidatedWithTheParameterStyle)
{
    HueVectorOp op(BIT_DEPTH_8i, BIT_DEPTH_16f, HueVectorOp::STYLE_YCH_FWD, {361.0, 0.0, 0.0});
    OpList list;
    EXPECT_EQ(failureOf([&] { op.appendInverse(list); }), above("361.000000", "360.000000"));
    op.setParameterStyle(HueVectorOp::PARAMETER_STYLE_LUMA);
    EXPECT_EQ(failureOf([&] { op.appendInverse(list); }), unrecognized("luma"));
    EXPECT_TRUE(list.empty());
}

TEST(HueVectorOp, cloneIsEqual)
{
    HueVectorOp op(BIT_DEPTH_8i, BIT_DEPTH_16f, "id", "name", {"d"});
    op.setStyle(HueVectorOp::STYLE_YCH_REV);
    op.setParameterStyle(HueVectorOp::PARAMETER_STYLE_HUE);
    op.setParameters({kNan, 1.0});
    const std::unique_ptr<Op> clone(op.clone());
    EXPECT_TRUE(op.isEqual(*clone));
    EXPECT_EQ(clone->getOpType(), OP_HUE_VECTOR);
    EXPECT_EQ(clone->getName(), "name");
}

TEST(HueVectorOp, isEqualComparesStylesAndParameters)
{
    const HueVectorOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, HueVectorOp::STYLE_YCH_FWD, kParams);
    HueVectorOp other(op);
    EXPECT_TRUE(op.isEqual(other));
    other.setStyle(HueVectorOp::STYLE_YCH_REV);
    EXPECT_FALSE(op.isEqual(other));
    HueVectorOp otherParameterStyle(op);
    otherParameterStyle.setParameterStyle(HueVectorOp::PARAMETER_STYLE_LUMA);
    EXPECT_FALSE(op.isEqual(otherParameterStyle));
    for (std::size_t i = 0; i < 3; ++i) {
        HueVectorOp::Params params = kParams;
        params[i] += 0.5;
        EXPECT_FALSE(op.isEqual(HueVectorOp(BIT_DEPTH_32f, BIT_DEPTH_32f, HueVectorOp::STYLE_YCH_FWD, params))) << i;
    }
    EXPECT_FALSE(op.isEqual(HueVectorOp(BIT_DEPTH_8i, BIT_DEPTH_32f, HueVectorOp::STYLE_YCH_FWD, kParams)));
    EXPECT_FALSE(op.isEqual(GamutMapOp()));
}
