#include "tests/api/cacheText.h"

#include <array>
#include <atomic>
#include <functional>
#include <thread>

using namespace Morvane;

namespace {

std::string serialized()
{
    TextWriter writer;
    EXPECT_TRUE(succeeds(TransformCache::serializeTransformCache(writer)));
    return writer.text();
}

MorvaneStatus populateWith(const std::string& text) { return TransformCache::populateTransformCache(text.c_str()); }

const char* const kEmpty = "<ProcessListSet>\n</ProcessListSet>\n";
const char* const kInvalid = "Invalid data provided to populate the cache";
const char* const kDuplicate = "Transform in cache data already exists in active cache: ";

/// Does something with each block.
class ActingWriter : public TransformCache::Writer
{
public:
    explicit ActingWriter(std::function<void()> action) : m_action(std::move(action)) {}

    void write(const char* bytes, uint32_t length) override
    {
        m_text.append(bytes, length);
        m_action();
    }

    const std::string& text() const { return m_text; }

private:
    std::function<void()> m_action;
    std::string m_text;
};

class transformCache : public CacheTest
{};

} // namespace

TEST_F(transformCache, emptyIsWrittenAsAnEmptySetWhichAddsNothing)
{
    EXPECT_EQ(TransformCache::numItems(), 0u);
    EXPECT_EQ(serialized(), kEmpty);
    EXPECT_TRUE(succeeds(populateWith(kEmpty)));
    EXPECT_EQ(TransformCache::numItems(), 0u);
    populate({"a"});
    EXPECT_TRUE(succeeds(populateWith(kEmpty)));
    EXPECT_EQ(TransformCache::numItems(), 1u);
}

TEST_F(transformCache, givesBackTheTextThatItWasPopulatedWith)
{
    const std::string text = cacheTextOf({"z", "a-1"});
    populate({"z", "a-1"});
    EXPECT_EQ(TransformCache::numItems(), 2u);
    EXPECT_EQ(serialized(), text);
    EXPECT_TRUE(failsWith(populateWith(text), 0x6040003, kDuplicate + std::string("z")));
    EXPECT_EQ(serialized(), text);
    ASSERT_TRUE(succeeds(TransformCache::clear()));
    EXPECT_EQ(TransformCache::numItems(), 0u);
    EXPECT_EQ(serialized(), kEmpty);
}

TEST_F(transformCache, givesOutOneObjectOverAndOver)
{
    populate({"a-1", "b"});
    const TransformPtr transform = getTransform("a-1");
    EXPECT_STREQ(transform->getId(), "a-1");
    EXPECT_EQ(transform.getUseCount(), 2);
    EXPECT_EQ(getTransform("a-1").get(), transform.get());
    EXPECT_NE(getTransform("b").get(), transform.get());
    EXPECT_EQ(transform->getInputPixelFormat(), PF_UNKNOWN);

    ASSERT_TRUE(succeeds(TransformCache::clear()));
    EXPECT_EQ(transform.getUseCount(), 1);
    EXPECT_STREQ(transform->getId(), "a-1");
}

TEST_F(transformCache, failuresSayWhyAndLeaveTheResult)
{
    populate({"a-1"});
    const TransformPtr before = makeScale({1, 1, 1, 1});
    TransformPtr result = before;
    const std::string notFound = "The Morvane transform id requested is not in the cache: ";
    EXPECT_TRUE(failsWith(TransformCache::getTransform("b", result), 0x6040001, notFound + "b"));
    EXPECT_TRUE(failsWith(TransformCache::getTransform("a1", result), 0x6040001, notFound + "a1"));
    EXPECT_TRUE(failsWith(TransformCache::getTransform("", result), 0x6040001, notFound));
    EXPECT_TRUE(failsWith(TransformCache::getTransform(nullptr, result), 0x6030001, "NULL parameter: id"));
    EXPECT_TRUE(failsWith(TransformCache::populateTransformCache(nullptr), 0x6030001, "NULL parameter: text"));
    EXPECT_EQ(result.get(), before.get());
}

