#include "renderer/optimizer.h"

#include "tests/transform/testOp.h"
#include "tests/utils/failure.h"
#include "transform/CDLOp.h"
#include "transform/ditherOp.h"
#include "transform/exposureContrastOp.h"
#include "transform/functionOp.h"
#include "transform/gammaOp.h"
#include "transform/gamutMapOp.h"
#include "transform/hueVectorOp.h"
#include "transform/invLut1DOp.h"
#include "transform/logOp.h"
#include "transform/lut3DOp.h"
#include "transform/matrixOp.h"
#include "transform/rangeOp.h"

#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>
#include <limits>
#include <memory>

using namespace Rendering;
using Color::Descriptions;
using Color::InvLut1DOp;
using Color::Lut1DOp;
using Color::Lut3DOp;
using Color::MatrixOp;
using Color::Op;
using Color::OpList;
using Color::OpType;
using Color::RangeOp;

namespace {

using OpPtr = std::unique_ptr<Op>;

constexpr double kNotSet = std::numeric_limits<double>::quiet_NaN();

/// One letter per type, in the order of their numbers. T is the cube, F the reference, P the gamut map, U the function.
const std::string kLetters = "LITMRFGEOCDPHU";

std::string typesOf(const Color::Transform& transform)
{
    std::string letters;
    for (std::size_t i = 0; i < transform.getOpList().size(); ++i)
        letters += kLetters[static_cast<std::size_t>(transform.getOpList().get(i)->getOpType())];
    return letters;
}

/// Each as type@index:score.
std::string textOf(const std::vector<OptimizerStep>& steps)
{
    std::string text;
    for (const OptimizerStep& step : steps) {
        const OptimizerAction& action = step.action;
        text += (text.empty() ? "" : " ") + std::to_string(action.type) + "@" + std::to_string(action.index) + ":" +
                std::to_string(action.score);
    }
    return text;
}

template <class LutType>
std::unique_ptr<LutType> scaledTable(std::unique_ptr<LutType> lut, float factor)
{
    for (float& value : lut->getArray().getValues())
        value *= factor;
    return lut;
}

std::unique_ptr<Lut1DOp> makeLut1D(float factor) { return scaledTable(std::make_unique<Lut1DOp>(5u), factor); }
std::unique_ptr<Lut3DOp> makeCube(float factor) { return scaledTable(std::make_unique<Lut3DOp>(3u), factor); }

std::unique_ptr<RangeOp> makeRange(double minIn, double maxIn, double minOut, double maxOut)
{
    return std::make_unique<RangeOp>(BIT_DEPTH_32f, BIT_DEPTH_32f, minIn, maxIn, minOut, maxOut);
}

std::unique_ptr<RangeOp> makeClamp() { return makeRange(0, 1, 0, 1); }

OpPtr makeMatrix(float factor) { return Color::makeDiagonalMatrix(BIT_DEPTH_32f, BIT_DEPTH_32f, factor); }

OpPtr makeReference()
{
    auto op = std::make_unique<TestOp>();
    op->type = Color::OP_REFERENCE;
    return op;
}

/// An op that does something, at 32f. The range only clips.
OpPtr makeActive(OpType type)
{
    constexpr BitDepth depth = BIT_DEPTH_32f;
    switch (type) {
    case Color::OP_LUT_1D:
        return makeLut1D(0.5f);
    case Color::OP_INVERSE_LUT_1D:
        return std::make_unique<InvLut1DOp>(*makeLut1D(0.5f));
    case Color::OP_LUT_3D:
        return makeCube(0.5f);
    case Color::OP_MATRIX:
        return makeMatrix(0.5f);
    case Color::OP_RANGE:
        return makeClamp();
    case Color::OP_REFERENCE:
        return makeReference();
    case Color::OP_GAMMA:
        return std::make_unique<Color::GammaOp>(depth, depth, Color::GammaOp::STYLE_BASIC_FWD, std::vector<double>{2.2},
                                                std::vector<double>{2.2}, std::vector<double>{2.2});
    case Color::OP_EXPOSURE_CONTRAST: {
        auto op = std::make_unique<Color::ExposureContrastOp>();
        op->getExposure()->set(1.0);
        return op;
    }
    case Color::OP_LOG:
        return std::make_unique<Color::LogOp>();
    case Color::OP_CDL: {
        auto op = std::make_unique<Color::CDLOp>();
        op->setSaturation(0.5);
        return op;
    }
    case Color::OP_DITHER:
        return std::make_unique<Color::DitherOp>(depth, depth, BIT_DEPTH_8i);
    case Color::OP_GAMUT_MAP:
        return std::make_unique<Color::GamutMapOp>(depth, depth, Color::GamutMapOp::STYLE_DW3);
    case Color::OP_HUE_VECTOR:
        return std::make_unique<Color::HueVectorOp>(depth, depth, Color::HueVectorOp::STYLE_YCH_FWD,
                                                    std::vector<double>{120, 60, 0.5});
    case Color::OP_FUNCTION:
        return std::make_unique<Color::FunctionOp>();
    }
    return nullptr;
}

/// An op of the type without effect; null where there is none.
OpPtr makeNeutral(OpType type)
{
    switch (type) {
    case Color::OP_LUT_1D:
        return makeLut1D(1.f);
    case Color::OP_INVERSE_LUT_1D:
        return std::make_unique<InvLut1DOp>(*makeLut1D(1.f));
    case Color::OP_LUT_3D:
        return makeCube(1.f);
    case Color::OP_MATRIX:
        return std::make_unique<MatrixOp>();
    case Color::OP_RANGE:
        return std::make_unique<RangeOp>();
    case Color::OP_GAMMA:
        return std::make_unique<Color::GammaOp>();
    case Color::OP_EXPOSURE_CONTRAST:
        return std::make_unique<Color::ExposureContrastOp>();
    case Color::OP_CDL:
        return std::make_unique<Color::CDLOp>();
    case Color::OP_DITHER:
        return std::make_unique<Color::DitherOp>(BIT_DEPTH_32f, BIT_DEPTH_32f, BIT_DEPTH_16f);
    case Color::OP_GAMUT_MAP:
        return std::make_unique<Color::GamutMapOp>();
    default:
        return nullptr;
    }
}

OpPtr withDynamicBypass(OpPtr op, bool isBypassed)
{
    op->getBypass()->makeDynamic();
    op->getBypass()->set(isBypassed);
    return op;
}

OpPtr bypassed(OpPtr op)
{
    op->getBypass()->set(true);
    return op;
}

template <class... Ops>
std::unique_ptr<Color::Transform> listOf(Ops... ops)
{
    auto transform = std::make_unique<Color::Transform>();
    (transform->getOpList().append(OpPtr(std::move(ops)).release()), ...);
    return transform;
}

template <class OpClass>
const OpClass& opAt(const Color::Transform& transform, std::size_t index)
{
    return dynamic_cast<const OpClass&>(*transform.getOpList().get(index));
}

/// For every pair of types one character: '.' both stay; x the first goes; c the first becomes a clamp; m they merge;
/// y the second goes; k the second becomes a clamp; i both go, which leaves an identity matrix; ' ' there is none.
using PairTable = const char * [Color::kOpTypeCount];

template <class MakeFirst, class MakeSecond>
void expectPairs(const PairTable& table, OptimizerFlags flags, MakeFirst makeFirst, MakeSecond makeSecond)
{
    for (std::size_t i = 0; i < kLetters.size(); ++i) {
        for (std::size_t j = 0; j < kLetters.size(); ++j) {
            OpPtr first = makeFirst(static_cast<OpType>(i));
            OpPtr second = makeSecond(static_cast<OpType>(j));
            if (!first || !second) continue;
            const auto transform = listOf(std::move(first), std::move(second));
            optimize(*transform, flags);
            const std::string one(1, kLetters[i]);
            const std::string two(1, kLetters[j]);
            std::string expected = one + two;
            if (table[i][j] == 'x') expected = two;
            if (table[i][j] == 'c') expected = "R" + two;
            if (table[i][j] == 'm' || table[i][j] == 'y') expected = one;
            if (table[i][j] == 'k') expected = one + "R";
            if (table[i][j] == 'i') expected = "M";
            EXPECT_EQ(typesOf(*transform), expected) << one << two;
        }
    }
}

const PairTable kActivePairs = {
    // LITMRFGEOCDPHU
    "m.............", // L
    "..............", // I
    "..m...........", // T
    "...m..........", // M
    "x.x.x.........", // R
    "..............", // F
    "..............", // G
    "..............", // E
    "..............", // O
    "..............", // C
    "..............", // D
    "..............", // P
    "..............", // H
    "..............", // U
};

const PairTable kNeutralPairs = {
    // LITMRFGEOCDPHU
    "xcxcxccccccccc", // L
    "xxxxxxxxxxxxxx", // I
    "..m...........", // T
    "xxxxxxxxxxxxxx", // M
    "xxxxxxxxxxxxxx", // R
    "",               // F
    "xxxxxxxxxxxxxx", // G
    "xxxxxxxxxxxxxx", // E
    "",               // O
    "xxxxxxxxxxxxxx", // C
    "xxxxxxxxxxxxxx", // D
    "xxxxxxxxxxxxxx", // P
    "",               // H
    "",               // U
};

const PairTable kBypassedPairs = {
    // LITMRFGEOCDPHU
    "xcxcxccccccccc", // L
    "xxxxxxxxxxxxxx", // I
    "xcxcxccccccccc", // T
    "xxxxxxxxxxxxxx", // M
    "xxxxxxxxxxxxxx", // R
    "xxxxxxxxxxxxxx", // F
    "xxxxxxxxxxxxxx", // G
    "xxxxxxxxxxxxxx", // E
    "xxxxxxxxxxxxxx", // O
    "xxxxxxxxxxxxxx", // C
    "xxxxxxxxxxxxxx", // D
    "xxxxxxxxxxxxxx", // P
    "xxxxxxxxxxxxxx", // H
    "xxxxxxxxxxxxxx", // U
};

const PairTable kPairsBeforeNeutral = {
    // LITMRFGEOCDPHU
    "ky.yy yy yyy  ", // L
    "ky.yy yy yyy  ", // I
    "kymyy yy yyy  ", // T
    "ky.yy yy yyy  ", // M
    "yyxyy yy yyy  ", // R
    "ky.yy yy yyy  ", // F
    "ky.yy yy yyy  ", // G
    "ky.yy yy yyy  ", // E
    "ky.yy yy yyy  ", // O
    "ky.yy yy yyy  ", // C
    "ky.yy yy yyy  ", // D
    "ky.yy yy yyy  ", // P
    "ky.yy yy yyy  ", // H
    "ky.yy yy yyy  ", // U
};

// A range goes before the LUT or the range behind it does, though that one is switched off.
const PairTable kPairsBeforeBypassed = {
    // LITMRFGEOCDPHU
    "kykyyyyyyyyyyy", // L
    "kykyyyyyyyyyyy", // I
    "kykyyyyyyyyyyy", // T
    "kykyyyyyyyyyyy", // M
    "yyyyiyyyyyyyyy", // R
    "kykyyyyyyyyyyy", // F
    "kykyyyyyyyyyyy", // G
    "kykyyyyyyyyyyy", // E
    "kykyyyyyyyyyyy", // O
    "kykyyyyyyyyyyy", // C
    "kykyyyyyyyyyyy", // D
    "kykyyyyyyyyyyy", // P
    "kykyyyyyyyyyyy", // H
    "kykyyyyyyyyyyy", // U
};

const PairTable kUntouchedPairs = {
    "..............", "..............", "..............", "..............", "..............",
    "..............", "..............", "..............", "..............", "..............",
    "..............", "..............", "..............", "..............",
};

constexpr OptimizerFlags kKeep = OPTIMIZER_KEEP_DYNAMIC;

OpPtr makeDynamic(OpType type) { return withDynamicBypass(makeActive(type), false); }
OpPtr makeSwitchedOff(OpType type) { return withDynamicBypass(makeActive(type), true); }
OpPtr makeDynamicNeutral(OpType type)
{
    OpPtr op = makeNeutral(type);
    return op ? withDynamicBypass(std::move(op), false) : nullptr;
}

} // namespace

