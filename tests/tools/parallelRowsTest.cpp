#include "parallelRows.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <vector>

using Command::parallelRows;

TEST(parallelRows, coversEachRowOnceForAnyCounts)
{
    for (const int rows : {0, 1, 15, 16, 17, 100, 1000}) {
        for (const unsigned threads : {1u, 2u, 7u}) {
            std::vector<std::atomic<int>> visits(static_cast<size_t>(rows));
            parallelRows(rows, threads, [&](int first, int count) {
                for (int row = first; row < first + count; ++row)
                    ++visits[static_cast<size_t>(row)];
            });
            for (const std::atomic<int>& visit : visits)
                ASSERT_EQ(visit, 1) << rows << " rows, " << threads;
        }
    }
}

TEST(parallelRows, passesAnExceptionOn)
{
    for (const unsigned threads : {1u, 4u}) {
        try {
            parallelRows(1000, threads, [](int first, int) {
                if (first >= 160) throw std::runtime_error("row 160");
            });
            ADD_FAILURE() << "no exception";
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "row 160");
        }
    }
}
