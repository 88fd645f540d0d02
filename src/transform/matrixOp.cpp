#include "transform/matrixOp.h"

#include "transform/opList.h"
#include "utils/exception.h"

#include <Imath/ImathMatrix.h>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>

namespace Color {

namespace {

constexpr uint32_t kSize = 4; // rows and columns of the full form
constexpr float kTolerance = 1e-6F;
constexpr float kLeastNoiseScale = 0.0001F;

/// For comparisons in which -0 is not 0, and a NaN is the same as itself.
std::array<uint32_t, 4> bitsOf(const MatrixOp::Offsets& offsets)
{
    std::array<uint32_t, 4> bits{};
    static_assert(sizeof(bits) == sizeof(offsets));
    std::memcpy(bits.data(), offsets.data(), sizeof(bits));
    return bits;
}

/// Matrix times vector, each sum in float from left to right.
MatrixOp::Offsets multiply(const Array::Values& matrix, const MatrixOp::Offsets& vector)
{
    MatrixOp::Offsets result{};
    for (uint32_t row = 0; row < kSize; ++row) {
        for (uint32_t column = 0; column < kSize; ++column) {
            result[row] += matrix[row * kSize + column] * vector[column];
        }
    }
    return result;
}

/// second * first, each sum in float from left to right.
Array::Values multiply(const Array::Values& second, const Array::Values& first)
{
    Array::Values result(kSize * kSize, 0.0F);
    for (uint32_t row = 0; row < kSize; ++row) {
        for (uint32_t column = 0; column < kSize; ++column) {
            float& sum = result[row * kSize + column];
            for (uint32_t i = 0; i < kSize; ++i)
                sum += second[row * kSize + i] * first[i * kSize + column];
        }
    }
    return result;
}

/// The whole number next to the value when it is nearer than noise, else the value.
float withoutNoise(float value, float noise)
{
    const float whole = std::floor(value + 0.5F);
    return std::fabs(value - whole) < noise ? whole : value;
}

/// Overwrites inverse with the inverse of matrix, computed in double; leaves it alone when there is none.
void invert(const Array::Values& matrix, Array::Values& inverse)
{
    Imath::M44d exact;
    for (uint32_t row = 0; row < kSize; ++row) {
        for (uint32_t column = 0; column < kSize; ++column) {
            exact[static_cast<int>(row)][column] = static_cast<double>(matrix[row * kSize + column]);
        }
    }
    try {
        // Always by elimination: inverse() would take a shortcut, with other roundings, for affine matrices.
        exact = exact.gjInverse(true);
    } catch (const std::invalid_argument&) {
        return; // a singular matrix is no error
    }
    for (uint32_t row = 0; row < kSize; ++row) {
        for (uint32_t column = 0; column < kSize; ++column) {
            inverse[row * kSize + column] = static_cast<float>(exact[static_cast<int>(row)][column]);
        }
    }
}

} // namespace

MatrixOp::MatrixArray::MatrixArray(BitDepth in, BitDepth out) : m_inBitDepth(in), m_outBitDepth(out)
{
    resize(kSize, kSize);
    for (uint32_t i = 0; i < kSize; ++i)
        setValue(i * (kSize + 1), getRatio());
}

std::size_t MatrixOp::MatrixArray::getNumValues(uint32_t length, uint32_t) const
{
    return static_cast<std::size_t>(length) * length;
}

void MatrixOp::MatrixArray::validate()
{
    const bool hasKnownLength = getLength() == 3 || getLength() == kSize;
    if (!hasKnownLength || getValues().size() != getNumValues(getLength(), getNumColorComponents())) {
        raise(LogCategory::TRANSFORM_ALL, ErrorIds::ARRAY_CONTENT_ILLEGAL);
    }
    if (getLength() == 3) {
        const Values values3x3 = getValues();
        setFrom3x3(values3x3.data());
    }
    if (getNumColorComponents() != kSize) raise(LogCategory::TRANSFORM_ALL, ErrorIds::ARRAY_CONTENT_ILLEGAL);
}

void MatrixOp::MatrixArray::setInBitDepth(BitDepth depth)
{
    scale(getBitDepthMaxValue(m_inBitDepth) / getBitDepthMaxValue(depth));
    m_inBitDepth = depth;
}

void MatrixOp::MatrixArray::setOutBitDepth(BitDepth depth)
{
    scale(getBitDepthMaxValue(depth) / getBitDepthMaxValue(m_outBitDepth));
    m_outBitDepth = depth;
}

float MatrixOp::MatrixArray::getRatio() const
{
    return getBitDepthValueRange(m_outBitDepth) / getBitDepthValueRange(m_inBitDepth);
}

void MatrixOp::MatrixArray::setFrom3x3(const float* values)
{
    resize(kSize, kSize);
    std::fill(getValues().begin(), getValues().end(), 0.0F);
    for (std::size_t row = 0; row < 3; ++row)
        std::copy_n(values + 3 * row, 3, &getValues()[row * kSize]);
    getValues().back() = getRatio();
}

bool MatrixOp::MatrixArray::is4x4() const { return getLength() == kSize && getValues().size() == kSize * kSize; }

void MatrixOp::MatrixArray::scale(float factor)
{
    for (float& value : getValues())
        value *= factor;
}

MatrixOp::MatrixOp() : MatrixOp(BIT_DEPTH_32f, BIT_DEPTH_32f) {}

MatrixOp::MatrixOp(BitDepth in, BitDepth out) : MatrixOp(in, out, {}, {}, {}) {}

MatrixOp::MatrixOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name,
                   const Descriptions& descriptions)
    : Op(in, out, id, name, descriptions), m_array(in, out), m_offsets{}
{}

