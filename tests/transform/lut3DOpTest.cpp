#include "transform/lut3DOp.h"

#include "tests/utils/failure.h"
#include "transform/lut1DOp.h"
#include "transform/opList.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <memory>

using namespace Color;

namespace {

using Values = Array::Values;

const float kNan = std::numeric_limits<float>::quiet_NaN();
const float kInfinity = std::numeric_limits<float>::infinity();

Failure tooLarge(uint32_t length)
{
    return {0x205000d, "COLOR:TRANSFORM:LUT_3D", std::to_string(length) + " exceeds maximum supported dimension 129"};
}

const Values& valuesOf(const Lut3DOp& op) { return op.getArray().getValues(); }

/// Whether the identity stays one when the value at the index is replaced.
bool isNoOpWith(Lut3DOp op, std::size_t index, float value)
{
    op.getArray().setValue(index, value);
    return op.isNoOp();
}

} // namespace

TEST(Lut3DOp, lengthAloneGivesAFloatIdentity)
{
    const Lut3DOp op(2);
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getInterpolation(), Lut3DOp::INTERPOLATION_DEFAULT);
    EXPECT_EQ(op.getIndexMapping().getDimension(), 0U);
    EXPECT_EQ(op.getArray().getLength(), 2U);
    EXPECT_EQ(op.getArray().getNumColorComponents(), 3U);
    EXPECT_EQ(valuesOf(op), (Values{0, 0, 0, 0, 0, 1, 0, 1, 0, 0, 1, 1, 1, 0, 0, 1, 0, 1, 1, 1, 0, 1, 1, 1}));
}

