#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Color {

/// Writes XML elements, each on a line of its own, indented by how deep it stands.
class XmlFormatter
{
public:
    /// Names and values in the order in which they are written.
    using Attributes = std::vector<std::pair<std::string, std::string>>;

    /// While it lives, elements stand one level deeper.
    class IndentScope
    {
    public:
        explicit IndentScope(XmlFormatter& formatter) : m_formatter(formatter) { ++m_formatter.m_indentLevel; }
        IndentScope(const IndentScope&) = delete;
        IndentScope& operator=(const IndentScope&) = delete;
        ~IndentScope() { --m_formatter.m_indentLevel; }

    private:
        XmlFormatter& m_formatter;
    };

    /// The stream must outlive the formatter.
    explicit XmlFormatter(std::ostream& stream) : m_stream(stream) {}
    XmlFormatter(const XmlFormatter&) = delete;
    XmlFormatter& operator=(const XmlFormatter&) = delete;

    // Attribute values and content are escaped here; names are written as they are.
    void writeStartTag(const std::string& name, const Attributes& attributes = {});
    void writeEmptyTag(const std::string& name, const Attributes& attributes);
    void writeEndTag(const std::string& name);
    void writeContentTag(const std::string& name, const Attributes& attributes, std::string_view content);
    void writeContentTag(const std::string& name, std::string_view content) { writeContentTag(name, {}, content); }

    /// For text that is written as it is.
    std::ostream& getStream() { return m_stream; }

private:
    void indent();
    /// A tag up to the end of its attributes.
    void openTag(const std::string& name, const Attributes& attributes);
    void writeEscaped(std::string_view text);

    std::ostream& m_stream;
    uint32_t m_indentLevel = 0;
};

} // namespace Color
