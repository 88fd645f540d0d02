#pragma once

#include "utils/publicTypes.h"

#include <cstdint>
#include <vector>

namespace Rendering {

/// The whole numbers below size squared, row by row, spread so that any of them lies far from those next in value.
/// See B. E. Bayer, "An optimum method for two-level rendition of continuous-tone pictures", 1973.
using BayerMatrix = std::vector<uint16_t>;

/// The matrix of 2 to the level rows and columns; level at most 8, so that its numbers fit 16 bits. It is made on first
/// use and lives as long as the program.
const BayerMatrix& getBayerMatrix(unsigned level);

/// What is added to the pixels of an image: a square pattern that is repeated all over it, with a mean of 0.
class DitherMatrix
{
public:
    /// Without rows: nothing is added.
    DitherMatrix() = default;
    /// In the scale of the input depth, up to half a step of the dither depth in both directions. Without rows where
    /// the input is no finer than the dither depth, and for any float dither depth.
    DitherMatrix(BitDepth in, BitDepth dither);

    /// Rows and columns: 0 or 16.
    uint32_t getSize() const { return m_size; }
    /// size floats; throws 0x4010009 when there is no such row.
    const float* getRow(uint32_t row) const;

private:
    uint32_t m_size = 0;
    std::vector<float> m_offsets;
};

} // namespace Rendering
