#include "xml/dynamicParamElt.h"

#include "transform/exposureContrastOp.h"
#include "utils/exception.h"
#include "xml/attributes.h"

namespace Color::Xml::Reader {

void DynamicParamElt::start(Attributes attributes)
{
    const char* param = findAttribute(attributes, "param");
    if (!param) return;
    auto* exposureContrast = dynamic_cast<ExposureContrastOp*>(&m_op);
    if (equalsIgnoreCase(param, "LOOK_SWITCH")) {
        m_op.getBypass()->makeDynamic();
    } else if (exposureContrast && equalsIgnoreCase(param, "EXPOSURE")) {
        exposureContrast->getExposure()->makeDynamic();
    } else if (exposureContrast && equalsIgnoreCase(param, "CONTRAST")) {
        exposureContrast->getContrast()->makeDynamic();
    } else {
        raise(LogCategory::XML_READER, ErrorIds::XML_INVALID_DYNAMIC_PARAMETER, param, getTypeName());
    }
}

} // namespace Color::Xml::Reader
