#include "xml/xmlPreferencesReader.h"

#include "utils/exception.h"
#include "utils/text.h"
#include "xml/aliasInfoElt.h"
#include "xml/autoConfigureElt.h"
#include "xml/elementReader.h"
#include "xml/prefSharedHomeElt.h"

namespace Color {

using namespace Xml::Reader;

class XMLPreferencesReader::Impl : public ElementReader
{
public:
    explicit Impl(const std::string& version) : m_version(version) {}

    void reset() override
    {
        m_preferences.reset();
        ElementReader::reset();
    }

    void checkHasRoot() const
    {
        if (m_preferences) return;
        raise(LogCategory::XML_PREFS_READER, ErrorIds::PREFS_READER_NOT_LOADED, getContext().getShownFileName());
    }

    const PreferencesPtr& getPreferences() const { return m_preferences; }

protected:
    void pushElement(const std::string& name) override;

private:
    /// What may not stand where it does fails, inside an element that is not known too.
    [[noreturn]] void refuse(const ErrorSite& failure) const
    {
        raise(LogCategory::XML_PREFS_READER, failure, getContext().line, getContext().getShownFileName());
    }

    /// The top of the stack. Throws the given failure when it is no Elt.
    template <class Elt>
    Elt& requireParent(const ErrorSite& failure) const
    {
        auto* parent = dynamic_cast<Elt*>(getTop());
        if (!parent) refuse(failure);
        return *parent;
    }

    void pushRoot(const std::string& name);
    void pushSharedHome(const std::string& name);

    std::string m_version;
    PreferencesPtr m_preferences; ///< null until MorvaneConfig starts
};

void XMLPreferencesReader::Impl::pushElement(const std::string& name)
{
    const ReadContext& context = getContext();
    if (equalsIgnoreCase(name, "MorvaneConfig")) {
        pushRoot(name);
    } else if (equalsIgnoreCase(name, "SharedHome")) {
        pushSharedHome(name);
    } else if (equalsIgnoreCase(name, "ReferenceTable")) {
        auto& parent = requireParent<PreferencesElt>(ErrorIds::PREFS_READER_TABLE_OUTSIDE_CONFIG);
        push(std::make_unique<ReferenceTableElt>(name, parent, context));
    } else if (equalsIgnoreCase(name, "Ref")) {
        auto& parent = requireParent<ReferenceTableElt>(ErrorIds::PREFS_READER_ENTRY_OUTSIDE_TABLE);
        push(std::make_unique<AliasInfoElt>(name, parent, context));
    } else if (equalsIgnoreCase(name, "AutoConfigure")) {
        auto& parent = requireParent<PreferencesElt>(ErrorIds::PREFS_READER_AUTO_CONFIGURE_OUTSIDE_CONFIG);
        push(std::make_unique<AutoConfigureElt>(name, parent, context));
    } else {
        pushDummy(name, ": Unknown element");
    }
}

void XMLPreferencesReader::Impl::pushRoot(const std::string& name)
{
    if (m_preferences) refuse(ErrorIds::PREFS_READER_CONFIG_REPEATED);
    if (getTop()) refuse(ErrorIds::PREFS_READER_CONFIG_NOT_FIRST);
    auto element = std::make_unique<PreferencesElt>(name, m_version, getContext());
    m_preferences = element->getPreferences();
    push(std::move(element));
}

void XMLPreferencesReader::Impl::pushSharedHome(const std::string& name)
{
    auto& parent = requireParent<PreferencesElt>(ErrorIds::PREFS_READER_SHARED_PATH_OUTSIDE_CONFIG);
    if (!m_preferences->getSharedHome().empty()) refuse(ErrorIds::PREFS_READER_SHARED_HOME_REPEATED);
    push(std::make_unique<PrefSharedHomeElt>(name, parent, getContext()));
}

XMLPreferencesReader::XMLPreferencesReader(const std::string& version) : m_impl(std::make_unique<Impl>(version)) {}

XMLPreferencesReader::~XMLPreferencesReader() = default;

template <class Body>
void XMLPreferencesReader::read(Body&& body)
{
    m_impl->attempt([&] {
        body();
        m_impl->checkHasRoot();
    });
}

void XMLPreferencesReader::readFile(const std::string& fileName)
{
    read([&] { m_impl->readFile(fileName); });
}

void XMLPreferencesReader::readStream(std::istream& stream, const std::string& fileName)
{
    read([&] { m_impl->readStream(stream, fileName); });
}

PreferencesPtr XMLPreferencesReader::getPreferences() const { return m_impl->getPreferences(); }

} // namespace Color
