#include "xml/lut1DElt.h"

#include "utils/exception.h"
#include "xml/attributes.h"
#include "xml/interpolationAttribute.h"

#include <Imath/half.h>
#include <cmath>
#include <utility>

namespace Color::Xml::Reader {

namespace {

/// The float that a 16-bit pattern, read as a number, means as a half. Of a number beyond 16 bits the low ones count; a
/// NaN is the pattern 0.
float floatOfRawHalf(float number)
{
    // The low bits of whatever does not fit are 0.
    constexpr float limit = 0x1p63F;
    const int64_t pattern = std::fabs(number) < limit ? static_cast<int64_t>(number) : 0;
    Imath::half half;
    half.setBits(static_cast<uint16_t>(pattern));
    return half;
}

HalfFlags with(HalfFlags flags, HalfFlags flag) { return static_cast<HalfFlags>(flags | flag); }

} // namespace

template <class LutOp>
CurveElt<LutOp>::CurveElt(const std::string& name, TransformElt& parent, const ReadContext& context)
    : TypedOpElt<LutOp>(name, parent, context, BIT_DEPTH_32f, BIT_DEPTH_32f, std::string(), std::string(),
                        Descriptions(), Lut1DOp::INTERPOLATION_DEFAULT, 0U, HALF_FLAGS_NONE)
{}

template <class LutOp>
void CurveElt<LutOp>::start(Attributes attributes)
{
    TypedOpElt<LutOp>::start(attributes);
    LutOp& op = this->getTypedOp();
    const auto addFlag = [&](const char* value, HalfFlags flag, ErrorId failure) {
        if (!equalsIgnoreCase(value, "true")) {
            raise(LogCategory::XML_READER, failure, this->getTypeName(), value, this->getCurrentLine(),
                  this->getFileName());
        }
        op.setHalfFlags(with(op.getHalfFlags(), flag));
    };
    forEachAttribute(attributes, [&](const char* name, const char* value) {
        if (equalsIgnoreCase(name, "interpolation")) {
            readInterpolation(*this, op, value);
        } else if (equalsIgnoreCase(name, "halfDomain")) {
            addFlag(value, HALF_FLAGS_HALF_DOMAIN, ErrorIds::XML_HALF_DOMAIN_ILLEGAL);
        } else if (equalsIgnoreCase(name, "rawHalfs")) {
            addFlag(value, HALF_FLAGS_RAW_HALFS, ErrorIds::XML_RAW_HALFS_ILLEGAL);
        }
    });
}

template <class LutOp>
FileArray* CurveElt<LutOp>::updateDimension(const Dimensions& dimensions)
{
    if (dimensions.size() != 2 || dimensions[0] < 1 || (dimensions[1] != 1 && dimensions[1] != 3)) return nullptr;
    m_length = static_cast<uint32_t>(dimensions[0]);
    m_numColorComponents = static_cast<uint32_t>(dimensions[1]);
    m_array.capacity = this->getTypedOp().getArray().getNumValues(m_length, m_numColorComponents);
    m_array.sizeText = spellSize(m_length, m_numColorComponents);
    return &m_array;
}

template <class LutOp>
void CurveElt<LutOp>::storeCurves(std::size_t count)
{
    if (m_array.capacity == 0) raise(LogCategory::XML_READER, ErrorIds::XML_ARRAY_INCOMPLETE);
    if (count != m_array.capacity) {
        raise(LogCategory::XML_READER, ErrorIds::XML_ARRAY_TOO_FEW_VALUES, m_array.sizeText, count, this->getTypeName(),
              this->getCurrentLine(), this->getFileName());
    }
    Lut1DOp::Lut3by1DArray& array = this->getTypedOp().getArray();
    if (m_numColorComponents == 1) {
        array.setSingleCurve(m_array.values);
        m_array.values = {};
    } else {
        array.getValues() = std::move(m_array.values);
        array.resize(m_length, m_numColorComponents); // the size that they have already
    }
    array.validate();
    setCompleted(true);
}

template class CurveElt<Lut1DOp>;
template class CurveElt<InvLut1DOp>;

void Lut1DElt::finalize(std::size_t count)
{
    if (getTypedOp().hasRawHalfs()) {
        for (float& value : getFileArray().values)
            value = floatOfRawHalf(value);
    }
    storeCurves(count);
}

std::string Lut1DElt::spellSize(uint32_t length, uint32_t numColorComponents) const
{
    return std::to_string(length) + "x" + std::to_string(numColorComponents);
}

void Lut1DElt_1_4::start(Attributes attributes)
{
    Lut1DElt::start(attributes);
    const char* hueAdjust = findAttribute(attributes, "hueAdjust");
    if (!hueAdjust) return;
    if (!equalsIgnoreCase(hueAdjust, "dw3")) {
        raise(LogCategory::XML_READER, ErrorIds::XML_HUE_ADJUST_ILLEGAL, getTypeName(), hueAdjust, getCurrentLine(),
              getFileName());
    }
    getTypedOp().setHueAdjust(Lut1DOp::HUE_ADJUST_DW3);
}

void InvLut1DElt::finalize(std::size_t count)
{
    storeCurves(count);
    getTypedOp().setUp();
    getTypedOp().setStyle(InvLut1DOp::getDefaultStyle(getTypedOp().getHalfFlags()));
}

std::string InvLut1DElt::spellSize(uint32_t length, uint32_t) const
{
    // Messages have always told the length of an inverse twice.
    return std::to_string(length) + "x" + std::to_string(length);
}

} // namespace Color::Xml::Reader
