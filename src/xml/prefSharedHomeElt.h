#pragma once

#include "xml/prefLeafElt.h"
#include "xml/preferencesElt.h"

namespace Color::Xml::Reader {

/// SharedHome: the directory of the transforms that a site shares.
class PrefSharedHomeElt : public PrefLeafElt
{
public:
    PrefSharedHomeElt(const std::string& name, PreferencesElt& parent, const ReadContext& context)
        : PrefLeafElt(name, parent, context), m_preferences(*parent.getPreferences())
    {}

    void start(Attributes attributes) override
    {
        m_preferences.setSharedHome(require(attributes, "dir", ErrorIds::PREFS_READER_DIR_EMPTY));
    }

private:
    Preferences& m_preferences;
};

} // namespace Color::Xml::Reader
