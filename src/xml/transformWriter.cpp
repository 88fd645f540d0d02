#include "xml/transformWriter.h"

#include "utils/numberText.h"
#include "xml/opWriterTable.h"
#include "xml/xmlTransformWriterUtils.h"

#include <algorithm>

namespace Color::Xml::Writer {

namespace {

constexpr const char* kTagName = "ProcessList";
constexpr float kLowestVersion = 1.3F; // the first that has all four forms of a matrix

bool isEmpty(const Metadata& node) { return node.isLeaf() && node.getValue().empty(); }

void writeMetadata(XmlFormatter& formatter, const Metadata& node)
{
    if (node.isLeaf()) {
        formatter.writeContentTag(node.getName(), node.getValue());
        return;
    }
    formatter.writeStartTag(node.getName());
    {
        const XmlFormatter::IndentScope indent(formatter);
        for (const Metadata& child : node.getChildren())
            writeMetadata(formatter, child);
    }
    formatter.writeEndTag(node.getName());
}

} // namespace

void TransformWriter::write() const
{
    XmlFormatter& formatter = getFormatter();
    formatter.writeStartTag(kTagName, getAttributes());
    {
        const XmlFormatter::IndentScope indent(formatter);
        for (const std::string& description : m_transform.getDescriptions())
            formatter.writeContentTag("Description", description);
        writeDescriptors();
        if (!isEmpty(m_transform.getMetadata())) writeMetadata(formatter, m_transform.getMetadata());
        writeOps();
    }
    formatter.writeEndTag(kTagName);
}

XmlFormatter::Attributes TransformWriter::getAttributes() const
{
    XmlFormatter::Attributes attributes = {{"version", toSixDigits(static_cast<double>(getVersion()))},
                                           {"id", m_transform.getId()}};
    if (!m_transform.getName().empty()) attributes.emplace_back("name", m_transform.getName());
    if (!m_transform.getInverseOf().empty()) attributes.emplace_back("inverseOf", m_transform.getInverseOf());
    return attributes;
}

float TransformWriter::getVersion() const
{
    float version = kLowestVersion;
    for (std::size_t i = 0; i < m_transform.getOpList().size(); ++i)
        version = std::max(version, getFileVersion(*m_transform.getOpList().get(i)));
    return version;
}

void TransformWriter::writeDescriptors() const
{
    const auto writeDescriptor = [this](const char* name, const std::string& text) {
        if (!text.empty()) getFormatter().writeContentTag(name, text);
    };
    writeDescriptor("InputDescriptor", m_transform.getInputDescriptor());
    writeDescriptor("OutputDescriptor", m_transform.getOutputDescriptor());
}

void TransformWriter::writeOps() const
{
    for (std::size_t i = 0; i < m_transform.getOpList().size(); ++i) {
        if (const auto writer = makeOpWriter(getFormatter(), *m_transform.getOpList().get(i))) writer->write();
    }
}

} // namespace Color::Xml::Writer
