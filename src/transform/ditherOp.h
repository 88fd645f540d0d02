#pragma once

#include "transform/op.h"

namespace Color {

/// Adds a fixed pattern that spreads the error of rounding to the dither depth. Values stay in the scale of the input
/// depth.
class DitherOp : public Op
{
public:
    // These three make an op without a dither depth, which validate() refuses.
    DitherOp();
    DitherOp(BitDepth in, BitDepth out);
    DitherOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name,
             const Descriptions& descriptions);
    DitherOp(BitDepth in, BitDepth out, BitDepth ditherBitDepth);
    DitherOp(const DitherOp& other) = default;

    Op* clone() const override;
    /// Throws 0x2010001 without a dither depth.
    void validate() override;
    OpType getOpType() const override;
    const std::string& getOpTypeName() const override;
    /// True when the input is no finer than the dither depth, and for any float dither depth.
    bool isNoOp() const override;
    bool isEqual(const Op& other) const override;

    /// False when the input is no finer than the dither depth, or the dither depth is a float one.
    static bool hasEffect(BitDepth in, BitDepth dither);

    BitDepth getDitherBitDepth() const { return m_ditherBitDepth; }
    void setDitherBitDepth(BitDepth depth) { m_ditherBitDepth = depth; }

private:
    BitDepth m_ditherBitDepth;
};

} // namespace Color
