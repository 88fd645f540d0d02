#include "morvane/transformStore.h"

#include "tests/morvane/cachedTransform.h"
#include "tests/utils/failure.h"

#include <functional>
#include <gtest/gtest.h>

using namespace Morvane_2015_1_42;
using Impl::FinalizeSettings;
using Impl::TransformStore;

namespace {

const FinalizeSettings kSettings = {PF_RGBA_8i, PF_RGBA_16f, RENDERER_CPU, OPTIMIZER_OFF, RESOLVE_GRAPHICS_MONITOR};

FinalizeSettings withInput(PixelFormat in)
{
    FinalizeSettings settings = kSettings;
    settings.in = in;
    return settings;
}

Impl::Transform& implOf(const TransformPtr& transform) { return *Impl::Transform::of(transform); }

void finalizeWith(const TransformPtr& transform, const FinalizeSettings& settings)
{
    ASSERT_TRUE(implOf(transform).finalize(settings.in, settings.out, settings.renderers, settings.optimizer,
                                           settings.resolve));
}

TransformPtr makeForm(const TransformPtr& transform, const FinalizeSettings& settings)
{
    const TransformPtr form = transform->clone();
    finalizeWith(form, settings);
    return form;
}

/// Null when there is none.
TransformPtr formOf(const TransformStore& store, const TransformPtr& transform, const FinalizeSettings& settings)
{
    TransformPtr form;
    const bool isFound = store.findForm(implOf(transform), settings, form);
    EXPECT_EQ(isFound, static_cast<bool>(form));
    return form;
}

Failure notFound(const std::string& id)
{
    return {0x6040001, "COLOR:MORVANE:CACHE", "The Morvane transform id requested is not in the cache: " + id};
}

Failure duplicate(const std::string& id)
{
    return {0x6040003, "COLOR:MORVANE:CACHE", "Transform in cache data already exists in active cache: " + id};
}

/// An adaptor that does something when the last transform that has it is gone.
class DyingAdaptor : public GPUAdaptor
{
public:
    explicit DyingAdaptor(std::function<void()> action) : m_action(std::move(action)) {}
    DyingAdaptor(const DyingAdaptor&) = delete;
    DyingAdaptor& operator=(const DyingAdaptor&) = delete;
    ~DyingAdaptor() override { m_action(); }

private:
    std::function<void()> m_action;
};

} // namespace

TEST(transformStore, keepsTheVeryObjectsInTheOrderOfAdding)
{
    TransformStore store;
    EXPECT_EQ(store.size(), 0u);
    const std::vector<std::string> ids = {"z", "a", "m-1", "M-1", ""};
    std::vector<TransformPtr> transforms;
    for (const std::string& id : ids) {
        transforms.push_back(makeTransform(id));
        store.add(transforms.back());
    }
    EXPECT_EQ(store.size(), 5u);
    EXPECT_EQ(idsOf(store), ids);
    for (std::size_t i = 0; i < ids.size(); ++i) {
        TransformPtr found;
        EXPECT_TRUE(store.find(ids[i], found));
        EXPECT_EQ(found.get(), transforms[i].get());
        EXPECT_EQ(store.getItems()[i].transform.get(), transforms[i].get());
    }
}

TEST(transformStore, refusesASecondEntryOfAnId)
{
    TransformStore store;
    const TransformPtr first = makeTransform("a");
    store.add(first);
    EXPECT_EQ(failureOf([&] { store.add(makeTransform("a")); }), duplicate("a"));
    EXPECT_EQ(failureOf([&] { store.add(first); }), duplicate("a"));
    EXPECT_EQ(store.size(), 1u);
    TransformPtr found;
    EXPECT_TRUE(store.find("a", found));
    EXPECT_EQ(found.get(), first.get());
}

