#include "xml/matrixWriter.h"

#include "xml/xmlTransformWriterUtils.h"

#include <cmath>

namespace Color::Xml::Writer {

namespace {

/// Also for -0, as MatrixOp::hasOffsets() has it.
bool isOffset(float value) { return value != 0.0F || std::signbit(value); }

} // namespace

void MatrixWriter::writeContent() const
{
    const MatrixOp& matrix = getOp();
    const MatrixOp::Offsets& offsets = matrix.getOffsets();
    // An offset of alpha needs the fourth row as much as a factor does.
    const uint32_t rows = matrix.usesAlpha() || isOffset(offsets[3]) ? 4 : 3;
    const uint32_t columns = rows + (matrix.hasOffsets() ? 1 : 0);

    const uint32_t length = matrix.getArray().getLength();
    Array::Values values;
    for (uint32_t row = 0; row < rows; ++row) {
        const float* const rowValues = &matrix.getArray().getValues()[row * length];
        values.insert(values.end(), rowValues, rowValues + rows);
        if (columns > rows) values.push_back(offsets[row]);
    }
    writeArray(getFormatter(), {rows, columns, rows}, kSingleLayout, {values.data(), values.size(), 1, columns});
}

} // namespace Color::Xml::Writer
