#include "transform/opList.h"

#include "testOp.h"
#include "tests/utils/failure.h"
#include "transform/matrixOp.h"

#include <gtest/gtest.h>

using namespace Color;

namespace {

const char* const kCategory = "COLOR:TRANSFORM:OPLIST";
const Failure kEntryNull{0x2060007, kCategory, "Entry null"};

Failure outOfRange(const std::string& index) { return {0x2060006, kCategory, "Index " + index + " out of range"}; }

/// The input and output depth of every op: "8i>10i 10i>32f".
std::string depthsOf(const OpList& list)
{
    std::string text;
    for (std::size_t i = 0; i < list.size(); ++i) {
        text += (i == 0 ? "" : " ") + std::string(getBitDepthName(list.get(i)->getInBitDepth())) + ">" +
                getBitDepthName(list.get(i)->getOutBitDepth());
    }
    return text;
}

TestOp* makeOp(const std::string& name, BitDepth in = BIT_DEPTH_32f, BitDepth out = BIT_DEPTH_32f)
{
    return new TestOp(in, out, name);
}

/// a, b, c from 8i over 10i and 12i to 16i.
OpList makeList()
{
    OpList list;
    list.append(makeOp("a", BIT_DEPTH_8i, BIT_DEPTH_10i));
    list.append(makeOp("b", BIT_DEPTH_10i, BIT_DEPTH_12i));
    list.append(makeOp("c", BIT_DEPTH_12i, BIT_DEPTH_16i));
    return list;
}

TestOp& testOpAt(OpList& list, std::size_t index) { return dynamic_cast<TestOp&>(*list.get(index)); }

} // namespace

TEST(OpList, startsEmpty)
{
    OpList list;
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(list.size(), 0U);
    EXPECT_EQ(failureOf([&] { list.validate(); }), kNoFailure);
}

TEST(OpList, ownsItsOps)
{
    ASSERT_EQ(TestOp::alive, 0);
    {
        const OpList list = makeList();
        EXPECT_EQ(TestOp::alive, 3);
    }
    EXPECT_EQ(TestOp::alive, 0);
}

TEST(OpList, clearDeletesAllOps)
{
    OpList list = makeList();
    list.clear();
    EXPECT_EQ(TestOp::alive, 0);
    EXPECT_TRUE(list.empty());
}

TEST(OpList, appendAddsAtTheEnd)
{
    OpList list;
    Op* first = makeOp("a");
    list.append(first);
    list.append(makeOp("b"));
    EXPECT_EQ(namesOf(list), "a b");
    EXPECT_EQ(list.get(0), first);
    EXPECT_FALSE(list.empty());
}

TEST(OpList, appendFitsTheNewOp)
{
    OpList list;
    list.append(makeOp("a", BIT_DEPTH_8i, BIT_DEPTH_10i));
    EXPECT_EQ(testOpAt(list, 0).inDepthChanges, 0);
    list.append(makeOp("b", BIT_DEPTH_32f, BIT_DEPTH_16f));
    EXPECT_EQ(depthsOf(list), "8i>10i 10i>16f");
    EXPECT_EQ(testOpAt(list, 0).inDepthChanges, 0);
    EXPECT_EQ(testOpAt(list, 1).inDepthChanges, 1);
}

TEST(OpList, appendedMatrixIsRescaled)
{
    OpList list;
    list.append(new MatrixOp(BIT_DEPTH_8i, BIT_DEPTH_10i));
    list.append(new MatrixOp(BIT_DEPTH_32f, BIT_DEPTH_32f));
    const auto& matrix = dynamic_cast<const MatrixOp&>(*list.get(1));
    for (std::size_t i = 0; i < 16; ++i) {
        EXPECT_EQ(matrix.getArray().getValues()[i], i % 5 == 0 ? 1.0F / 1023.0F : 0.0F) << i;
    }
    EXPECT_EQ(failureOf([&] { list.validate(); }), kNoFailure);
}

