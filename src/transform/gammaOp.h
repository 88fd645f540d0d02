#pragma once

#include "transform/op.h"

#include <array>
#include <vector>

namespace Color {

/// A power curve per channel, alpha included. Parameters are those of normalized values, whatever the depths.
class GammaOp : public Op
{
public:
    enum Style : uint32_t
    {
        STYLE_BASIC_FWD = 0,    ///< out = in ^ gamma
        STYLE_BASIC_REV = 1,    ///< out = in ^ (1 / gamma)
        STYLE_MONCURVE_FWD = 2, ///< power with a linear segment near black
        STYLE_MONCURVE_REV = 3,
    };

    /// Gamma alone for the basic styles, gamma and offset for the moncurve styles.
    using Params = std::vector<double>;

    // These three make an op without effect: STYLE_BASIC_FWD with gamma 1.
    GammaOp();
    GammaOp(BitDepth in, BitDepth out);
    GammaOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name,
            const Descriptions& descriptions);
    /// Alpha gets the identity parameters.
    GammaOp(BitDepth in, BitDepth out, Style style, const Params& red, const Params& green, const Params& blue);
    GammaOp(BitDepth in, BitDepth out, Style style, const Params& red, const Params& green, const Params& blue,
            const Params& alpha);
    GammaOp(const GammaOp& other) = default;

    Op* clone() const override;
    /// Throws 0x2090002 on a wrong number of parameters, 0x2010011 or 0x2010012 on one out of its bounds.
    void validate() override;
    OpType getOpType() const override;
    const std::string& getOpTypeName() const override;
    bool isNoOp() const override;
    bool isEqual(const Op& other) const override;
    void appendInverse(OpList& list) const override;

    Style getStyle() const { return m_style; }
    /// Stores the style and nothing else.
    void setStyle(Style style) { m_style = style; }
    /// Throws 0x2090001 on an unknown text.
    static Style styleNamed(const std::string& text);
    static const char* getStyleName(Style style);

    /// The channel 0 red, 1 green, 2 blue, 3 alpha.
    const Params& getParams(std::size_t channel) const { return m_params.at(channel); }
    void setParams(std::size_t channel, const Params& params) { m_params.at(channel) = params; }
    /// The parameters of a style that leave a channel as it is.
    static Params getIdentityParams(Style style);

private:
    Style m_style;
    std::array<Params, 4> m_params;
};

} // namespace Color
