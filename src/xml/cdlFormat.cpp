#include "xml/cdlFormat.h"

#include "utils/text.h"

namespace Color {

namespace {

bool contains(std::string_view text, std::string_view word)
{
    for (; text.size() >= word.size(); text.remove_prefix(1)) {
        if (equalsIgnoreCase(text.substr(0, word.size()), word)) return true;
    }
    return false;
}

} // namespace

std::optional<CDLFormat> findCDLFormat(std::string_view head)
{
    for (const CDLFormatRow& row : kCDLFormats) {
        if (contains(head, row.root)) return row.format;
    }
    return std::nullopt;
}

} // namespace Color
