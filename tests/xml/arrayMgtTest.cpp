#include "xml/arrayMgt.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>

using Color::Xml::Reader::FileArray;

namespace {

/// The most room, in values, that holding count of them took at once.
std::size_t roomFor(std::size_t count, uint64_t capacity)
{
    FileArray array;
    array.capacity = capacity;
    std::size_t most = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t former = array.values.capacity();
        array.append(static_cast<float>(i));
        const std::size_t room = array.values.capacity();
        most = std::max(most, room == former ? room : former + room);
    }
    EXPECT_EQ(array.values.size(), count);
    EXPECT_EQ(array.values.back(), static_cast<float>(count - 1));
    return most;
}

} // namespace

TEST(FileArray, wholeArrayTakesAtMostTwiceItsSize)
{
    for (const std::size_t count : {1u, 9u, 16u, 17u, 1024u, 1025u, 1027u, 3 * 17u * 17u * 17u, 65537u})
        EXPECT_LE(roomFor(count, count), 2 * count) << count;
}

TEST(FileArray, roomFollowsTheValuesNotTheCapacity)
{
    EXPECT_LE(roomFor(100, std::numeric_limits<uint64_t>::max()), 300u);
}
