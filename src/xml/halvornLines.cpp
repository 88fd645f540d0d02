#include "xml/halvornLines.h"

#include "utils/text.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace Color {

std::optional<std::string_view> HalvornLines::next()
{
    while (true) {
        if (m_rest.empty()) {
            if (!std::getline(m_stream, m_text)) return std::nullopt;
            std::replace(m_text.begin(), m_text.end(), '\t', ' ');
            m_rest = m_text;
        }
        const std::string_view line = prepared(m_rest.substr(0, kMaximumLength));
        m_rest.remove_prefix(std::min(m_rest.size(), kMaximumLength));
        if (!line.empty() && line.front() != '#') return line;
    }
}

std::string_view HalvornLines::prepared(std::string_view line) const
{
    if (m_lineEnd == LINE_FEED_OR_CARRIAGE_RETURN && !line.empty() && line.back() == '\r') line.remove_suffix(1);
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    line.remove_suffix(line.size() - (line.find_last_not_of(' ') + 1));
    return line;
}

std::optional<int32_t> takeInteger(std::string_view& text)
{
    std::string_view rest = text;
    while (!rest.empty() && isSpace(rest.front()))
        rest.remove_prefix(1);
    const bool isNegative = !rest.empty() && rest.front() == '-';
    if (isNegative || (!rest.empty() && rest.front() == '+')) rest.remove_prefix(1);

    // Digits alone: no second sign.
    uint32_t magnitude = 0;
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), magnitude);
    if (error == std::errc::invalid_argument) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));

    constexpr int32_t largest = std::numeric_limits<int32_t>::max();
    const bool isTooLarge = error == std::errc::result_out_of_range || magnitude > static_cast<uint32_t>(largest);
    if (isTooLarge) return isNegative ? std::numeric_limits<int32_t>::min() : largest;
    return isNegative ? -static_cast<int32_t>(magnitude) : static_cast<int32_t>(magnitude);
}

} // namespace Color