TEST(transformStore, ofAnUnknownIdFindsNothingAndLeavesTheResult)
{
    TransformStore store;
    store.add(makeTransform("a"));
    const TransformPtr before = makeTransform("b");
    TransformPtr result = before;
    EXPECT_FALSE(store.find("b", result));
    EXPECT_FALSE(store.find("A", result));
    EXPECT_FALSE(store.find("a ", result));
    EXPECT_FALSE(store.findForm(implOf(before), kSettings, result));
    EXPECT_EQ(result.get(), before.get());
    EXPECT_FALSE(store.holds(implOf(before)));
}

TEST(transformStore, removesAnEntryAndKeepsTheOrderOfTheOthers)
{
    TransformStore store;
    for (const char* id : {"a", "b", "c", "d"})
        store.add(makeTransform(id));
    store.remove("b");
    EXPECT_EQ(idsOf(store), (std::vector<std::string>{"a", "c", "d"}));
    EXPECT_EQ(failureOf([&] { store.remove("b"); }), notFound("b"));
    EXPECT_FALSE(store.holds(implOf(makeTransform("b"))));
    store.add(makeTransform("b"));
    store.remove("a");
    EXPECT_EQ(idsOf(store), (std::vector<std::string>{"c", "d", "b"}));
}

TEST(transformStore, keepsTheIdThatATransformHadWhenItWasAdded)
{
    TransformStore store;
    const TransformPtr transform = makeTransform("a");
    store.add(transform);
    ASSERT_TRUE(transform->setId("b"));
    TransformPtr found;
    EXPECT_TRUE(store.find("a", found));
    EXPECT_FALSE(store.find("b", found));
    EXPECT_EQ(failureOf([&] { store.add(makeTransform("a")); }), duplicate("a"));
    store.add(makeTransform("b"));
    EXPECT_EQ(idsOf(store), (std::vector<std::string>{"a", "b"}));
}

TEST(transformStore, findsTheFormWithTheFiveValuesAndNoOther)
{
    TransformStore store;
    const TransformPtr transform = makeTransform("a");
    store.add(transform);
    const TransformPtr form = makeForm(transform, kSettings);
    store.addForm(form, kSettings);
    EXPECT_EQ(formOf(store, transform, kSettings).get(), form.get());

    std::vector<FinalizeSettings> others(5, kSettings);
    others[0].in = PF_RGB_8i;
    others[1].out = PF_RGB_16f;
    others[2].renderers = RENDERER_CPU | RENDERER_GPU;
    others[3].optimizer = OPTIMIZER_DEFAULT;
    others[4].resolve = RESOLVE_BROADCAST_MONITOR;
    for (const FinalizeSettings& other : others)
        EXPECT_FALSE(formOf(store, transform, other));
    EXPECT_EQ(store.size(), 1u);
}

TEST(transformStore, theTransformAsItWasAddedIsAFormOnceItIsFinalized)
{
    TransformStore store;
    const TransformPtr transform = makeTransform("a");
    store.add(transform);
    EXPECT_FALSE(formOf(store, transform, kSettings));
    finalizeWith(transform, kSettings);
    EXPECT_EQ(formOf(store, transform, kSettings).get(), transform.get());
    EXPECT_EQ(failureOf([&] { store.addForm(makeForm(transform, kSettings), kSettings); }), duplicate("a"));
}

TEST(transformStore, ofEqualFormsTheFirstIsFound)
{
    TransformStore store;
    const TransformPtr transform = makeTransform("a");
    store.add(transform);
    const TransformPtr first = makeForm(transform, withInput(PF_RGB_8i));
    const TransformPtr second = makeForm(transform, withInput(PF_RGB_10i));
    store.addForm(first, withInput(PF_RGB_8i));
    store.addForm(second, withInput(PF_RGB_10i));
    finalizeWith(second, kSettings);
    EXPECT_EQ(formOf(store, transform, kSettings).get(), second.get());
    finalizeWith(first, kSettings);
    EXPECT_EQ(formOf(store, transform, kSettings).get(), first.get());
    EXPECT_FALSE(formOf(store, transform, withInput(PF_RGB_8i)));
}

TEST(transformStore, refusesAFormOfAnUnknownTransform)
{
    TransformStore store;
    store.add(makeTransform("a"));
    EXPECT_EQ(failureOf([&] { store.addForm(makeForm(makeTransform("b"), kSettings), kSettings); }), notFound("b"));
}

