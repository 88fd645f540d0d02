#include "transform/CDLOp.h"

#include "transform/opList.h"
#include "transform/opParameters.h"
#include "transform/styleNames.h"
#include "utils/exception.h"
#include "utils/text.h"

namespace Color {

namespace {

constexpr const char* kStyleNames[] = {"v1.2_Fwd", "v1.2_Rev", "noClampFwd", "noClampRev"};

constexpr std::size_t kChannelCount = 3;
constexpr double kLowerBound = 0.0;

CDLOp::Style inverseOf(CDLOp::Style style)
{
    switch (style) {
    case CDLOp::STYLE_V1_2_FWD:
        return CDLOp::STYLE_V1_2_REV;
    case CDLOp::STYLE_V1_2_REV:
        return CDLOp::STYLE_V1_2_FWD;
    case CDLOp::STYLE_NO_CLAMP_FWD:
        return CDLOp::STYLE_NO_CLAMP_REV;
    case CDLOp::STYLE_NO_CLAMP_REV:
        return CDLOp::STYLE_NO_CLAMP_FWD;
    }
    return style;
}

// Both refuse a NaN, for which no comparison holds.

void checkAtLeastBound(const char* name, double value)
{
    const bool isInside = value >= kLowerBound;
    if (!isInside) raise(LogCategory::TRANSFORM_CDL, ErrorIds::CDL_PARAMETER_TOO_SMALL, name, value, kLowerBound);
}

void checkAboveBound(const char* name, double value)
{
    const bool isInside = value > kLowerBound;
    if (!isInside) raise(LogCategory::TRANSFORM_CDL, ErrorIds::CDL_PARAMETER_TOO_SMALL, name, value, kLowerBound);
}

} // namespace

CDLOp::CDLOp() : CDLOp(BIT_DEPTH_32f, BIT_DEPTH_32f) {}

CDLOp::CDLOp(BitDepth in, BitDepth out) : CDLOp(in, out, {}, {}, {}) {}

CDLOp::CDLOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name,
             const Descriptions& descriptions)
    : Op(in, out, id, name, descriptions), m_style(STYLE_V1_2_FWD), m_slope(kChannelCount, 1.0),
      m_offset(kChannelCount, 0.0), m_power(kChannelCount, 1.0), m_saturation(1.0)
{}

CDLOp::CDLOp(BitDepth in, BitDepth out, Style style, const Params& slope, const Params& offset, const Params& power,
             double saturation)
    : Op(in, out), m_style(style), m_slope(slope), m_offset(offset), m_power(power), m_saturation(saturation)
{}

Op* CDLOp::clone() const { return new CDLOp(*this); }

void CDLOp::validate()
{
    Op::validate();
    for (const Params* params : {&m_slope, &m_offset, &m_power}) {
        if (params->size() != kChannelCount) {
            raise(LogCategory::TRANSFORM_CDL, ErrorIds::CDL_WRONG_PARAMETER_COUNT, kChannelCount);
        }
    }
    for (const double slope : m_slope)
        checkAtLeastBound("slope", slope);
    for (const double power : m_power)
        checkAboveBound("power", power);
    // A saturation of 0 is a picture without colour: fine in the forward styles, which need no reciprocal of it.
    checkAtLeastBound("saturation", m_saturation);
}

OpType CDLOp::getOpType() const { return OP_CDL; }

const std::string& CDLOp::getOpTypeName() const
{
    static const std::string typeName = "ASC CDL";
    return typeName;
}

bool CDLOp::isNoOp() const
{
    const Params ones(kChannelCount, 1.0);
    const Params zeros(kChannelCount, 0.0);
    return m_slope == ones && m_offset == zeros && m_power == ones && m_saturation == 1.0;
}

bool CDLOp::isEqual(const Op& other) const
{
    const auto* cdl = dynamic_cast<const CDLOp*>(&other);
    return cdl && Op::isEqual(other) && m_style == cdl->m_style && areSameValues(m_slope, cdl->m_slope) &&
           areSameValues(m_offset, cdl->m_offset) && areSameValues(m_power, cdl->m_power) &&
           isSameValue(m_saturation, cdl->m_saturation);
}

// The renderer of the other style reverses the steps, so the parameters stay as they are.
void CDLOp::appendInverse(OpList& list) const
{
    list.append(
        new CDLOp(getOutBitDepth(), getInBitDepth(), inverseOf(m_style), m_slope, m_offset, m_power, m_saturation));
}

CDLOp::Style CDLOp::styleNamed(const char* text)
{
    const std::string name = orEmpty(text);
    if (name.empty()) raise(LogCategory::TRANSFORM_CDL, ErrorIds::CDL_INVALID_STYLE);
    const auto style = findStyle<Style>(kStyleNames, name);
    if (!style) raise(LogCategory::TRANSFORM_CDL, ErrorIds::CDL_UNRECOGNIZED_STYLE, name);
    return *style;
}

const char* CDLOp::getStyleName(Style style) { return styleNameAt(kStyleNames, style); }

} // namespace Color