TEST(Lut3DOp, constructorsStoreTheirArguments)
{
    Lut3DOp op(BIT_DEPTH_8i, BIT_DEPTH_10i, "id", "name", {"d"}, Lut3DOp::INTERPOLATION_TETRAHEDRAL, 4);
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(op.getId(), "id");
    EXPECT_EQ(op.getName(), "name");
    EXPECT_EQ(op.getDescriptions(), Descriptions{"d"});
    EXPECT_EQ(op.getInterpolation(), Lut3DOp::INTERPOLATION_TETRAHEDRAL);
    EXPECT_EQ(op.getArray().getLength(), 4U);
    op.setInterpolation(Lut3DOp::INTERPOLATION_TRILINEAR);
    EXPECT_EQ(op.getInterpolation(), Lut3DOp::INTERPOLATION_TRILINEAR);

    const Lut3DOp plain(BIT_DEPTH_12i, BIT_DEPTH_16f, 5);
    EXPECT_EQ(plain.getInBitDepth(), BIT_DEPTH_12i);
    EXPECT_EQ(plain.getOutBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(plain.getArray().getLength(), 5U);
    EXPECT_EQ(plain.getInterpolation(), Lut3DOp::INTERPOLATION_DEFAULT);
}

TEST(Lut3DOp, saysWhatItIs)
{
    const Lut3DOp op(2);
    EXPECT_EQ(op.getOpType(), OP_LUT_3D);
    EXPECT_EQ(op.getOpTypeName(), "LUT 3D");
    EXPECT_EQ(op.getMinimumVersion(), 1.3F);
}

TEST(Lut3DOp, identityHasBlueFastestAndRedSlowest)
{
    constexpr uint32_t kLength = 33;
    const Lut3DOp op(BIT_DEPTH_8i, BIT_DEPTH_10i, kLength);
    ASSERT_EQ(valuesOf(op).size(), 33U * 33U * 33U * 3U);
    for (uint32_t n = 0; n < kLength * kLength * kLength; ++n) {
        const uint32_t coordinates[] = {n / (kLength * kLength), n / kLength % kLength, n % kLength};
        for (std::size_t component = 0; component < 3; ++component) {
            // Multiplied before it is divided.
            const float scaled = static_cast<float>(coordinates[component]) * 1023.0F;
            ASSERT_EQ(valuesOf(op)[3 * n + component], scaled / 32.0F) << n;
        }
    }
    EXPECT_EQ(valuesOf(Lut3DOp(33)).back(), 1.0F);
}

TEST(Lut3DOp, identityDividesLast)
{
    // 46 / 48 is not 46 * (1 / 48).
    const float wanted = 46.0F / 48.0F;
    ASSERT_NE(wanted, 46.0F * (1.0F / 48.0F));
    EXPECT_EQ(valuesOf(Lut3DOp(49))[3 * 46 + 2], wanted);
}

TEST(Lut3DOp, identityOfASingleGridPointIsZero)
{
    EXPECT_EQ(valuesOf(Lut3DOp(1)), (Values{0, 0, 0}));
    EXPECT_EQ(failureOf([] { Lut3DOp(1).validate(); }), kNoFailure);
    EXPECT_TRUE(valuesOf(Lut3DOp(0)).empty());
}

TEST(Lut3DOp, arrayHoldsTheCubeOfTheLength)
{
    const Lut3DOp op(2);
    EXPECT_EQ(op.getArray().getNumValues(2, 3), 24U);
    EXPECT_EQ(op.getArray().getNumValues(129, 3), 6440067U);
    EXPECT_EQ(op.getArray().getNumValues(0, 3), 0U);
    EXPECT_EQ(op.getArray().getNumValues(2, 1), 24U) << "whatever the components";
    EXPECT_EQ(op.getArray().getNumValues(1U << 20, 3), std::size_t{3} << 60);
    EXPECT_EQ(op.getArray().getNumValues(0xffffffff, 3), std::numeric_limits<std::size_t>::max());
}

TEST(Lut3DOp, interpolationsHaveNames)
{
    EXPECT_STREQ(Lut3DOp::getInterpolationName(Lut3DOp::INTERPOLATION_DEFAULT), "default");
    EXPECT_STREQ(Lut3DOp::getInterpolationName(Lut3DOp::INTERPOLATION_TRILINEAR), "trilinear");
    EXPECT_STREQ(Lut3DOp::getInterpolationName(Lut3DOp::INTERPOLATION_TETRAHEDRAL), "tetrahedral");
    EXPECT_STREQ(Lut3DOp::getInterpolationName(Lut3DOp::INTERPOLATION_4PT_TETRAHEDRAL), "4pt tetrahedral");
    EXPECT_STREQ(Lut3DOp::getInterpolationName(static_cast<Lut3DOp::Interpolation>(4)), "default");

    EXPECT_EQ(Lut3DOp::interpolationNamed("trilinear"), Lut3DOp::INTERPOLATION_TRILINEAR);
    EXPECT_EQ(Lut3DOp::interpolationNamed("tetrahedral"), Lut3DOp::INTERPOLATION_TETRAHEDRAL);
    EXPECT_EQ(Lut3DOp::interpolationNamed("4pt tetrahedral"), Lut3DOp::INTERPOLATION_4PT_TETRAHEDRAL);
    for (const char* text : {"default", "", "Trilinear", "linear", "tetrahedral "})
        EXPECT_EQ(Lut3DOp::interpolationNamed(text), Lut3DOp::INTERPOLATION_DEFAULT) << text;
}

TEST(Lut3DOp, validateChecksDepthsFirst)
{
    Lut3DOp op(0);
    op.setOutBitDepth(BIT_DEPTH_UNKNOWN);
    EXPECT_EQ(failureOf([&] { op.validate(); }),
              (Failure{0x2010001, "COLOR:TRANSFORM:ALL", "'OutBitDepth' attribute missing in LUT 3D"}));
    op.setInBitDepth(BIT_DEPTH_UNKNOWN);
    EXPECT_EQ(failureOf([&] { op.validate(); }).message, "'InBitDepth' attribute missing in LUT 3D");
}

TEST(Lut3DOp, validateWrapsTheFailureOfTheArray)
{
    Lut3DOp empty(0);
    EXPECT_EQ(failureOf([&] { empty.validate(); }),
              (Failure{0x2010004, "COLOR:TRANSFORM:ALL", "Array content empty: Array content for LUT 3D illegal"}));
    Lut3DOp cut(BIT_DEPTH_32f, BIT_DEPTH_32f, {}, "look", {}, Lut3DOp::INTERPOLATION_DEFAULT, 4);
    cut.getArray().getValues().pop_back();
    EXPECT_EQ(failureOf([&] { cut.validate(); }),
              (Failure{0x2010005, "COLOR:TRANSFORM:ALL", "Array content illegal: Array content for look illegal"}));
}

TEST(Lut3DOp, validateWantsThreeComponents)
{
    Lut3DOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, {}, "look", {}, Lut3DOp::INTERPOLATION_DEFAULT, 2);
    for (const uint32_t components : {0U, 1U, 4U}) {
        op.getArray().setNumColorComponents(components);
        EXPECT_EQ(failureOf([&] { op.validate(); }),
                  (Failure{0x201000b, "COLOR:TRANSFORM:ALL", "LUT 3D wrong number of color components: 'look'"}))
            << components;
    }
}

