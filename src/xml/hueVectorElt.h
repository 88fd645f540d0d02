#pragma once

#include "transform/hueVectorOp.h"
#include "xml/styledOpElt.h"

namespace Color::Xml::Reader {

/// HueVector: its parameters stand in HueVecParams.
class HueVectorElt : public StyledOpElt<HueVectorOp>
{
public:
    HueVectorElt(const std::string& name, TransformElt& parent, const ReadContext& context)
        : StyledOpElt(name, parent, context, BIT_DEPTH_32f, BIT_DEPTH_32f, HueVectorOp::STYLE_YCH_FWD,
                      HueVectorOp::Params())
    {}
};

} // namespace Color::Xml::Reader
