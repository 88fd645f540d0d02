#include "transform/lut1DOp.h"

#include "transform/invLut1DOp.h"
#include "transform/opList.h"
#include "utils/exception.h"

#include <Imath/half.h>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>

namespace Color {

namespace {

constexpr uint32_t kComponents = 3;
constexpr float kTolerance = 1e-6F; ///< of isNoOp(), as a part of the range

const char* const kInterpolationNames[] = {"default", "linear", "cubic"};

bool hasHalfDomain(HalfFlags flags) { return (flags & HALF_FLAGS_HALF_DOMAIN) != 0; }

/// One entry per code of an integer depth.
uint32_t defaultLength(BitDepth in, HalfFlags flags)
{
    const float range = getBitDepthValueRange(in);
    const bool isInteger = range > 1.0F;
    return !hasHalfDomain(flags) && isInteger ? static_cast<uint32_t>(range) + 1 : Lut1DOp::kHalfDomainLength;
}

/// What the identity holds at each position.
class Identity
{
public:
    Identity(BitDepth depth, HalfFlags flags, uint32_t length)
        : m_isHalfDomain(hasHalfDomain(flags)), m_max(getBitDepthMaxValue(depth)),
          // A single entry is the lower end of the range.
          m_step(length > 1 ? getBitDepthValueRange(depth) / static_cast<float>(length - 1) : 0.0F)
    {}

    float at(uint32_t position) const
    {
        if (!m_isHalfDomain) return static_cast<float>(position) * m_step;
        half value;
        value.setBits(static_cast<uint16_t>(position));
        return m_max * static_cast<float>(value);
    }

private:
    bool m_isHalfDomain;
    float m_max;
    float m_step;
};

/// The place of a value, rounded to a half, in the order of all halves: -0 comes right before 0, and the NaNs lie
/// beyond the infinities.
int placeAmongHalfs(float value)
{
    constexpr int kSign = 0x8000;
    constexpr int kInfinity = 0x7c00;
    constexpr int kQuiet = 0x200;
    const int bits = half(value).bits();
    int magnitude = bits & ~kSign;
    // Arithmetic makes a NaN quiet, so whether it is tells nothing.
    if (magnitude > kInfinity) magnitude |= kQuiet;
    return bits & kSign ? -1 - magnitude : magnitude;
}

bool isNextTo(float value, float identity) { return std::abs(placeAmongHalfs(value) - placeAmongHalfs(identity)) <= 1; }

} // namespace

Lut1DOp::Lut3by1DArray::Lut3by1DArray(BitDepth in, BitDepth out, HalfFlags flags)
    : Lut3by1DArray(out, flags, defaultLength(in, flags))
{}

Lut1DOp::Lut3by1DArray::Lut3by1DArray(BitDepth out, HalfFlags flags, uint32_t length)
{
    checkLength(length);
    resize(length, kComponents);
    const Identity identity(out, flags, length);
    for (uint32_t i = 0; i < length; ++i) {
        for (uint32_t component = 0; component < kComponents; ++component)
            setValue(i * kComponents + component, identity.at(i));
    }
}

std::size_t Lut1DOp::Lut3by1DArray::getNumValues(uint32_t length, uint32_t numColorComponents) const
{
    return static_cast<std::size_t>(length) * numColorComponents;
}

void Lut1DOp::Lut3by1DArray::validate()
{
    Array::validate();
    checkLength(getLength());
    const bool isKnown = getNumColorComponents() == 1 || getNumColorComponents() == kComponents;
    if (!isKnown) raise(LogCategory::TRANSFORM_ALL, ErrorIds::ARRAY_CONTENT_ILLEGAL);
}

void Lut1DOp::Lut3by1DArray::checkLength(uint32_t length)
{
    if (length > kMaximumLength) raise(LogCategory::TRANSFORM_ALL, ErrorIds::ARRAY_CONTENT_ILLEGAL);
}

void Lut1DOp::Lut3by1DArray::setSingleCurve(const Values& curve)
{
    resize(static_cast<uint32_t>(curve.size()), kComponents);
    for (std::size_t i = 0; i < getValues().size(); ++i)
        setValue(i, curve[i / kComponents]);
    m_isSingleCurve = true;
}

Lut1DOp::Lut1DOp(uint32_t length)
    : Lut1DOp(BIT_DEPTH_32f, BIT_DEPTH_32f, {}, {}, {}, INTERPOLATION_DEFAULT, length, HALF_FLAGS_NONE)
{}

Lut1DOp::Lut1DOp(BitDepth in, BitDepth out, HalfFlags flags)
    : Op(in, out), m_interpolation(INTERPOLATION_DEFAULT), m_array(in, out, flags), m_halfFlags(flags)
{}

Lut1DOp::Lut1DOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name,
                 const Descriptions& descriptions, Interpolation interpolation, uint32_t length, HalfFlags flags)
    : Op(in, out, id, name, descriptions), m_interpolation(interpolation), m_array(out, flags, length),
      m_halfFlags(flags)
{}

