#include "morvane/pixelFormat.h"

#include "utils/text.h"

#include <string_view>

namespace Morvane_2015_1_42 {

namespace {

struct FormatRow
{
    PixelFormat format;
    const char* name;
    unsigned channels;
    unsigned bytes;
};

constexpr FormatRow FORMATS[] = {
#define MORVANE_FORMAT_ROW(name, value, depth, order, channels, packed, bytes) {name, #name, channels, bytes},
    MORVANE_PIXEL_FORMATS(MORVANE_FORMAT_ROW)
#undef MORVANE_FORMAT_ROW
};

constexpr FormatRow UNKNOWN_FORMAT = {PF_UNKNOWN, "Unknown", 0, 0};

const FormatRow& rowOf(PixelFormat format)
{
    for (const FormatRow& row : FORMATS)
        if (row.format == format) return row;
    return UNKNOWN_FORMAT;
}

} // namespace

const char* pfToStr(PixelFormat format) { return rowOf(format).name; }

PixelFormat strToPF(const char* name)
{
    const std::string_view wanted = Color::orEmpty(name);
    for (const FormatRow& row : FORMATS)
        if (wanted == row.name) return row.format;
    return PF_UNKNOWN;
}

unsigned getNumChannels(PixelFormat format) { return rowOf(format).channels; }

unsigned getPixelSizeInByte(PixelFormat format) { return rowOf(format).bytes; }

} // namespace Morvane_2015_1_42