TEST(Lut3DOp, gridHasAnUpperBound)
{
    Lut3DOp op(129);
    EXPECT_EQ(failureOf([&] { op.validate(); }), kNoFailure);
    op.getArray().setLength(130);
    EXPECT_EQ(failureOf([&] { op.validate(); }), tooLarge(130));
    EXPECT_EQ(failureOf([] { Lut3DOp::checkLength(129); }), kNoFailure);
    EXPECT_EQ(failureOf([] { Lut3DOp::checkLength(130); }), tooLarge(130));
}

TEST(Lut3DOp, tooLargeAGridIsRefusedBeforeMemoryIsTaken)
{
    for (const uint32_t length : {130U, 1U << 21, 0xffffffffU})
        EXPECT_EQ(failureOf([&] { Lut3DOp op(length); }), tooLarge(length));
}

TEST(Lut3DOp, inDepthLeavesTheCube)
{
    Lut3DOp op(2);
    op.setInBitDepth(BIT_DEPTH_8i);
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(valuesOf(op), valuesOf(Lut3DOp(2)));
}

TEST(Lut3DOp, outDepthRescalesTheCube)
{
    Lut3DOp op(2);
    op.getArray().setValue(1, 0.25F);
    op.getArray().setValue(2, -2.0F);
    op.setOutBitDepth(BIT_DEPTH_8i);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(valuesOf(op)[1], 63.75F);
    EXPECT_EQ(valuesOf(op)[2], -510.0F);
    EXPECT_EQ(valuesOf(op).back(), 255.0F);
    op.setOutBitDepth(BIT_DEPTH_16f);
    EXPECT_EQ(valuesOf(op)[1], 63.75F * (1.0F / 255.0F));
    EXPECT_EQ(valuesOf(op)[2], -510.0F * (1.0F / 255.0F));
}

TEST(Lut3DOp, identitiesAreNoOps)
{
    for (const uint32_t length : {2U, 17U, 33U}) {
        for (const BitDepth out : {BIT_DEPTH_8i, BIT_DEPTH_10i, BIT_DEPTH_16i, BIT_DEPTH_16f, BIT_DEPTH_32f}) {
            const Lut3DOp op(BIT_DEPTH_10i, out, length);
            EXPECT_TRUE(op.isNoOp()) << length << " " << getBitDepthName(out);
            EXPECT_EQ(op.isIdentity(), out == BIT_DEPTH_10i);
        }
    }
    Lut3DOp rescaled(17);
    rescaled.setOutBitDepth(BIT_DEPTH_12i);
    EXPECT_TRUE(rescaled.isNoOp());
}

