#include "transform/logOp.h"

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
const char* const kCategory = "COLOR:TRANSFORM:LOG";

const LogOp::Style kPlainStyles[] = {LogOp::STYLE_LOG10, LogOp::STYLE_LOG2, LogOp::STYLE_ANTI_LOG10,
                                     LogOp::STYLE_ANTI_LOG2};
const LogOp::Style kFilmStyles[] = {LogOp::STYLE_LOG_TO_LIN, LogOp::STYLE_LIN_TO_LOG};

const LogOp::Params kFilm{0.6, 685.0, 95.0, 1.0, 0.0};

/// What validation says when one channel has the given parameters and the others good ones.
Failure failureOfParams(const LogOp::Params& params, std::size_t channel = 0,
                        LogOp::Style style = LogOp::STYLE_LIN_TO_LOG)
{
    LogOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, style, kFilm, kFilm, kFilm);
    op.setParams(channel, params);
    return failureOf([&] { op.validate(); });
}

Failure tooSmallGamma(const std::string& gamma)
{
    return {0x20b0003, kCategory, "Invalid gamma (" + gamma + "), gamma should be greater than 0.010000"};
}

Failure wrongWhite(const std::string& white, const std::string& black)
{
    return {0x20b0004, kCategory,
            "Invalid refWhite (" + white + ") and refBlack (" + black + "), refWhite should be greater than refBlack"};
}

Failure wrongHighlight(const std::string& highlight, const std::string& shadow)
{
    return {0x20b0004, kCategory,
            "Invalid highlight (" + highlight + ") and shadow (" + shadow +
                "), highlight should be greater than shadow"};
}

} // namespace

TEST(LogOp, defaultIsLog10WithoutParameters)
{
    LogOp op;
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getStyle(), LogOp::STYLE_LOG10);
    for (std::size_t channel = 0; channel < 3; ++channel)
        EXPECT_TRUE(op.getParams(channel).empty()) << channel;
    EXPECT_EQ(failureOf([&] { op.validate(); }), kNoFailure);
}

TEST(LogOp, constructorsStoreTheirArguments)
{
    const LogOp named(BIT_DEPTH_8i, BIT_DEPTH_10i, "id", "name", {"d"});
    EXPECT_EQ(named.getId(), "id");
    EXPECT_EQ(named.getName(), "name");
    EXPECT_EQ(named.getDescriptions(), Descriptions{"d"});
    EXPECT_EQ(named.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(named.getOutBitDepth(), BIT_DEPTH_10i);

    const LogOp styled(BIT_DEPTH_8i, BIT_DEPTH_10i, LogOp::STYLE_ANTI_LOG2);
    EXPECT_EQ(styled.getStyle(), LogOp::STYLE_ANTI_LOG2);
    EXPECT_TRUE(styled.getParams(0).empty());

    const LogOp full(BIT_DEPTH_8i, BIT_DEPTH_10i, LogOp::STYLE_LOG_TO_LIN, {1.0}, {2.0}, {3.0});
    EXPECT_EQ(full.getStyle(), LogOp::STYLE_LOG_TO_LIN);
    EXPECT_EQ(full.getParams(0), LogOp::Params{1.0});
    EXPECT_EQ(full.getParams(1), LogOp::Params{2.0});
    EXPECT_EQ(full.getParams(2), LogOp::Params{3.0});
}

TEST(LogOp, saysWhatItIs)
{
    const LogOp op;
    EXPECT_EQ(op.getOpType(), OP_LOG);
    EXPECT_EQ(op.getOpTypeName(), "Log");
    EXPECT_EQ(op.getMinimumVersion(), 1.3F);
}

TEST(LogOp, stylesHaveTheirNumbersAndNames)
{
    const char* const names[] = {"log10", "log2", "antiLog10", "antiLog2", "logToLin", "linToLog"};
    for (uint32_t i = 0; i < 6; ++i) {
        EXPECT_STREQ(LogOp::getStyleName(static_cast<LogOp::Style>(i)), names[i]);
        EXPECT_EQ(LogOp::styleNamed(names[i]), i);
    }
    EXPECT_STREQ(LogOp::getStyleName(static_cast<LogOp::Style>(6)), "");
    EXPECT_EQ(LogOp::styleNamed("ANTILOG10"), LogOp::STYLE_ANTI_LOG10);
    EXPECT_EQ(LogOp::styleNamed("lintolog"), LogOp::STYLE_LIN_TO_LOG);
}

TEST(LogOp, unknownStyleNameFails)
{
    EXPECT_EQ(failureOf([] { LogOp::styleNamed("ln"); }),
              (Failure{0x20b0001, kCategory, "Unrecognized Log style: ln"}));
    EXPECT_EQ(failureOf([] { LogOp::styleNamed(""); }), (Failure{0x20b0001, kCategory, "Unrecognized Log style: "}));
}

TEST(LogOp, onlyFilmStylesHaveParameters)
{
    for (const LogOp::Style style : kPlainStyles) {
        EXPECT_FALSE(LogOp::hasParams(style));
        LogOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, style);
        EXPECT_EQ(failureOf([&] { op.validate(); }), kNoFailure);
    }
    for (const LogOp::Style style : kFilmStyles) {
        EXPECT_TRUE(LogOp::hasParams(style));
        LogOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, style, kFilm, kFilm, kFilm);
        EXPECT_EQ(failureOf([&] { op.validate(); }), kNoFailure);
    }
}