// What happens to every pair of types.

TEST(Optimizer, pairsOfActiveOps) { expectPairs(kActivePairs, OPTIMIZER_LUT3D, makeActive, makeActive); }

TEST(Optimizer, pairsWithAFirstOpWithoutEffect)
{
    expectPairs(kNeutralPairs, OPTIMIZER_LUT3D, makeNeutral, makeActive);
}

TEST(Optimizer, pairsWithAFirstOpThatIsBypassedForGood)
{
    const auto make = [](OpType type) { return bypassed(makeActive(type)); };
    expectPairs(kBypassedPairs, OPTIMIZER_LUT3D, make, makeActive);
    expectPairs(kBypassedPairs, OPTIMIZER_LUT3D | kKeep, make, makeActive);
}

TEST(Optimizer, pairsWithAFirstOpThatIsSwitchedOff)
{
    expectPairs(kBypassedPairs, OPTIMIZER_LUT3D, makeSwitchedOff, makeActive);
    expectPairs(kUntouchedPairs, OPTIMIZER_LUT3D | kKeep, makeSwitchedOff, makeActive);
}

TEST(Optimizer, pairsWithASecondOpWithoutEffect)
{
    expectPairs(kPairsBeforeNeutral, OPTIMIZER_LUT3D, makeActive, makeNeutral);
    expectPairs(kPairsBeforeNeutral, OPTIMIZER_LUT3D, makeActive, makeDynamicNeutral);
    expectPairs(kUntouchedPairs, OPTIMIZER_LUT3D | kKeep, makeActive, makeDynamicNeutral);
}

