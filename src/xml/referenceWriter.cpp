#include "xml/referenceWriter.h"

namespace Color::Xml::Writer {

void ReferenceWriter::getAttributes(XmlFormatter::Attributes& attributes) const
{
    TypedOpWriter::getAttributes(attributes);
    const ReferenceOp& op = getOp();
    if (!op.getAlias().empty()) attributes.emplace_back("alias", op.getAlias());
    if (!op.getPath().empty()) attributes.emplace_back("path", op.getPath());
    if (op.getBasePath() != BASE_PATH_NONE) attributes.emplace_back("basePath", getBasePathName(op.getBasePath()));
}

} // namespace Color::Xml::Writer
