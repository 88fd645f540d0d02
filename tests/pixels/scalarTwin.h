#pragma once

/// \file
/// A slow second opinion on the CPU path: one pixel at a time, plain arithmetic in the order of the formulas, nothing
/// shared with the library but the values of its public enumerations. Tests compare the library with it bit for bit.

#include "tests/pixels/colourModelTwin.h"
#include "tests/pixels/curveTwin.h"
#include "tests/pixels/lutTwin.h"

#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <variant>

namespace Twin {

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

using Op = std::variant<MatrixOp, RangeOp, Lut1DOp, InvLut1DOp, Lut3DOp, GammaOp, LogOp, ExposureContrastOp, CDLOp,
                        GamutMapOp, HueVectorOp, FunctionOp, DitherOp>;

BitDepth inBitDepthOf(const Op& op);
BitDepth outBitDepthOf(const Op& op);
Bypass bypassOf(const Op& op);
/// The op with another bypass.
Op with(Bypass bypass, Op op);

using RenderersPtr = std::shared_ptr<const std::vector<Renderer>>;

/// What a transform of these ops does between two formats.
class Processor
{
public:
    Processor(const std::vector<Op>& ops, PixelFormat in, PixelFormat out);
    Processor(const RenderersPtr& renderers, PixelFormat in, PixelFormat out);

    const std::vector<Renderer>& renderers() const { return *m_renderers; }

    /// What holds for the NaNs of the result.
    Nans nans() const;

    /// Pixels of one line, the first of them at the position.
    void apply(const uint8_t* source, uint8_t* destination, size_t numPixels, Position position) const;

private:
    Layout m_in;
    Layout m_out;
    RenderersPtr m_renderers;
};

/// The processors of one list of ops. Those between the same two depths share their renderers, whose tables take time
/// to make.
class Processors
{
public:
    explicit Processors(const std::vector<Op>& ops) : m_ops(ops) {}

    Processor between(PixelFormat in, PixelFormat out);

private:
    std::vector<Op> m_ops;
    std::map<std::pair<BitDepth, BitDepth>, RenderersPtr> m_renderers;
};

} // namespace Twin
