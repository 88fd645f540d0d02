#pragma once

#include "xml/colorCorrectionElt.h"
#include "xml/satNodeElt.h"

namespace Color::Xml::Reader {

/// SatNode in a ColorCorrection.
class SatNodeCCElt : public SatNodeBaseElt
{
public:
    SatNodeCCElt(const std::string& name, ColorCorrectionElt& parent, const ReadContext& context)
        : SatNodeBaseElt(name, parent, parent.getOp(), context)
    {}
};

} // namespace Color::Xml::Reader
