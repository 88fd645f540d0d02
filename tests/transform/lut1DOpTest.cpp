#include "transform/lut1DOp.h"

#include "tests/utils/failure.h"
#include "transform/invLut1DOp.h"
#include "transform/matrixOp.h"
#include "transform/opList.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <memory>

using namespace Color;

namespace {

using Values = Array::Values;

const float kNan = std::numeric_limits<float>::quiet_NaN();
const float kInfinity = std::numeric_limits<float>::infinity();

const Failure kArrayIllegal{0x2010005, "COLOR:TRANSFORM:ALL", "Array content illegal"};
const Failure kIllegal{0x2010005, "COLOR:TRANSFORM:ALL", "Array content illegal: Array content for LUT 1D illegal"};

Failure halfDomainFailure(uint32_t length, const std::string& name)
{
    return {0x204000e, "COLOR:TRANSFORM:LUT_1D",
            std::to_string(length) + " entries found, 65536 req'd for halfDomain lut LUT 1D: " + name + " "};
}

/// The number that a half code stands for, from the bits of the format.
float halfValue(uint32_t code)
{
    const uint32_t exponent = code >> 10 & 0x1f;
    const auto mantissa = static_cast<float>(code & 0x3ff);
    float magnitude = 0.0F;
    if (exponent == 0) {
        magnitude = std::ldexp(mantissa, -24);
    } else if (exponent == 31) {
        magnitude = mantissa == 0.0F ? kInfinity : kNan;
    } else {
        magnitude = std::ldexp(1024.0F + mantissa, static_cast<int>(exponent) - 25);
    }
    return std::copysign(magnitude, code & 0x8000 ? -1.0F : 1.0F);
}

Lut1DOp makeLut(const Values& values, BitDepth in = BIT_DEPTH_32f, BitDepth out = BIT_DEPTH_32f)
{
    Lut1DOp op(in, out, {}, {}, {}, Lut1DOp::INTERPOLATION_DEFAULT, static_cast<uint32_t>(values.size() / 3),
               HALF_FLAGS_NONE);
    op.getArray().getValues() = values;
    return op;
}

Lut1DOp makeHalfDomain(BitDepth out) { return Lut1DOp(BIT_DEPTH_16f, out, HALF_FLAGS_HALF_DOMAIN); }

const Values& valuesOf(const Lut1DOp& op) { return op.getArray().getValues(); }

/// Whether the identity stays one when the value of the component at the position is replaced.
bool isNoOpWith(Lut1DOp op, uint32_t position, uint32_t component, float value)
{
    op.getArray().setValue(3 * position + component, value);
    return op.isNoOp();
}

} // namespace

TEST(Lut1DOp, lengthAloneGivesAFloatIdentity)
{
    const Lut1DOp op(5);
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getInterpolation(), Lut1DOp::INTERPOLATION_DEFAULT);
    EXPECT_EQ(op.getHalfFlags(), HALF_FLAGS_NONE);
    EXPECT_EQ(op.getHueAdjust(), Lut1DOp::HUE_ADJUST_NONE);
    EXPECT_EQ(op.getIndexMapping().getDimension(), 0U);
    EXPECT_EQ(op.getArray().getLength(), 5U);
    EXPECT_EQ(op.getArray().getNumColorComponents(), 3U);
    EXPECT_EQ(valuesOf(op), (Values{0, 0, 0, 0.25F, 0.25F, 0.25F, 0.5F, 0.5F, 0.5F, 0.75F, 0.75F, 0.75F, 1, 1, 1}));
}

TEST(Lut1DOp, constructorStoresItsArguments)
{
    const Lut1DOp op(BIT_DEPTH_8i, BIT_DEPTH_10i, "id", "name", {"d", "e"}, Lut1DOp::INTERPOLATION_CUBIC, 7,
                     HALF_FLAGS_RAW_HALFS);
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(op.getId(), "id");
    EXPECT_EQ(op.getName(), "name");
    EXPECT_EQ(op.getDescriptions(), (Descriptions{"d", "e"}));
    EXPECT_EQ(op.getInterpolation(), Lut1DOp::INTERPOLATION_CUBIC);
    EXPECT_EQ(op.getArray().getLength(), 7U) << "a length that is given beats that of the in depth";
    EXPECT_EQ(op.getArray().getValues().size(), 21U);
    EXPECT_EQ(op.getHalfFlags(), HALF_FLAGS_RAW_HALFS);
}

