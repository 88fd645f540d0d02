#include "transform/referenceOp.h"

#include "tests/transform/testOp.h"
#include "tests/utils/failure.h"
#include "transform/matrixOp.h"
#include "transform/transform.h"

#include <gtest/gtest.h>
#include <memory>

using namespace Color;

namespace {

const char* const kCategory = "COLOR:TRANSFORM:REFERENCE";

OpList listOf(std::initializer_list<Op*> ops)
{
    OpList list;
    for (Op* op : ops)
        list.append(op);
    return list;
}

Op* makeNamedOp(const std::string& name) { return new TestOp(BIT_DEPTH_32f, BIT_DEPTH_32f, name); }

/// Refers to a path, and is resolved to ops of these names.
std::unique_ptr<ReferenceOp> makeResolved(std::initializer_list<const char*> names)
{
    auto reference = std::make_unique<ReferenceOp>();
    reference->setPath("/a.ctf", BASE_PATH_NONE);
    OpList ops;
    for (const char* name : names)
        ops.append(makeNamedOp(name));
    reference->setResolved(ops, "/a.ctf");
    return reference;
}

bool isBypassed(const OpList& list, std::size_t index) { return list.get(index)->getBypass()->get(); }

} // namespace

TEST(ReferenceOp, defaultRefersToNothing)
{
    const ReferenceOp op;
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getAlias(), "");
    EXPECT_EQ(op.getResolvedAlias(), "");
    EXPECT_EQ(op.getPath(), "");
    EXPECT_EQ(op.getBasePath(), BASE_PATH_NONE);
    EXPECT_EQ(op.getResolvedPath(), "");
    EXPECT_TRUE(op.isUnresolved());
    EXPECT_EQ(op.getReferencedOps(), nullptr);
}