TEST_F(transformCache, refusesATextOfAnotherKindAndKeepsWhatCameBefore)
{
    EXPECT_TRUE(failsWith(populateWith(""), 0x6040002, kInvalid));
    EXPECT_TRUE(failsWith(populateWith("<ProcessListSet/>"), 0x6040002, kInvalid));
    EXPECT_EQ(TransformCache::numItems(), 0u);
    const std::string text = cacheTextOf({"a", "b", "c"});
    EXPECT_TRUE(failsWith(populateWith(text.substr(0, text.rfind("<ProcessListEntry>\n")) + "</ProcessLis>\n"),
                          0x6040002, kInvalid));
    EXPECT_EQ(TransformCache::numItems(), 0u);
    std::string withoutThird = text;
    withoutThird.erase(withoutThird.rfind("<TransformId"), 1);
    EXPECT_TRUE(failsWith(populateWith(withoutThird), 0x6040002, kInvalid));
    EXPECT_EQ(serialized(), cacheTextOf({"a", "b"}));
}

TEST_F(transformCache, onlyReadsTheTextItIsPopulatedWith)
{
    // A constant, which lies in memory that cannot be written to.
    static constexpr char text[] = "<ProcessListSet>\n<ProcessListEntry>\n<TransformId id=\"a\"/>\n"
                                   "<ProcessList version=\"1.3\" id=\"a\">\n</ProcessList>\n"
                                   "</ProcessListEntry>\n</ProcessListSet>\n";
    EXPECT_TRUE(succeeds(TransformCache::populateTransformCache(text)));
    EXPECT_EQ(TransformCache::numItems(), 1u);
}

TEST_F(transformCache, anIdWithAQuotationMarkComesBackCut)
{
    populate({"a"});
    ASSERT_TRUE(succeeds(TransformCache::clear()));
    std::string text = cacheTextOf({"a"});
    text.replace(text.find("id=\"a\"/>"), 8, "id=\"a\"b\"/>");
    EXPECT_TRUE(succeeds(populateWith(text)));
    EXPECT_STREQ(getTransform("a")->getId(), "a");
}

TEST_F(transformCache, isWrittenInBlocksInOrder)
{
    std::vector<std::string> ids;
    for (int i = 0; i < 100; ++i)
        ids.push_back("transform " + std::to_string(i));
    populate(ids);
    TextWriter writer;
    EXPECT_TRUE(succeeds(TransformCache::serializeTransformCache(writer)));
    EXPECT_GT(writer.calls(), 5u);
    EXPECT_EQ(writer.text(), cacheTextOf(ids));
}

TEST_F(transformCache, aWriterThatThrowsEndsTheWritingAndChangesNothing)
{
    std::vector<std::string> ids;
    for (int i = 0; i < 100; ++i)
        ids.push_back("transform " + std::to_string(i));
    populate(ids);
    for (const std::size_t capacity : {0u, 1u, 4u}) {
        TextWriter writer(capacity);
        EXPECT_THROW(TransformCache::serializeTransformCache(writer), std::runtime_error);
        EXPECT_EQ(writer.calls(), capacity + 1);
        EXPECT_EQ(writer.text(), cacheTextOf(ids).substr(0, writer.text().size()));
    }
    // Not even the lock is left behind.
    std::thread([&] { EXPECT_EQ(serialized(), cacheTextOf(ids)); }).join();
}

TEST_F(transformCache, aWriterMayChangeTheCacheItIsHanded)
{
    populate({"a", "b"});
    ActingWriter writer([] {
        EXPECT_EQ(TransformCache::numItems(), 2u);
        EXPECT_TRUE(succeeds(TransformCache::clear()));
        EXPECT_TRUE(succeeds(populateWith(cacheTextOf({"c", "d"}))));
    });
    EXPECT_TRUE(succeeds(TransformCache::serializeTransformCache(writer)));
    EXPECT_EQ(writer.text(), cacheTextOf({"a", "b"}));
    EXPECT_EQ(serialized(), cacheTextOf({"c", "d"}));
}

