#pragma once

#include "transform/rangeOp.h"
#include "xml/opWriter.h"

namespace Color::Xml::Writer {

/// Range, with the limits that are set.
class RangeWriter : public TypedOpWriter<RangeOp>
{
public:
    using TypedOpWriter::TypedOpWriter;

    const char* getTagName() const override { return "Range"; }

protected:
    void writeContent() const override;
};

} // namespace Color::Xml::Writer
