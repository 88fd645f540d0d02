#include "xml/xmlFormatter.h"

namespace Color {

namespace {

constexpr std::string_view kIndentation = "   ";
constexpr std::string_view kEscapedCharacters = "\"&'<>";

std::string_view entityOf(char character)
{
    switch (character) {
    case '"':
        return "&quot;";
    case '&':
        return "&amp;";
    case '\'':
        return "&apos;";
    case '<':
        return "&lt;";
    default:
        return "&gt;";
    }
}

} // namespace

void XmlFormatter::writeStartTag(const std::string& name, const Attributes& attributes)
{
    openTag(name, attributes);
    m_stream << ">\n";
}

void XmlFormatter::writeEmptyTag(const std::string& name, const Attributes& attributes)
{
    openTag(name, attributes);
    m_stream << " />\n";
}

void XmlFormatter::writeEndTag(const std::string& name)
{
    indent();
    m_stream << "</" << name << ">\n";
}

void XmlFormatter::writeContentTag(const std::string& name, const Attributes& attributes, std::string_view content)
{
    openTag(name, attributes);
    m_stream << '>';
    writeEscaped(content);
    m_stream << "</" << name << ">\n";
}

void XmlFormatter::indent()
{
    for (uint32_t level = 0; level < m_indentLevel; ++level)
        m_stream << kIndentation;
}

void XmlFormatter::openTag(const std::string& name, const Attributes& attributes)
{
    indent();
    m_stream << '<' << name;
    for (const auto& [attribute, value] : attributes) {
        m_stream << ' ' << attribute << "=\"";
        writeEscaped(value);
        m_stream << '"';
    }
}

void XmlFormatter::writeEscaped(std::string_view text)
{
    for (;;) {
        const std::size_t plain = text.find_first_of(kEscapedCharacters);
        m_stream << text.substr(0, plain);
        if (plain == std::string_view::npos) return;
        m_stream << entityOf(text[plain]);
        text.remove_prefix(plain + 1);
    }
}

} // namespace Color
