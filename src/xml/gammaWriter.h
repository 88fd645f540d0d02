#pragma once

#include "transform/gammaOp.h"
#include "xml/opWriter.h"

namespace Color::Xml::Writer {

/// Gamma.
class GammaWriter : public StyledOpWriter<GammaOp>
{
public:
    using StyledOpWriter::StyledOpWriter;

    const char* getTagName() const override { return "Gamma"; }

protected:
    void writeContent() const override;
};

} // namespace Color::Xml::Writer
