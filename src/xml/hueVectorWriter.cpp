#include "xml/hueVectorWriter.h"

#include "utils/numberText.h"

namespace Color::Xml::Writer {

void HueVectorWriter::writeContent() const
{
    const HueVectorOp& op = getOp();
    XmlFormatter::Attributes attributes = {{"style", HueVectorOp::getParameterStyleName(op.getParameterStyle())}};
    if (op.getParameterStyle() == HueVectorOp::PARAMETER_STYLE_CHROMA) {
        attributes.emplace_back("center", toSixDigits(op.getParameters().at(0)));
        attributes.emplace_back("width", toSixDigits(op.getParameters().at(1)));
        attributes.emplace_back("amount", toSixDigits(op.getParameters().at(2)));
    }
    getFormatter().writeEmptyTag("HueVecParams", attributes);
}

} // namespace Color::Xml::Writer
