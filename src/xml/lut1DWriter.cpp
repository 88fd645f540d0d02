#include "xml/lut1DWriter.h"

#include "utils/sameBits.h"
#include "xml/xmlTransformWriterUtils.h"

namespace Color::Xml::Writer {

namespace {

/// Bit by bit, so that nothing of a channel is lost when it is not written.
bool hasEqualChannels(const Array::Values& values)
{
    for (std::size_t i = 0; i + 2 < values.size(); i += 3) {
        if (!haveSameBits(&values[i], &values[i + 1], 2)) return false;
    }
    return true;
}

} // namespace

void Lut1DWriter::getAttributes(XmlFormatter::Attributes& attributes) const
{
    TypedOpWriter::getAttributes(attributes);
    const Lut1DOp& lut = getOp();
    if (lut.getInterpolation() != Lut1DOp::INTERPOLATION_DEFAULT) {
        attributes.emplace_back("interpolation", Lut1DOp::getInterpolationName(lut.getInterpolation()));
    }
    if (lut.isHalfDomain()) attributes.emplace_back("halfDomain", "true");
    if (lut.hasRawHalfs()) attributes.emplace_back("rawHalfs", "true");
    if (lut.getHueAdjust() != Lut1DOp::HUE_ADJUST_NONE) {
        attributes.emplace_back("hueAdjust", Lut1DOp::getHueAdjustName(lut.getHueAdjust()));
    }
}

void Lut1DWriter::writeContent() const
{
    const Lut1DOp& lut = getOp();
    const Lut1DOp::Lut3by1DArray& array = lut.getArray();
    const Array::Values& values = array.getValues();
    // A curve that was given once is held three times.
    const uint32_t held = array.getNumColorComponents();
    const uint32_t written = held == 3 && array.isSingleCurve() && hasEqualChannels(values) ? 1 : held;
    const NumberLayout& layout = lut.hasRawHalfs() ? kHalfPatternLayout : getNumberLayout(lut.getOutBitDepth());
    writeArray(getFormatter(), {array.getLength(), written}, layout,
               {values.data(), values.size(), held / written, written});
}

} // namespace Color::Xml::Writer