TEST(ReferenceOp, constructorsStoreTheirArguments)
{
    const ReferenceOp depths(BIT_DEPTH_8i, BIT_DEPTH_10i);
    EXPECT_EQ(depths.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(depths.getOutBitDepth(), BIT_DEPTH_10i);

    const ReferenceOp named(BIT_DEPTH_12i, BIT_DEPTH_16f, "id", "name", {"d"});
    EXPECT_EQ(named.getInBitDepth(), BIT_DEPTH_12i);
    EXPECT_EQ(named.getOutBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(named.getId(), "id");
    EXPECT_EQ(named.getName(), "name");
    EXPECT_EQ(named.getDescriptions(), Descriptions{"d"});
}

TEST(ReferenceOp, saysWhatItIs)
{
    const ReferenceOp op;
    EXPECT_EQ(op.getOpType(), OP_REFERENCE);
    EXPECT_EQ(op.getOpTypeName(), "Reference");
    EXPECT_EQ(op.getMinimumVersion(), 1.3F);
    EXPECT_FALSE(op.isNoOp());
    EXPECT_FALSE(op.isIdentity());
}

TEST(ReferenceOp, anAliasTakesThePlaceOfAPathAndTheOps)
{
    const auto op = makeResolved({"a"});
    op->setPath("p.ctf", BASE_PATH_SHARED);
    op->setResolved(OpList(), "/shared/p.ctf");
    op->setAlias("look");
    EXPECT_EQ(op->getAlias(), "look");
    EXPECT_EQ(op->getResolvedAlias(), "look");
    EXPECT_EQ(op->getPath(), "");
    EXPECT_EQ(op->getBasePath(), BASE_PATH_NONE);
    EXPECT_EQ(op->getResolvedPath(), "");
    EXPECT_TRUE(op->isUnresolved());
}

TEST(ReferenceOp, aPathTakesThePlaceOfAnAliasAndTheOps)
{
    ReferenceOp op;
    op.setAlias("currentMonitor");
    op.setResolveFlags(RESOLVE_GRAPHICS_MONITOR);
    op.setResolved(OpList(), "/monitor.ctf");
    op.setPath("p.ctf", BASE_PATH_BRELWICK);
    EXPECT_EQ(op.getAlias(), "");
    EXPECT_EQ(op.getResolvedAlias(), "");
    EXPECT_EQ(op.getPath(), "p.ctf");
    EXPECT_EQ(op.getBasePath(), BASE_PATH_BRELWICK);
    EXPECT_EQ(op.getResolvedPath(), "");
    EXPECT_TRUE(op.isUnresolved());
}

TEST(ReferenceOp, resolveFlagsChooseTheMonitor)
{
    ReferenceOp op;
    op.setAlias("currentMonitor");
    op.setResolveFlags(RESOLVE_GRAPHICS_MONITOR);
    EXPECT_EQ(op.getResolvedAlias(), "graphicsMonitor");
    op.setResolveFlags(RESOLVE_BROADCAST_MONITOR);
    EXPECT_EQ(op.getResolvedAlias(), "broadcastMonitor");
    op.setResolveFlags(static_cast<ResolveFlags>(2));
    EXPECT_EQ(op.getResolvedAlias(), "currentMonitor");
    EXPECT_EQ(op.getAlias(), "currentMonitor");
}

TEST(ReferenceOp, resolveFlagsLeaveOtherAliases)
{
    for (const char* alias : {"CurrentMonitor", "currentMonitor ", "graphicsMonitor", "look"}) {
        for (const ResolveFlags flags : {RESOLVE_GRAPHICS_MONITOR, RESOLVE_BROADCAST_MONITOR}) {
            ReferenceOp op;
            op.setAlias(alias);
            op.setResolveFlags(flags);
            EXPECT_EQ(op.getResolvedAlias(), alias);
        }
    }
}

TEST(ReferenceOp, resolveFlagsNeedAnAlias)
{
    ReferenceOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, "id", "look", {});
    op.setPath("p.ctf", BASE_PATH_SHARED);
    EXPECT_EQ(failureOf([&] { op.setResolveFlags(RESOLVE_GRAPHICS_MONITOR); }),
              (Failure{0x2080003, kCategory, "Reference 'look' not an alias"}));
}

TEST(ReferenceOp, unresolveDropsTheOpsAndTheChoiceOfMonitor)
{
    ReferenceOp op;
    op.setAlias("currentMonitor");
    op.setResolveFlags(RESOLVE_BROADCAST_MONITOR);
    op.setResolved(listOf({makeNamedOp("a")}), "/monitor.ctf");
    EXPECT_FALSE(op.isUnresolved());
    EXPECT_EQ(op.getResolvedPath(), "/monitor.ctf");
    op.unresolve();
    EXPECT_TRUE(op.isUnresolved());
    EXPECT_EQ(op.getReferencedOps(), nullptr);
    EXPECT_EQ(op.getResolvedPath(), "");
    EXPECT_EQ(op.getResolvedAlias(), "currentMonitor");
    EXPECT_EQ(op.getAlias(), "currentMonitor");
}

TEST(ReferenceOp, unresolveKeepsThePath)
{
    const auto op = makeResolved({"a"});
    op->setPath("p.ctf", BASE_PATH_SHARED);
    op->unresolve();
    EXPECT_EQ(op->getPath(), "p.ctf");
    EXPECT_EQ(op->getBasePath(), BASE_PATH_SHARED);
}

TEST(ReferenceOp, resolvesToClones)
{
    OpList ops = listOf({makeNamedOp("a"), makeNamedOp("b")});
    ReferenceOp op;
    op.setResolved(ops, "/a.ctf");
    ASSERT_NE(op.getReferencedOps(), nullptr);
    EXPECT_EQ(namesOf(*op.getReferencedOps()), "a b");
    EXPECT_NE(op.getReferencedOps()->get(0), ops.get(0));
    ops.clear();
    EXPECT_EQ(namesOf(op.getOpList()), "a b");
}

TEST(ReferenceOp, fitsTheFirstAndTheLastOpToItsDepths)
{
    ReferenceOp op(BIT_DEPTH_8i, BIT_DEPTH_10i);
    op.setResolved(listOf({new MatrixOp(BIT_DEPTH_32f, BIT_DEPTH_32f), new MatrixOp(BIT_DEPTH_32f, BIT_DEPTH_32f)}),
                   "/a.ctf");
    const OpList& ops = op.getOpList();
    EXPECT_EQ(ops.get(0)->getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(ops.get(0)->getOutBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(ops.get(1)->getInBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(ops.get(1)->getOutBitDepth(), BIT_DEPTH_10i);
    EXPECT_FLOAT_EQ(dynamic_cast<const MatrixOp&>(*ops.get(0)).getArray().getValues()[0], 1.f / 255);
    EXPECT_FLOAT_EQ(dynamic_cast<const MatrixOp&>(*ops.get(1)).getArray().getValues()[0], 1023.f);

    op.setInBitDepth(BIT_DEPTH_16i);
    op.setOutBitDepth(BIT_DEPTH_16f);
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_16i);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(ops.get(0)->getInBitDepth(), BIT_DEPTH_16i);
    EXPECT_EQ(ops.get(0)->getOutBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(ops.get(1)->getInBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(ops.get(1)->getOutBitDepth(), BIT_DEPTH_16f);
}

TEST(ReferenceOp, depthsAreItsOwnWithoutOps)
{
    ReferenceOp op;
    op.setInBitDepth(BIT_DEPTH_8i);
    op.setOutBitDepth(BIT_DEPTH_16i);
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_16i);
    op.setResolved(OpList(), "/empty.ctf");
    op.setInBitDepth(BIT_DEPTH_12i);
    op.setOutBitDepth(BIT_DEPTH_10i);
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_12i);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_10i);
    EXPECT_FALSE(op.isUnresolved());
}

TEST(ReferenceOp, opsAreNotBypassedUnlessItIs)
{
    ReferenceOp op;
    Op* bypassed = makeNamedOp("a");
    setBypass(*bypassed, true);
    op.setResolved(listOf({bypassed, makeNamedOp("b")}), "/a.ctf");
    EXPECT_TRUE(isBypassed(op.getOpList(), 0));
    EXPECT_FALSE(isBypassed(op.getOpList(), 1));
    EXPECT_FALSE(op.getOpList().get(1)->getBypass()->isDynamic());
}

TEST(ReferenceOp, aStaticBypassBypassesEveryOp)
{
    ReferenceOp op;
    setBypass(op, true);
    const OpList ops = listOf({makeNamedOp("a"), makeNamedOp("b")});
    op.setResolved(ops, "/a.ctf");
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_TRUE(isBypassed(op.getOpList(), i)) << i;
        EXPECT_FALSE(op.getOpList().get(i)->getBypass()->isDynamic()) << i;
        EXPECT_FALSE(isBypassed(ops, i)) << i;
    }
}

TEST(ReferenceOp, aDynamicBypassMakesThatOfEveryOpFollow)
{
    for (const bool value : {false, true}) {
        ReferenceOp op;
        op.getBypass()->makeDynamic();
        setBypass(op, value);
        Op* bypassed = makeNamedOp("b");
        setBypass(*bypassed, true);
        op.setResolved(listOf({makeNamedOp("a"), bypassed}), "/a.ctf");
        for (std::size_t i = 0; i < 2; ++i) {
            EXPECT_TRUE(op.getOpList().get(i)->getBypass()->isDynamic()) << i;
            EXPECT_EQ(isBypassed(op.getOpList(), i), value) << i;
        }

        DynamicProperty property(DynamicProperty::BYPASS);
        property.setValue(value ? 0 : 1);
        op.setDynamicProperty(property);
        EXPECT_EQ(isBypassed(op.getOpList(), 0), !value);
        EXPECT_EQ(isBypassed(op.getOpList(), 1), !value);
    }
}

TEST(ReferenceOp, theBypassReachesTheOpsOfReferencesBelow)
{
    for (const bool isDynamic : {false, true}) {
        const OpList ops = listOf({makeResolved({"a"}).release(), new ReferenceOp});
        ReferenceOp op;
        if (isDynamic) op.getBypass()->makeDynamic();
        setBypass(op, true);
        op.setResolved(ops, "/a.ctf");
        const OpList* below = op.getOpList().get(0)->getReferencedOps();
        ASSERT_NE(below, nullptr);
        EXPECT_TRUE(isBypassed(*below, 0));
        EXPECT_EQ(below->get(0)->getBypass()->isDynamic(), isDynamic);
        EXPECT_FALSE(isBypassed(*ops.get(0)->getReferencedOps(), 0)) << "the given ops stay as they are";
        EXPECT_TRUE(op.getOpList().get(1)->isUnresolved());
        EXPECT_TRUE(isBypassed(op.getOpList(), 1));
    }
}

TEST(ReferenceOp, aFlatTransformHasItsOps)
{
    Transform transform;
    transform.getOpList().append(makeNamedOp("a"));
    transform.getOpList().append(makeResolved({"b", "c"}).release());
    transform.getOpList().append(makeNamedOp("d"));
    EXPECT_TRUE(transform.hasReference());
    EXPECT_FALSE(transform.hasUnresolvedReference());
    const ColorTransformPtr flat = transform.clone(CloneMode::Flatten);
    EXPECT_EQ(namesOf(flat->getOpList()), "a b c d");
    EXPECT_FALSE(flat->hasReference());
}

TEST(ReferenceOp, aFlatTransformHasNoneOfItsOpsWhenItIsBypassed)
{
    Transform transform;
    transform.getOpList().append(makeNamedOp("a"));
    auto reference = std::make_unique<ReferenceOp>();
    setBypass(*reference, true);
    reference->setResolved(listOf({makeNamedOp("b")}), "/a.ctf");
    transform.getOpList().append(reference.release());
    EXPECT_EQ(namesOf(transform.clone(CloneMode::Flatten)->getOpList()), "a");
}

TEST(ReferenceOp, isUnresolvedUntilResolved)
{
    Transform transform;
    transform.getOpList().append(new ReferenceOp);
    EXPECT_TRUE(transform.hasUnresolved());
    EXPECT_TRUE(transform.hasUnresolvedReference());
    dynamic_cast<ReferenceOp&>(*transform.getOpList().get(0)).setResolved(listOf({makeNamedOp("a")}), "/a.ctf");
    EXPECT_FALSE(transform.hasUnresolved());
    EXPECT_FALSE(transform.hasUnresolvedReference());
    transform.unresolve();
    EXPECT_TRUE(transform.hasUnresolved());
}

TEST(ReferenceOp, missingOpsAreReported)
{
    ReferenceOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, "id", "", {});
    EXPECT_EQ(failureOf([&] { op.getOpList(); }), (Failure{0x2080002, kCategory, "Missing ops for reference 'id'"}));
    op.setResolved(OpList(), "/a.ctf");
    EXPECT_EQ(failureOf([&] { op.getOpList(); }), kNoFailure);
}

