#pragma once

#include "transform/referenceOp.h"
#include "xml/opWriter.h"

namespace Color::Xml::Writer {

/// Reference, whether it is resolved or not.
class ReferenceWriter : public TypedOpWriter<ReferenceOp>
{
public:
    using TypedOpWriter::TypedOpWriter;

    const char* getTagName() const override { return "Reference"; }
    void getAttributes(XmlFormatter::Attributes& attributes) const override;
};

} // namespace Color::Xml::Writer
