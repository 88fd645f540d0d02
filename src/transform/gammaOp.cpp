#include "transform/gammaOp.h"

#include "transform/opList.h"
#include "transform/opParameters.h"
#include "transform/styleNames.h"
#include "utils/exception.h"

#include <algorithm>
#include <memory>

namespace Color {

namespace {

constexpr const char* kStyleNames[] = {"basicFwd", "basicRev", "moncurveFwd", "moncurveRev"};

constexpr double kMinGamma = 1.0;
constexpr double kMaxGamma = 10.0;
constexpr double kMinOffset = 0.0;
constexpr double kMaxOffset = 0.9;

GammaOp::Style inverseOf(GammaOp::Style style)
{
    switch (style) {
    case GammaOp::STYLE_BASIC_FWD:
        return GammaOp::STYLE_BASIC_REV;
    case GammaOp::STYLE_BASIC_REV:
        return GammaOp::STYLE_BASIC_FWD;
    case GammaOp::STYLE_MONCURVE_FWD:
        return GammaOp::STYLE_MONCURVE_REV;
    case GammaOp::STYLE_MONCURVE_REV:
        return GammaOp::STYLE_MONCURVE_FWD;
    }
    return style;
}

} // namespace

GammaOp::GammaOp() : GammaOp(BIT_DEPTH_32f, BIT_DEPTH_32f) {}

GammaOp::GammaOp(BitDepth in, BitDepth out) : GammaOp(in, out, {}, {}, {}) {}

GammaOp::GammaOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name,
                 const Descriptions& descriptions)
    : Op(in, out, id, name, descriptions), m_style(STYLE_BASIC_FWD)
{
    m_params.fill(getIdentityParams(m_style));
}

GammaOp::GammaOp(BitDepth in, BitDepth out, Style style, const Params& red, const Params& green, const Params& blue)
    : GammaOp(in, out, style, red, green, blue, getIdentityParams(style))
{}

GammaOp::GammaOp(BitDepth in, BitDepth out, Style style, const Params& red, const Params& green, const Params& blue,
                 const Params& alpha)
    : Op(in, out), m_style(style), m_params{red, green, blue, alpha}
{}

Op* GammaOp::clone() const { return new GammaOp(*this); }

void GammaOp::validate()
{
    Op::validate();
    const std::size_t count = getIdentityParams(m_style).size();
    for (const Params& params : m_params) {
        if (params.size() != count) {
            raise(LogCategory::TRANSFORM_GAMMA, ErrorIds::GAMMA_WRONG_PARAMETER_COUNT, count);
        }
    }
    for (const Params& params : m_params) {
        checkBounds(LogCategory::TRANSFORM_GAMMA, params[0], kMinGamma, kMaxGamma);
        if (count > 1) checkBounds(LogCategory::TRANSFORM_GAMMA, params[1], kMinOffset, kMaxOffset);
    }
}

OpType GammaOp::getOpType() const { return OP_GAMMA; }

const std::string& GammaOp::getOpTypeName() const
{
    static const std::string typeName = "Gamma";
    return typeName;
}

// Alpha has no say.
bool GammaOp::isNoOp() const
{
    const Params identity = getIdentityParams(m_style);
    return m_params[0] == identity && m_params[1] == identity && m_params[2] == identity;
}

bool GammaOp::isEqual(const Op& other) const
{
    const auto* gamma = dynamic_cast<const GammaOp*>(&other);
    return gamma && Op::isEqual(other) && m_style == gamma->m_style &&
           std::equal(m_params.begin(), m_params.end(), gamma->m_params.begin(), areSameValues);
}

void GammaOp::appendInverse(OpList& list) const
{
    auto inverse = std::make_unique<GammaOp>(getOutBitDepth(), getInBitDepth(), inverseOf(m_style), m_params[0],
                                             m_params[1], m_params[2], m_params[3]);
    inverse->validate();
    list.append(inverse.release());
}

GammaOp::Style GammaOp::styleNamed(const std::string& text)
{
    const auto style = findStyle<Style>(kStyleNames, text);
    if (!style) raise(LogCategory::TRANSFORM_GAMMA, ErrorIds::GAMMA_UNRECOGNIZED_STYLE, text);
    return *style;
}

const char* GammaOp::getStyleName(Style style) { return styleNameAt(kStyleNames, style); }

GammaOp::Params GammaOp::getIdentityParams(Style style)
{
    const bool isMoncurve = style == STYLE_MONCURVE_FWD || style == STYLE_MONCURVE_REV;
    return isMoncurve ? Params{1.0, 0.0} : Params{1.0};
}

} // namespace Color
