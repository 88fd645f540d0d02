#pragma once

#include "transform/op.h"
#include "xml/element.h"

namespace Color::Xml::Reader {

/// The root of a file that holds several colour corrections.
class CorrectionRootElt : public ContainerElt
{
public:
    CorrectionRootElt(const std::string& name, const ReadContext& context) : ContainerElt(name, context) {}

    void start(Attributes) override {}
    void end() override {}
    std::string getIdentifier() const override { return getName(); }
    std::string getTypeName() const override { return getName(); }
    void appendDescription(const std::string& text) override { m_descriptions.push_back(text); }

    /// Those read so far: what a correction takes over when it starts.
    const Descriptions& getDescriptions() const { return m_descriptions; }

private:
    Descriptions m_descriptions;
};

} // namespace Color::Xml::Reader
