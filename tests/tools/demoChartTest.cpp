// The chart of the demonstration, from the program that makes it.

#include "commandRunner.h"
#include "testImage.h"

#include <algorithm>

namespace {

class DemoChartTest : public CommandTest
{
protected:
    Outcome demoChart(const std::vector<std::string>& arguments) const
    {
        return runProgram(MORVANE_DEMO_CHART, arguments, m_directory);
    }
};

} // namespace

TEST_F(DemoChartTest, holdsHighDynamicRangeInHalf)
{
    ASSERT_EQ(demoChart({"chart.exr"}).exitCode, 0);
    const TestImage chart = readImage(path("chart.exr"));
    EXPECT_EQ(chart.spec.format, OIIO::TypeHalf);
    EXPECT_EQ(chart.spec.width, 1920);
    EXPECT_EQ(chart.spec.height, 1080);
    EXPECT_EQ(*std::max_element(chart.values.begin(), chart.values.end()), 16.0);
    // BT.2020 red lies a hair outside the triangle of ACES2065-1.
    EXPECT_GE(*std::min_element(chart.values.begin(), chart.values.end()), -0.001);
    EXPECT_EQ(chart.spec.get_string_attribute("ImageDescription"),
              "Colour chart, scene-linear ACES2065-1, greys from 0 to 16");
}

TEST_F(DemoChartTest, patchesComeBackAsTheirPublishedCodes)
{
    // From the chart through the shipped transform and the display's encoding: the codes of the published table.
    ASSERT_EQ(demoChart({"chart.exr"}).exitCode, 0);
    expectSuccess({"apply", "-t", MORVANE_TRANSFORMS "/ACES2065-1_to_linear-sRGB.ctf", "chart.exr", "linear.exr"});
    ASSERT_EQ(demoChart({"preview", "linear.exr", "seen.png"}).exitCode, 0);
    const TestImage seen = readImage(path("seen.png"));
    const struct
    {
        int x, y;
        double red, green, blue;
    } patches[] = {{135, 123, 115, 82, 68}, {945, 285, 224, 163, 46}, {135, 447, 56, 61, 150}, {945, 609, 52, 52, 52}};
    for (const auto& patch : patches) {
        // Halves have 11 bits: one code more or less.
        EXPECT_NEAR(seen.at(patch.x, patch.y, 0), patch.red, 1.0);
        EXPECT_NEAR(seen.at(patch.x, patch.y, 1), patch.green, 1.0);
        EXPECT_NEAR(seen.at(patch.x, patch.y, 2), patch.blue, 1.0);
    }
    // The first of the saturated fields is pure red.
    EXPECT_NEAR(seen.at(1150, 100, 0), 255, 1.0);
    EXPECT_LE(seen.at(1150, 100, 1), 13);
    EXPECT_LE(seen.at(1150, 100, 2), 13);
}

TEST_F(DemoChartTest, goesThroughAChainOfEachFormat)
{
    ASSERT_EQ(demoChart({"chart.exr"}).exitCode, 0);
    const std::vector<std::string> chain = {
        MORVANE_TRANSFORMS "/ACES2065-1_to_linear-sRGB.ctf", MORVANE_TRANSFORMS "/demo/linear-sRGB_to_film-log.ctf",
        MORVANE_TRANSFORMS "/demo/warm.cdl", MORVANE_TRANSFORMS "/demo/film-log_to_sRGB.lut",
        MORVANE_TRANSFORMS "/demo/split-tone.3dl"};
    std::vector<std::string> arguments = {"apply", "--out-depth", "8i"}, converted = arguments;
    for (size_t i = 0; i < chain.size(); ++i) {
        const std::string name = std::to_string(i) + ".ctf";
        expectSuccess({"convert", chain[i], name});
        arguments.push_back(chain[i]);
        converted.push_back(name);
    }
    arguments.insert(arguments.end(), {"chart.exr", "graded.png"});
    converted.insert(converted.end(), {"chart.exr", "converted.png"});
    expectSuccess(arguments);
    expectSuccess(converted);
    const TestImage graded = readImage(path("graded.png"));
    EXPECT_EQ(graded.values, readImage(path("converted.png")).values);

    // Fifteen steps of one stop each, from nearly black to white: all differ, and the dark ones are cool, the light
    // ones warm.
    const auto sample = [&](int step, int channel) { return graded.at(60 + 1812 * (2 * step + 1) / 30, 978, channel); };
    for (int step = 1; step < 15; ++step) {
        EXPECT_GT(sample(step, 1), sample(step - 1, 1)) << step;
    }
    EXPECT_GE(sample(14, 1), 250.0);
    for (const int step : {3, 4, 5}) {
        EXPECT_LT(sample(step, 0), sample(step, 2)) << step;
    }
    for (const int step : {8, 9, 10, 11}) {
        EXPECT_GT(sample(step, 0), sample(step, 2)) << step;
    }
}

TEST_F(DemoChartTest, previewEncodesForADisplay)
{
    // 0.5 becomes 188 and 0.18 becomes 118 of 255; what is out of range is clipped.
    const double values[] = {-1.0, 0.0, 0.18, 0.5, 1.0, 16.0};
    const double codes[] = {0, 0, 118, 188, 255, 255};
    writeImage(path("in.exr"), makeImage({6, 1, 3, OIIO::TypeFloat}, [&](int x, int, int) { return values[x]; }));
    ASSERT_EQ(demoChart({"preview", "in.exr", "out.png"}).exitCode, 0);
    expectSamples(readImage(path("out.png")), [&](int x, int, int) { return codes[x]; });
}

TEST_F(DemoChartTest, reportsWhatItCannotDo)
{
    EXPECT_EQ(demoChart({}).exitCode, 2);
    const Outcome outcome = demoChart({"preview", "none.exr", "out.png"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.error.rfind("morvane-demo-chart: 'none.exr': ", 0), 0u) << outcome.error;
}
