#pragma once

#include "transform/op.h"
#include "xml/xmlFormatter.h"

#include <cstddef>
#include <initializer_list>

namespace Color::Xml::Writer {

/// How an array spells its numbers, whatever the locale: right-aligned with blanks in a field that grows when one is
/// too long for it.
struct NumberLayout
{
    std::size_t width;
    /// Prints a number and returns its end. There is room for 32 characters.
    char* (*print)(char* text, float value);
};

/// The layout for values in the scale of this depth. Throws 0x3030005 for a depth that is none.
const NumberLayout& getNumberLayout(BitDepth depth);
/// Eight significant digits, in which values of the depth 32f are written.
extern const NumberLayout kSingleLayout;
/// The 16 bits of each value, rounded to a half, as a whole number.
extern const NumberLayout kHalfPatternLayout;

/// The numbers of an array in the order of the file. Refers to the values.
struct ArrayNumbers
{
    const float* values;
    std::size_t size;
    std::size_t stride;  ///< every stride-th value counts, from the first on
    std::size_t perLine; ///< how many of those that count stand on a line
};

/// Writes an element Array; dimensions make up its attribute `dim`.
void writeArray(XmlFormatter& formatter, std::initializer_list<uint32_t> dimensions, const NumberLayout& layout,
                const ArrayNumbers& numbers);

/// The version that a file with this op has at least. Some readers expect more than the op's own minimum.
float getFileVersion(const Op& op);

} // namespace Color::Xml::Writer
