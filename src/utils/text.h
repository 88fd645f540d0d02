#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Color {

/// Text helpers for names and file contents. ASCII only and independent of the process locale.

bool equalsIgnoreCase(std::string_view a, std::string_view b);

inline bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// Without the white space at both ends.
std::string_view trimmed(std::string_view text);

/// Takes the next token off the front of text: a run of characters that are neither white space nor commas. Empty when
/// there is none left.
std::string_view takeToken(std::string_view& text);

/// A null pointer counts as the empty text.
inline const char* orEmpty(const char* text) { return text ? text : ""; }

/// With every character removed that is not a letter, a digit or an underscore.
std::string keepIdentifierCharacters(std::string_view text);

} // namespace Color
