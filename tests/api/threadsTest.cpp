#include "tests/api/hostTools.h"

#include <thread>

using namespace Morvane;

namespace {

constexpr unsigned kThreads = 4;
constexpr uint32_t kWidth = 61;
constexpr uint32_t kRowsOfThread = 3;
constexpr uint32_t kHeight = kThreads * kRowsOfThread;

/// Calls use(i) on a thread of its own for each i below kThreads.
template <class Use>
void onThreads(Use&& use)
{
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < kThreads; ++i)
        threads.emplace_back([&use, i] { use(i); });
    for (std::thread& thread : threads)
        thread.join();
}

/// A transform with an op of every kind, tables of curves and a dither among them.
TransformPtr loadEveryOp(std::size_t file)
{
    static const char* const names[] = {"everything_1_6.ctf", "luts.ctf", "grading_1_6.ctf", "curves_1_6.ctf"};
    TransformPtr transform;
    const std::string path = std::string(MORVANE_TEST_DATA "/ctf/") + names[file];
    EXPECT_TRUE(succeeds(loadColorTransform(path.c_str(), transform)));
    return transform;
}

std::vector<float> makeRamp()
{
    std::vector<float> ramp(kWidth * kHeight * 4);
    for (std::size_t i = 0; i < ramp.size(); ++i)
        ramp[i] = float(i % 1021) / 1000.f;
    return ramp;
}

std::vector<uint16_t> renderWhole(const TransformPtr& transform, const std::vector<float>& source)
{
    std::vector<uint16_t> result(source.size());
    EXPECT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_10i)));
    EXPECT_TRUE(succeeds(transform->apply(source.data(), ROI(0, 0, kWidth, kHeight), result.data())));
    return result;
}

} // namespace

TEST(threads, renderRowsOfOnePictureThroughOneTransform)
{
    const std::vector<float> source = makeRamp();
    for (std::size_t file = 0; file < 4; ++file) {
        const std::vector<uint16_t> wanted = renderWhole(loadEveryOp(file), source);
        const TransformPtr transform = loadEveryOp(file);
        ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_10i)));
        std::vector<uint16_t> result(source.size());
        onThreads([&](unsigned i) {
            const ROI rows(0, i * kRowsOfThread, kWidth, kRowsOfThread, kWidth, kHeight);
            EXPECT_TRUE(succeeds(transform->apply(source.data(), rows, result.data())));
        });
        EXPECT_EQ(result, wanted) << file;
    }
}

TEST(threads, loadFinalizeAndRenderTransformsOfTheirOwn)
{
    const std::vector<float> source = makeRamp();
    std::array<std::vector<uint16_t>, kThreads> results;
    onThreads([&](unsigned i) { results[i] = renderWhole(loadEveryOp(i), source); });
    for (std::size_t i = 0; i < kThreads; ++i)
        EXPECT_EQ(results[i], renderWhole(loadEveryOp(i), source)) << i;
}