TEST(Optimizer, pairsWithASecondOpThatIsBypassed)
{
    const auto make = [](OpType type) { return bypassed(makeActive(type)); };
    expectPairs(kPairsBeforeBypassed, OPTIMIZER_LUT3D, makeActive, make);
    expectPairs(kPairsBeforeBypassed, OPTIMIZER_LUT3D | kKeep, makeActive, make);
    expectPairs(kPairsBeforeBypassed, OPTIMIZER_LUT3D, makeActive, makeSwitchedOff);
    expectPairs(kUntouchedPairs, OPTIMIZER_LUT3D | kKeep, makeActive, makeSwitchedOff);
}

TEST(Optimizer, dynamicOpsAreTreatedAsStaticOnesUnlessTheyAreKept)
{
    expectPairs(kActivePairs, OPTIMIZER_LUT3D, makeDynamic, makeActive);
    expectPairs(kActivePairs, OPTIMIZER_LUT3D, makeActive, makeDynamic);
    expectPairs(kNeutralPairs, OPTIMIZER_LUT3D, makeDynamicNeutral, makeActive);
}

TEST(Optimizer, nothingCrossesTheBorderBetweenDynamicOpsThatAreKeptAndStaticOnes)
{
    expectPairs(kUntouchedPairs, OPTIMIZER_LUT3D | kKeep, makeDynamic, makeActive);
    expectPairs(kUntouchedPairs, OPTIMIZER_LUT3D | kKeep, makeActive, makeDynamic);
    expectPairs(kUntouchedPairs, OPTIMIZER_LUT3D | kKeep, makeDynamicNeutral, makeActive);
}

TEST(Optimizer, twoDynamicNeighboursThatAreKeptMayMerge)
{
    expectPairs(kActivePairs, OPTIMIZER_LUT3D | kKeep, makeDynamic, makeDynamic);
    expectPairs(kActivePairs, OPTIMIZER_LUT3D | kKeep, makeSwitchedOff, makeDynamic);
    expectPairs(kActivePairs, OPTIMIZER_LUT3D | kKeep, makeDynamic, makeSwitchedOff);
}

// Thresholds.

