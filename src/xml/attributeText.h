#pragma once

#include <string_view>

namespace Color {

/// Whether the value of an attribute can be this text, and is read as it was written: valid UTF-8 without line breaks,
/// tabs and the other characters that XML has no place for.
bool isAttributeText(std::string_view text);

} // namespace Color
