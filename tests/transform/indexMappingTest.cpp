#include "transform/indexMapping.h"

#include <gtest/gtest.h>
#include <stdexcept>

using namespace Color;

namespace {

IndexMapping makeMapping()
{
    IndexMapping mapping;
    mapping.resize(2);
    for (std::size_t component = 0; component < 3; ++component) {
        const auto offset = static_cast<float>(component);
        mapping.getComponent(component).values = {offset, offset + 0.5F};
        mapping.getComponent(component).indices = {0.0F, offset + 100.0F};
    }
    return mapping;
}

} // namespace

TEST(IndexMapping, startsEmpty)
{
    const IndexMapping mapping;
    EXPECT_EQ(mapping.getDimension(), 0U);
    for (std::size_t component = 0; component < 3; ++component) {
        EXPECT_TRUE(mapping.getComponent(component).values.empty());
        EXPECT_TRUE(mapping.getComponent(component).indices.empty());
    }
}

TEST(IndexMapping, resizeSizesTheListsOfAllComponents)
{
    IndexMapping mapping = makeMapping();
    mapping.resize(3);
    EXPECT_EQ(mapping.getDimension(), 3U);
    EXPECT_EQ(mapping.getComponent(0).values, (std::vector<float>{0.0F, 0.5F, 0.0F}));
    EXPECT_EQ(mapping.getComponent(0).indices, (std::vector<float>{0.0F, 100.0F, 0.0F}));
    EXPECT_EQ(mapping.getComponent(2).values, (std::vector<float>{2.0F, 2.5F, 0.0F}));
    EXPECT_EQ(mapping.getComponent(2).indices, (std::vector<float>{0.0F, 102.0F, 0.0F}));
    mapping.resize(1);
    EXPECT_EQ(mapping.getDimension(), 1U);
    EXPECT_EQ(mapping.getComponent(1).values, std::vector<float>{1.0F});
    EXPECT_EQ(mapping.getComponent(1).indices, std::vector<float>{0.0F});
}

TEST(IndexMapping, hasThreeComponents)
{
    IndexMapping mapping;
    EXPECT_THROW(mapping.getComponent(3), std::out_of_range);
    EXPECT_THROW(static_cast<const IndexMapping&>(mapping).getComponent(3), std::out_of_range);
}

TEST(IndexMapping, copyHasItsOwnLists)
{
    IndexMapping mapping = makeMapping();
    const IndexMapping copy(mapping);
    IndexMapping assigned;
    assigned = mapping;
    mapping.getComponent(1).values[0] = 9.0F;
    EXPECT_EQ(copy.getDimension(), 2U);
    EXPECT_TRUE(copy.isEqual(makeMapping()));
    EXPECT_TRUE(assigned.isEqual(makeMapping()));
}

TEST(IndexMapping, isEqualComparesDimensionAndLists)
{
    const IndexMapping mapping = makeMapping();
    EXPECT_TRUE(mapping.isEqual(mapping));
    EXPECT_TRUE(IndexMapping().isEqual(IndexMapping()));
    EXPECT_FALSE(mapping.isEqual(IndexMapping()));

    IndexMapping otherDimension = makeMapping();
    otherDimension.resize(3);
    EXPECT_FALSE(mapping.isEqual(otherDimension));
    for (std::size_t component = 0; component < 3; ++component) {
        IndexMapping otherValue = makeMapping();
        otherValue.getComponent(component).values[1] += 1.0F;
        EXPECT_FALSE(mapping.isEqual(otherValue)) << component;
        IndexMapping otherIndex = makeMapping();
        otherIndex.getComponent(component).indices[1] += 1.0F;
        EXPECT_FALSE(mapping.isEqual(otherIndex)) << component;
    }
}
