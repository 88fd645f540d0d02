#include "transform/array.h"

#include "tests/utils/failure.h"

#include <gtest/gtest.h>
#include <limits>

using namespace Color;

namespace {

/// As many values as length times components.
class PlainArray : public Array
{
public:
    std::size_t getNumValues(uint32_t length, uint32_t numColorComponents) const override
    {
        return static_cast<std::size_t>(length) * numColorComponents;
    }
};

PlainArray makeArray(uint32_t length, uint32_t components, const Array::Values& values)
{
    PlainArray array;
    array.resize(length, components);
    array.getValues() = values;
    return array;
}

} // namespace

TEST(Array, startsEmpty)
{
    const PlainArray array;
    EXPECT_EQ(array.getLength(), 0U);
    EXPECT_EQ(array.getNumColorComponents(), 0U);
    EXPECT_TRUE(array.getValues().empty());
}

TEST(Array, resizeStoresBothAndSizesTheValues)
{
    PlainArray array;
    array.resize(5, 3);
    EXPECT_EQ(array.getLength(), 5U);
    EXPECT_EQ(array.getNumColorComponents(), 3U);
    EXPECT_EQ(array.getValues(), Array::Values(15, 0.0F));
}

TEST(Array, settersOfOneDimensionResize)
{
    PlainArray array;
    array.setLength(4);
    EXPECT_EQ(array.getLength(), 4U);
    EXPECT_EQ(array.getValues().size(), 0U);
    array.setNumColorComponents(3);
    EXPECT_EQ(array.getNumColorComponents(), 3U);
    EXPECT_EQ(array.getValues().size(), 12U);
    array.setLength(2);
    EXPECT_EQ(array.getValues().size(), 6U);
}

TEST(Array, settersDoNothingWhenTheValueIsUnchanged)
{
    PlainArray array;
    array.resize(4, 3);
    array.getValues().resize(7);
    array.setLength(4);
    array.setNumColorComponents(3);
    EXPECT_EQ(array.getValues().size(), 7U);
}

TEST(Array, setValueStoresOneValue)
{
    PlainArray array;
    array.resize(3, 1);
    array.setValue(1, 0.25F);
    EXPECT_EQ(array.getValues(), (Array::Values{0.0F, 0.25F, 0.0F}));
}

TEST(Array, copyHasItsOwnValues)
{
    PlainArray array = makeArray(2, 1, {1.0F, 2.0F});
    const PlainArray copy(array);
    array.setValue(0, 9.0F);
    EXPECT_EQ(copy.getLength(), 2U);
    EXPECT_EQ(copy.getNumColorComponents(), 1U);
    EXPECT_EQ(copy.getValues(), (Array::Values{1.0F, 2.0F}));
}

TEST(Array, isEqualComparesShapeAndValues)
{
    const PlainArray array = makeArray(2, 1, {1.0F, 2.0F});
    EXPECT_TRUE(array.isEqual(array));
    EXPECT_TRUE(array.isEqual(makeArray(2, 1, {1.0F, 2.0F})));
    EXPECT_FALSE(array.isEqual(makeArray(2, 1, {1.0F, 2.5F})));
    EXPECT_FALSE(array.isEqual(makeArray(3, 1, {1.0F, 2.0F})));
    EXPECT_FALSE(array.isEqual(makeArray(2, 3, {1.0F, 2.0F})));
    EXPECT_FALSE(array.isEqual(makeArray(2, 1, {1.0F, 2.0F, 3.0F})));
}

TEST(Array, nanIsDifferentFromEverything)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const PlainArray array = makeArray(2, 1, {1.0F, nan});
    EXPECT_FALSE(array.isEqual(array));
    EXPECT_FALSE(array.isEqual(makeArray(2, 1, {1.0F, nan})));
}

TEST(Array, validateRejectsLengthZero)
{
    PlainArray array;
    EXPECT_EQ(failureOf([&] { array.validate(); }), (Failure{0x2010004, "COLOR:TRANSFORM:ALL", "Array content empty"}));
}

TEST(Array, validateRejectsWrongNumberOfValues)
{
    const Failure illegal{0x2010005, "COLOR:TRANSFORM:ALL", "Array content illegal"};
    PlainArray array = makeArray(2, 3, Array::Values(6));
    EXPECT_EQ(failureOf([&] { array.validate(); }), kNoFailure);
    array.getValues().resize(5);
    EXPECT_EQ(failureOf([&] { array.validate(); }), illegal);
    array.getValues().resize(7);
    EXPECT_EQ(failureOf([&] { array.validate(); }), illegal);
}
