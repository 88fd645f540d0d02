#pragma once

#include <cstdint>
#include <vector>

namespace Color {

/// The value store of the matrix and LUT ops.
class Array
{
public:
    using Values = std::vector<float>;

    Array() = default;
    Array(const Array&) = default;
    Array& operator=(const Array&) = default;
    virtual ~Array();

    /// How many floats an array of this length and number of components holds.
    virtual std::size_t getNumValues(uint32_t length, uint32_t numColorComponents) const = 0;
    /// Throws 0x2010004 on length 0, 0x2010005 when the number of values is not getNumValues().
    virtual void validate();

    void resize(uint32_t length, uint32_t numColorComponents);
    void setLength(uint32_t length);
    void setNumColorComponents(uint32_t numColorComponents);
    uint32_t getLength() const { return m_length; }
    uint32_t getNumColorComponents() const { return m_numColorComponents; }
    const Values& getValues() const { return m_values; }
    Values& getValues() { return m_values; }
    /// The index is not checked.
    void setValue(std::size_t index, float value) { m_values[index] = value; }
    /// A NaN is different from everything, itself included.
    bool isEqual(const Array& other) const;

private:
    uint32_t m_length = 0; ///< entries along the main axis, 0 until set
    uint32_t m_numColorComponents = 0;
    Values m_values;
};

} // namespace Color
