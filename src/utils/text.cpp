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
    std::size_t begin = 0;
    while (begin < text.size() && isSeparator(text[begin]))
        ++begin;
    std::size_t end = begin;
    while (end < text.size() && !isSeparator(text[end]))
        ++end;
    const std::string_view token = text.substr(begin, end - begin);
    text.remove_prefix(end);
    return token;
}

std::string keepIdentifierCharacters(std::string_view text)
{
    std::string kept;
    std::copy_if(text.begin(), text.end(), std::back_inserter(kept), isIdentifierCharacter);
    return kept;
}

} // namespace Color
