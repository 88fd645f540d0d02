#pragma once

#include "xml/rangeElt.h"

namespace Color::Xml::Reader {

/// minInValue, maxInValue, minOutValue, maxOutValue: one limit of a range. Of several numbers the last counts.
class RangeValueElt : public PlainElt
{
public:
    RangeValueElt(const std::string& name, RangeElt& parent, const ReadContext& context)
        : PlainElt(name, parent, context), m_range(parent)
    {}

    void setRawData(std::string_view text, int32_t line) override;

private:
    RangeElt& m_range;
};

} // namespace Color::Xml::Reader
