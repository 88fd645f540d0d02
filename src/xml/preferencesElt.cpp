#include "xml/preferencesElt.h"

#include "utils/exception.h"
#include "xml/attributes.h"

#include <boost/make_shared.hpp>

namespace Color::Xml::Reader {

PreferencesElt::PreferencesElt(const std::string& name, const std::string& version, const ReadContext& context)
    : ContainerElt(name, context), m_preferences(boost::make_shared<Preferences>(version))
{}

PreferencesElt::~PreferencesElt() = default;

void PreferencesElt::start(Attributes attributes)
{
    const char* version = findAttribute(attributes, "version");
    if (!version || *version) return;
    raise(LogCategory::XML_PREFS_READER, ErrorIds::PREFS_READER_VERSION_EMPTY, getTypeName(), getCurrentLine(),
          getFileName());
}

} // namespace Color::Xml::Reader
