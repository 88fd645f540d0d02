#pragma once

#include "transform/metadata.h"
#include "xml/transformElt.h"

#include <string>
#include <vector>

namespace Color::Xml::Reader {

/// A node of the metadata tree below Info, whatever its name is. It ignores attributes.
class MetadataElt : public ComplexElt
{
public:
    MetadataElt(const std::string& name, MetadataElt& parent, const ReadContext& context);
    ~MetadataElt() override;

    void start(Attributes attributes) override;
    /// Adds this node to the parent.
    void end() override;

    void appendValue(std::string_view text) { m_value += text; }

protected:
    MetadataElt(const std::string& name, ContainerElt& parent, const ReadContext& context);

    /// The node with all that was read into it. One with children is a container, and has no value.
    Metadata takeNode();

private:
    MetadataElt* m_parentNode = nullptr;
    std::string m_value;
    std::vector<Metadata> m_children;
};

/// Info: the root of the metadata tree. It takes the place of one that was read before.
class InfoElt : public MetadataElt
{
public:
    InfoElt(const std::string& name, TransformElt& parent, const ReadContext& context);

    void end() override;

private:
    Transform& m_transform;
};

} // namespace Color::Xml::Reader
