#include "xml/referenceElt.h"

#include "utils/exception.h"
#include "xml/attributes.h"
#include "xml/basePathAttribute.h"

namespace Color::Xml::Reader {

namespace {
constexpr const char* kAliasWord = "alias";
constexpr const char* kPathWord = "path";
constexpr const char* kBasePathWord = "basePath";
} // namespace

void ReferenceElt::start(Attributes attributes)
{
    TypedOpElt::start(attributes);
    const std::string alias = orEmpty(findAttribute(attributes, kAliasWord));
    const std::string path = orEmpty(findAttribute(attributes, kPathWord));
    const BasePath basePath =
        readBasePath(*this, LogCategory::XML_READER, orEmpty(findAttribute(attributes, kBasePathWord)));

    if (!alias.empty()) {
        if (!path.empty()) raiseNotWithAlias(kPathWord);
        if (basePath != BASE_PATH_NONE) raiseNotWithAlias(kBasePathWord);
        getTypedOp().setAlias(alias);
    } else if (!path.empty()) {
        getTypedOp().setPath(path, basePath);
    } else {
        raiseMissing(kPathWord);
    }
}

void ReferenceElt::raiseNotWithAlias(const char* word) const
{
    raise(LogCategory::XML_READER, ErrorIds::XML_ATTRIBUTE_NOT_SUPPORTED_WITH_ALIAS, word, getTypeName(),
          getCurrentLine(), getFileName());
}

} // namespace Color::Xml::Reader
