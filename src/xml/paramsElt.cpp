#include "xml/paramsElt.h"

#include "utils/exception.h"
#include "utils/numberText.h"
#include "xml/attributes.h"

namespace Color::Xml::Reader {

void ParamsElt::readParams(Attributes attributes, std::vector<Param>& params)
{
    forEachAttribute(attributes, [&](const char* name, const char* value) {
        for (Param& param : params) {
            if (equalsIgnoreCase(name, param.name)) param.value = readDoubleToken(value);
        }
    });
}

std::vector<double> ParamsElt::requireParams(const std::vector<Param>& params, const std::string& styleName) const
{
    std::vector<double> values;
    for (const Param& param : params) {
        if (!param.value) {
            raise(LogCategory::XML_READER, ErrorIds::XML_PARAM_REQUIRED, param.name, styleName, getTypeName(),
                  getCurrentLine(), getFileName());
        }
        values.push_back(*param.value);
    }
    return values;
}

std::optional<std::size_t> ParamsElt::parseChannel(Attributes attributes,
                                                   std::initializer_list<const char*> names) const
{
    const char* text = findAttribute(attributes, "channel");
    if (!text) return std::nullopt;
    std::size_t channel = 0;
    for (const char* name : names) {
        if (equalsIgnoreCase(text, name)) return channel;
        ++channel;
    }
    raise(LogCategory::XML_READER, ErrorIds::XML_CHANNEL_ILLEGAL, getTypeName(), text, getCurrentLine(), getFileName());
}

} // namespace Color::Xml::Reader
