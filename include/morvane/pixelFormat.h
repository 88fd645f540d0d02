#pragma once

#include "morvane/bitDepth.h"
#include "morvane/export.h"

#include <cstdint>

/// The table of pixel formats: X(name, value, depth, channel order, channels, packed, bytes per pixel).
/// Everything that is listed per format, here and in the library, is made from it.
// clang-format off
#define MORVANE_PIXEL_FORMATS(X)                        \
    X(PF_RGB_8i,    0x1017,   8i, RGB,  3, false,  3)   \
    X(PF_RGB_10i,   0x2017,  10i, RGB,  3, false,  6)   \
    X(PF_RGB_10iP,  0x2117,  10i, RGB,  3, true,   4)   \
    X(PF_RGB_12i,   0x4017,  12i, RGB,  3, false,  6)   \
    X(PF_RGB_16i,   0x8017,  16i, RGB,  3, false,  6)   \
    X(PF_RGB_16f,  0x10017,  16f, RGB,  3, false,  6)   \
    X(PF_RGB_32f,  0x20017,  32f, RGB,  3, false, 12)   \
    X(PF_RGBA_8i,   0x101f,   8i, RGBA, 4, false,  4)   \
    X(PF_RGBA_10i,  0x201f,  10i, RGBA, 4, false,  8)   \
    X(PF_RGBA_10iP, 0x211f,  10i, RGBA, 4, true,   4)   \
    X(PF_RGBA_12i,  0x401f,  12i, RGBA, 4, false,  8)   \
    X(PF_RGBA_16i,  0x801f,  16i, RGBA, 4, false,  8)   \
    X(PF_RGBA_16f, 0x1001f,  16f, RGBA, 4, false,  8)   \
    X(PF_RGBA_32f, 0x2001f,  32f, RGBA, 4, false, 16)   \
    X(PF_BGR_8i,    0x1027,   8i, BGR,  3, false,  3)   \
    X(PF_BGR_10i,   0x2027,  10i, BGR,  3, false,  6)   \
    X(PF_BGR_12i,   0x4027,  12i, BGR,  3, false,  6)   \
    X(PF_BGR_16i,   0x8027,  16i, BGR,  3, false,  6)   \
    X(PF_BGR_16f,  0x10027,  16f, BGR,  3, false,  6)   \
    X(PF_BGR_32f,  0x20027,  32f, BGR,  3, false, 12)   \
    X(PF_BGRA_8i,   0x102f,   8i, BGRA, 4, false,  4)   \
    X(PF_BGRA_10i,  0x202f,  10i, BGRA, 4, false,  8)   \
    X(PF_BGRA_12i,  0x402f,  12i, BGRA, 4, false,  8)   \
    X(PF_BGRA_16i,  0x802f,  16i, BGRA, 4, false,  8)   \
    X(PF_BGRA_16f, 0x1002f,  16f, BGRA, 4, false,  8)   \
    X(PF_BGRA_32f, 0x2002f,  32f, BGRA, 4, false, 16)   \
    X(PF_ABGR_8i,   0x104f,   8i, ABGR, 4, false,  4)   \
    X(PF_ABGR_10i,  0x204f,  10i, ABGR, 4, false,  8)   \
    X(PF_ABGR_12i,  0x404f,  12i, ABGR, 4, false,  8)   \
    X(PF_ABGR_16i,  0x804f,  16i, ABGR, 4, false,  8)   \
    X(PF_ABGR_16f, 0x1004f,  16f, ABGR, 4, false,  8)   \
    X(PF_ABGR_32f, 0x2004f,  32f, ABGR, 4, false, 16)
// clang-format on

namespace Morvane_2015_1_42 {

/// How the channels of a pixel lie in memory. Bits 0 to 3: channels present; bits 4 to 6: their order; bit 8: three
/// 10-bit values packed into one 32-bit word; the BitDepth above them.
///
/// Channels stand in the order of the name, one element each: unsigned 8-bit for 8i, unsigned 16-bit in native byte
/// order for 10i, 12i and 16i, half for 16f, float for 32f; pixels follow each other without gaps. A packed pixel
/// (10iP) is one word of four bytes, most significant byte first: red in bits 31 to 22, green in 21 to 12, blue in
/// 11 to 2, and two bits of alpha in 1 to 0 (0 in PF_RGB_10iP).
enum PixelFormat : uint32_t
{
    PF_UNKNOWN = 0,
#define MORVANE_ENUMERATOR(name, value, depth, order, channels, packed, bytes) name = value,
    MORVANE_PIXEL_FORMATS(MORVANE_ENUMERATOR)
#undef MORVANE_ENUMERATOR
};

/// The name of a format as above, "Unknown" for any other value. A constant text.
MORVANE_API const char* pfToStr(PixelFormat format);

/// The format of an exact, case-sensitive name; PF_UNKNOWN for any other text and for null.
MORVANE_API PixelFormat strToPF(const char* name);

/// 3 or 4; 0 for a value that is no format.
MORVANE_API unsigned getNumChannels(PixelFormat format);

/// Bytes from one pixel to the next; 0 for a value that is no format.
MORVANE_API unsigned getPixelSizeInByte(PixelFormat format);

} // namespace Morvane_2015_1_42
