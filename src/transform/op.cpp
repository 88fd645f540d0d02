#include "transform/op.h"

#include "transform/shareOrCopy.h"
#include "utils/exception.h"

namespace Color {

Op::Op(BitDepth in, BitDepth out) : Op(in, out, {}, {}, {}) {}

Op::Op(BitDepth in, BitDepth out, const std::string& id, const std::string& name, const Descriptions& descriptions)
    : m_inBitDepth(in), m_outBitDepth(out), m_id(id), m_name(name), m_descriptions(descriptions),
      m_bypass(boost::make_shared<BypassDynamicProperty>())
{}

Op::Op(const Op& other)
    : m_inBitDepth(other.m_inBitDepth), m_outBitDepth(other.m_outBitDepth), m_id(other.m_id), m_name(other.m_name),
      m_descriptions(other.m_descriptions), m_bypass(shareOrCopy(other.m_bypass))
{}

Op::~Op() = default;

void Op::setInBitDepth(BitDepth depth) { m_inBitDepth = depth; }

void Op::setOutBitDepth(BitDepth depth) { m_outBitDepth = depth; }

void Op::validate()
{
    if (m_inBitDepth == BIT_DEPTH_UNKNOWN) {
        raise(LogCategory::TRANSFORM_ALL, ErrorIds::ATTRIBUTE_MISSING, "InBitDepth", getDisplayName());
    }
    if (m_outBitDepth == BIT_DEPTH_UNKNOWN) {
        raise(LogCategory::TRANSFORM_ALL, ErrorIds::ATTRIBUTE_MISSING, "OutBitDepth", getDisplayName());
    }
}

bool Op::isIdentity() const { return m_inBitDepth == m_outBitDepth && isNoOp(); }

bool Op::isNoOp() const { return false; }

bool Op::isUnresolved() const { return false; }

bool Op::hasDynamicProperties() const { return m_bypass->isDynamic(); }

bool Op::hasDynamicProperty(DynamicProperty::Ids id) const { return m_bypass->hasId(id) && m_bypass->isDynamic(); }

void Op::setDynamicProperty(const DynamicProperty& property) { m_bypass->write(property); }

void Op::getDynamicProperty(DynamicProperty& property) const { m_bypass->read(property); }

bool Op::isEqual(const Op& other) const
{
    return m_inBitDepth == other.m_inBitDepth && m_outBitDepth == other.m_outBitDepth && m_id == other.m_id &&
           m_name == other.m_name && m_descriptions == other.m_descriptions &&
           m_bypass->get() == other.m_bypass->get() && m_bypass->isDynamic() == other.m_bypass->isDynamic();
}

void Op::appendInverse(OpList&) const
{
    raise(LogCategory::TRANSFORM_ALL, ErrorIds::INVERSE_NOT_SUPPORTED, getOpTypeName());
}

void Op::unresolve() {}

float Op::getMinimumVersion() const { return 1.3F; }

const OpList* Op::getReferencedOps() const { return nullptr; }

const std::string& Op::getDisplayName() const
{
    if (!m_name.empty()) return m_name;
    return m_id.empty() ? getOpTypeName() : m_id;
}

} // namespace Color
