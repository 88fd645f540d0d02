#include "xml/rangeValueElt.h"

#include "utils/exception.h"
#include "utils/numberText.h"
#include "utils/text.h"

#include <vector>

namespace Color::Xml::Reader {

void RangeValueElt::setRawData(std::string_view text, int32_t line)
{
    std::vector<float> values;
    try {
        std::string_view rest = text;
        for (std::string_view token = takeToken(rest); !token.empty(); token = takeToken(rest)) {
            values.push_back(readFloatToken(token));
        }
    } catch (const Exception&) {
        raise(LogCategory::XML_READER, ErrorIds::XML_VALUES_ILLEGAL, text, getTypeName(), line, getFileName());
    }
    if (values.size() != 1) {
        raise(LogCategory::XML_READER, ErrorIds::XML_RANGE_NON_SINGLE_VALUE, getTypeName(), line, getFileName());
    }
    m_range.setLimit(getName(), static_cast<double>(values.front()));
}

} // namespace Color::Xml::Reader
