#include "utils/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using namespace Color;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> tokensOf(std::string_view text)
{
    std::vector<std::string> tokens;
    for (std::string_view token = takeToken(text); !token.empty(); token = takeToken(text))
        tokens.emplace_back(token);
    EXPECT_EQ(text, "");
    return tokens;
}

TEST(Text, equalsIgnoreCaseFoldsAsciiLettersOnly)
{
    EXPECT_TRUE(equalsIgnoreCase("", ""));
    EXPECT_TRUE(equalsIgnoreCase("Matrix", "mATRIX"));
    EXPECT_TRUE(equalsIgnoreCase("az09_", "AZ09_"));
    EXPECT_FALSE(equalsIgnoreCase("Matrix", "Matri"));
    EXPECT_FALSE(equalsIgnoreCase("", "a"));
    EXPECT_FALSE(equalsIgnoreCase("@[`{", "`{@["));
    EXPECT_FALSE(equalsIgnoreCase("\xc4", "\xe4"));
}

TEST(Text, sixCharactersAreSpace)
{
    for (int c = 0; c < 256; ++c) {
        const bool expected = c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
        EXPECT_EQ(isSpace(static_cast<char>(c)), expected) << c;
    }
}

TEST(Text, trimmedTakesBothEndsOff)
{
    EXPECT_EQ(trimmed(" \t\r\n a b \v\f"), "a b");
    EXPECT_EQ(trimmed("a"), "a");
    EXPECT_EQ(trimmed(" \n "), "");
    EXPECT_EQ(trimmed(""), "");
    EXPECT_EQ(trimmed(", a"), ", a");
}

TEST(Text, tokensAreSeparatedBySpaceAndCommas)
{
    EXPECT_THAT(tokensOf(" 1,2 ,\n3\t, ,4"), ElementsAre("1", "2", "3", "4"));
    EXPECT_THAT(tokensOf("single"), ElementsAre("single"));
    EXPECT_THAT(tokensOf("a;b c"), ElementsAre("a;b", "c"));
    EXPECT_THAT(tokensOf(" ,\t,"), IsEmpty());
    EXPECT_THAT(tokensOf(""), IsEmpty());
}

TEST(Text, takeTokenLeavesTheRest)
{
    std::string_view text = "one two";
    EXPECT_EQ(takeToken(text), "one");
    EXPECT_EQ(text, " two");
}

TEST(Text, orEmptyReplacesNull)
{
    EXPECT_STREQ(orEmpty(nullptr), "");
    EXPECT_STREQ(orEmpty("a"), "a");
}

TEST(Text, keepIdentifierCharactersDropsTheRest)
{
    EXPECT_EQ(keepIdentifierCharacters("a-Z 0.9_@[`{/:\xc3\xa4"), "aZ09_");
    EXPECT_EQ(keepIdentifierCharacters("{}"), "");
}

} // namespace
