#include "xml/hueVectorParamsElt.h"

#include "utils/exception.h"
#include "xml/attributes.h"

namespace Color::Xml::Reader {

void HueVectorParamsElt::start(Attributes attributes)
{
    const char* style = findAttribute(attributes, "style");
    if (!style) {
        raise(LogCategory::XML_READER, ErrorIds::XML_REQUIRED_ATTRIBUTE_MISSING, "hue vector parameter style",
              getTypeName(), getCurrentLine(), getFileName());
    }
    HueVectorOp& op = m_hueVector.getTypedOp();
    op.setParameterStyle(HueVectorOp::parameterStyleNamed(style));
    // The other styles are known words that cannot be rendered.
    if (op.getParameterStyle() != HueVectorOp::PARAMETER_STYLE_CHROMA) {
        raise(LogCategory::TRANSFORM_HUE_VECTOR, ErrorIds::HUE_VECTOR_UNRECOGNIZED_STYLE,
              HueVectorOp::getParameterStyleName(op.getParameterStyle()));
    }
    std::vector<Param> params = {{"center"}, {"width"}, {"amount"}};
    readParams(attributes, params);
    op.setParameters(requireParams(params, HueVectorOp::getParameterStyleName(op.getParameterStyle())));
}

} // namespace Color::Xml::Reader
