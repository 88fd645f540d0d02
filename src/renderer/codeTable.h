#pragma once

#include "renderer/transformProcessor.h"

#include <memory>

namespace Rendering {

/// The results of a processor for every code of a source channel. A pixel is then one look-up per channel, with the
/// bits that the kernels give, as they filled the table.
class CodeTable
{
public:
    virtual ~CodeTable();
    CodeTable(const CodeTable&) = delete;
    CodeTable& operator=(const CodeTable&) = delete;

    /// A row of pixels in the formats that the table is made for. Source and destination may be the same.
    virtual void renderRow(const unsigned char* source, unsigned char* destination, uint32_t width) const = 0;

protected:
    CodeTable() = default;
};

/// As renderImage() for the processor.
void renderImage(const CodeTable& table, const SourceRows& source, const DestinationRows& destination, const ROI& roi);

/// Null where a table cannot stand for the processor or brings nothing: channels that meet, values that may change,
/// only kernels that are as fast as a table, a source that is no code of its own, a destination of 32f from 16-bit
/// codes.
std::unique_ptr<const CodeTable> makeCodeTable(const TransformProcessor& processor, PixelFormat in, PixelFormat out);

} // namespace Rendering
