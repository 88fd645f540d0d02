// The numbers in the transforms that ship, computed a second time: by elimination in long double, from equations rather
// than from products of matrices.

#include "commandRunner.h"

#include "morvane/morvane.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

using Column = std::array<long double, 3>;

/// Solves a * x = b by elimination with pivoting; a is given by columns.
Column solve(const std::array<Column, 3>& columns, const Column& b)
{
    long double rows[3][4];
    for (size_t r = 0; r < 3; ++r) {
        for (size_t c = 0; c < 3; ++c)
            rows[r][c] = columns[c][r];
        rows[r][3] = b[r];
    }
    for (size_t pivot = 0; pivot < 3; ++pivot) {
        for (size_t r = pivot + 1; r < 3; ++r) {
            if (std::fabs(rows[r][pivot]) > std::fabs(rows[pivot][pivot])) std::swap(rows[r], rows[pivot]);
        }
        for (size_t r = 0; r < 3; ++r) {
            if (r == pivot) continue;
            const long double factor = rows[r][pivot] / rows[pivot][pivot];
            for (size_t c = pivot; c < 4; ++c)
                rows[r][c] -= factor * rows[pivot][c];
        }
    }
    return {rows[0][3] / rows[0][0], rows[1][3] / rows[1][1], rows[2][3] / rows[2][2]};
}

struct Space
{
    long double x[3], y[3]; ///< of red, green and blue
    long double whiteX, whiteY;
};

const Space kAP0 = {{0.7347L, 0.0L, 0.0001L}, {0.2653L, 1.0L, -0.077L}, 0.32168L, 0.33767L};
const Space kBT709 = {{0.64L, 0.3L, 0.15L}, {0.33L, 0.6L, 0.06L}, 0.3127L, 0.329L};

Column whiteXYZ(const Space& s) { return {s.whiteX / s.whiteY, 1.0L, (1.0L - s.whiteX - s.whiteY) / s.whiteY}; }

/// XYZ of each primary, with the luminances that add up to white.
std::array<Column, 3> primaries(const Space& s)
{
    std::array<Column, 3> xyz{};
    for (size_t i = 0; i < 3; ++i)
        xyz[i] = {s.x[i], s.y[i], 1.0L - s.x[i] - s.y[i]};
    const Column amounts = solve(xyz, whiteXYZ(s));
    for (size_t i = 0; i < 3; ++i) {
        for (long double& value : xyz[i])
            value *= amounts[i];
    }
    return xyz;
}

/// Cone responses of the Bradford method.
Column cones(const Column& xyz)
{
    return {0.8951L * xyz[0] + 0.2664L * xyz[1] - 0.1614L * xyz[2],
            -0.7502L * xyz[0] + 1.7135L * xyz[1] + 0.0367L * xyz[2],
            0.0389L * xyz[0] - 0.0685L * xyz[1] + 1.0296L * xyz[2]};
}

/// The column of the matrix between two spaces for one primary of the first.
Column convertedPrimary(const Space& from, const Space& to, size_t primary)
{
    const std::array<Column, 3> coneBasis = {cones({1, 0, 0}), cones({0, 1, 0}), cones({0, 0, 1})};
    Column response = cones(primaries(from)[primary]);
    const Column fromWhite = cones(whiteXYZ(from)), toWhite = cones(whiteXYZ(to));
    for (size_t i = 0; i < 3; ++i)
        response[i] *= toWhite[i] / fromWhite[i];
    return solve(primaries(to), solve(coneBasis, response));
}

/// The numbers of the Array of a shipped file, as they stand in its text.
std::vector<double> arrayOf(const std::string& text)
{
    const std::string begin = "<Array dim=\"3 3 3\">";
    const size_t at = text.find(begin) + begin.size();
    std::istringstream stream(text.substr(at, text.find("</Array>") - at));
    std::vector<double> numbers;
    for (double number = 0; stream >> number;)
        numbers.push_back(number);
    return numbers;
}

class ShippedTransformsTest : public CommandTest
{
protected:
    static std::string file(const std::string& name) { return std::string(MORVANE_TRANSFORMS) + "/" + name; }

    std::string textOf(const std::string& name) const
    {
        std::filesystem::copy_file(file(name), path("copy"), std::filesystem::copy_options::overwrite_existing);
        return readBytes("copy");
    }

    void expectMatrix(const std::string& name, const Space& from, const Space& to) const
    {
        const std::vector<double> numbers = arrayOf(textOf(name));
        ASSERT_EQ(numbers.size(), 9u);
        for (size_t column = 0; column < 3; ++column) {
            const Column expected = convertedPrimary(from, to, column);
            for (size_t row = 0; row < 3; ++row) {
                EXPECT_NEAR(numbers[row * 3 + column], static_cast<double>(expected[row]), 1e-7) << row << column;
            }
        }
    }
};

/// Loads a shipped file and takes one pixel of three samples through it.
template <class T>
std::array<T, 3> convert(const std::string& path, Morvane::PixelFormat format, std::array<T, 3> pixel)
{
    Morvane::TransformPtr transform, finalized;
    EXPECT_TRUE(Morvane::loadColorTransform(path.c_str(), transform)) << path;
    EXPECT_TRUE(Morvane::finalize(transform, format, format, Morvane::RENDERER_CPU, Morvane::OPTIMIZER_DEFAULT,
                                  Morvane::RESOLVE_GRAPHICS_MONITOR, finalized));
    std::array<T, 3> converted{};
    EXPECT_TRUE(finalized->apply(pixel.data(), Morvane::ROI(0, 0, 1, 1), converted.data()));
    return converted;
}

} // namespace

