#include "xml/matrixElt.h"

#include "utils/exception.h"

#include <algorithm>

namespace Color::Xml::Reader {

namespace {

std::string spellSquare(uint32_t size) { return std::to_string(size) + "x" + std::to_string(size); }

} // namespace

MatrixElt::MatrixElt(const std::string& name, TransformElt& parent, const ReadContext& context)
    : TypedOpElt(name, parent, context)
{}

FileArray* MatrixElt::updateDimension(const Dimensions& dimensions)
{
    if (dimensions.size() != 3 || dimensions[0] != dimensions[1] || dimensions[2] != 3) return nullptr;
    return sizeArray(dimensions[0], dimensions[1]);
}

FileArray* MatrixElt::sizeArray(int32_t columns, int32_t rows)
{
    if (columns < 1 || rows < 1) return nullptr;
    m_columns = static_cast<uint32_t>(columns);
    m_rows = static_cast<uint32_t>(rows);
    m_array.capacity = uint64_t{m_columns} * m_rows;
    m_array.sizeText = spellSquare(m_columns);
    return &m_array;
}

void MatrixElt::checkCount(std::size_t count, const std::string& sizeText) const
{
    if (m_array.capacity == 0) raise(LogCategory::XML_READER, ErrorIds::XML_ARRAY_INCOMPLETE);
    if (count != m_array.capacity) {
        raise(LogCategory::XML_READER, ErrorIds::XML_ARRAY_TOO_FEW_VALUES, sizeText, count, getTypeName(),
              getCurrentLine(), getFileName());
    }
}

void MatrixElt::storeSquare(uint32_t size)
{
    MatrixOp& op = getTypedOp();
    op.getArray().resize(size, 4);
    MatrixOp::Offsets offsets{};
    for (std::size_t row = 0; row < size; ++row) {
        const auto source = m_array.values.begin() + static_cast<std::ptrdiff_t>(row * m_columns);
        std::copy_n(source, size, op.getArray().getValues().begin() + static_cast<std::ptrdiff_t>(row * size));
        if (m_columns > size) offsets[row] = source[size];
    }
    op.setOffsets4(offsets.data());
}

void MatrixElt::finalize(std::size_t count)
{
    checkCount(count, spellSquare(m_columns));
    if (m_columns != 3 && m_columns != 4) raise(LogCategory::TRANSFORM_ALL, ErrorIds::ARRAY_CONTENT_ILLEGAL);
    storeSquare(3);
    setCompleted(true);
}

FileArray* MatrixElt_1_3::updateDimension(const Dimensions& dimensions)
{
    static const Dimensions kAllowed[] = {{3, 3, 3}, {3, 4, 3}, {4, 4, 4}, {4, 5, 4}};
    if (std::find(std::begin(kAllowed), std::end(kAllowed), dimensions) == std::end(kAllowed)) return nullptr;
    return sizeArray(dimensions[1], dimensions[2]);
}

void MatrixElt_1_3::finalize(std::size_t count)
{
    const std::string rows = std::to_string(getRows());
    checkCount(count, rows + "x" + std::to_string(getColumns()) + "x" + rows);
    storeSquare(getRows());
    setCompleted(true);
}

} // namespace Color::Xml::Reader
