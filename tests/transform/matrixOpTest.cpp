#include "transform/matrixOp.h"

#include "tests/utils/failure.h"
#include "transform/opList.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

using namespace Color;

namespace {

using Values = Array::Values;
using Offsets = MatrixOp::Offsets;

const float kNan = std::numeric_limits<float>::quiet_NaN();
const char* const kCategory = "COLOR:TRANSFORM:MATRIX";
const Failure kArrayIllegal{0x2010005, "COLOR:TRANSFORM:ALL", "Array content illegal"};

const Values kIdentity{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
const Offsets kNoOffsets{};

Values diagonal(float r, float g, float b, float a) { return {r, 0, 0, 0, 0, g, 0, 0, 0, 0, b, 0, 0, 0, 0, a}; }

MatrixOp makeMatrix(const Values& values, const Offsets& offsets = kNoOffsets, BitDepth in = BIT_DEPTH_32f,
                    BitDepth out = BIT_DEPTH_32f)
{
    MatrixOp op(in, out);
    op.setMatrix4x4(values.data());
    op.setOffsets4(offsets.data());
    return op;
}

/// The identity with one value changed.
MatrixOp makeIdentityBut(std::size_t index, float value)
{
    Values values = kIdentity;
    values[index] = value;
    return makeMatrix(values);
}

const Values& valuesOf(const MatrixOp& op) { return op.getArray().getValues(); }

std::unique_ptr<MatrixOp> inverseOf(const MatrixOp& op)
{
    OpList list;
    op.appendInverse(list);
    EXPECT_EQ(list.size(), 1U);
    return std::make_unique<MatrixOp>(dynamic_cast<const MatrixOp&>(*list.get(0)));
}

/// Equal bits, so that -0 is not 0.
::testing::AssertionResult sameBits(const Offsets& a, const Offsets& b)
{
    for (std::size_t i = 0; i < 4; ++i) {
        if (a[i] != b[i] || std::signbit(a[i]) != std::signbit(b[i])) {
            return ::testing::AssertionFailure() << "offset " << i << ": " << a[i] << " and " << b[i];
        }
    }
    return ::testing::AssertionSuccess();
}

std::mt19937 makeRandom() { return std::mt19937(20151); }

Values randomValues(std::mt19937& random)
{
    std::uniform_real_distribution<float> distribution(-2.0F, 2.0F);
    Values values(16);
    for (float& value : values)
        value = distribution(random);
    return values;
}

Offsets randomOffsets(std::mt19937& random)
{
    std::uniform_real_distribution<float> distribution(-2.0F, 2.0F);
    Offsets offsets{};
    for (float& offset : offsets)
        offset = distribution(random);
    return offsets;
}

/// The determinant of the matrix without one row and one column.
long double minorOf(const Values& m, std::size_t withoutRow, std::size_t withoutColumn)
{
    long double s[9];
    std::size_t n = 0;
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            if (row != withoutRow && column != withoutColumn) s[n++] = static_cast<long double>(m[4 * row + column]);
        }
    }
    return s[0] * (s[4] * s[8] - s[5] * s[7]) - s[1] * (s[3] * s[8] - s[5] * s[6]) + s[2] * (s[3] * s[7] - s[4] * s[6]);
}

} // namespace

TEST(MatrixOp, defaultIsTheFloatIdentity)
{
    const MatrixOp op;
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getArray().getLength(), 4U);
    EXPECT_EQ(op.getArray().getNumColorComponents(), 4U);
    EXPECT_EQ(valuesOf(op), kIdentity);
    EXPECT_TRUE(sameBits(op.getOffsets(), kNoOffsets));
}