TEST_F(ShippedTransformsTest, matricesFollowFromThePublishedPrimaries)
{
    expectMatrix("ACES2065-1_to_linear-sRGB.ctf", kAP0, kBT709);
    expectMatrix("linear-sRGB_to_ACES2065-1.ctf", kBT709, kAP0);
}

TEST_F(ShippedTransformsTest, whiteStaysWhite)
{
    for (const char* name : {"ACES2065-1_to_linear-sRGB.ctf", "linear-sRGB_to_ACES2065-1.ctf", "misc/identity.ctf"}) {
        for (const float value : convert<float>(file(name), Morvane::PF_RGB_32f, {1.0f, 1.0f, 1.0f})) {
            EXPECT_NEAR(value, 1.0f, 1e-6f) << name;
        }
    }
}

TEST_F(ShippedTransformsTest, identityChangesNothing)
{
    const std::array<float, 3> pixel = {-0.25f, 1e-6f, 123.0f};
    EXPECT_EQ(convert<float>(file("misc/identity.ctf"), Morvane::PF_RGB_32f, pixel), pixel);
}

TEST_F(ShippedTransformsTest, legalRangeHasItsPublishedLevels)
{
    const std::string name = file("full-range_to_legal-range_10i.ctf");
    EXPECT_EQ(convert<uint16_t>(name, Morvane::PF_RGB_10i, {0, 1023, 341}), (std::array<uint16_t, 3>{64, 940, 356}));
    EXPECT_EQ(convert<uint16_t>(name, Morvane::PF_RGB_10i, {1, 682, 511}), (std::array<uint16_t, 3>{65, 648, 502}));
}

TEST_F(ShippedTransformsTest, filmCodesFollowFromDensity)
{
    // One stop is log10(2) * 300 codes; the black point at code 95 stands for a hundredth of white.
    const auto codes =
        convert<float>(file("demo/linear-sRGB_to_film-log.ctf"), Morvane::PF_RGB_32f, {1.0f, 0.0f, 8.0f});
    EXPECT_NEAR(codes[0] * 1023.0f, 685.0f, 0.01f);
    EXPECT_NEAR(codes[1] * 1023.0f, 95.0f, 0.01f);
    EXPECT_NEAR(codes[2] * 1023.0f, 685.0f + 300.0f * std::log10((8.0f + 0.0109f) / 1.0109f), 0.02f);
}

TEST_F(ShippedTransformsTest, theGradeIsThatOfItsNumbers)
{
    // Slope and offset make 0.515, 0.5 and 0.485, whose luma is 0.50211; the saturation moves them away from it.
    const auto grey = convert<float>(file("demo/warm.cdl"), Morvane::PF_RGB_32f, {0.5f, 0.5f, 0.5f});
    EXPECT_NEAR(grey[0], 0.516289f, 1e-5f);
    EXPECT_NEAR(grey[1], 0.499789f, 1e-5f);
    EXPECT_NEAR(grey[2], 0.483289f, 1e-5f);
}

TEST_F(ShippedTransformsTest, filmCodesReachTheDisplay)
{
    // Black stays, the brightest code becomes white, and middle grey the code of sRGB for it.
    const std::string toLog = file("demo/linear-sRGB_to_film-log.ctf"), toDisplay = file("demo/film-log_to_sRGB.lut");
    const auto codes = convert<float>(toLog, Morvane::PF_RGB_32f, {0.0f, 0.18f, 100.0f});
    const auto shown = convert<float>(toDisplay, Morvane::PF_RGB_32f, codes);
    EXPECT_NEAR(shown[0], 0.0f, 1e-3f);
    EXPECT_NEAR(shown[1], 0.4614f, 2e-3f);
    EXPECT_EQ(shown[2], 1.0f);
}

TEST_F(ShippedTransformsTest, theLookIsWarmInLightsAndCoolInShadows)
{
    const std::string name = file("demo/split-tone.3dl");
    const auto look = [&](uint16_t grey) { return convert<uint16_t>(name, Morvane::PF_RGB_10i, {grey, grey, grey}); };
    EXPECT_EQ(look(0), (std::array<uint16_t, 3>{0, 0, 0}));
    EXPECT_EQ(look(1023), (std::array<uint16_t, 3>{1023, 1023, 1023}));
    // A grid point, 3/4: red gets 0.2 * 0.25 * 0.75 = 0.0375 more.
    const auto light = convert<float>(name, Morvane::PF_RGB_32f, {0.75f, 0.75f, 0.75f});
    EXPECT_NEAR(light[0], 0.7875f, 1e-3f);
    EXPECT_NEAR(light[1], 0.75f, 1e-3f);
    EXPECT_NEAR(light[2], 0.7125f, 1e-3f);
    const auto shadow = convert<float>(name, Morvane::PF_RGB_32f, {0.25f, 0.25f, 0.25f});
    EXPECT_NEAR(shadow[0], 0.2125f, 1e-3f);
    EXPECT_NEAR(shadow[2], 0.2875f, 1e-3f);
}

TEST_F(ShippedTransformsTest, everyFileSaysWhatItIs)
{
    size_t count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(MORVANE_TRANSFORMS)) {
        if (entry.path().extension() != ".ctf") continue;
        ++count;
        Morvane::TransformPtr transform;
        ASSERT_TRUE(Morvane::loadColorTransform(entry.path().c_str(), transform)) << entry.path();
        EXPECT_EQ(entry.path().stem().string(), transform->getName());
        for (const char* text : {transform->getId(), transform->getDescription(), transform->getInputDescriptor(),
                                 transform->getOutputDescriptor()}) {
            EXPECT_STRNE(text, "") << entry.path();
        }
    }
    EXPECT_EQ(count, 5u);
}
