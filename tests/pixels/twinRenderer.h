#pragma once

/// \file
/// What the parts of the scalar twin share: formats, pixels and renderers.

#include "morvane/bitDepth.h"
#include "morvane/pixelFormat.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <vector>

namespace Twin {

using Morvane_2015_1_42::BitDepth;
using Morvane_2015_1_42::PixelFormat;

/// The same bytes as another type.
template <class To, class From>
To bitCast(const From& from)
{
    static_assert(sizeof(To) == sizeof(From), "a bit cast keeps the size");
    To to;
    std::memcpy(&to, &from, sizeof to);
    return to;
}

/// Half bits of a float, and the float of half bits, by Imath's half class.
uint16_t halfBitsOf(float value);
float floatOfHalfBits(uint16_t bits);

/// Nominal maximum of a depth, which is also its range.
float maxOf(BitDepth depth);

bool isInteger(BitDepth depth);

/// What a format value says, read from its bits.
struct Layout
{
    explicit Layout(PixelFormat format);

    BitDepth depth;
    bool isPacked;
    bool hasAlpha;
    unsigned elementSize;          ///< bytes; a packed word is one element
    unsigned pixelSize;            ///< bytes
    std::array<unsigned, 4> place; ///< element index of red, green, blue and alpha
};

/// All 32 formats.
const std::vector<PixelFormat>& allFormats();

/// Red, green, blue, alpha.
using Pixel = std::array<float, 4>;

/// Where a pixel lies in the whole image.
struct Position
{
    uint32_t x = 0;
    uint32_t y = 0;
};

Pixel read(const Layout& layout, const uint8_t* source);
void write(const Layout& layout, const Pixel& pixel, uint8_t* destination);

enum class Bypass
{
    OFF,
    STATIC, ///< on for good: the op never reaches a renderer
    DYNAMIC ///< on, and can be switched while rendering
};

enum class Kernel
{
    SCALE,
    SCALE_WITH_OFFSET,
    MATRIX,
    MATRIX_WITH_OFFSET,
    RANGE_SCALE_MIN_MAX,
    RANGE_SCALE_MIN,
    RANGE_SCALE_MAX,
    RANGE_SCALE,
    RANGE_MIN_MAX,
    RANGE_MIN,
    RANGE_MAX,
    LUT_1D,
    LUT_1D_HALF_CODE,
    LUT_1D_HUE_ADJUST,
    LUT_1D_HALF_CODE_HUE_ADJUST,
    INV_LUT_1D,
    INV_LUT_1D_HALF_CODE,
    LUT_3D,
    LUT_3D_TETRAHEDRAL,
    GAMMA_BASIC,
    GAMMA_MONCURVE_FWD,
    GAMMA_MONCURVE_REV,
    EC_VIDEO,
    EC_LOGARITHMIC,
    EC_LINEAR,
    LOG,
    ANTI_LOG,
    LOG_2_LIN,
    LIN_2_LOG,
    CDL_V1_2_FWD,
    CDL_NO_CLAMP_FWD,
    CDL_V1_2_REV,
    CDL_NO_CLAMP_REV,
    DITHER,
    GAMUT_MAP_DW3,
    HUE_VECTOR_YCH_FWD,
    HUE_VECTOR_YCH_REV,
    FUNCTION_RGB_TO_HSV,
    FUNCTION_HSV_TO_RGB,
};

using Formula = std::function<Pixel(const Pixel&, Position)>;

/// Which NaN comes out of a formula.
enum class Nans
{
    EXACT, ///< at most one NaN meets in an operation: its bits pass, made quiet
    ANY    ///< where two meet, the compiler chooses which of them passes
};

struct Renderer
{
    Kernel kernel;
    Formula formula;
    Nans nans = Nans::EXACT;
    bool isBypassed = false;
};

/// An op without parameters in the scale of a depth: a change of depth rescales nothing.
struct NormalizedOp
{
    NormalizedOp(BitDepth inDepth, BitDepth outDepth) : in(inDepth), out(outDepth) {}

    void setInBitDepth(BitDepth depth) { in = depth; }
    void setOutBitDepth(BitDepth depth) { out = depth; }

    BitDepth in;
    BitDepth out;
    Bypass bypass = Bypass::OFF;
};

} // namespace Twin