TEST(Lut3DOp, noOpToleratesAMillionthOfTheRange)
{
    const Lut3DOp unit(5);
    const Lut3DOp codes(BIT_DEPTH_8i, BIT_DEPTH_8i, 5);
    // At the first grid point the difference is the value itself, to the last bit.
    for (const std::size_t component : {0U, 1U, 2U}) {
        EXPECT_TRUE(isNoOpWith(unit, component, 1e-6F));
        EXPECT_FALSE(isNoOpWith(unit, component, std::nextafter(1e-6F, 1.0F)));
        EXPECT_TRUE(isNoOpWith(unit, component, -1e-6F));
        EXPECT_FALSE(isNoOpWith(unit, component, -std::nextafter(1e-6F, 1.0F)));
        EXPECT_TRUE(isNoOpWith(codes, component, 255.0F * 1e-6F));
        EXPECT_FALSE(isNoOpWith(codes, component, std::nextafter(255.0F * 1e-6F, 1.0F)));
    }
    EXPECT_TRUE(isNoOpWith(unit, 374, 1.0F + 9e-7F));
    EXPECT_FALSE(isNoOpWith(unit, 374, 1.0F + 1.2e-6F));
}

TEST(Lut3DOp, noOpIsFalseForNaNAndInfinity)
{
    for (const float value : {kNan, kInfinity, -kInfinity})
        EXPECT_FALSE(isNoOpWith(Lut3DOp(3), 40, value)) << value;
}

TEST(Lut3DOp, cubesOfWrongSizeAreNoNoOps)
{
    EXPECT_FALSE(Lut3DOp(0).isNoOp());
    EXPECT_FALSE(Lut3DOp(1).isNoOp()) << "one grid point makes every input the same";
    Lut3DOp op(3);
    op.getArray().getValues().pop_back();
    EXPECT_FALSE(op.isNoOp());
}

TEST(Lut3DOp, hasNoInverse)
{
    OpList list;
    EXPECT_EQ(failureOf([&] { Lut3DOp(2).appendInverse(list); }),
              (Failure{0x2010014, "COLOR:TRANSFORM:ALL", "LUT 3D inverse not supported"}));
    EXPECT_TRUE(list.empty());
}

TEST(Lut3DOp, cloneCopiesEverything)
{
    Lut3DOp op(BIT_DEPTH_8i, BIT_DEPTH_10i, "id", "name", {"d"}, Lut3DOp::INTERPOLATION_TETRAHEDRAL, 3);
    op.getIndexMapping().resize(2);
    op.getBypass()->set(true);
    op.getArray().setValue(4, 77.0F);
    const std::unique_ptr<Op> clone(op.clone());
    EXPECT_TRUE(clone->isEqual(op));
    const auto& lut = dynamic_cast<const Lut3DOp&>(*clone);
    EXPECT_EQ(lut.getInterpolation(), Lut3DOp::INTERPOLATION_TETRAHEDRAL);
    EXPECT_EQ(lut.getIndexMapping().getDimension(), 2U);
    EXPECT_TRUE(lut.getBypass()->get());
    op.getArray().setValue(4, 78.0F);
    EXPECT_EQ(valuesOf(lut)[4], 77.0F) << "the clone has its own cube";
}

TEST(Lut3DOp, isEqualComparesEveryParameter)
{
    const Lut3DOp op(3);
    const auto isEqualAfter = [&](auto&& change) {
        Lut3DOp other(op);
        change(other);
        EXPECT_EQ(op.isEqual(other), other.isEqual(op));
        return op.isEqual(other);
    };
    EXPECT_TRUE(isEqualAfter([](Lut3DOp&) {}));
    EXPECT_FALSE(isEqualAfter([](Lut3DOp& other) { other.setId("i"); }));
    EXPECT_FALSE(isEqualAfter([](Lut3DOp& other) { other.setInBitDepth(BIT_DEPTH_16f); }));
    EXPECT_FALSE(isEqualAfter([](Lut3DOp& other) { other.setInterpolation(Lut3DOp::INTERPOLATION_TRILINEAR); }));
    EXPECT_FALSE(isEqualAfter([](Lut3DOp& other) { other.getArray().setValue(3, 0.3F); }));
    EXPECT_FALSE(isEqualAfter([](Lut3DOp& other) { other.getArray().setLength(4); }));
    EXPECT_FALSE(isEqualAfter([](Lut3DOp& other) { other.getIndexMapping().resize(1); }));
    EXPECT_FALSE(op.isEqual(Lut1DOp(3)));
}
