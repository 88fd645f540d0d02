#pragma once

#include "utils/exception.h"
#include "xml/element.h"

namespace Color::Xml::Reader {

/// The base path of this name. None for an empty name; an unknown one is logged in the category, and none too.
inline BasePath readBasePath(const Element& element, const char* category, const char* name)
{
    const BasePath basePath = getBasePath(name);
    if (basePath == BASE_PATH_NONE && *name) {
        logFailure(category, ErrorIds::XML_ATTRIBUTE_VALUE_ILLEGAL, "basePath", name, element.getTypeName(),
                   element.getCurrentLine(), element.getFileName());
    }
    return basePath;
}

} // namespace Color::Xml::Reader
