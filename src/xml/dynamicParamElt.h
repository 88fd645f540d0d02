#pragma once

#include "xml/opElt.h"

namespace Color::Xml::Reader {

/// DynamicParameter: names a property of the op that the host may change after finalize.
class DynamicParamElt : public PlainElt
{
public:
    DynamicParamElt(const std::string& name, OpElt& parent, const ReadContext& context)
        : PlainElt(name, parent, context), m_op(parent.getOp())
    {}

    void start(Attributes attributes) override;
    void setRawData(std::string_view, int32_t) override {}

private:
    Op& m_op;
};

} // namespace Color::Xml::Reader
