#pragma once

#include "transform/transform.h"

#include <ostream>
#include <string>

namespace Color {

/// Writes ctf documents.
///
/// Array values of the depth 32f and those of a matrix keep eight significant digits, a little less than a float has;
/// values of the depth 16f keep five, which tells all halfs apart. Exposure and contrast keep all bits, every other
/// number six digits. What was written and read once is written again as the same text.
class XMLTransformWriter
{
public:
    virtual ~XMLTransformWriter();

    /// Validates the transform, which thereby gets an id if it has none, and writes it. Throws 0x3030001 on null, and
    /// 0x3010002 with the text of the failure when the transform is not valid; nothing is written then. The stream
    /// tells of its own failures.
    void write(const ColorTransformPtr& transform, std::ostream& stream) const;

    /// The same to a file. Fails as writeOutputFile() does, too.
    void write(const ColorTransformPtr& transform, const std::string& fileName) const;
};

} // namespace Color
