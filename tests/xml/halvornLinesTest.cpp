#include "xml/halvornLines.h"

#include <gmock/gmock.h>
#include <limits>
#include <sstream>
#include <vector>

using namespace Color;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::vector<std::string> linesOf(const std::string& text, HalvornLines::LineEnd lineEnd = HalvornLines::LINE_FEED)
{
    std::istringstream stream(text);
    HalvornLines lines(stream, lineEnd);
    std::vector<std::string> all;
    while (const auto line = lines.next())
        all.emplace_back(*line);
    return all;
}

/// What is taken off the front of a text, and what is left.
std::pair<std::optional<int32_t>, std::string> taken(std::string_view text)
{
    const std::optional<int32_t> number = takeInteger(text);
    return {number, std::string(text)};
}

using Taken = std::pair<std::optional<int32_t>, std::string>;

} // namespace

TEST(HalvornLines, areTrimmedAndTabsAreBlanks)
{
    EXPECT_THAT(linesOf("  1\t2 \n\t3\t\n4"), ElementsAre("1 2", "3", "4"));
}

TEST(HalvornLines, skipEmptyOnesAndComments)
{
    EXPECT_THAT(linesOf("\n# a\n \t\n  # b\n1 # c\n\n#\n2\n\n"), ElementsAre("1 # c", "2"));
    EXPECT_THAT(linesOf(""), IsEmpty());
    EXPECT_THAT(linesOf("\n\n#"), IsEmpty());
}

TEST(HalvornLines, longOnesAreSeveral)
{
    const std::string piece(199, '1');
    EXPECT_THAT(linesOf(piece + "\n2"), ElementsAre(piece, "2"));
    EXPECT_THAT(linesOf(piece + "2\n3"), ElementsAre(piece, "2", "3"));
    EXPECT_THAT(linesOf(piece + piece + " \n3"), ElementsAre(piece, piece, "3"));
    EXPECT_THAT(linesOf("#" + piece), ElementsAre("1")) << "the end of a comment that is too long";
}

TEST(HalvornLines, carriageReturnBelongsToTheEndWhereAskedFor)
{
    EXPECT_THAT(linesOf("1\r\n\r\n2\r\n", HalvornLines::LINE_FEED_OR_CARRIAGE_RETURN), ElementsAre("1", "2"));
    EXPECT_THAT(linesOf("1\r\n\r\n2", HalvornLines::LINE_FEED), ElementsAre("1\r", "\r", "2"));
}

TEST(HalvornLines, endWhereNothingCanBeRead)
{
    std::istringstream stream("1\n2\n");
    HalvornLines lines(stream, HalvornLines::LINE_FEED);
    EXPECT_EQ(lines.next(), "1");
    stream.setstate(std::ios::badbit);
    EXPECT_EQ(lines.next(), std::nullopt);
}

TEST(takeInteger, takesSignAndDigitsBehindWhiteSpace)
{
    EXPECT_EQ(taken("12 3"), Taken(12, " 3"));
    EXPECT_EQ(taken(" \t\r\n-7x"), Taken(-7, "x"));
    EXPECT_EQ(taken("+08.5"), Taken(8, ".5"));
    EXPECT_EQ(taken("0x10"), Taken(0, "x10"));
}

TEST(takeInteger, takesNothingWhereThereIsNoNumber)
{
    for (const std::string text : {"", "  ", "x1", "-", "+-1", "--1", "- 1", ".5"})
        EXPECT_EQ(taken(text), Taken(std::nullopt, text));
}

TEST(takeInteger, staysWithin32Bits)
{
    constexpr int32_t largest = std::numeric_limits<int32_t>::max();
    constexpr int32_t least = std::numeric_limits<int32_t>::min();
    EXPECT_EQ(taken("2147483647"), Taken(largest, ""));
    EXPECT_EQ(taken("2147483648,"), Taken(largest, ","));
    EXPECT_EQ(taken("-2147483647"), Taken(-largest, ""));
    EXPECT_EQ(taken("-2147483649"), Taken(least, ""));
    EXPECT_EQ(taken(std::string(400, '9') + "a"), Taken(largest, "a"));
}
