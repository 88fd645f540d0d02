#include "xml/aliasInfoElt.h"

namespace Color::Xml::Reader {

void AliasInfoElt::start(Attributes attributes)
{
    const char* alias = require(attributes, "alias", ErrorIds::PREFS_READER_ALIAS_EMPTY);
    const char* path = require(attributes, "path", ErrorIds::PREFS_READER_PATH_EMPTY);
    m_preferences.setAlias(alias, path, readBasePath(attributes));
}

BasePath AliasInfoElt::readBasePath(Attributes attributes) const
{
    const char* text = orEmpty(findAttribute(attributes, "basePath"));
    const BasePath basePath = getBasePath(text);
    if (basePath == BASE_PATH_NONE && *text) {
        logFailure(LogCategory::XML_PREFS_READER, ErrorIds::XML_ATTRIBUTE_VALUE_ILLEGAL, "basePath", text,
                   getTypeName(), getCurrentLine(), getFileName());
    }
    return basePath;
}

} // namespace Color::Xml::Reader
