#include "xml/metadataElt.h"

#include <utility>

namespace Color::Xml::Reader {

MetadataElt::MetadataElt(const std::string& name, MetadataElt& parent, const ReadContext& context)
    : ComplexElt(name, parent, context), m_parentNode(&parent)
{}

MetadataElt::MetadataElt(const std::string& name, ContainerElt& parent, const ReadContext& context)
    : ComplexElt(name, parent, context)
{}

MetadataElt::~MetadataElt() = default;

void MetadataElt::start(Attributes) {}

void MetadataElt::end() { m_parentNode->m_children.push_back(takeNode()); }

Metadata MetadataElt::takeNode()
{
    Metadata node(getName());
    if (m_children.empty()) node.setValue(m_value);
    for (Metadata& child : m_children)
        node.addChild(std::move(child));
    m_children.clear();
    return node;
}

InfoElt::InfoElt(const std::string& name, TransformElt& parent, const ReadContext& context)
    : MetadataElt(name, static_cast<ContainerElt&>(parent), context), m_transform(*parent.getTransform())
{}

void InfoElt::end() { m_transform.getMetadata().setContent(takeNode()); }

} // namespace Color::Xml::Reader
