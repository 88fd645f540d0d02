#include "xml/preferencesWriter.h"

namespace Color::Xml::Writer {

void PreferencesWriter::write() const
{
    XmlFormatter& formatter = getFormatter();
    formatter.writeStartTag("MorvaneConfig", {{"version", "1.0"}});
    {
        const XmlFormatter::IndentScope indent(formatter);
        const bool autoConfigure = m_preferences.getAutoConfigureMonitorProfile();
        formatter.writeEmptyTag("AutoConfigure", {{"graphicsMonitor", autoConfigure ? "true" : "false"}});
        // A reader refuses an empty directory.
        const std::string& sharedHome = m_preferences.getSharedHome();
        if (!sharedHome.empty()) formatter.writeEmptyTag("SharedHome", {{"dir", sharedHome}});
        if (!m_preferences.getAliases().empty()) writeReferenceTable();
    }
    formatter.writeEndTag("MorvaneConfig");
}

void PreferencesWriter::writeReferenceTable() const
{
    XmlFormatter& formatter = getFormatter();
    formatter.writeStartTag("ReferenceTable");
    {
        const XmlFormatter::IndentScope indent(formatter);
        for (const auto& [alias, entry] : m_preferences.getAliases()) {
            XmlFormatter::Attributes attributes = {{"alias", alias}, {"path", entry.path}};
            if (entry.basePath != BASE_PATH_NONE) {
                attributes.emplace_back("basePath", getBasePathName(entry.basePath));
            }
            formatter.writeEmptyTag("Ref", attributes);
        }
    }
    formatter.writeEndTag("ReferenceTable");
}

} // namespace Color::Xml::Writer
