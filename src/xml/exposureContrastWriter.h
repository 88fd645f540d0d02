#pragma once

#include "transform/exposureContrastOp.h"
#include "xml/opWriter.h"

namespace Color::Xml::Writer {

/// ExposureContrast.
class ExposureContrastWriter : public StyledOpWriter<ExposureContrastOp>
{
public:
    using StyledOpWriter::StyledOpWriter;

    const char* getTagName() const override { return "ExposureContrast"; }

protected:
    void writeContent() const override;
};

} // namespace Color::Xml::Writer
