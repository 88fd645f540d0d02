#pragma once

#include "xml/transformElt.h"

#include <string>

namespace Color::Xml::Reader {

/// A descriptor of the transform. Its text is appended to what was read before.
class DescriptorElt : public PlainElt
{
public:
    void setRawData(std::string_view text, int32_t line) override;

protected:
    DescriptorElt(const std::string& name, TransformElt& parent, const ReadContext& context)
        : PlainElt(name, parent, context), m_transform(*parent.getTransform())
    {}

    Transform& m_transform;
    std::string m_text;
};

class InputDescriptorElt : public DescriptorElt
{
public:
    InputDescriptorElt(const std::string& name, TransformElt& parent, const ReadContext& context)
        : DescriptorElt(name, parent, context)
    {}

    void end() override;
};

class OutputDescriptorElt : public DescriptorElt
{
public:
    OutputDescriptorElt(const std::string& name, TransformElt& parent, const ReadContext& context)
        : DescriptorElt(name, parent, context)
    {}

    void end() override;
};

} // namespace Color::Xml::Reader