TEST(Lut1DOp, settersStore)
{
    Lut1DOp op(2);
    op.setInterpolation(Lut1DOp::INTERPOLATION_LINEAR);
    op.setHueAdjust(Lut1DOp::HUE_ADJUST_DW3);
    op.setHalfFlags(HALF_FLAGS_HALF_DOMAIN_RAW_HALFS);
    op.getIndexMapping().resize(4);
    EXPECT_EQ(op.getInterpolation(), Lut1DOp::INTERPOLATION_LINEAR);
    EXPECT_EQ(op.getHueAdjust(), Lut1DOp::HUE_ADJUST_DW3);
    EXPECT_EQ(op.getHalfFlags(), HALF_FLAGS_HALF_DOMAIN_RAW_HALFS);
    EXPECT_EQ(op.getIndexMapping().getDimension(), 4U);
}

TEST(Lut1DOp, halfFlagsAreTwoBits)
{
    Lut1DOp op(2);
    EXPECT_FALSE(op.isHalfDomain());
    EXPECT_FALSE(op.hasRawHalfs());
    op.setHalfFlags(HALF_FLAGS_HALF_DOMAIN);
    EXPECT_TRUE(op.isHalfDomain());
    EXPECT_FALSE(op.hasRawHalfs());
    op.setHalfFlags(HALF_FLAGS_RAW_HALFS);
    EXPECT_FALSE(op.isHalfDomain());
    EXPECT_TRUE(op.hasRawHalfs());
    op.setHalfFlags(HALF_FLAGS_HALF_DOMAIN_RAW_HALFS);
    EXPECT_TRUE(op.isHalfDomain());
    EXPECT_TRUE(op.hasRawHalfs());
}

TEST(Lut1DOp, saysWhatItIs)
{
    Lut1DOp op(2);
    EXPECT_EQ(op.getOpType(), OP_LUT_1D);
    EXPECT_EQ(op.getOpTypeName(), "LUT 1D");
    EXPECT_EQ(op.getMinimumVersion(), 1.3F);
    op.setHueAdjust(Lut1DOp::HUE_ADJUST_DW3);
    EXPECT_EQ(op.getMinimumVersion(), 1.4F);
}

TEST(Lut1DOp, namesInterpolationsAndHueAdjusts)
{
    EXPECT_STREQ(Lut1DOp::getInterpolationName(Lut1DOp::INTERPOLATION_DEFAULT), "default");
    EXPECT_STREQ(Lut1DOp::getInterpolationName(Lut1DOp::INTERPOLATION_LINEAR), "linear");
    EXPECT_STREQ(Lut1DOp::getInterpolationName(Lut1DOp::INTERPOLATION_CUBIC), "cubic");
    EXPECT_STREQ(Lut1DOp::getInterpolationName(static_cast<Lut1DOp::Interpolation>(3)), "default");
    EXPECT_EQ(Lut1DOp::interpolationNamed("linear"), Lut1DOp::INTERPOLATION_LINEAR);
    EXPECT_EQ(Lut1DOp::interpolationNamed("cubic"), Lut1DOp::INTERPOLATION_CUBIC);
    for (const char* text : {"Linear", "default", "cubic ", ""}) {
        EXPECT_EQ(Lut1DOp::interpolationNamed(text), Lut1DOp::INTERPOLATION_DEFAULT) << text;
    }
    EXPECT_STREQ(Lut1DOp::getHueAdjustName(Lut1DOp::HUE_ADJUST_NONE), "none");
    EXPECT_STREQ(Lut1DOp::getHueAdjustName(Lut1DOp::HUE_ADJUST_DW3), "dw3");
}

