#pragma once

#include "tests/xml/ctf.h"
#include "xml/opWriterTable.h"
#include "xml/xmlTransformWriter.h"

/// What the writers make.
namespace Ctf {

inline std::string write(const Color::ColorTransformPtr& transform)
{
    std::ostringstream stream;
    Color::XMLTransformWriter().write(transform, stream);
    return stream.str();
}

/// The element of an op, with nothing around it.
inline std::string writeOp(const Color::Op& op)
{
    std::ostringstream stream;
    Color::XmlFormatter formatter(stream);
    Color::Xml::Writer::makeOpWriter(formatter, op)->write();
    return stream.str();
}

/// Expects that the op is written as this text, and that the text reads back to an equal op.
inline void expectWritten(Color::Op& op, const std::string& text)
{
    op.validate();
    EXPECT_EQ(writeOp(op), text);
    EXPECT_TRUE(read(document(text))->getOpList().get(0)->isEqual(op)) << text;
}

} // namespace Ctf