TEST(LogOp, validateChecksDepthsFirst)
{
    LogOp op(BIT_DEPTH_32f, BIT_DEPTH_UNKNOWN, LogOp::STYLE_LIN_TO_LOG);
    EXPECT_EQ(failureOf([&] { op.validate(); }),
              (Failure{0x2010001, "COLOR:TRANSFORM:ALL", "'OutBitDepth' attribute missing in Log"}));
}

TEST(LogOp, filmStylesHaveFiveParametersInEachChannel)
{
    const Failure failure{0x20b0002, kCategory, "The specified Log style must have 5 parameters"};
    for (const LogOp::Style style : kFilmStyles) {
        for (std::size_t channel = 0; channel < 3; ++channel) {
            EXPECT_EQ(failureOfParams({}, channel, style), failure);
            EXPECT_EQ(failureOfParams({0.6, 685.0, 95.0, 1.0}, channel, style), failure);
            EXPECT_EQ(failureOfParams({0.6, 685.0, 95.0, 1.0, 0.0, 0.0}, channel, style), failure);
        }
    }
}

TEST(LogOp, gammaIsGreaterThanTheFloatNextToAHundredth)
{
    const double bound = 0.009999999776482582;
    EXPECT_EQ(failureOfParams({bound, 685.0, 95.0, 1.0, 0.0}), tooSmallGamma("0.010000"));
    EXPECT_EQ(failureOfParams({std::nextafter(bound, 0.0), 685.0, 95.0, 1.0, 0.0}), tooSmallGamma("0.010000"));
    EXPECT_EQ(failureOfParams({std::nextafter(bound, 1.0), 685.0, 95.0, 1.0, 0.0}), kNoFailure);
    EXPECT_EQ(failureOfParams({0.01, 685.0, 95.0, 1.0, 0.0}), kNoFailure) << "the double is above the float";
    EXPECT_EQ(failureOfParams({0.005, 685.0, 95.0, 1.0, 0.0}), tooSmallGamma("0.005000"));
    EXPECT_EQ(failureOfParams({-1.0, 685.0, 95.0, 1.0, 0.0}), tooSmallGamma("-1.000000"));
}

TEST(LogOp, refWhiteIsGreaterThanRefBlack)
{
    EXPECT_EQ(failureOfParams({0.6, 95.0, 95.0, 1.0, 0.0}), wrongWhite("95.000000", "95.000000"));
    EXPECT_EQ(failureOfParams({0.6, 94.5, 95.0, 1.0, 0.0}), wrongWhite("94.500000", "95.000000"));
    EXPECT_EQ(failureOfParams({0.6, std::nextafter(95.0, 96.0), 95.0, 1.0, 0.0}), kNoFailure);
}

