#pragma once

#include "utils/dynamicPropertyImp.h"
#include "utils/publicTypes.h"

#include <boost/shared_ptr.hpp>
#include <string>
#include <vector>

namespace Color {

class OpList;

using Descriptions = std::vector<std::string>;
using BypassPropertyPtr = boost::shared_ptr<BypassDynamicProperty>;

/// The kinds of ops, numbered for good: factories and files are indexed by these numbers.
enum OpType : int
{
    OP_LUT_1D = 0,
    OP_INVERSE_LUT_1D = 1,
    OP_LUT_3D = 2,
    OP_MATRIX = 3,
    OP_RANGE = 4,
    OP_REFERENCE = 5,
    OP_GAMMA = 6,
    OP_EXPOSURE_CONTRAST = 7,
    OP_LOG = 8,
    OP_CDL = 9,
    OP_DITHER = 10,
    OP_GAMUT_MAP = 11,
    OP_HUE_VECTOR = 12,
    OP_FUNCTION = 13,
};
constexpr int kOpTypeCount = 14;

/// One colour operator. Its parameters are in the scale of its own input and output depth; a depth setter of a derived
/// class rescales them.
class Op
{
public:
    virtual ~Op();

    /// A new op of the same class, owned by the caller.
    virtual Op* clone() const = 0;

    virtual void setInBitDepth(BitDepth depth);
    virtual void setOutBitDepth(BitDepth depth);

    /// Throws when the op cannot be used as it is. A derived class calls this one first. May bring stored parameters
    /// into their final shape.
    virtual void validate();

    virtual OpType getOpType() const = 0;
    virtual const std::string& getOpTypeName() const = 0;

    /// True when pixels pass unchanged: equal depths and isNoOp().
    virtual bool isIdentity() const;
    /// True when no value changes apart from the scale between the depths.
    virtual bool isNoOp() const;
    virtual bool isUnresolved() const;

    virtual bool hasDynamicProperties() const;
    virtual bool hasDynamicProperty(DynamicProperty::Ids id) const;
    virtual void setDynamicProperty(const DynamicProperty& property);
    virtual void getDynamicProperty(DynamicProperty& property) const;

    virtual bool isEqual(const Op& other) const;

    /// Appends the op that undoes this one; throws 0x2010014 with the type name where there is none.
    virtual void appendInverse(OpList& list) const;

    virtual void unresolve();

    /// The lowest version of the file format that can hold this op.
    virtual float getMinimumVersion() const;

    /// The ops that stand in for this one: null for every op but a resolved reference.
    virtual const OpList* getReferencedOps() const;

    BitDepth getInBitDepth() const { return m_inBitDepth; }
    BitDepth getOutBitDepth() const { return m_outBitDepth; }
    const std::string& getId() const { return m_id; }
    void setId(const std::string& id) { m_id = id; }
    const std::string& getName() const { return m_name; }
    void setName(const std::string& name) { m_name = name; }
    const Descriptions& getDescriptions() const { return m_descriptions; }
    Descriptions& getDescriptions() { return m_descriptions; }

    /// Never null. Shared with clones and renderers when it is dynamic.
    const BypassPropertyPtr& getBypass() const { return m_bypass; }
    void setBypass(const BypassPropertyPtr& bypass) { m_bypass = bypass; }

    /// The name, else the id, else the type name: how messages call this op.
    const std::string& getDisplayName() const;

protected:
    Op(BitDepth in, BitDepth out);
    Op(BitDepth in, BitDepth out, const std::string& id, const std::string& name, const Descriptions& descriptions);
    /// Copies everything; a bypass that is dynamic is shared with the original.
    Op(const Op& other);
    Op& operator=(const Op&) = delete;

private:
    BitDepth m_inBitDepth;
    BitDepth m_outBitDepth;
    std::string m_id;
    std::string m_name;
    Descriptions m_descriptions;
    BypassPropertyPtr m_bypass;
};

} // namespace Color
