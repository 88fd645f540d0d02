#pragma once

#include "transform/metadata.h"
#include "transform/opList.h"

#include <boost/shared_ptr.hpp>
#include <string>

namespace Color {

class Transform;
using ColorTransformPtr = boost::shared_ptr<Transform>;

/// What clone() does with the ops.
enum class CloneMode
{
    Copy = 0,    ///< every op
    Flatten = 1, ///< references replaced by their ops, statically bypassed ops left out
};

/// A list of ops with its identity and descriptions.
class Transform
{
public:
    Transform();
    /// The unique id is made from the id.
    Transform(const std::string& id, const std::string& name, const Descriptions& descriptions,
              const std::string& inputDescriptor, const std::string& outputDescriptor);
    Transform(const Transform& other) = default;
    Transform& operator=(const Transform&) = delete;
    virtual ~Transform();

    /// Gives an empty id a fresh UUID, from which an empty unique id is made too, then validates the op list.
    virtual void validate();

    const std::string& getId() const { return m_id; }
    /// Throws 0x2010010 on an empty text. The unique id stays as it is.
    void setId(const std::string& id);
    const std::string& getUniqueId() const { return m_uniqueId; }
    /// Throws 0x2010015 on an empty text, 0x1010006 when no allowed character is in it.
    void setUniqueId(const std::string& uniqueId);
    const std::string& getName() const { return m_name; }
    void setName(const std::string& name) { m_name = name; }
    /// The root of the metadata tree, "Info".
    const Metadata& getMetadata() const { return m_metadata; }
    Metadata& getMetadata() { return m_metadata; }
    const Descriptions& getDescriptions() const { return m_descriptions; }
    Descriptions& getDescriptions() { return m_descriptions; }
    const std::string& getInputDescriptor() const { return m_inputDescriptor; }
    void setInputDescriptor(const std::string& descriptor) { m_inputDescriptor = descriptor; }
    const std::string& getOutputDescriptor() const { return m_outputDescriptor; }
    void setOutputDescriptor(const std::string& descriptor) { m_outputDescriptor = descriptor; }
    const OpList& getOpList() const { return m_opList; }
    OpList& getOpList() { return m_opList; }
    /// The id of the transform that this one undoes, or empty.
    const std::string& getInverseOf() const { return m_inverseOf; }
    void setInverseOf(const std::string& id) { m_inverseOf = id; }

    /// Depths of the two ends. All four throw 0x2010008 on an empty op list.
    BitDepth getInBitDepth() const;
    BitDepth getOutBitDepth() const;
    void setInBitDepth(BitDepth depth);
    void setOutBitDepth(BitDepth depth);

    bool isEqual(const Transform& other) const;
    bool isInverseOf(const Transform& other) const;

    /// Leaves the metadata behind.
    ColorTransformPtr clone(CloneMode mode) const;
    /// Takes over the other's output descriptor and appends its descriptions and ops.
    void concatenate(const Transform& other);
    /// Makes target, which must be another transform without ops, the transform that undoes this one; its ids and
    /// metadata stay. Throws 0x2010017 on a target that will not do, 0x2010016 while this is unresolved, 0x2010014 when
    /// an op has no inverse and 0x2010008 without ops; the target is then what it was.
    void inverse(Transform& target) const;

    bool hasUnresolved() const { return m_opList.hasUnresolved(); }
    bool hasReference() const { return m_opList.hasReference(); }
    bool hasUnresolvedReference() const { return m_opList.hasUnresolvedReference(); }
    bool hasDynamicProperty(DynamicProperty::Ids id) const { return m_opList.hasDynamicProperty(id); }
    bool hasDynamicProperties() const { return m_opList.hasDynamicProperties(); }
    void setDynamicProperty(const DynamicProperty& property) { m_opList.setDynamicProperty(property); }
    void getDynamicProperty(DynamicProperty& property) const { m_opList.getDynamicProperty(property); }
    void unresolve() { m_opList.unresolve(); }

private:
    void checkNotEmpty() const;

    std::string m_id;
    std::string m_uniqueId;
    std::string m_name;
    Metadata m_metadata;
    Descriptions m_descriptions;
    std::string m_inputDescriptor;
    std::string m_outputDescriptor;
    OpList m_opList;
    std::string m_inverseOf;
};

/// A new transform that does the first and then the second, validated; it has the identity of the first. Throws
/// 0x204000f when one is null.
ColorTransformPtr concatenateTransforms(const ColorTransformPtr& first, const ColorTransformPtr& second);

} // namespace Color
