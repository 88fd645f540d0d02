#include "transform/transform.h"

#include "testOp.h"
#include "tests/utils/failure.h"
#include "transform/matrixOp.h"
#include "transform/rangeOp.h"

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

using namespace Color;

namespace {

const char* const kCategory = "COLOR:TRANSFORM:ALL";
const Failure kEmptyTransform{0x2010008, kCategory, "Empty transform"};
const Failure kInvalidTarget{0x2010017, kCategory, "Must pass valid transform to receive inverse"};

/// Ops a (8i to 10i) and b (10i to 16f).
Transform makeExample()
{
    Transform transform("My id-1", "example", {"first", "second"}, "camera", "display");
    transform.getOpList().append(new TestOp(BIT_DEPTH_8i, BIT_DEPTH_10i, "a"));
    transform.getOpList().append(new TestOp(BIT_DEPTH_10i, BIT_DEPTH_16f, "b"));
    return transform;
}

TestOp& appendTestOp(OpList& list, const std::string& name)
{
    auto* op = new TestOp(BIT_DEPTH_32f, BIT_DEPTH_32f, name);
    list.append(op);
    return *op;
}

/// Everything about it, as one text.
std::string stateOf(const Transform& transform)
{
    std::string text = transform.getId() + "|" + transform.getUniqueId() + "|" + transform.getName() + "|" +
                       transform.getInputDescriptor() + "|" + transform.getOutputDescriptor() + "|" +
                       transform.getInverseOf() + "|" + namesOf(transform.getOpList());
    for (const std::string& description : transform.getDescriptions())
        text += "|" + description;
    return text;
}

} // namespace

TEST(Transform, defaultOneIsBlank)
{
    const Transform transform;
    EXPECT_EQ(stateOf(transform), "||||||");
    EXPECT_EQ(transform.getMetadata().getName(), "Info");
    EXPECT_TRUE(transform.getMetadata().isLeaf());
}

TEST(Transform, constructorStoresItsArgumentsAndDerivesTheUniqueId)
{
    EXPECT_EQ(stateOf(makeExample()), "My id-1|Myid1|example|camera|display||a b|first|second");
}

TEST(Transform, uniqueIdKeepsLettersDigitsAndUnderscores)
{
    const Transform transform("{az_AZ-09}.\xC3\xA9/\\ \t", "", {}, "", "");
    EXPECT_EQ(transform.getUniqueId(), "az_AZ09");
}

TEST(Transform, copyHasEverythingAndItsOwnOps)
{
    Transform original = makeExample();
    original.setInverseOf("forward");
    original.getMetadata().addChild("Author").setValue("Ada");
    const Transform copy(original);
    EXPECT_EQ(stateOf(copy), stateOf(original));
    EXPECT_EQ(copy.getMetadata().getChildValue("Author"), "Ada");
    EXPECT_TRUE(copy.isEqual(original));
    EXPECT_NE(copy.getOpList().get(0), original.getOpList().get(0));
}

TEST(Transform, setIdLeavesTheUniqueId)
{
    Transform transform = makeExample();
    transform.setId("another");
    EXPECT_EQ(transform.getId(), "another");
    EXPECT_EQ(transform.getUniqueId(), "Myid1");
    EXPECT_EQ(failureOf([&] { transform.setId(""); }), (Failure{0x2010010, kCategory, "Transform ID cannot be empty"}));
    EXPECT_EQ(transform.getId(), "another");
}

TEST(Transform, setUniqueIdFilters)
{
    Transform transform = makeExample();
    transform.setUniqueId(" a-b_9 ");
    EXPECT_EQ(transform.getUniqueId(), "ab_9");
    EXPECT_EQ(transform.getId(), "My id-1");
    EXPECT_EQ(failureOf([&] { transform.setUniqueId(""); }),
              (Failure{0x2010015, kCategory, "Transform unique ID cannot be empty"}));
    EXPECT_EQ(failureOf([&] { transform.setUniqueId("-- !"); }),
              (Failure{0x1010006, "COLOR:UTILS:ALL", "Name is not allowed: -- !."}));
    EXPECT_EQ(transform.getUniqueId(), "ab_9");
}

