#include "xml/xmlFormatter.h"

#include <gtest/gtest.h>
#include <sstream>

using namespace Color;

namespace {

class FormatterTest : public ::testing::Test
{
protected:
    std::ostringstream m_stream;
    XmlFormatter m_formatter{m_stream};
};

} // namespace

TEST_F(FormatterTest, everyTagStandsOnALine)
{
    m_formatter.writeStartTag("A");
    m_formatter.writeStartTag("B", {{"x", "1"}, {"y", ""}});
    m_formatter.writeEmptyTag("C", {});
    m_formatter.writeEmptyTag("D", {{"z", "2"}});
    m_formatter.writeContentTag("E", "text");
    m_formatter.writeContentTag("F", {{"w", "3"}}, "");
    m_formatter.writeEndTag("A");
    EXPECT_EQ(m_stream.str(), "<A>\n<B x=\"1\" y=\"\">\n<C />\n<D z=\"2\" />\n<E>text</E>\n<F w=\"3\"></F>\n</A>\n");
}

TEST_F(FormatterTest, aScopeIndentsByThreeBlanks)
{
    m_formatter.writeStartTag("A");
    {
        const XmlFormatter::IndentScope outer(m_formatter);
        m_formatter.writeContentTag("B", "b");
        {
            const XmlFormatter::IndentScope inner(m_formatter);
            m_formatter.writeStartTag("C");
            m_formatter.writeEmptyTag("D", {});
            m_formatter.writeEndTag("C");
        }
        m_formatter.writeEmptyTag("E", {});
    }
    m_formatter.writeEndTag("A");
    EXPECT_EQ(m_stream.str(), "<A>\n   <B>b</B>\n      <C>\n      <D />\n      </C>\n   <E />\n</A>\n");
}

TEST_F(FormatterTest, escapesValuesAndContent)
{
    m_formatter.writeContentTag("A", {{"x", "\"&'<>"}}, "a\"b&c'd<e>f&amp;");
    EXPECT_EQ(m_stream.str(), "<A x=\"&quot;&amp;&apos;&lt;&gt;\">a&quot;b&amp;c&apos;d&lt;e&gt;f&amp;amp;</A>\n");
}

TEST_F(FormatterTest, leavesEveryOtherByteAlone)
{
    std::string bytes;
    for (int code = 0; code < 256; ++code) {
        const char character = static_cast<char>(code);
        if (std::string("\"&'<>").find(character) == std::string::npos) bytes += character;
    }
    m_formatter.writeContentTag("A", {{"x", bytes}}, bytes);
    EXPECT_EQ(m_stream.str(), "<A x=\"" + bytes + "\">" + bytes + "</A>\n");
}

TEST_F(FormatterTest, givesItsStreamForPlainText)
{
    const XmlFormatter::IndentScope indent(m_formatter);
    m_formatter.getStream() << "1 < 2\n";
    EXPECT_EQ(m_stream.str(), "1 < 2\n");
}
