#pragma once

/// \file
/// A slow second opinion on the CPU path: one pixel at a time, plain arithmetic in the order of the formulas, nothing
/// shared with the library but the values of its public enumerations. Tests compare the library with it bit for bit.

#include "morvane/bitDepth.h"
#include "morvane/pixelFormat.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <variant>
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
};

struct Renderer
{
    Kernel kernel;
    std::function<Pixel(const Pixel&)> formula;
    bool isBypassed = false;
};

struct MatrixOp
{
    /// The identity between the two depths.
    MatrixOp(BitDepth in, BitDepth out);
    MatrixOp(BitDepth in, BitDepth out, const std::array<float, 16>& matrix, const std::array<float, 4>& offsets = {});

    void setInBitDepth(BitDepth depth);
    void setOutBitDepth(BitDepth depth);
    std::optional<Renderer> makeRenderer() const;

    BitDepth in;
    BitDepth out;
    std::array<float, 16> values; ///< row by row
    std::array<float, 4> offsets{};
    Bypass bypass = Bypass::OFF;
};

struct RangeOp
{
    static constexpr double UNSET = std::numeric_limits<double>::quiet_NaN();

    RangeOp(BitDepth in, BitDepth out, double minIn, double maxIn, double minOut, double maxOut);

    void setInBitDepth(BitDepth depth);
    void setOutBitDepth(BitDepth depth);
    /// Nothing for a range that changes no value.
    std::optional<Renderer> makeRenderer() const;

    BitDepth in;
    BitDepth out;
    double minIn;
    double maxIn;
    double minOut;
    double maxOut;
    double scale = 1;
    double offset = 0;
    double lowerBound = UNSET;
    double upperBound = UNSET;
    double alphaScale = 1;
    Bypass bypass = Bypass::OFF;

private:
    void derive();
};

using Op = std::variant<MatrixOp, RangeOp>;

BitDepth inBitDepthOf(const Op& op);
BitDepth outBitDepthOf(const Op& op);
Bypass bypassOf(const Op& op);
/// The op with another bypass.
Op with(Bypass bypass, Op op);

/// What a transform of these ops does between two formats.
class Processor
{
public:
    Processor(const std::vector<Op>& ops, PixelFormat in, PixelFormat out);

    const std::vector<Renderer>& renderers() const { return m_renderers; }

    void apply(const uint8_t* source, uint8_t* destination, size_t numPixels) const;

private:
    Layout m_in;
    Layout m_out;
    std::vector<Renderer> m_renderers;
};

} // namespace Twin
