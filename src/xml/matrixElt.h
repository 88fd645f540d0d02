#pragma once

#include "transform/matrixOp.h"
#include "xml/arrayMgt.h"
#include "xml/opElt.h"

namespace Color::Xml::Reader {

/// Matrix as files up to version 1.2 have it: a square array whose fourth column, if any, is an offset vector.
class MatrixElt : public TypedOpElt<MatrixOp>, public ArrayMgt
{
public:
    MatrixElt(const std::string& name, TransformElt& parent, const ReadContext& context);

    FileArray* updateDimension(const Dimensions& dimensions) override;
    void finalize(std::size_t count) override;

protected:
    /// Sizes the array; null for a size below 1.
    FileArray* sizeArray(int32_t columns, int32_t rows);
    /// Throws when the array was never sized or the count is not its capacity, spelling the size as given.
    void checkCount(std::size_t count, const std::string& sizeText) const;
    /// Gives the op the square of the given size at the top left of the file's rows, and the rest of a row that is
    /// longer by one as its offset.
    void storeSquare(uint32_t size);

    uint32_t getColumns() const { return m_columns; }
    uint32_t getRows() const { return m_rows; }

private:
    FileArray m_array;
    uint32_t m_columns = 0;
    uint32_t m_rows = 0;
};

/// Matrix from version 1.3 on: 3 or 4 rows, with or without a column of offsets.
class MatrixElt_1_3 : public MatrixElt
{
public:
    using MatrixElt::MatrixElt;

    FileArray* updateDimension(const Dimensions& dimensions) override;
    void finalize(std::size_t count) override;
};

} // namespace Color::Xml::Reader
