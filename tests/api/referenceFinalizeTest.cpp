#include "tests/api/preferencesDirectory.h"

#include <thread>

using namespace Morvane;

namespace {

using Pixel = std::array<float, 4>;

/// A document with a matrix that scales red, green and blue.
std::string scaleDocument(const std::string& factor)
{
    return document("<Matrix inBitDepth='32f' outBitDepth='32f'><Array dim='3 3 3'>" + factor + " 0 0 0 " + factor +
                    " 0 0 0 " + factor + "</Array></Matrix>");
}

/// A document with one reference, 32f on both sides.
std::string referenceDocument(const std::string& attributes)
{
    return document("<Reference inBitDepth='32f' outBitDepth='32f' " + attributes + "/>");
}

/// Files in a directory, and aliases of the preferences that name them.
class ReferenceDeathTest : public PreferencesDirectory
{
protected:
    void writeAliases(const std::string& refs) const
    {
        write("<MorvaneConfig><ReferenceTable>" + refs + "</ReferenceTable></MorvaneConfig>\n");
    }

    /// Writes a transform with this factor, and gives the element of an alias for it.
    std::string aliasOfScale(const std::string& alias, const std::string& factor) const
    {
        return "<Ref alias='" + alias + "' path='" + writeFile(alias + ".ctf", scaleDocument(factor)) + "'/>";
    }
};

MorvaneStatus finalizeWith(const TransformPtr& transform, ResolveFlags flags)
{
    TransformPtr result;
    return finalize(transform, PF_RGBA_32f, PF_RGBA_32f, RENDERER_CPU, OPTIMIZER_DEFAULT, flags, result);
}

/// What a finalized transform makes of 1 in every channel.
float render(const TransformPtr& transform)
{
    const Pixel pixel = {1.f, 1.f, 1.f, 1.f};
    Pixel result{};
    EXPECT_TRUE(succeeds(transform->apply(pixel.data(), ROI(0, 0, 1, 1), result.data())));
    EXPECT_EQ(result[0], result[1]);
    EXPECT_EQ(result[0], result[2]);
    EXPECT_EQ(result[3], 1.f);
    return result[0];
}

void expectNoRenderer(const TransformPtr& transform)
{
    const Pixel pixel{};
    Pixel result{};
    EXPECT_TRUE(failsWith(transform->apply(pixel.data(), ROI(0, 0, 1, 1), result.data()), 0x6010001,
                          "No 'CPU' renderer available"));
}

TransformPtr aliasTransform(const char* alias)
{
    TransformPtr transform;
    EXPECT_TRUE(succeeds(CreateReferenceTransformFromAlias(BIT_DEPTH_32f, BIT_DEPTH_32f, alias, transform)));
    return transform;
}

void pointAlias(const char* alias, const std::string& path)
{
    EXPECT_TRUE(succeeds(addAliasInPreferences(alias, path.c_str(), BASE_PATH_NONE)));
}

} // namespace

TEST_F(ReferenceDeathTest, aPathIsResolvedAndRendered)
{
    const std::string path = writeFile("twice.ctf", scaleDocument("2"));
    inOwnProcess([&] {
        TransformPtr transform;
        ASSERT_TRUE(succeeds(
            CreateReferenceTransformFromPath(BIT_DEPTH_32f, BIT_DEPTH_32f, path.c_str(), BASE_PATH_NONE, transform)));
        EXPECT_TRUE(transform->hasUnresolvedReferences());
        ASSERT_TRUE(succeeds(finalizeWith(transform, RESOLVE_BROADCAST_MONITOR)));
        EXPECT_TRUE(transform->hasReferences());
        EXPECT_FALSE(transform->hasUnresolvedReferences());
        EXPECT_EQ(render(transform), 2.f);
    });
}

