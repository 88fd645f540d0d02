#include "utils/positionalFormat.h"

#include "utils/numberText.h"
#include "utils/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

namespace Color {

namespace {

/// A text of bounded size; what does not fit is dropped.
class BoundedText
{
public:
    BoundedText(char* begin, std::size_t limit) : m_begin(begin), m_limit(limit) {}

    void append(std::string_view text) { m_length += text.copy(m_begin + m_length, m_limit - m_length); }
    std::size_t length() const { return m_length; }

private:
    char* m_begin;
    std::size_t m_limit;
    std::size_t m_length = 0;
};

struct Placeholder
{
    std::size_t length; ///< of its own text, "%2$s" being 4
    std::size_t number; ///< of its argument, from 1; 0 takes the next one
    char conversion;    ///< 's', 'd' or 'f'
};

/// The placeholder that text, which starts with a percent sign, begins with.
std::optional<Placeholder> parsePlaceholder(std::string_view text)
{
    const char* const begin = text.data();
    const char* const end = begin + text.size();
    const char* position = begin + 1;
    std::size_t number = 0;

    const auto digits = std::from_chars(position, end, number);
    if (digits.ec == std::errc()) {
        if (number == 0 || digits.ptr == end || *digits.ptr != '$') return {};
        position = digits.ptr + 1;
    } else if (digits.ptr != position) {
        return {}; // more digits than a number can hold
    }
    if (position == end || (*position != 's' && *position != 'd' && *position != 'f')) return {};
    return Placeholder{static_cast<std::size_t>(position + 1 - begin), number, *position};
}

std::string wholeText(const FormatArgument& argument)
{
    switch (argument.kind()) {
    case FormatArgument::Kind::Signed:
        return std::to_string(argument.signedValue());
    case FormatArgument::Kind::Unsigned:
        return std::to_string(argument.unsignedValue());
    case FormatArgument::Kind::Text:
    case FormatArgument::Kind::Real:
        break;
    }
    return "0";
}

double realValue(const FormatArgument& argument)
{
    switch (argument.kind()) {
    case FormatArgument::Kind::Signed:
        return static_cast<double>(argument.signedValue());
    case FormatArgument::Kind::Unsigned:
        return static_cast<double>(argument.unsignedValue());
    case FormatArgument::Kind::Real:
        return argument.real();
    case FormatArgument::Kind::Text:
        break;
    }
    return 0.0;
}

std::string realText(double value)
{
    if (!std::isfinite(value)) return toText(value);
    constexpr int DECIMALS = 6;
    constexpr std::size_t LONGEST = 1 + 309 + 1 + DECIMALS; // sign, digits of the largest double, point, decimals
    char digits[LONGEST];
    const auto result = std::to_chars(digits, digits + LONGEST, value, std::chars_format::fixed, DECIMALS);
    return std::string(digits, result.ptr);
}

void appendArgument(BoundedText& out, const FormatArgument& argument, char conversion)
{
    if (conversion == 'f')
        out.append(realText(realValue(argument)));
    else if (conversion == 's' && argument.kind() == FormatArgument::Kind::Text)
        out.append(argument.text());
    else if (conversion == 's' && argument.kind() == FormatArgument::Kind::Real)
        out.append(toText(argument.real()));
    else
        out.append(wholeText(argument));
}

} // namespace

std::size_t formatText(char* buffer, std::size_t capacity, const char* format, FormatArguments arguments)
{
    if (capacity == 0) return 0;

    BoundedText out(buffer, capacity - 1);
    std::string_view rest = orEmpty(format);
    std::size_t next = 1;
    while (!rest.empty()) {
        const std::size_t percent = std::min(rest.find('%'), rest.size());
        out.append(rest.substr(0, percent));
        rest.remove_prefix(percent);
        if (rest.empty()) break;

        if (rest.substr(0, 2) == "%%") {
            out.append("%");
            rest.remove_prefix(2);
            continue;
        }
        const std::optional<Placeholder> placeholder = parsePlaceholder(rest);
        const std::size_t number = !placeholder ? 0 : placeholder->number != 0 ? placeholder->number : next++;
        if (number == 0 || number > arguments.size()) {
            out.append("%"); // no placeholder, or one without an argument: what follows is plain text
            rest.remove_prefix(1);
        } else {
            appendArgument(out, arguments.begin()[number - 1], placeholder->conversion);
            rest.remove_prefix(placeholder->length);
        }
    }
    buffer[out.length()] = '\0';
    return out.length();
}

} // namespace Color