TEST(Lut1DOp, integerInDepthHasAnEntryPerCode)
{
    const auto lengthFor = [](BitDepth in, HalfFlags flags) {
        return Lut1DOp(in, BIT_DEPTH_32f, flags).getArray().getLength();
    };
    EXPECT_EQ(lengthFor(BIT_DEPTH_8i, HALF_FLAGS_NONE), 256U);
    EXPECT_EQ(lengthFor(BIT_DEPTH_10i, HALF_FLAGS_NONE), 1024U);
    EXPECT_EQ(lengthFor(BIT_DEPTH_12i, HALF_FLAGS_NONE), 4096U);
    EXPECT_EQ(lengthFor(BIT_DEPTH_16i, HALF_FLAGS_NONE), 65536U);
    EXPECT_EQ(lengthFor(BIT_DEPTH_16f, HALF_FLAGS_NONE), 65536U);
    EXPECT_EQ(lengthFor(BIT_DEPTH_32f, HALF_FLAGS_NONE), 65536U);
    EXPECT_EQ(lengthFor(BIT_DEPTH_UNKNOWN, HALF_FLAGS_NONE), 65536U);
    EXPECT_EQ(lengthFor(static_cast<BitDepth>(3), HALF_FLAGS_NONE), 65536U);
    EXPECT_EQ(lengthFor(BIT_DEPTH_10i, HALF_FLAGS_RAW_HALFS), 1024U);
    EXPECT_EQ(lengthFor(BIT_DEPTH_10i, HALF_FLAGS_HALF_DOMAIN), 65536U);
    EXPECT_EQ(lengthFor(BIT_DEPTH_10i, HALF_FLAGS_HALF_DOMAIN_RAW_HALFS), 65536U);
}

TEST(Lut1DOp, identityCountsTheStepOfTheOutDepth)
{
    const Lut1DOp op(BIT_DEPTH_10i, BIT_DEPTH_8i, HALF_FLAGS_NONE);
    const float step = 255.0F / 1023.0F;
    for (uint32_t i = 0; i < 1024; ++i) {
        const float wanted = static_cast<float>(i) * step;
        for (std::size_t component = 0; component < 3; ++component)
            ASSERT_EQ(valuesOf(op)[3 * i + component], wanted) << i;
    }
    EXPECT_EQ(
        valuesOf(Lut1DOp(BIT_DEPTH_32f, BIT_DEPTH_10i, {}, {}, {}, Lut1DOp::INTERPOLATION_DEFAULT, 3, HALF_FLAGS_NONE)),
        (Values{0, 0, 0, 511.5F, 511.5F, 511.5F, 1023, 1023, 1023}));
}

TEST(Lut1DOp, identityOfAHalfDomainHoldsTheHalfs)
{
    const Lut1DOp unit = makeHalfDomain(BIT_DEPTH_32f);
    const Lut1DOp codes = makeHalfDomain(BIT_DEPTH_8i);
    for (uint32_t code = 0; code < 65536; ++code) {
        const float value = halfValue(code);
        for (std::size_t component = 0; component < 3; ++component) {
            const std::size_t index = 3 * code + component;
            if (std::isnan(value)) {
                ASSERT_TRUE(std::isnan(valuesOf(unit)[index]) && std::isnan(valuesOf(codes)[index])) << code;
            } else {
                ASSERT_EQ(valuesOf(unit)[index], value) << code;
                ASSERT_EQ(valuesOf(codes)[index], 255.0F * value) << code;
                ASSERT_EQ(std::signbit(valuesOf(codes)[index]), std::signbit(value)) << code;
            }
        }
    }
}

TEST(Lut1DOp, identityOfASingleEntryIsZero)
{
    EXPECT_EQ(valuesOf(Lut1DOp(1)), (Values{0, 0, 0}));
    EXPECT_EQ(failureOf([] { Lut1DOp(1).validate(); }), kNoFailure);
    EXPECT_TRUE(valuesOf(Lut1DOp(0)).empty());
    EXPECT_EQ(valuesOf(Lut1DOp(2)), (Values{0, 0, 0, 1, 1, 1}));
}

TEST(Lut1DOp, arrayHoldsLengthTimesComponents)
{
    const Lut1DOp op(2);
    EXPECT_EQ(op.getArray().getNumValues(1024, 3), 3072U);
    EXPECT_EQ(op.getArray().getNumValues(1024, 1), 1024U);
    EXPECT_EQ(op.getArray().getNumValues(0xffffffff, 3), std::size_t{3} * 0xffffffff);
}

