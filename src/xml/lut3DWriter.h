#pragma once

#include "transform/lut3DOp.h"
#include "xml/opWriter.h"

namespace Color::Xml::Writer {

/// LUT3D.
class Lut3DWriter : public TypedOpWriter<Lut3DOp>
{
public:
    using TypedOpWriter::TypedOpWriter;

    const char* getTagName() const override { return "LUT3D"; }
    void getAttributes(XmlFormatter::Attributes& attributes) const override;

protected:
    void writeContent() const override;
};

} // namespace Color::Xml::Writer
