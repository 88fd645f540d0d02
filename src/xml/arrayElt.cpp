#include "xml/arrayElt.h"

#include "utils/exception.h"
#include "utils/numberText.h"
#include "xml/attributes.h"

namespace Color::Xml::Reader {

namespace {

/// Empty when a token is no whole number.
ArrayMgt::Dimensions parseDimensions(std::string_view text)
{
    ArrayMgt::Dimensions dimensions;
    try {
        for (std::string_view token = takeToken(text); !token.empty(); token = takeToken(text)) {
            dimensions.push_back(readIntegerToken(token));
        }
    } catch (const Exception&) {
        dimensions.clear();
    }
    return dimensions;
}

} // namespace

ArrayElt::ArrayElt(const std::string& name, ContainerElt& parent, ArrayMgt& owner, const ReadContext& context)
    : PlainElt(name, parent, context), m_owner(owner)
{}

void ArrayElt::start(Attributes attributes)
{
    const char* text = findAttribute(attributes, "dim");
    if (!text) {
        raise(LogCategory::XML_READER, ErrorIds::XML_REQUIRED_ATTRIBUTE_MISSING, "dim", getTypeName(), getCurrentLine(),
              getFileName());
    }
    const ArrayMgt::Dimensions dimensions = parseDimensions(text);
    if (dimensions.size() > 1) m_array = m_owner.updateDimension(dimensions);
    if (!m_array) {
        raise(LogCategory::XML_READER, ErrorIds::XML_DIMENSIONS_ILLEGAL, getTypeName(), text, getCurrentLine(),
              getFileName());
    }
}

void ArrayElt::setRawData(std::string_view text, int32_t line)
{
    std::string_view rest = text;
    for (std::string_view token = takeToken(rest); !token.empty(); token = takeToken(rest)) {
        float value = 0.f;
        try {
            value = readFloatToken(token);
        } catch (const Exception&) {
            raise(LogCategory::XML_READER, ErrorIds::XML_VALUES_ILLEGAL, text, getTypeName(), line, getFileName());
        }
        if (m_array->values.size() >= m_array->capacity) {
            raise(LogCategory::XML_READER, ErrorIds::XML_ARRAY_TOO_MANY_VALUES, m_array->sizeText, getTypeName(), line,
                  getFileName());
        }
        m_array->append(value);
    }
}

void ArrayElt::end() { m_owner.finalize(m_array->values.size()); }

} // namespace Color::Xml::Reader