TEST(OpList, nullIsRefused)
{
    OpList list = makeList();
    EXPECT_EQ(failureOf([&] { list.append(nullptr); }), kEntryNull);
    EXPECT_EQ(failureOf([&] { list.prepend(nullptr); }), kEntryNull);
    EXPECT_EQ(failureOf([&] { list.replace(nullptr, 0); }), kEntryNull);
    EXPECT_EQ(failureOf([&] { list.replace(nullptr, 3); }), kEntryNull);
    EXPECT_EQ(namesOf(list), "a b c");
}

TEST(OpList, prependFitsTheFormerFirst)
{
    OpList list = makeList();
    list.prepend(makeOp("z", BIT_DEPTH_32f, BIT_DEPTH_16f));
    EXPECT_EQ(namesOf(list), "z a b c");
    EXPECT_EQ(depthsOf(list), "32f>16f 16f>10i 10i>12i 12i>16i");
    EXPECT_EQ(testOpAt(list, 0).inDepthChanges, 0);
    EXPECT_EQ(testOpAt(list, 1).inDepthChanges, 1);
}

TEST(OpList, prependToAnEmptyListFitsNothing)
{
    OpList list;
    list.prepend(makeOp("a", BIT_DEPTH_8i, BIT_DEPTH_10i));
    EXPECT_EQ(depthsOf(list), "8i>10i");
    EXPECT_EQ(testOpAt(list, 0).inDepthChanges, 0);
}

TEST(OpList, getChecksItsIndex)
{
    OpList list = makeList();
    const OpList& constList = list;
    EXPECT_EQ(list.get(2)->getName(), "c");
    EXPECT_EQ(constList.get(2), list.get(2));
    EXPECT_EQ(failureOf([&] { list.get(3); }), outOfRange("3"));
    EXPECT_EQ(failureOf([&] { constList.get(7); }), outOfRange("7"));
}

TEST(OpList, removeGivesTheOpToTheCaller)
{
    OpList list = makeList();
    Op* middle = list.get(1);
    std::unique_ptr<Op> removed = list.remove(1);
    EXPECT_EQ(removed.get(), middle);
    EXPECT_EQ(TestOp::alive, 3);
    removed.reset();
    EXPECT_EQ(TestOp::alive, 2);
    EXPECT_EQ(namesOf(list), "a c");
}

TEST(OpList, removeFitsTheNextOpInTheMiddleOnly)
{
    OpList middle = makeList();
    middle.remove(1);
    EXPECT_EQ(depthsOf(middle), "8i>10i 10i>16i");

    OpList first = makeList();
    first.remove(0);
    EXPECT_EQ(depthsOf(first), "10i>12i 12i>16i");
    EXPECT_EQ(testOpAt(first, 0).inDepthChanges, 1); // from makeList()

    OpList last = makeList();
    last.remove(2);
    EXPECT_EQ(depthsOf(last), "8i>10i 10i>12i");

    OpList only;
    only.append(makeOp("a"));
    only.remove(0);
    EXPECT_TRUE(only.empty());
}

TEST(OpList, removeChecksItsIndex)
{
    OpList list = makeList();
    EXPECT_EQ(failureOf([&] { list.remove(3); }), outOfRange("3"));
    EXPECT_EQ(failureOf([&] { list.erase(4); }), outOfRange("4"));
    EXPECT_EQ(failureOf([] { OpList().remove(0); }), outOfRange("0"));
    EXPECT_EQ(list.size(), 3U);
}

TEST(OpList, eraseDeletesTheOp)
{
    OpList list = makeList();
    list.erase(1);
    EXPECT_EQ(TestOp::alive, 2);
    EXPECT_EQ(namesOf(list), "a c");
    EXPECT_EQ(depthsOf(list), "8i>10i 10i>16i");
}

TEST(OpList, replaceDeletesTheOldOpAndFitsBothSides)
{
    OpList list = makeList();
    list.replace(makeOp("x", BIT_DEPTH_32f, BIT_DEPTH_16f), 1);
    EXPECT_EQ(TestOp::alive, 3);
    EXPECT_EQ(namesOf(list), "a x c");
    EXPECT_EQ(depthsOf(list), "8i>10i 10i>16f 16f>16i");
}

