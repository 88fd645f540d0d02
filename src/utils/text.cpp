#include "utils/text.h"

#include <algorithm>

namespace Color {

namespace {

char lowered(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool isSeparator(char c) { return isSpace(c) || c == ','; }

bool isIdentifierCharacter(char c)
{
    return (lowered(c) >= 'a' && lowered(c) <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

} // namespace

bool equalsIgnoreCase(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return lowered(x) == lowered(y); });
}

bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

std::string_view takeToken(std::string_view& text)
{
    const auto begin = std::find_if_not(text.begin(), text.end(), isSeparator);
    const auto end = std::find_if(begin, text.end(), isSeparator);
    const std::string_view token =
        text.substr(static_cast<std::size_t>(begin - text.begin()), static_cast<std::size_t>(end - begin));
    text.remove_prefix(static_cast<std::size_t>(end - text.begin()));
    return token;
}

std::string keepIdentifierCharacters(std::string_view text)
{
    std::string kept;
    std::copy_if(text.begin(), text.end(), std::back_inserter(kept), isIdentifierCharacter);
    return kept;
}

} // namespace Color
