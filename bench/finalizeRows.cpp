#include "rows.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <morvane/morvane.h>

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

} // namespace

void registerFinalizeRows() { benchmark::RegisterBenchmark("finalize, unchanged|ours", finalizeUnchanged); }