Lut1DOp::Lut1DOp(BitDepth in, BitDepth out, const Lut1DOp& table)
    : Op(in, out, table.getId(), table.getName(), table.getDescriptions()), m_interpolation(table.m_interpolation),
      m_array(table.m_array), m_halfFlags(table.m_halfFlags)
{}

Op* Lut1DOp::clone() const { return new Lut1DOp(*this); }

void Lut1DOp::setOutBitDepth(BitDepth depth)
{
    scaleArray(getBitDepthMaxValue(depth) / getBitDepthMaxValue(getOutBitDepth()));
    Op::setOutBitDepth(depth);
}

void Lut1DOp::validate()
{
    Op::validate();
    try {
        m_array.validate();
    } catch (const Exception& exception) {
        raiseAfter(exception, LogCategory::TRANSFORM_ALL, ErrorIds::ARRAY_CONTENT_ILLEGAL_FOR, getDisplayName());
    }
    checkHalfDomain(m_array.getLength());
}

void Lut1DOp::checkLength(uint32_t length) const
{
    try {
        if (length == 0) raise(LogCategory::TRANSFORM_ALL, ErrorIds::ARRAY_CONTENT_EMPTY);
        Lut3by1DArray::checkLength(length);
    } catch (const Exception& exception) {
        raiseAfter(exception, LogCategory::TRANSFORM_ALL, ErrorIds::ARRAY_CONTENT_ILLEGAL_FOR, getDisplayName());
    }
    checkHalfDomain(length);
}

const char* Lut1DOp::getInterpolationName(Interpolation interpolation)
{
    return kInterpolationNames[interpolation < std::size(kInterpolationNames) ? interpolation : INTERPOLATION_DEFAULT];
}

Lut1DOp::Interpolation Lut1DOp::interpolationNamed(const std::string& text)
{
    const auto found = std::find(std::begin(kInterpolationNames), std::end(kInterpolationNames), text);
    if (found == std::end(kInterpolationNames)) return INTERPOLATION_DEFAULT;
    return static_cast<Interpolation>(found - std::begin(kInterpolationNames));
}

const char* Lut1DOp::getHueAdjustName(HueAdjust hueAdjust) { return hueAdjust == HUE_ADJUST_NONE ? "none" : "dw3"; }

OpType Lut1DOp::getOpType() const { return OP_LUT_1D; }

const std::string& Lut1DOp::getOpTypeName() const
{
    static const std::string typeName = "LUT 1D";
    return typeName;
}

bool Lut1DOp::isNoOp() const { return isIdentityAt(getOutBitDepth()); }

bool Lut1DOp::isEqual(const Op& other) const
{
    if (other.getOpType() != getOpType()) return false;
    const auto* lut = dynamic_cast<const Lut1DOp*>(&other);
    return lut && Op::isEqual(other) && m_interpolation == lut->m_interpolation && m_array.isEqual(lut->m_array) &&
           m_indexMapping.isEqual(lut->m_indexMapping) && m_halfFlags == lut->m_halfFlags &&
           m_hueAdjust == lut->m_hueAdjust;
}

void Lut1DOp::appendInverse(OpList& list) const
{
    if (m_hueAdjust != HUE_ADJUST_NONE) {
        raise(LogCategory::TRANSFORM_ALL, ErrorIds::INVERSE_NOT_SUPPORTED, "LUT1D with hue adjust");
    }
    list.append(new InvLut1DOp(*this));
}

float Lut1DOp::getMinimumVersion() const { return m_hueAdjust == HUE_ADJUST_NONE ? 1.3F : 1.4F; }

bool Lut1DOp::isTableSound() const
{
    const std::size_t size = m_array.getValues().size();
    return size != 0 && size == m_array.getNumValues(m_array.getLength(), m_array.getNumColorComponents()) &&
           (!isHalfDomain() || m_array.getLength() == kHalfDomainLength);
}

bool Lut1DOp::isIdentityAt(BitDepth depth) const
{
    const uint32_t length = m_array.getLength();
    // A single entry makes every input the same.
    if (!isTableSound() || length < 2) return false;

    const Identity identity(depth, m_halfFlags, length);
    const float tolerance = getBitDepthValueRange(depth) * kTolerance;
    const uint32_t components = m_array.getNumColorComponents();
    for (uint32_t i = 0; i < length; ++i) {
        const float wanted = identity.at(i);
        for (uint32_t component = 0; component < components; ++component) {
            const float value = m_array.getValues()[static_cast<std::size_t>(i) * components + component];
            // A NaN is no identity in a plain domain.
            if (!(isHalfDomain() ? isNextTo(value, wanted) : std::fabs(value - wanted) <= tolerance)) return false;
        }
    }
    return true;
}

void Lut1DOp::scaleArray(float factor)
{
    if (factor == 1.0F) return;
    for (float& value : m_array.getValues())
        value *= factor;
}

void Lut1DOp::checkHalfDomain(uint32_t length) const
{
    if (isHalfDomain() && length != kHalfDomainLength) {
        raise(LogCategory::TRANSFORM_LUT_1D, ErrorIds::LUT_1D_HALF_DOMAIN_WRONG_LENGTH, length, kHalfDomainLength,
              getOpTypeName(), getDisplayName());
    }
}

} // namespace Color
