#include "tests/api/cacheText.h"

using namespace Morvane;

namespace {

const std::array<float, 4> kPixel = {0.25f, 0.5f, 0.75f, 1.f};
const std::array<float, 4> kDoubled = {0.5f, 1.f, 1.5f, 1.f};

MorvaneStatus finalizeFor(const TransformPtr& source, PixelFormat in, TransformPtr& result,
                          RendererFlags renderers = RENDERER_CPU)
{
    return finalize(source, in, PF_RGBA_32f, renderers, OPTIMIZER_DEFAULT, RESOLVE_BROADCAST_MONITOR, result);
}

/// The result of a finalize() that must not fail.
TransformPtr finalized(const TransformPtr& source, PixelFormat in)
{
    TransformPtr result;
    EXPECT_TRUE(succeeds(finalizeFor(source, in, result)));
    return result;
}

class finalizeFromCache : public CacheTest
{
protected:
    /// The transform of an entry, finalized for PF_RGBA_32f.
    static TransformPtr finalizedEntry(const std::string& id = "look-1")
    {
        populate({id});
        const TransformPtr transform = getTransform(id);
        EXPECT_EQ(finalized(transform, PF_RGBA_32f).get(), transform.get());
        return transform;
    }
};

} // namespace

TEST_F(finalizeFromCache, theFirstTimeWorksOnTheObjectOfTheEntry)
{
    populate({"look-1"});
    const TransformPtr transform = getTransform("look-1");
    EXPECT_EQ(finalized(transform, PF_RGBA_32f).get(), transform.get());
    EXPECT_EQ(getTransform("look-1").get(), transform.get());
    EXPECT_EQ(applyToPixel(transform, kPixel), kDoubled);
}

TEST_F(finalizeFromCache, theSameValuesAgainChangeNothing)
{
    const TransformPtr transform = finalizedEntry();
    const ScopedEnvironment noRenderer("MORVANE_CPU_RENDERER", "GPU");
    EXPECT_EQ(finalized(transform, PF_RGBA_32f).get(), transform.get());
    EXPECT_EQ(transform.getUseCount(), 2);
}

TEST_F(finalizeFromCache, otherValuesMakeAFormThatTheCacheKeeps)
{
    const TransformPtr transform = finalizedEntry();
    const TransformPtr form = finalized(transform, PF_RGBA_8i);
    EXPECT_NE(form.get(), transform.get());
    EXPECT_EQ(form.getUseCount(), 2);
    EXPECT_EQ(TransformCache::numItems(), 1u);
    EXPECT_STREQ(form->getId(), "look-1");
    EXPECT_EQ(form->getInputPixelFormat(), PF_RGBA_8i);
    const unsigned char source[4] = {51, 102, 0, 255};
    std::array<float, 4> destination{};
    ASSERT_TRUE(succeeds(form->apply(source, ROI(0, 0, 1, 1), destination.data())));
    EXPECT_FLOAT_EQ(destination[1], 0.8f);

    // The transform itself renders what it did.
    EXPECT_EQ(transform->getInputPixelFormat(), PF_RGBA_32f);
    EXPECT_EQ(applyToPixel(transform, kPixel), kDoubled);
    EXPECT_EQ(getTransform("look-1").get(), transform.get());
}

TEST_F(finalizeFromCache, aFormIsGivenOutAgainWithoutBeingMade)
{
    const TransformPtr transform = finalizedEntry();
    const TransformPtr bytes = finalized(transform, PF_RGBA_8i);
    const TransformPtr halfs = finalized(transform, PF_RGBA_16f);
    EXPECT_NE(bytes.get(), halfs.get());

    const ScopedEnvironment noRenderer("MORVANE_CPU_RENDERER", "GPU");
    EXPECT_EQ(finalized(transform, PF_RGBA_8i).get(), bytes.get());
    EXPECT_EQ(finalized(transform, PF_RGBA_16f).get(), halfs.get());
    // From a form to the others, and to the transform that was there first.
    EXPECT_EQ(finalized(bytes, PF_RGBA_16f).get(), halfs.get());
    EXPECT_EQ(finalized(bytes, PF_RGBA_8i).get(), bytes.get());
    EXPECT_EQ(finalized(bytes, PF_RGBA_32f).get(), transform.get());
}

