#include "transform/opList.h"

#include "utils/exception.h"

#include <algorithm>

namespace Color {

namespace {

bool isReference(const Op* op) { return op->getOpType() == OP_REFERENCE; }

std::unique_ptr<Op> takeOwnership(Op* op)
{
    if (!op) raise(LogCategory::TRANSFORM_OPLIST, ErrorIds::ENTRY_NULL);
    return std::unique_ptr<Op>(op);
}

[[noreturn]] void raiseNotAvailable(const DynamicProperty& property)
{
    raise(LogCategory::TRANSFORM_ALL, ErrorIds::DYNAMIC_PROPERTY_NOT_AVAILABLE,
          DynamicProperty::getName(property.getId()), "");
}

} // namespace

// Delegates, so that a clone that throws leaves the ones before it to the destructor.
OpList::OpList(const OpList& other) : OpList()
{
    m_ops.reserve(other.size());
    for (const Op* op : other.m_ops)
        m_ops.push_back(op->clone());
}

OpList& OpList::operator=(const OpList& other)
{
    OpList copy(other);
    swap(copy);
    return *this;
}

OpList::~OpList() { clear(); }

// Every edit first does what may throw, so that a failure leaves the order of the list as it was.

void OpList::append(Op* op)
{
    std::unique_ptr<Op> added = takeOwnership(op);
    m_ops.reserve(size() + 1);
    if (!empty()) added->setInBitDepth(m_ops.back()->getOutBitDepth());
    m_ops.push_back(added.release());
}

void OpList::prepend(Op* op)
{
    std::unique_ptr<Op> added = takeOwnership(op);
    m_ops.reserve(size() + 1);
    if (!empty()) m_ops.front()->setInBitDepth(added->getOutBitDepth());
    m_ops.insert(m_ops.begin(), added.release());
}

Op* OpList::get(std::size_t index)
{
    checkIndex(index);
    return m_ops[index];
}

const Op* OpList::get(std::size_t index) const
{
    checkIndex(index);
    return m_ops[index];
}

std::unique_ptr<Op> OpList::remove(std::size_t index)
{
    checkIndex(index);
    const bool isFirst = index == 0;
    const bool isLast = index + 1 == size();
    if (!isFirst && !isLast) m_ops[index + 1]->setInBitDepth(m_ops[index - 1]->getOutBitDepth());
    std::unique_ptr<Op> removed(m_ops[index]);
    m_ops.erase(m_ops.begin() + static_cast<std::ptrdiff_t>(index));
    return removed;
}

void OpList::erase(std::size_t index) { remove(index).reset(); }

void OpList::replace(Op* op, std::size_t index)
{
    std::unique_ptr<Op> added = takeOwnership(op);
    checkIndex(index);
    const bool isFirst = index == 0;
    const bool isLast = index + 1 == size();
    if (!isFirst) added->setInBitDepth(m_ops[index - 1]->getOutBitDepth());
    if (!isLast) m_ops[index + 1]->setInBitDepth(added->getOutBitDepth());
    const std::unique_ptr<Op> replaced(m_ops[index]);
    m_ops[index] = added.release();
}

void OpList::appendAll(const OpList& other)
{
    OpList clones(other);
    m_ops.reserve(size() + clones.size());
    if (!empty() && !clones.empty()) clones.m_ops.front()->setInBitDepth(m_ops.back()->getOutBitDepth());
    m_ops.insert(m_ops.end(), clones.m_ops.begin(), clones.m_ops.end());
    clones.m_ops.clear();
}

void OpList::clear()
{
    for (const Op* op : m_ops)
        delete op;
    m_ops.clear();
}

bool OpList::isEqual(const OpList& other) const
{
    return std::equal(m_ops.begin(), m_ops.end(), other.m_ops.begin(), other.m_ops.end(),
                      [](const Op* a, const Op* b) { return a == b || a->isEqual(*b); });
}

bool OpList::hasUnresolved() const
{
    return std::any_of(m_ops.begin(), m_ops.end(), [](const Op* op) { return op->isUnresolved(); });
}

bool OpList::hasReference() const { return std::any_of(m_ops.begin(), m_ops.end(), isReference); }

bool OpList::hasUnresolvedReference() const
{
    return std::any_of(m_ops.begin(), m_ops.end(), [](const Op* op) {
        if (!isReference(op)) return false;
        const OpList* referenced = op->getReferencedOps();
        return !referenced || referenced->hasUnresolvedReference();
    });
}

bool OpList::hasDynamicProperties() const
{
    return std::any_of(m_ops.begin(), m_ops.end(), [](const Op* op) { return op->hasDynamicProperties(); });
}

bool OpList::hasDynamicProperty(DynamicProperty::Ids id) const
{
    return std::any_of(m_ops.begin(), m_ops.end(), [id](const Op* op) { return op->hasDynamicProperty(id); });
}

void OpList::setDynamicProperty(const DynamicProperty& property)
{
    if (!hasDynamicProperty(property.getId())) raiseNotAvailable(property);
    for (Op* op : m_ops) {
        if (op->hasDynamicProperty(property.getId())) op->setDynamicProperty(property);
    }
}

void OpList::getDynamicProperty(DynamicProperty& property) const
{
    const auto found = std::find_if(m_ops.begin(), m_ops.end(),
                                    [&](const Op* op) { return op->hasDynamicProperty(property.getId()); });
    if (found == m_ops.end()) raiseNotAvailable(property);
    (*found)->getDynamicProperty(property);
}

void OpList::unresolve()
{
    for (Op* op : m_ops)
        op->unresolve();
}

void OpList::validate()
{
    const Op* previous = nullptr;
    for (Op* op : m_ops) {
        op->validate();
        if (previous && previous->getOutBitDepth() != op->getInBitDepth()) {
            raise(LogCategory::TRANSFORM_OPLIST, ErrorIds::OPLIST_BIT_DEPTH_MISMATCH, previous->getDisplayName(),
                  op->getDisplayName());
        }
        previous = op;
    }
}

void OpList::checkIndex(std::size_t index) const
{
    if (index >= size()) raise(LogCategory::TRANSFORM_OPLIST, ErrorIds::INDEX_OUT_OF_RANGE, index);
}

} // namespace Color