TEST(Lut1DOp, aSingleCurveIsThatOfAllComponents)
{
    Lut1DOp op(7);
    EXPECT_FALSE(op.getArray().isSingleCurve());
    op.getArray().setSingleCurve({0.F, 0.25F});
    EXPECT_TRUE(op.getArray().isSingleCurve());
    EXPECT_EQ(op.getArray().getLength(), 2u);
    EXPECT_EQ(op.getArray().getNumColorComponents(), 3u);
    EXPECT_EQ(op.getArray().getValues(), (Array::Values{0.F, 0.F, 0.F, 0.25F, 0.25F, 0.25F}));
    EXPECT_TRUE(Lut1DOp(op).getArray().isSingleCurve());

    // How it was given makes no other curve of it.
    Lut1DOp three(2);
    three.getArray().getValues() = op.getArray().getValues();
    EXPECT_TRUE(three.isEqual(op));
}

TEST(Lut1DOp, validateChecksDepthsFirst)
{
    Lut1DOp noInput(0);
    noInput.setInBitDepth(BIT_DEPTH_UNKNOWN);
    EXPECT_EQ(failureOf([&] { noInput.validate(); }),
              (Failure{0x2010001, "COLOR:TRANSFORM:ALL", "'InBitDepth' attribute missing in LUT 1D"}));
    Lut1DOp noOutput(0);
    noOutput.setOutBitDepth(BIT_DEPTH_UNKNOWN);
    EXPECT_EQ(failureOf([&] { noOutput.validate(); }),
              (Failure{0x2010001, "COLOR:TRANSFORM:ALL", "'OutBitDepth' attribute missing in LUT 1D"}));
}

TEST(Lut1DOp, validateWrapsTheFailureOfTheArray)
{
    Lut1DOp empty(0);
    EXPECT_EQ(failureOf([&] { empty.validate(); }),
              (Failure{0x2010004, "COLOR:TRANSFORM:ALL", "Array content empty: Array content for LUT 1D illegal"}));

    Lut1DOp short1(4);
    short1.getArray().getValues().pop_back();
    EXPECT_EQ(failureOf([&] { short1.validate(); }), kIllegal);
    short1.setName("shaper");
    EXPECT_EQ(failureOf([&] { short1.validate(); }).message, "Array content illegal: Array content for shaper illegal");
}

TEST(Lut1DOp, validateWantsOneOrThreeComponents)
{
    Lut1DOp op(4);
    for (const uint32_t components : {0U, 2U, 4U}) {
        op.getArray().setNumColorComponents(components);
        EXPECT_EQ(failureOf([&] { op.validate(); }), kIllegal) << components;
    }
    for (const uint32_t components : {1U, 3U}) {
        op.getArray().setNumColorComponents(components);
        EXPECT_EQ(failureOf([&] { op.validate(); }), kNoFailure) << components;
    }
}

TEST(Lut1DOp, lengthHasAnUpperBound)
{
    Lut1DOp op(2);
    op.getArray().resize(Lut1DOp::kMaximumLength, 1);
    EXPECT_EQ(failureOf([&] { op.validate(); }), kNoFailure);
    op.getArray().resize(Lut1DOp::kMaximumLength + 1, 1);
    EXPECT_EQ(failureOf([&] { op.getArray().validate(); }), kArrayIllegal);
    EXPECT_EQ(failureOf([&] { op.validate(); }), kIllegal);
    EXPECT_EQ(op.getArray().getLength(), 16777217U);
}

TEST(Lut1DOp, tooLongATableIsRefusedBeforeMemoryIsTaken)
{
    for (const uint32_t length : {Lut1DOp::kMaximumLength + 1, 0xffffffffU}) {
        EXPECT_EQ(failureOf([&] { Lut1DOp op(length); }), kArrayIllegal) << length;
        EXPECT_EQ(failureOf([&] { Lut1DOp(2).checkLength(length); }), kIllegal) << length;
    }
    EXPECT_EQ(failureOf([] { Lut1DOp(2).checkLength(Lut1DOp::kMaximumLength); }), kNoFailure);
}

