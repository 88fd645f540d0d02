#include "xml/numbersElt.h"

#include "utils/exception.h"
#include "utils/numberText.h"
#include "utils/text.h"

namespace Color::Xml::Reader {

void NumbersElt::setRawData(std::string_view text, int32_t)
{
    // A blank keeps numbers of different lines apart.
    m_text.append(text).append(" ");
}

std::vector<double> NumbersElt::parseNumbers() const
{
    std::vector<double> numbers;
    const std::string_view text = trimmed(m_text);
    std::string_view rest = text;
    try {
        for (std::string_view token = takeToken(rest); !token.empty(); token = takeToken(rest)) {
            numbers.push_back(readDoubleToken(token));
        }
    } catch (const Exception&) {
        raise(LogCategory::XML_READER, ErrorIds::XML_VALUES_ILLEGAL, text, getTypeName(), getCurrentLine(),
              getFileName());
    }
    return numbers;
}

} // namespace Color::Xml::Reader
