#pragma once

#include "transform/exposureContrastOp.h"
#include "xml/styledOpElt.h"

namespace Color::Xml::Reader {

/// ExposureContrast: its values stand in ECParams.
class ExposureContrastElt : public StyledOpElt<ExposureContrastOp>
{
public:
    ExposureContrastElt(const std::string& name, TransformElt& parent, const ReadContext& context)
        : StyledOpElt(name, parent, context, BIT_DEPTH_32f, BIT_DEPTH_32f)
    {}
};

} // namespace Color::Xml::Reader
