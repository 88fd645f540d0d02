#include "morvane/recursiveLock.h"

#include <atomic>
#include <gtest/gtest.h>
#include <mutex>
#include <thread>
#include <vector>

using Morvane_2015_1_42::Impl::RecursiveLock;
using Guard = std::lock_guard<RecursiveLock>;

TEST(recursiveLock, itsOwnerTakesItAgain)
{
    RecursiveLock lock;
    int depth = 0;
    const Guard first(lock);
    ++depth;
    {
        const Guard second(lock);
        const Guard third(lock);
        depth += 2;
    }
    const Guard fourth(lock);
    EXPECT_EQ(++depth, 4);
}

TEST(recursiveLock, anotherThreadWaitsUntilItWasGivenBackAsOftenAsTaken)
{
    RecursiveLock lock;
    std::atomic<bool> isTaken{false};
    lock.lock();
    lock.lock();
    std::thread other([&] {
        const Guard guard(lock);
        isTaken = true;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_FALSE(isTaken);
    lock.unlock();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_FALSE(isTaken);
    lock.unlock();
    other.join();
    EXPECT_TRUE(isTaken);
}

TEST(recursiveLock, keepsThreadsApart)
{
    RecursiveLock lock;
    int count = 0;
    const auto work = [&] {
        for (int i = 0; i < 2000; ++i) {
            const Guard outer(lock);
            ++count;
            const Guard inner(lock);
            ++count;
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back(work);
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(count, 16000);
}