TEST_F(ReferenceDeathTest, aRelativePathStartsFromItsBase)
{
    const std::string shared = writeFile("shared/looks/a.ctf", scaleDocument("3"));
    writeFile("home/transforms/looks/a.ctf", scaleDocument("5"));
    const ScopedEnvironment home("MORVANE_OVERRIDE_SYSTEM_TRANSFORM_LOCATION", (getDirectory() + "/home").c_str());
    const ScopedEnvironment share("MORVANE_OVERRIDE_SHARED_PATH", (getDirectory() + "/shared").c_str());
    inOwnProcess([&] {
        TransformPtr transform = fromText(referenceDocument("path='looks/a.ctf' basePath='Shared'"));
        ASSERT_TRUE(succeeds(finalizeWith(transform, RESOLVE_BROADCAST_MONITOR)));
        EXPECT_EQ(render(transform), 3.f);

        transform = fromText(referenceDocument("path='looks/a.ctf' basePath='Brelwick'"));
        ASSERT_TRUE(succeeds(finalizeWith(transform, RESOLVE_BROADCAST_MONITOR)));
        EXPECT_EQ(render(transform), 5.f);

        transform = fromText(referenceDocument("path='looks/a.ctf'"));
        EXPECT_TRUE(failsWith(finalizeWith(transform, RESOLVE_BROADCAST_MONITOR), 0x3040001,
                              "Reference missing Base Path attribute"));
    });
}

// A tree of transforms that refer to each other works wherever it lies.
TEST_F(ReferenceDeathTest, aFileOfAnotherInstallationRefersToThatInstallation)
{
    const std::string tree = "elsewhere/Brelwick/Tandrel/Morvane/2014.3/transforms/";
    writeFile(tree + "a/target.ctf", scaleDocument("7"));
    const std::string path =
        writeFile(tree + "b/from.ctf", referenceDocument("path='a/target.ctf' basePath='Brelwick'"));
    inOwnProcess([&] {
        TransformPtr transform;
        ASSERT_TRUE(succeeds(loadColorTransform(path.c_str(), transform)));
        ASSERT_TRUE(succeeds(finalizeWith(transform, RESOLVE_BROADCAST_MONITOR)));
        EXPECT_EQ(render(transform), 7.f);
    });
}

TEST_F(ReferenceDeathTest, aReferenceIsRenderedBetweenOtherOps)
{
    writeAliases(aliasOfScale("five", "5"));
    inOwnProcess([] {
        const std::string scale = "<Matrix inBitDepth='32f' outBitDepth='32f'><Array dim='3 3 3'>"
                                  "2 0 0 0 2 0 0 0 2</Array></Matrix>";
        const TransformPtr transform =
            fromText(document(scale + "<Reference inBitDepth='32f' outBitDepth='8i' alias='five'/>"));
        EXPECT_EQ((convertPixel<uint8_t, float>(transform, PF_RGBA_32f, PF_RGBA_8i, {.01f, .02f, .05f, 1.f})),
                  (std::array<uint8_t, 4>{26, 51, 128, 255})); // 0.1, 0.2 and 0.5 of 255, rounded
    });
}

TEST_F(ReferenceDeathTest, theFlagsChooseTheMonitor)
{
    writeAliases(aliasOfScale("graphicsMonitor", "3") + aliasOfScale("broadcastMonitor", "5") +
                 aliasOfScale("currentMonitor", "7"));
    inOwnProcess([] {
        const TransformPtr transform = aliasTransform("currentMonitor");
        ASSERT_TRUE(succeeds(finalizeWith(transform, RESOLVE_BROADCAST_MONITOR)));
        EXPECT_EQ(render(transform), 5.f);
        ASSERT_TRUE(succeeds(finalizeWith(transform, RESOLVE_GRAPHICS_MONITOR)));
        EXPECT_EQ(render(transform), 3.f);
        ASSERT_TRUE(succeeds(finalizeWith(transform, ResolveFlags(2))));
        EXPECT_EQ(render(transform), 7.f);
        ASSERT_TRUE(succeeds(finalizeWith(transform, RESOLVE_BROADCAST_MONITOR)));
        EXPECT_EQ(render(transform), 5.f);
    });
}

