#pragma once

#include "transform/ditherOp.h"
#include "xml/opElt.h"

namespace Color::Xml::Reader {

/// Dither: the depth to dither to is an attribute.
class DitherElt : public TypedOpElt<DitherOp>
{
public:
    DitherElt(const std::string& name, TransformElt& parent, const ReadContext& context)
        : TypedOpElt(name, parent, context, BIT_DEPTH_32f, BIT_DEPTH_32f, BIT_DEPTH_UNKNOWN)
    {}

    void start(Attributes attributes) override;
};

} // namespace Color::Xml::Reader