TEST(ReferenceOp, validateWantsAnAliasOrAPath)
{
    ReferenceOp op(BIT_DEPTH_UNKNOWN, BIT_DEPTH_32f);
    EXPECT_EQ(failureOf([&] { op.validate(); }),
              (Failure{0x2080001, kCategory, "Reference 'Reference' requires Alias or Path attributes"}));
    op.setPath("", BASE_PATH_SHARED);
    EXPECT_EQ(failureOf([&] { op.validate(); }).id, 0x2080001u) << "a base alone is no path";
    op.setAlias("look");
    EXPECT_EQ(failureOf([&] { op.validate(); }),
              (Failure{0x2010001, "COLOR:TRANSFORM:ALL", "'InBitDepth' attribute missing in Reference"}));
    op.setInBitDepth(BIT_DEPTH_8i);
    EXPECT_EQ(failureOf([&] { op.validate(); }), kNoFailure);
    op.setPath("p.ctf", BASE_PATH_NONE);
    EXPECT_EQ(failureOf([&] { op.validate(); }), kNoFailure);
}

TEST(ReferenceOp, validateLooksAtTheOps)
{
    ReferenceOp op;
    op.setAlias("look");
    OpList ops = listOf({makeNamedOp("a"), makeNamedOp("b")});
    ops.get(0)->setOutBitDepth(BIT_DEPTH_8i);
    op.setResolved(ops, "/a.ctf");
    EXPECT_EQ(failureOf([&] { op.validate(); }),
              (Failure{0x206000a, "COLOR:TRANSFORM:OPLIST", "Bit depth mismatch between op 'a' and op 'b'"}));
}

