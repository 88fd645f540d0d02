#include "transform/metadata.h"

#include "utils/exception.h"

#include <algorithm>
#include <utility>

namespace Color {

Metadata::Metadata(const std::string& name) : m_name(name) {}

const std::string& Metadata::getValue() const
{
    checkLeaf();
    return m_value;
}

void Metadata::setValue(const std::string& value)
{
    checkLeaf();
    m_value = value;
}

Metadata& Metadata::addChild(const std::string& name) { return addChild(Metadata(name)); }

Metadata& Metadata::addChild(Metadata child)
{
    checkContainer(child.m_name);
    m_children.push_back(std::move(child));
    return m_children.back();
}

const Metadata& Metadata::getChild(const std::string& name) const
{
    checkContainer(name);
    const auto found =
        std::find_if(m_children.begin(), m_children.end(), [&](const Metadata& child) { return child.m_name == name; });
    if (found == m_children.end()) raise(LogCategory::TRANSFORM_METADATA, ErrorIds::METADATA_NOT_FOUND, name);
    return *found;
}

Metadata& Metadata::getChild(const std::string& name)
{
    return const_cast<Metadata&>(std::as_const(*this).getChild(name));
}

const std::string& Metadata::getChildValue(const std::string& name) const { return getChild(name).getValue(); }

void Metadata::setContent(const Metadata& other)
{
    // A copy, because the other node may lie below this one.
    Metadata content(other);
    m_value = std::move(content.m_value);
    m_children = std::move(content.m_children);
}

bool Metadata::isEqual(const Metadata& other) const
{
    return m_name == other.m_name && m_value == other.m_value &&
           std::equal(m_children.begin(), m_children.end(), other.m_children.begin(), other.m_children.end(),
                      [](const Metadata& a, const Metadata& b) { return a.isEqual(b); });
}

void Metadata::checkLeaf() const
{
    if (!isLeaf()) raise(LogCategory::TRANSFORM_METADATA, ErrorIds::METADATA_NOT_A_LEAF, m_name);
}

void Metadata::checkContainer(const std::string& childName) const
{
    if (childName.empty()) raise(LogCategory::TRANSFORM_METADATA, ErrorIds::METADATA_NAME_EMPTY);
    if (isLeaf() && !m_value.empty())
        raise(LogCategory::TRANSFORM_METADATA, ErrorIds::METADATA_NOT_A_CONTAINER, m_name);
}

} // namespace Color