TEST(Optimizer, eachThresholdAllowsTheActionsThatScoreAsMuch)
{
    struct Case
    {
        OptimizerFlags threshold;
        const char* actions;
        const char* types;
    };
    const Case cases[] = {
        {101, "", "GRMMLLTT"},
        {0x7fffffff, "", "GRMMLLTT"},
        {100, "1@0:100", "RMMLLTT"},
        {99, "1@0:100", "RMMLLTT"},
        {96, "1@0:100", "RMMLLTT"},
        {95, "1@0:100 3@1:95", "RMLLTT"},
        {90, "1@0:100 3@1:95", "RMLLTT"},
        {76, "1@0:100 3@1:95", "RMLLTT"},
        {75, "1@0:100 3@1:95 4@2:75", "RMLTT"},
        {46, "1@0:100 3@1:95 4@2:75", "RMLTT"},
        {45, "1@0:100 3@1:95 4@2:75 5@3:45", "RMLT"},
        {1, "1@0:100 3@1:95 4@2:75 5@3:45", "RMLT"},
    };
    for (const Case& entry : cases) {
        const auto transform = listOf(makeNeutral(Color::OP_GAMMA), makeClamp(), makeMatrix(2), makeMatrix(3),
                                      makeLut1D(0.5f), makeLut1D(0.5f), makeCube(0.5f), makeCube(0.5f));
        EXPECT_EQ(textOf(optimize(*transform, entry.threshold)), entry.actions) << entry.threshold;
        EXPECT_EQ(typesOf(*transform), entry.types) << entry.threshold;
    }
}

TEST(Optimizer, aRedundantRangeNeedsAThresholdOf99)
{
    const auto transform = listOf(makeClamp(), makeLut1D(0.5f));
    EXPECT_EQ(textOf(optimize(*transform, 100)), "");
    EXPECT_EQ(textOf(optimize(*transform, 99)), "2@0:99");
    EXPECT_EQ(typesOf(*transform), "L");
}

TEST(Optimizer, aThresholdOf0FailsOnceThereIsNothingMoreToDo)
{
    const Failure expected = {0x4010006, "COLOR:RENDERER:ALL", "Attempt to apply Null optimizer action"};
    const auto transform = listOf(makeMatrix(2), makeMatrix(3));
    EXPECT_EQ(failureOf([&] { optimize(*transform, 0); }), expected);
    EXPECT_EQ(typesOf(*transform), "M");
    EXPECT_EQ(failureOf([&] { optimize(*transform, kKeep); }), expected);
    Color::Transform empty;
    EXPECT_EQ(failureOf([&] { optimize(empty, 0); }), expected);
}

TEST(Optimizer, anEmptyListStaysEmpty)
{
    Color::Transform empty;
    EXPECT_EQ(textOf(optimize(empty, OPTIMIZER_LUT3D)), "");
    EXPECT_TRUE(empty.getOpList().empty());
}

TEST(Optimizer, removalsComeFirstInTheOrderOfTheList)
{
    const auto transform = listOf(makeMatrix(2), makeMatrix(3), makeClamp(), makeCube(0.5f), makeNeutral(Color::OP_CDL),
                                  makeCube(0.5f), makeNeutral(Color::OP_GAMUT_MAP));
    // The range before the cube is found ahead of the ops without effect behind it: both end the search.
    EXPECT_EQ(textOf(optimize(*transform, OPTIMIZER_LUT3D)), "2@2:99 1@3:100 1@4:100 3@0:95 5@1:45");
    EXPECT_EQ(typesOf(*transform), "MT");
}

TEST(Optimizer, aRedundantRangeBelowTheThresholdHidesTheRemovalsBehindIt)
{
    const auto transform = listOf(makeClamp(), makeLut1D(0.5f), makeNeutral(Color::OP_CDL));
    EXPECT_EQ(textOf(optimize(*transform, 100)), "");
    EXPECT_EQ(textOf(optimize(*transform, 99)), "2@0:99 1@1:100");
}

TEST(Optimizer, ofEqualScoresTheFirstIsTaken)
{
    const auto transform =
        listOf(makeMatrix(2), makeMatrix(3), makeActive(Color::OP_LOG), makeMatrix(5), makeMatrix(7));
    EXPECT_EQ(textOf(optimize(*transform, OPTIMIZER_DEFAULT)), "3@0:95 3@2:95");
}

// Removal.

TEST(Optimizer, theLastMatrixOrRangeStays)
{
    for (const OpType type : {Color::OP_MATRIX, Color::OP_RANGE}) {
        const auto transform = listOf(makeNeutral(type));
        const Op* const op = transform->getOpList().get(0);
        EXPECT_EQ(textOf(optimize(*transform, OPTIMIZER_LUT3D)), "");
        EXPECT_EQ(transform->getOpList().get(0), op);
    }
    const auto transform = listOf(makeNeutral(Color::OP_MATRIX), makeNeutral(Color::OP_RANGE));
    EXPECT_EQ(textOf(optimize(*transform, OPTIMIZER_LUT3D)), "1@0:100");
    EXPECT_EQ(typesOf(*transform), "R");
}

TEST(Optimizer, aLoneOpWithoutEffectBecomesAnIdentityMatrixOfItsDepths)
{
    auto gamma = std::make_unique<Color::GammaOp>(BIT_DEPTH_8i, BIT_DEPTH_10i);
    const auto transform = listOf(std::move(gamma));
    EXPECT_EQ(textOf(optimize(*transform, OPTIMIZER_DEFAULT)), "1@0:100");
    ASSERT_EQ(typesOf(*transform), "M");
    EXPECT_TRUE(opAt<MatrixOp>(*transform, 0).isEqual(MatrixOp(BIT_DEPTH_8i, BIT_DEPTH_10i)));
}