Op* MatrixOp::clone() const { return new MatrixOp(*this); }

void MatrixOp::setInBitDepth(BitDepth depth)
{
    Op::setInBitDepth(depth);
    m_array.setInBitDepth(depth);
}

void MatrixOp::setOutBitDepth(BitDepth depth)
{
    const float factor = getBitDepthMaxValue(depth) / getBitDepthMaxValue(getOutBitDepth());
    for (float& offset : m_offsets)
        offset *= factor;
    Op::setOutBitDepth(depth);
    m_array.setOutBitDepth(depth);
}

void MatrixOp::validate()
{
    Op::validate();
    try {
        m_array.validate();
    } catch (const Exception& exception) {
        raiseAfter(exception, LogCategory::TRANSFORM_ALL, ErrorIds::ARRAY_CONTENT_ILLEGAL_FOR, getDisplayName());
    }
    // Renderers read 16 floats without a further look.
    if (m_array.getNumColorComponents() != kSize) {
        raise(LogCategory::TRANSFORM_ALL, ErrorIds::WRONG_NUMBER_OF_COMPONENTS, getOpTypeName(), getDisplayName());
    }
    if (m_array.getLength() != kSize) {
        raise(LogCategory::TRANSFORM_ALL, ErrorIds::ARRAY_CONTENT_ILLEGAL_FOR, getDisplayName());
    }
}

OpType MatrixOp::getOpType() const { return OP_MATRIX; }

const std::string& MatrixOp::getOpTypeName() const
{
    static const std::string typeName = "Matrix";
    return typeName;
}

bool MatrixOp::isNoOp() const
{
    const auto isNotZero = [](float offset) { return offset != 0.0F; };
    if (std::any_of(m_offsets.begin(), m_offsets.end(), isNotZero) || usesAlpha() || !isDiagonal()) return false;
    const float ratio = m_array.getRatio();
    for (uint32_t i = 0; i < kSize; ++i) {
        const bool isRatio = std::fabs(m_array.getValues()[i * (kSize + 1)] - ratio) <= ratio * kTolerance;
        if (!isRatio) return false;
    }
    return true;
}

bool MatrixOp::isEqual(const Op& other) const
{
    const auto* matrix = dynamic_cast<const MatrixOp*>(&other);
    return matrix && Op::isEqual(other) && m_array.isEqual(matrix->m_array) &&
           bitsOf(m_offsets) == bitsOf(matrix->m_offsets);
}

void MatrixOp::appendInverse(OpList& list) const
{
    MatrixArray array(m_array);
    array.validate();

    auto inverse = std::make_unique<MatrixOp>(getOutBitDepth(), getInBitDepth());
    invert(array.getValues(), inverse->m_array.getValues());
    if (hasOffsets()) {
        inverse->m_offsets = multiply(inverse->m_array.getValues(), m_offsets);
        for (float& offset : inverse->m_offsets)
            offset *= -1.0F;
    }
    list.append(inverse.release());
}

void MatrixOp::setMatrix4x4(const float* values)
{
    m_array.resize(kSize, kSize);
    std::copy_n(values, kSize * kSize, m_array.getValues().begin());
}

void MatrixOp::setMatrix3x3(const float* values) { m_array.setFrom3x3(values); }

void MatrixOp::setOffsets4(const float* values)
{
    if (!values) raise(LogCategory::TRANSFORM_MATRIX, ErrorIds::MATRIX_INVALID_OFFSETS);
    std::copy_n(values, 4, m_offsets.begin());
}

