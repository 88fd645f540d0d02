#pragma once

#include "transform/invLut1DOp.h"
#include "xml/opWriter.h"

namespace Color::Xml::Writer {

/// LUT1D.
class Lut1DWriter : public TypedOpWriter<Lut1DOp>
{
public:
    using TypedOpWriter::TypedOpWriter;

    const char* getTagName() const override { return "LUT1D"; }
    void getAttributes(XmlFormatter::Attributes& attributes) const override;

protected:
    /// A curve that was given once for all channels is written once.
    void writeContent() const override;
};

/// InverseLUT1D.
class InvLut1DWriter : public Lut1DWriter
{
public:
    InvLut1DWriter(XmlFormatter& formatter, const InvLut1DOp& op) : Lut1DWriter(formatter, op) {}

    const char* getTagName() const override { return "InverseLUT1D"; }
};

} // namespace Color::Xml::Writer
