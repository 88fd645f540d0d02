#pragma once

#include "xml/prefLeafElt.h"
#include "xml/preferencesElt.h"

namespace Color::Xml::Reader {

/// AutoConfigure: can switch on that the profile of the monitor is asked for.
class AutoConfigureElt : public PrefLeafElt
{
public:
    AutoConfigureElt(const std::string& name, PreferencesElt& parent, const ReadContext& context)
        : PrefLeafElt(name, parent, context), m_preferences(*parent.getPreferences())
    {}

    /// Any other value than "true" says nothing.
    void start(Attributes attributes) override
    {
        if (equalsIgnoreCase(orEmpty(findAttribute(attributes, "graphicsMonitor")), "true")) {
            m_preferences.setAutoConfigureMonitorProfile(true);
        }
    }

private:
    Preferences& m_preferences;
};

} // namespace Color::Xml::Reader
