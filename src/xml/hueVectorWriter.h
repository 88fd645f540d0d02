#pragma once

#include "transform/hueVectorOp.h"
#include "xml/opWriter.h"

namespace Color::Xml::Writer {

/// HueVector.
class HueVectorWriter : public StyledOpWriter<HueVectorOp>
{
public:
    using StyledOpWriter::StyledOpWriter;

    const char* getTagName() const override { return "HueVector"; }

protected:
    void writeContent() const override;
};

} // namespace Color::Xml::Writer
