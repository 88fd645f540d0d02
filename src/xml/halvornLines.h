#pragma once

#include <cstdint>
#include <istream>
#include <optional>
#include <string>
#include <string_view>

namespace Color {

/// The lines of a Halvorn LUT file that hold data: no comments, and no empty lines. Tabs are blanks, and there are none
/// at either end.
class HalvornLines
{
public:
    /// A longer line is read as several.
    static constexpr std::size_t kMaximumLength = 199;

    enum LineEnd
    {
        LINE_FEED,
        LINE_FEED_OR_CARRIAGE_RETURN ///< a carriage return in front of the line feed belongs to the end
    };

    HalvornLines(std::istream& stream, LineEnd lineEnd) : m_stream(stream), m_lineEnd(lineEnd) {}

    /// Good until the next call. Nothing when there is no further line, or none can be read.
    std::optional<std::string_view> next();

private:
    std::string_view prepared(std::string_view line) const;

    std::istream& m_stream;
    LineEnd m_lineEnd;
    std::string m_text;      ///< of the line in the file
    std::string_view m_rest; ///< what of it has not been handed out
};

/// Takes a whole number off the front of text as scanf's "%d" does: after any white space, a sign and digits. Nothing
/// where there is none. One beyond 32 bits gives the nearest that fits.
std::optional<int32_t> takeInteger(std::string_view& text);

} // namespace Color
