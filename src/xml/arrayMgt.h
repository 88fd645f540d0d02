#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Color::Xml::Reader {

/// An array as it stands in the file: what `dim` declares, and the values read so far. A declared size may be absurd,
/// so room is made for the values that come, not for those announced.
struct FileArray
{
    uint64_t capacity = 0; ///< how many values there may be; 0 until sized
    std::string sizeText;  ///< how the message of a surplus value spells the size, such as "3x3"
    std::vector<float> values;

    /// There must be fewer values than the capacity.
    void append(float value);
};

/// The second base of the op elements that carry an array.
class ArrayMgt
{
public:
    using Dimensions = std::vector<int32_t>;

    virtual ~ArrayMgt();

    /// Notes whether the array is done; an op takes only one.
    virtual void setCompleted(bool completed) { m_completed = completed; }
    /// Checks the numbers of `dim` and sizes the array by them. Null when they are not allowed.
    virtual FileArray* updateDimension(const Dimensions& dimensions) = 0;
    /// Makes the op's array from the values read, whose number is count. Throws 0x302000d when the array was never
    /// sized and 0x302000b when the count is not the right one.
    virtual void finalize(std::size_t count) = 0;

    bool isCompleted() const { return m_completed; }

private:
    bool m_completed = false;
};

} // namespace Color::Xml::Reader
