#include "xml/lut3DWriter.h"

#include "xml/xmlTransformWriterUtils.h"

namespace Color::Xml::Writer {

void Lut3DWriter::getAttributes(XmlFormatter::Attributes& attributes) const
{
    TypedOpWriter::getAttributes(attributes);
    const Lut3DOp::Interpolation interpolation = getOp().getInterpolation();
    if (interpolation != Lut3DOp::INTERPOLATION_DEFAULT) {
        attributes.emplace_back("interpolation", Lut3DOp::getInterpolationName(interpolation));
    }
}

void Lut3DWriter::writeContent() const
{
    const Lut3DOp::Lut3DArray& array = getOp().getArray();
    const uint32_t length = array.getLength();
    writeArray(getFormatter(), {length, length, length, array.getNumColorComponents()},
               getNumberLayout(getOp().getOutBitDepth()), {array.getValues().data(), array.getValues().size(), 1, 3});
}

} // namespace Color::Xml::Writer
