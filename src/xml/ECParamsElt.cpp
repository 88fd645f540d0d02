#include "xml/ECParamsElt.h"

namespace Color::Xml::Reader {

void ECParamsElt::start(Attributes attributes)
{
    std::vector<Param> params = {{"exposure"}, {"contrast"}, {"pivot"}};
    readParams(attributes, params);
    const std::vector<double> values = requireParams(params, m_exposureContrast.getStyleName());
    ExposureContrastOp& op = m_exposureContrast.getTypedOp();
    op.getExposure()->set(values[0]);
    op.getContrast()->set(values[1]);
    op.setPivot(values[2]);
}

} // namespace Color::Xml::Reader
