#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>

namespace Color {

/// One argument of formatText(): a text, a whole number or a floating-point number. Refers to texts, copies numbers.
class FormatArgument
{
public:
    enum class Kind
    {
        Text,
        Signed,
        Unsigned,
        Real
    };

    FormatArgument(const char* text) : m_kind(Kind::Text), m_text(text ? text : "") {}
    FormatArgument(std::string_view text) : m_kind(Kind::Text), m_text(text) {}
    FormatArgument(const std::string& text) : m_kind(Kind::Text), m_text(text) {}
    template <class T, std::enable_if_t<std::is_integral_v<T> && std::is_signed_v<T>, int> = 0>
    FormatArgument(T value) : m_kind(Kind::Signed), m_signed(value)
    {}
    template <class T, std::enable_if_t<std::is_integral_v<T> && std::is_unsigned_v<T>, int> = 0>
    FormatArgument(T value) : m_kind(Kind::Unsigned), m_unsigned(value)
    {}
    template <class T, std::enable_if_t<std::is_floating_point_v<T>, int> = 0>
    FormatArgument(T value) : m_kind(Kind::Real), m_real(static_cast<double>(value))
    {}

    Kind kind() const { return m_kind; }
    std::string_view text() const { return m_text; }
    int64_t signedValue() const { return m_signed; }
    uint64_t unsignedValue() const { return m_unsigned; }
    double real() const { return m_real; }

private:
    Kind m_kind;
    std::string_view m_text;
    union {
        int64_t m_signed = 0;
        uint64_t m_unsigned;
        double m_real;
    };
};

using FormatArguments = std::initializer_list<FormatArgument>;

/// Writes the format text into buffer, with its placeholders replaced, and terminates it; what does not fit is cut.
/// Returns the number of characters written, at most capacity - 1.
///
/// Placeholders: %N$s, %N$d, %N$f take argument N (from 1), as often and in whatever order they come; %s, %d, %f take
/// the next argument in order; %% is a percent sign. %s writes any argument, %d whole numbers, %f numbers with six
/// decimals. An argument that does not fit counts as 0. Anything else that starts with % is copied as it stands, and so
/// is a placeholder whose argument was not given. Independent of the process locale.
std::size_t formatText(char* buffer, std::size_t capacity, const char* format, FormatArguments arguments);

} // namespace Color
