#include "xml/transformElt.h"

#include "utils/exception.h"
#include "utils/numberText.h"
#include "xml/attributes.h"

#include <boost/make_shared.hpp>
#include <optional>

namespace Color::Xml::Reader {

namespace {
constexpr float kDefaultVersion = 1.2f;
constexpr float kHighestVersion = 1.6f;
} // namespace

TransformElt::TransformElt(const std::string& name, const ReadContext& context)
    : ContainerElt(name, context), m_transform(boost::make_shared<Transform>()), m_version(kDefaultVersion)
{}

TransformElt::~TransformElt() = default;

void TransformElt::start(Attributes attributes)
{
    bool hasId = false;
    forEachAttribute(attributes, [&](const char* name, const char* value) {
        if (equalsIgnoreCase(name, "id")) {
            checkNotEmpty("Identifier", value);
            setId(value);
            hasId = true;
        } else if (equalsIgnoreCase(name, "name")) {
            checkNotEmpty("Name", value);
            m_transform->setName(value);
        } else if (equalsIgnoreCase(name, "inverseOf")) {
            checkNotEmpty("InverseOf", value);
            m_transform->setInverseOf(value);
        } else if (equalsIgnoreCase(name, "version")) {
            checkNotEmpty("Version", value);
            m_version = parseVersion(value);
        }
    });
    if (!hasId) {
        raise(LogCategory::XML_READER, ErrorIds::XML_REQUIRED_ATTRIBUTE_MISSING, "Identifier", getTypeName(),
              getCurrentLine(), getFileName());
    }
}

void TransformElt::end() { m_transform->getOpList().validate(); }

void TransformElt::appendDescription(const std::string& text) { m_transform->getDescriptions().push_back(text); }

void TransformElt::setId(const std::string& id)
{
    m_transform->setId(id);
    // An id of other characters alone leaves no unique id.
    if (!keepIdentifierCharacters(id).empty()) m_transform->setUniqueId(id);
}

void TransformElt::checkNotEmpty(const char* word, const char* value) const
{
    if (*value) return;
    raise(LogCategory::XML_READER, ErrorIds::XML_REQUIRED_ATTRIBUTE_EMPTY, word, getTypeName(), getCurrentLine(),
          getFileName());
}

float TransformElt::parseVersion(const char* text) const
{
    const std::optional<float> version = readLeadingFloat(text);
    if (!version) {
        raise(LogCategory::XML_READER, ErrorIds::XML_INVALID_VERSION, text, getTypeName(), getCurrentLine(),
              getFileName());
    }
    if (*version > kHighestVersion) {
        raise(LogCategory::XML_READER, ErrorIds::XML_UNSUPPORTED_VERSION, text, getTypeName(), getCurrentLine(),
              getFileName());
    }
    return *version;
}

} // namespace Color::Xml::Reader
