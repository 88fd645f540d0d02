#pragma once

#include "xml/element.h"

namespace Color::Xml::Reader {

/// Each chunk of its text is one description of the parent.
class DescriptionElt : public PlainElt
{
public:
    DescriptionElt(const std::string& name, ContainerElt& parent, const ReadContext& context)
        : PlainElt(name, parent, context)
    {}

    void setRawData(std::string_view text, int32_t line) override;
};

} // namespace Color::Xml::Reader
