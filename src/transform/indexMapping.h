#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace Color {

/// How a file maps input values to the indices of a LUT: for each colour component a list of values and the indices
/// that they stand for, both of the given dimension. Stored and copied with its op; empty unless a file has one.
class IndexMapping
{
public:
    struct Component
    {
        std::vector<float> values;
        std::vector<float> indices;
    };

    IndexMapping() = default;
    IndexMapping(const IndexMapping&) = default;
    IndexMapping& operator=(const IndexMapping&) = default;
    virtual ~IndexMapping();

    uint32_t getDimension() const { return m_dimension; }
    /// Resizes the lists of all components.
    void resize(uint32_t dimension);
    /// 0 red, 1 green, 2 blue.
    const Component& getComponent(std::size_t component) const { return m_components.at(component); }
    Component& getComponent(std::size_t component) { return m_components.at(component); }
    bool isEqual(const IndexMapping& other) const;

private:
    uint32_t m_dimension = 0;
    std::array<Component, 3> m_components;
};

} // namespace Color
