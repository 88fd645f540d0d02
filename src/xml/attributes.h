#pragma once

#include "utils/text.h"
#include "xml/expatParser.h"

namespace Color::Xml::Reader {

/// Calls visit(name, value) for each attribute in the order of the document, up to a null or empty name.
template <class Visit>
void forEachAttribute(Attributes attributes, Visit&& visit)
{
    for (; attributes && attributes[0] && *attributes[0]; attributes += 2)
        visit(attributes[0], orEmpty(attributes[1]));
}

/// Null where there is none; of several that differ in case alone the last counts.
inline const char* findAttribute(Attributes attributes, const char* wanted)
{
    const char* found = nullptr;
    forEachAttribute(attributes, [&](const char* name, const char* value) {
        if (equalsIgnoreCase(name, wanted)) found = value;
    });
    return found;
}

} // namespace Color::Xml::Reader
