#include "tests/api/hostTools.h"

#include <thread>

using namespace Morvane;

TEST(handle, isNullAtFirst)
{
    const TransformPtr handle;
    EXPECT_FALSE(handle);
    EXPECT_EQ(handle.get(), nullptr);
    EXPECT_EQ(handle.getUseCount(), 0);
    const TransformPtr fromNull(nullptr);
    EXPECT_FALSE(fromNull);
    EXPECT_EQ(fromNull.getUseCount(), 0);
}

TEST(handle, lastOneDeletesTheObject)
{
    bool destroyed = false;
    {
        GPUAdaptorPtr first(new TestAdaptor(&destroyed));
        EXPECT_EQ(first.getUseCount(), 1);
        {
            std::vector<GPUAdaptorPtr> copies(1, first);
            GPUAdaptorPtr assigned;
            assigned = copies[0];
            EXPECT_EQ(first.getUseCount(), 3);
            EXPECT_EQ(assigned.get(), first.get());
            EXPECT_EQ(&*assigned, first.operator->());
        }
        EXPECT_EQ(first.getUseCount(), 1);
        EXPECT_FALSE(destroyed);
    }
    EXPECT_TRUE(destroyed);
}

TEST(handle, resetGivesTheObjectUp)
{
    bool firstDestroyed = false;
    bool secondDestroyed = false;
    GPUAdaptorPtr handle(new TestAdaptor(&firstDestroyed));
    auto* second = new TestAdaptor(&secondDestroyed);
    handle.reset(second);
    EXPECT_TRUE(firstDestroyed);
    EXPECT_EQ(handle.get(), second);
    EXPECT_EQ(handle.getUseCount(), 1);
    handle.reset();
    EXPECT_TRUE(secondDestroyed);
    EXPECT_FALSE(handle);
}

TEST(handle, survivesAssignmentToItself)
{
    bool destroyed = false;
    GPUAdaptorPtr handle(new TestAdaptor(&destroyed));
    const GPUAdaptorPtr& same = handle;
    handle = same;
    EXPECT_FALSE(destroyed);
    EXPECT_EQ(handle.getUseCount(), 1);
}

TEST(handle, countsAcrossThreads)
{
    const TransformPtr handle = makeScale({1, 1, 1, 1});
    std::vector<std::thread> threads(4);
    for (std::thread& thread : threads) {
        thread = std::thread([&handle] {
            for (int round = 0; round < 10000; ++round) {
                TransformPtr copy;
                copy = handle;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(handle.getUseCount(), 1);
}
