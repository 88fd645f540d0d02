#include "renderer/logOpUtil.h"

#include "tests/utils/failure.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using namespace Rendering;
using Color::LogOp;

TEST(LogOpUtil, theChannelOfTheFilmDefaults)
{
    const LogChannel channel = makeLogChannel({0.6, 685, 95, 1, 0});
    EXPECT_EQ(channel.refWhite, 685.f / 1023.f);
    EXPECT_EQ(channel.densityFactor, 2.046f / 0.6f);
    // 10 ^ ((95 - 685) / 1023 * 3.41) = 10 ^ -1.966667 = 0.0107978; 1 / (1 - that) = 1.0109156.
    EXPECT_NEAR(channel.gain, 1.0109156f, 1e-6f);
    EXPECT_NEAR(channel.offset, 0.0109156f, 1e-6f);
    EXPECT_EQ(channel.offset, channel.gain - 1.f);
    EXPECT_EQ(channel.shadow, 0.f);
}

TEST(LogOpUtil, highlightAndShadowSpreadTheGain)
{
    const LogChannel channel = makeLogChannel({0.6, 685, 95, 1.5, 0.25});
    // 1.25 * 1.0109156.
    EXPECT_NEAR(channel.gain, 1.2636445f, 2e-6f);
    EXPECT_EQ(channel.offset, channel.gain - 1.25f);
    EXPECT_EQ(channel.shadow, 0.25f);
}

TEST(LogOpUtil, blackIsKeptBelowWhite)
{
    // 1 - 10 ^ -0.0001 = 0.000230232 for black at white, above it, and for a NaN.
    for (const double refBlack : {685.0, 900.0, std::numeric_limits<double>::quiet_NaN()}) {
        const LogChannel channel = makeLogChannel({0.6, 685, refBlack, 1, 0});
        EXPECT_NEAR(channel.gain, 4343.4f, 3.f) << refBlack;
    }
}

TEST(LogOpUtil, parametersAreNarrowedFirst)
{
    // 0.1 as a float is above 0.1, and the two differ in the quotient's last bits.
    const LogChannel channel = makeLogChannel({0.1, 0.1, 0, 0.3, 0.1});
    EXPECT_EQ(channel.refWhite, 0.1f / 1023.f);
    EXPECT_EQ(channel.densityFactor, 2.046f / 0.1f);
    EXPECT_EQ(channel.offset, channel.gain - (0.3f - 0.1f));
}

TEST(LogOpUtil, anyOtherNumberOfParametersIsRefused)
{
    const Failure expected{0x20b0002, "COLOR:TRANSFORM:LOG", "The specified Log style must have 5 parameters"};
    EXPECT_EQ(failureOf([] { makeLogChannel({}); }), expected);
    EXPECT_EQ(failureOf([] { makeLogChannel({0.6, 685, 95, 1}); }), expected);
    EXPECT_EQ(failureOf([] { makeLogChannel({0.6, 685, 95, 1, 0, 0}); }), expected);
}

TEST(LogOpUtil, aRendererTakesNoStyleButItsOwn)
{
    const auto check = [](LogOp::Style style, RendererType type) {
        return failureOf([&] { checkLogStyle(style, type); });
    };
    const RendererType types[] = {RENDERER_LOG, RENDERER_ANTI_LOG, RENDERER_LOG_2_LIN, RENDERER_LIN_2_LOG};
    // The renderer of each style, as an index into the types.
    const std::size_t own[] = {0, 0, 1, 1, 2, 3};
    const std::string names[] = {"log10", "log2", "antiLog10", "antiLog2", "logToLin", "linToLog"};
    for (std::size_t style = 0; style < 6; ++style) {
        for (std::size_t type = 0; type < 4; ++type) {
            const Failure expected =
                type == own[style]
                    ? kNoFailure
                    : Failure{0x4020004, "COLOR:RENDERER:CPU",
                              "Illegal log style '" + names[style] + "' for renderer " + std::to_string(types[type])};
            EXPECT_EQ(check(static_cast<LogOp::Style>(style), types[type]), expected);
        }
    }
    EXPECT_EQ(check(LogOp::STYLE_LOG10, RENDERER_GAMMA_BASIC).message, "Illegal log style 'log10' for renderer 19");
    EXPECT_EQ(check(static_cast<LogOp::Style>(6), RENDERER_LOG).message, "Illegal log style '' for renderer 25");
}
