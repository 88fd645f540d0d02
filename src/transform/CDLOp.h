#pragma once

#include "transform/op.h"

#include <vector>

namespace Color {

/// The ASC colour decision list: out = saturate((in * slope + offset) ^ power). Parameters are those of normalized
/// values, whatever the depths.
class CDLOp : public Op
{
public:
    enum Style : uint32_t
    {
        STYLE_V1_2_FWD = 0, ///< clamps to [0, 1] as version 1.2 of the format tells
        STYLE_V1_2_REV = 1,
        STYLE_NO_CLAMP_FWD = 2,
        STYLE_NO_CLAMP_REV = 3,
    };

    using Params = std::vector<double>; ///< red, green, blue

    // These three make an op without effect but the clamp of STYLE_V1_2_FWD.
    CDLOp();
    CDLOp(BitDepth in, BitDepth out);
    CDLOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name, const Descriptions& descriptions);
    CDLOp(BitDepth in, BitDepth out, Style style, const Params& slope, const Params& offset, const Params& power,
          double saturation);
    CDLOp(const CDLOp& other) = default;

    Op* clone() const override;
    /// Throws 0x20c0003 on a list that has not three values, 0x20c0004 on a slope or saturation below 0 or a power not
    /// above 0.
    void validate() override;
    OpType getOpType() const override;
    const std::string& getOpTypeName() const override;
    bool isNoOp() const override;
    bool isEqual(const Op& other) const override;
    void appendInverse(OpList& list) const override;

    Style getStyle() const { return m_style; }
    void setStyle(Style style) { m_style = style; }
    /// Throws 0x20c0001 on null or empty text, 0x20c0002 on an unknown one.
    static Style styleNamed(const char* text);
    static const char* getStyleName(Style style);

    const Params& getSlope() const { return m_slope; }
    const Params& getOffset() const { return m_offset; }
    const Params& getPower() const { return m_power; }
    double getSaturation() const { return m_saturation; }
    void setSlope(const Params& slope) { m_slope = slope; }
    void setOffset(const Params& offset) { m_offset = offset; }
    void setPower(const Params& power) { m_power = power; }
    void setSaturation(double saturation) { m_saturation = saturation; }

private:
    Style m_style;
    Params m_slope;
    Params m_offset;
    Params m_power;
    double m_saturation;
};

} // namespace Color
