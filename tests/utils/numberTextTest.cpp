#include "utils/numberText.h"

#include "tests/utils/commaLocale.h"
#include "tests/utils/failure.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <sstream>
#include <string>

namespace {

using namespace Color;

constexpr float INF = std::numeric_limits<float>::infinity();
constexpr double DOUBLE_INF = std::numeric_limits<double>::infinity();

template <class Bits, class Real>
Bits bitsOf(Real value)
{
    static_assert(sizeof(Bits) == sizeof(Real));
    Bits bits;
    std::memcpy(&bits, &value, sizeof(bits));
    return bits;
}

template <class Real, class Bits>
Real realOf(Bits bits)
{
    static_assert(sizeof(Bits) == sizeof(Real));
    Real value;
    std::memcpy(&value, &bits, sizeof(value));
    return value;
}

/// What the C library reads, its locale being "C".
template <class Real>
std::optional<Real> scanned(const std::string& text)
{
    Real value;
    if (std::sscanf(text.c_str(), sizeof(Real) == sizeof(float) ? "%f" : "%lf", &value) != 1) return {};
    return value;
}

void expectIllegal(const Failure& failure, const std::string& token)
{
    EXPECT_EQ(failure, (Failure{0x3020008, "COLOR:XML:READER", "Characters '" + token + "' illegal"}));
}

TEST(ReadLeading, readsWhatTheTextBeginsWith)
{
    EXPECT_EQ(readLeadingFloat("1.5"), 1.5f);
    EXPECT_EQ(readLeadingFloat("-2"), -2.0f);
    EXPECT_EQ(readLeadingFloat("+2e3"), 2000.0f);
    EXPECT_EQ(readLeadingFloat("1.3abc"), 1.3f);
    EXPECT_EQ(readLeadingFloat(" \n\t7 8"), 7.0f);
    EXPECT_EQ(readLeadingFloat(".5"), 0.5f);
    EXPECT_EQ(readLeadingFloat("5."), 5.0f);
    EXPECT_EQ(readLeadingFloat("1,5"), 1.0f);
    EXPECT_EQ(readLeadingFloat("0x1.8p1"), 3.0f);
    EXPECT_EQ(readLeadingFloat("-0XaP-1"), -5.0f);
    EXPECT_EQ(readLeadingDouble("0.1"), 0.1);
    EXPECT_EQ(readLeadingDouble("0x.8"), 0.5);
    EXPECT_TRUE(std::signbit(*readLeadingFloat("-0")));
    EXPECT_EQ(readLeadingFloat(std::string_view("123", 2)), 12.0f);
}

TEST(ReadLeading, textThatBeginsWithNoNumberGivesNothing)
{
    for (const char* text :
         {"",   " ",   "abc", ".",    "-",     "+",   "+-1",  "-+1",      "--1", "- 1",    "e5", ".e5",
          "0x", "0xg", "0x.", "0x+1", "0xinf", "inf", "-inf", "INFINITY", "nan", "NaN(1)", "$1"}) {
        EXPECT_EQ(readLeadingFloat(text), std::nullopt) << text;
        EXPECT_EQ(readLeadingDouble(text), std::nullopt) << text;
    }
}

TEST(ReadLeading, numbersBeyondTheRangeAreInfinite)
{
    for (const char* text :
         {"1e39", "3.5e38", "1e999", "1e99999999999999999999", "0x1p128", "0x1p99999999999999999999",
          "1000000000000000000000000000000000000000", "0.00001e44", "0x1000p120", "+1e39z", "1e+39-5",
          "1e9223372036854775807", "1000e9223372036854775807", "0x1000p9223372036854775807"}) {
        EXPECT_EQ(readLeadingFloat(text), INF) << text;
        EXPECT_EQ(readLeadingFloat('-' + std::string(text + (text[0] == '+' ? 1 : 0))), -INF) << text;
    }
    EXPECT_EQ(readLeadingFloat(std::string(60, '9') + "-999"), INF);
    EXPECT_EQ(readLeadingDouble("1e309"), DOUBLE_INF);
    EXPECT_EQ(readLeadingDouble("-0x1p1024"), -DOUBLE_INF);
    EXPECT_EQ(readLeadingDouble("1e39"), 1e39);
}

TEST(ReadLeading, numbersBelowTheRangeAreZeroOrDenormal)
{
    for (const char* text : {"1e-50", "1e-999", "1e-99999999999999999999", "0x1p-200", "0x1p-99999999999999999999",
                             "0.01e-9223372036854775808", "0x.01p-9223372036854775808",
                             "0.0000000000000000000000000000000000000000000000000000001", "100000e-60", "1e-50 999"}) {
        const std::optional<float> value = readLeadingFloat(text);
        EXPECT_EQ(value, 0.0f) << text;
        const std::optional<float> negative = readLeadingFloat('-' + std::string(text));
        ASSERT_TRUE(negative.has_value()) << text;
        EXPECT_EQ(bitsOf<uint32_t>(*negative), 0x80000000u) << text;
    }
    EXPECT_EQ(bitsOf<uint32_t>(*readLeadingFloat("1.4e-45")), 1u);
    EXPECT_EQ(bitsOf<uint32_t>(*readLeadingFloat("1e-40")), 71362u);
    EXPECT_EQ(bitsOf<uint32_t>(*readLeadingFloat("0x1p-149")), 1u);
    EXPECT_EQ(readLeadingDouble("5e-324"), std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(readLeadingDouble("1e-400"), 0.0);
}

TEST(ReadLeading, agreesWithTheCLibraryOnOddTexts)
{
    for (const std::string text : {"1",
                                   "01",
                                   "1e",
                                   "1e+",
                                   "1e-",
                                   "1ex",
                                   "1.e5",
                                   "1..2",
                                   "1.2.3",
                                   "1e5.5",
                                   "1e0005",
                                   "0e99999999999",
                                   "0x1",
                                   "0x1.",
                                   "0x.1p4",
                                   "0x1p",
                                   "0x1pz",
                                   "0x1.fffffffp0",
                                   "0x1.000001p0",
                                   "0x1.0000010000000000001p0",
                                   "0xabcdef.12345p-3",
                                   "0x0p99999",
                                   "1f",
                                   "1e5f",
                                   "16777217",
                                   "16777219",
                                   "8388608.5",
                                   "0.1000000014901161193847656250000000001",
                                   "3.40282346638528859811704183484516925e38",
                                   "3.4028235677973366e38",
                                   "1.1754943508222875e-38",
                                   "7.0064923216240853e-46",
                                   "7.0064923216240854e-46",
                                   "2.2250738585072011e-308",
                                   "9007199254740993",
                                   "\v\f1",
                                   "1\n",
                                   "00000000000000000000000000000000000000000000000000.5",
                                   "x",
                                   "++1",
                                   "0b1",
                                   "1_000"}) {
        EXPECT_EQ(readLeadingFloat(text), scanned<float>(text)) << text;
        EXPECT_EQ(readLeadingDouble(text), scanned<double>(text)) << text;
    }
}

TEST(ReadLeading, agreesWithTheCLibraryOnManyNumbers)
{
    std::mt19937_64 random(1);
    for (int i = 0; i < 100000; ++i) {
        char text[64];
        const uint64_t bits = random();
        const int digits = 1 + static_cast<int>(bits % 20);
        std::snprintf(text, sizeof(text), i % 4 == 0 ? "%.*a" : "%.*e", digits, realOf<double>(bits));
        if (!std::isfinite(realOf<double>(bits))) continue;
        ASSERT_EQ(readLeadingDouble(text), scanned<double>(text)) << text;
        const float single = realOf<float>(static_cast<uint32_t>(bits));
        if (!std::isfinite(single)) continue;
        std::snprintf(text, sizeof(text), i % 4 == 0 ? "%.*a" : "%.*e", digits, static_cast<double>(single));
        ASSERT_EQ(readLeadingFloat(text), scanned<float>(text)) << text;
    }
}

TEST(ReadFloatToken, readsNumbersAndIgnoresWhatFollows)
{
    EXPECT_EQ(readFloatToken("0.25"), 0.25f);
    EXPECT_EQ(readFloatToken("-1e2xyz"), -100.0f);
    EXPECT_EQ(readFloatToken("1e40"), INF);
    EXPECT_EQ(readFloatToken("-1e40"), -INF);
    EXPECT_EQ(readFloatToken("1e-60"), 0.0f);
}

TEST(ReadFloatToken, agreesWithTheCLibraryOnShortDecimals)
{
    for (const char* token : {"0",
                              "-0",
                              "0.",
                              ".0",
                              "-.0",
                              "00",
                              "0e5",
                              "-0e-22",
                              "1e0",
                              "1E+5",
                              "1e-5",
                              "1e22",
                              "1e-22",
                              "1e23",
                              "1e-23",
                              "1e38",
                              "1e39",
                              "9e22",
                              "123456789e22",
                              "0.000000001e-15",
                              "9007199254740992",
                              "9007199254740993",
                              "9007199254740992e22",
                              "9007199254740992e-22",
                              "1844674407370955161",
                              "18446744073709551615",
                              "18446744073709551616",
                              "18446744073709551617",
                              "1000000000000000000000000000000000001",
                              "0000000000000000001",
                              "00000000000000000001",
                              "0.0000000000000000001",
                              "0.1234567890123456789",
                              "16777217",
                              "16777219",
                              "-16777217",
                              "16777217e3",
                              "16777216.99999999",
                              "16777217.00000001",
                              "8388608.5",
                              "8388609.5",
                              "0.5000000298023223876953125",
                              "1.00000005960464477539",
                              "1.00000017881393432617",
                              "1.000000059604645",
                              "1.000000059604644",
                              "1.000000178813934"}) {
        EXPECT_EQ(bitsOf<uint32_t>(readFloatToken(token)), bitsOf<uint32_t>(*scanned<float>(token))) << token;
    }
}

TEST(ReadFloatToken, ignoresWhatFollowsAShortDecimal)
{
    for (const char* token : {"1e", "1e+", "1e-", "1ex", "1.5.2", "1..2", "1e5.5", "1e005", "1e0000000000000000000005",
                              "+1.5", "+.5", "0x10", "1-", "1+2", "2f", "1.e3", "7,", "12e1 3"}) {
        EXPECT_EQ(bitsOf<uint32_t>(readFloatToken(token)), bitsOf<uint32_t>(*scanned<float>(token))) << token;
    }
}

TEST(ReadFloatToken, agreesWithTheCLibraryOnManyNumbers)
{
    const auto expectAgreement = [](const char* text) {
        ASSERT_EQ(bitsOf<uint32_t>(readFloatToken(text)), bitsOf<uint32_t>(*scanned<float>(text))) << text;
    };
    std::mt19937_64 random(3);
    char text[128];
    for (int i = 0; i < 200000; ++i) {
        // Digits, a point anywhere among them, and perhaps an exponent.
        const uint64_t digits = random() >> (random() % 60);
        const std::string whole = std::to_string(digits);
        const std::size_t point = random() % (whole.size() + 1);
        const int exponent = static_cast<int>(random() % 60) - 30;
        std::snprintf(text, sizeof(text), i % 3 == 0 ? "-%s.%s" : "%s.%se%d", whole.substr(0, point).c_str(),
                      whole.substr(point).c_str(), exponent);
        expectAgreement(text);
    }
    for (int i = 0; i < 200000; ++i) {
        // Half way between two floats, and as near to it as so many digits tell.
        const auto bits = static_cast<uint32_t>(0x38000000u + random() % 0x10000000u);
        const double halfway =
            (static_cast<double>(realOf<float>(bits)) + static_cast<double>(realOf<float>(bits + 1))) / 2;
        std::snprintf(text, sizeof(text), i % 2 == 0 ? "%.*g" : "%.*f", 6 + i % 14, halfway);
        expectAgreement(text);
    }
}

TEST(ReadFloatToken, readsWordsForInfinityWhole)
{
    for (const char* token : {"INF", "inf", "Infinity", "INFINITY"})
        EXPECT_EQ(readFloatToken(token), INF) << token;
    for (const char* token : {"-INF", "-inf", "-InfiNity"})
        EXPECT_EQ(readFloatToken(token), -INF) << token;
}

TEST(ReadFloatToken, readsWordsThatBeginWithNan)
{
    for (const char* token : {"NAN", "nan", "-NaN", "NANX", "nan(0x7)", "-nan-ind"}) {
        const float value = readFloatToken(token);
        EXPECT_TRUE(std::isnan(value)) << token;
        EXPECT_NE(bitsOf<uint32_t>(value) & 0x400000u, 0u) << token << " is not quiet";
    }
}

TEST(ReadFloatToken, refusesTheRest)
{
    for (const char* token :
         {"INFX", "-INFX", "INFINIT", "+INF", "+NAN", "--inf", "NA", "-", "", "abc", "x1", "0x", "."})
        expectIllegal(failureOf([token] { readFloatToken(token); }), token);
}

TEST(ReadDoubleToken, readsNumbersOnly)
{
    EXPECT_EQ(readDoubleToken("0.1"), 0.1);
    EXPECT_EQ(readDoubleToken("2.5px"), 2.5);
    for (const char* token : {"", "abc", "nan", "NAN", "inf", "-INF"})
        expectIllegal(failureOf([token] { readDoubleToken(token); }), token);
}

TEST(ReadIntegerToken, readsNumbersThatAreWhole)
{
    EXPECT_EQ(readIntegerToken("17"), 17);
    EXPECT_EQ(readIntegerToken("-3.0"), -3);
    EXPECT_EQ(readIntegerToken("1e3"), 1000);
    EXPECT_EQ(readIntegerToken("4x"), 4);
    EXPECT_EQ(readIntegerToken("2147483647"), std::numeric_limits<int32_t>::max());
    EXPECT_EQ(readIntegerToken("-2147483648"), std::numeric_limits<int32_t>::min());
}

TEST(ReadIntegerToken, refusesTheRest)
{
    for (const char* token :
         {"", "abc", "1.5", "-0.25", "2147483648", "-2147483649", "2147483647.5", "1e400", "-1e400", "nan", "inf"})
        expectIllegal(failureOf([token] { readIntegerToken(token); }), token);
}

TEST(ToText, isTheShortestThatReadsBack)
{
    EXPECT_EQ(toText(0.1f), "0.1");
    EXPECT_EQ(toText(0.1), "0.1");
    EXPECT_EQ(toText(static_cast<double>(0.1f)), "0.10000000149011612");
    EXPECT_EQ(toText(1.0f), "1");
    EXPECT_EQ(toText(-0.0), "-0");
    EXPECT_EQ(toText(16777216.0f), "16777216");
    EXPECT_EQ(toText(1e-10), "1e-10");
    EXPECT_EQ(toText(1e300), "1e+300");
}

TEST(ToText, namesWhatIsNoNumber)
{
    EXPECT_EQ(toText(std::nanf("")), "nan");
    EXPECT_EQ(toText(-std::nan("")), "nan");
    EXPECT_EQ(toText(INF), "inf");
    EXPECT_EQ(toText(-DOUBLE_INF), "-inf");
}

TEST(ToText, readsBackToTheSameBits)
{
    std::mt19937_64 random(2);
    for (int i = 0; i < 100000; ++i) {
        const uint64_t bits = random();
        const double value = realOf<double>(bits);
        if (std::isfinite(value)) {
            ASSERT_EQ(bitsOf<uint64_t>(*scanned<double>(toText(value))), bits);
            ASSERT_EQ(bitsOf<uint64_t>(*readLeadingDouble(toText(value))), bits);
        }
        const auto half = static_cast<uint32_t>(bits);
        const float single = realOf<float>(half);
        if (std::isfinite(single)) {
            ASSERT_EQ(bitsOf<uint32_t>(*scanned<float>(toText(single))), half);
            ASSERT_EQ(bitsOf<uint32_t>(*readLeadingFloat(toText(single))), half);
        }
    }
}

TEST(ToSixDigits, isTheGeneralNotation)
{
    EXPECT_EQ(toSixDigits(0.0), "0");
    EXPECT_EQ(toSixDigits(-0.0), "-0");
    EXPECT_EQ(toSixDigits(1.0), "1");
    EXPECT_EQ(toSixDigits(0.18), "0.18");
    EXPECT_EQ(toSixDigits(1.0 / 3.0), "0.333333");
    EXPECT_EQ(toSixDigits(999999.4), "999999");
    EXPECT_EQ(toSixDigits(1234567.5), "1.23457e+06");
    EXPECT_EQ(toSixDigits(0.00001), "1e-05");
    EXPECT_EQ(toSixDigits(static_cast<double>(1.6f)), "1.6");
}

TEST(ToSixDigits, namesWhatIsNoNumber)
{
    EXPECT_EQ(toSixDigits(std::nan("")), "nan");
    EXPECT_EQ(toSixDigits(-std::nan("")), "nan");
    EXPECT_EQ(toSixDigits(DOUBLE_INF), "inf");
    EXPECT_EQ(toSixDigits(-DOUBLE_INF), "-inf");
}

TEST(NumberText, localeDoesNotMatter)
{
    const CommaLocale locale;
    std::ostringstream stream;
    stream << 1.5;
    ASSERT_EQ(stream.str(), "1,5") << "the locale is not in force";
    EXPECT_EQ(readLeadingFloat("1.5"), 1.5f);
    EXPECT_EQ(readLeadingDouble("1.5e3"), 1500.0);
    EXPECT_EQ(readLeadingFloat("1,5"), 1.0f);
    EXPECT_EQ(readFloatToken("0x1.8p0"), 1.5f);
    EXPECT_EQ(readIntegerToken("1000"), 1000);
    EXPECT_EQ(toText(1.5f), "1.5");
    EXPECT_EQ(toText(1234567.25), "1234567.25");
    EXPECT_EQ(toSixDigits(1234567.5), "1.23457e+06");
    EXPECT_EQ(toSixDigits(12345.5), "12345.5");
}

} // namespace
