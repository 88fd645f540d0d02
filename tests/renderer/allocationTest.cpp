// Rendering takes no memory from the heap: every allocation of this program is counted.

#include "renderer/CPURenderer.h"
#include "transform/matrixOp.h"
#include "transform/rangeOp.h"

#include <atomic>
#include <cstdlib>
#include <gtest/gtest.h>
#include <new>
#include <vector>

namespace {
std::atomic<long> allocations{0};
}

void* operator new(std::size_t size)
{
    ++allocations;
    if (void* memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

using namespace Rendering;

namespace {

long allocationsOfApply(int opCount, PixelFormat in, PixelFormat out)
{
    Color::Transform transform;
    for (int i = 0; i < opCount; ++i) {
        transform.getOpList().append(Color::makeDiagonalMatrix(BIT_DEPTH_32f, BIT_DEPTH_32f, 1.5f).release());
    }
    CPURenderer renderer;
    renderer.finalize(&transform, in, out);
    const ROI roi(0, 0, 1000, 20);
    std::vector<unsigned char> source(getImageSizeInByte(roi, in));
    std::vector<unsigned char> destination(getImageSizeInByte(roi, out));
    const long before = allocations;
    renderer.apply(source.data(), destination.data(), roi, 0, 0);
    return allocations - before;
}

} // namespace

TEST(Allocation, theCounterCounts)
{
    const long before = allocations;
    ::operator delete(::operator new(8));
    EXPECT_EQ(allocations - before, 1);
}

TEST(Allocation, applyingTakesNoMemory)
{
    EXPECT_EQ(allocationsOfApply(1, PF_RGBA_32f, PF_RGBA_32f), 0);
    EXPECT_EQ(allocationsOfApply(1, PF_RGB_8i, PF_BGRA_16f), 0);
    EXPECT_EQ(allocationsOfApply(32, PF_RGBA_10iP, PF_RGB_12i), 0);
}

TEST(Allocation, aVeryLongListTakesMemoryOncePerImage)
{
    EXPECT_EQ(allocationsOfApply(33, PF_RGBA_32f, PF_RGBA_32f), 1);
}
