#include "rows.h"

#include <OpenColorIO/OpenColorIO.h>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <morvane/morvane.h>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace OCIO = OCIO_NAMESPACE;
namespace M = Morvane;

namespace {

constexpr uint32_t kWidth = 1920;
constexpr uint32_t kHeight = 1080;
constexpr double kPixels = double{kWidth} * kHeight;

void require(const M::MorvaneStatus& status)
{
    if (status) return;
    std::fprintf(stderr, "morvane-bench: %s\n", status.getErrorMessage());
    std::abort();
}

using Buffer = std::vector<unsigned char>;

/// Pixels between about 0 and 1, in the given format.
Buffer makeImage(M::PixelFormat format)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<float> uniform(0.f, 1.f);
    std::vector<float> rgba(std::size_t{kWidth} * kHeight * 4);
    for (float& value : rgba) {
        value = uniform(random);
    }
    Buffer image(std::size_t{kWidth} * kHeight * M::getPixelSizeInByte(format));
    M::TransformPtr identity;
    require(M::createStockTransform(M::STOCK_TRANSFORM_IDENTITY, identity));
    require(M::finalize(identity, M::PF_RGBA_32f, format, M::RENDERER_CPU, M::OPTIMIZER_DEFAULT,
                        M::RESOLVE_BROADCAST_MONITOR, identity));
    require(identity->apply(rgba.data(), M::ROI(0, 0, kWidth, kHeight), image.data()));
    return image;
}

/// The same work for both libraries.
struct Work
{
    std::string name;
    std::function<M::TransformPtr()> ours;
    std::function<OCIO::TransformRcPtr()> peer;
};

M::TransformPtr makeMatrix(const std::vector<float>& matrix, const std::vector<float>& offsets)
{
    M::TransformPtr result;
    require(M::CreateMatrixTransform(M::BIT_DEPTH_32f, M::BIT_DEPTH_32f, matrix.data(), offsets.data(), true, result));
    return result;
}

Work matrixWork(const std::string& name, const std::vector<float>& matrix, const std::vector<float>& offsets)
{
    return {name, [=] { return makeMatrix(matrix, offsets); },
            [=]() -> OCIO::TransformRcPtr {
                const auto transform = OCIO::MatrixTransform::Create();
                std::vector<double> m(matrix.begin(), matrix.end());
                std::vector<double> o(offsets.begin(), offsets.end());
                transform->setMatrix(m.data());
                transform->setOffset(o.data());
                return transform;
            }};
}

constexpr double kNotSet = std::numeric_limits<double>::quiet_NaN();

Work rangeWork(const std::string& name, double minIn, double minOut, double maxIn, double maxOut)
{
    return {name,
            [=] {
                std::string text = "<ProcessList id=\"bench\" version=\"1.3\">"
                                   "<Range inBitDepth=\"32f\" outBitDepth=\"32f\">";
                const auto add = [&](const char* element, double value) {
                    if (value == value) {
                        text += std::string("<") + element + ">" + std::to_string(value) + "</" + element + ">";
                    }
                };
                add("minInValue", minIn);
                add("maxInValue", maxIn);
                add("minOutValue", minOut);
                add("maxOutValue", maxOut);
                text += "</Range></ProcessList>";
                M::TransformPtr result;
                require(M::loadColorTransformFromBuffer(text.c_str(), result));
                return result;
            },
            [=]() -> OCIO::TransformRcPtr {
                const auto range = OCIO::RangeTransform::Create();
                if (minIn == minIn && maxIn == maxIn) {
                    range->setMinInValue(minIn);
                    range->setMinOutValue(minOut);
                    range->setMaxInValue(maxIn);
                    range->setMaxOutValue(maxOut);
                    return range;
                }
                // The peer's one-sided range cannot shift: a matrix before it does that.
                double offset = 0;
                if (minIn == minIn) {
                    offset = minOut - minIn;
                    range->setMinInValue(minOut);
                    range->setMinOutValue(minOut);
                } else {
                    offset = maxOut - maxIn;
                    range->setMaxInValue(maxOut);
                    range->setMaxOutValue(maxOut);
                }
                if (offset == 0) return range;
                const auto matrix = OCIO::MatrixTransform::Create();
                const double offsets[4] = {offset, offset, offset, 0};
                matrix->setOffset(offsets);
                const auto group = OCIO::GroupTransform::Create();
                group->appendTransform(matrix);
                group->appendTransform(range);
                return group;
            }};
}

