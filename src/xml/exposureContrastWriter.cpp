#include "xml/exposureContrastWriter.h"

#include "utils/numberText.h"

namespace Color::Xml::Writer {

void ExposureContrastWriter::writeContent() const
{
    const ExposureContrastOp& op = getOp();
    // What a host can set is kept to the last bit.
    getFormatter().writeEmptyTag("ECParams", {{"exposure", toText(op.getExposure()->get())},
                                              {"contrast", toText(op.getContrast()->get())},
                                              {"pivot", toSixDigits(op.getPivot())}});
    if (op.getExposure()->isDynamic()) writeDynamicParameter("EXPOSURE");
    if (op.getContrast()->isDynamic()) writeDynamicParameter("CONTRAST");
}

} // namespace Color::Xml::Writer
