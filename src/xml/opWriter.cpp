#include "xml/opWriter.h"

namespace Color::Xml::Writer {

void OpWriter::write() const
{
    XmlFormatter& formatter = getFormatter();
    XmlFormatter::Attributes attributes;
    getAttributes(attributes);
    formatter.writeStartTag(getTagName(), attributes);
    {
        const XmlFormatter::IndentScope indent(formatter);
        for (const std::string& description : m_op.getDescriptions())
            formatter.writeContentTag("Description", description);
        if (m_op.getBypass()->isDynamic()) writeDynamicParameter("LOOK_SWITCH");
        writeContent();
    }
    formatter.writeEndTag(getTagName());
}

void OpWriter::getAttributes(XmlFormatter::Attributes& attributes) const
{
    if (!m_op.getId().empty()) attributes.emplace_back("id", m_op.getId());
    if (!m_op.getName().empty()) attributes.emplace_back("name", m_op.getName());
    attributes.emplace_back("inBitDepth", getBitDepthName(m_op.getInBitDepth()));
    attributes.emplace_back("outBitDepth", getBitDepthName(m_op.getOutBitDepth()));
    // Readers refuse every other value.
    if (m_op.getBypass()->get()) attributes.emplace_back("bypass", "true");
}

void OpWriter::writeDynamicParameter(const char* param) const
{
    getFormatter().writeEmptyTag("DynamicParameter", {{"param", param}});
}

} // namespace Color::Xml::Writer
