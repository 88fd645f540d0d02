#include "tests/api/hostTools.h"

#include <cstdlib>
#include <new>

using namespace Morvane;

namespace {

thread_local bool nextAllocationFails = false;

/// Makes the next allocation with new on this thread fail, in the program and in the library. Disarmed on destruction.
class AllocationFailure
{
public:
    AllocationFailure() { nextAllocationFails = true; }
    AllocationFailure(const AllocationFailure&) = delete;
    AllocationFailure& operator=(const AllocationFailure&) = delete;
    ~AllocationFailure() { nextAllocationFails = false; }
};

} // namespace

void* operator new(std::size_t size)
{
    if (nextAllocationFails) {
        nextAllocationFails = false;
        throw std::bad_alloc();
    }
    void* memory = std::malloc(size > 0 ? size : 1);
    if (!memory) throw std::bad_alloc();
    return memory;
}

// Seen inline, free() looks to the compiler like the wrong counterpart of new.
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }

[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

TEST(handle, deletesTheObjectWhenItCannotCount)
{
    bool destroyed = false;
    auto* adaptor = new TestAdaptor(&destroyed);
    bool failed = false;
    {
        const AllocationFailure failure;
        try {
            const GPUAdaptorPtr handle(adaptor);
        } catch (const std::bad_alloc&) {
            failed = true;
        }
    }
    EXPECT_TRUE(failed);
    EXPECT_TRUE(destroyed);
}

TEST(handle, failedResetLeavesItAsItWas)
{
    bool firstDestroyed = false;
    bool secondDestroyed = false;
    GPUAdaptorPtr handle(new TestAdaptor(&firstDestroyed));
    auto* second = new TestAdaptor(&secondDestroyed);
    bool failed = false;
    {
        const AllocationFailure failure;
        try {
            handle.reset(second);
        } catch (const std::bad_alloc&) {
            failed = true;
        }
    }
    EXPECT_TRUE(failed);
    EXPECT_TRUE(secondDestroyed);
    EXPECT_FALSE(firstDestroyed);
    EXPECT_EQ(handle.getUseCount(), 1);
}
