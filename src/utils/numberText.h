#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Color {

/// Numbers as text, independent of the process locale.

/// Reads the number that text begins with, as scanf's "%f" and "%lf" do for a decimal or hexadecimal number; what
/// follows it is ignored. Nothing when text does not begin with a number (infinity and NaN words are none). A number
/// beyond the type's range gives infinity, one below it 0 or a denormal.
std::optional<float> readLeadingFloat(std::string_view text);
std::optional<double> readLeadingDouble(std::string_view text);

/// Reads a value token of a file: a number as above; or, without regard to case, INF, INFINITY and their negatives as
/// whole words, or a word that begins with NAN or -NAN. Throws 0x3020008 with the token otherwise.
float readFloatToken(std::string_view token);

/// Reads a double attribute or token: a number as above, or throws 0x3020008.
double readDoubleToken(std::string_view token);

/// Reads a whole number, given as any number that equals its integer part and fits 32 bits, or throws 0x3020008.
int32_t readIntegerToken(std::string_view token);

/// The shortest text that reads back to the same value; "nan", "inf" and "-inf" for the others.
std::string toText(float value);
std::string toText(double value);

/// Six significant digits in general notation, like "0.18", "1e-07", "nan" or "-inf": how a file spells its numbers
/// outside of arrays.
std::string toSixDigits(double value);

} // namespace Color