TEST_F(ReferenceDeathTest, clonesAndConcatenationsKnowWhatTheFlagsChose)
{
    writeAliases(aliasOfScale("graphicsMonitor", "3") + aliasOfScale("broadcastMonitor", "5"));
    inOwnProcess([] {
        const TransformPtr broadcast = aliasTransform("currentMonitor");
        ASSERT_TRUE(succeeds(finalizeWith(broadcast, RESOLVE_BROADCAST_MONITOR)));
        const TransformPtr graphics = aliasTransform("currentMonitor");
        ASSERT_TRUE(succeeds(finalizeWith(graphics, RESOLVE_BROADCAST_MONITOR)));
        ASSERT_TRUE(succeeds(finalizeWith(graphics, RESOLVE_GRAPHICS_MONITOR)));

        const TransformPtr clone = graphics->clone();
        ASSERT_TRUE(succeeds(finalizeWith(clone, RESOLVE_GRAPHICS_MONITOR)));
        EXPECT_EQ(render(clone), 3.f);
        const TransformPtr other = graphics->clone();
        ASSERT_TRUE(succeeds(finalizeWith(other, RESOLVE_BROADCAST_MONITOR)));
        EXPECT_EQ(render(other), 5.f);

        TransformPtr both;
        ASSERT_TRUE(succeeds(concatenateTransforms(graphics, graphics, both)));
        EXPECT_FALSE(both->hasUnresolvedReferences());
        ASSERT_TRUE(succeeds(finalizeWith(both, RESOLVE_GRAPHICS_MONITOR)));
        EXPECT_EQ(render(both), 9.f);
        ASSERT_TRUE(succeeds(concatenateTransforms(broadcast, graphics, both)));
        EXPECT_TRUE(both->hasUnresolvedReferences());
        ASSERT_TRUE(succeeds(finalizeWith(both, RESOLVE_BROADCAST_MONITOR)));
        EXPECT_EQ(render(both), 25.f);
    });
}

TEST_F(ReferenceDeathTest, theFlagsCannotChangeBeforeTheFirstResolution)
{
    writeAliases(aliasOfScale("graphicsMonitor", "3") + aliasOfScale("broadcastMonitor", "5"));
    inOwnProcess([] {
        const TransformPtr transform = aliasTransform("currentMonitor");
        const char* const message = "Transform has unresolved references.";
        EXPECT_TRUE(failsWith(finalizeWith(transform, RESOLVE_GRAPHICS_MONITOR), 0x6030004, message));
        EXPECT_TRUE(failsWith(finalizeWith(transform, RESOLVE_GRAPHICS_MONITOR), 0x6030004, message));
        ASSERT_TRUE(succeeds(finalizeWith(transform, RESOLVE_BROADCAST_MONITOR)));
        ASSERT_TRUE(succeeds(finalizeWith(transform, RESOLVE_GRAPHICS_MONITOR)));
        EXPECT_EQ(render(transform), 3.f);
        // An alias that stands for itself makes no difference, and the failure leaves no renderer.
        const TransformPtr other = aliasTransform("graphicsMonitor");
        EXPECT_TRUE(failsWith(finalizeWith(other, RESOLVE_GRAPHICS_MONITOR), 0x6030004, message));
        expectNoRenderer(other);
    });
}

TEST_F(ReferenceDeathTest, theFlagsOfTransformsWithoutReferencesChangeFreely)
{
    inOwnProcess([] {
        const TransformPtr transform = makeScale({2, 2, 2, 1});
        EXPECT_TRUE(succeeds(finalizeWith(transform, RESOLVE_GRAPHICS_MONITOR)));
        EXPECT_TRUE(succeeds(finalizeWith(transform, RESOLVE_BROADCAST_MONITOR)));
    });
}

TEST_F(ReferenceDeathTest, aTransformFollowsItsAlias)
{
    writeAliases(aliasOfScale("look", "3"));
    const std::string other = writeFile("other.ctf", scaleDocument("11"));
    inOwnProcess([&] {
        const TransformPtr transform = aliasTransform("look");
        ASSERT_TRUE(succeeds(finalizeWith(transform, RESOLVE_BROADCAST_MONITOR)));
        const TransformPtr clone = transform->clone();
        EXPECT_EQ(render(transform), 3.f);
        pointAlias("look", other);
        EXPECT_EQ(render(transform), 11.f);
        // The clone shared what had been resolved, and is told too.
        ASSERT_TRUE(succeeds(finalizeWith(clone, RESOLVE_BROADCAST_MONITOR)));
        EXPECT_EQ(render(clone), 11.f);
    });
}

