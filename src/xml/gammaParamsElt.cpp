#include "xml/gammaParamsElt.h"

#include "utils/exception.h"

namespace Color::Xml::Reader {

void GammaParamsElt::start(Attributes attributes)
{
    std::vector<Param> params = {{"gamma"}, {"offset"}};
    readParams(attributes, params);
    const std::optional<std::size_t> channel = parseGammaChannel(attributes);

    GammaOp& op = m_gamma.getTypedOp();
    const bool isBasic = op.getStyle() == GammaOp::STYLE_BASIC_FWD || op.getStyle() == GammaOp::STYLE_BASIC_REV;
    const Param offset = params.back();
    if (isBasic) params.pop_back();
    const GammaOp::Params values = requireParams(params, m_gamma.getStyleName());
    if (isBasic && offset.value) {
        raise(LogCategory::XML_READER, ErrorIds::XML_PARAM_NOT_ALLOWED, offset.name, m_gamma.getStyleName(),
              getTypeName(), getCurrentLine(), getFileName());
    }
    if (channel) {
        op.setParams(*channel, values);
    } else {
        for (std::size_t i = 0; i < 3; ++i)
            op.setParams(i, values);
    }
}

std::optional<std::size_t> GammaParamsElt::parseGammaChannel(Attributes attributes) const
{
    return parseChannel(attributes, {"R", "G", "B"});
}

std::optional<std::size_t> GammaParamsElt_1_5::parseGammaChannel(Attributes attributes) const
{
    return parseChannel(attributes, {"R", "G", "B", "A"});
}

} // namespace Color::Xml::Reader
