#pragma once

#include "transform/ditherOp.h"
#include "xml/opWriter.h"

namespace Color::Xml::Writer {

/// Dither.
class DitherWriter : public TypedOpWriter<DitherOp>
{
public:
    using TypedOpWriter::TypedOpWriter;

    const char* getTagName() const override { return "Dither"; }

    void getAttributes(XmlFormatter::Attributes& attributes) const override
    {
        TypedOpWriter::getAttributes(attributes);
        attributes.emplace_back("ditherBitDepth", getBitDepthName(getOp().getDitherBitDepth()));
    }
};

} // namespace Color::Xml::Writer