TEST(OpList, replaceAtTheEndsFitsOneSide)
{
    OpList first = makeList();
    first.replace(makeOp("x", BIT_DEPTH_32f, BIT_DEPTH_16f), 0);
    EXPECT_EQ(depthsOf(first), "32f>16f 16f>12i 12i>16i");
    EXPECT_EQ(testOpAt(first, 0).inDepthChanges, 0);

    OpList last = makeList();
    last.replace(makeOp("x", BIT_DEPTH_32f, BIT_DEPTH_16f), 2);
    EXPECT_EQ(depthsOf(last), "8i>10i 10i>12i 12i>16f");

    OpList only;
    only.append(makeOp("a"));
    only.replace(makeOp("x", BIT_DEPTH_8i, BIT_DEPTH_16f), 0);
    EXPECT_EQ(namesOf(only), "x");
    EXPECT_EQ(depthsOf(only), "8i>16f");
}

TEST(OpList, replaceChecksItsIndexAndOwnsTheOpAllTheSame)
{
    OpList list = makeList();
    EXPECT_EQ(failureOf([&] { list.replace(makeOp("x"), 3); }), outOfRange("3"));
    EXPECT_EQ(namesOf(list), "a b c");
    EXPECT_EQ(TestOp::alive, 3);
}

TEST(OpList, opThatRefusesItsDepthIsDeletedAndTheListStays)
{
    OpList list = makeList();
    const auto makeRefusing = [] {
        TestOp* op = makeOp("x");
        op->refusesDepth = true;
        return op;
    };
    EXPECT_THROW(list.append(makeRefusing()), std::string);
    EXPECT_THROW(list.replace(makeRefusing(), 2), std::string);
    EXPECT_EQ(namesOf(list), "a b c");
    EXPECT_EQ(TestOp::alive, 3);

    testOpAt(list, 0).refusesDepth = true;
    EXPECT_THROW(list.prepend(makeOp("x")), std::string);
    testOpAt(list, 2).refusesDepth = true;
    EXPECT_THROW(list.remove(1), std::string);
    EXPECT_THROW(list.replace(makeOp("x"), 1), std::string);
    EXPECT_EQ(namesOf(list), "a b c");
    EXPECT_EQ(depthsOf(list), "8i>10i 10i>12i 12i>16i");
    EXPECT_EQ(TestOp::alive, 3);

    OpList other;
    other.append(makeRefusing());
    EXPECT_THROW(list.appendAll(other), std::string);
    EXPECT_EQ(namesOf(list), "a b c");
    EXPECT_EQ(TestOp::alive, 4);
}

TEST(OpList, copyClonesEveryOpAsItIs)
{
    OpList list = makeList();
    // Neighbours that disagree stay so.
    list.get(1)->setOutBitDepth(BIT_DEPTH_32f);
    OpList copy(list);
    EXPECT_EQ(TestOp::alive, 6);
    EXPECT_NE(copy.get(0), list.get(0));
    EXPECT_EQ(namesOf(copy), "a b c");
    EXPECT_EQ(depthsOf(copy), "8i>10i 10i>32f 12i>16i");
    EXPECT_EQ(testOpAt(copy, 2).inDepthChanges, 0);
}

TEST(OpList, assignmentReplacesTheOps)
{
    OpList list;
    list.append(makeOp("old"));
    const OpList other = makeList();
    list = other;
    EXPECT_EQ(namesOf(list), "a b c");
    EXPECT_EQ(TestOp::alive, 6);
    const OpList& same = list;
    list = same;
    EXPECT_EQ(namesOf(list), "a b c");
    EXPECT_EQ(TestOp::alive, 6);
}

TEST(OpList, swapExchangesTheOps)
{
    OpList a = makeList();
    OpList b;
    a.swap(b);
    EXPECT_TRUE(a.empty());
    EXPECT_EQ(namesOf(b), "a b c");
}