TEST_F(finalizeFromCache, eachOfTheFiveValuesMakesAFormOfItsOwn)
{
    const TransformPtr transform = finalizedEntry();
    using Finalize = MorvaneStatus (*)(const TransformPtr&, TransformPtr&);
    const Finalize calls[] = {
        [](const TransformPtr& source, TransformPtr& result) {
            return finalize(source, PF_RGB_32f, PF_RGBA_32f, RENDERER_CPU, OPTIMIZER_DEFAULT, RESOLVE_BROADCAST_MONITOR,
                            result);
        },
        [](const TransformPtr& source, TransformPtr& result) {
            return finalize(source, PF_RGBA_32f, PF_RGB_32f, RENDERER_CPU, OPTIMIZER_DEFAULT, RESOLVE_BROADCAST_MONITOR,
                            result);
        },
        [](const TransformPtr& source, TransformPtr& result) {
            return finalize(source, PF_RGBA_32f, PF_RGBA_32f, RendererFlags(RENDERER_CPU | 4u), OPTIMIZER_DEFAULT,
                            RESOLVE_BROADCAST_MONITOR, result);
        },
        [](const TransformPtr& source, TransformPtr& result) {
            return finalize(source, PF_RGBA_32f, PF_RGBA_32f, RENDERER_CPU, OPTIMIZER_OFF, RESOLVE_BROADCAST_MONITOR,
                            result);
        },
        [](const TransformPtr& source, TransformPtr& result) {
            return finalize(source, PF_RGBA_32f, PF_RGBA_32f, RENDERER_CPU, OPTIMIZER_DEFAULT, RESOLVE_GRAPHICS_MONITOR,
                            result);
        },
    };
    std::vector<TransformPtr> forms = {transform};
    for (const Finalize call : calls) {
        TransformPtr form;
        ASSERT_TRUE(succeeds(call(transform, form)));
        for (const TransformPtr& other : forms)
            EXPECT_NE(form.get(), other.get());
        forms.push_back(form);
        TransformPtr again;
        EXPECT_TRUE(succeeds(call(transform, again)));
        EXPECT_EQ(again.get(), form.get());
    }
    EXPECT_EQ(TransformCache::numItems(), 1u);
}

TEST_F(finalizeFromCache, aTransformThatTheCacheDoesNotHoldChangesInPlace)
{
    populate({"look-1"});
    const TransformPtr transform = makeScale({2, 2, 2, 1});
    EXPECT_EQ(finalized(transform, PF_RGBA_8i).get(), transform.get());
    EXPECT_EQ(finalized(transform, PF_RGBA_32f).get(), transform.get());
    EXPECT_EQ(transform->getInputPixelFormat(), PF_RGBA_32f);
    EXPECT_EQ(transform.getUseCount(), 1);
}

TEST_F(finalizeFromCache, aHostsOwnTransformOfAnEntryGetsTheFormsOfTheEntry)
{
    const TransformPtr transform = finalizedEntry();
    const TransformPtr own = makeScale({2, 2, 2, 1});
    ASSERT_TRUE(succeeds(own->setUniqueId(transform->getUniqueId())));
    // The first time it is finalized in place like any other.
    EXPECT_EQ(finalized(own, PF_RGBA_8i).get(), own.get());
    EXPECT_EQ(finalized(own, PF_RGBA_32f).get(), transform.get());
    const TransformPtr form = finalized(own, PF_RGBA_16f);
    EXPECT_NE(form.get(), own.get());
    EXPECT_EQ(finalized(transform, PF_RGBA_16f).get(), form.get());
    EXPECT_EQ(own->getInputPixelFormat(), PF_RGBA_8i);
    // The cache does not know that it is finalized for bytes.
    EXPECT_NE(finalized(transform, PF_RGBA_8i).get(), own.get());
}

TEST_F(finalizeFromCache, afterAClearTransformsChangeInPlaceAgain)
{
    const TransformPtr transform = finalizedEntry();
    const TransformPtr form = finalized(transform, PF_RGBA_8i);
    ASSERT_TRUE(succeeds(TransformCache::clear()));
    EXPECT_EQ(finalized(transform, PF_RGBA_8i).get(), transform.get());
    EXPECT_EQ(finalized(form, PF_RGBA_16f).get(), form.get());
}