TEST(Optimizer, aLoneBypassedOpBecomesAnIdentityMatrixOfItsDepths)
{
    for (const OpType type : {Color::OP_MATRIX, Color::OP_RANGE, Color::OP_LOG, Color::OP_INVERSE_LUT_1D}) {
        OpPtr op = bypassed(makeActive(type));
        op->setInBitDepth(BIT_DEPTH_12i);
        op->setOutBitDepth(BIT_DEPTH_16i);
        const auto transform = listOf(std::move(op));
        EXPECT_EQ(textOf(optimize(*transform, OPTIMIZER_DEFAULT)), "1@0:100");
        ASSERT_EQ(typesOf(*transform), "M");
        EXPECT_TRUE(opAt<MatrixOp>(*transform, 0).isEqual(MatrixOp(BIT_DEPTH_12i, BIT_DEPTH_16i)));
    }
}

TEST(Optimizer, aCDLOfDefaultValuesIsRemovedAndItsClampWithIt)
{
    using Color::CDLOp;
    for (const auto style :
         {CDLOp::STYLE_V1_2_FWD, CDLOp::STYLE_V1_2_REV, CDLOp::STYLE_NO_CLAMP_FWD, CDLOp::STYLE_NO_CLAMP_REV}) {
        auto neutral = std::make_unique<CDLOp>();
        neutral->setStyle(style);
        auto active = std::make_unique<CDLOp>(*neutral);
        active->setSaturation(1 + 1e-9);
        const auto transform = listOf(std::move(neutral), std::move(active));
        EXPECT_EQ(textOf(optimize(*transform, OPTIMIZER_LUT3D)), "1@0:100");
        ASSERT_EQ(typesOf(*transform), "C");
        EXPECT_EQ(opAt<CDLOp>(*transform, 0).getSaturation(), 1 + 1e-9);
    }
}

TEST(Optimizer, theInverseOfAGamutMapIsRemovedTheMapStays)
{
    const Color::GamutMapOp map(BIT_DEPTH_32f, BIT_DEPTH_32f, Color::GamutMapOp::STYLE_DW3);
    const auto transform = listOf(OpPtr(map.clone()));
    map.appendInverse(transform->getOpList());
    ASSERT_EQ(typesOf(*transform), "PP");
    EXPECT_EQ(textOf(optimize(*transform, OPTIMIZER_LUT3D)), "1@1:100");
    ASSERT_EQ(typesOf(*transform), "P");
    EXPECT_EQ(opAt<Color::GamutMapOp>(*transform, 0).getStyle(), Color::GamutMapOp::STYLE_DW3);
}

TEST(Optimizer, anIdentityLutBecomesTheClampOfItsDepths)
{
    const auto transform = listOf(std::make_unique<Lut1DOp>(BIT_DEPTH_10i, BIT_DEPTH_8i, HALF_FLAGS_NONE));
    EXPECT_EQ(textOf(optimize(*transform, OPTIMIZER_DEFAULT)), "1@0:100");
    ASSERT_EQ(typesOf(*transform), "R");
    EXPECT_TRUE(opAt<RangeOp>(*transform, 0).isEqual(RangeOp(BIT_DEPTH_10i, BIT_DEPTH_8i, 0, 1023, 0, 255)));
}

TEST(Optimizer, anIdentityLutOfAHalfDomainBecomesAClampToo)
{
    const auto transform = listOf(std::make_unique<Lut1DOp>(BIT_DEPTH_16f, BIT_DEPTH_32f, HALF_FLAGS_HALF_DOMAIN));
    optimize(*transform, OPTIMIZER_DEFAULT);
    ASSERT_EQ(typesOf(*transform), "R");
    EXPECT_TRUE(opAt<RangeOp>(*transform, 0).isEqual(RangeOp(BIT_DEPTH_16f, BIT_DEPTH_32f, 0, 1, 0, 1)));
}

TEST(Optimizer, aBypassedLutLeavesItsClampTheInverseDoesNot)
{
    for (const OpType type : {Color::OP_LUT_1D, Color::OP_LUT_3D}) {
        OpPtr op = bypassed(makeActive(type));
        op->setInBitDepth(BIT_DEPTH_8i);
        op->setOutBitDepth(BIT_DEPTH_16i);
        const auto transform = listOf(std::move(op), makeActive(Color::OP_LOG));
        optimize(*transform, OPTIMIZER_DEFAULT);
        ASSERT_EQ(typesOf(*transform), "RO");
        const auto& clamp = opAt<RangeOp>(*transform, 0);
        EXPECT_TRUE(clamp.isEqual(RangeOp(BIT_DEPTH_8i, BIT_DEPTH_16i, 0, 255, 0, 65535)));
        EXPECT_FALSE(clamp.getBypass()->get());
    }
    const auto transform = listOf(bypassed(makeActive(Color::OP_INVERSE_LUT_1D)), makeActive(Color::OP_LOG));
    optimize(*transform, OPTIMIZER_DEFAULT);
    EXPECT_EQ(typesOf(*transform), "O");
}

TEST(Optimizer, aCubeWithoutEffectStays)
{
    const auto transform = listOf(makeCube(1.f), makeActive(Color::OP_LOG));
    EXPECT_EQ(textOf(optimize(*transform, OPTIMIZER_LUT3D)), "");
}

