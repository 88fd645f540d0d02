// The aliases of the home in the build tree, as a host uses them without any set-up.

#include "tests/transforms/shippedFile.h"

#include <cstdlib>
#include <filesystem>

namespace {

struct ShippedAlias
{
    const char* alias;
    const char* path;
};

constexpr ShippedAlias kAliases[] = {
    {"graphicsMonitor", "interchange/sRGB/CIE-XYZ_to_sRGB.ctf"},
    {"broadcastMonitor", "display/broadcast/CIE-XYZ_to_HD-video.ctf"},
    {"defaultLook", "misc/identity.ctf"},
    {"defaultGamutMap", "misc/gamut-map.ctf"},
    {"SceneToOutputBridge", "RRT+ODT/ACES_to_CIE-XYZ_v0.1.1.ctf"},
    {"OutputToSceneBridge", "misc/identity.ctf"},
};

class ShippedAliases : public testing::Test
{
protected:
    ShippedAliases()
    {
        for (const char* name : {"MORVANE_OVERRIDE_CONFIG_PATH", "MORVANE_OVERRIDE_SYSTEM_TRANSFORM_LOCATION"})
            ::unsetenv(name);
    }
};

/// What the transform of the alias makes of a pixel.
std::array<float, 4> render(const char* alias, std::array<float, 4> pixel)
{
    Morvane::TransformPtr transform, finalized;
    std::array<float, 4> result{};
    Morvane::MorvaneStatus status =
        Morvane::CreateReferenceTransformFromAlias(Morvane::BIT_DEPTH_32f, Morvane::BIT_DEPTH_32f, alias, transform);
    if (status) {
        status = Morvane::finalize(transform, Morvane::PF_RGBA_32f, Morvane::PF_RGBA_32f, Morvane::RENDERER_CPU,
                                   Morvane::OPTIMIZER_DEFAULT, Morvane::RESOLVE_BROADCAST_MONITOR, finalized);
    }
    if (status) status = finalized->apply(pixel.data(), Morvane::ROI(0, 0, 1, 1), result.data());
    EXPECT_TRUE(status) << alias << ": " << status.getErrorMessage();
    return result;
}

} // namespace

TEST_F(ShippedAliases, areThoseOfTheHomeBesideTheLibrary)
{
    EXPECT_TRUE(std::filesystem::equivalent(Morvane::getConfigFilePath(), MORVANE_BUILT_HOME "/morvaneConfig.xml"));
    EXPECT_TRUE(std::filesystem::equivalent(Morvane::getSystemColorTransformPath(), MORVANE_BUILT_HOME "/transforms"));
}

TEST_F(ShippedAliases, standForTransformsOfTheHome)
{
    for (const ShippedAlias& row : kAliases) {
        const char* path = nullptr;
        Morvane::BasePath basePath = Morvane::BASE_PATH_NONE;
        ASSERT_TRUE(Morvane::findAliasInPreferences(row.alias, path, basePath)) << row.alias;
        EXPECT_STREQ(path, row.path);
        EXPECT_EQ(basePath, Morvane::BASE_PATH_BRELWICK);
    }
}

TEST_F(ShippedAliases, defaultPathsLeadToTransforms)
{
    for (const char* alias : {"graphicsMonitor", "broadcastMonitor", "defaultLook"}) {
        const char* path = nullptr;
        ASSERT_TRUE(Morvane::getDefaultPathForAlias(alias, path)) << alias;
        Morvane::TransformPtr transform;
        EXPECT_TRUE(Morvane::loadColorTransform(path, transform)) << path;
    }
}

TEST_F(ShippedAliases, renderWhatTheirFilesDo)
{
    const std::array<float, 4> pixel = {0.3f, -0.1f, 1.7f, 0.5f};
    for (const ShippedAlias& row : kAliases)
        EXPECT_EQ(render(row.alias, pixel), ShippedFile(row.path).render(pixel)) << row.alias;
}

TEST_F(ShippedAliases, renderDifferently)
{
    const std::array<float, 4> pixel = {0.3f, -0.1f, 1.7f, 0.5f};
    EXPECT_EQ(render("OutputToSceneBridge", pixel), pixel);
    for (const char* alias : {"graphicsMonitor", "broadcastMonitor", "defaultGamutMap", "SceneToOutputBridge"})
        EXPECT_NE(render(alias, pixel), pixel) << alias;
    EXPECT_NE(render("graphicsMonitor", pixel), render("broadcastMonitor", pixel));
}

TEST_F(ShippedAliases, theCurrentMonitorIsTheChosenOne)
{
    const std::array<float, 4> pixel = {0.3f, 0.2f, 0.1f, 1.f};
    EXPECT_EQ(render("currentMonitor", pixel), render("broadcastMonitor", pixel));
}
