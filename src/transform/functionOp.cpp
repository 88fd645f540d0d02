#include "transform/functionOp.h"

#include "transform/styleNames.h"
#include "utils/exception.h"

namespace Color {

namespace {

constexpr const char* kStyleNames[] = {"RGB_to_HSV", "HSV_to_RGB"};

} // namespace

FunctionOp::FunctionOp() : FunctionOp(BIT_DEPTH_32f, BIT_DEPTH_32f) {}

FunctionOp::FunctionOp(BitDepth in, BitDepth out, Style style) : Op(in, out), m_style(style) {}

FunctionOp::FunctionOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name,
                       const Descriptions& descriptions)
    : Op(in, out, id, name, descriptions), m_style(STYLE_RGB_TO_HSV)
{}

Op* FunctionOp::clone() const { return new FunctionOp(*this); }

OpType FunctionOp::getOpType() const { return OP_FUNCTION; }

const std::string& FunctionOp::getOpTypeName() const
{
    static const std::string typeName = "Function";
    return typeName;
}

bool FunctionOp::isEqual(const Op& other) const
{
    const auto* function = dynamic_cast<const FunctionOp*>(&other);
    return function && Op::isEqual(other) && m_style == function->m_style;
}

float FunctionOp::getMinimumVersion() const { return 1.6F; }

FunctionOp::Style FunctionOp::styleNamed(const std::string& text)
{
    const auto style = findStyle<Style>(kStyleNames, text);
    if (!style) raise(LogCategory::TRANSFORM_FUNCTION, ErrorIds::FUNCTION_UNRECOGNIZED_STYLE, text);
    return *style;
}

const char* FunctionOp::getStyleName(Style style) { return styleNameAt(kStyleNames, style); }

} // namespace Color