TEST(Optimizer, aRemovedOpHandsItsInDepthOn)
{
    const auto transform =
        listOf(Color::makeDiagonalMatrix(BIT_DEPTH_32f, BIT_DEPTH_8i, 2.f),
               std::make_unique<Color::GammaOp>(BIT_DEPTH_8i, BIT_DEPTH_10i), makeRange(0.25, 1, 0, 1));
    ASSERT_EQ(opAt<RangeOp>(*transform, 2).getMinIn(), 0.25 * 1023);
    EXPECT_EQ(textOf(optimize(*transform, OPTIMIZER_DEFAULT)), "1@1:100");
    EXPECT_EQ(transform->getOpList().get(1)->getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_NEAR(opAt<RangeOp>(*transform, 1).getMinIn(), 0.25 * 255, 1e-9);
}

TEST(Optimizer, aNeutralDynamicOpIsRemovedUnlessItIsKept)
{
    const auto makeList = [] {
        auto op = std::make_unique<Color::ExposureContrastOp>();
        op->getExposure()->makeDynamic();
        return listOf(std::move(op), makeActive(Color::OP_LOG));
    };
    const auto removed = makeList();
    optimize(*removed, OPTIMIZER_DEFAULT);
    EXPECT_EQ(typesOf(*removed), "O");
    const auto kept = makeList();
    optimize(*kept, OPTIMIZER_DEFAULT | kKeep);
    EXPECT_EQ(typesOf(*kept), "EO");
}

// Ranges that the next op makes redundant.

TEST(Optimizer, onlyARangeThatDoesNotScaleIsRedundant)
{
    const auto typesWith = [](OpPtr range) {
        const auto transform = listOf(std::move(range), makeLut1D(0.5f));
        optimize(*transform, OPTIMIZER_DEFAULT);
        return typesOf(*transform);
    };
    EXPECT_EQ(typesWith(makeRange(0, 1, 0, 1)), "L");
    // What it clips to is not looked at.
    EXPECT_EQ(typesWith(makeRange(0.25, 0.75, 0.25, 0.75)), "L");
    EXPECT_EQ(typesWith(makeRange(0.25, kNotSet, 0.25, kNotSet)), "L");
    EXPECT_EQ(typesWith(makeRange(0, 1, 0, 1.0000005)), "L");
    EXPECT_EQ(typesWith(makeRange(0, 1, 0, 1.000002)), "RL");
    EXPECT_EQ(typesWith(makeRange(0.25, kNotSet, 0.2500005, kNotSet)), "L");
    EXPECT_EQ(typesWith(makeRange(0.25, kNotSet, 0.250002, kNotSet)), "RL");
    EXPECT_EQ(typesWith(std::make_unique<RangeOp>(BIT_DEPTH_8i, BIT_DEPTH_10i, 0, 255, 0, 1023)), "L");
    EXPECT_EQ(typesWith(std::make_unique<RangeOp>(BIT_DEPTH_8i, BIT_DEPTH_10i, 0, 255, 64, 940)), "RL");
}

TEST(Optimizer, aHueAdjustMakesARangeRedundantToo)
{
    auto lut = makeLut1D(0.5f);
    lut->setHueAdjust(Lut1DOp::HUE_ADJUST_DW3);
    const auto transform = listOf(makeClamp(), std::move(lut));
    EXPECT_EQ(textOf(optimize(*transform, OPTIMIZER_LUT3D)), "2@0:99");
}

TEST(Optimizer, aHalfDomainMakesNoRangeRedundant)
{
    auto lut = std::make_unique<Lut1DOp>(BIT_DEPTH_32f, BIT_DEPTH_32f, HALF_FLAGS_HALF_DOMAIN);
    const auto transform = listOf(makeClamp(), scaledTable(std::move(lut), 0.5f));
    EXPECT_EQ(textOf(optimize(*transform, OPTIMIZER_LUT3D)), "");
}

TEST(Optimizer, aRangeThatClipsInsideItsOutDepthMakesTheOneBeforeRedundant)
{
    const auto typesWith = [](std::unique_ptr<RangeOp> next) {
        const auto transform = listOf(makeClamp(), std::move(next));
        optimize(*transform, OPTIMIZER_DEFAULT);
        return typesOf(*transform);
    };
    EXPECT_EQ(typesWith(makeRange(0, 1, 0, 1)), "R");
    EXPECT_EQ(typesWith(makeRange(0.25, 0.75, 0, 1)), "R");
    EXPECT_EQ(typesWith(makeRange(-0.001, 1, 0, 1)), "RR");
    EXPECT_EQ(typesWith(makeRange(0, 1.001, 0, 1)), "RR");
    EXPECT_EQ(typesWith(makeRange(0.25, kNotSet, 0.25, kNotSet)), "RR");
    EXPECT_EQ(typesWith(makeRange(kNotSet, 0.75, kNotSet, 0.75)), "RR");
    // Input limits are held against the out depth, whatever the in depth is.
    EXPECT_EQ(typesWith(std::make_unique<RangeOp>(BIT_DEPTH_32f, BIT_DEPTH_8i, 0, 200, 0, 255)), "R");
    const auto transform = listOf(std::make_unique<RangeOp>(BIT_DEPTH_8i, BIT_DEPTH_8i, 0, 255, 0, 255),
                                  std::make_unique<RangeOp>(BIT_DEPTH_8i, BIT_DEPTH_32f, 16, 235, 0, 1));
    EXPECT_EQ(textOf(optimize(*transform, OPTIMIZER_DEFAULT)), "");
}

// Merges.

TEST(Optimizer, threeMatricesBecomeOne)
{
    auto first = std::make_unique<MatrixOp>(BIT_DEPTH_32f, BIT_DEPTH_32f, "i", "a", Descriptions{"1"});
    first->setOffset(0, 0.5f);
    auto third = std::make_unique<MatrixOp>(BIT_DEPTH_32f, BIT_DEPTH_32f, "k", "c", Descriptions{"3"});
    third->getArray().setValue(0, 4.f);
    const auto bypass = first->getBypass();
    const auto transform = listOf(std::move(first), makeMatrix(3), std::move(third), makeActive(Color::OP_LOG));
    EXPECT_EQ(textOf(optimize(*transform, OPTIMIZER_DEFAULT)), "3@0:95 3@0:95");
    ASSERT_EQ(typesOf(*transform), "MO");
    const auto& merged = opAt<MatrixOp>(*transform, 0);
    EXPECT_EQ(merged.getArray().getValues(), (std::vector<float>{12, 0, 0, 0, 0, 3, 0, 0, 0, 0, 3, 0, 0, 0, 0, 3}));
    EXPECT_EQ(merged.getOffsets(), (MatrixOp::Offsets{6, 0, 0, 0}));
    EXPECT_EQ(merged.getId(), "ik");
    EXPECT_EQ(merged.getName(), "aDiagonal matrixc");
    EXPECT_EQ(merged.getDescriptions(), (Descriptions{"1", "3"}));
    EXPECT_EQ(merged.getBypass(), bypass);
}

TEST(Optimizer, mutuallyInverseMatricesVanishUnlessTheyAreAll)
{
    const float values[9] = {0.7f, 0.2f, 0.1f, 0.05f, 0.9f, 0.05f, 0.02f, 0.08f, 0.9f};
    const auto makeBoth = [&](Color::Transform& transform) {
        auto* matrix = new MatrixOp;
        matrix->setMatrix3x3(values);
        transform.getOpList().append(matrix);
        matrix->appendInverse(transform.getOpList());
    };
    Color::Transform alone;
    makeBoth(alone);
    EXPECT_EQ(textOf(optimize(alone, OPTIMIZER_DEFAULT)), "3@0:95");
    EXPECT_TRUE(opAt<MatrixOp>(alone, 0).isUnityDiagonal());

    Color::Transform transform;
    makeBoth(transform);
    transform.getOpList().append(makeActive(Color::OP_LOG).release());
    EXPECT_EQ(textOf(optimize(transform, OPTIMIZER_DEFAULT)), "3@0:95 1@0:100");
    EXPECT_EQ(typesOf(transform), "O");
}

TEST(Optimizer, mergedOpsHaveTheDepthsOfBothAndTheFirstsBypass)
{
    for (const OpType type : {Color::OP_MATRIX, Color::OP_LUT_1D, Color::OP_LUT_3D}) {
        OpPtr first = makeDynamic(type);
        first->setInBitDepth(BIT_DEPTH_8i);
        first->setOutBitDepth(BIT_DEPTH_10i);
        OpPtr second = makeDynamic(type);
        second->setOutBitDepth(BIT_DEPTH_16i);
        const auto bypass = first->getBypass();
        const auto transform = listOf(std::move(first), std::move(second), makeActive(Color::OP_LOG));
        optimize(*transform, OPTIMIZER_LUT3D);
        const Op& merged = *transform->getOpList().get(0);
        EXPECT_EQ(merged.getOpType(), type);
        EXPECT_EQ(merged.getInBitDepth(), BIT_DEPTH_8i);
        EXPECT_EQ(merged.getOutBitDepth(), BIT_DEPTH_16i);
        EXPECT_EQ(merged.getBypass(), bypass);
        EXPECT_EQ(transform->getOpList().get(1)->getInBitDepth(), BIT_DEPTH_16i);
    }
}

TEST(Optimizer, theFirstsSwitchStandsForTwoDynamicMatricesThatMerge)
{
    for (const bool isFirstOff : {false, true}) {
        const auto transform =
            listOf(withDynamicBypass(makeMatrix(2), isFirstOff), withDynamicBypass(makeMatrix(3), !isFirstOff));
        EXPECT_EQ(textOf(optimize(*transform, OPTIMIZER_DEFAULT | kKeep)), "3@0:95");
        const auto& merged = opAt<MatrixOp>(*transform, 0);
        EXPECT_EQ(merged.getArray().getValues()[0], 6.f);
        EXPECT_EQ(merged.getBypass()->get(), isFirstOff);
        EXPECT_TRUE(merged.getBypass()->isDynamic());
    }
}

TEST(Optimizer, lutsWithHueAdjustDoNotMerge)
{
    for (const bool isFirst : {true, false}) {
        auto first = makeLut1D(0.5f);
        auto second = makeLut1D(0.5f);
        (isFirst ? first : second)->setHueAdjust(Lut1DOp::HUE_ADJUST_DW3);
        const auto transform = listOf(std::move(first), std::move(second));
        EXPECT_EQ(textOf(optimize(*transform, OPTIMIZER_LUT3D)), "");
    }
}

TEST(Optimizer, whatAMergeRefusesRises)
{
    const auto transform = listOf(makeLut1D(0.5f), makeLut1D(0.5f));
    transform->getOpList().get(1)->setInBitDepth(BIT_DEPTH_8i);
    EXPECT_EQ(failureOf([&] { optimize(*transform, OPTIMIZER_LUT3D); }),
              (Failure{0x206000a, "COLOR:TRANSFORM:OPLIST", "Bit depth mismatch between op 'LUT 1D' and op 'LUT 1D'"}));
    const auto cubes = listOf(makeCube(0.5f), makeCube(0.5f));
    cubes->getOpList().get(1)->setInBitDepth(BIT_DEPTH_8i);
    EXPECT_EQ(failureOf([&] { optimize(*cubes, OPTIMIZER_LUT3D); }),
              (Failure{0x206000a, "COLOR:TRANSFORM:OPLIST", "Bit depth mismatch between op 'LUT 3D' and op 'LUT 3D'"}));
}

// Validation.

TEST(Optimizer, aListThatWasChangedIsValidated)
{
    const auto makeList = [] {
        // A hue vector without parameters is not valid.
        return listOf(makeNeutral(Color::OP_MATRIX), std::make_unique<Color::HueVectorOp>());
    };
    const auto changed = makeList();
    EXPECT_EQ(failureOf([&] { optimize(*changed, OPTIMIZER_DEFAULT); }),
              (Failure{0x4010007, "COLOR:RENDERER:ALL", "Transform optimization failed; Validation failure"}));
    const auto untouched = makeList();
    EXPECT_EQ(failureOf([&] { optimize(*untouched, OPTIMIZER_OFF); }), kNoFailure);
}

TEST(Optimizer, aListThatWasNotChangedIsNotValidated)
{
    const auto transform = listOf(makeActive(Color::OP_LOG), std::make_unique<Color::HueVectorOp>());
    EXPECT_EQ(failureOf([&] { optimize(*transform, OPTIMIZER_LUT3D); }), kNoFailure);
    EXPECT_EQ(transform->getId(), "");
}

// The overrides are read when the program is loaded, so each of them gets a new process. Its environment is the one of
// this process, in which they are set too late.

namespace {

class OptimizerOverrides : public ::testing::Test
{
protected:
    OptimizerOverrides() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    ~OptimizerOverrides() override
    {
        ::unsetenv("MORVANE_OPTIMIZER_VALUE");
        ::unsetenv("MORVANE_OPTIMIZER_KEEP_DYNAMIC_OPS");
    }

    /// Prints what is left of two matrices and two LUTs, and ends the process.
    [[noreturn]] static void reportTypes(OptimizerFlags flags)
    {
        const auto transform =
            listOf(makeMatrix(2), withDynamicBypass(makeMatrix(3), false), makeLut1D(0.5f), makeLut1D(0.5f));
        try {
            optimize(*transform, flags);
            std::cerr << "[" << typesOf(*transform) << "]" << std::endl;
        } catch (const Color::Exception& exception) {
            std::cerr << "[" << exception.getMessage() << "]" << std::endl;
        }
        std::_Exit(0);
    }

    static void expectTypes(OptimizerFlags flags, const std::string& expected)
    {
        EXPECT_EXIT(reportTypes(flags), ::testing::ExitedWithCode(0), "\\[" + expected + "\\]");
    }
};

} // namespace

TEST_F(OptimizerOverrides, notSet)
{
    expectTypes(OPTIMIZER_DEFAULT, "MLL");
    expectTypes(OPTIMIZER_DEFAULT | kKeep, "MMLL");
}

TEST_F(OptimizerOverrides, theThresholdIsReplaced)
{
    const std::pair<const char*, const char*> cases[] = {
        {"75", "ML"},
        {"  75abc", "ML"},
        {"101", "MMLL"},
        {"-1", "MLL"},
        {"-50", "MLL"},
        {"0", "Attempt to apply Null optimizer action"},
        {"", "Attempt to apply Null optimizer action"},
        {"off", "Attempt to apply Null optimizer action"},
    };
    for (const auto& [value, types] : cases) {
        ::setenv("MORVANE_OPTIMIZER_VALUE", value, 1);
        expectTypes(OPTIMIZER_DEFAULT, types);
    }
}

TEST_F(OptimizerOverrides, theThresholdIsReplacedAndDynamicOpsStayAsAskedFor)
{
    ::setenv("MORVANE_OPTIMIZER_VALUE", "75", 1);
    expectTypes(OPTIMIZER_OFF | kKeep, "MML");
}

TEST_F(OptimizerOverrides, keepingDynamicOpsIsReplaced)
{
    const std::pair<const char*, const char*> cases[] = {{"1", "MMLL"}, {"7", "MMLL"}, {"0", "MLL"}, {"no", "MLL"}};
    for (const auto& [value, types] : cases) {
        ::setenv("MORVANE_OPTIMIZER_KEEP_DYNAMIC_OPS", value, 1);
        expectTypes(OPTIMIZER_DEFAULT, types);
        expectTypes(OPTIMIZER_DEFAULT | kKeep, types);
    }
    ::setenv("MORVANE_OPTIMIZER_KEEP_DYNAMIC_OPS", "-1", 1);
    expectTypes(OPTIMIZER_DEFAULT, "MLL");
    expectTypes(OPTIMIZER_DEFAULT | kKeep, "MMLL");
}

TEST_F(OptimizerOverrides, aVariableThatIsSetAfterLoadingHasNoEffect)
{
    ::setenv("MORVANE_OPTIMIZER_VALUE", "101", 1);
    const auto transform = listOf(makeMatrix(2), makeMatrix(3));
    optimize(*transform, OPTIMIZER_DEFAULT);
    EXPECT_EQ(typesOf(*transform), "M");
}
