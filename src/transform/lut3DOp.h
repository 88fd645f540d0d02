#pragma once

#include "transform/array.h"
#include "transform/indexMapping.h"
#include "transform/op.h"

namespace Color {

/// A cube of output colours that the input colour addresses. Entries are in the scale of the output depth, three floats
/// each; blue varies fastest and red slowest.
class Lut3DOp : public Op
{
public:
    enum Interpolation : uint32_t
    {
        INTERPOLATION_DEFAULT = 0,
        INTERPOLATION_TRILINEAR = 1,
        INTERPOLATION_TETRAHEDRAL = 2,
        INTERPOLATION_4PT_TETRAHEDRAL = 3,
    };

    static constexpr uint32_t kMaximumLength = 129; ///< grid points per axis

    class Lut3DArray : public Array
    {
    public:
        /// The identity; 0 when there is one grid point only. Throws as checkLength() does, before it takes memory.
        Lut3DArray(BitDepth out, uint32_t length);

        std::size_t getNumValues(uint32_t length, uint32_t numColorComponents) const override;
    };

    /// Both depths 32f.
    explicit Lut3DOp(uint32_t length);
    Lut3DOp(BitDepth in, BitDepth out, uint32_t length);
    Lut3DOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name, const Descriptions& descriptions,
            Interpolation interpolation, uint32_t length);
    Lut3DOp(const Lut3DOp& other) = default;

    Op* clone() const override;
    /// Rescales the cube.
    void setOutBitDepth(BitDepth depth) override;
    /// Throws what the array throws, 0x2010004 or 0x2010005, with the text of 0x2010003 behind, 0x201000b when it has
    /// not three components, and 0x205000d when the grid is too large.
    void validate() override;
    OpType getOpType() const override;
    const std::string& getOpTypeName() const override;
    bool isNoOp() const override;
    bool isEqual(const Op& other) const override;

    /// Throws 0x205000d on a grid of more than kMaximumLength points per axis.
    static void checkLength(uint32_t length);

    Interpolation getInterpolation() const { return m_interpolation; }
    void setInterpolation(Interpolation interpolation) { m_interpolation = interpolation; }
    /// "default" for a value that is none.
    static const char* getInterpolationName(Interpolation interpolation);
    /// The interpolation of this very name; the default one for a text that is none.
    static Interpolation interpolationNamed(const std::string& text);
    const Lut3DArray& getArray() const { return m_array; }
    Lut3DArray& getArray() { return m_array; }
    const IndexMapping& getIndexMapping() const { return m_indexMapping; }
    IndexMapping& getIndexMapping() { return m_indexMapping; }

private:
    Interpolation m_interpolation;
    Lut3DArray m_array;
    IndexMapping m_indexMapping;
};

} // namespace Color