TEST(Lut1DOp, halfDomainWantsAllHalfs)
{
    Lut1DOp op(BIT_DEPTH_16f, BIT_DEPTH_32f, {}, "graded", {}, Lut1DOp::INTERPOLATION_DEFAULT, 1024,
               HALF_FLAGS_HALF_DOMAIN);
    EXPECT_EQ(failureOf([&] { op.validate(); }), halfDomainFailure(1024, "graded"));
    op.setName("");
    for (const uint32_t length : {1U, 65535U, 65537U}) {
        op.getArray().setLength(length);
        EXPECT_EQ(failureOf([&] { op.validate(); }), halfDomainFailure(length, "LUT 1D")) << length;
        EXPECT_EQ(failureOf([&] { op.checkLength(length); }), halfDomainFailure(length, "LUT 1D")) << length;
    }
    op.getArray().setLength(65536);
    EXPECT_EQ(failureOf([&] { op.validate(); }), kNoFailure);
    EXPECT_EQ(failureOf([&] { op.checkLength(65536); }), kNoFailure);
    op.getArray().setLength(0);
    EXPECT_EQ(failureOf([&] { op.validate(); }).id, 0x2010004U) << "the array comes first";
}

TEST(Lut1DOp, aLongerHalfDomainBeginsAnew)
{
    const Lut1DOp op(BIT_DEPTH_16f, BIT_DEPTH_32f, {}, {}, {}, Lut1DOp::INTERPOLATION_DEFAULT, 65538,
                     HALF_FLAGS_HALF_DOMAIN);
    EXPECT_EQ(valuesOf(op)[3 * 65536], 0.0F);
    EXPECT_EQ(valuesOf(op)[3 * 65537], halfValue(1));
}

TEST(Lut1DOp, inDepthLeavesTheTable)
{
    Lut1DOp op = makeLut({0, 0.25F, 0.5F, 1, 2, 3});
    op.setInBitDepth(BIT_DEPTH_8i);
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(valuesOf(op), (Values{0, 0.25F, 0.5F, 1, 2, 3}));
}

TEST(Lut1DOp, outDepthRescalesTheTable)
{
    Lut1DOp op = makeLut({0, 0.25F, -0.5F, 1, 2, kInfinity});
    op.setOutBitDepth(BIT_DEPTH_8i);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(valuesOf(op), (Values{0, 63.75F, -127.5F, 255, 510, kInfinity}));

    const float back = 1.0F / 255.0F;
    op.setOutBitDepth(BIT_DEPTH_16f);
    EXPECT_EQ(valuesOf(op), (Values{0, 63.75F * back, -127.5F * back, 255.0F * back, 510.0F * back, kInfinity}));
}

TEST(Lut1DOp, equalMaximaLeaveTheTable)
{
    // A NaN that a multiplication would make quiet.
    const float signalling = std::numeric_limits<float>::signaling_NaN();
    Lut1DOp op = makeLut({0.1F, 0.2F, 0.3F, 0.4F, 0.5F, 0.6F});
    std::memcpy(&op.getArray().getValues()[5], &signalling, sizeof(float));
    op.setOutBitDepth(BIT_DEPTH_16f);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(std::memcmp(&valuesOf(op)[5], &signalling, sizeof(float)), 0);
    EXPECT_EQ(Values(valuesOf(op).begin(), valuesOf(op).begin() + 5), (Values{0.1F, 0.2F, 0.3F, 0.4F, 0.5F}));
}

