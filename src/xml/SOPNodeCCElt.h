#pragma once

#include "xml/SOPNodeElt.h"
#include "xml/colorCorrectionElt.h"

namespace Color::Xml::Reader {

/// SOPNode in a ColorCorrection.
class SOPNodeCCElt : public SOPNodeBaseElt
{
public:
    SOPNodeCCElt(const std::string& name, ColorCorrectionElt& parent, const ReadContext& context)
        : SOPNodeBaseElt(name, parent, parent.getOp(), context)
    {}
};

} // namespace Color::Xml::Reader
