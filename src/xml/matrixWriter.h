#pragma once

#include "transform/matrixOp.h"
#include "xml/opWriter.h"

namespace Color::Xml::Writer {

/// Matrix, in the smallest of the forms that files from version 1.3 on have.
class MatrixWriter : public TypedOpWriter<MatrixOp>
{
public:
    using TypedOpWriter::TypedOpWriter;

    const char* getTagName() const override { return "Matrix"; }

protected:
    void writeContent() const override;
};

} // namespace Color::Xml::Writer