TEST_F(transformCache, threadsSeeItWholeAndShareItsForms)
{
    constexpr std::size_t count = 8;
    std::vector<std::string> ids;
    for (std::size_t i = 0; i < count; ++i)
        ids.push_back("shared-" + std::to_string(i));
    const std::string text = cacheTextOf(ids);
    const auto finalizeWith = [](const TransformPtr& source, PixelFormat in, TransformPtr& result) {
        return finalize(source, in, PF_RGBA_32f, RENDERER_CPU, OPTIMIZER_DEFAULT, RESOLVE_BROADCAST_MONITOR, result);
    };
    const PixelFormat formats[] = {PF_RGBA_32f, PF_RGBA_8i, PF_RGBA_16f, PF_RGBA_16i};
    constexpr std::size_t formatCount = 4;
    using Forms = std::array<std::array<const Transform*, formatCount>, count>;
    std::atomic<int> failures{0};
    for (int round = 0; round < 20; ++round) {
        ASSERT_TRUE(succeeds(TransformCache::clear()));
        populate(ids);
        for (const std::string& id : ids) {
            TransformPtr transform = getTransform(id);
            ASSERT_TRUE(succeeds(finalizeWith(transform, PF_RGBA_32f, transform)));
        }
        std::array<Forms, 4> seen{};
        std::atomic<std::size_t> ready{0};
        const auto work = [&](std::size_t thread) {
            ++ready;
            while (ready < seen.size())
                std::this_thread::yield();
            for (std::size_t i = 0; i < count * formatCount; ++i) {
                const std::size_t entry = i % count;
                const std::size_t format = i / count;
                TransformPtr transform;
                if (!TransformCache::getTransform(ids[entry].c_str(), transform)) ++failures;
                TransformPtr form;
                if (!finalizeWith(transform, formats[format], form)) ++failures;
                if (form->getInputPixelFormat() != formats[format]) ++failures;
                seen[thread][entry][format] = form.get();
                if (format == 0) {
                    std::array<float, 4> pixel = {1, 2, 3, 4};
                    if (!form->apply(pixel.data(), ROI(0, 0, 1, 1), pixel.data()) || pixel[2] != 6) ++failures;
                }
                // What is in the cache already is refused, and what another thread reads is never half there.
                if (entry == thread) {
                    TextWriter writer;
                    if (!TransformCache::serializeTransformCache(writer) || writer.text() != text) ++failures;
                    if (TransformCache::populateTransformCache(text.c_str())) ++failures;
                    if (TransformCache::numItems() != count) ++failures;
                }
            }
        };
        std::vector<std::thread> threads;
        for (std::size_t i = 0; i < seen.size(); ++i)
            threads.emplace_back(work, i);
        for (std::thread& thread : threads)
            thread.join();
        ASSERT_EQ(failures, 0);
        for (const Forms& forms : seen)
            EXPECT_EQ(forms, seen[0]);
        for (std::size_t i = 0; i < count; ++i)
            EXPECT_EQ(seen[0][i][0], getTransform(ids[i]).get());
    }
}

TEST_F(transformCache, threadsMayPopulateAndClearWhileOthersFinalize)
{
    populate({"a"});
    TransformPtr source = getTransform("a");
    ASSERT_TRUE(succeeds(finalize(source, PF_RGBA_32f, PF_RGBA_32f, RENDERER_CPU, OPTIMIZER_DEFAULT,
                                  RESOLVE_BROADCAST_MONITOR, source)));
    // A transform that is not finalized changes in place, also while others look whether it is the form they need.
    std::atomic<int> failures{0};
    std::atomic<bool> isDone{false};
    std::thread refresher([&] {
        while (!isDone) {
            if (!TransformCache::clear() || !TransformCache::populateTransformCache(cacheTextOf({"a"}).c_str())) {
                ++failures;
            }
            TransformPtr first;
            if (!TransformCache::getTransform("a", first)) ++failures;
            if (!finalize(first, PF_RGBA_16i, PF_RGBA_32f, RENDERER_CPU, OPTIMIZER_DEFAULT, RESOLVE_BROADCAST_MONITOR,
                          first)) {
                ++failures;
            }
        }
    });
    std::vector<std::thread> threads;
    for (int i = 0; i < 2; ++i) {
        threads.emplace_back([&failures] {
            for (int round = 0; round < 1000; ++round) {
                // The host's own object with the id of the entry.
                TransformPtr own = fromText(document(""));
                for (const PixelFormat format : {PF_RGBA_8i, PF_RGBA_16f, PF_RGBA_16i}) {
                    TransformPtr result;
                    if (!finalize(own, format, PF_RGBA_32f, RENDERER_CPU, OPTIMIZER_DEFAULT, RESOLVE_BROADCAST_MONITOR,
                                  result) ||
                        result->getInputPixelFormat() != format) {
                        ++failures;
                    }
                }
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    isDone = true;
    refresher.join();
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(TransformCache::numItems(), 1u);
}
