#pragma once

#include "utils/text.h"

#include <cstddef>
#include <optional>
#include <string>

namespace Color {

/// The style whose name, without regard to case, the text is. Styles are numbered as their names stand in the list.
template <class Style, std::size_t count>
std::optional<Style> findStyle(const char* const (&names)[count], const std::string& text)
{
    for (std::size_t i = 0; i < count; ++i) {
        if (equalsIgnoreCase(names[i], text)) return static_cast<Style>(i);
    }
    return std::nullopt;
}

/// The name of the style; "" for a value that is no style.
template <class Style, std::size_t count>
const char* styleNameAt(const char* const (&names)[count], Style style)
{
    const auto index = static_cast<std::size_t>(style);
    return index < count ? names[index] : "";
}

} // namespace Color
