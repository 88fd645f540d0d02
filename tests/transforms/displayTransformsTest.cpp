// The transforms that the default aliases stand for, against what the standards publish.

#include "tests/transforms/shippedFile.h"

#include <Imath/half.h>
#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>

namespace {

using Published::Column;
using Pixel = std::array<float, 4>;

constexpr const char* kSRGB = "interchange/sRGB/CIE-XYZ_to_sRGB.ctf";
constexpr const char* kHDVideo = "display/broadcast/CIE-XYZ_to_HD-video.ctf";
constexpr const char* kGamutMap = "misc/gamut-map.ctf";
constexpr const char* kRendering = "RRT+ODT/ACES_to_CIE-XYZ_v0.1.1.ctf";

constexpr size_t kHalfs = 65536;

/// The number that a half of these bits holds.
float numberOf(size_t bits)
{
    half number;
    number.setBits(static_cast<uint16_t>(bits));
    return number;
}

/// Expects that the curve of a file is this one at every half, 0 below 0 and at NaN, and 1 where it gets beyond.
void expectCurve(const char* name, const std::function<long double(long double)>& curve)
{
    const std::vector<std::vector<double>> tables = ShippedFile(name).arraysOf("65536 1");
    ASSERT_EQ(tables.size(), 1u);
    ASSERT_EQ(tables[0].size(), kHalfs);
    for (size_t bits = 0; bits < kHalfs; ++bits) {
        const long double x = numberOf(bits);
        const double expected = x > 0 ? static_cast<double>(std::min(curve(x), 1.0L)) : 0.0;
        EXPECT_NEAR(tables[0][bits], expected, 1e-7 * expected) << name << " " << bits;
    }
}

/// The scene light of the BT.2020 components of a neutral, as light of the display.
long double rendered(long double scene)
{
    return std::pow(std::min(Published::hlgFromScene(scene * Published::hlgDiffuseWhite()), 1.0L), 2.4L);
}

Pixel pixelOf(const Column& xyz, float alpha = 1.f)
{
    return {static_cast<float>(xyz[0]), static_cast<float>(xyz[1]), static_cast<float>(xyz[2]), alpha};
}

/// XYZ of light from the primaries of BT.709.
Column mixed(long double red, long double green, long double blue)
{
    const std::array<Column, 3> xyz = Published::primaries(Published::kBT709);
    Column sum{};
    for (size_t i = 0; i < 3; ++i)
        sum[i] = red * xyz[0][i] + green * xyz[1][i] + blue * xyz[2][i];
    return sum;
}

void expectPixel(const Pixel& pixel, float red, float green, float blue, float tolerance)
{
    EXPECT_NEAR(pixel[0], red, tolerance);
    EXPECT_NEAR(pixel[1], green, tolerance);
    EXPECT_NEAR(pixel[2], blue, tolerance);
}

/// Whether none of three halfs is a NaN.
bool isColour(const uint16_t* halfs)
{
    return std::none_of(halfs, halfs + 3, [](uint16_t bits) { return std::isnan(numberOf(bits)); });
}

/// Every half in each channel alone, beside middle grey, and in all three.
std::vector<uint16_t> everyHalf()
{
    const uint16_t grey = half(0.18f).bits(), one = half(1.f).bits();
    std::vector<uint16_t> samples;
    for (size_t bits = 0; bits < kHalfs; ++bits) {
        const uint16_t x = static_cast<uint16_t>(bits);
        samples.insert(samples.end(), {x, x, x, one, x, grey, grey, one, grey, x, grey, one, grey, grey, x, one});
    }
    return samples;
}

std::vector<float> renderHalfs(const char* name, const std::vector<uint16_t>& samples)
{
    std::vector<float> results(samples.size(), -1.f);
    ShippedFile(name).render(Morvane::PF_RGBA_16f, samples.data(), Morvane::PF_RGBA_32f, results.data(),
                             static_cast<uint32_t>(samples.size() / 4));
    return results;
}

} // namespace

