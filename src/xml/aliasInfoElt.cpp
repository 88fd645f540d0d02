#include "xml/aliasInfoElt.h"

#include "xml/basePathAttribute.h"

namespace Color::Xml::Reader {

void AliasInfoElt::start(Attributes attributes)
{
    const char* alias = require(attributes, "alias", ErrorIds::PREFS_READER_ALIAS_EMPTY);
    const char* path = require(attributes, "path", ErrorIds::PREFS_READER_PATH_EMPTY);
    const char* basePath = orEmpty(findAttribute(attributes, "basePath"));
    m_preferences.setAlias(alias, path, readBasePath(*this, LogCategory::XML_PREFS_READER, basePath));
}

} // namespace Color::Xml::Reader
