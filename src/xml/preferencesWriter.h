#pragma once

#include "utils/preferences.h"
#include "xml/elementWriter.h"

namespace Color::Xml::Writer {

/// Preferences as the element MorvaneConfig.
class PreferencesWriter : public ElementWriter
{
public:
    /// The preferences must outlive the writer.
    PreferencesWriter(XmlFormatter& formatter, const Preferences& preferences)
        : ElementWriter(formatter), m_preferences(preferences)
    {}

    void write() const override;

private:
    void writeReferenceTable() const;

    const Preferences& m_preferences;
};

} // namespace Color::Xml::Writer