TEST(Transform, plainSettersStore)
{
    Transform transform;
    transform.setName("n");
    transform.setInputDescriptor("i");
    transform.setOutputDescriptor("o");
    transform.setInverseOf("v");
    transform.getDescriptions().push_back("d");
    EXPECT_EQ(stateOf(transform), "||n|i|o|v||d");
}

TEST(Transform, depthsAreThoseOfTheEnds)
{
    Transform transform = makeExample();
    EXPECT_EQ(transform.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(transform.getOutBitDepth(), BIT_DEPTH_16f);
    transform.setInBitDepth(BIT_DEPTH_12i);
    transform.setOutBitDepth(BIT_DEPTH_32f);
    EXPECT_EQ(transform.getOpList().get(0)->getInBitDepth(), BIT_DEPTH_12i);
    EXPECT_EQ(transform.getOpList().get(0)->getOutBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(transform.getOpList().get(1)->getInBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(transform.getOpList().get(1)->getOutBitDepth(), BIT_DEPTH_32f);
}

TEST(Transform, depthsNeedAnOp)
{
    Transform transform;
    EXPECT_EQ(failureOf([&] { transform.getInBitDepth(); }), kEmptyTransform);
    EXPECT_EQ(failureOf([&] { transform.getOutBitDepth(); }), kEmptyTransform);
    EXPECT_EQ(failureOf([&] { transform.setInBitDepth(BIT_DEPTH_8i); }), kEmptyTransform);
    EXPECT_EQ(failureOf([&] { transform.setOutBitDepth(BIT_DEPTH_8i); }), kEmptyTransform);
}

TEST(Transform, validateGivesAnEmptyIdAUuid)
{
    Transform transform;
    EXPECT_EQ(failureOf([&] { transform.validate(); }), kNoFailure);
    EXPECT_EQ(transform.getId().size(), 36U);
    // The UUID without its four dashes.
    EXPECT_EQ(transform.getUniqueId().size(), 32U);
    EXPECT_EQ(transform.getUniqueId().substr(0, 8), transform.getId().substr(0, 8));
    Transform other;
    other.validate();
    EXPECT_NE(other.getId(), transform.getId());
}

TEST(Transform, validateKeepsAnIdAndValidatesTheOps)
{
    Transform transform = makeExample();
    transform.validate();
    EXPECT_EQ(transform.getId(), "My id-1");
    transform.getOpList().get(0)->setOutBitDepth(BIT_DEPTH_32f);
    EXPECT_EQ(failureOf([&] { transform.validate(); }),
              (Failure{0x206000a, "COLOR:TRANSFORM:OPLIST", "Bit depth mismatch between op 'a' and op 'b'"}));
}

TEST(Transform, isEqualComparesIdentityMetadataAndOps)
{
    const Transform transform = makeExample();
    EXPECT_TRUE(transform.isEqual(transform));
    EXPECT_TRUE(transform.isEqual(makeExample()));

    Transform otherId = makeExample();
    otherId.setId("x");
    EXPECT_FALSE(transform.isEqual(otherId));
    Transform otherUniqueId = makeExample();
    otherUniqueId.setUniqueId("x");
    EXPECT_FALSE(transform.isEqual(otherUniqueId));
    Transform otherName = makeExample();
    otherName.setName("x");
    EXPECT_FALSE(transform.isEqual(otherName));
    Transform otherMetadata = makeExample();
    otherMetadata.getMetadata().setValue("x");
    EXPECT_FALSE(transform.isEqual(otherMetadata));
    Transform otherOps = makeExample();
    otherOps.getOpList().erase(1);
    EXPECT_FALSE(transform.isEqual(otherOps));

    Transform sameWhereItCounts = makeExample();
    sameWhereItCounts.setInverseOf("x");
    sameWhereItCounts.setInputDescriptor("x");
    sameWhereItCounts.setOutputDescriptor("x");
    sameWhereItCounts.getDescriptions().clear();
    EXPECT_TRUE(transform.isEqual(sameWhereItCounts));
}

TEST(Transform, isEqualToItselfEvenWithNan)
{
    Transform transform;
    auto* matrix = new MatrixOp();
    matrix->getArray().setValue(0, std::numeric_limits<float>::quiet_NaN());
    transform.getOpList().append(matrix);
    EXPECT_TRUE(transform.isEqual(transform));
    EXPECT_FALSE(transform.isEqual(Transform(transform)));
}

TEST(Transform, withoutAnIdNothingIsTheInverseOfAnything) { EXPECT_FALSE(Transform().isInverseOf(Transform())); }

TEST(Transform, isInverseOfComparesIds)
{
    Transform transform("id", "", {}, "", "");
    transform.setInverseOf("My id-1");
    EXPECT_TRUE(transform.isInverseOf(makeExample()));
    EXPECT_FALSE(makeExample().isInverseOf(transform));
    transform.setInverseOf("Myid1");
    EXPECT_FALSE(transform.isInverseOf(makeExample()));
}

TEST(Transform, cloneCopyKeepsIdentityAndAllOps)
{
    Transform transform = makeExample();
    transform.setUniqueId("own");
    transform.setInverseOf("forward");
    setBypass(*transform.getOpList().get(0), true);
    const ColorTransformPtr clone = transform.clone(CloneMode::Copy);
    EXPECT_EQ(stateOf(*clone), "My id-1|own|example|camera|display|forward|a b|first|second");
    EXPECT_TRUE(clone->getOpList().isEqual(transform.getOpList()));
    EXPECT_NE(clone->getOpList().get(0), transform.getOpList().get(0));
}

TEST(Transform, cloneLeavesTheMetadataBehind)
{
    Transform transform = makeExample();
    transform.getMetadata().addChild("Author").setValue("Ada");
    for (const CloneMode mode : {CloneMode::Copy, CloneMode::Flatten}) {
        const ColorTransformPtr clone = transform.clone(mode);
        EXPECT_EQ(clone->getMetadata().getName(), "Info");
        EXPECT_TRUE(clone->getMetadata().isLeaf());
    }
}

TEST(Transform, cloneFlattenKeepsIdentity)
{
    Transform transform = makeExample();
    transform.setUniqueId("own");
    transform.setInverseOf("forward");
    EXPECT_EQ(stateOf(*transform.clone(CloneMode::Flatten)), stateOf(transform));
}

TEST(Transform, cloneFlattenSkipsStaticallyBypassedOpsAndFitsTheNext)
{
    Transform transform = makeExample();
    transform.getOpList().append(new TestOp(BIT_DEPTH_16f, BIT_DEPTH_12i, "c"));
    setBypass(*transform.getOpList().get(1), true);
    const ColorTransformPtr flat = transform.clone(CloneMode::Flatten);
    EXPECT_EQ(namesOf(flat->getOpList()), "a c");
    EXPECT_EQ(flat->getOpList().get(1)->getInBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(transform.getOpList().get(2)->getInBitDepth(), BIT_DEPTH_16f);
}

TEST(Transform, cloneFlattenKeepsDynamicallyBypassedOpsAndSharesTheirBypass)
{
    Transform transform = makeExample();
    const BypassPropertyPtr& bypass = transform.getOpList().get(0)->getBypass();
    bypass->set(true);
    bypass->makeDynamic();
    const ColorTransformPtr flat = transform.clone(CloneMode::Flatten);
    EXPECT_EQ(namesOf(flat->getOpList()), "a b");
    EXPECT_EQ(flat->getOpList().get(0)->getBypass(), bypass);
}

TEST(Transform, cloneFlattenReplacesReferencesRecursively)
{
    const auto innermost = std::make_shared<OpList>();
    appendTestOp(*innermost, "x");
    setBypass(appendTestOp(*innermost, "skipped"), true);
    appendTestOp(*innermost, "y");

    const auto inner = std::make_shared<OpList>();
    appendTestOp(*inner, "m");
    TestOp& nested = appendTestOp(*inner, "nested");
    nested.type = OP_REFERENCE;
    nested.referenced = innermost;

    Transform transform = makeExample();
    TestOp& reference = appendTestOp(transform.getOpList(), "reference");
    reference.type = OP_REFERENCE;
    reference.referenced = inner;
    TestOp& bypassed = appendTestOp(transform.getOpList(), "bypassed");
    bypassed.type = OP_REFERENCE;
    bypassed.referenced = inner;
    setBypass(bypassed, true);
    appendTestOp(transform.getOpList(), "last");

    const ColorTransformPtr flat = transform.clone(CloneMode::Flatten);
    EXPECT_EQ(namesOf(flat->getOpList()), "a b m x y last");
    EXPECT_FALSE(flat->hasReference());
    EXPECT_EQ(flat->getOpList().get(2)->getInBitDepth(), BIT_DEPTH_16f) << "fitted to b";
    EXPECT_EQ(inner->get(0)->getInBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(failureOf([&] { flat->validate(); }), kNoFailure);
    EXPECT_EQ(namesOf(transform.clone(CloneMode::Copy)->getOpList()), "a b reference bypassed last");
}

TEST(Transform, cloneFlattenKeepsAnUnresolvedReference)
{
    Transform transform = makeExample();
    appendTestOp(transform.getOpList(), "reference").type = OP_REFERENCE;
    const ColorTransformPtr flat = transform.clone(CloneMode::Flatten);
    EXPECT_EQ(namesOf(flat->getOpList()), "a b reference");
    EXPECT_TRUE(flat->hasUnresolvedReference());
}

TEST(Transform, concatenateTakesOverTheEnd)
{
    Transform first = makeExample();
    Transform second("2", "other", {"third"}, "display", "print");
    second.getOpList().append(new TestOp(BIT_DEPTH_8i, BIT_DEPTH_12i, "c"));
    first.concatenate(second);
    EXPECT_EQ(stateOf(first), "My id-1|Myid1|example|camera|print||a b c|first|second|third");
    EXPECT_EQ(first.getOpList().get(2)->getInBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(second.getOpList().get(0)->getInBitDepth(), BIT_DEPTH_8i);
}

TEST(Transform, concatenateWithItselfDoublesIt)
{
    Transform transform = makeExample();
    transform.concatenate(transform);
    EXPECT_EQ(stateOf(transform), "My id-1|Myid1|example|camera|display||a b a b|first|second|first|second");
}

TEST(TransformInverse, fillsTheTarget)
{
    Transform target("target id", "old", {"old", "older", "oldest"}, "old in", "old out");
    makeExample().inverse(target);
    EXPECT_EQ(stateOf(target), "target id|targetid|Inverse of: [example]|display|camera|My id-1|unb una"
                               "|Inverse of: [first]|second");
    EXPECT_EQ(target.getInBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(target.getOutBitDepth(), BIT_DEPTH_8i);
    EXPECT_TRUE(target.isInverseOf(makeExample()));
    EXPECT_EQ(failureOf([&] { target.validate(); }), kNoFailure);
}

TEST(TransformInverse, nameAndDescriptionWithoutTexts)
{
    Transform transform;
    transform.getOpList().append(new MatrixOp());
    Transform target;
    transform.inverse(target);
    EXPECT_EQ(target.getName(), "Inverse of: []");
    EXPECT_EQ(target.getDescriptions(), Descriptions{"Inverse of: []"});
    EXPECT_EQ(target.getInverseOf(), "");
}

TEST(TransformInverse, nameOfASimpleTransform)
{
    Transform transform("id", "a", {}, "", "");
    transform.getOpList().append(new MatrixOp());
    Transform target;
    transform.inverse(target);
    EXPECT_EQ(target.getName(), "Inverse of: [a]");
}

TEST(TransformInverse, leavesTheSourceAndTheMetadataAlone)
{
    Transform transform = makeExample();
    transform.getMetadata().setValue("of the source");
    Transform target;
    target.getMetadata().setValue("of the target");
    transform.inverse(target);
    EXPECT_EQ(target.getMetadata().getValue(), "of the target");
    EXPECT_EQ(stateOf(transform), stateOf(makeExample()));
}

TEST(TransformInverse, endsGetTheExchangedDepthsOfTheSource)
{
    Transform transform("id", "", {}, "", "");
    for (const char* name : {"a", "b"}) {
        auto* op = new TestOp(BIT_DEPTH_8i, BIT_DEPTH_10i, name);
        op->isInverseFloat = true;
        transform.getOpList().append(op);
    }
    Transform target;
    transform.inverse(target);
    EXPECT_EQ(target.getInBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(target.getOutBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(target.getOpList().get(0)->getOutBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(target.getOpList().get(1)->getInBitDepth(), BIT_DEPTH_32f);
}

TEST(TransformInverse, undoesMatrices)
{
    Transform transform;
    auto* scale = new MatrixOp(BIT_DEPTH_32f, BIT_DEPTH_32f, "", "scale", {});
    const float values[16] = {2, 0, 0, 0, 0, 4, 0, 0, 0, 0, 8, 0, 0, 0, 0, 1};
    scale->setMatrix4x4(values);
    auto* shift = new MatrixOp(BIT_DEPTH_32f, BIT_DEPTH_32f, "", "shift", {});
    const float offsets[4] = {1, 2, 3, 0};
    shift->setOffsets4(offsets);
    transform.getOpList().append(scale);
    transform.getOpList().append(shift);

    Transform target;
    transform.inverse(target);
    ASSERT_EQ(target.getOpList().size(), 2U);
    const auto& unshift = dynamic_cast<const MatrixOp&>(*target.getOpList().get(0));
    EXPECT_TRUE(unshift.isUnityDiagonal());
    EXPECT_EQ(unshift.getOffsets(), (MatrixOp::Offsets{-1, -2, -3, 0}));
    const auto& unscale = dynamic_cast<const MatrixOp&>(*target.getOpList().get(1));
    EXPECT_EQ(unscale.getArray().getValues()[0], 0.5F);
    EXPECT_EQ(unscale.getArray().getValues()[5], 0.25F);
    EXPECT_EQ(unscale.getArray().getValues()[10], 0.125F);
    EXPECT_FALSE(unscale.hasOffsets());
}

TEST(TransformInverse, refusesItselfAsTarget)
{
    Transform transform = makeExample();
    EXPECT_EQ(failureOf([&] { transform.inverse(transform); }), kInvalidTarget);
    Transform empty;
    EXPECT_EQ(failureOf([&] { empty.inverse(empty); }), kInvalidTarget);
    EXPECT_EQ(stateOf(transform), stateOf(makeExample()));
}

TEST(TransformInverse, refusesATargetWithOps)
{
    Transform target = makeExample();
    EXPECT_EQ(failureOf([&] { makeExample().inverse(target); }), kInvalidTarget);
    EXPECT_EQ(stateOf(target), stateOf(makeExample()));
}

TEST(TransformInverse, targetIsCheckedBeforeReferences)
{
    Transform transform = makeExample();
    appendTestOp(transform.getOpList(), "c").isMissingContent = true;
    Transform target = makeExample();
    EXPECT_EQ(failureOf([&] { transform.inverse(target); }), kInvalidTarget);
}

TEST(TransformInverse, failureLeavesTheTargetUntouched)
{
    const Transform before("t", "target", {"d"}, "in", "out");

    Transform unresolved = makeExample();
    appendTestOp(unresolved.getOpList(), "c").isMissingContent = true;
    Transform target(before);
    EXPECT_EQ(failureOf([&] { unresolved.inverse(target); }),
              (Failure{0x2010016, kCategory, "Inverse not supported on unresolved transform"}));
    EXPECT_EQ(stateOf(target), stateOf(before));

    // The inverses of b and c are already made when a refuses.
    Transform refused;
    appendTestOp(refused.getOpList(), "a").hasInverse = false;
    appendTestOp(refused.getOpList(), "b");
    appendTestOp(refused.getOpList(), "c");
    EXPECT_EQ(failureOf([&] { refused.inverse(target); }),
              (Failure{0x2010014, kCategory, "Test inverse not supported"}));
    EXPECT_EQ(stateOf(target), stateOf(before));

    EXPECT_EQ(failureOf([&] { Transform().inverse(target); }), kEmptyTransform);
    EXPECT_EQ(stateOf(target), stateOf(before));
}

TEST(TransformInverse, failureLeaksNoOp)
{
    ASSERT_EQ(TestOp::alive, 0);
    {
        Transform transform;
        appendTestOp(transform.getOpList(), "a").hasInverse = false;
        appendTestOp(transform.getOpList(), "b");
        Transform target;
        EXPECT_EQ(failureOf([&] { transform.inverse(target); }).id, 0x2010014U);
        EXPECT_EQ(TestOp::alive, 2);
    }
    EXPECT_EQ(TestOp::alive, 0);
}

TEST(TransformInverse, rangeHasNone)
{
    Transform transform;
    transform.getOpList().append(new RangeOp());
    Transform target;
    EXPECT_EQ(failureOf([&] { transform.inverse(target); }),
              (Failure{0x2010014, kCategory, "Range inverse not supported"}));
}

TEST(Transform, asksItsOpList)
{
    Transform transform = makeExample();
    EXPECT_FALSE(transform.hasUnresolved());
    EXPECT_FALSE(transform.hasReference());
    EXPECT_FALSE(transform.hasUnresolvedReference());
    EXPECT_FALSE(transform.hasDynamicProperties());

    TestOp& op = appendTestOp(transform.getOpList(), "c");
    op.type = OP_REFERENCE;
    op.makeExposureDynamic(0.5);
    EXPECT_TRUE(transform.hasReference());
    EXPECT_TRUE(transform.hasUnresolvedReference());
    EXPECT_TRUE(transform.hasDynamicProperties());
    EXPECT_TRUE(transform.hasDynamicProperty(DynamicProperty::EXPOSURE));
    EXPECT_FALSE(transform.hasDynamicProperty(DynamicProperty::CONTRAST));

    DynamicProperty exposure(DynamicProperty::EXPOSURE);
    transform.getDynamicProperty(exposure);
    EXPECT_EQ(exposure.getValue(), 0.5);
    exposure.setValue(2.0);
    transform.setDynamicProperty(exposure);
    EXPECT_EQ(op.exposure->get(), 2.0);

    transform.unresolve();
    EXPECT_TRUE(transform.hasUnresolved());
}

TEST(ConcatenateTransforms, doesTheFirstAndThenTheSecond)
{
    auto first = boost::make_shared<Transform>(makeExample());
    first->getMetadata().setValue("info");
    auto second = boost::make_shared<Transform>("2", "other", Descriptions{"third"}, "display", "print");
    second->getOpList().append(new MatrixOp(BIT_DEPTH_32f, BIT_DEPTH_32f, "", "m", {}));

    const ColorTransformPtr result = concatenateTransforms(first, second);
    EXPECT_EQ(stateOf(*result), "My id-1|Myid1|example|camera|print||a b m|first|second|third");
    EXPECT_EQ(result->getMetadata().getValue(), "info");
    EXPECT_EQ(result->getOpList().get(2)->getInBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(stateOf(*first), stateOf(makeExample()));
    EXPECT_EQ(stateOf(*second), "2|2|other|display|print||m|third");
}

TEST(ConcatenateTransforms, sameTransformTwice)
{
    const auto transform = boost::make_shared<Transform>(makeExample());
    EXPECT_EQ(namesOf(concatenateTransforms(transform, transform)->getOpList()), "a b a b");
    EXPECT_EQ(namesOf(transform->getOpList()), "a b");
}

TEST(ConcatenateTransforms, resultGetsAnId)
{
    const auto empty = boost::make_shared<Transform>();
    EXPECT_EQ(concatenateTransforms(empty, empty)->getId().size(), 36U);
    EXPECT_EQ(empty->getId(), "");
}

TEST(ConcatenateTransforms, nullIsAFailure)
{
    const auto transform = boost::make_shared<Transform>(makeExample());
    const Failure failure{0x204000f, "COLOR:TRANSFORM:LUT_1D", "Transform was NULL when attempting to concatenate"};
    EXPECT_EQ(failureOf([&] { concatenateTransforms(nullptr, transform); }), failure);
    EXPECT_EQ(failureOf([&] { concatenateTransforms(transform, nullptr); }), failure);
    EXPECT_EQ(failureOf([&] { concatenateTransforms(nullptr, nullptr); }), failure);
}

TEST(ConcatenateTransforms, badOpIsCaught)
{
    const auto first = boost::make_shared<Transform>(makeExample());
    const auto second = boost::make_shared<Transform>();
    second->getOpList().append(new TestOp(BIT_DEPTH_32f, BIT_DEPTH_UNKNOWN, "bad"));
    EXPECT_EQ(failureOf([&] { concatenateTransforms(first, second); }),
              (Failure{0x2010001, kCategory, "'OutBitDepth' attribute missing in bad"}));
}
