#pragma once

#include "transform/CDLOp.h"
#include "xml/opWriter.h"

namespace Color::Xml::Writer {

/// ASC_CDL.
class CDLWriter : public StyledOpWriter<CDLOp>
{
public:
    using StyledOpWriter::StyledOpWriter;

    const char* getTagName() const override { return "ASC_CDL"; }

protected:
    void writeContent() const override;
};

} // namespace Color::Xml::Writer
