#pragma once

#include "transform/CDLOp.h"
#include "xml/styledOpElt.h"

namespace Color::Xml::Reader {

/// ASC_CDL: its values stand in SOPNode and SatNode.
class CDLElt : public StyledOpElt<CDLOp>
{
public:
    CDLElt(const std::string& name, TransformElt& parent, const ReadContext& context)
        : StyledOpElt(name, parent, context, BIT_DEPTH_32f, BIT_DEPTH_32f)
    {}
};

} // namespace Color::Xml::Reader
