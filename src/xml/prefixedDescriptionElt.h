#pragma once

#include "xml/descriptionElt.h"

namespace Color::Xml::Reader {

/// A description that ends up in an op far from where it stood: a prefix tells where that was.
class PrefixedDescriptionElt : public DescriptionElt
{
public:
    PrefixedDescriptionElt(const std::string& name, ContainerElt& parent, const ReadContext& context);

    void setRawData(std::string_view text, int32_t line) override;

private:
    std::string m_prefix;
};

} // namespace Color::Xml::Reader
