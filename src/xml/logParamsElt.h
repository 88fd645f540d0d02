#pragma once

#include "xml/logElt.h"
#include "xml/paramsElt.h"

namespace Color::Xml::Reader {

/// LogParams: the parameters of one channel, or of all three.
class LogParamsElt : public ParamsElt
{
public:
    LogParamsElt(const std::string& name, LogElt& parent, const ReadContext& context)
        : ParamsElt(name, parent, context), m_log(parent)
    {}

    void start(Attributes attributes) override;

private:
    LogElt& m_log;
};

} // namespace Color::Xml::Reader