TEST_F(ReferenceDeathTest, aTransformFollowsAnAliasThatANestedReferenceUses)
{
    writeAliases(aliasOfScale("inner", "3") + "<Ref alias='outer' path='" +
                 writeFile("outer.ctf", referenceDocument("alias='inner'")) + "'/>");
    const std::string other = writeFile("other.ctf", scaleDocument("11"));
    inOwnProcess([&] {
        const TransformPtr transform = aliasTransform("outer");
        ASSERT_TRUE(succeeds(finalizeWith(transform, RESOLVE_BROADCAST_MONITOR)));
        EXPECT_EQ(render(transform), 3.f);
        pointAlias("inner", other);
        EXPECT_EQ(render(transform), 11.f);
        // Its own alias no more leads to the inner one.
        pointAlias("outer", other);
        pointAlias("inner", "/no such file.ctf");
        EXPECT_EQ(render(transform), 11.f);
    });
}

TEST_F(ReferenceDeathTest, aTransformFollowsTheMonitorThatTheFlagsChose)
{
    writeAliases(aliasOfScale("graphicsMonitor", "3") + aliasOfScale("broadcastMonitor", "5"));
    const std::string other = writeFile("other.ctf", scaleDocument("11"));
    inOwnProcess([&] {
        const TransformPtr transform = aliasTransform("currentMonitor");
        ASSERT_TRUE(succeeds(finalizeWith(transform, RESOLVE_BROADCAST_MONITOR)));
        ASSERT_TRUE(succeeds(finalizeWith(transform, RESOLVE_GRAPHICS_MONITOR)));
        pointAlias("broadcastMonitor", other);
        EXPECT_EQ(render(transform), 3.f);
        pointAlias("graphicsMonitor", other);
        EXPECT_EQ(render(transform), 11.f);
    });
}

TEST_F(ReferenceDeathTest, anAliasThatNoLongerWorksTakesTheRendererAndOneThatWorksGivesItBack)
{
    writeAliases(aliasOfScale("look", "3"));
    const std::string other = writeFile("other.ctf", scaleDocument("11"));
    inOwnProcess([&] {
        const TransformPtr transform = aliasTransform("look");
        ASSERT_TRUE(succeeds(finalizeWith(transform, RESOLVE_BROADCAST_MONITOR)));
        pointAlias("look", "/no such file.ctf");
        expectNoRenderer(transform);
        EXPECT_TRUE(transform->hasUnresolvedReferences());
        EXPECT_TRUE(failsWith(finalizeWith(transform, RESOLVE_BROADCAST_MONITOR), 0x3040003,
                              "Failed to load reference <id>: No file found: '/no such file.ctf'"));
        pointAlias("look", other);
        EXPECT_EQ(render(transform), 11.f);
    });
}

TEST_F(ReferenceDeathTest, transformsThatAreGoneAreNotTold)
{
    writeAliases(aliasOfScale("look", "3"));
    const std::string other = writeFile("other.ctf", scaleDocument("11"));
    inOwnProcess([&] {
        TransformPtr transform = aliasTransform("look");
        const TransformPtr kept = aliasTransform("look");
        ASSERT_TRUE(succeeds(finalizeWith(transform, RESOLVE_BROADCAST_MONITOR)));
        ASSERT_TRUE(succeeds(finalizeWith(kept, RESOLVE_BROADCAST_MONITOR)));
        transform.reset();
        pointAlias("look", other);
        EXPECT_EQ(render(kept), 11.f);
    });
}

TEST_F(ReferenceDeathTest, cyclesFailAndDiamondsDoNot)
{
    const std::string leaf = aliasOfScale("leaf", "3");
    const std::string twoLeaves = "<Reference inBitDepth='32f' outBitDepth='32f' alias='leaf'/>";
    const std::string cycle = writeFile("cycle.ctf", referenceDocument("alias='around'"));
    writeAliases(leaf + "<Ref alias='around' path='" + cycle + "'/><Ref alias='diamond' path='" +
                 writeFile("diamond.ctf", document(twoLeaves + twoLeaves)) + "'/>");
    inOwnProcess([&] {
        const TransformPtr diamond = aliasTransform("diamond");
        ASSERT_TRUE(succeeds(finalizeWith(diamond, RESOLVE_BROADCAST_MONITOR)));
        EXPECT_EQ(render(diamond), 9.f);
        EXPECT_TRUE(failsWith(finalizeWith(aliasTransform("around"), RESOLVE_BROADCAST_MONITOR), 0x3040002,
                              "Reference cycle detected: '" + cycle + "'"));
    });
}