/// A pixel format of both libraries. The peer has no packed 10-bit words.
struct Format
{
    const char* name;
    M::PixelFormat ours;
    OCIO::BitDepth peer;
    bool peerHasIt;
};

const Format k32f = {"32f", M::PF_RGBA_32f, OCIO::BIT_DEPTH_F32, true};
const Format k16f = {"16f", M::PF_RGBA_16f, OCIO::BIT_DEPTH_F16, true};
const Format k16i = {"16i", M::PF_RGBA_16i, OCIO::BIT_DEPTH_UINT16, true};
const Format k8i = {"8i", M::PF_RGBA_8i, OCIO::BIT_DEPTH_UINT8, true};
const Format k10i = {"10i", M::PF_RGBA_10i, OCIO::BIT_DEPTH_UINT10, true};
const Format k10iP = {"10iP", M::PF_RGBA_10iP, OCIO::BIT_DEPTH_UNKNOWN, false};

M::TransformPtr finalized(const Work& work, const Format& in, const Format& out)
{
    M::TransformPtr transform = work.ours();
    require(M::finalize(transform, in.ours, out.ours, M::RENDERER_CPU, M::OPTIMIZER_DEFAULT,
                        M::RESOLVE_BROADCAST_MONITOR, transform));
    return transform;
}

void runOurs(benchmark::State& state, const Work& work, const Format& in, const Format& out)
{
    const M::TransformPtr transform = finalized(work, in, out);
    const Buffer source = makeImage(in.ours);
    Buffer destination(source.size() / M::getPixelSizeInByte(in.ours) * M::getPixelSizeInByte(out.ours));
    const M::ROI roi(0, 0, kWidth, kHeight);
    for (auto _ : state) {
        require(transform->apply(source.data(), roi, destination.data()));
    }
    state.counters["pixels"] = kPixels;
}

void runOursOnTwoThreads(benchmark::State& state, const Work& work, const Format& in, const Format& out)
{
    const M::TransformPtr transform = finalized(work, in, out);
    const Buffer source = makeImage(in.ours);
    Buffer destination(source.size() / M::getPixelSizeInByte(in.ours) * M::getPixelSizeInByte(out.ours));
    const M::ROI top(0, 0, kWidth, kHeight / 2, kWidth, kHeight);
    const M::ROI bottom(0, kHeight / 2, kWidth, kHeight / 2, kWidth, kHeight);
    // Long enough that starting the threads does not count.
    constexpr int kPasses = 8;
    const auto renderRegion = [&](const M::ROI& roi) {
        for (int pass = 0; pass < kPasses; ++pass) {
            require(transform->apply(source.data(), roi, destination.data()));
        }
    };
    for (auto _ : state) {
        std::thread other(renderRegion, top);
        renderRegion(bottom);
        other.join();
    }
    state.counters["pixels"] = kPixels * kPasses;
}

void runPeer(benchmark::State& state, const Work& work, const Format& in, const Format& out)
{
    const auto processor = OCIO::Config::CreateRaw()->getProcessor(work.peer());
    const auto cpu = processor->getOptimizedCPUProcessor(in.peer, out.peer, OCIO::OPTIMIZATION_DEFAULT);
    const Buffer source = makeImage(in.ours);
    Buffer destination(source.size() / M::getPixelSizeInByte(in.ours) * M::getPixelSizeInByte(out.ours));
    const auto describe = [](const Buffer& image, const Format& format) {
        const auto pixelSize = static_cast<std::ptrdiff_t>(M::getPixelSizeInByte(format.ours));
        return OCIO::PackedImageDesc(const_cast<unsigned char*>(image.data()), kWidth, kHeight, 4, format.peer,
                                     pixelSize / 4, pixelSize, pixelSize * kWidth);
    };
    const OCIO::PackedImageDesc sourceImage = describe(source, in);
    OCIO::PackedImageDesc destinationImage = describe(destination, out);
    for (auto _ : state) {
        cpu->apply(sourceImage, destinationImage);
    }
    state.counters["pixels"] = kPixels;
}

