#include "transform/gamutMapOp.h"

#include "transform/opList.h"
#include "transform/styleNames.h"
#include "utils/exception.h"

namespace Color {

namespace {

constexpr const char* kStyleNames[] = {"none", "dw3"};

} // namespace

GamutMapOp::GamutMapOp() : GamutMapOp(BIT_DEPTH_32f, BIT_DEPTH_32f) {}

GamutMapOp::GamutMapOp(BitDepth in, BitDepth out, Style style) : Op(in, out), m_style(style) {}

GamutMapOp::GamutMapOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name,
                       const Descriptions& descriptions)
    : Op(in, out, id, name, descriptions), m_style(STYLE_NONE)
{}

Op* GamutMapOp::clone() const { return new GamutMapOp(*this); }

OpType GamutMapOp::getOpType() const { return OP_GAMUT_MAP; }

const std::string& GamutMapOp::getOpTypeName() const
{
    static const std::string typeName = "GamutMap";
    return typeName;
}

bool GamutMapOp::isNoOp() const { return m_style == STYLE_NONE; }

bool GamutMapOp::isEqual(const Op& other) const
{
    const auto* gamutMap = dynamic_cast<const GamutMapOp*>(&other);
    return gamutMap && Op::isEqual(other) && m_style == gamutMap->m_style;
}

void GamutMapOp::appendInverse(OpList& list) const
{
    list.append(new GamutMapOp(getOutBitDepth(), getInBitDepth(), STYLE_NONE));
}

float GamutMapOp::getMinimumVersion() const { return 1.4F; }

GamutMapOp::Style GamutMapOp::styleNamed(const std::string& text)
{
    const auto style = findStyle<Style>(kStyleNames, text);
    if (!style) raise(LogCategory::TRANSFORM_GAMUT_MAP, ErrorIds::GAMUT_MAP_UNRECOGNIZED_STYLE, text);
    return *style;
}

const char* GamutMapOp::getStyleName(Style style) { return styleNameAt(kStyleNames, style); }

} // namespace Color
