#pragma once

#include "transform/op.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace Color {

/// An ordered list of ops, which it owns. Neighbours agree on a depth: an edit fits the following op to it. Every
/// operation that takes an op owns it from the call on, also when it throws.
class OpList
{
public:
    OpList() = default;
    /// Clones every op; depths stay as they are.
    OpList(const OpList& other);
    OpList& operator=(const OpList& other);
    ~OpList();

    /// Both throw 0x2060007 on null.
    void append(Op* op);
    void prepend(Op* op);
    /// All that take an index throw 0x2060006 when there is no such op.
    Op* get(std::size_t index);
    const Op* get(std::size_t index) const;
    /// Takes the op out of the list and gives it to the caller.
    std::unique_ptr<Op> remove(std::size_t index);
    /// Takes it out and deletes it.
    void erase(std::size_t index);
    /// Deletes the op at the index and puts another in its place. Throws 0x2060007 on null.
    void replace(Op* op, std::size_t index);
    /// Appends clones. Only the first is fitted to the depth in which this list ends.
    void appendAll(const OpList& other);

    std::size_t size() const { return m_ops.size(); }
    bool empty() const { return m_ops.empty(); }
    void clear();
    void swap(OpList& other) noexcept { m_ops.swap(other.m_ops); }
    bool isEqual(const OpList& other) const;

    /// True when an op of this list itself is unresolved.
    bool hasUnresolved() const;
    bool hasReference() const;
    /// True when a reference is unresolved, here or at any depth below the resolved references.
    bool hasUnresolvedReference() const;
    bool hasDynamicProperties() const;
    bool hasDynamicProperty(DynamicProperty::Ids id) const;
    /// Sets it on every op that has it; throws 0x2010013 when none has.
    void setDynamicProperty(const DynamicProperty& property);
    /// Reads it from the first op that has it; throws 0x2010013 when none has.
    void getDynamicProperty(DynamicProperty& property) const;
    void unresolve();

    /// Validates every op; throws 0x206000a when neighbours disagree on their depth.
    void validate();

private:
    void checkIndex(std::size_t index) const;

    std::vector<Op*> m_ops; ///< owned, never null
};

} // namespace Color
