#include "xml/rangeWriter.h"

#include "utils/numberText.h"

#include <cmath>

namespace Color::Xml::Writer {

void RangeWriter::writeContent() const
{
    const auto writeLimit = [this](const char* name, double limit) {
        if (!std::isnan(limit)) getFormatter().writeContentTag(name, toSixDigits(limit));
    };
    writeLimit("minInValue", getOp().getMinIn());
    writeLimit("maxInValue", getOp().getMaxIn());
    writeLimit("minOutValue", getOp().getMinOut());
    writeLimit("maxOutValue", getOp().getMaxOut());
}

} // namespace Color::Xml::Writer
