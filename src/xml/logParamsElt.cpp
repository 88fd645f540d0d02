#include "xml/logParamsElt.h"

namespace Color::Xml::Reader {

void LogParamsElt::start(Attributes attributes)
{
    std::vector<Param> params = {{"gamma"}, {"refWhite"}, {"refBlack"}, {"highlight"}, {"shadow"}};
    readParams(attributes, params);
    const std::optional<std::size_t> channel = parseChannel(attributes, {"R", "G", "B"});
    const LogOp::Params values = requireParams(params, m_log.getStyleName());
    if (channel) {
        m_log.getTypedOp().setParams(*channel, values);
    } else {
        for (std::size_t i = 0; i < 3; ++i)
            m_log.getTypedOp().setParams(i, values);
    }
}

} // namespace Color::Xml::Reader