TEST(LogOp, highlightIsGreaterThanShadow)
{
    EXPECT_EQ(failureOfParams({0.6, 685.0, 95.0, 0.5, 0.5}), wrongHighlight("0.500000", "0.500000"));
    EXPECT_EQ(failureOfParams({0.6, 685.0, 95.0, 0.25, 0.5}), wrongHighlight("0.250000", "0.500000"));
    EXPECT_EQ(failureOfParams({0.6, 685.0, 95.0, std::nextafter(0.5, 1.0), 0.5}), kNoFailure);
}

TEST(LogOp, gammaIsCheckedBeforeThePairs)
{
    EXPECT_EQ(failureOfParams({0.0, 95.0, 685.0, 0.0, 1.0}), tooSmallGamma("0.000000"));
    EXPECT_EQ(failureOfParams({0.6, 95.0, 685.0, 0.0, 1.0}), wrongWhite("95.000000", "685.000000"));
}

TEST(LogOp, checksHoldForEveryChannelAndFilmStyle)
{
    for (const LogOp::Style style : kFilmStyles) {
        for (std::size_t channel = 0; channel < 3; ++channel) {
            EXPECT_EQ(failureOfParams({0.0, 685.0, 95.0, 1.0, 0.0}, channel, style), tooSmallGamma("0.000000"));
            EXPECT_EQ(failureOfParams({0.6, 1.0, 2.0, 1.0, 0.0}, channel, style), wrongWhite("1.000000", "2.000000"));
            EXPECT_EQ(failureOfParams({0.6, 2.0, 1.0, 1.0, 2.0}, channel, style),
                      wrongHighlight("1.000000", "2.000000"));
        }
    }
}

TEST(LogOp, parametersThatAreNoNumbersFail)
{
    EXPECT_EQ(failureOfParams({kNan, 685.0, 95.0, 1.0, 0.0}), tooSmallGamma("nan"));
    EXPECT_EQ(failureOfParams({-kInfinity, 685.0, 95.0, 1.0, 0.0}), tooSmallGamma("-inf"));
    EXPECT_EQ(failureOfParams({0.6, kNan, 95.0, 1.0, 0.0}), wrongWhite("nan", "95.000000"));
    EXPECT_EQ(failureOfParams({0.6, 685.0, kNan, 1.0, 0.0}), wrongWhite("685.000000", "nan"));
    EXPECT_EQ(failureOfParams({0.6, kInfinity, kInfinity, 1.0, 0.0}), wrongWhite("inf", "inf"));
    EXPECT_EQ(failureOfParams({0.6, 685.0, 95.0, kNan, 0.0}), wrongHighlight("nan", "0.000000"));
    EXPECT_EQ(failureOfParams({0.6, 685.0, 95.0, 1.0, kNan}), wrongHighlight("1.000000", "nan"));
    EXPECT_EQ(failureOfParams({0.6, 685.0, 95.0, -kInfinity, 0.0}), wrongHighlight("-inf", "0.000000"));
}

TEST(LogOp, infinityIsGreaterThanTheBounds)
{
    EXPECT_EQ(failureOfParams({kInfinity, kInfinity, 95.0, 1.0, -kInfinity}), kNoFailure);
}

TEST(LogOp, noStyleIsANoOp)
{
    for (const LogOp::Style style : kPlainStyles)
        EXPECT_FALSE(LogOp(BIT_DEPTH_32f, BIT_DEPTH_32f, style).isNoOp());
    for (const LogOp::Style style : kFilmStyles) {
        const LogOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, style, kFilm, kFilm, kFilm);
        EXPECT_FALSE(op.isNoOp());
        EXPECT_FALSE(op.isIdentity());
    }
}

TEST(LogOp, depthsLeaveTheParameters)
{
    LogOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, LogOp::STYLE_LOG_TO_LIN, kFilm, kFilm, kFilm);
    op.setInBitDepth(BIT_DEPTH_10i);
    op.setOutBitDepth(BIT_DEPTH_16f);
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(op.getParams(0), kFilm);
}

