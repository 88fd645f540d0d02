#include "transform/array.h"

#include "utils/exception.h"

namespace Color {

Array::~Array() = default;

void Array::validate()
{
    if (m_length == 0) raise(LogCategory::TRANSFORM_ALL, ErrorIds::ARRAY_CONTENT_EMPTY);
    if (m_values.size() != getNumValues(m_length, m_numColorComponents)) {
        raise(LogCategory::TRANSFORM_ALL, ErrorIds::ARRAY_CONTENT_ILLEGAL);
    }
}

void Array::resize(uint32_t length, uint32_t numColorComponents)
{
    m_values.resize(getNumValues(length, numColorComponents));
    m_length = length;
    m_numColorComponents = numColorComponents;
}

void Array::setLength(uint32_t length)
{
    if (length != m_length) resize(length, m_numColorComponents);
}

void Array::setNumColorComponents(uint32_t numColorComponents)
{
    if (numColorComponents != m_numColorComponents) resize(m_length, numColorComponents);
}

bool Array::isEqual(const Array& other) const
{
    return m_length == other.m_length && m_numColorComponents == other.m_numColorComponents &&
           m_values == other.m_values;
}

} // namespace Color
