#pragma once

#include "transform/gamutMapOp.h"
#include "xml/styledOpElt.h"

namespace Color::Xml::Reader {

/// GamutMap: a style and nothing else.
class GamutMapElt : public StyledOpElt<GamutMapOp>
{
public:
    GamutMapElt(const std::string& name, TransformElt& parent, const ReadContext& context)
        : StyledOpElt(name, parent, context, BIT_DEPTH_32f, BIT_DEPTH_32f, GamutMapOp::STYLE_NONE)
    {}
};

} // namespace Color::Xml::Reader
