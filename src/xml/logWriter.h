#pragma once

#include "transform/logOp.h"
#include "xml/opWriter.h"

namespace Color::Xml::Writer {

/// Log.
class LogWriter : public StyledOpWriter<LogOp>
{
public:
    using StyledOpWriter::StyledOpWriter;

    const char* getTagName() const override { return "Log"; }

protected:
    void writeContent() const override;
};

} // namespace Color::Xml::Writer
