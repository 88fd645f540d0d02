#include "xml/arrayMgt.h"

#include <algorithm>

namespace Color::Xml::Reader {

void FileArray::append(float value)
{
    // Never more room than the array may need: the old and the new together stay below twice its size.
    if (values.size() == values.capacity()) {
        const uint64_t room = std::max<uint64_t>(16, uint64_t{2} * values.size());
        values.reserve(static_cast<std::size_t>(std::min(room, capacity)));
    }
    values.push_back(value);
}

ArrayMgt::~ArrayMgt() = default;

} // namespace Color::Xml::Reader
