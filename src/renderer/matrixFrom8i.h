#pragma once

#include "renderer/plainPixel.h"
#include "transform/matrixOp.h"

#include <algorithm>
#include <cmath>

namespace Rendering {

/// A matrix over pixels of four 8-bit channels, four pixels at a time: a register holds one channel of four pixels, so
/// that no channel has to be spread over a register.
class MatrixFrom8i
{
public:
    explicit MatrixFrom8i(const Color::MatrixOp& op) : m_keepsAlphaApart(keepsAlphaApart(op.getArray().getValues()))
    {
        for (std::size_t i = 0; i < 16; ++i) {
            m_factors[i] = V4f(op.getArray().getValues()[i]);
        }
        m_offset = load(op.getOffsets().data());
    }

    /// The same bits as the kernel of one pixel: each lane goes through the same operations in the same order.
    template <ChannelOrder order, bool addsOffset>
    void render(const uint8_t* source, float* destination, uint32_t width) const
    {
        if (m_keepsAlphaApart) {
            render<order, addsOffset, true>(source, destination, width);
        } else {
            render<order, addsOffset, false>(source, destination, width);
        }
    }

private:
    /// True when red, green and blue do not meet alpha. Codes are finite and not negative, so the products with the
    /// zeros between them are all +0, and adding +0 stands for them.
    static bool keepsAlphaApart(const Color::Array::Values& m)
    {
        const auto isPositiveZero = [&](std::size_t i) { return m[i] == 0.f && !std::signbit(m[i]); };
        for (const std::size_t i : {3u, 7u, 11u, 12u, 13u, 14u}) {
            if (!isPositiveZero(i)) return false;
        }
        return true;
    }

    template <ChannelOrder order, bool addsOffset, bool apart>
    void renderFour(const uint8_t* source, float* destination) const
    {
        const __m128i pixels = _mm_loadu_si128(reinterpret_cast<const __m128i*>(source));
        const V4f red = channel<placeOf(order, 0)>(pixels);
        const V4f green = channel<placeOf(order, 1)>(pixels);
        const V4f blue = channel<placeOf(order, 2)>(pixels);
        const V4f alpha = channel<placeOf(order, 3)>(pixels);
        const V4f* m = m_factors;
        const V4f zero(0.f);
        __m128 out0 = ((m[0] * red + m[1] * green) + (m[2] * blue + (apart ? zero : m[3] * alpha))).v;
        __m128 out1 = ((m[4] * red + m[5] * green) + (m[6] * blue + (apart ? zero : m[7] * alpha))).v;
        __m128 out2 = ((m[8] * red + m[9] * green) + (m[10] * blue + (apart ? zero : m[11] * alpha))).v;
        __m128 out3 = (apart ? m[15] * alpha + zero : (m[12] * red + m[13] * green) + (m[14] * blue + m[15] * alpha)).v;
        _MM_TRANSPOSE4_PS(out0, out1, out2, out3);
        storePixel<addsOffset>(destination, out0);
        storePixel<addsOffset>(destination + 4, out1);
        storePixel<addsOffset>(destination + 8, out2);
        storePixel<addsOffset>(destination + 12, out3);
    }

    template <bool addsOffset>
    void storePixel(float* destination, V4f value) const
    {
        store(destination, addsOffset ? value + m_offset : value);
    }

    /// One byte of each of the four pixels.
    template <int place>
    static V4f channel(__m128i pixels)
    {
        return _mm_cvtepi32_ps(_mm_and_si128(_mm_srli_epi32(pixels, 8 * place), _mm_set1_epi32(0xff)));
    }

    template <ChannelOrder order, bool addsOffset, bool apart>
    void render(const uint8_t* source, float* destination, uint32_t width) const
    {
        const MatrixFrom8i matrix = *this;
        for (; width >= 4; width -= 4, source += 16, destination += 16) {
            matrix.renderFour<order, addsOffset, apart>(source, destination);
        }
        if (width > 0) {
            uint8_t rest[16] = {};
            float result[16];
            std::memcpy(rest, source, std::size_t{width} * 4);
            matrix.renderFour<order, addsOffset, apart>(rest, result);
            std::memcpy(destination, result, std::size_t{width} * 4 * sizeof(float));
        }
    }

    V4f m_factors[16]; ///< row by row, each in all lanes
    V4f m_offset;
    bool m_keepsAlphaApart;
};

} // namespace Rendering