TEST(DisplayTransforms, matricesFollowFromThePublishedPrimaries)
{
    const Column axes[3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    for (const char* name : {kSRGB, kHDVideo}) {
        ShippedFile(name).expectMatrix(
            0, [&](size_t i) { return Published::solve(Published::primaries(Published::kBT709), axes[i]); });
    }
    const ShippedFile rendering(kRendering);
    rendering.expectMatrix(
        0, [](size_t i) { return Published::convertedPrimary(Published::kAP0, Published::kBT2020, i); });
    rendering.expectMatrix(1, [](size_t i) { return Published::primaries(Published::kBT2020)[i]; });
}

TEST(DisplayTransforms, theMatrixIsTheRoundedOneOfItsStandard)
{
    // As IEC 61966-2-1 prints it: the inverse of a matrix that was rounded to four decimals before.
    const double printed[9] = {3.2406, -1.5372, -0.4986, -0.9689, 1.8758, 0.0415, 0.0557, -0.2040, 1.0570};
    const std::vector<std::vector<double>> matrices = ShippedFile(kSRGB).arraysOf("3 3 3");
    ASSERT_EQ(matrices.size(), 1u);
    for (size_t i = 0; i < 9; ++i)
        EXPECT_NEAR(matrices[0][i], printed[i], 5e-4) << i;
}

TEST(DisplayTransforms, theLuminancesOfTheRenderingArePrintedInItsStandard)
{
    // ITU-R BT.2020: 0.2627 R + 0.6780 G + 0.0593 B.
    const std::vector<std::vector<double>> matrices = ShippedFile(kRendering).arraysOf("3 3 3");
    ASSERT_EQ(matrices.size(), 2u);
    EXPECT_NEAR(matrices[1][3], 0.2627, 5e-5);
    EXPECT_NEAR(matrices[1][4], 0.6780, 5e-5);
    EXPECT_NEAR(matrices[1][5], 0.0593, 5e-5);
}

TEST(DisplayTransforms, curvesFollowFromThePublishedFormulas)
{
    expectCurve(kSRGB, Published::sRGBFromLight);
    expectCurve(kHDVideo, [](long double light) { return std::pow(light, 1 / 2.4L); });
    expectCurve(kRendering, rendered);
}

TEST(DisplayTransforms, whiteIsWhiteAndBlackIsBlack)
{
    for (const char* name : {kSRGB, kHDVideo}) {
        expectPixel(ShippedFile(name).render(pixelOf(Published::whiteXYZ(Published::kBT709))), 1.f, 1.f, 1.f, 1e-6f);
        expectPixel(ShippedFile(name).render({0.f, 0.f, 0.f, 1.f}), 0.f, 0.f, 0.f, 0.f);
    }
}

TEST(DisplayTransforms, primariesAreThoseOfTheDisplay)
{
    // IEC 61966-2-1 prints XYZ of the primaries with four decimals.
    expectPixel(ShippedFile(kSRGB).render({0.4124f, 0.2126f, 0.0193f, 1.f}), 1.f, 0.f, 0.f, 2e-3f);
    expectPixel(ShippedFile(kSRGB).render({0.3576f, 0.7152f, 0.1192f, 1.f}), 0.f, 1.f, 0.f, 2e-3f);
    expectPixel(ShippedFile(kSRGB).render({0.1805f, 0.0722f, 0.9505f, 1.f}), 0.f, 0.f, 1.f, 2e-3f);
}

TEST(DisplayTransforms, everyCodeOfAnSRGBDisplayIsReachedByItsLight)
{
    std::vector<float> light;
    for (int code = 0; code < 256; ++code) {
        const Column xyz =
            mixed(Published::lightFromSRGB(code / 255.0L), Published::lightFromSRGB((255 - code) / 255.0L),
                  Published::lightFromSRGB((code ^ 85) / 255.0L));
        for (const long double value : xyz)
            light.push_back(static_cast<float>(value));
    }
    std::vector<uint8_t> codes(256 * 3);
    ShippedFile(kSRGB).render(Morvane::PF_RGB_32f, light.data(), Morvane::PF_RGB_8i, codes.data(), 256);
    for (size_t code = 0; code < 256; ++code) {
        EXPECT_EQ(codes[code * 3], code);
        EXPECT_EQ(codes[code * 3 + 1], 255 - code);
        EXPECT_EQ(codes[code * 3 + 2], code ^ 85);
    }
}

TEST(DisplayTransforms, theEncodingHoldsBetweenTheEntriesOfItsTable)
{
    // The end of the straight part, as printed; middle grey; and numbers that are no halfs.
    for (const float light : {0.0031308f, 0.18f, 0.01f, 0.3333333f, 0.777777f}) {
        const float code = static_cast<float>(Published::sRGBFromLight(light));
        const float signal = static_cast<float>(std::pow(light, 1 / 2.4L));
        expectPixel(ShippedFile(kSRGB).render(pixelOf(mixed(light, light, light))), code, code, code, 1e-6f);
        expectPixel(ShippedFile(kHDVideo).render(pixelOf(mixed(light, light, light))), signal, signal, signal, 1e-6f);
    }
    EXPECT_NEAR(ShippedFile(kSRGB).render(pixelOf(mixed(0.0031308L, 0, 0)))[0], 0.04045f, 1e-6f);
}

TEST(DisplayTransforms, theSignalOfAMonitorShowsItsLight)
{
    // ITU-R BT.1886: half of the signal is 2 to the power of -2.4 of the light.
    const float light = 0.189464571f;
    expectPixel(ShippedFile(kHDVideo).render(pixelOf(mixed(light, light, light))), 0.5f, 0.5f, 0.5f, 1e-6f);
}

TEST(DisplayTransforms, whatADisplayCannotShowIsClipped)
{
    for (const char* name : {kSRGB, kHDVideo}) {
        expectPixel(ShippedFile(name).render(pixelOf(mixed(1.5L, -0.25L, 1))), 1.f, 0.f, 1.f, 1e-6f);
    }
}

TEST(DisplayTransforms, alphaStaysAsItIs)
{
    for (const char* name : {kSRGB, kHDVideo, kGamutMap, kRendering}) {
        for (const float alpha : {0.f, 0.3f, 1.f, 7.f})
            EXPECT_EQ(ShippedFile(name).render({0.2f, 0.3f, 0.4f, alpha})[3], alpha) << name;
    }
}

TEST(DisplayTransforms, infiniteLightIsWhite)
{
    const float infinity = std::numeric_limits<float>::infinity();
    for (const char* name : {kSRGB, kHDVideo}) {
        EXPECT_EQ(ShippedFile(name).render({infinity, infinity, infinity, 1.f})[1], 1.f) << name;
    }
    expectPixel(ShippedFile(kGamutMap).render({infinity, infinity, infinity, 1.f}), 1.f, 1.f, 1.f, 0.f);
    expectPixel(ShippedFile(kRendering).render({infinity, infinity, infinity, 1.f}), 0.950456f, 1.f, 1.089058f, 1e-5f);
}

TEST(DisplayTransforms, aPixelWithNaNIsBlack)
{
    for (const char* name : {kSRGB, kHDVideo, kRendering}) {
        for (size_t i = 0; i < 4; ++i) {
            Pixel pixel = {0.2f, 0.3f, 0.4f, 1.f};
            pixel[i] = std::numeric_limits<float>::quiet_NaN();
            expectPixel(ShippedFile(name).render(pixel), 0.f, 0.f, 0.f, 0.f);
        }
    }
}

TEST(DisplayTransforms, negativeAlphaEndsInTheGamutStep)
{
    for (const char* name : {kSRGB, kHDVideo})
        EXPECT_EQ(ShippedFile(name).render({0.2f, 0.3f, 0.4f, -2.f})[3], -2.f) << name;
    for (const char* name : {kGamutMap, kRendering})
        EXPECT_EQ(ShippedFile(name).render({0.2f, 0.3f, 0.4f, -2.f})[3], 0.f) << name;
}

TEST(DisplayTransforms, noHalfMakesAnythingButColoursOfADisplay)
{
    const std::vector<uint16_t> samples = everyHalf();
    for (const char* name : {kSRGB, kHDVideo, kRendering}) {
        const std::vector<float> results = renderHalfs(name, samples);
        const float limit = name == kRendering ? 1.1f : 1.f;
        for (size_t pixel = 0; pixel < samples.size(); pixel += 4) {
            for (size_t i = pixel; i < pixel + 3; ++i)
                ASSERT_TRUE(results[i] >= 0.f && results[i] <= limit) << name << " " << i << " " << results[i];
            // A matrix mixes a NaN into alpha.
            if (isColour(&samples[pixel])) {
                ASSERT_EQ(results[pixel + 3], 1.f) << name << " " << pixel;
            }
        }
    }
}

TEST(DisplayTransforms, everyColourIsMappedIntoTheGamut)
{
    const std::vector<uint16_t> samples = everyHalf();
    const std::vector<float> results = renderHalfs(kGamutMap, samples);
    for (size_t pixel = 0; pixel < samples.size(); pixel += 4) {
        if (!isColour(&samples[pixel])) continue;
        for (size_t i = pixel; i < pixel + 3; ++i)
            ASSERT_TRUE(results[i] >= 0.f && results[i] <= 1.f) << i << " " << results[i];
        ASSERT_EQ(results[pixel + 3], 1.f) << pixel;
    }
}

TEST(DisplayTransforms, theGamutMapKeepsTheHueOfNegativeColours)
{
    const ShippedFile map(kGamutMap);
    expectPixel(map.render({0.25f, 0.5f, 0.75f, 1.f}), 0.25f, 0.5f, 0.75f, 1e-7f);
    // Green is half way from red to blue, before and after.
    expectPixel(map.render({-0.2f, 0.3f, 0.8f, 1.f}), 0.f, 0.4f, 0.8f, 1e-6f);
    expectPixel(map.render({0.5f, 2.f, -1.f, 1.f}), 1.f, 1.f, 0.f, 1e-6f);
    expectPixel(map.render({-1.f, -2.f, -3.f, 1.f}), 0.f, 0.f, 0.f, 0.f);
}

TEST(DisplayTransforms, greysAreRenderedNeutralAndInOrder)
{
    std::vector<uint16_t> greys;
    const uint16_t one = half(1.f).bits();
    for (uint16_t bits = 0; bits <= 0x7c00; ++bits)
        greys.insert(greys.end(), {bits, bits, bits, one});
    const std::vector<float> results = renderHalfs(kRendering, greys);
    const Column white = Published::whiteXYZ(Published::kBT2020);
    float former = 0.f;
    for (size_t i = 0; i < results.size(); i += 4) {
        const float Y = results[i + 1];
        ASSERT_GE(Y, former) << i;
        ASSERT_NEAR(results[i], Y * static_cast<float>(white[0]), 2e-6f) << i;
        ASSERT_NEAR(results[i + 2], Y * static_cast<float>(white[2]), 2e-6f) << i;
        former = Y;
    }
    EXPECT_NEAR(former, 1.f, 1e-6f);
}

TEST(DisplayTransforms, theToneCurveHasItsPublishedAnchors)
{
    // Report ITU-R BT.2408: a grey card of 18 percent has 38 percent of signal, diffuse white has 75. Each is shown by
    // the 2.4th power of it.
    const auto signalOf = [](float scene) {
        return std::pow(ShippedFile(kRendering).render({scene, scene, scene, 1.f})[1], 1 / 2.4f);
    };
    EXPECT_NEAR(signalOf(0.18f), 0.38f, 5e-3f);
    EXPECT_NEAR(signalOf(1.f), 0.75f, 1e-6f);
    EXPECT_NEAR(ShippedFile(kRendering).render({0.18f, 0.18f, 0.18f, 1.f})[1], static_cast<float>(rendered(0.18L)),
                1e-6f);
    EXPECT_NEAR(static_cast<double>(rendered(0.18L)), 0.09698, 1e-5);
}

TEST(DisplayTransforms, coloursOfTheRenderingStayInItsGamut)
{
    // A saturated red of the scene: BT.2020 red of the display, no negative light, and the hue of the hexcone.
    const Column redOfScene = Published::convertedPrimary(Published::kBT2020, Published::kAP0, 0);
    const Pixel red = ShippedFile(kRendering).render(pixelOf(redOfScene));
    const Column xyz = Published::primaries(Published::kBT2020)[0];
    const float light = static_cast<float>(rendered(1));
    expectPixel(red, light * static_cast<float>(xyz[0]), light * static_cast<float>(xyz[1]),
                light * static_cast<float>(xyz[2]), 1e-5f);
}