TEST(MatrixOp, constructorMakesTheScaledIdentity)
{
    const MatrixOp down(BIT_DEPTH_8i, BIT_DEPTH_32f);
    const float toFloat = 1.0F / 255.0F;
    EXPECT_EQ(valuesOf(down), diagonal(toFloat, toFloat, toFloat, toFloat));
    EXPECT_EQ(down.getArray().getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(down.getArray().getOutBitDepth(), BIT_DEPTH_32f);

    const MatrixOp full(BIT_DEPTH_8i, BIT_DEPTH_16i, "id", "name", {"d"});
    EXPECT_EQ(valuesOf(full), diagonal(257, 257, 257, 257));
    EXPECT_EQ(full.getId(), "id");
    EXPECT_EQ(full.getName(), "name");
    EXPECT_EQ(full.getDescriptions(), Descriptions{"d"});
}

TEST(MatrixOp, saysWhatItIs)
{
    const MatrixOp op;
    EXPECT_EQ(op.getOpType(), OP_MATRIX);
    EXPECT_EQ(op.getOpTypeName(), "Matrix");
    EXPECT_EQ(op.getMinimumVersion(), 1.3F);
}

TEST(MatrixOp, setMatrix4x4TakesValuesAsTheyAre)
{
    Values values(16);
    for (std::size_t i = 0; i < 16; ++i)
        values[i] = static_cast<float>(i) + 0.5F;
    MatrixOp op(BIT_DEPTH_8i, BIT_DEPTH_32f);
    op.setMatrix4x4(values.data());
    EXPECT_EQ(valuesOf(op), values);
}

TEST(MatrixOp, setMatrix3x3FillsTheRest)
{
    MatrixOp op = makeMatrix(Values(16, 7.0F), kNoOffsets, BIT_DEPTH_32f, BIT_DEPTH_8i);
    const float values[9] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    op.setMatrix3x3(values);
    EXPECT_EQ(valuesOf(op), (Values{1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 0, 0, 0, 255}));
}

TEST(MatrixOp, settersBringAnyArrayToFourByFour)
{
    MatrixOp op;
    op.getArray().resize(3, 3);
    op.setMatrix4x4(kIdentity.data());
    EXPECT_EQ(valuesOf(op), kIdentity);
    op.getArray().resize(2, 3);
    const float values[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    op.setMatrix3x3(values);
    EXPECT_EQ(valuesOf(op), kIdentity);
    EXPECT_EQ(op.getArray().getNumColorComponents(), 4U);
}

TEST(MatrixOp, offsetsOfThreeClearTheFourth)
{
    MatrixOp op;
    const float four[4] = {1, 2, 3, 4};
    op.setOffsets4(four);
    EXPECT_EQ(op.getOffsets(), (Offsets{1, 2, 3, 4}));
    const float three[3] = {5, 6, 7};
    op.setOffsets3(three);
    EXPECT_EQ(op.getOffsets(), (Offsets{5, 6, 7, 0}));
}

TEST(MatrixOp, nullOffsetsAreRefused)
{
    MatrixOp op = makeMatrix(kIdentity, {1, 2, 3, 4});
    const Failure failure{0x203000e, kCategory, "Invalid matrix offsets values "};
    EXPECT_EQ(failureOf([&] { op.setOffsets4(nullptr); }), failure);
    EXPECT_EQ(failureOf([&] { op.setOffsets3(nullptr); }), failure);
    EXPECT_EQ(op.getOffsets(), (Offsets{1, 2, 3, 4}));
}

TEST(MatrixOp, singleOffsetIsCheckedAgainstTheLength)
{
    MatrixOp op;
    op.setOffset(3, 0.5F);
    EXPECT_EQ(op.getOffset(3), 0.5F);
    EXPECT_EQ(op.getOffset(0), 0.0F);
    EXPECT_EQ(failureOf([&] { op.getOffset(4); }),
              (Failure{0x203000c, kCategory, "Matrix index offset '4' out of range"}));
    op.setName("graded");
    EXPECT_EQ(failureOf([&] { op.setOffset(4, 1.0F); }),
              (Failure{0x203000c, kCategory, "graded index offset '4' out of range"}));

    op.getArray().setLength(3);
    EXPECT_EQ(failureOf([&] { op.getOffset(3); }).message, "graded index offset '3' out of range");
    EXPECT_EQ(failureOf([&] { op.getOffset(2); }), kNoFailure);
    op.getArray().setLength(9);
    EXPECT_EQ(failureOf([&] { op.setOffset(4, 1.0F); }).message, "graded index offset '4' out of range");
}

TEST(MatrixOp, hasOffsetsLooksAtTheBits)
{
    EXPECT_FALSE(MatrixOp().hasOffsets());
    EXPECT_TRUE(makeMatrix(kIdentity, {0, 0, 0, 1e-30F}).hasOffsets());
    EXPECT_TRUE(makeMatrix(kIdentity, {0, -0.0F, 0, 0}).hasOffsets());
    EXPECT_TRUE(makeMatrix(kIdentity, {0, 0, kNan, 0}).hasOffsets());
}

TEST(MatrixOp, inDepthRescalesTheMatrixOnly)
{
    MatrixOp op = makeMatrix(Values(16, 1023.0F), {1, 2, 3, 4}, BIT_DEPTH_8i, BIT_DEPTH_32f);
    op.setInBitDepth(BIT_DEPTH_10i);
    EXPECT_EQ(valuesOf(op), Values(16, 1023.0F * (255.0F / 1023.0F)));
    EXPECT_EQ(op.getOffsets(), (Offsets{1, 2, 3, 4}));
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(op.getArray().getInBitDepth(), BIT_DEPTH_10i);
}

TEST(MatrixOp, inDepthOfAnIdentityIsFollowed)
{
    MatrixOp op(BIT_DEPTH_8i, BIT_DEPTH_32f);
    op.setInBitDepth(BIT_DEPTH_10i);
    for (std::size_t i = 0; i < 16; ++i) {
        EXPECT_FLOAT_EQ(valuesOf(op)[i], i % 5 == 0 ? 1.0F / 1023.0F : 0.0F) << i;
    }
}

TEST(MatrixOp, outDepthRescalesMatrixAndOffsets)
{
    MatrixOp op = makeMatrix(Values(16, 0.5F), {1, 2, -3, 0.25F});
    op.setOutBitDepth(BIT_DEPTH_8i);
    EXPECT_EQ(valuesOf(op), Values(16, 127.5F));
    EXPECT_EQ(op.getOffsets(), (Offsets{255, 510, -765, 63.75F}));
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(op.getArray().getOutBitDepth(), BIT_DEPTH_8i);
}

TEST(MatrixOp, sameDepthChangesNothing)
{
    std::mt19937 random = makeRandom();
    const MatrixOp before = makeMatrix(randomValues(random), randomOffsets(random), BIT_DEPTH_10i, BIT_DEPTH_12i);
    MatrixOp op(before);
    op.setInBitDepth(BIT_DEPTH_10i);
    op.setOutBitDepth(BIT_DEPTH_12i);
    EXPECT_TRUE(op.isEqual(before));
}

TEST(MatrixOp, validateExpandsThreeByThree)
{
    MatrixOp op(BIT_DEPTH_8i, BIT_DEPTH_16i);
    op.getArray().resize(3, 3);
    op.getArray().getValues() = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    op.validate();
    EXPECT_EQ(op.getArray().getLength(), 4U);
    EXPECT_EQ(op.getArray().getNumColorComponents(), 4U);
    EXPECT_EQ(valuesOf(op), (Values{1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 0, 0, 0, 257}));
}

TEST(MatrixOp, validateAcceptsFourByFourAsItIs)
{
    MatrixOp op = makeMatrix(Values(16, 3.0F));
    op.validate();
    EXPECT_EQ(valuesOf(op), Values(16, 3.0F));
}

TEST(MatrixOp, validateChecksDepthsFirst)
{
    MatrixOp op(BIT_DEPTH_UNKNOWN, BIT_DEPTH_32f);
    op.getArray().setLength(5);
    EXPECT_EQ(failureOf([&] { op.validate(); }),
              (Failure{0x2010001, "COLOR:TRANSFORM:ALL", "'InBitDepth' attribute missing in Matrix"}));
}

TEST(MatrixOp, illegalArrayIsReportedWithTheName)
{
    MatrixOp op;
    op.setName("graded");
    for (const uint32_t length : {0U, 1U, 2U, 5U}) {
        op.getArray().resize(length, 4);
        EXPECT_EQ(failureOf([&] { op.getArray().validate(); }), kArrayIllegal) << length;
        EXPECT_EQ(
            failureOf([&] { op.validate(); }),
            (Failure{0x2010005, "COLOR:TRANSFORM:ALL", "Array content illegal: Array content for graded illegal"}))
            << length;
    }
    op.getArray().resize(4, 3);
    EXPECT_EQ(failureOf([&] { op.getArray().validate(); }), kArrayIllegal);
    EXPECT_EQ(failureOf([&] { op.validate(); }).message, "Array content illegal: Array content for graded illegal");
}

TEST(MatrixOp, wrappedFailureLogsBothParts)
{
    MatrixOp op;
    op.getArray().setLength(5);
    try {
        op.validate();
        FAIL() << "no failure";
    } catch (const Exception& exception) {
        const std::string ending = "): COLOR:TRANSFORM:ALL: Array content illegal: COLOR:TRANSFORM:ALL: Array content "
                                   "for Matrix illegal";
        const std::string& log = exception.getLogMessage();
        ASSERT_GT(log.size(), ending.size());
        EXPECT_EQ(log.substr(log.size() - ending.size()), ending);
        EXPECT_EQ(log.substr(0, 19), "transform\\matrixOp(");
    }
}

TEST(MatrixOp, valuesThatDoNotFillTheShapeAreIllegal)
{
    for (const uint32_t length : {3U, 4U}) {
        MatrixOp op;
        op.getArray().resize(length, 4);
        op.getArray().getValues().pop_back();
        EXPECT_EQ(failureOf([&] { op.getArray().validate(); }), kArrayIllegal) << length;
    }
}

TEST(MatrixOp, isDiagonalWantsExactZeros)
{
    EXPECT_TRUE(makeMatrix(diagonal(1, -2, kNan, 0)).isDiagonal());
    EXPECT_TRUE(makeIdentityBut(1, -0.0F).isDiagonal());
    for (std::size_t i = 0; i < 16; ++i) {
        EXPECT_EQ(makeIdentityBut(i, 1e-30F).isDiagonal(), i % 5 == 0) << i;
        EXPECT_EQ(makeIdentityBut(i, kNan).isDiagonal(), i % 5 == 0) << i;
    }
}

TEST(MatrixOp, isUnityDiagonalIsExact)
{
    EXPECT_TRUE(MatrixOp().isUnityDiagonal());
    EXPECT_TRUE(makeMatrix(kIdentity, {1, 0, 0, 0}).isUnityDiagonal()) << "offsets do not count";
    for (std::size_t i = 0; i < 16; ++i) {
        EXPECT_FALSE(makeIdentityBut(i, std::nextafter(kIdentity[i], 2.0F)).isUnityDiagonal()) << i;
    }
    EXPECT_FALSE(MatrixOp(BIT_DEPTH_8i, BIT_DEPTH_32f).isUnityDiagonal());
}

TEST(MatrixOp, usesAlphaLooksAtRowAndColumn)
{
    EXPECT_FALSE(MatrixOp().usesAlpha());
    for (const std::size_t i : {3U, 7U, 11U, 12U, 13U, 14U}) {
        EXPECT_TRUE(makeIdentityBut(i, 1e-30F).usesAlpha()) << i;
        EXPECT_TRUE(makeIdentityBut(i, kNan).usesAlpha()) << i;
    }
    for (const std::size_t i : {0U, 1U, 2U, 4U, 5U, 6U, 8U, 9U, 10U}) {
        EXPECT_FALSE(makeIdentityBut(i, 5.0F).usesAlpha()) << i;
    }
}

TEST(MatrixOp, usesAlphaAllowsAMillionthOfTheRatio)
{
    EXPECT_FALSE(makeIdentityBut(15, 1.0000005F).usesAlpha());
    EXPECT_FALSE(makeIdentityBut(15, 0.9999995F).usesAlpha());
    EXPECT_TRUE(makeIdentityBut(15, 1.0000015F).usesAlpha());
    EXPECT_TRUE(makeIdentityBut(15, 0.9999985F).usesAlpha());

    MatrixOp wide(BIT_DEPTH_32f, BIT_DEPTH_16i);
    EXPECT_FALSE(wide.usesAlpha());
    wide.getArray().setValue(15, 65535.05F);
    EXPECT_FALSE(wide.usesAlpha());
    wide.getArray().setValue(15, 65535.1F);
    EXPECT_TRUE(wide.usesAlpha());
    wide.getArray().setValue(15, 1.0F);
    EXPECT_TRUE(wide.usesAlpha());
}

TEST(MatrixOp, isNoOpAllowsAMillionthOfTheRatio)
{
    EXPECT_TRUE(MatrixOp().isNoOp());
    for (const std::size_t i : {0U, 5U, 10U, 15U}) {
        EXPECT_TRUE(makeIdentityBut(i, 1.0000005F).isNoOp()) << i;
        EXPECT_FALSE(makeIdentityBut(i, 1.00001F).isNoOp()) << i;
        EXPECT_TRUE(makeIdentityBut(i, 0.9999995F).isNoOp()) << i;
        EXPECT_FALSE(makeIdentityBut(i, 0.99999F).isNoOp()) << i;
        EXPECT_FALSE(makeIdentityBut(i, kNan).isNoOp()) << i;
    }
    EXPECT_FALSE(makeIdentityBut(1, 1e-30F).isNoOp());
    EXPECT_FALSE(makeIdentityBut(3, 1e-30F).isNoOp());
    EXPECT_FALSE(makeIdentityBut(6, kNan).isNoOp());
}

TEST(MatrixOp, isNoOpEndsWithAnyOffset)
{
    EXPECT_FALSE(makeMatrix(kIdentity, {0, 0, 0, 1e-30F}).isNoOp());
    EXPECT_FALSE(makeMatrix(kIdentity, {kNan, 0, 0, 0}).isNoOp());
    EXPECT_TRUE(makeMatrix(kIdentity, {0, -0.0F, 0, 0}).isNoOp()) << "adding it changes no value";
}

TEST(MatrixOp, identityBetweenDepthsIsANoOpButNoIdentity)
{
    const MatrixOp op(BIT_DEPTH_8i, BIT_DEPTH_10i);
    EXPECT_TRUE(op.isNoOp());
    EXPECT_FALSE(op.isIdentity());
    EXPECT_TRUE(MatrixOp(BIT_DEPTH_8i, BIT_DEPTH_8i).isIdentity());
    EXPECT_FALSE(makeMatrix(kIdentity, kNoOffsets, BIT_DEPTH_8i, BIT_DEPTH_10i).isNoOp());
}

TEST(MatrixOp, testsAreFalseBeforeAShapeIsValidated)
{
    MatrixOp op;
    op.getArray().resize(3, 3);
    op.getArray().getValues() = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    EXPECT_FALSE(op.isDiagonal());
    EXPECT_FALSE(op.isUnityDiagonal());
    EXPECT_FALSE(op.usesAlpha());
    EXPECT_FALSE(op.isNoOp());
    op.validate();
    EXPECT_TRUE(op.isNoOp());
}

TEST(MatrixOp, cloneIsEqual)
{
    std::mt19937 random = makeRandom();
    const MatrixOp op = makeMatrix(randomValues(random), randomOffsets(random), BIT_DEPTH_8i, BIT_DEPTH_10i);
    const std::unique_ptr<Op> clone(op.clone());
    EXPECT_TRUE(op.isEqual(*clone));
    EXPECT_EQ(dynamic_cast<const MatrixOp&>(*clone).getArray().getInBitDepth(), BIT_DEPTH_8i);
}

TEST(MatrixOp, isEqualComparesValuesAndTheBitsOfOffsets)
{
    EXPECT_TRUE(MatrixOp().isEqual(MatrixOp()));
    EXPECT_FALSE(MatrixOp().isEqual(makeIdentityBut(7, 1.0F)));
    EXPECT_TRUE(MatrixOp().isEqual(makeIdentityBut(7, -0.0F)));
    EXPECT_FALSE(makeIdentityBut(7, kNan).isEqual(makeIdentityBut(7, kNan)));
    EXPECT_FALSE(MatrixOp().isEqual(makeMatrix(kIdentity, {0, 0, 1, 0})));
    EXPECT_FALSE(MatrixOp().isEqual(makeMatrix(kIdentity, {0, 0, -0.0F, 0})));
    EXPECT_TRUE(makeMatrix(kIdentity, {0, kNan, 0, 0}).isEqual(makeMatrix(kIdentity, {0, kNan, 0, 0})));
    EXPECT_FALSE(MatrixOp().isEqual(MatrixOp(BIT_DEPTH_32f, BIT_DEPTH_16f)));
}

TEST(MatrixOp, diagonalMatrixHasOneValue)
{
    const std::unique_ptr<MatrixOp> op = makeDiagonalMatrix(BIT_DEPTH_10i, BIT_DEPTH_16f, 0.25F);
    EXPECT_EQ(op->getName(), "Diagonal matrix");
    EXPECT_EQ(op->getId(), "");
    EXPECT_EQ(op->getInBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(op->getOutBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(valuesOf(*op), diagonal(0.25F, 0.25F, 0.25F, 0.25F));
    EXPECT_FALSE(op->hasOffsets());
}

TEST(MatrixOpCompose, needsMatchingDepths)
{
    MatrixOp first(BIT_DEPTH_8i, BIT_DEPTH_10i, "", "one", {});
    MatrixOp second(BIT_DEPTH_12i, BIT_DEPTH_32f, "two", "", {});
    EXPECT_EQ(failureOf([&] { first.compose(second); }),
              (Failure{0x206000a, "COLOR:TRANSFORM:OPLIST", "Bit depth mismatch between op 'one' and op 'two'"}));
}

TEST(MatrixOpCompose, needsFourByFour)
{
    const Failure failure{0x203000d, kCategory, "Invalid matrix dimension for compose operation"};
    MatrixOp small;
    small.getArray().resize(3, 4);
    EXPECT_EQ(failureOf([&] { small.compose(MatrixOp()); }), failure);
    EXPECT_EQ(failureOf([&] { MatrixOp().compose(small); }), failure);
    MatrixOp cut;
    cut.getArray().getValues().resize(15);
    EXPECT_EQ(failureOf([&] { cut.compose(MatrixOp()); }), failure);
}

TEST(MatrixOpCompose, joinsTheTexts)
{
    const MatrixOp first(BIT_DEPTH_8i, BIT_DEPTH_10i, "id1", "name1", {"a", "b"});
    const MatrixOp second(BIT_DEPTH_10i, BIT_DEPTH_32f, "id2", "name2", {"c"});
    const std::unique_ptr<MatrixOp> composed = first.compose(second);
    EXPECT_EQ(composed->getId(), "id1id2");
    EXPECT_EQ(composed->getName(), "name1name2");
    EXPECT_EQ(composed->getDescriptions(), (Descriptions{"a", "b", "c"}));
    EXPECT_EQ(composed->getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(composed->getOutBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(composed->getArray().getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(composed->getArray().getOutBitDepth(), BIT_DEPTH_32f);
    EXPECT_FALSE(composed->getBypass()->get());
}

TEST(MatrixOpCompose, multipliesSecondTimesFirst)
{
    const MatrixOp first = makeMatrix({1, 2, 0, 0, 0, 1, 0, 0, 0, 0, 1, 3, 0, 0, 0, 1}, {1, 2, 3, 4});
    const MatrixOp second = makeMatrix({1, 0, 0, 0, 5, 1, 0, 0, 0, 0, 2, 0, 0, 7, 0, 1}, {10, 20, 30, 40});
    const std::unique_ptr<MatrixOp> composed = first.compose(second);
    EXPECT_EQ(valuesOf(*composed), (Values{1, 2, 0, 0, 5, 11, 0, 0, 0, 0, 2, 6, 0, 7, 0, 1}));
    EXPECT_EQ(composed->getOffsets(), (Offsets{11, 27, 36, 58}));
}

TEST(MatrixOpCompose, addsFromLeftToRightInFloat)
{
    // 1e8 + 1 is 1e8 in float, so only the last addition of 1 survives; pairs or the other end first give 0, double 2.
    Values columnOfOnes(16, 0.0F);
    for (const std::size_t i : {0U, 4U, 8U, 12U})
        columnOfOnes[i] = 1.0F;
    Values row(16, 0.0F);
    row[0] = 1e8F;
    row[1] = 1.0F;
    row[2] = -1e8F;
    row[3] = 1.0F;
    const std::unique_ptr<MatrixOp> composed =
        makeMatrix(columnOfOnes, {1, 1, 1, 1}).compose(makeMatrix(row, {0.25F, 0, 0, 0}));
    EXPECT_EQ(valuesOf(*composed)[0], 1.0F);
    EXPECT_EQ(std::count(valuesOf(*composed).begin(), valuesOf(*composed).end(), 0.0F), 15);
}

TEST(MatrixOpCompose, addsOffsetsFromLeftToRightInFloat)
{
    // The noise limit is 100 here, but every sum is whole.
    Values row = kIdentity;
    row[0] = 1e8F;
    row[1] = 1.0F;
    row[2] = -1e8F;
    row[3] = 1.0F;
    const std::unique_ptr<MatrixOp> composed =
        makeMatrix(kIdentity, {1, 1, 1, 1}).compose(makeMatrix(row, {2, 0, 0, 0}));
    EXPECT_EQ(composed->getOffsets()[0], 3.0F);
}

TEST(MatrixOpCompose, agreesWithLongDouble)
{
    std::mt19937 random = makeRandom();
    for (int round = 0; round < 200; ++round) {
        const Values f = randomValues(random);
        const Values s = randomValues(random);
        const Offsets fo = randomOffsets(random);
        const Offsets so = randomOffsets(random);
        const std::unique_ptr<MatrixOp> composed = makeMatrix(f, fo).compose(makeMatrix(s, so));
        for (std::size_t r = 0; r < 4; ++r) {
            long double offset = static_cast<long double>(so[r]);
            for (std::size_t c = 0; c < 4; ++c) {
                offset += static_cast<long double>(s[4 * r + c]) * static_cast<long double>(fo[c]);
                long double value = 0;
                for (std::size_t i = 0; i < 4; ++i) {
                    value += static_cast<long double>(s[4 * r + i]) * static_cast<long double>(f[4 * i + c]);
                }
                // Float rounding of sums up to 16, and the clean-up of a millionth of that.
                EXPECT_NEAR(static_cast<double>(valuesOf(*composed)[4 * r + c]), static_cast<double>(value), 2e-5);
            }
            EXPECT_NEAR(static_cast<double>(composed->getOffsets()[r]), static_cast<double>(offset), 2e-5);
        }
    }
}

TEST(MatrixOpCompose, cleansNoiseBelowAMillionthOfTheGreatestValue)
{
    const auto composedWith = [](std::size_t index, float value) {
        return valuesOf(*MatrixOp().compose(makeIdentityBut(index, value)))[index];
    };
    const float limit = 1e-6F; // the greatest value is 1
    const float below = std::nextafter(limit, 0.0F);
    EXPECT_EQ(composedWith(1, below), 0.0F);
    EXPECT_EQ(composedWith(1, -below), 0.0F);
    EXPECT_FALSE(std::signbit(composedWith(1, -below)));
    EXPECT_EQ(composedWith(1, limit), limit) << "the comparison is strict";
    EXPECT_EQ(composedWith(1, -limit), -limit);

    // Steps of 2^-23 = 1.19e-7 above 1, of half of that below.
    const float step = std::ldexp(1.0F, -23);
    EXPECT_EQ(composedWith(5, 1.0F + 8 * step), 1.0F);
    EXPECT_EQ(composedWith(5, 1.0F + 9 * step), 1.0F + 9 * step);
    EXPECT_EQ(composedWith(5, 1.0F - 8 * step), 1.0F);
    EXPECT_EQ(composedWith(5, 1.0F - 9 * step), 1.0F - 9 * step);
    EXPECT_EQ(composedWith(5, 0.5F), 0.5F);
}

TEST(MatrixOpCompose, greatestValueSetsTheNoiseLimit)
{
    const auto composedWith = [](float greatest, float value) {
        Values values(16, 0.0F);
        values[6] = -greatest;
        values[9] = value;
        return valuesOf(*MatrixOp().compose(makeMatrix(values)))[9];
    };
    EXPECT_EQ(composedWith(100.0F, 0.9e-4F), 0.0F);
    EXPECT_EQ(composedWith(100.0F, 1.1e-4F), 1.1e-4F);
    EXPECT_EQ(composedWith(100.0F, 7.0001F), 7.0001F);
    EXPECT_EQ(composedWith(100.0F, 7.00005F), 7.0F);
    // It is never taken below 0.0001.
    EXPECT_EQ(composedWith(1e-6F, 0.9e-10F), 0.0F);
    EXPECT_EQ(composedWith(1e-6F, 1.1e-10F), 1.1e-10F);
}

TEST(MatrixOpCompose, cleansOffsetsByTheirOwnScale)
{
    const auto composedOffset = [](const Values& secondValues, const Offsets& first, const Offsets& second) {
        return makeMatrix(kIdentity, first).compose(makeMatrix(secondValues, second))->getOffsets()[0];
    };
    // The scale is that of second's offset, not of the sum.
    EXPECT_EQ(composedOffset(kIdentity, {3, 0, 0, 0}, {-2.9999977F, 0, 0, 0}), 0.0F);
    EXPECT_NE(composedOffset(kIdentity, {3, 0, 0, 0}, {-2.9999962F, 0, 0, 0}), 0.0F);
    // The scale of another row's offset counts too.
    EXPECT_EQ(composedOffset(kIdentity, {1e-4F, 0, 0, 0}, {0, 0, -200, 0}), 0.0F);
    EXPECT_EQ(composedOffset(kIdentity, {1e-4F, 0, 0, 0}, {0, 0, -50, 0}), 1e-4F);
    // So does that of product terms that cancel.
    Values cancelling = kIdentity;
    cancelling[0] = 1000.0F;
    cancelling[1] = -1000.0F;
    EXPECT_EQ(composedOffset(cancelling, {1, 1, 0, 0}, {5e-4F, 0, 0, 0}), 0.0F);
    EXPECT_EQ(composedOffset(cancelling, {1, 1, 0, 0}, {2e-3F, 0, 0, 0}), 2e-3F);
    // It is never taken below 0.0001.
    EXPECT_EQ(composedOffset(kIdentity, {0, 0, 0, 0}, {0.9e-10F, 0, 0, 0}), 0.0F);
    EXPECT_EQ(composedOffset(kIdentity, {0, 0, 0, 0}, {1.1e-10F, 0, 0, 0}), 1.1e-10F);
}

TEST(MatrixOpCompose, nanStaysWhereItFalls)
{
    const std::unique_ptr<MatrixOp> composed = MatrixOp().compose(makeIdentityBut(5, kNan));
    for (std::size_t i = 0; i < 16; ++i) {
        const bool isInRow = i / 4 == 1; // NaN times 0 is NaN
        EXPECT_EQ(std::isnan(valuesOf(*composed)[i]), isInRow) << i;
    }
    EXPECT_TRUE(std::isnan(composed->getOffsets()[1]));
    EXPECT_EQ(valuesOf(*composed)[0], 1.0F);
}

TEST(MatrixOpCompose, inversesMakeAnExactIdentity)
{
    std::mt19937 random = makeRandom();
    for (int round = 0; round < 100; ++round) {
        // Dominant diagonals, so that the noise stays under its limit.
        Values values = randomValues(random);
        for (const std::size_t i : {0U, 5U, 10U, 15U})
            values[i] += values[i] < 0 ? -8.0F : 8.0F;
        const MatrixOp op = makeMatrix(values, randomOffsets(random));
        const std::unique_ptr<MatrixOp> composed = op.compose(*inverseOf(op));
        EXPECT_EQ(valuesOf(*composed), kIdentity) << round;
        EXPECT_TRUE(sameBits(composed->getOffsets(), kNoOffsets)) << round;
        EXPECT_TRUE(composed->isIdentity());
    }
}

TEST(MatrixOpInverse, exchangesDepthsAndHasNoTexts)
{
    const MatrixOp op(BIT_DEPTH_16f, BIT_DEPTH_8i, "id", "name", {"d"});
    const std::unique_ptr<MatrixOp> inverse = inverseOf(op);
    EXPECT_EQ(inverse->getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(inverse->getOutBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(inverse->getArray().getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(inverse->getArray().getOutBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(inverse->getId(), "");
    EXPECT_EQ(inverse->getName(), "");
    EXPECT_TRUE(inverse->getDescriptions().empty());
    const float toFloat = 1.0F / 255.0F;
    EXPECT_EQ(valuesOf(*inverse), diagonal(toFloat, toFloat, toFloat, toFloat));
}

TEST(MatrixOpInverse, invertsADiagonalWithOffsets)
{
    const std::unique_ptr<MatrixOp> inverse = inverseOf(makeMatrix(diagonal(2, 4, -8, 0.5F), {1, 2, 3, 4}));
    EXPECT_EQ(valuesOf(*inverse), diagonal(0.5F, 0.25F, -0.125F, 2));
    EXPECT_EQ(inverse->getOffsets(), (Offsets{-0.5F, -0.5F, 0.375F, -8}));
}

TEST(MatrixOpInverse, invertsAShear)
{
    const MatrixOp op = makeMatrix({2, 1, 0, 0, 1, 1, 0, 0, 0, 0, 1, 0, 0, 0, 3, 1}, {1, 2, 4, 8});
    const std::unique_ptr<MatrixOp> inverse = inverseOf(op);
    EXPECT_EQ(valuesOf(*inverse), (Values{1, -1, 0, 0, -1, 2, 0, 0, 0, 0, 1, 0, 0, 0, -3, 1}));
    EXPECT_EQ(inverse->getOffsets(), (Offsets{1, -3, -4, 4}));
}

TEST(MatrixOpInverse, invertsAPermutation)
{
    // Every pivot of the diagonal is 0.
    const MatrixOp op = makeMatrix({0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 1, 0, 0, 0});
    EXPECT_EQ(valuesOf(*inverseOf(op)), (Values{0, 0, 0, 1, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0}));
}

TEST(MatrixOpInverse, invertsFromThreeByThree)
{
    MatrixOp op(BIT_DEPTH_32f, BIT_DEPTH_8i);
    op.getArray().resize(3, 3);
    op.getArray().getValues() = {2, 0, 0, 0, 4, 0, 0, 0, 8};
    const std::unique_ptr<MatrixOp> inverse = inverseOf(op);
    EXPECT_EQ(valuesOf(*inverse), diagonal(0.5F, 0.25F, 0.125F, 1.0F / 255.0F));
    EXPECT_EQ(op.getArray().getLength(), 3U) << "the op itself stays";
}

TEST(MatrixOpInverse, agreesWithCofactors)
{
    std::mt19937 random = makeRandom();
    int compared = 0;
    for (int round = 0; round < 200; ++round) {
        const Values m = randomValues(random);
        long double determinant = 0;
        for (std::size_t c = 0; c < 4; ++c) {
            determinant += (c % 2 == 0 ? 1 : -1) * static_cast<long double>(m[c]) * minorOf(m, 0, c);
        }
        if (std::fabs(determinant) < 0.5L) continue;
        ++compared;
        const std::unique_ptr<MatrixOp> inverse = inverseOf(makeMatrix(m));
        for (std::size_t r = 0; r < 4; ++r) {
            for (std::size_t c = 0; c < 4; ++c) {
                const long double expected = ((r + c) % 2 == 0 ? 1 : -1) * minorOf(m, c, r) / determinant;
                // Double inside, rounded once to float.
                const double tolerance = 1e-7 * std::fabs(static_cast<double>(expected)) + 1e-12;
                EXPECT_NEAR(static_cast<double>(valuesOf(*inverse)[4 * r + c]), static_cast<double>(expected),
                            tolerance);
            }
        }
    }
    EXPECT_GT(compared, 100);
}

TEST(MatrixOpInverse, singularMatrixGivesTheScaledIdentity)
{
    const std::unique_ptr<MatrixOp> ofZero = inverseOf(makeMatrix(Values(16, 0.0F), kNoOffsets, BIT_DEPTH_8i));
    EXPECT_EQ(valuesOf(*ofZero), diagonal(255, 255, 255, 255));
    EXPECT_FALSE(ofZero->hasOffsets());

    // Rank 3: the last pivot is what vanishes.
    const MatrixOp flat = makeMatrix({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 1, 0, 0, 1, 1}, {1, 2, 3, 4});
    const std::unique_ptr<MatrixOp> ofFlat = inverseOf(flat);
    EXPECT_EQ(valuesOf(*ofFlat), kIdentity);
    EXPECT_EQ(ofFlat->getOffsets(), (Offsets{-1, -2, -3, -4}));
}

TEST(MatrixOpInverse, offsetsGoThroughTheNewMatrix)
{
    const MatrixOp op = makeMatrix(Values(16, 0.0F), {1, 0, 2, 0}, BIT_DEPTH_8i, BIT_DEPTH_32f);
    EXPECT_EQ(inverseOf(op)->getOffsets(), (Offsets{-255, 0, -510, 0}));
}

TEST(MatrixOpInverse, offsetBitsDecide)
{
    EXPECT_TRUE(sameBits(inverseOf(MatrixOp())->getOffsets(), kNoOffsets));
    // A -0 is an offset: its sums are 0, and minus one times that is -0.
    EXPECT_TRUE(
        sameBits(inverseOf(makeMatrix(kIdentity, {0, -0.0F, 0, 0}))->getOffsets(), {-0.0F, -0.0F, -0.0F, -0.0F}));
}

TEST(MatrixOpInverse, nanIsNoError)
{
    const std::unique_ptr<MatrixOp> inverse = inverseOf(makeMatrix(Values(16, kNan)));
    EXPECT_TRUE(std::all_of(valuesOf(*inverse).begin(), valuesOf(*inverse).end(),
                            [](float value) { return std::isnan(value); }));
}

TEST(MatrixOpInverse, illegalArrayIsAFailure)
{
    MatrixOp op;
    op.getArray().resize(5, 4);
    OpList list;
    EXPECT_EQ(failureOf([&] { op.appendInverse(list); }), kArrayIllegal);
    EXPECT_TRUE(list.empty());
}

TEST(MatrixOpInverse, isFittedToTheListThatReceivesIt)
{
    OpList list;
    list.append(new MatrixOp(BIT_DEPTH_32f, BIT_DEPTH_8i));
    MatrixOp(BIT_DEPTH_32f, BIT_DEPTH_32f).appendInverse(list);
    EXPECT_EQ(list.get(1)->getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(failureOf([&] { list.validate(); }), kNoFailure);
}