TEST(transformStore, formsGoWithTheirEntry)
{
    TransformStore store;
    const TransformPtr transform = makeTransform("a");
    store.add(transform);
    const TransformPtr form = makeForm(transform, kSettings);
    store.addForm(form, kSettings);
    EXPECT_EQ(form.getUseCount(), 2);
    store.remove("a");
    EXPECT_EQ(form.getUseCount(), 1);
    EXPECT_FALSE(formOf(store, transform, kSettings));

    store.add(transform);
    store.addForm(form, kSettings);
    store.clear();
    EXPECT_EQ(form.getUseCount(), 1);
    EXPECT_EQ(transform.getUseCount(), 1);
    EXPECT_EQ(store.size(), 0u);
    EXPECT_TRUE(store.getItems().empty());
}

TEST(transformStore, knowsATransformByItsUniqueId)
{
    TransformStore store;
    const TransformPtr transform = makeTransform("a-b c");
    store.add(transform);
    EXPECT_TRUE(store.holds(implOf(transform)));
    EXPECT_TRUE(store.holds(implOf(makeTransform("abc"))));
    EXPECT_FALSE(store.holds(implOf(makeTransform("abcd"))));
    finalizeWith(transform, kSettings);
    EXPECT_EQ(formOf(store, makeTransform("abc"), kSettings).get(), transform.get());
    // Hosts name an entry by its id alone.
    TransformPtr found;
    EXPECT_FALSE(store.find("abc", found));
}

TEST(transformStore, ofEntriesWithOneUniqueIdTakesTheOneWithTheIdOrElseTheFirst)
{
    TransformStore store;
    const TransformPtr first = makeTransform("look 1.1");
    const TransformPtr second = makeTransform("look 11");
    finalizeWith(first, kSettings);
    finalizeWith(second, kSettings);
    store.add(first);
    store.add(second);
    EXPECT_EQ(formOf(store, first, kSettings).get(), first.get());
    EXPECT_EQ(formOf(store, second, kSettings).get(), second.get());
    EXPECT_EQ(formOf(store, makeTransform("look11"), kSettings).get(), first.get());
    store.remove("look 1.1");
    EXPECT_EQ(formOf(store, first, kSettings).get(), second.get());
}

TEST(transformStore, withoutAUniqueIdGoesByTheId)
{
    TransformStore store;
    const TransformPtr transform = makeTransform("+");
    ASSERT_STREQ(transform->getUniqueId(), "");
    store.add(transform);
    finalizeWith(transform, kSettings);
    EXPECT_TRUE(store.holds(implOf(transform)));
    EXPECT_EQ(formOf(store, makeTransform("+"), kSettings).get(), transform.get());
    EXPECT_FALSE(store.holds(implOf(makeTransform("-"))));
}

TEST(transformStore, mayBeUsedByWhatGoesWithATransform)
{
    for (const bool isCleared : {false, true}) {
        TransformStore store;
        std::size_t sizeSeen = 1000;
        store.add(makeTransform("a"));
        store.add(makeTransform("b"));
        {
            TransformPtr transform;
            ASSERT_TRUE(store.find("a", transform));
            transform->setGPUAdaptor(GPUAdaptorPtr(new DyingAdaptor([&] {
                sizeSeen = store.size();
                store.clear();
                store.add(makeTransform("c"));
            })));
        }
        isCleared ? store.clear() : store.remove("a");
        EXPECT_EQ(sizeSeen, isCleared ? 0u : 1u);
        EXPECT_EQ(idsOf(store), std::vector<std::string>{"c"});
    }
}

TEST(transformStore, theResultMayBeTheLastHandleToTheTransform)
{
    TransformStore store;
    const TransformPtr cached = makeTransform("a");
    finalizeWith(cached, kSettings);
    store.add(cached);
    TransformPtr handle = makeTransform("a");
    EXPECT_TRUE(store.findForm(implOf(handle), kSettings, handle));
    EXPECT_EQ(handle.get(), cached.get());
}