void MatrixOp::setOffsets3(const float* values)
{
    if (!values) raise(LogCategory::TRANSFORM_MATRIX, ErrorIds::MATRIX_INVALID_OFFSETS);
    std::copy_n(values, 3, m_offsets.begin());
    m_offsets[3] = 0.0F;
}

float MatrixOp::getOffset(uint32_t index) const
{
    checkOffsetIndex(index);
    return m_offsets[index];
}

void MatrixOp::setOffset(uint32_t index, float value)
{
    checkOffsetIndex(index);
    m_offsets[index] = value;
}

bool MatrixOp::hasOffsets() const { return bitsOf(m_offsets) != bitsOf(Offsets{}); }

bool MatrixOp::isDiagonal() const
{
    if (!m_array.is4x4()) return false;
    for (uint32_t i = 0; i < kSize * kSize; ++i) {
        const bool isOnDiagonal = i % (kSize + 1) == 0;
        if (!isOnDiagonal && m_array.getValues()[i] != 0.0F) return false;
    }
    return true;
}

bool MatrixOp::usesAlpha() const
{
    if (!m_array.is4x4()) return false;
    const Array::Values& m = m_array.getValues();
    const float ratio = m_array.getRatio();
    return m[3] != 0.0F || m[7] != 0.0F || m[11] != 0.0F || std::fabs(m[15] - ratio) > ratio * kTolerance ||
           m[12] != 0.0F || m[13] != 0.0F || m[14] != 0.0F;
}

bool MatrixOp::isUnityDiagonal() const
{
    if (!isDiagonal()) return false;
    for (uint32_t i = 0; i < kSize; ++i) {
        if (m_array.getValues()[i * (kSize + 1)] != 1.0F) return false;
    }
    return true;
}

std::unique_ptr<MatrixOp> MatrixOp::compose(const MatrixOp& second) const
{
    if (getOutBitDepth() != second.getInBitDepth()) {
        raise(LogCategory::TRANSFORM_OPLIST, ErrorIds::OPLIST_BIT_DEPTH_MISMATCH, getDisplayName(),
              second.getDisplayName());
    }
    if (!m_array.is4x4() || !second.m_array.is4x4()) {
        raise(LogCategory::TRANSFORM_MATRIX, ErrorIds::MATRIX_COMPOSE_INVALID_DIMENSION);
    }

    Descriptions descriptions = getDescriptions();
    descriptions.insert(descriptions.end(), second.getDescriptions().begin(), second.getDescriptions().end());
    auto composed = std::make_unique<MatrixOp>(getInBitDepth(), second.getOutBitDepth(), getId() + second.getId(),
                                               getName() + second.getName(), descriptions);

    const Array::Values& secondValues = second.m_array.getValues();
    Array::Values& values = composed->m_array.getValues();
    values = multiply(secondValues, m_array.getValues());
    Offsets& offsets = composed->m_offsets;
    offsets = multiply(secondValues, m_offsets);
    for (uint32_t i = 0; i < kSize; ++i)
        offsets[i] += second.m_offsets[i];

    // A matrix and its inverse shall compose to an exact identity: drop what is only the noise of the sums. A NaN has
    // no part in the scale of the noise.
    float scale = kLeastNoiseScale;
    for (const float value : values)
        scale = std::max(scale, std::fabs(value));
    for (float& value : values)
        value = withoutNoise(value, scale * kTolerance);

    float offsetScale = kLeastNoiseScale;
    for (uint32_t row = 0; row < kSize; ++row) {
        offsetScale = std::max(offsetScale, std::fabs(second.m_offsets[row]));
        for (uint32_t column = 0; column < kSize; ++column) {
            const float product = secondValues[row * kSize + column] * m_offsets[column];
            offsetScale = std::max(offsetScale, std::fabs(product));
        }
    }
    for (float& offset : offsets)
        offset = withoutNoise(offset, offsetScale * kTolerance);
    return composed;
}

void MatrixOp::checkOffsetIndex(uint32_t index) const
{
    if (index >= std::min(m_array.getLength(), kSize)) {
        raise(LogCategory::TRANSFORM_MATRIX, ErrorIds::MATRIX_OFFSET_OUT_OF_RANGE, getDisplayName(), index);
    }
}

std::unique_ptr<MatrixOp> makeDiagonalMatrix(BitDepth in, BitDepth out, float value)
{
    auto op = std::make_unique<MatrixOp>(in, out, std::string(), "Diagonal matrix", Descriptions());
    for (uint32_t i = 0; i < kSize; ++i)
        op->getArray().setValue(i * (kSize + 1), value);
    return op;
}

} // namespace Color
