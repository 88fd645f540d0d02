#pragma once

#include "transform/array.h"
#include "transform/op.h"

#include <array>
#include <memory>

namespace Color {

/// out = M * in + offsets over (r, g, b, a): out[i] = sum over j of M[i][j] * in[j], plus offsets[i]. Input is in the
/// scale of the input depth, output and offsets in that of the output depth, so M holds the ratio between the two: an
/// identity has the diagonal range(out) / range(in), alpha included.
class MatrixOp : public Op
{
public:
    using Offsets = std::array<float, 4>;

    /// 4 by 4, row by row. A 3 by 3 array is expanded by validate().
    class MatrixArray : public Array
    {
    public:
        /// The scaled identity between the depths.
        MatrixArray(BitDepth in, BitDepth out);

        std::size_t getNumValues(uint32_t length, uint32_t numColorComponents) const override;
        /// Expands a 3 by 3 array; throws 0x2010005 when the array is neither that nor 4 by 4.
        void validate() override;

        BitDepth getInBitDepth() const { return m_inBitDepth; }
        BitDepth getOutBitDepth() const { return m_outBitDepth; }
        /// Stores the depth and multiplies all values by max(old) / max(new).
        void setInBitDepth(BitDepth depth);
        /// Stores the depth and multiplies all values by max(new) / max(old).
        void setOutBitDepth(BitDepth depth);
        /// range(out) / range(in).
        float getRatio() const;

        /// Becomes 4 by 4: the 9 values in the upper left block, the ratio of the depths for alpha, 0 elsewhere.
        void setFrom3x3(const float* values);
        /// False while a shape that a file gave is not validated.
        bool is4x4() const;

    private:
        void scale(float factor);

        BitDepth m_inBitDepth;
        BitDepth m_outBitDepth;
    };

    MatrixOp();
    MatrixOp(BitDepth in, BitDepth out);
    MatrixOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name,
             const Descriptions& descriptions);
    MatrixOp(const MatrixOp& other) = default;

    Op* clone() const override;
    void setInBitDepth(BitDepth depth) override;
    void setOutBitDepth(BitDepth depth) override;
    void validate() override;
    OpType getOpType() const override;
    const std::string& getOpTypeName() const override;
    bool isNoOp() const override;
    bool isEqual(const Op& other) const override;
    /// Throws 0x2010005 on an illegal array. A matrix that cannot be inverted gives, without an error, the scaled
    /// identity of the exchanged depths.
    void appendInverse(OpList& list) const override;

    const MatrixArray& getArray() const { return m_array; }
    MatrixArray& getArray() { return m_array; }

    /// 16 values, row by row, taken as they are.
    void setMatrix4x4(const float* values);
    /// 9 values, row by row; alpha gets the ratio of the depths.
    void setMatrix3x3(const float* values);
    /// 4 values. Throws 0x203000e on null.
    void setOffsets4(const float* values);
    /// 3 values; the fourth becomes 0. Throws 0x203000e on null.
    void setOffsets3(const float* values);
    const Offsets& getOffsets() const { return m_offsets; }
    /// Both throw 0x203000c when the index is not below the matrix length, or is above 3.
    float getOffset(uint32_t index) const;
    void setOffset(uint32_t index, float value);
    /// True when an offset has a bit set, so also for -0.
    bool hasOffsets() const;

    // These tests, and isNoOp(), are false for a matrix that is not 4 by 4.

    /// True when every off-diagonal value equals 0.
    bool isDiagonal() const;
    /// True when the alpha row or column does more than scale alpha by the ratio of the depths.
    bool usesAlpha() const;
    /// True when every diagonal value is exactly 1 and every other exactly 0.
    bool isUnityDiagonal() const;

    /// The op that does this one and then the second, with floating-point noise next to whole numbers cleaned away.
    /// Ids, names and descriptions are joined. Throws 0x206000a when the depths do not meet, 0x203000d when one of the
    /// two is not 4 by 4.
    std::unique_ptr<MatrixOp> compose(const MatrixOp& second) const;

private:
    void checkOffsetIndex(uint32_t index) const;

    MatrixArray m_array;
    Offsets m_offsets;
};

/// A matrix named "Diagonal matrix" with the value at all four diagonal places.
std::unique_ptr<MatrixOp> makeDiagonalMatrix(BitDepth in, BitDepth out, float value);

} // namespace Color