TEST(Lut1DOp, appendingToAListKeepsTheTable)
{
    OpList list;
    list.append(new MatrixOp(BIT_DEPTH_32f, BIT_DEPTH_10i));
    list.append(new Lut1DOp(makeLut({0, 0, 0, 1, 2, 3})));
    EXPECT_EQ(list.get(1)->getInBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(valuesOf(dynamic_cast<const Lut1DOp&>(*list.get(1))), (Values{0, 0, 0, 1, 2, 3}));
}

TEST(Lut1DOp, identitiesAreNoOps)
{
    for (const BitDepth in : {BIT_DEPTH_8i, BIT_DEPTH_10i, BIT_DEPTH_12i, BIT_DEPTH_16i, BIT_DEPTH_16f}) {
        for (const BitDepth out : {BIT_DEPTH_8i, BIT_DEPTH_16i, BIT_DEPTH_16f, BIT_DEPTH_32f}) {
            for (const HalfFlags flags : {HALF_FLAGS_NONE, HALF_FLAGS_HALF_DOMAIN}) {
                const Lut1DOp op(in, out, flags);
                EXPECT_TRUE(op.isNoOp()) << getBitDepthName(in) << " to " << getBitDepthName(out) << " " << flags;
                EXPECT_EQ(op.isIdentity(), in == out);
            }
        }
    }
    EXPECT_TRUE(Lut1DOp(2).isNoOp());
}

TEST(Lut1DOp, rescaledIdentityStaysNoOp)
{
    for (const HalfFlags flags : {HALF_FLAGS_NONE, HALF_FLAGS_HALF_DOMAIN}) {
        Lut1DOp op(BIT_DEPTH_10i, BIT_DEPTH_32f, flags);
        for (const BitDepth out : {BIT_DEPTH_8i, BIT_DEPTH_16i, BIT_DEPTH_12i, BIT_DEPTH_32f}) {
            op.setOutBitDepth(out);
            EXPECT_TRUE(op.isNoOp()) << getBitDepthName(out) << " " << flags;
        }
    }
}

TEST(Lut1DOp, noOpToleratesAMillionthOfTheRange)
{
    const Lut1DOp unit(BIT_DEPTH_32f, BIT_DEPTH_32f, {}, {}, {}, Lut1DOp::INTERPOLATION_DEFAULT, 5, HALF_FLAGS_NONE);
    for (uint32_t component = 0; component < 3; ++component) {
        // At 0 the difference is the value itself, to the last bit.
        EXPECT_TRUE(isNoOpWith(unit, 0, component, 1e-6F));
        EXPECT_TRUE(isNoOpWith(unit, 0, component, -1e-6F));
        EXPECT_FALSE(isNoOpWith(unit, 0, component, std::nextafter(1e-6F, 1.0F)));
        EXPECT_FALSE(isNoOpWith(unit, 0, component, -std::nextafter(1e-6F, 1.0F)));
        EXPECT_TRUE(isNoOpWith(unit, 4, component, 1.0F + 9e-7F));
        EXPECT_FALSE(isNoOpWith(unit, 4, component, 1.0F + 1.2e-6F));
    }

    const Lut1DOp codes(BIT_DEPTH_10i, BIT_DEPTH_10i, HALF_FLAGS_NONE);
    EXPECT_TRUE(isNoOpWith(codes, 0, 1, 1023.0F * 1e-6F));
    EXPECT_FALSE(isNoOpWith(codes, 0, 1, std::nextafter(1023.0F * 1e-6F, 1.0F)));
    EXPECT_FALSE(isNoOpWith(codes, 512, 2, 512.0F + 1023.0F * 1e-4F));
}

TEST(Lut1DOp, noOpIsFalseForNaNAndInfinity)
{
    for (const float value : {kNan, kInfinity, -kInfinity}) {
        EXPECT_FALSE(isNoOpWith(Lut1DOp(5), 4, 1, value)) << value;
        EXPECT_FALSE(isNoOpWith(makeHalfDomain(BIT_DEPTH_32f), 0x3c00, 1, value)) << value;
    }
}

TEST(Lut1DOp, noOpOfAHalfDomainToleratesOneCode)
{
    const Lut1DOp op = makeHalfDomain(BIT_DEPTH_32f);
    for (const uint32_t code : {0x0002U, 0x0400U, 0x3c00U, 0x7bf0U, 0x8002U, 0x8400U, 0xbc00U, 0xfbf0U}) {
        for (uint32_t component = 0; component < 3; ++component) {
            EXPECT_TRUE(isNoOpWith(op, code, component, halfValue(code + 1))) << std::hex << code;
            EXPECT_TRUE(isNoOpWith(op, code, component, halfValue(code - 1))) << std::hex << code;
            EXPECT_FALSE(isNoOpWith(op, code, component, halfValue(code + 2))) << std::hex << code;
        }
    }
    EXPECT_FALSE(isNoOpWith(op, 0x3c00, 0, halfValue(0x3bfe)));
    EXPECT_FALSE(isNoOpWith(op, 0x3c00, 0, -1.0F));
    // The values are rounded to halfs first: 1 + 2.4 codes is 2 codes away, 1 + 1.4 codes is one.
    EXPECT_FALSE(isNoOpWith(op, 0x3c00, 0, 1.0F + 2.4F / 1024.0F));
    EXPECT_TRUE(isNoOpWith(op, 0x3c00, 0, 1.0F + 1.4F / 1024.0F));
}

TEST(Lut1DOp, noOpOfAHalfDomainSeesNegativeZero)
{
    const Lut1DOp op = makeHalfDomain(BIT_DEPTH_32f);
    const float tiny = halfValue(1);
    // The order is ..., -tiny, -0, 0, tiny, ...
    EXPECT_TRUE(isNoOpWith(op, 0x0000, 0, -0.0F));
    EXPECT_TRUE(isNoOpWith(op, 0x0000, 0, tiny));
    EXPECT_FALSE(isNoOpWith(op, 0x0000, 0, -tiny));
    EXPECT_TRUE(isNoOpWith(op, 0x8000, 0, 0.0F));
    EXPECT_TRUE(isNoOpWith(op, 0x8000, 0, -tiny));
    EXPECT_FALSE(isNoOpWith(op, 0x8000, 0, tiny));
    EXPECT_TRUE(isNoOpWith(op, 0x0001, 0, 0.0F));
    EXPECT_FALSE(isNoOpWith(op, 0x0001, 0, -0.0F));
}

TEST(Lut1DOp, noOpOfAHalfDomainComparesTheEndsOfTheHalfs)
{
    const Lut1DOp op = makeHalfDomain(BIT_DEPTH_32f);
    EXPECT_TRUE(isNoOpWith(op, 0x7c00, 0, 65504.0F));
    EXPECT_TRUE(isNoOpWith(op, 0x7bff, 0, kInfinity));
    EXPECT_FALSE(isNoOpWith(op, 0x7c00, 0, 65472.0F));
    EXPECT_FALSE(isNoOpWith(op, 0x7c00, 0, -kInfinity));
    EXPECT_FALSE(isNoOpWith(op, 0x7c00, 0, kNan));
    EXPECT_FALSE(isNoOpWith(op, 0x7e00, 0, 0.0F));
    EXPECT_TRUE(isNoOpWith(op, 0x7e00, 0, kNan)) << "that code is this NaN";

    // At 8i most halfs lie beyond the halfs, where all values are infinite.
    EXPECT_TRUE(isNoOpWith(makeHalfDomain(BIT_DEPTH_8i), 0x7bff, 0, kInfinity));
    EXPECT_FALSE(isNoOpWith(makeHalfDomain(BIT_DEPTH_8i), 0x7bff, 0, 65504.0F * 0.5F));
}

TEST(Lut1DOp, tablesOfWrongSizeAreNoNoOps)
{
    EXPECT_FALSE(Lut1DOp(0).isNoOp());
    EXPECT_FALSE(Lut1DOp(1).isNoOp()) << "one entry makes every input the same";
    Lut1DOp op(4);
    op.getArray().getValues().pop_back();
    EXPECT_FALSE(op.isNoOp());
    Lut1DOp noComponents(4);
    noComponents.getArray().setNumColorComponents(0);
    EXPECT_FALSE(noComponents.isNoOp());
    Lut1DOp halfs(BIT_DEPTH_16f, BIT_DEPTH_16f, {}, {}, {}, Lut1DOp::INTERPOLATION_DEFAULT, 256,
                  HALF_FLAGS_HALF_DOMAIN);
    EXPECT_FALSE(halfs.isNoOp());
}

TEST(Lut1DOp, noOpOfASingleComponent)
{
    Lut1DOp op(3);
    op.getArray().resize(3, 1);
    op.getArray().getValues() = {0.0F, 0.5F, 1.0F};
    EXPECT_TRUE(op.isNoOp());
    op.getArray().setValue(1, 0.6F);
    EXPECT_FALSE(op.isNoOp());
}

TEST(Lut1DOp, inverseExchangesTheDepths)
{
    const Lut1DOp op = makeLut({0, 1, 2, 10, 11, 12, 20, 21, 22}, BIT_DEPTH_8i, BIT_DEPTH_10i);
    OpList list;
    op.appendInverse(list);
    ASSERT_EQ(list.size(), 1U);
    const auto& inverse = dynamic_cast<const InvLut1DOp&>(*list.get(0));
    EXPECT_EQ(inverse.getInBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(inverse.getOutBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(valuesOf(inverse), valuesOf(op));
}

TEST(Lut1DOp, hueAdjustHasNoInverse)
{
    Lut1DOp op(4);
    op.setHueAdjust(Lut1DOp::HUE_ADJUST_DW3);
    op.setHalfFlags(HALF_FLAGS_RAW_HALFS);
    OpList list;
    EXPECT_EQ(failureOf([&] { op.appendInverse(list); }),
              (Failure{0x2010014, "COLOR:TRANSFORM:ALL", "LUT1D with hue adjust inverse not supported"}));
    EXPECT_TRUE(list.empty());
}

TEST(Lut1DOp, rawHalfsHaveNoInverse)
{
    Lut1DOp op(4);
    op.setHalfFlags(HALF_FLAGS_RAW_HALFS);
    OpList list;
    EXPECT_EQ(failureOf([&] { op.appendInverse(list); }),
              (Failure{0x2040012, "COLOR:TRANSFORM:LUT_1D", "Unsupported raw half output lut for inverse operation"}));
    EXPECT_TRUE(list.empty());
}

TEST(Lut1DOp, cloneCopiesEverything)
{
    Lut1DOp op(BIT_DEPTH_8i, BIT_DEPTH_10i, "id", "name", {"d"}, Lut1DOp::INTERPOLATION_LINEAR, 3,
               HALF_FLAGS_RAW_HALFS);
    op.setHueAdjust(Lut1DOp::HUE_ADJUST_DW3);
    op.getIndexMapping().resize(2);
    op.getBypass()->set(true);
    op.getArray().setValue(4, 77.0F);
    const std::unique_ptr<Op> clone(op.clone());
    EXPECT_TRUE(clone->isEqual(op));
    const auto& lut = dynamic_cast<const Lut1DOp&>(*clone);
    EXPECT_EQ(lut.getHueAdjust(), Lut1DOp::HUE_ADJUST_DW3);
    EXPECT_EQ(lut.getInterpolation(), Lut1DOp::INTERPOLATION_LINEAR);
    EXPECT_EQ(lut.getHalfFlags(), HALF_FLAGS_RAW_HALFS);
    EXPECT_EQ(lut.getIndexMapping().getDimension(), 2U);
    EXPECT_EQ(lut.getArray().getValues()[4], 77.0F);
    EXPECT_TRUE(lut.getBypass()->get());

    op.getArray().setValue(4, 78.0F);
    EXPECT_EQ(lut.getArray().getValues()[4], 77.0F) << "the clone has its own table";
}

TEST(Lut1DOp, isEqualComparesEveryParameter)
{
    const Lut1DOp op(4);
    const auto isEqualAfter = [&](auto&& change) {
        Lut1DOp other(op);
        change(other);
        EXPECT_EQ(op.isEqual(other), other.isEqual(op));
        return op.isEqual(other);
    };
    EXPECT_TRUE(isEqualAfter([](Lut1DOp&) {}));
    EXPECT_FALSE(isEqualAfter([](Lut1DOp& other) { other.setName("n"); }));
    EXPECT_FALSE(isEqualAfter([](Lut1DOp& other) { other.setInBitDepth(BIT_DEPTH_16f); }));
    EXPECT_FALSE(isEqualAfter([](Lut1DOp& other) { other.setInterpolation(Lut1DOp::INTERPOLATION_LINEAR); }));
    EXPECT_FALSE(isEqualAfter([](Lut1DOp& other) { other.getArray().setValue(3, 0.3F); }));
    EXPECT_FALSE(isEqualAfter([](Lut1DOp& other) { other.getArray().setLength(5); }));
    EXPECT_FALSE(isEqualAfter([](Lut1DOp& other) { other.getIndexMapping().resize(1); }));
    EXPECT_FALSE(isEqualAfter([](Lut1DOp& other) { other.setHalfFlags(HALF_FLAGS_RAW_HALFS); }));
    EXPECT_FALSE(isEqualAfter([](Lut1DOp& other) { other.setHueAdjust(Lut1DOp::HUE_ADJUST_DW3); }));
    EXPECT_FALSE(op.isEqual(MatrixOp()));
}

TEST(Lut1DOp, isNotEqualToAnInverseOfTheSameTable)
{
    const Lut1DOp op(4);
    const InvLut1DOp inverse(op);
    EXPECT_FALSE(op.isEqual(inverse));
    EXPECT_FALSE(inverse.isEqual(op));
}