TEST_F(ReferenceDeathTest, aBypassedReferenceLeavesItsOpsOut)
{
    writeAliases(aliasOfScale("look", "3"));
    inOwnProcess([] {
        const TransformPtr transform = fromText(referenceDocument("alias='look' bypass='true'"));
        ASSERT_TRUE(succeeds(finalizeWith(transform, RESOLVE_BROADCAST_MONITOR)));
        EXPECT_EQ(render(transform), 1.f);
    });
}

TEST_F(ReferenceDeathTest, anUnknownAliasFailsUntilItIsAdded)
{
    const std::string path = writeFile("a.ctf", scaleDocument("11"));
    inOwnProcess([&] {
        const TransformPtr transform = aliasTransform("nobody");
        EXPECT_TRUE(
            failsWith(finalizeWith(transform, RESOLVE_BROADCAST_MONITOR), 0x1020001, "Alias 'nobody' not found."));
        pointAlias("nobody", path);
        EXPECT_EQ(render(transform), 11.f);
    });
}

TEST_F(ReferenceDeathTest, withoutAConfigFileThereAreNoTransformsWithAliases)
{
    std::filesystem::remove(getPath());
    const std::string message = "File open failed: " + getPath();
    const std::string path = writeFile("outer.ctf", referenceDocument("alias='inner'"));
    inOwnProcess([&] {
        TransformPtr transform;
        EXPECT_TRUE(failsWith(CreateReferenceTransformFromAlias(BIT_DEPTH_32f, BIT_DEPTH_32f, "a", transform),
                              0x3020018, message));
        EXPECT_TRUE(failsWith(loadColorTransform(path.c_str(), transform), 0x3020018, message));
        EXPECT_FALSE(transform);
    });
}

// Observers are kept in one place for all transforms.
TEST_F(ReferenceDeathTest, threadsMakeAndDestroyTransformsWithAliases)
{
    writeAliases(aliasOfScale("look", "3"));
    inOwnProcess([] {
        ASSERT_TRUE(aliasTransform("look")); // loads the preferences
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back([] {
                for (int j = 0; j < 50; ++j) {
                    const TransformPtr transform = aliasTransform("look");
                    ASSERT_TRUE(succeeds(finalizeWith(transform, RESOLVE_BROADCAST_MONITOR)));
                    ASSERT_EQ(render(transform), 3.f);
                }
            });
        }
        for (std::thread& thread : threads)
            thread.join();
    });
}

// A host may let go of its last handle in another thread than the one that changes the preferences.
TEST_F(ReferenceDeathTest, transformsMayComeAndGoWhileTheirAliasesChange)
{
    const std::string plain = writeFile("plain.ctf", scaleDocument("5"));
    const std::string nested = writeFile("nested.ctf", referenceDocument("alias='deep'"));
    writeAliases(aliasOfScale("deep", "3") + "<Ref alias='inner' path='" + plain + "'/><Ref alias='outer' path='" +
                 writeFile("outer.ctf", referenceDocument("alias='inner'")) + "'/>");
    inOwnProcess([&] {
        const TransformPtr kept = aliasTransform("outer");
        ASSERT_TRUE(succeeds(finalizeWith(kept, RESOLVE_BROADCAST_MONITOR)));
        for (int round = 0; round < 50; ++round) {
            std::vector<TransformPtr> transforms(16);
            for (TransformPtr& transform : transforms) {
                transform = aliasTransform("outer");
                ASSERT_TRUE(succeeds(finalizeWith(transform, RESOLVE_BROADCAST_MONITOR)));
            }
            std::thread other([&transforms] {
                for (TransformPtr& transform : transforms) {
                    transform.reset();
                    const TransformPtr made = aliasTransform("inner");
                }
            });
            for (const std::string& path : {nested, plain, nested, plain})
                pointAlias("inner", path);
            other.join();
        }
        pointAlias("inner", nested);
        EXPECT_EQ(render(kept), 3.f);
        pointAlias("deep", plain);
        EXPECT_EQ(render(kept), 5.f);
    });
}

