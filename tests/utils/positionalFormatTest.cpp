#include "utils/positionalFormat.h"

#include "tests/utils/commaLocale.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace {

using namespace Color;

std::string formatted(const char* format, FormatArguments arguments)
{
    std::array<char, 1024> buffer;
    buffer.fill('#');
    const std::size_t length = formatText(buffer.data(), buffer.size(), format, arguments);
    EXPECT_EQ(std::string(buffer.data()).size(), length);
    return buffer.data();
}

TEST(PositionalFormat, argumentsAreSelectedByNumberInAnyOrder)
{
    EXPECT_EQ(formatted("%3$s %1$s %2$s %3$s", {"a", "b", "c"}), "c a b c");
    EXPECT_EQ(formatted("%10$s%1$s", {"a", "b", "c", "d", "e", "f", "g", "h", "i", "j"}), "ja");
}

TEST(PositionalFormat, unnumberedPlaceholdersTakeTheNextArgument)
{
    EXPECT_EQ(formatted("%s: %d of %f", {"a", 2, 3.5}), "a: 2 of 3.500000");
    EXPECT_EQ(formatted("%2$s %s %s", {"a", "b"}), "b a b");
}

TEST(PositionalFormat, argumentsMayStayUnused) { EXPECT_EQ(formatted("only %2$s", {"a", "b", "c"}), "only b"); }

TEST(PositionalFormat, wholeNumbersPrintInFull)
{
    EXPECT_EQ(formatted("%1$d %2$d %3$d", {0, -1, 42u}), "0 -1 42");
    EXPECT_EQ(formatted("%1$d %2$d", {std::numeric_limits<int64_t>::min(), std::numeric_limits<uint64_t>::max()}),
              "-9223372036854775808 18446744073709551615");
    EXPECT_EQ(formatted("%1$d %2$d", {true, static_cast<unsigned char>(200)}), "1 200");
}

TEST(PositionalFormat, realsPrintWithSixDecimals)
{
    EXPECT_EQ(formatted("%1$f %2$f %3$f", {0.5, -1e-7, 1234567.8901234}), "0.500000 -0.000000 1234567.890123");
    EXPECT_EQ(formatted("%1$f", {0.1f}), "0.100000");
    EXPECT_EQ(formatted("%1$f %2$f", {7, 8u}), "7.000000 8.000000");
    EXPECT_EQ(formatted("%1$f", {-std::numeric_limits<double>::max()}).size(), 1u + 309u + 1u + 6u);
    constexpr double INF = std::numeric_limits<double>::infinity();
    EXPECT_EQ(formatted("%1$f %2$f %3$f", {INF, -INF, -std::nan("")}), "inf -inf nan");
}

TEST(PositionalFormat, textPlaceholdersTakeAnyArgument)
{
    EXPECT_EQ(formatted("%1$s %2$s %3$s", {-5, 6u, 0.25}), "-5 6 0.25");
    EXPECT_EQ(formatted("%1$s|%2$s", {std::string("a"), std::string_view("bcd", 2)}), "a|bc");
    EXPECT_EQ(formatted("[%1$s]", {static_cast<const char*>(nullptr)}), "[]");
}

TEST(PositionalFormat, argumentThatDoesNotFitPrintsAsZero)
{
    EXPECT_EQ(formatted("%1$d", {"text"}), "0");
    EXPECT_EQ(formatted("%1$d", {2.5}), "0");
    EXPECT_EQ(formatted("%1$f", {"text"}), "0.000000");
}

TEST(PositionalFormat, percentSignIsDoubled) { EXPECT_EQ(formatted("100%% %%1$s %s", {"a"}), "100% %1$s a"); }

TEST(PositionalFormat, brokenPlaceholdersAreCopied)
{
    for (const char* text : {"%1$:", "%1$", "%1", "%", "a % b", "%0$s", "%$s", "%-1$s", "%5d", "%1$x", "%.3f", "%ld",
                             "%99999999999999999999999$s"})
        EXPECT_EQ(formatted(text, {"a", "b"}), text);
    EXPECT_EQ(formatted("%1$: %2$s", {"a", "b"}), "%1$: b");
    EXPECT_EQ(formatted("%1$%s", {"a", "b"}), "%1$a");
}

TEST(PositionalFormat, placeholderWithoutArgumentIsCopied)
{
    EXPECT_EQ(formatted("%1$s %2$s", {"a"}), "a %2$s");
    EXPECT_EQ(formatted("%s %d", {"a"}), "a %d");
    EXPECT_EQ(formatted("%s", {}), "%s");
}

TEST(PositionalFormat, argumentsAreNotScannedForPlaceholders)
{
    EXPECT_EQ(formatted("%1$s %2$s", {"%2$s", "%%"}), "%2$s %%");
}

TEST(PositionalFormat, textIsCutAtTheCapacity)
{
    std::array<char, 8> buffer;
    for (std::size_t capacity = 1; capacity <= 6; ++capacity) {
        buffer.fill('#');
        EXPECT_EQ(formatText(buffer.data(), capacity, "a%1$s%2$d", {"bcd", 56}), capacity - 1);
        EXPECT_EQ(std::string(buffer.data()), std::string("abcd56").substr(0, capacity - 1));
        EXPECT_EQ(buffer[capacity], '#');
    }
}

TEST(PositionalFormat, noCapacityWritesNothing)
{
    char untouched = '#';
    EXPECT_EQ(formatText(&untouched, 0, "text", {}), 0u);
    EXPECT_EQ(untouched, '#');
}

TEST(PositionalFormat, nullFormatIsEmpty) { EXPECT_EQ(formatted(nullptr, {"a"}), ""); }

TEST(PositionalFormat, localeDoesNotMatter)
{
    const CommaLocale locale;
    EXPECT_EQ(formatted("%1$f %2$d %1$s", {1234567.5, 1234567}), "1234567.500000 1234567 1234567.5");
}

} // namespace
