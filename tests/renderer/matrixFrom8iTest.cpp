#include "renderer/CPUMatrixOp.h"
#include "renderer/pixelFormatAccess.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

using namespace Rendering;
using Color::MatrixOp;

namespace {

constexpr PixelFormat kFormats[] = {PF_RGBA_8i, PF_BGRA_8i, PF_ABGR_8i};
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

/// Every pair of codes in two neighbouring channels, with the other two running through all codes as well.
std::vector<uint8_t> allPairsOfCodes()
{
    std::vector<uint8_t> pixels;
    for (unsigned a = 0; a < 256; ++a) {
        for (unsigned b = 0; b < 256; ++b) {
            pixels.insert(pixels.end(), {static_cast<uint8_t>(a), static_cast<uint8_t>(b),
                                         static_cast<uint8_t>(a + 7 * b), static_cast<uint8_t>(b + 91 * a)});
        }
    }
    return pixels;
}

/// NaNs may differ in their payload when two of them meet; all else must be the same to the bit.
bool sameBits(const std::vector<float>& a, const std::vector<float>& b)
{
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (std::isnan(a[i]) && std::isnan(b[i])) continue;
        if (std::memcmp(&a[i], &b[i], sizeof(float)) != 0) return false;
    }
    return true;
}

MatrixOp makeOp(const std::vector<float>& matrix, const std::vector<float>& offsets)
{
    MatrixOp op(BIT_DEPTH_8i, BIT_DEPTH_32f);
    op.setMatrix4x4(matrix.data());
    op.setOffsets4(offsets.data());
    return op;
}

void expectSourceKernelEqualsUnpackAndRender(const MatrixOp& op)
{
    const auto renderer = makeMatrixRenderer(op);
    const std::vector<uint8_t> source = allPairsOfCodes();
    const auto width = static_cast<uint32_t>(source.size() / 4);
    for (const PixelFormat format : kFormats) {
        const SourceKernel kernel = renderer->getSourceKernel(format);
        ASSERT_NE(kernel, nullptr);
        std::vector<float> expected(source.size());
        getPixelFormatAccess(format).unpack(source.data(), expected.data(), width);
        renderer->render({expected.data(), expected.data(), width, 0, 0});
        std::vector<float> result(source.size());
        kernel(*renderer, source.data(), {nullptr, result.data(), width, 0, 0});
        EXPECT_TRUE(sameBits(result, expected)) << pfToStr(format);
    }
}

const std::vector<float> kNoOffsets = {0, 0, 0, 0};
const std::vector<float> kOffsets = {0.25f, -0.f, -3.f, 1e-30f};
const std::vector<float> kFull = {0.7f, -0.2f, 0.1f, 0.3f, 1e-9f, 0.8f, -0.1f, -1.f,
                                  -0.f, 0.15f, 0.8f, 0.f,  0.1f,  0.2f, 0.3f,  1.f};
const std::vector<float> kAlphaApart = {0.7f, -0.2f, 0.1f, 0.f, -0.3f, 0.8f, -0.1f, 0.f,
                                        -1.f, 0.15f, -2.f, 0.f, 0.f,   0.f,  0.f,   -1.5f};

} // namespace

TEST(MatrixFrom8i, equalsTheKernelOfOnePixel)
{
    expectSourceKernelEqualsUnpackAndRender(makeOp(kFull, kNoOffsets));
    expectSourceKernelEqualsUnpackAndRender(makeOp(kFull, kOffsets));
}

TEST(MatrixFrom8i, equalsItWhereAlphaStandsApartDownToTheSignsOfZeros)
{
    expectSourceKernelEqualsUnpackAndRender(makeOp(kAlphaApart, kNoOffsets));
    expectSourceKernelEqualsUnpackAndRender(makeOp(kAlphaApart, kOffsets));
}

TEST(MatrixFrom8i, aNegativeZeroBesideAlphaKeepsItsMeaning)
{
    for (const std::size_t place : {3u, 7u, 11u, 12u, 13u, 14u}) {
        std::vector<float> matrix = kAlphaApart;
        matrix[place] = -0.f;
        expectSourceKernelEqualsUnpackAndRender(makeOp(matrix, kNoOffsets));
    }
}

TEST(MatrixFrom8i, equalsItForNaNAndInfinityInTheMatrix)
{
    for (const float value : {kNaN, kInfinity, -kInfinity}) {
        for (const std::size_t place : {0u, 3u, 6u, 14u, 15u}) {
            std::vector<float> matrix = kAlphaApart;
            matrix[place] = value;
            expectSourceKernelEqualsUnpackAndRender(makeOp(matrix, kNoOffsets));
        }
    }
}

TEST(MatrixFrom8i, everyWidthLeavesTheRestAlone)
{
    const auto renderer = makeMatrixRenderer(makeOp(kFull, kOffsets));
    const std::vector<uint8_t> source = allPairsOfCodes();
    std::vector<float> whole(40);
    renderer->getSourceKernel(PF_RGBA_8i)(*renderer, source.data(), {nullptr, whole.data(), 10, 0, 0});
    for (uint32_t width = 0; width < 10; ++width) {
        // An exact copy, so that reading past the end of the source is seen by the sanitizers.
        const std::vector<uint8_t> exact(source.begin(), source.begin() + width * 4);
        std::vector<float> result(40, -7.f);
        renderer->getSourceKernel(PF_RGBA_8i)(*renderer, exact.data(), {nullptr, result.data(), width, 0, 0});
        for (std::size_t i = 0; i < result.size(); ++i) {
            EXPECT_EQ(result[i], i < width * 4 ? whole[i] : -7.f) << width << " " << i;
        }
    }
}

TEST(MatrixFrom8i, isOfferedForEightBitFormatsWithAlphaAndWholeMatricesOnly)
{
    const auto whole = makeMatrixRenderer(makeOp(kFull, kNoOffsets));
    for (const PixelFormat format : {PF_RGB_8i, PF_BGR_8i, PF_RGBA_10i, PF_RGBA_10iP, PF_RGBA_16f, PF_RGBA_32f}) {
        EXPECT_EQ(whole->getSourceKernel(format), nullptr) << pfToStr(format);
    }
    EXPECT_EQ(makeMatrixRenderer(MatrixOp())->getSourceKernel(PF_RGBA_8i), nullptr);
}
