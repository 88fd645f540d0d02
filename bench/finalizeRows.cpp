#include "rows.h"
#include "work.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <cstdlib>
#include <morvane/morvane.h>
#include <string>
#include <vector>

namespace {

void finalizeUnchanged(benchmark::State& state)
{
    const float matrix[9] = {0.7f, 0.2f, 0.1f, 0.1f, 0.8f, 0.1f, 0.f, 0.1f, 0.9f};
    const float offsets[3] = {0.f, 0.f, 0.f};
    Morvane::TransformPtr transform;
    if (!Morvane::CreateMatrixTransform(Morvane::BIT_DEPTH_32f, Morvane::BIT_DEPTH_32f, matrix, offsets, false,
                                        transform)) {
        std::abort();
    }
    const auto finalizeOnce = [&] {
        Morvane::TransformPtr result;
        return Morvane::finalize(transform, Morvane::PF_RGBA_32f, Morvane::PF_RGBA_32f, Morvane::RENDERER_CPU,
                                 Morvane::OPTIMIZER_DEFAULT, Morvane::RESOLVE_BROADCAST_MONITOR, result);
    };
    if (!finalizeOnce()) std::abort();
    for (auto _ : state) {
        benchmark::DoNotOptimize(finalizeOnce());
    }
}

/// Groups of six ops: three matrices that merge, a CDL without effect, a range and a gamma that stay.
Morvane::TransformPtr makeThirtyOps()
{
    const std::string depths = " inBitDepth=\"32f\" outBitDepth=\"32f\"";
    const std::string matrix =
        "<Matrix" + depths + "><Array dim=\"3 3 3\">0.7 0.2 0.1 0.1 0.8 0.1 0 0.1 0.9</Array></Matrix>";
    const std::string group = matrix + matrix + matrix + "<ASC_CDL" + depths +
                              " style=\"v1.2_Fwd\"><SOPNode><Slope>1 1 1</Slope><Offset>0 0 0</Offset><Power>1 1 "
                              "1</Power></SOPNode></ASC_CDL>" +
                              "<Range" + depths +
                              "><minInValue>0.1</minInValue><maxInValue>0.9</maxInValue><minOutValue>0</"
                              "minOutValue><maxOutValue>1</maxOutValue>"
                              "</Range><Gamma" +
                              depths + " style=\"basicFwd\"><GammaParams gamma=\"2.2\"/></Gamma>";
    return transformOf(group + group + group + group + group);
}

Morvane::TransformPtr twice(const Morvane::TransformPtr& transform)
{
    Morvane::TransformPtr result;
    require(Morvane::concatenateTransforms(transform, transform, result));
    return result;
}

Morvane::TransformPtr makeCube(unsigned size)
{
    std::vector<float> values;
    for (unsigned i = 0; i < size * size * size; ++i) {
        for (const unsigned coordinate : {i / size / size, i / size % size, i % size}) {
            values.push_back(std::pow(static_cast<float>(coordinate) / static_cast<float>(size - 1), 1.1f));
        }
    }
    Morvane::TransformPtr result;
    require(Morvane::Create3DLutTransformFromFloat(Morvane::BIT_DEPTH_32f, Morvane::BIT_DEPTH_32f, size, values.data(),
                                                   result));
    return result;
}

/// The flat copy and the optimizer: a transform that gets no renderers is finalized at each call.
void optimize(benchmark::State& state, const Morvane::TransformPtr& transform)
{
    for (auto _ : state) {
        Morvane::TransformPtr result;
        require(Morvane::finalize(transform, Morvane::PF_RGBA_32f, Morvane::PF_RGBA_32f, Morvane::RENDERER_NONE,
                                  Morvane::OPTIMIZER_LUT3D, Morvane::RESOLVE_BROADCAST_MONITOR, result));
    }
}

constexpr int kCacheEntries = 1000;

std::string cacheIdOf(int entry) { return "8b0f6a3e-1c5d-4e2f-9a7b-" + std::to_string(100000000000 + entry); }

/// The text of a cache with as many entries, a matrix each.
std::string makeCacheText()
{
    const std::string matrix =
        "<Matrix inBitDepth=\"32f\" outBitDepth=\"32f\"><Array dim=\"3 3 3\">0.7 0.2 0.1 0.1 0.8 "
        "0.1 0 0.1 0.9</Array></Matrix>";
    std::string text = "<ProcessListSet>\n";
    for (int entry = 0; entry < kCacheEntries; ++entry) {
        const std::string id = cacheIdOf(entry);
        text += "<ProcessListEntry>\n<TransformId id=\"" + id + "\"/>\n<ProcessList version=\"1.3\" id=\"" + id +
                "\">\n" + matrix + "\n</ProcessList>\n</ProcessListEntry>\n";
    }
    return text + "</ProcessListSet>\n";
}

void populateCache(benchmark::State& state)
{
    const std::string text = makeCacheText();
    for (auto _ : state) {
        require(Morvane::TransformCache::populateTransformCache(text.c_str()));
        require(Morvane::TransformCache::clear());
    }
}

/// Asks the entries one after the other for the last of their forms, so that none is at hand from the call before.
void finalizeFromCache(benchmark::State& state)
{
    const auto finalizeFor = [](const Morvane::TransformPtr& transform, Morvane::PixelFormat in) {
        Morvane::TransformPtr result;
        require(Morvane::finalize(transform, in, Morvane::PF_RGBA_32f, Morvane::RENDERER_CPU,
                                  Morvane::OPTIMIZER_DEFAULT, Morvane::RESOLVE_BROADCAST_MONITOR, result));
        return result;
    };
    require(Morvane::TransformCache::populateTransformCache(makeCacheText().c_str()));
    std::vector<Morvane::TransformPtr> transforms(kCacheEntries);
    for (int entry = 0; entry < kCacheEntries; ++entry) {
        Morvane::TransformPtr& transform = transforms[static_cast<std::size_t>(entry)];
        require(Morvane::TransformCache::getTransform(cacheIdOf(entry).c_str(), transform));
        for (const Morvane::PixelFormat in : {Morvane::PF_RGBA_32f, Morvane::PF_RGB_32f, Morvane::PF_BGRA_32f,
                                              Morvane::PF_BGR_32f, Morvane::PF_RGBA_16f})
            finalizeFor(transform, in);
    }
    std::size_t entry = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(finalizeFor(transforms[entry], Morvane::PF_RGBA_16f));
        entry = (entry + 331) % kCacheEntries;
    }
    require(Morvane::TransformCache::clear());
}

} // namespace

void registerFinalizeRows()
{
    benchmark::RegisterBenchmark("finalize, unchanged|ours", finalizeUnchanged);
    benchmark::RegisterBenchmark("finalize, from 1000 cached, 4 forms each|ours", finalizeFromCache);
    benchmark::RegisterBenchmark("populate the cache with 1000 matrices|ours", populateCache);
    benchmark::RegisterBenchmark("optimize 30 ops|ours", optimize, makeThirtyOps());
    benchmark::RegisterBenchmark("merge two 1D LUTs|ours", optimize, twice(lut1DWork("", Curves::Three).ours()));
    benchmark::RegisterBenchmark("merge two 33-point cubes|ours", optimize, twice(makeCube(33)));
    benchmark::RegisterBenchmark("merge two 65-point cubes|ours", optimize, twice(makeCube(65)));
}