TEST(ReferenceOp, inverseIsRefused)
{
    OpList list;
    EXPECT_EQ(failureOf([&] { makeResolved({"a"})->appendInverse(list); }),
              (Failure{0x2010014, "COLOR:TRANSFORM:ALL", "Reference inverse not supported"}));
    EXPECT_TRUE(list.empty());
}

TEST(ReferenceOp, cloneSharesTheOps)
{
    ReferenceOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, "id", "name", {"d"});
    op.setAlias("currentMonitor");
    op.setResolveFlags(RESOLVE_GRAPHICS_MONITOR);
    op.setResolved(listOf({makeNamedOp("a")}), "/monitor.ctf");
    const std::unique_ptr<Op> clone(op.clone());
    EXPECT_TRUE(op.isEqual(*clone));
    const auto& copy = dynamic_cast<const ReferenceOp&>(*clone);
    EXPECT_EQ(copy.getReferencedOps(), op.getReferencedOps());
    EXPECT_EQ(copy.getResolvedAlias(), "graphicsMonitor");
    EXPECT_EQ(copy.getResolvedPath(), "/monitor.ctf");
    op.unresolve();
    EXPECT_EQ(namesOf(copy.getOpList()), "a") << "they live as long as one of the two refers to them";
}

TEST(ReferenceOp, aCloneThatIsFittedLeavesTheOpsOfTheOriginal)
{
    const auto original = makeResolved({"a", "b"});
    const OpList* const ops = original->getReferencedOps();
    const std::unique_ptr<Op> sameDepths(original->clone());
    sameDepths->setInBitDepth(BIT_DEPTH_32f);
    sameDepths->setOutBitDepth(BIT_DEPTH_32f);
    EXPECT_EQ(sameDepths->getReferencedOps(), ops) << "there was nothing to fit";

    const std::unique_ptr<Op> in(original->clone());
    in->setInBitDepth(BIT_DEPTH_8i);
    EXPECT_EQ(in->getReferencedOps()->get(0)->getInBitDepth(), BIT_DEPTH_8i);
    const std::unique_ptr<Op> out(original->clone());
    out->setOutBitDepth(BIT_DEPTH_10i);
    EXPECT_EQ(out->getReferencedOps()->get(1)->getOutBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(original->getReferencedOps(), ops);
    EXPECT_EQ(ops->get(0)->getInBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(ops->get(1)->getOutBitDepth(), BIT_DEPTH_32f);
}

TEST(ReferenceOp, transformsThatAreConcatenatedKeepTheirOwnOps)
{
    OpList inner;
    inner.append(makeResolved({"a"}).release());
    Transform second;
    second.getOpList().append(new ReferenceOp);
    dynamic_cast<ReferenceOp&>(*second.getOpList().get(0)).setResolved(inner, "/outer.ctf");
    Transform first;
    first.getOpList().append(new TestOp(BIT_DEPTH_32f, BIT_DEPTH_8i, "before"));
    first.concatenate(second);

    const auto depthBelow = [](const Transform& transform, std::size_t index) {
        const OpList& outer = *transform.getOpList().get(index)->getReferencedOps();
        return outer.get(0)->getReferencedOps()->get(0)->getInBitDepth();
    };
    EXPECT_EQ(depthBelow(first, 1), BIT_DEPTH_8i);
    EXPECT_EQ(depthBelow(second, 0), BIT_DEPTH_32f);
}

TEST(ReferenceOp, isEqualComparesWhatItRefersTo)
{
    ReferenceOp op;
    op.setPath("p.ctf", BASE_PATH_SHARED);
    ReferenceOp other(op);
    other.setResolved(OpList(), "/shared/p.ctf");
    EXPECT_TRUE(op.isEqual(other)) << "resolved or not";
    other.setPath("q.ctf", BASE_PATH_SHARED);
    EXPECT_FALSE(op.isEqual(other));
    other.setPath("p.ctf", BASE_PATH_BRELWICK);
    EXPECT_FALSE(op.isEqual(other));
    other.setAlias("p.ctf");
    EXPECT_FALSE(op.isEqual(other));
    ReferenceOp alias;
    alias.setAlias("q.ctf");
    EXPECT_FALSE(alias.isEqual(other));
    EXPECT_FALSE(op.isEqual(TestOp()));
    ReferenceOp deeper(op);
    deeper.setInBitDepth(BIT_DEPTH_8i);
    EXPECT_FALSE(op.isEqual(deeper));
}
