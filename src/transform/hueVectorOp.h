#pragma once

#include "transform/op.h"

#include <vector>

namespace Color {

/// Scales the chroma of the colours around one hue.
class HueVectorOp : public Op
{
public:
    enum Style : uint32_t
    {
        STYLE_YCH_FWD = 0,
        STYLE_YCH_REV = 1,
    };

    /// What is scaled; only chroma can be rendered.
    enum ParameterStyle : uint32_t
    {
        PARAMETER_STYLE_CHROMA = 0,
        PARAMETER_STYLE_LUMA = 1,
        PARAMETER_STYLE_HUE = 2,
    };

    /// Center and width in degrees, and the factor that chroma has at the center.
    using Params = std::vector<double>;

    // These three make an op of STYLE_YCH_FWD without parameters, which validate() refuses.
    HueVectorOp();
    HueVectorOp(BitDepth in, BitDepth out);
    HueVectorOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name,
                const Descriptions& descriptions);
    HueVectorOp(BitDepth in, BitDepth out, Style style, const Params& parameters);
    HueVectorOp(const HueVectorOp& other) = default;

    Op* clone() const override;
    /// Throws 0x20f0001 on a parameter style that cannot be rendered, 0x20f0002 on a wrong number of parameters,
    /// 0x2010011 or 0x2010012 on one out of its bounds.
    void validate() override;
    OpType getOpType() const override;
    const std::string& getOpTypeName() const override;
    bool isEqual(const Op& other) const override;
    void appendInverse(OpList& list) const override;
    float getMinimumVersion() const override;

    Style getStyle() const { return m_style; }
    void setStyle(Style style) { m_style = style; }
    ParameterStyle getParameterStyle() const { return m_parameterStyle; }
    void setParameterStyle(ParameterStyle style) { m_parameterStyle = style; }
    const Params& getParameters() const { return m_parameters; }
    void setParameters(const Params& parameters) { m_parameters = parameters; }

    // Both throw 0x20f0001 on an unknown text.
    static Style styleNamed(const std::string& text);
    static ParameterStyle parameterStyleNamed(const std::string& text);
    static const char* getStyleName(Style style);
    static const char* getParameterStyleName(ParameterStyle style);

private:
    Style m_style;
    ParameterStyle m_parameterStyle;
    Params m_parameters;
};

} // namespace Color
