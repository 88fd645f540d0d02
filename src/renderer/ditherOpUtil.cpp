#include "renderer/ditherOpUtil.h"

#include "transform/ditherOp.h"
#include "utils/exception.h"

#include <deque>
#include <mutex>

namespace Rendering {

namespace {

constexpr unsigned kLevel = 4;
constexpr uint32_t kSize = 1u << kLevel;

/// Four copies of the matrix, each of its numbers times 4, plus the one of the base that belongs to the copy.
BayerMatrix doubled(const BayerMatrix& half, unsigned halfSize)
{
    constexpr unsigned base[] = {0, 2, 3, 1};
    const unsigned size = halfSize * 2;
    BayerMatrix matrix;
    matrix.reserve(std::size_t{size} * size);
    for (unsigned r = 0; r < size; ++r) {
        for (unsigned c = 0; c < size; ++c) {
            const unsigned inHalf = half[(r % halfSize) * halfSize + c % halfSize];
            matrix.push_back(static_cast<uint16_t>(4 * inHalf + base[2 * (r / halfSize) + c / halfSize]));
        }
    }
    return matrix;
}

} // namespace

const BayerMatrix& getBayerMatrix(unsigned level)
{
    static std::mutex mutex;
    // By level. A deque, because matrices that were handed out stay where they are when it grows.
    static std::deque<BayerMatrix> matrices{{0}};
    const std::lock_guard<std::mutex> lock(mutex);
    while (matrices.size() <= level) {
        matrices.push_back(doubled(matrices.back(), 1u << (matrices.size() - 1)));
    }
    return matrices[level];
}

DitherMatrix::DitherMatrix(BitDepth in, BitDepth dither)
{
    if (!Color::DitherOp::hasEffect(in, dither)) return;
    const float amplitude = getBitDepthMaxValue(in) / getBitDepthMaxValue(dither);
    m_size = kSize;
    m_offsets.reserve(kSize * kSize);
    for (const uint16_t number : getBayerMatrix(kLevel)) {
        m_offsets.push_back(((static_cast<float>(number) + 0.5f) / 256.f - 0.5f) * amplitude);
    }
}

const float* DitherMatrix::getRow(uint32_t row) const
{
    if (row >= m_size) {
        Color::raise(Color::LogCategory::RENDERER_ALL, Color::ErrorIds::RENDERER_ILLEGAL_MATRIX_ROW);
    }
    return m_offsets.data() + std::size_t{row} * m_size;
}

} // namespace Rendering
