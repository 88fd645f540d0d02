#include "transform/op.h"

#include "testOp.h"
#include "tests/utils/failure.h"

#include <gtest/gtest.h>

using namespace Color;

namespace {

/// Overrides nothing that it need not.
class BareOp : public Op
{
public:
    BareOp(BitDepth in, BitDepth out) : Op(in, out) {}
    BareOp(const std::string& id, const std::string& name, const Descriptions& descriptions)
        : Op(BIT_DEPTH_8i, BIT_DEPTH_16f, id, name, descriptions)
    {}

    Op* clone() const override { return new BareOp(*this); }
    OpType getOpType() const override { return OP_DITHER; }
    const std::string& getOpTypeName() const override
    {
        static const std::string typeName = "Bare";
        return typeName;
    }
};

std::unique_ptr<Op> cloneOf(const Op& op) { return std::unique_ptr<Op>(op.clone()); }

} // namespace

TEST(Op, typesHaveTheirNumbers)
{
    EXPECT_EQ(OP_LUT_1D, 0);
    EXPECT_EQ(OP_INVERSE_LUT_1D, 1);
    EXPECT_EQ(OP_LUT_3D, 2);
    EXPECT_EQ(OP_MATRIX, 3);
    EXPECT_EQ(OP_RANGE, 4);
    EXPECT_EQ(OP_REFERENCE, 5);
    EXPECT_EQ(OP_GAMMA, 6);
    EXPECT_EQ(OP_EXPOSURE_CONTRAST, 7);
    EXPECT_EQ(OP_LOG, 8);
    EXPECT_EQ(OP_CDL, 9);
    EXPECT_EQ(OP_DITHER, 10);
    EXPECT_EQ(OP_GAMUT_MAP, 11);
    EXPECT_EQ(OP_HUE_VECTOR, 12);
    EXPECT_EQ(OP_FUNCTION, 13);
    EXPECT_EQ(kOpTypeCount, 14);
}

