#pragma once

#include "xml/preferencesElt.h"

namespace Color::Xml::Reader {

/// ReferenceTable: holds the aliases.
class ReferenceTableElt : public ContainerElt
{
public:
    ReferenceTableElt(const std::string& name, PreferencesElt& parent, const ReadContext& context)
        : ContainerElt(name, context), m_parent(parent)
    {}

    void start(Attributes) override {}
    void end() override {}
    std::string getIdentifier() const override { return getName(); }
    std::string getTypeName() const override { return m_parent.getTypeName(); }
    void appendDescription(const std::string&) override {}

    Preferences& getPreferences() const { return *m_parent.getPreferences(); }

private:
    PreferencesElt& m_parent;
};

} // namespace Color::Xml::Reader
