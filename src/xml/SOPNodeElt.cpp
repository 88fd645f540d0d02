#include "xml/SOPNodeElt.h"

#include "utils/exception.h"
#include "utils/text.h"

namespace Color::Xml::Reader {

void SOPNodeBaseElt::appendDescription(const std::string& text) { m_op.getDescriptions().push_back(text); }

void SOPNodeBaseElt::start(Attributes) {}

void SOPNodeBaseElt::end()
{
    const auto require = [&](bool isPresent, ErrorId failure) {
        if (!isPresent) raise(LogCategory::XML_READER, failure, getTypeName(), getCurrentLine(), getFileName());
    };
    require(m_hasSlope, ErrorIds::XML_SOP_SLOPE_REQUIRED);
    require(m_hasOffset, ErrorIds::XML_SOP_OFFSET_REQUIRED);
    require(m_hasPower, ErrorIds::XML_SOP_POWER_REQUIRED);
}

void SOPNodeBaseElt::setValues(const std::string& elementName, const CDLOp::Params& values)
{
    if (equalsIgnoreCase(elementName, "Slope")) {
        m_op.setSlope(values);
        m_hasSlope = true;
    } else if (equalsIgnoreCase(elementName, "Offset")) {
        m_op.setOffset(values);
        m_hasOffset = true;
    } else if (equalsIgnoreCase(elementName, "Power")) {
        m_op.setPower(values);
        m_hasPower = true;
    }
}

} // namespace Color::Xml::Reader