/// The limit: the source copied as it is, or as much as the destination holds when that is more.
void runLimit(benchmark::State& state, const Format& in, const Format& out)
{
    const Buffer image =
        makeImage(M::getPixelSizeInByte(in.ours) > M::getPixelSizeInByte(out.ours) ? in.ours : out.ours);
    Buffer copy(image.size());
    for (auto _ : state) {
        std::memcpy(copy.data(), image.data(), image.size());
        benchmark::ClobberMemory();
    }
    state.counters["pixels"] = kPixels;
}

void registerRow(const Work& work, const Format& in, const Format& out, bool onTwoThreads = false)
{
    const std::string row = work.name + ", " + in.name + " to " + out.name + "|";
    benchmark::RegisterBenchmark((row + "ours").c_str(), runOurs, work, in, out)->UseRealTime();
    if (in.peerHasIt && out.peerHasIt) {
        benchmark::RegisterBenchmark((row + "peer").c_str(), runPeer, work, in, out)->UseRealTime();
    }
    benchmark::RegisterBenchmark((row + "limit").c_str(), runLimit, in, out)->UseRealTime();
    if (onTwoThreads) {
        benchmark::RegisterBenchmark((row + "2 threads").c_str(), runOursOnTwoThreads, work, in, out)->UseRealTime();
    }
}

} // namespace

void registerPixelRows()
{
    const std::vector<float> none = {0.f, 0.f, 0.f, 0.f};
    const Work scale = matrixWork("scale", {1.1f, 0, 0, 0, 0, 0.9f, 0, 0, 0, 0, 1.2f, 0, 0, 0, 0, 1.f}, none);
    const std::vector<float> mix = {0.7f, 0.2f, 0.1f, 0, 0.1f, 0.8f, 0.1f, 0, 0.05f, 0.15f, 0.8f, 0, 0, 0, 0, 1.f};
    const Work matrix = matrixWork("matrix", mix, none);
    const Work matrixWithOffset = matrixWork("matrix with offset", mix, {0.01f, 0.02f, 0.03f, 0.f});

    registerRow(scale, k32f, k32f);
    registerRow(matrix, k32f, k32f);
    registerRow(matrixWithOffset, k32f, k32f);
    registerRow(rangeWork("range, scale min max", 0.1, 0.0, 0.9, 1.0), k32f, k32f);
    registerRow(rangeWork("range, scale min", 0.1, 0.0, kNotSet, kNotSet), k32f, k32f);
    registerRow(rangeWork("range, scale max", kNotSet, kNotSet, 0.9, 1.0), k32f, k32f);
    registerRow(rangeWork("range, min max", 0.1, 0.1, 0.9, 0.9), k32f, k32f);
    registerRow(rangeWork("range, min", 0.1, 0.1, kNotSet, kNotSet), k32f, k32f);
    registerRow(rangeWork("range, max", kNotSet, kNotSet, 0.9, 0.9), k32f, k32f);

    registerRow(matrix, k8i, k8i, true);
    registerRow(matrix, k16i, k16i, true);
    registerRow(matrix, k16f, k16f, true);
    registerRow(matrix, k8i, k32f);
    registerRow(matrix, k10i, k16f, true);
    registerRow(matrix, k10iP, k16f, true);
    registerRow(matrix, k16f, k32f);
    registerRow(matrix, k32f, k8i);
    registerRow(rangeWork("range, scale min max", 0.1, 0.0, 0.9, 1.0), k8i, k8i, true);
}
