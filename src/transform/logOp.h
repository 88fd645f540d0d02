#pragma once

#include "transform/op.h"

#include <array>
#include <vector>

namespace Color {

/// A logarithmic curve, or the exponential that undoes it. Parameters are those of normalized values, whatever the
/// depths.
class LogOp : public Op
{
public:
    enum Style : uint32_t
    {
        STYLE_LOG10 = 0,
        STYLE_LOG2 = 1,
        STYLE_ANTI_LOG10 = 2,
        STYLE_ANTI_LOG2 = 3,
        STYLE_LOG_TO_LIN = 4, ///< film densities to light
        STYLE_LIN_TO_LOG = 5,
    };

    /// gamma, refWhite, refBlack, highlight, shadow for the last two styles; empty for the others. refWhite and
    /// refBlack are 10-bit code values.
    using Params = std::vector<double>;

    // These three make an op of STYLE_LOG10.
    LogOp();
    LogOp(BitDepth in, BitDepth out);
    LogOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name, const Descriptions& descriptions);
    /// Without parameters.
    LogOp(BitDepth in, BitDepth out, Style style);
    LogOp(BitDepth in, BitDepth out, Style style, const Params& red, const Params& green, const Params& blue);
    LogOp(const LogOp& other) = default;

    Op* clone() const override;
    /// Throws 0x20b0002 on a wrong number of parameters, 0x20b0003 on too small a gamma, 0x20b0004 when a pair is out
    /// of order.
    void validate() override;
    OpType getOpType() const override;
    const std::string& getOpTypeName() const override;
    bool isEqual(const Op& other) const override;
    void appendInverse(OpList& list) const override;

    Style getStyle() const { return m_style; }
    void setStyle(Style style) { m_style = style; }
    /// Throws 0x20b0001 on an unknown text.
    static Style styleNamed(const std::string& text);
    static const char* getStyleName(Style style);
    /// True for the two styles with parameters.
    static bool hasParams(Style style) { return style == STYLE_LOG_TO_LIN || style == STYLE_LIN_TO_LOG; }

    /// The channel 0 red, 1 green, 2 blue.
    const Params& getParams(std::size_t channel) const { return m_params.at(channel); }
    void setParams(std::size_t channel, const Params& params) { m_params.at(channel) = params; }

private:
    Style m_style;
    std::array<Params, 3> m_params;
};

} // namespace Color
