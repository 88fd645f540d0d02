#pragma once

#include "transform/op.h"

namespace Color {

/// Brings negative values to 0 while the hue ratio stays.
class GamutMapOp : public Op
{
public:
    enum Style : uint32_t
    {
        STYLE_NONE = 0,
        STYLE_DW3 = 1,
    };

    GamutMapOp();
    GamutMapOp(BitDepth in, BitDepth out, Style style = STYLE_NONE);
    /// STYLE_NONE.
    GamutMapOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name,
               const Descriptions& descriptions);
    GamutMapOp(const GamutMapOp& other) = default;

    Op* clone() const override;
    OpType getOpType() const override;
    const std::string& getOpTypeName() const override;
    bool isNoOp() const override;
    bool isEqual(const Op& other) const override;
    /// Appends an op of STYLE_NONE: what was clipped cannot be brought back.
    void appendInverse(OpList& list) const override;
    float getMinimumVersion() const override;

    Style getStyle() const { return m_style; }
    void setStyle(Style style) { m_style = style; }
    /// Throws 0x20e0001 on an unknown text.
    static Style styleNamed(const std::string& text);
    static const char* getStyleName(Style style);

private:
    Style m_style;
};

} // namespace Color
