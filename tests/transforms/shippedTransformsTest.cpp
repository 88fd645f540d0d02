#include "tests/transforms/shippedFile.h"

#include <cstdint>
#include <filesystem>

namespace {

void expectMatrix(const std::string& name, const Published::Space& from, const Published::Space& to)
{
    ShippedFile(name).expectMatrix(0, [&](size_t primary) { return Published::convertedPrimary(from, to, primary); });
}

/// One pixel of three samples through a shipped file.
template <class T>
std::array<T, 3> convert(const std::string& name, Morvane::PixelFormat format, std::array<T, 3> pixel)
{
    std::array<T, 3> converted{};
    ShippedFile(name).render(format, pixel.data(), format, converted.data(), 1);
    return converted;
}

} // namespace

TEST(ShippedTransforms, matricesFollowFromThePublishedPrimaries)
{
    expectMatrix("ACES2065-1_to_linear-sRGB.ctf", Published::kAP0, Published::kBT709);
    expectMatrix("linear-sRGB_to_ACES2065-1.ctf", Published::kBT709, Published::kAP0);
}

TEST(ShippedTransforms, whiteStaysWhite)
{
    for (const char* name : {"ACES2065-1_to_linear-sRGB.ctf", "linear-sRGB_to_ACES2065-1.ctf", "misc/identity.ctf"}) {
        for (const float value : convert<float>(name, Morvane::PF_RGB_32f, {1.0f, 1.0f, 1.0f})) {
            EXPECT_NEAR(value, 1.0f, 1e-6f) << name;
        }
    }
}

TEST(ShippedTransforms, identityChangesNothing)
{
    const std::array<float, 3> pixel = {-0.25f, 1e-6f, 123.0f};
    EXPECT_EQ(convert<float>("misc/identity.ctf", Morvane::PF_RGB_32f, pixel), pixel);
}

TEST(ShippedTransforms, legalRangeHasItsPublishedLevels)
{
    const std::string name = "full-range_to_legal-range_10i.ctf";
    EXPECT_EQ(convert<uint16_t>(name, Morvane::PF_RGB_10i, {0, 1023, 341}), (std::array<uint16_t, 3>{64, 940, 356}));
    EXPECT_EQ(convert<uint16_t>(name, Morvane::PF_RGB_10i, {1, 682, 511}), (std::array<uint16_t, 3>{65, 648, 502}));
}

TEST(ShippedTransforms, filmCodesFollowFromDensity)
{
    // One stop is log10(2) * 300 codes; the black point at code 95 stands for a hundredth of white.
    const auto codes = convert<float>("demo/linear-sRGB_to_film-log.ctf", Morvane::PF_RGB_32f, {1.0f, 0.0f, 8.0f});
    EXPECT_NEAR(codes[0] * 1023.0f, 685.0f, 0.01f);
    EXPECT_NEAR(codes[1] * 1023.0f, 95.0f, 0.01f);
    EXPECT_NEAR(codes[2] * 1023.0f, 685.0f + 300.0f * std::log10((8.0f + 0.0109f) / 1.0109f), 0.02f);
}

TEST(ShippedTransforms, theGradeIsThatOfItsNumbers)
{
    // Slope and offset make 0.515, 0.5 and 0.485, whose luma is 0.50211; the saturation moves them away from it.
    const auto grey = convert<float>("demo/warm.cdl", Morvane::PF_RGB_32f, {0.5f, 0.5f, 0.5f});
    EXPECT_NEAR(grey[0], 0.516289f, 1e-5f);
    EXPECT_NEAR(grey[1], 0.499789f, 1e-5f);
    EXPECT_NEAR(grey[2], 0.483289f, 1e-5f);
}

TEST(ShippedTransforms, filmCodesReachTheDisplay)
{
    // Black stays, the brightest code becomes white, and middle grey the code of sRGB for it.
    const std::string toLog = "demo/linear-sRGB_to_film-log.ctf", toDisplay = "demo/film-log_to_sRGB.lut";
    const auto codes = convert<float>(toLog, Morvane::PF_RGB_32f, {0.0f, 0.18f, 100.0f});
    const auto shown = convert<float>(toDisplay, Morvane::PF_RGB_32f, codes);
    EXPECT_NEAR(shown[0], 0.0f, 1e-3f);
    EXPECT_NEAR(shown[1], 0.4614f, 2e-3f);
    EXPECT_EQ(shown[2], 1.0f);
}

TEST(ShippedTransforms, theLookIsWarmInLightsAndCoolInShadows)
{
    const std::string name = "demo/split-tone.3dl";
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

TEST(ShippedTransforms, everyFileSaysWhatItIs)
{
    size_t count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(MORVANE_TRANSFORMS)) {
        if (entry.path().extension() != ".ctf") continue;
        ++count;
        Morvane::TransformPtr transform;
        ASSERT_TRUE(Morvane::loadColorTransform(entry.path().c_str(), transform)) << entry.path();
        EXPECT_EQ(entry.path().filename().string(), transform->getName() + std::string(".ctf"));
        for (const char* text : {transform->getId(), transform->getDescription(), transform->getInputDescriptor(),
                                 transform->getOutputDescriptor()}) {
            EXPECT_STRNE(text, "") << entry.path();
        }
    }
    EXPECT_EQ(count, 9u);
}
