#include "xml/lut3DElt.h"

#include "utils/exception.h"
#include "xml/attributes.h"
#include "xml/interpolationAttribute.h"

#include <utility>

namespace Color::Xml::Reader {

void Lut3DElt::start(Attributes attributes)
{
    TypedOpElt::start(attributes);
    if (const char* interpolation = findAttribute(attributes, "interpolation")) {
        readInterpolation(*this, getTypedOp(), interpolation);
    }
}

FileArray* Lut3DElt::updateDimension(const Dimensions& dimensions)
{
    if (dimensions.size() != 4 || dimensions[0] < 1 || dimensions[1] != dimensions[0] ||
        dimensions[2] != dimensions[0] || dimensions[3] != 3) {
        return nullptr;
    }
    m_length = static_cast<uint32_t>(dimensions[0]);
    m_array.capacity = getTypedOp().getArray().getNumValues(m_length, 3);
    const std::string length = std::to_string(m_length);
    m_array.sizeText = length + "x" + length + "x" + length + "x3";
    return &m_array;
}

void Lut3DElt::finalize(std::size_t count)
{
    if (m_array.capacity == 0) raise(LogCategory::XML_READER, ErrorIds::XML_ARRAY_INCOMPLETE);
    if (count != m_array.capacity) {
        raise(LogCategory::XML_READER, ErrorIds::XML_ARRAY_TOO_FEW_VALUES, m_array.sizeText, count, getTypeName(),
              getCurrentLine(), getFileName());
    }
    Lut3DOp::Lut3DArray& array = getTypedOp().getArray();
    array.getValues() = std::move(m_array.values);
    array.resize(m_length, 3); // the size that they have already
    array.validate();
    setCompleted(true);
}

} // namespace Color::Xml::Reader
