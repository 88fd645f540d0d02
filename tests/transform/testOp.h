#pragma once

#include "transform/opList.h"

#include <boost/make_shared.hpp>
#include <memory>

/// An op that answers as a test wants it to, and counts itself.
class TestOp : public Color::Op
{
public:
    explicit TestOp(Color::BitDepth in = Color::BIT_DEPTH_32f, Color::BitDepth out = Color::BIT_DEPTH_32f,
                    const std::string& name = "")
        : Op(in, out, "", name, {})
    {
        ++alive;
    }

    TestOp(const TestOp& other)
        : Op(other), type(other.type), isAlwaysNoOp(other.isAlwaysNoOp), isMissingContent(other.isMissingContent),
          hasInverse(other.hasInverse), isInverseFloat(other.isInverseFloat), refusesDepth(other.refusesDepth),
          referenced(other.referenced), exposure(other.exposure)
    {
        ++alive;
    }

    ~TestOp() override { --alive; }

    Op* clone() const override { return new TestOp(*this); }

    void setInBitDepth(Color::BitDepth depth) override
    {
        if (refusesDepth) throw std::string("depth refused");
        ++inDepthChanges;
        Op::setInBitDepth(depth);
    }

    Color::OpType getOpType() const override { return type; }
    const std::string& getOpTypeName() const override
    {
        static const std::string typeName = "Test";
        return typeName;
    }
    bool isNoOp() const override { return isAlwaysNoOp; }
    bool isUnresolved() const override { return isMissingContent; }
    void unresolve() override { isMissingContent = true; }

    bool hasDynamicProperties() const override { return exposure || Op::hasDynamicProperties(); }
    bool hasDynamicProperty(Color::DynamicProperty::Ids id) const override
    {
        return (exposure && exposure->hasId(id)) || Op::hasDynamicProperty(id);
    }
    void setDynamicProperty(const Color::DynamicProperty& property) override
    {
        if (exposure && exposure->hasId(property.getId())) {
            exposure->write(property);
        } else {
            Op::setDynamicProperty(property);
        }
    }
    void getDynamicProperty(Color::DynamicProperty& property) const override
    {
        if (exposure && exposure->hasId(property.getId())) {
            exposure->read(property);
        } else {
            Op::getDynamicProperty(property);
        }
    }

    /// The inverse is named "un" and the name of this one.
    void appendInverse(Color::OpList& list) const override
    {
        if (!hasInverse) Op::appendInverse(list);
        const std::string name = "un" + getName();
        list.append(isInverseFloat ? new TestOp(Color::BIT_DEPTH_32f, Color::BIT_DEPTH_32f, name)
                                   : new TestOp(getOutBitDepth(), getInBitDepth(), name));
    }

    const Color::OpList* getReferencedOps() const override { return referenced.get(); }

    void makeExposureDynamic(double value)
    {
        exposure = boost::make_shared<Color::ExposureDynamicProperty>(value);
        exposure->makeDynamic();
    }

    Color::OpType type = Color::OP_FUNCTION;
    bool isAlwaysNoOp = false;
    bool isMissingContent = false;
    bool hasInverse = true;
    bool isInverseFloat = false; ///< the inverse has other depths than these exchanged
    bool refusesDepth = false;   ///< setInBitDepth() throws a std::string
    int inDepthChanges = 0;      ///< of this object, not of the one that it was cloned from
    std::shared_ptr<Color::OpList> referenced;
    boost::shared_ptr<Color::ExposureDynamicProperty> exposure;

    static inline int alive = 0;
};

/// The display names of the ops, joined by blanks.
inline std::string namesOf(const Color::OpList& list)
{
    std::string names;
    for (std::size_t i = 0; i < list.size(); ++i)
        names += (i == 0 ? "" : " ") + list.get(i)->getDisplayName();
    return names;
}

inline void setBypass(Color::Op& op, bool isBypassed) { op.getBypass()->set(isBypassed); }
