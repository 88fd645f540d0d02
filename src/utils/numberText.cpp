#include "utils/numberText.h"

#include "utils/exception.h"
#include "utils/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

namespace Color {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isHexDigit(char c) { return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

bool startsWithIgnoreCase(std::string_view text, std::string_view prefix)
{
    return equalsIgnoreCase(text.substr(0, prefix.size()), prefix);
}

/// Whether a number that a type cannot hold is too large for it, rather than too small: the place of its leading digit
/// tells, since every type holds 1. The text is the whole number without its sign and its "0x".
bool isTooLarge(std::string_view number, bool hexadecimal)
{
    const std::size_t letter = std::min(number.find_first_of(hexadecimal ? "pP" : "eE"), number.size());
    const std::string_view digits = number.substr(0, letter);
    std::string_view exponentText = number.substr(std::min(letter + 1, number.size()));
    if (!exponentText.empty() && exponentText.front() == '+') exponentText.remove_prefix(1);

    int64_t exponent = 0;
    const auto result = std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent);
    if (result.ec == std::errc::result_out_of_range) return exponentText.front() != '-';

    const auto point = static_cast<int64_t>(std::min(digits.find('.'), digits.size()));
    const auto leading = static_cast<int64_t>(digits.find_first_not_of("0."));
    const int64_t places = leading < point ? point - leading : point + 1 - leading;
    return exponent > -places * (hexadecimal ? 4 : 1); // a sum could overflow
}

template <class Real>
std::optional<Real> readLeading(std::string_view text)
{
    text = trimmed(text);
    const bool negative = !text.empty() && text.front() == '-';
    if (negative || (!text.empty() && text.front() == '+')) text.remove_prefix(1);
    const bool hexadecimal = startsWithIgnoreCase(text, "0x");
    if (hexadecimal) text.remove_prefix(2);
    // Only here may a number begin: from_chars() would take a second sign, and the words for infinity and NaN.
    if (text.empty() || (text.front() != '.' && !(hexadecimal ? isHexDigit : isDigit)(text.front()))) return {};

    Real value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value,
                                        hexadecimal ? std::chars_format::hex : std::chars_format::general);
    if (result.ec == std::errc::invalid_argument) return {};
    if (result.ec == std::errc::result_out_of_range)
        value = isTooLarge({text.data(), static_cast<std::size_t>(result.ptr - text.data())}, hexadecimal)
                    ? std::numeric_limits<Real>::infinity()
                    : Real(0);
    return negative ? -value : value;
}

/// The powers of ten that a double holds exactly.
constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                   1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int kLargestPower = 22;

/// Takes the digits off the front of text and appends them to a number, which wraps around when there are too many of
/// them. Returns how many there are.
std::size_t takeDigits(std::string_view& text, uint64_t& number)
{
    std::size_t count = 0;
    for (; count < text.size() && isDigit(text[count]); ++count)
        number = number * 10 + static_cast<uint64_t>(text[count] - '0');
    text.remove_prefix(count);
    return count;
}

/// Reads in a few steps what most numbers of a file are: decimal numbers of not too many digits. The digits as a whole
/// number and the power of ten are then exact as doubles, so one operation gives the nearest double of the number, and
/// this the nearest float, but where it stands right between two floats: which one is nearer then depends on what was
/// rounded off. Nothing for these, and for every other token.
std::optional<float> readShortDecimal(std::string_view token)
{
    constexpr std::size_t maxDigits = 19; // all fit a uint64_t
    constexpr uint64_t largestExact = uint64_t{1} << 53;

    const bool negative = !token.empty() && token.front() == '-';
    if (negative) token.remove_prefix(1);
    uint64_t digits = 0;
    std::size_t count = takeDigits(token, digits);
    int power = 0;
    if (!token.empty() && token.front() == '.') {
        token.remove_prefix(1);
        const std::size_t decimals = takeDigits(token, digits);
        count += decimals;
        if (count > maxDigits) return {};
        power = -static_cast<int>(decimals);
    }
    if (count == 0 || count > maxDigits || digits > largestExact) return {};
    if (!token.empty()) {
        if (token.front() != 'e' && token.front() != 'E') return {};
        token.remove_prefix(1);
        const bool negativeExponent = !token.empty() && token.front() == '-';
        if (!token.empty() && (negativeExponent || token.front() == '+')) token.remove_prefix(1);
        uint64_t exponent = 0;
        const std::size_t exponentDigits = takeDigits(token, exponent);
        if (!token.empty() || exponentDigits == 0 || exponentDigits > 2) return {};
        power += negativeExponent ? -static_cast<int>(exponent) : static_cast<int>(exponent);
    }
    if (power < -kLargestPower || power > kLargestPower) return {};

    const auto exactDigits = static_cast<double>(digits);
    const double number = power < 0 ? exactDigits / kPowersOfTen[-power] : exactDigits * kPowersOfTen[power];

    // The bits of a double beyond those that a float has. The number is nowhere near the limits of a float.
    constexpr uint64_t surplusBits = (uint64_t{1} << 29) - 1;
    constexpr uint64_t halfway = uint64_t{1} << 28;
    uint64_t bits = 0;
    std::memcpy(&bits, &number, sizeof(bits));
    if ((bits & surplusBits) == halfway) return {};
    return static_cast<float>(negative ? -number : number);
}

[[noreturn]] void raiseIllegal(std::string_view token)
{
    raise(LogCategory::XML_READER, ErrorIds::XML_CHARACTERS_ILLEGAL, token);
}

template <class Real>
std::string shortestText(Real value)
{
    if (std::isnan(value)) return "nan"; // without a sign
    char text[32];
    return std::string(text, std::to_chars(text, text + sizeof(text), value).ptr);
}

} // namespace

std::optional<float> readLeadingFloat(std::string_view text) { return readLeading<float>(text); }

std::optional<double> readLeadingDouble(std::string_view text) { return readLeading<double>(text); }

float readFloatToken(std::string_view token)
{
    if (const auto number = readShortDecimal(token)) return *number;
    if (const auto number = readLeadingFloat(token)) return *number;

    const bool negative = !token.empty() && token.front() == '-';
    const std::string_view word = token.substr(negative ? 1 : 0);
    if (equalsIgnoreCase(word, "INF") || equalsIgnoreCase(word, "INFINITY")) {
        const float infinity = std::numeric_limits<float>::infinity();
        return negative ? -infinity : infinity;
    }
    if (startsWithIgnoreCase(word, "NAN")) return std::numeric_limits<float>::quiet_NaN();
    raiseIllegal(token);
}

double readDoubleToken(std::string_view token)
{
    if (const auto number = readLeadingDouble(token)) return *number;
    raiseIllegal(token);
}

int32_t readIntegerToken(std::string_view token)
{
    const double number = readDoubleToken(token);
    const bool fits = number >= std::numeric_limits<int32_t>::min() && number <= std::numeric_limits<int32_t>::max();
    if (!fits || number != std::trunc(number)) raiseIllegal(token);
    return static_cast<int32_t>(number);
}

std::string toText(float value) { return shortestText(value); }

std::string toText(double value) { return shortestText(value); }

std::string toSixDigits(double value)
{
    if (std::isnan(value)) return "nan"; // without a sign
    char text[32];
    return std::string(text, std::to_chars(text, text + sizeof(text), value, std::chars_format::general, 6).ptr);
}

} // namespace Color
