#pragma once

#include "xml/exposureContrastElt.h"
#include "xml/paramsElt.h"

namespace Color::Xml::Reader {

/// ECParams: exposure, contrast and pivot.
class ECParamsElt : public ParamsElt
{
public:
    ECParamsElt(const std::string& name, ExposureContrastElt& parent, const ReadContext& context)
        : ParamsElt(name, parent, context), m_exposureContrast(parent)
    {}

    void start(Attributes attributes) override;

private:
    ExposureContrastElt& m_exposureContrast;
};

} // namespace Color::Xml::Reader
