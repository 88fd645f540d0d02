#include "transform/indexMapping.h"

#include <algorithm>

namespace Color {

IndexMapping::~IndexMapping() = default;

void IndexMapping::resize(uint32_t dimension)
{
    for (Component& component : m_components) {
        component.values.resize(dimension);
        component.indices.resize(dimension);
    }
    m_dimension = dimension;
}

bool IndexMapping::isEqual(const IndexMapping& other) const
{
    const auto isSame = [](const Component& a, const Component& b) {
        return a.values == b.values && a.indices == b.indices;
    };
    return m_dimension == other.m_dimension &&
           std::equal(m_components.begin(), m_components.end(), other.m_components.begin(), isSame);
}

} // namespace Color
