#include "transform/transform.h"

#include "utils/exception.h"
#include "utils/text.h"
#include "utils/uuid.h"

#include <boost/make_shared.hpp>
#include <utility>

namespace Color {

namespace {

std::string inverseTextOf(const std::string& text) { return "Inverse of: [" + text + "]"; }

void appendFlat(const OpList& source, OpList& target)
{
    for (std::size_t i = 0; i < source.size(); ++i) {
        const Op& op = *source.get(i);
        const bool isLeftOut = op.getBypass()->get() && !op.getBypass()->isDynamic();
        if (isLeftOut) continue;
        if (const OpList* referenced = op.getReferencedOps()) {
            appendFlat(*referenced, target);
        } else {
            target.append(op.clone());
        }
    }
}

} // namespace

Transform::Transform() : Transform({}, {}, {}, {}, {}) {}

Transform::Transform(const std::string& id, const std::string& name, const Descriptions& descriptions,
                     const std::string& inputDescriptor, const std::string& outputDescriptor)
    : m_id(id), m_uniqueId(keepIdentifierCharacters(id)), m_name(name), m_metadata("Info"),
      m_descriptions(descriptions), m_inputDescriptor(inputDescriptor), m_outputDescriptor(outputDescriptor)
{}

Transform::~Transform() = default;

void Transform::validate()
{
    if (m_id.empty()) {
        setId(makeUuid());
        if (m_uniqueId.empty()) setUniqueId(m_id);
    }
    m_opList.validate();
}

void Transform::setId(const std::string& id)
{
    if (id.empty()) raise(LogCategory::TRANSFORM_ALL, ErrorIds::TRANSFORM_ID_EMPTY);
    m_id = id;
}

void Transform::setUniqueId(const std::string& uniqueId)
{
    if (uniqueId.empty()) raise(LogCategory::TRANSFORM_ALL, ErrorIds::TRANSFORM_UNIQUE_ID_EMPTY);
    std::string identifier = keepIdentifierCharacters(uniqueId);
    if (identifier.empty()) raise(LogCategory::UTILS_ALL, ErrorIds::NAME_NOT_ALLOWED, uniqueId);
    m_uniqueId = std::move(identifier);
}

BitDepth Transform::getInBitDepth() const
{
    checkNotEmpty();
    return m_opList.get(0)->getInBitDepth();
}

BitDepth Transform::getOutBitDepth() const
{
    checkNotEmpty();
    return m_opList.get(m_opList.size() - 1)->getOutBitDepth();
}

void Transform::setInBitDepth(BitDepth depth)
{
    checkNotEmpty();
    m_opList.get(0)->setInBitDepth(depth);
}

void Transform::setOutBitDepth(BitDepth depth)
{
    checkNotEmpty();
    m_opList.get(m_opList.size() - 1)->setOutBitDepth(depth);
}

bool Transform::isEqual(const Transform& other) const
{
    return this == &other || (m_id == other.m_id && m_uniqueId == other.m_uniqueId && m_name == other.m_name &&
                              m_metadata.isEqual(other.m_metadata) && m_opList.isEqual(other.m_opList));
}

bool Transform::isInverseOf(const Transform& other) const { return !m_inverseOf.empty() && m_inverseOf == other.m_id; }

ColorTransformPtr Transform::clone(CloneMode mode) const
{
    auto copy = boost::make_shared<Transform>(m_id, m_name, m_descriptions, m_inputDescriptor, m_outputDescriptor);
    copy->m_inverseOf = m_inverseOf;
    copy->m_uniqueId = m_uniqueId;
    if (mode == CloneMode::Flatten) {
        appendFlat(m_opList, copy->m_opList);
    } else {
        copy->m_opList = m_opList;
    }
    return copy;
}

void Transform::concatenate(const Transform& other)
{
    const Descriptions descriptions = other.m_descriptions; // a copy, because other may be this transform
    m_opList.appendAll(other.m_opList);
    m_outputDescriptor = other.m_outputDescriptor;
    m_descriptions.insert(m_descriptions.end(), descriptions.begin(), descriptions.end());
}

void Transform::inverse(Transform& target) const
{
    if (&target == this || !target.m_opList.empty()) {
        raise(LogCategory::TRANSFORM_ALL, ErrorIds::INVERSE_OF_NULL_TRANSFORM);
    }
    if (hasUnresolved()) raise(LogCategory::TRANSFORM_ALL, ErrorIds::INVERSE_OF_UNRESOLVED_TRANSFORM);

    Transform inverted;
    for (std::size_t i = m_opList.size(); i > 0; --i)
        m_opList.get(i - 1)->appendInverse(inverted.m_opList);
    inverted.setInBitDepth(getOutBitDepth());
    inverted.setOutBitDepth(getInBitDepth());

    inverted.m_descriptions = m_descriptions;
    if (inverted.m_descriptions.empty()) inverted.m_descriptions.emplace_back();
    inverted.m_descriptions.front() = inverseTextOf(inverted.m_descriptions.front());
    inverted.m_name = inverseTextOf(m_name);
    inverted.m_inputDescriptor = m_outputDescriptor;
    inverted.m_outputDescriptor = m_inputDescriptor;
    inverted.m_inverseOf = m_id;

    // Nothing can fail any more; what an inverse does not define stays as the target has it.
    target.m_opList.swap(inverted.m_opList);
    target.m_descriptions.swap(inverted.m_descriptions);
    target.m_name.swap(inverted.m_name);
    target.m_inputDescriptor.swap(inverted.m_inputDescriptor);
    target.m_outputDescriptor.swap(inverted.m_outputDescriptor);
    target.m_inverseOf.swap(inverted.m_inverseOf);
}

void Transform::checkNotEmpty() const
{
    if (m_opList.empty()) raise(LogCategory::TRANSFORM_ALL, ErrorIds::TRANSFORM_EMPTY);
}

ColorTransformPtr concatenateTransforms(const ColorTransformPtr& first, const ColorTransformPtr& second)
{
    if (!first || !second) raise(LogCategory::TRANSFORM_LUT_1D, ErrorIds::CONCATENATE_NULL_TRANSFORM);
    auto result = boost::make_shared<Transform>(*first);
    result->concatenate(*second);
    result->setInputDescriptor(first->getInputDescriptor());
    result->setOutputDescriptor(second->getOutputDescriptor());
    result->validate();
    return result;
}

} // namespace Color
