#pragma once

#include "utils/exception.h"
#include "xml/attributes.h"
#include "xml/element.h"

namespace Color::Xml::Reader {

/// An element of the preferences that says all it has to say in its attributes.
class PrefLeafElt : public PlainElt
{
public:
    void setRawData(std::string_view, int32_t) override {}

protected:
    using PlainElt::PlainElt;

    /// Throws the given failure when the attribute is missing or empty.
    const char* require(Attributes attributes, const char* name, const ErrorSite& failure) const
    {
        const char* value = orEmpty(findAttribute(attributes, name));
        if (!*value) {
            raise(LogCategory::XML_PREFS_READER, failure, getTypeName(), getCurrentLine(), getFileName());
        }
        return value;
    }
};

} // namespace Color::Xml::Reader
