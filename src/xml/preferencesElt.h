#pragma once

#include "utils/preferences.h"
#include "xml/element.h"

namespace Color::Xml::Reader {

/// MorvaneConfig, the root: makes the preferences that the elements below it fill.
class PreferencesElt : public ContainerElt
{
public:
    /// The version is that of the preferences, which is not the one in the file.
    PreferencesElt(const std::string& name, const std::string& version, const ReadContext& context);
    ~PreferencesElt() override;

    void start(Attributes attributes) override;
    void end() override {}
    std::string getIdentifier() const override { return getName(); }
    std::string getTypeName() const override { return getName(); }
    void appendDescription(const std::string&) override {}

    const PreferencesPtr& getPreferences() const { return m_preferences; }

private:
    PreferencesPtr m_preferences;
};

} // namespace Color::Xml::Reader
