#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace Color {

/// The forms of the ASC Color Decision List, as bits of a set.
enum CDLFormat : uint32_t
{
    CDL_FORMAT_LIST = 1,       ///< decisions, each with its correction
    CDL_FORMAT_COLLECTION = 2, ///< corrections
    CDL_FORMAT_FRAGMENT = 4,   ///< one correction
};

struct CDLFormatRow
{
    CDLFormat format;
    const char* extension; ///< without its dot
    const char* root;      ///< the root element
    const char* description;
};

/// In the order in which a file is searched for their roots.
constexpr std::array<CDLFormatRow, 3> kCDLFormats = {{
    {CDL_FORMAT_LIST, "cdl", "ColorDecisionList", "ASC CDL color decision list XML format"},
    {CDL_FORMAT_COLLECTION, "ccc", "ColorCorrectionCollection", "ASC CDL color correction collection XML format"},
    {CDL_FORMAT_FRAGMENT, "cc", "ColorCorrection", "CDL fragment format"},
}};

/// The format whose root is named in the head of a document, wherever that is and in whatever case.
std::optional<CDLFormat> findCDLFormat(std::string_view head);

} // namespace Color
