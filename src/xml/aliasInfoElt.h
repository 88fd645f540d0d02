#pragma once

#include "xml/prefLeafElt.h"
#include "xml/referenceTableElt.h"

namespace Color::Xml::Reader {

/// Ref: an alias, which takes the place of a former one of its name.
class AliasInfoElt : public PrefLeafElt
{
public:
    AliasInfoElt(const std::string& name, ReferenceTableElt& parent, const ReadContext& context)
        : PrefLeafElt(name, parent, context), m_preferences(parent.getPreferences())
    {}

    void start(Attributes attributes) override;

private:
    Preferences& m_preferences;
};

} // namespace Color::Xml::Reader