TEST(OpList, appendAllFitsTheFirstCloneOnly)
{
    OpList list;
    list.append(makeOp("z", BIT_DEPTH_32f, BIT_DEPTH_16f));
    OpList other = makeList();
    other.get(1)->setOutBitDepth(BIT_DEPTH_32f);
    list.appendAll(other);
    EXPECT_EQ(namesOf(list), "z a b c");
    EXPECT_EQ(depthsOf(list), "32f>16f 16f>10i 10i>32f 12i>16i");
    EXPECT_EQ(testOpAt(list, 3).inDepthChanges, 0);
    EXPECT_EQ(depthsOf(other), "8i>10i 10i>32f 12i>16i");
    EXPECT_EQ(TestOp::alive, 7);
}

TEST(OpList, appendAllToAnEmptyListFitsNothing)
{
    OpList list;
    list.appendAll(makeList());
    EXPECT_EQ(depthsOf(list), "8i>10i 10i>12i 12i>16i");
    EXPECT_EQ(testOpAt(list, 0).inDepthChanges, 0);
}

TEST(OpList, appendAllOfAnEmptyListDoesNothing)
{
    OpList list = makeList();
    list.appendAll(OpList());
    EXPECT_EQ(depthsOf(list), "8i>10i 10i>12i 12i>16i");
}

TEST(OpList, appendAllOfTheListItselfDoublesIt)
{
    OpList list = makeList();
    list.appendAll(list);
    EXPECT_EQ(namesOf(list), "a b c a b c");
    EXPECT_EQ(depthsOf(list), "8i>10i 10i>12i 12i>16i 16i>10i 10i>12i 12i>16i");
}

TEST(OpList, isEqualComparesPositionByPosition)
{
    const OpList list = makeList();
    EXPECT_TRUE(list.isEqual(list));
    EXPECT_TRUE(list.isEqual(makeList()));
    EXPECT_TRUE(OpList().isEqual(OpList()));

    OpList shorter = makeList();
    shorter.erase(2);
    EXPECT_FALSE(list.isEqual(shorter));
    EXPECT_FALSE(shorter.isEqual(list));

    OpList renamed = makeList();
    renamed.get(2)->setName("d");
    EXPECT_FALSE(list.isEqual(renamed));
}

TEST(OpList, isEqualTakesTheSamePointerAsEqual)
{
    OpList list;
    auto* matrix = new MatrixOp();
    matrix->getArray().setValue(0, std::numeric_limits<float>::quiet_NaN());
    list.append(matrix);
    EXPECT_FALSE(matrix->isEqual(*matrix));
    EXPECT_TRUE(list.isEqual(list));
    EXPECT_FALSE(list.isEqual(OpList(list)));
}

TEST(OpList, hasUnresolvedAsksItsOwnOps)
{
    OpList list = makeList();
    EXPECT_FALSE(list.hasUnresolved());
    testOpAt(list, 2).isMissingContent = true;
    EXPECT_TRUE(list.hasUnresolved());
    EXPECT_FALSE(list.hasUnresolvedReference()) << "it is no reference";
}

TEST(OpList, hasReferenceLooksForTheType)
{
    OpList list = makeList();
    EXPECT_FALSE(list.hasReference());
    testOpAt(list, 1).type = OP_REFERENCE;
    EXPECT_TRUE(list.hasReference());
}

TEST(OpList, hasUnresolvedReferenceLooksIntoReferences)
{
    OpList list = makeList();
    EXPECT_FALSE(list.hasUnresolvedReference());
    TestOp& outer = testOpAt(list, 1);
    outer.type = OP_REFERENCE;
    EXPECT_TRUE(list.hasUnresolvedReference());

    outer.referenced = std::make_shared<OpList>(makeList());
    EXPECT_FALSE(list.hasUnresolvedReference());

    TestOp& inner = testOpAt(*outer.referenced, 2);
    inner.type = OP_REFERENCE;
    EXPECT_TRUE(list.hasUnresolvedReference());
    EXPECT_FALSE(list.hasUnresolved());

    inner.referenced = std::make_shared<OpList>();
    EXPECT_FALSE(list.hasUnresolvedReference());
}

