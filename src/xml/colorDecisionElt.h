#pragma once

#include "xml/colorDecisionListElt.h"

namespace Color::Xml::Reader {

/// ColorDecision: a correction, and what it is for.
class ColorDecisionElt : public ComplexElt
{
public:
    ColorDecisionElt(const std::string& name, ColorDecisionListElt& parent, const ReadContext& context)
        : ComplexElt(name, parent, context), m_list(parent)
    {}

    void start(Attributes) override {}
    void end() override {}
    void appendDescription(const std::string& text) override { m_descriptions.push_back(text); }

    /// Those read so far, followed by those of the list: what a correction takes over when it starts.
    Descriptions getDescriptions() const;

private:
    ColorDecisionListElt& m_list;
    Descriptions m_descriptions;
};

} // namespace Color::Xml::Reader
