#include "transform/lut3DOp.h"

#include "transform/styleNames.h"
#include "utils/exception.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace Color {

namespace {

constexpr uint32_t kComponents = 3;
constexpr float kTolerance = 1e-6F; ///< of isNoOp(), as a part of the range

const char* const kInterpolationNames[] = {"default", "trilinear", "tetrahedral", "4pt tetrahedral"};

/// The value of the identity at each coordinate of an axis.
Array::Values makeAxis(BitDepth depth, uint32_t length)
{
    // A single grid point is the lower end of the range.
    Array::Values axis(length, 0.0F);
    for (uint32_t i = 1; i < length; ++i)
        axis[i] = static_cast<float>(i) * getBitDepthValueRange(depth) / static_cast<float>(length - 1);
    return axis;
}

/// Calls visit(red, green, blue) for every grid point in the order of the cube, until it returns false. The arguments
/// are the colour of the identity.
template <class Visit>
bool forEachGridPoint(const Array::Values& axis, Visit&& visit)
{
    for (const float red : axis) {
        for (const float green : axis) {
            for (const float blue : axis) {
                if (!visit(red, green, blue)) return false;
            }
        }
    }
    return true;
}

} // namespace

Lut3DOp::Lut3DArray::Lut3DArray(BitDepth out, uint32_t length)
{
    checkLength(length);
    resize(length, kComponents);
    auto value = getValues().begin();
    forEachGridPoint(makeAxis(out, length), [&](float red, float green, float blue) {
        *value++ = red;
        *value++ = green;
        *value++ = blue;
        return true;
    });
}

std::size_t Lut3DOp::Lut3DArray::getNumValues(uint32_t length, uint32_t) const
{
    // Beyond this the cube of a length does not fit: let the sizing fail instead of wrapping round.
    constexpr uint32_t kCountable = 1U << 20;
    if (length > kCountable) return std::numeric_limits<std::size_t>::max();
    const std::size_t edge = length;
    return edge * edge * edge * kComponents;
}

Lut3DOp::Lut3DOp(uint32_t length) : Lut3DOp(BIT_DEPTH_32f, BIT_DEPTH_32f, length) {}

Lut3DOp::Lut3DOp(BitDepth in, BitDepth out, uint32_t length)
    : Lut3DOp(in, out, {}, {}, {}, INTERPOLATION_DEFAULT, length)
{}

Lut3DOp::Lut3DOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name,
                 const Descriptions& descriptions, Interpolation interpolation, uint32_t length)
    : Op(in, out, id, name, descriptions), m_interpolation(interpolation), m_array(out, length)
{}

Op* Lut3DOp::clone() const { return new Lut3DOp(*this); }

void Lut3DOp::setOutBitDepth(BitDepth depth)
{
    const float factor = getBitDepthMaxValue(depth) / getBitDepthMaxValue(getOutBitDepth());
    for (float& value : m_array.getValues())
        value *= factor;
    Op::setOutBitDepth(depth);
}

void Lut3DOp::validate()
{
    Op::validate();
    try {
        m_array.validate();
    } catch (const Exception& exception) {
        raiseAfter(exception, LogCategory::TRANSFORM_ALL, ErrorIds::ARRAY_CONTENT_ILLEGAL_FOR, getDisplayName());
    }
    if (m_array.getNumColorComponents() != kComponents) {
        raise(LogCategory::TRANSFORM_ALL, ErrorIds::WRONG_NUMBER_OF_COMPONENTS, getOpTypeName(), getDisplayName());
    }
    checkLength(m_array.getLength());
}

OpType Lut3DOp::getOpType() const { return OP_LUT_3D; }

const std::string& Lut3DOp::getOpTypeName() const
{
    static const std::string typeName = "LUT 3D";
    return typeName;
}

bool Lut3DOp::isNoOp() const
{
    const Array::Values& values = m_array.getValues();
    const uint32_t length = m_array.getLength();
    // A single grid point makes every input the same.
    if (length < 2 || values.size() != m_array.getNumValues(length, m_array.getNumColorComponents())) return false;

    const float tolerance = getBitDepthValueRange(getOutBitDepth()) * kTolerance;
    const auto isNear = [&](float value, float identity) { return std::fabs(value - identity) <= tolerance; };
    auto value = values.begin();
    return forEachGridPoint(makeAxis(getOutBitDepth(), length), [&](float red, float green, float blue) {
        const auto point = value;
        value += kComponents;
        return isNear(point[0], red) && isNear(point[1], green) && isNear(point[2], blue);
    });
}

bool Lut3DOp::isEqual(const Op& other) const
{
    const auto* lut = dynamic_cast<const Lut3DOp*>(&other);
    return lut && Op::isEqual(other) && m_interpolation == lut->m_interpolation && m_array.isEqual(lut->m_array) &&
           m_indexMapping.isEqual(lut->m_indexMapping);
}

void Lut3DOp::checkLength(uint32_t length)
{
    if (length > kMaximumLength) {
        raise(LogCategory::TRANSFORM_LUT_3D, ErrorIds::LUT_3D_DIMENSION_TOO_LARGE, length, kMaximumLength);
    }
}

const char* Lut3DOp::getInterpolationName(Interpolation interpolation)
{
    return kInterpolationNames[interpolation < std::size(kInterpolationNames) ? interpolation : INTERPOLATION_DEFAULT];
}

Lut3DOp::Interpolation Lut3DOp::interpolationNamed(const std::string& text)
{
    const auto found = std::find(std::begin(kInterpolationNames), std::end(kInterpolationNames), text);
    if (found == std::end(kInterpolationNames)) return INTERPOLATION_DEFAULT;
    return static_cast<Interpolation>(found - std::begin(kInterpolationNames));
}

} // namespace Color