TEST(Op, constructorsStoreTheirArguments)
{
    const BareOp bare(BIT_DEPTH_10i, BIT_DEPTH_32f);
    EXPECT_EQ(bare.getInBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(bare.getOutBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(bare.getId(), "");
    EXPECT_EQ(bare.getName(), "");
    EXPECT_TRUE(bare.getDescriptions().empty());

    const BareOp full("id", "name", {"a", "b"});
    EXPECT_EQ(full.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(full.getOutBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(full.getId(), "id");
    EXPECT_EQ(full.getName(), "name");
    EXPECT_EQ(full.getDescriptions(), (Descriptions{"a", "b"}));
}

TEST(Op, baseAnswersAreThoseOfAPlainOp)
{
    const BareOp op(BIT_DEPTH_32f, BIT_DEPTH_32f);
    EXPECT_FALSE(op.isNoOp());
    EXPECT_FALSE(op.isIdentity());
    EXPECT_FALSE(op.isUnresolved());
    EXPECT_EQ(op.getMinimumVersion(), 1.3F);
    EXPECT_EQ(op.getReferencedOps(), nullptr);
}

TEST(Op, displayNameIsNameElseIdElseTypeName)
{
    BareOp op("", "", {});
    EXPECT_EQ(op.getDisplayName(), "Bare");
    op.setId("the id");
    EXPECT_EQ(op.getDisplayName(), "the id");
    op.setName("the name");
    EXPECT_EQ(op.getDisplayName(), "the name");
    op.setId("");
    EXPECT_EQ(op.getDisplayName(), "the name");
}

TEST(Op, depthSettersStore)
{
    BareOp op(BIT_DEPTH_8i, BIT_DEPTH_8i);
    op.setInBitDepth(BIT_DEPTH_12i);
    op.setOutBitDepth(BIT_DEPTH_16f);
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_12i);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_16f);
}

TEST(Op, identityIsANoOpBetweenEqualDepths)
{
    TestOp op(BIT_DEPTH_8i, BIT_DEPTH_8i);
    EXPECT_FALSE(op.isIdentity());
    op.isAlwaysNoOp = true;
    EXPECT_TRUE(op.isIdentity());
    op.setOutBitDepth(BIT_DEPTH_10i);
    EXPECT_FALSE(op.isIdentity());
}

TEST(Op, validateNeedsBothDepths)
{
    BareOp good(BIT_DEPTH_8i, BIT_DEPTH_32f);
    EXPECT_EQ(failureOf([&] { good.validate(); }), kNoFailure);

    BareOp noIn(BIT_DEPTH_UNKNOWN, BIT_DEPTH_32f);
    EXPECT_EQ(failureOf([&] { noIn.validate(); }),
              (Failure{0x2010001, "COLOR:TRANSFORM:ALL", "'InBitDepth' attribute missing in Bare"}));

    BareOp noOut(BIT_DEPTH_8i, BIT_DEPTH_UNKNOWN);
    noOut.setName("graded");
    EXPECT_EQ(failureOf([&] { noOut.validate(); }),
              (Failure{0x2010001, "COLOR:TRANSFORM:ALL", "'OutBitDepth' attribute missing in graded"}));

    BareOp neither(BIT_DEPTH_UNKNOWN, BIT_DEPTH_UNKNOWN);
    EXPECT_EQ(failureOf([&] { neither.validate(); }).message, "'InBitDepth' attribute missing in Bare");
}

TEST(Op, inverseIsRefusedWithTheTypeName)
{
    BareOp op("", "named", {});
    OpList list;
    EXPECT_EQ(failureOf([&] { op.appendInverse(list); }),
              (Failure{0x2010014, "COLOR:TRANSFORM:ALL", "Bare inverse not supported"}));
    EXPECT_TRUE(list.empty());
}

TEST(Op, unresolveLeavesAPlainOpAlone)
{
    BareOp op("id", "name", {"a"});
    const std::unique_ptr<Op> before = cloneOf(op);
    op.unresolve();
    EXPECT_TRUE(op.isEqual(*before));
    EXPECT_FALSE(op.isUnresolved());
}

TEST(Op, bypassStartsOffAndStatic)
{
    const BareOp op(BIT_DEPTH_32f, BIT_DEPTH_32f);
    ASSERT_TRUE(op.getBypass());
    EXPECT_FALSE(op.getBypass()->get());
    EXPECT_FALSE(op.getBypass()->isDynamic());
    EXPECT_FALSE(op.hasDynamicProperties());
    EXPECT_FALSE(op.hasDynamicProperty(DynamicProperty::BYPASS));
}

TEST(Op, staticBypassIsNoDynamicProperty)
{
    BareOp op(BIT_DEPTH_32f, BIT_DEPTH_32f);
    DynamicProperty bypass(DynamicProperty::BYPASS);
    bypass.setValue(1.0);
    const Failure failure{0x1030002, "COLOR:UTILS:DYNAMIC_PROP", "Invalid property: Bypass"};
    EXPECT_EQ(failureOf([&] { op.setDynamicProperty(bypass); }), failure);
    EXPECT_EQ(failureOf([&] { op.getDynamicProperty(bypass); }), failure);
    EXPECT_FALSE(op.getBypass()->get());
    EXPECT_EQ(bypass.getValue(), 1.0);
}

TEST(Op, dynamicBypassIsSetAndRead)
{
    BareOp op(BIT_DEPTH_32f, BIT_DEPTH_32f);
    op.getBypass()->makeDynamic();
    EXPECT_TRUE(op.hasDynamicProperties());
    EXPECT_TRUE(op.hasDynamicProperty(DynamicProperty::BYPASS));
    EXPECT_FALSE(op.hasDynamicProperty(DynamicProperty::EXPOSURE));

    DynamicProperty carrier(DynamicProperty::BYPASS);
    carrier.setValue(1.0);
    op.setDynamicProperty(carrier);
    EXPECT_TRUE(op.getBypass()->get());

    DynamicProperty read(DynamicProperty::BYPASS);
    op.getDynamicProperty(read);
    EXPECT_EQ(read.getValue(), 1.0);

    DynamicProperty exposure(DynamicProperty::EXPOSURE);
    EXPECT_EQ(failureOf([&] { op.setDynamicProperty(exposure); }).message, "Invalid property: Bypass");
}

TEST(Op, cloneCopiesEverything)
{
    BareOp op("id", "name", {"a"});
    setBypass(op, true);
    const std::unique_ptr<Op> clone = cloneOf(op);
    EXPECT_EQ(clone->getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(clone->getOutBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(clone->getId(), "id");
    EXPECT_EQ(clone->getName(), "name");
    EXPECT_EQ(clone->getDescriptions(), Descriptions{"a"});
    EXPECT_TRUE(clone->getBypass()->get());
    EXPECT_TRUE(clone->isEqual(op));
}

TEST(Op, cloneHasItsOwnStaticBypass)
{
    BareOp op(BIT_DEPTH_32f, BIT_DEPTH_32f);
    const std::unique_ptr<Op> clone = cloneOf(op);
    EXPECT_NE(clone->getBypass(), op.getBypass());
    setBypass(op, true);
    EXPECT_FALSE(clone->getBypass()->get());
    clone->getBypass()->makeDynamic();
    EXPECT_FALSE(op.getBypass()->isDynamic());
}

TEST(Op, cloneSharesADynamicBypass)
{
    BareOp op(BIT_DEPTH_32f, BIT_DEPTH_32f);
    op.getBypass()->makeDynamic();
    const std::unique_ptr<Op> clone = cloneOf(op);
    EXPECT_EQ(clone->getBypass(), op.getBypass());
    setBypass(op, true);
    EXPECT_TRUE(clone->getBypass()->get());
}

TEST(Op, setBypassReplacesTheProperty)
{
    BareOp a(BIT_DEPTH_32f, BIT_DEPTH_32f);
    BareOp b(BIT_DEPTH_32f, BIT_DEPTH_32f);
    a.setBypass(b.getBypass());
    setBypass(b, true);
    EXPECT_TRUE(a.getBypass()->get());
}

TEST(Op, isEqualComparesEveryBaseMember)
{
    const BareOp op("id", "name", {"a"});
    EXPECT_TRUE(op.isEqual(BareOp("id", "name", {"a"})));
    EXPECT_FALSE(op.isEqual(BareOp("ID", "name", {"a"})));
    EXPECT_FALSE(op.isEqual(BareOp("id", "Name", {"a"})));
    EXPECT_FALSE(op.isEqual(BareOp("id", "name", {"a", ""})));

    BareOp otherIn(op);
    otherIn.setInBitDepth(BIT_DEPTH_10i);
    EXPECT_FALSE(op.isEqual(otherIn));
    BareOp otherOut(op);
    otherOut.setOutBitDepth(BIT_DEPTH_32f);
    EXPECT_FALSE(op.isEqual(otherOut));
    BareOp bypassed(op);
    setBypass(bypassed, true);
    EXPECT_FALSE(op.isEqual(bypassed));
    const std::unique_ptr<Op> dynamic = cloneOf(op);
    dynamic->getBypass()->makeDynamic();
    EXPECT_FALSE(op.isEqual(*dynamic));
}
