#include "transform/metadata.h"

#include "tests/utils/failure.h"

#include <gtest/gtest.h>

using namespace Color;

namespace {

const char* const kCategory = "COLOR:TRANSFORM:METADATA";

/// Info: Author "Ada", Place (City "Bern", City "Basel").
Metadata makeTree()
{
    Metadata root("Info");
    root.addChild("Author").setValue("Ada");
    Metadata& place = root.addChild("Place");
    place.addChild("City").setValue("Bern");
    place.addChild("City").setValue("Basel");
    return root;
}

} // namespace

TEST(Metadata, newNodeIsAnEmptyLeaf)
{
    const Metadata node("Info");
    EXPECT_EQ(node.getName(), "Info");
    EXPECT_EQ(node.getValue(), "");
    EXPECT_TRUE(node.isLeaf());
    EXPECT_TRUE(node.getChildren().empty());
}

TEST(Metadata, leafHoldsAValue)
{
    Metadata node("Author");
    node.setValue("Ada");
    EXPECT_EQ(node.getValue(), "Ada");
    EXPECT_TRUE(node.isLeaf());
}

TEST(Metadata, childrenKeepTheirOrderAndRepeatedNames)
{
    const Metadata root = makeTree();
    EXPECT_FALSE(root.isLeaf());
    ASSERT_EQ(root.getChildren().size(), 2U);
    EXPECT_EQ(root.getChildren()[0].getName(), "Author");
    EXPECT_EQ(root.getChildren()[1].getName(), "Place");
    const Metadata& place = root.getChild("Place");
    ASSERT_EQ(place.getChildren().size(), 2U);
    EXPECT_EQ(place.getChildren()[0].getValue(), "Bern");
    EXPECT_EQ(place.getChildren()[1].getValue(), "Basel");
}

TEST(Metadata, lookUpFindsTheFirstOfAName)
{
    Metadata root = makeTree();
    EXPECT_EQ(root.getChildValue("Author"), "Ada");
    EXPECT_EQ(root.getChild("Place").getChildValue("City"), "Bern");
    root.getChild("Place").getChild("City").setValue("Thun");
    EXPECT_EQ(root.getChild("Place").getChildren()[0].getValue(), "Thun");
    EXPECT_EQ(root.getChild("Place").getChildren()[1].getValue(), "Basel");
}

TEST(Metadata, finishedChildIsAddedWhole)
{
    Metadata outer("Outer");
    EXPECT_EQ(outer.addChild(makeTree()).getName(), "Info");
    EXPECT_TRUE(outer.getChild("Info").isEqual(makeTree()));
}

TEST(Metadata, emptyNameIsRefused)
{
    const Failure failure{0x20d0001, kCategory, "Metadata element name cannot be empty."};
    Metadata root = makeTree();
    const Metadata& constRoot = root;
    EXPECT_EQ(failureOf([&] { root.addChild(""); }), failure);
    EXPECT_EQ(failureOf([&] { root.addChild(Metadata("")); }), failure);
    EXPECT_EQ(failureOf([&] { root.getChild(""); }), failure);
    EXPECT_EQ(failureOf([&] { constRoot.getChild(""); }), failure);
    EXPECT_EQ(failureOf([&] { constRoot.getChildValue(""); }), failure);
    EXPECT_TRUE(root.isEqual(makeTree()));
}

TEST(Metadata, containerHasNoValue)
{
    Metadata root = makeTree();
    const Failure failure{0x20d0002, kCategory, "Metadata element should be a leaf: Info"};
    EXPECT_EQ(failureOf([&] { root.getValue(); }), failure);
    EXPECT_EQ(failureOf([&] { root.setValue("x"); }), failure);
    EXPECT_EQ(failureOf([&] { root.getChildValue("Place"); }),
              (Failure{0x20d0002, kCategory, "Metadata element should be a leaf: Place"}));
    EXPECT_TRUE(root.isEqual(makeTree()));
}

TEST(Metadata, leafWithAValueHasNoChildren)
{
    Metadata author("Author");
    author.setValue("Ada");
    const Failure failure{0x20d0003, kCategory, "Metadata element should be a container: Author"};
    EXPECT_EQ(failureOf([&] { author.addChild("First"); }), failure);
    EXPECT_EQ(failureOf([&] { author.getChild("First"); }), failure);
    EXPECT_EQ(failureOf([&] { author.getChildValue("First"); }), failure);
    EXPECT_EQ(author.getValue(), "Ada");
}

TEST(Metadata, unknownNameIsNotFound)
{
    Metadata root = makeTree();
    const Failure failure{0x20d0004, kCategory, "Metadata element not found: author"};
    EXPECT_EQ(failureOf([&] { root.getChild("author"); }), failure);
    EXPECT_EQ(failureOf([&] { root.getChildValue("author"); }), failure);
    EXPECT_EQ(failureOf([] { Metadata("Info").getChild("author"); }), failure);
}

TEST(Metadata, setContentKeepsTheName)
{
    Metadata root("Root");
    root.addChild("Old").setValue("gone");
    root.setContent(makeTree());
    EXPECT_EQ(root.getName(), "Root");
    ASSERT_EQ(root.getChildren().size(), 2U);
    EXPECT_EQ(root.getChildValue("Author"), "Ada");

    Metadata leaf("Leaf");
    leaf.setValue("text");
    root.setContent(leaf);
    EXPECT_TRUE(root.isLeaf());
    EXPECT_EQ(root.getValue(), "text");
}

TEST(Metadata, setContentTakesANodeFromBelow)
{
    Metadata root = makeTree();
    root.setContent(root.getChild("Place"));
    EXPECT_EQ(root.getName(), "Info");
    ASSERT_EQ(root.getChildren().size(), 2U);
    EXPECT_EQ(root.getChildren()[1].getValue(), "Basel");
    root.setContent(root);
    EXPECT_EQ(root.getChildren()[1].getValue(), "Basel");
}

TEST(Metadata, isEqualComparesTheWholeTree)
{
    EXPECT_TRUE(makeTree().isEqual(makeTree()));

    Metadata otherValue = makeTree();
    otherValue.getChild("Place").getChild("City").setValue("Genf");
    EXPECT_FALSE(makeTree().isEqual(otherValue));

    Metadata moreChildren = makeTree();
    moreChildren.getChild("Place").addChild("City");
    EXPECT_FALSE(makeTree().isEqual(moreChildren));
    EXPECT_FALSE(moreChildren.isEqual(makeTree()));

    Metadata otherName("Information");
    otherName.setContent(makeTree());
    EXPECT_FALSE(makeTree().isEqual(otherName));
}
