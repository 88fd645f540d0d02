#pragma once

#include "transform/rangeOp.h"
#include "xml/opElt.h"

namespace Color::Xml::Reader {

/// Range: its limits stand in child elements.
class RangeElt : public TypedOpElt<RangeOp>
{
public:
    RangeElt(const std::string& name, TransformElt& parent, const ReadContext& context);

    void end() override;

    /// Stores the limit that an element of this name holds.
    void setLimit(const std::string& elementName, double value);
};

} // namespace Color::Xml::Reader