TEST(OpList, unresolveReachesEveryOp)
{
    OpList list = makeList();
    list.unresolve();
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_TRUE(list.get(i)->isUnresolved()) << i;
}

TEST(OpList, dynamicPropertiesAreFoundInAnyOp)
{
    OpList list = makeList();
    EXPECT_FALSE(list.hasDynamicProperties());
    EXPECT_FALSE(list.hasDynamicProperty(DynamicProperty::EXPOSURE));
    testOpAt(list, 2).makeExposureDynamic(0.0);
    EXPECT_TRUE(list.hasDynamicProperties());
    EXPECT_TRUE(list.hasDynamicProperty(DynamicProperty::EXPOSURE));
    EXPECT_FALSE(list.hasDynamicProperty(DynamicProperty::BYPASS));
    list.get(0)->getBypass()->makeDynamic();
    EXPECT_TRUE(list.hasDynamicProperty(DynamicProperty::BYPASS));
}

TEST(OpList, setDynamicPropertyReachesEveryOpThatHasIt)
{
    OpList list = makeList();
    testOpAt(list, 0).makeExposureDynamic(0.0);
    testOpAt(list, 2).makeExposureDynamic(0.25);
    DynamicProperty exposure(DynamicProperty::EXPOSURE);
    exposure.setValue(1.5);
    list.setDynamicProperty(exposure);
    EXPECT_EQ(testOpAt(list, 0).exposure->get(), 1.5);
    EXPECT_EQ(testOpAt(list, 2).exposure->get(), 1.5);
}

TEST(OpList, getDynamicPropertyReadsTheFirstThatHasIt)
{
    OpList list = makeList();
    testOpAt(list, 1).makeExposureDynamic(0.5);
    testOpAt(list, 2).makeExposureDynamic(0.25);
    DynamicProperty exposure(DynamicProperty::EXPOSURE);
    list.getDynamicProperty(exposure);
    EXPECT_EQ(exposure.getValue(), 0.5);
}

TEST(OpList, dynamicPropertyThatNoOpHasIsAFailure)
{
    OpList list = makeList();
    list.get(0)->getBypass()->makeDynamic();
    DynamicProperty exposure(DynamicProperty::EXPOSURE);
    exposure.setValue(3.0);
    const Failure failure{0x2010013, "COLOR:TRANSFORM:ALL", "Dynamic property Exposure not available in "};
    EXPECT_EQ(failureOf([&] { list.setDynamicProperty(exposure); }), failure);
    EXPECT_EQ(failureOf([&] { list.getDynamicProperty(exposure); }), failure);
    EXPECT_EQ(exposure.getValue(), 3.0);

    DynamicProperty unknown(static_cast<DynamicProperty::Ids>(3));
    EXPECT_EQ(failureOf([&] { list.getDynamicProperty(unknown); }).message,
              "Dynamic property invalid property not available in ");
}

TEST(OpList, validateAsksEveryOp)
{
    OpList list = makeList();
    EXPECT_EQ(failureOf([&] { list.validate(); }), kNoFailure);
    list.get(2)->setOutBitDepth(BIT_DEPTH_UNKNOWN);
    EXPECT_EQ(failureOf([&] { list.validate(); }),
              (Failure{0x2010001, "COLOR:TRANSFORM:ALL", "'OutBitDepth' attribute missing in c"}));
}

TEST(OpList, validateRejectsNeighboursOfDifferentDepth)
{
    OpList list = makeList();
    list.get(1)->setName("");
    list.get(1)->setOutBitDepth(BIT_DEPTH_32f);
    EXPECT_EQ(failureOf([&] { list.validate(); }),
              (Failure{0x206000a, kCategory, "Bit depth mismatch between op 'Test' and op 'c'"}));
}

TEST(OpList, validateLooksAtAnOpBeforeItsNeighbour)
{
    OpList list = makeList();
    list.get(1)->setInBitDepth(BIT_DEPTH_UNKNOWN);
    EXPECT_EQ(failureOf([&] { list.validate(); }).message, "'InBitDepth' attribute missing in b");
}
