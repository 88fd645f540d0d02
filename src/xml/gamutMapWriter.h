#pragma once

#include "transform/gamutMapOp.h"
#include "xml/opWriter.h"

namespace Color::Xml::Writer {

/// GamutMap.
class GamutMapWriter : public StyledOpWriter<GamutMapOp>
{
public:
    using StyledOpWriter::StyledOpWriter;

    const char* getTagName() const override { return "GamutMap"; }
};

} // namespace Color::Xml::Writer
