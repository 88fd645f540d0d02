#include "xml/CDLWriter.h"

#include "utils/numberText.h"

namespace Color::Xml::Writer {

namespace {

std::string listOf(const CDLOp::Params& params)
{
    std::string list;
    for (const double value : params) {
        if (!list.empty()) list += ", ";
        list += toSixDigits(value);
    }
    return list;
}

} // namespace

void CDLWriter::writeContent() const
{
    XmlFormatter& formatter = getFormatter();
    const CDLOp& cdl = getOp();
    formatter.writeStartTag("SOPNode");
    {
        const XmlFormatter::IndentScope indent(formatter);
        formatter.writeContentTag("Slope", listOf(cdl.getSlope()));
        formatter.writeContentTag("Offset", listOf(cdl.getOffset()));
        formatter.writeContentTag("Power", listOf(cdl.getPower()));
    }
    formatter.writeEndTag("SOPNode");
    formatter.writeStartTag("SatNode");
    {
        const XmlFormatter::IndentScope indent(formatter);
        formatter.writeContentTag("Saturation", toSixDigits(cdl.getSaturation()));
    }
    formatter.writeEndTag("SatNode");
}

} // namespace Color::Xml::Writer