// The forms of a transform that the cache holds refer to the alias as well as the transform itself.
TEST_F(ReferenceDeathTest, formsOfTheCacheFollowTheirAlias)
{
    writeAliases(aliasOfScale("look", "3"));
    const std::string other = writeFile("other.ctf", scaleDocument("11"));
    const std::string set = "<ProcessListSet>\n<ProcessListEntry>\n<TransformId id=\"shot\"/>\n<ProcessList "
                            "version=\"1.6\" id=\"shot\"><Reference inBitDepth='32f' outBitDepth='32f' alias='look'/>"
                            "</ProcessList>\n</ProcessListEntry>\n</ProcessListSet>\n";
    inOwnProcess([&] {
        ASSERT_TRUE(succeeds(TransformCache::populateTransformCache(set.c_str())));
        TransformPtr transform;
        ASSERT_TRUE(succeeds(TransformCache::getTransform("shot", transform)));
        ASSERT_TRUE(succeeds(finalizeWith(transform, RESOLVE_BROADCAST_MONITOR)));
        const auto formForBytes = [&](TransformPtr& form) {
            return finalize(transform, PF_RGBA_8i, PF_RGBA_32f, RENDERER_CPU, OPTIMIZER_DEFAULT,
                            RESOLVE_BROADCAST_MONITOR, form);
        };
        const auto renderBytes = [](const TransformPtr& form) {
            const std::array<uint8_t, 4> white = {255, 255, 255, 255};
            Pixel result{};
            EXPECT_TRUE(succeeds(form->apply(white.data(), ROI(0, 0, 1, 1), result.data())));
            return result[0];
        };
        TransformPtr form, again;
        ASSERT_TRUE(succeeds(formForBytes(form)));
        EXPECT_NE(form.get(), transform.get());
        EXPECT_FLOAT_EQ(renderBytes(form), 3.f);

        pointAlias("look", other);
        EXPECT_EQ(render(transform), 11.f);
        EXPECT_FLOAT_EQ(renderBytes(form), 11.f);
        ASSERT_TRUE(succeeds(formForBytes(again)));
        EXPECT_EQ(again.get(), form.get());

        // While the alias stands for nothing there are no forms. They come back with it.
        pointAlias("look", "/no such file.ctf");
        expectNoRenderer(form);
        pointAlias("look", other);
        EXPECT_EQ(render(transform), 11.f);
        ASSERT_TRUE(succeeds(formForBytes(again)));
        EXPECT_EQ(again.get(), form.get());
        EXPECT_FLOAT_EQ(renderBytes(form), 11.f);
        EXPECT_EQ(TransformCache::numItems(), 1u);
    });
}

// The flags of a transform without references say nothing about those of the other one.
TEST_F(ReferenceDeathTest, aConcatenationStartsWithTheFlagsOfItsReferences)
{
    writeAliases(aliasOfScale("graphicsMonitor", "3") + aliasOfScale("broadcastMonitor", "5"));
    inOwnProcess([] {
        const TransformPtr plain = makeScale({2, 2, 2, 1});
        ASSERT_TRUE(succeeds(finalizeWith(plain, RESOLVE_GRAPHICS_MONITOR)));
        TransformPtr both;
        ASSERT_TRUE(succeeds(concatenateTransforms(plain, aliasTransform("currentMonitor"), both)));
        ASSERT_TRUE(succeeds(finalizeWith(both, RESOLVE_BROADCAST_MONITOR)));
        EXPECT_EQ(render(both), 10.f);

        const TransformPtr graphics = aliasTransform("currentMonitor");
        ASSERT_TRUE(succeeds(finalizeWith(graphics, RESOLVE_BROADCAST_MONITOR)));
        ASSERT_TRUE(succeeds(finalizeWith(graphics, RESOLVE_GRAPHICS_MONITOR)));
        for (const ResolveFlags flags : {RESOLVE_BROADCAST_MONITOR, RESOLVE_GRAPHICS_MONITOR}) {
            const float factor = flags == RESOLVE_GRAPHICS_MONITOR ? 3.f : 5.f;
            ASSERT_TRUE(succeeds(concatenateTransforms(graphics, makeScale({2, 2, 2, 1}), both)));
            EXPECT_FALSE(both->hasUnresolvedReferences());
            ASSERT_TRUE(succeeds(finalizeWith(both, flags)));
            EXPECT_EQ(render(both), 2 * factor);
        }

        // Nothing of the two holds for both, so this one starts like any fresh transform.
        ASSERT_TRUE(succeeds(concatenateTransforms(graphics, aliasTransform("currentMonitor"), both)));
        ASSERT_TRUE(succeeds(finalizeWith(both, RESOLVE_BROADCAST_MONITOR)));
        EXPECT_EQ(render(both), 25.f);
    });
}
