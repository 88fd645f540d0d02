#include "xml/xmlTransformWriter.h"

#include "utils/exception.h"
#include "xml/outputFile.h"
#include "xml/transformWriter.h"

namespace Color {

XMLTransformWriter::~XMLTransformWriter() = default;

void XMLTransformWriter::write(const ColorTransformPtr& transform, std::ostream& stream) const
{
    if (!transform) raise(LogCategory::XML_WRITER, ErrorIds::WRITER_TRANSFORM_NULL);
    try {
        transform->validate();
    } catch (const Exception& exception) {
        raise(LogCategory::XML_ALL, ErrorIds::XML_TRANSFORM_INVALID_NAMED, exception.getMessage());
    }
    stream << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    XmlFormatter formatter(stream);
    Xml::Writer::TransformWriter(formatter, *transform).write();
}

void XMLTransformWriter::write(const ColorTransformPtr& transform, const std::string& fileName) const
{
    writeOutputFile(fileName, [&](std::ostream& stream) { write(transform, stream); });
}

} // namespace Color
