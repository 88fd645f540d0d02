#include "transform/hueVectorOp.h"

#include "transform/opList.h"
#include "transform/opParameters.h"
#include "transform/styleNames.h"
#include "utils/exception.h"

#include <iterator>
#include <memory>

namespace Color {

namespace {

constexpr const char* kStyleNames[] = {"YCH_Fwd", "YCH_Rev"};
constexpr const char* kParameterStyleNames[] = {"chroma", "luma", "hue"};

constexpr double kLowerBound = 0.0;
constexpr double kUpperBounds[] = {360.0, 1000.0, 100.0}; // center, width, amount

} // namespace

HueVectorOp::HueVectorOp() : HueVectorOp(BIT_DEPTH_32f, BIT_DEPTH_32f) {}

HueVectorOp::HueVectorOp(BitDepth in, BitDepth out) : HueVectorOp(in, out, {}, {}, {}) {}

HueVectorOp::HueVectorOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name,
                         const Descriptions& descriptions)
    : Op(in, out, id, name, descriptions), m_style(STYLE_YCH_FWD), m_parameterStyle(PARAMETER_STYLE_CHROMA)
{}

HueVectorOp::HueVectorOp(BitDepth in, BitDepth out, Style style, const Params& parameters)
    : Op(in, out), m_style(style), m_parameterStyle(PARAMETER_STYLE_CHROMA), m_parameters(parameters)
{}

Op* HueVectorOp::clone() const { return new HueVectorOp(*this); }

void HueVectorOp::validate()
{
    Op::validate();
    if (m_parameterStyle != PARAMETER_STYLE_CHROMA) {
        raise(LogCategory::TRANSFORM_HUE_VECTOR, ErrorIds::HUE_VECTOR_UNRECOGNIZED_STYLE,
              getParameterStyleName(m_parameterStyle));
    }
    constexpr std::size_t count = std::size(kUpperBounds);
    if (m_parameters.size() != count) {
        raise(LogCategory::TRANSFORM_HUE_VECTOR, ErrorIds::HUE_VECTOR_WRONG_PARAMETER_COUNT, count);
    }
    for (std::size_t i = 0; i < count; ++i)
        checkBounds(LogCategory::TRANSFORM_HUE_VECTOR, m_parameters[i], kLowerBound, kUpperBounds[i]);
}

OpType HueVectorOp::getOpType() const { return OP_HUE_VECTOR; }

const std::string& HueVectorOp::getOpTypeName() const
{
    static const std::string typeName = "HueVector";
    return typeName;
}

bool HueVectorOp::isEqual(const Op& other) const
{
    const auto* hueVector = dynamic_cast<const HueVectorOp*>(&other);
    return hueVector && Op::isEqual(other) && m_style == hueVector->m_style &&
           m_parameterStyle == hueVector->m_parameterStyle && areSameValues(m_parameters, hueVector->m_parameters);
}

void HueVectorOp::appendInverse(OpList& list) const
{
    const Style style = m_style == STYLE_YCH_FWD ? STYLE_YCH_REV : STYLE_YCH_FWD;
    auto inverse = std::make_unique<HueVectorOp>(getOutBitDepth(), getInBitDepth(), style, m_parameters);
    inverse->m_parameterStyle = m_parameterStyle;
    inverse->validate();
    list.append(inverse.release());
}

float HueVectorOp::getMinimumVersion() const { return 1.4F; }

HueVectorOp::Style HueVectorOp::styleNamed(const std::string& text)
{
    const auto style = findStyle<Style>(kStyleNames, text);
    if (!style) raise(LogCategory::TRANSFORM_HUE_VECTOR, ErrorIds::HUE_VECTOR_UNRECOGNIZED_STYLE, text);
    return *style;
}

HueVectorOp::ParameterStyle HueVectorOp::parameterStyleNamed(const std::string& text)
{
    const auto style = findStyle<ParameterStyle>(kParameterStyleNames, text);
    if (!style) raise(LogCategory::TRANSFORM_HUE_VECTOR, ErrorIds::HUE_VECTOR_UNRECOGNIZED_STYLE, text);
    return *style;
}

const char* HueVectorOp::getStyleName(Style style) { return styleNameAt(kStyleNames, style); }

const char* HueVectorOp::getParameterStyleName(ParameterStyle style)
{
    return styleNameAt(kParameterStyleNames, style);
}

} // namespace Color