TEST(LogOp, inverseHasTheOppositeStyle)
{
    const auto inverseStyleOf = [](LogOp::Style style) {
        OpList list;
        LogOp(BIT_DEPTH_32f, BIT_DEPTH_32f, style, kFilm, kFilm, kFilm).appendInverse(list);
        return dynamic_cast<const LogOp&>(*list.get(0)).getStyle();
    };
    EXPECT_EQ(inverseStyleOf(LogOp::STYLE_LOG10), LogOp::STYLE_ANTI_LOG10);
    EXPECT_EQ(inverseStyleOf(LogOp::STYLE_LOG2), LogOp::STYLE_ANTI_LOG2);
    EXPECT_EQ(inverseStyleOf(LogOp::STYLE_ANTI_LOG10), LogOp::STYLE_LOG10);
    EXPECT_EQ(inverseStyleOf(LogOp::STYLE_ANTI_LOG2), LogOp::STYLE_LOG2);
    EXPECT_EQ(inverseStyleOf(LogOp::STYLE_LOG_TO_LIN), LogOp::STYLE_LIN_TO_LOG);
    EXPECT_EQ(inverseStyleOf(LogOp::STYLE_LIN_TO_LOG), LogOp::STYLE_LOG_TO_LIN);
}

TEST(LogOp, inverseHasTheSameParametersAndExchangedDepths)
{
    const LogOp::Params green{0.7, 700.0, 90.0, 1.0, 0.0};
    const LogOp::Params blue{0.8, 710.0, 80.0, 1.0, 0.0};
    OpList list;
    LogOp(BIT_DEPTH_10i, BIT_DEPTH_16f, LogOp::STYLE_LOG_TO_LIN, kFilm, green, blue).appendInverse(list);
    ASSERT_EQ(list.size(), 1U);
    EXPECT_TRUE(list.get(0)->isEqual(LogOp(BIT_DEPTH_16f, BIT_DEPTH_10i, LogOp::STYLE_LIN_TO_LOG, kFilm, green, blue)));

    OpList plain;
    LogOp(BIT_DEPTH_10i, BIT_DEPTH_16f, LogOp::STYLE_LOG2).appendInverse(plain);
    EXPECT_TRUE(plain.get(0)->isEqual(LogOp(BIT_DEPTH_16f, BIT_DEPTH_10i, LogOp::STYLE_ANTI_LOG2)));
}

TEST(LogOp, inverseIsValidated)
{
    OpList list;
    EXPECT_EQ(failureOf([&] { LogOp(BIT_DEPTH_32f, BIT_DEPTH_32f, LogOp::STYLE_LOG_TO_LIN).appendInverse(list); }),
              (Failure{0x20b0002, kCategory, "The specified Log style must have 5 parameters"}));
    EXPECT_TRUE(list.empty());
}

TEST(LogOp, cloneIsEqual)
{
    LogOp op(BIT_DEPTH_8i, BIT_DEPTH_16f, "id", "name", {"d"});
    op.setStyle(LogOp::STYLE_LIN_TO_LOG);
    op.setParams(2, {kNan});
    const std::unique_ptr<Op> clone(op.clone());
    EXPECT_TRUE(op.isEqual(*clone));
    EXPECT_EQ(clone->getOpType(), OP_LOG);
    EXPECT_EQ(clone->getName(), "name");
}

TEST(LogOp, isEqualComparesStyleAndParameters)
{
    const LogOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, LogOp::STYLE_LIN_TO_LOG, kFilm, kFilm, kFilm);
    EXPECT_TRUE(op.isEqual(LogOp(BIT_DEPTH_32f, BIT_DEPTH_32f, LogOp::STYLE_LIN_TO_LOG, kFilm, kFilm, kFilm)));
    LogOp otherStyle(op);
    otherStyle.setStyle(LogOp::STYLE_LOG_TO_LIN);
    EXPECT_FALSE(op.isEqual(otherStyle));
    for (std::size_t channel = 0; channel < 3; ++channel) {
        for (std::size_t i = 0; i < 5; ++i) {
            LogOp::Params params = kFilm;
            params[i] += 0.125;
            LogOp other(op);
            other.setParams(channel, params);
            EXPECT_FALSE(op.isEqual(other)) << channel << " " << i;
        }
    }
    EXPECT_FALSE(op.isEqual(LogOp(BIT_DEPTH_8i, BIT_DEPTH_32f, LogOp::STYLE_LIN_TO_LOG, kFilm, kFilm, kFilm)));
    EXPECT_FALSE(LogOp().isEqual(GammaOp()));
}
