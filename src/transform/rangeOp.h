#pragma once

#include "transform/op.h"

namespace Color {

/// Scales and clamps: out = clamp(in * scale + offset). The four limits map minIn to minOut and maxIn to maxOut; one
/// that is not set is NaN. Input limits are in the scale of the input depth, output limits in that of the output depth.
class RangeOp : public Op
{
public:
    // These three make an op without limits.
    RangeOp();
    RangeOp(BitDepth in, BitDepth out);
    RangeOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name,
            const Descriptions& descriptions);
    /// Throws as derive() does.
    RangeOp(BitDepth in, BitDepth out, double minIn, double maxIn, double minOut, double maxOut);
    RangeOp(const RangeOp& other) = default;

    Op* clone() const override;
    // Both rescale the limits of their side, and throw as derive() does.
    void setInBitDepth(BitDepth depth) override;
    void setOutBitDepth(BitDepth depth) override;
    /// Throws 0x2070001 when only one limit of a pair is set, 0x2070003 when a minimum is above its maximum.
    void validate() override;
    OpType getOpType() const override;
    const std::string& getOpTypeName() const override;
    bool isNoOp() const override;
    bool isEqual(const Op& other) const override;

    double getMinIn() const { return m_minIn; }
    double getMaxIn() const { return m_maxIn; }
    double getMinOut() const { return m_minOut; }
    double getMaxOut() const { return m_maxOut; }
    /// The setters store; derive() then makes scale, offset and bounds from the limits.
    void setMinIn(double value) { m_minIn = value; }
    void setMaxIn(double value) { m_maxIn = value; }
    void setMinOut(double value) { m_minOut = value; }
    void setMaxOut(double value) { m_maxOut = value; }
    /// Throws 0x2070002 when minIn and maxIn are set and nearly equal.
    void derive();

    double getScale() const { return m_scale; }
    double getOffset() const { return m_offset; }
    /// Clamps on the output side, NaN for none.
    double getLowerBound() const { return m_lowerBound; }
    double getUpperBound() const { return m_upperBound; }
    /// max(out depth) / max(in depth).
    double getAlphaScale() const { return m_alphaScale; }

    /// True when values change by more than the ratio given, clamping apart: a noticeable offset, or a scale or alpha
    /// scale that differs from the ratio by more than a millionth.
    bool scalesOtherThan(double ratio) const;

private:
    /// The clamp at one end of the output. An input limit beyond what an integer depth can hold needs none.
    double makeBound(double limitIn, bool isBeyondInputs, double limitOut, double endOut) const;

    double m_minIn;
    double m_maxIn;
    double m_minOut;
    double m_maxOut;
    double m_scale;
    double m_offset;
    double m_lowerBound;
    double m_upperBound;
    double m_alphaScale;
};

} // namespace Color
