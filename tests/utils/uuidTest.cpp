#include "utils/uuid.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace {

TEST(Uuid, hasTheUsualGroups)
{
    EXPECT_THAT(Color::makeUuid(),
                testing::MatchesRegex("[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}"));
}

TEST(Uuid, neverRepeatsAcrossThreads)
{
    constexpr std::size_t THREADS = 4;
    constexpr std::size_t EACH = 500;
    std::vector<std::string> made(THREADS * EACH);
    std::vector<std::thread> threads;
    for (std::size_t thread = 0; thread < THREADS; ++thread)
        threads.emplace_back([&made, thread] {
            for (std::size_t i = 0; i < EACH; ++i)
                made[thread * EACH + i] = Color::makeUuid();
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(std::set<std::string>(made.begin(), made.end()).size(), THREADS * EACH);
}

} // namespace