TEST_F(finalizeFromCache, aFailureSetsTheResultAndKeepsNoForm)
{
    const TransformPtr transform = finalizedEntry();
    TransformPtr result;
    {
        const ScopedEnvironment noRenderer("MORVANE_CPU_RENDERER", "GPU");
        EXPECT_TRUE(
            failsWith(finalizeFor(transform, PF_RGBA_8i, result), 0x4010004, "A GPU renderer not a valid choice"));
    }
    ASSERT_TRUE(result);
    EXPECT_NE(result.get(), transform.get());
    EXPECT_EQ(result.getUseCount(), 1);
    EXPECT_EQ(applyToPixel(transform, kPixel), kDoubled);
    EXPECT_NE(finalized(transform, PF_RGBA_8i).get(), result.get());
}

TEST_F(finalizeFromCache, aFailureOfAnUnfinalizedTransformIsTriedAgainInPlace)
{
    populate({"look-1"});
    const TransformPtr transform = getTransform("look-1");
    TransformPtr result;
    {
        const ScopedEnvironment noRenderer("MORVANE_CPU_RENDERER", "GPU");
        EXPECT_FALSE(finalizeFor(transform, PF_RGBA_8i, result));
    }
    EXPECT_EQ(result.get(), transform.get());
    EXPECT_EQ(finalized(transform, PF_RGBA_8i).get(), transform.get());
}

TEST_F(finalizeFromCache, withoutRenderersThereIsNoForm)
{
    const TransformPtr transform = finalizedEntry();
    TransformPtr result;
    ASSERT_TRUE(succeeds(finalizeFor(transform, PF_RGBA_8i, result, RENDERER_NONE)));
    EXPECT_NE(result.get(), transform.get());
    EXPECT_EQ(result.getUseCount(), 1);
    EXPECT_EQ(applyToPixel(transform, kPixel), kDoubled);
}

TEST_F(finalizeFromCache, sourceMayBeTheResult)
{
    const TransformPtr transform = finalizedEntry();
    TransformPtr handle = transform;
    ASSERT_TRUE(succeeds(finalizeFor(handle, PF_RGBA_8i, handle)));
    const Transform* form = handle.get();
    EXPECT_NE(form, transform.get());
    ASSERT_TRUE(succeeds(finalizeFor(handle, PF_RGBA_32f, handle)));
    EXPECT_EQ(handle.get(), transform.get());

    // Also when it is the last handle to an object of the host.
    TransformPtr own = makeScale({2, 2, 2, 1});
    ASSERT_TRUE(succeeds(own->setUniqueId("look1")));
    ASSERT_TRUE(succeeds(finalizeFor(own, PF_RGBA_16i, own)));
    ASSERT_TRUE(succeeds(finalizeFor(own, PF_RGBA_8i, own)));
    EXPECT_EQ(own.get(), form);
    own = makeScale({2, 2, 2, 1});
    ASSERT_TRUE(succeeds(own->setUniqueId("look1")));
    ASSERT_TRUE(succeeds(finalizeFor(own, PF_RGBA_16i, own)));
    ASSERT_TRUE(succeeds(finalizeFor(own, PF_RGBA_16f, own)));
    EXPECT_EQ(finalized(transform, PF_RGBA_16f).get(), own.get());
}

TEST_F(finalizeFromCache, formsAreMadeAgainFromASerializedCache)
{
    const TransformPtr transform = finalizedEntry();
    const TransformPtr form = finalized(transform, PF_RGBA_8i);
    TextWriter writer;
    ASSERT_TRUE(succeeds(TransformCache::serializeTransformCache(writer)));
    EXPECT_EQ(writer.text(), cacheTextOf({"look-1"}));
    ASSERT_TRUE(succeeds(TransformCache::clear()));
    ASSERT_TRUE(succeeds(TransformCache::populateTransformCache(writer.text().c_str())));
    const TransformPtr again = getTransform("look-1");
    EXPECT_EQ(finalized(again, PF_RGBA_8i).get(), again.get());
    EXPECT_NE(finalized(again, PF_RGBA_32f).get(), transform.get());
}
