#include "transform/exposureContrastOp.h"

#include "transform/opList.h"
#include "transform/opParameters.h"
#include "transform/shareOrCopy.h"
#include "transform/styleNames.h"
#include "utils/exception.h"

#include <memory>

namespace Color {

namespace {

constexpr const char* kStyleNames[] = {"video", "log", "linear"};

template <class Property>
bool hasDynamic(const Property& property, DynamicProperty::Ids id)
{
    return property.hasId(id) && property.isDynamic();
}

template <class Property>
bool isSameProperty(const Property& a, const Property& b)
{
    return isSameValue(a.get(), b.get()) && a.isDynamic() == b.isDynamic();
}

} // namespace

ExposureContrastOp::ExposureContrastOp() : ExposureContrastOp(BIT_DEPTH_32f, BIT_DEPTH_32f) {}

ExposureContrastOp::ExposureContrastOp(BitDepth in, BitDepth out) : ExposureContrastOp(in, out, {}, {}, {}) {}

ExposureContrastOp::ExposureContrastOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name,
                                       const Descriptions& descriptions)
    : Op(in, out, id, name, descriptions), m_style(STYLE_LINEAR),
      m_exposure(boost::make_shared<ExposureDynamicProperty>(0.0)),
      m_contrast(boost::make_shared<ContrastDynamicProperty>(1.0)), m_pivot(1.0)
{}

ExposureContrastOp::ExposureContrastOp(const ExposureContrastOp& other)
    : Op(other), m_style(other.m_style), m_exposure(shareOrCopy(other.m_exposure)),
      m_contrast(shareOrCopy(other.m_contrast)), m_pivot(other.m_pivot)
{}

Op* ExposureContrastOp::clone() const { return new ExposureContrastOp(*this); }

OpType ExposureContrastOp::getOpType() const { return OP_EXPOSURE_CONTRAST; }

const std::string& ExposureContrastOp::getOpTypeName() const
{
    static const std::string typeName = "Exposure/Contrast";
    return typeName;
}

bool ExposureContrastOp::isNoOp() const { return m_exposure->get() == 0.0 && m_contrast->get() == 1.0; }

bool ExposureContrastOp::isEqual(const Op& other) const
{
    const auto* exposureContrast = dynamic_cast<const ExposureContrastOp*>(&other);
    return exposureContrast && Op::isEqual(other) && m_style == exposureContrast->m_style &&
           isSameProperty(*m_exposure, *exposureContrast->m_exposure) &&
           isSameProperty(*m_contrast, *exposureContrast->m_contrast) &&
           isSameValue(m_pivot, exposureContrast->m_pivot);
}

void ExposureContrastOp::appendInverse(OpList& list) const
{
    auto copy = std::make_unique<ExposureContrastOp>(*this);
    copy->validate();
    list.append(copy.release());
}

bool ExposureContrastOp::hasDynamicProperties() const
{
    return m_exposure->isDynamic() || m_contrast->isDynamic() || Op::hasDynamicProperties();
}

bool ExposureContrastOp::hasDynamicProperty(DynamicProperty::Ids id) const
{
    return hasDynamic(*m_exposure, id) || hasDynamic(*m_contrast, id) || Op::hasDynamicProperty(id);
}

void ExposureContrastOp::setDynamicProperty(const DynamicProperty& property)
{
    checkHas(property.getId());
    if (hasDynamic(*m_exposure, property.getId())) {
        m_exposure->write(property);
    } else if (hasDynamic(*m_contrast, property.getId())) {
        m_contrast->write(property);
    } else {
        Op::setDynamicProperty(property);
    }
}

void ExposureContrastOp::getDynamicProperty(DynamicProperty& property) const
{
    checkHas(property.getId());
    if (hasDynamic(*m_exposure, property.getId())) {
        m_exposure->read(property);
    } else if (hasDynamic(*m_contrast, property.getId())) {
        m_contrast->read(property);
    } else {
        Op::getDynamicProperty(property);
    }
}

ExposureContrastOp::Style ExposureContrastOp::styleNamed(const std::string& text)
{
    const auto style = findStyle<Style>(kStyleNames, text);
    if (!style) {
        raise(LogCategory::TRANSFORM_EXPOSURE_CONTRAST, ErrorIds::EXPOSURE_CONTRAST_UNRECOGNIZED_STYLE, text);
    }
    return *style;
}

const char* ExposureContrastOp::getStyleName(Style style) { return styleNameAt(kStyleNames, style); }

void ExposureContrastOp::checkHas(DynamicProperty::Ids id) const
{
    if (!hasDynamicProperty(id)) {
        raise(LogCategory::TRANSFORM_ALL, ErrorIds::DYNAMIC_PROPERTY_NOT_AVAILABLE, DynamicProperty::getName(id),
              getDisplayName());
    }
}

} // namespace Color
