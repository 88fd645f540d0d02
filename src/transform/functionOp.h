#pragma once

#include "transform/op.h"

namespace Color {

/// A change of colour model. The two styles are opposites, but the op has no inverse.
class FunctionOp : public Op
{
public:
    enum Style : uint32_t
    {
        STYLE_RGB_TO_HSV = 0,
        STYLE_HSV_TO_RGB = 1,
    };

    FunctionOp();
    FunctionOp(BitDepth in, BitDepth out, Style style = STYLE_RGB_TO_HSV);
    /// STYLE_RGB_TO_HSV.
    FunctionOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name,
               const Descriptions& descriptions);
    FunctionOp(const FunctionOp& other) = default;

    Op* clone() const override;
    OpType getOpType() const override;
    const std::string& getOpTypeName() const override;
    bool isEqual(const Op& other) const override;
    float getMinimumVersion() const override;

    Style getStyle() const { return m_style; }
    void setStyle(Style style) { m_style = style; }
    /// Throws 0x2100001 on an unknown text.
    static Style styleNamed(const std::string& text);
    static const char* getStyleName(Style style);

private:
    Style m_style;
};

} // namespace Color
