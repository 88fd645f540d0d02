#pragma once

#include "transform/op.h"

namespace Color {

using ExposurePropertyPtr = boost::shared_ptr<ExposureDynamicProperty>;
using ContrastPropertyPtr = boost::shared_ptr<ContrastDynamicProperty>;

/// Exposure in stops and contrast around a pivot. Both can be made dynamic: they are then shared with clones and
/// renderers, and a host changes them without a new finalize.
class ExposureContrastOp : public Op
{
public:
    enum Style : uint32_t
    {
        STYLE_VIDEO = 0,
        STYLE_LOG = 1,
        STYLE_LINEAR = 2,
    };

    // These three make an op without effect: STYLE_LINEAR, exposure 0, contrast 1, pivot 1, nothing dynamic.
    ExposureContrastOp();
    ExposureContrastOp(BitDepth in, BitDepth out);
    ExposureContrastOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name,
                       const Descriptions& descriptions);
    /// Shares properties that are dynamic.
    ExposureContrastOp(const ExposureContrastOp& other);

    Op* clone() const override;
    OpType getOpType() const override;
    const std::string& getOpTypeName() const override;
    /// By the values of this moment, dynamic or not.
    bool isNoOp() const override;
    bool isEqual(const Op& other) const override;
    /// Appends a copy with the same values and depths: nothing is undone.
    void appendInverse(OpList& list) const override;

    bool hasDynamicProperties() const override;
    bool hasDynamicProperty(DynamicProperty::Ids id) const override;
    // Both throw 0x2010013 when this op has no such property that is dynamic.
    void setDynamicProperty(const DynamicProperty& property) override;
    void getDynamicProperty(DynamicProperty& property) const override;

    Style getStyle() const { return m_style; }
    void setStyle(Style style) { m_style = style; }
    /// Throws 0x20a0001 on an unknown text.
    static Style styleNamed(const std::string& text);
    static const char* getStyleName(Style style);

    /// In stops. Never null.
    const ExposurePropertyPtr& getExposure() const { return m_exposure; }
    /// Never null.
    const ContrastPropertyPtr& getContrast() const { return m_contrast; }
    /// The normalized value that contrast leaves as it is.
    double getPivot() const { return m_pivot; }
    void setPivot(double pivot) { m_pivot = pivot; }

private:
    /// Throws 0x2010013 with the display name when no such property of this op is dynamic.
    void checkHas(DynamicProperty::Ids id) const;

    Style m_style;
    ExposurePropertyPtr m_exposure;
    ContrastPropertyPtr m_contrast;
    double m_pivot;
};

} // namespace Color
