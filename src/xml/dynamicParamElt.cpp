#include "xml/dynamicParamElt.h"

#include "utils/exception.h"
#include "xml/attributes.h"

namespace Color::Xml::Reader {

void DynamicParamElt::start(Attributes attributes)
{
    const char* param = findAttribute(attributes, "param");
    if (!param) return;
    if (!equalsIgnoreCase(param, "LOOK_SWITCH")) {
        raise(LogCategory::XML_READER, ErrorIds::XML_INVALID_DYNAMIC_PARAMETER, param, getTypeName());
    }
    m_op.getBypass()->makeDynamic();
}

} // namespace Color::Xml::Reader
