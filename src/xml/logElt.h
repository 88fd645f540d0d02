#pragma once

#include "transform/logOp.h"
#include "xml/styledOpElt.h"

namespace Color::Xml::Reader {

/// Log: the styles logToLin and linToLog have their parameters in LogParams.
class LogElt : public StyledOpElt<LogOp>
{
public:
    LogElt(const std::string& name, TransformElt& parent, const ReadContext& context)
        : StyledOpElt(name, parent, context, BIT_DEPTH_32f, BIT_DEPTH_32f)
    {}

    bool takesParams() { return LogOp::hasParams(getTypedOp().getStyle()); }
};

} // namespace Color::Xml::Reader
