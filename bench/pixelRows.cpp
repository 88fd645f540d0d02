#include "rows.h"
#include "work.h"

#include <OpenColorIO/OpenColorIO.h>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstring>
#include <limits>
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
    constexpr double kNotSet = std::numeric_limits<double>::quiet_NaN();
    const Work matrix = matrixWork();
    const Work range = rangeWork("range, scale min max", 0.1, 0.0, 0.9, 1.0);

    registerRow(scaleWork(), k32f, k32f);
    registerRow(matrix, k32f, k32f);
    registerRow(matrixWithOffsetWork(), k32f, k32f);
    registerRow(range, k32f, k32f);
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
    registerRow(range, k8i, k8i, true);

    const std::vector<Work> ops = {
        lut1DWork("1D LUT 1024, linear", Curves::One),
        lut1DWork("1D LUT 1024, three curves", Curves::Three),
        inverseLut1DWork(),
        halfDomainLut1DWork(),
        hueAdjustLut1DWork("1D LUT hue adjust", Curves::One),
        hueAdjustLut1DWork("1D LUT hue adjust, three curves", Curves::Three),
        lut3DWork("3D LUT 33 trilinear", CubeInterpolation::Trilinear),
        lut3DWork("3D LUT 33 tetrahedral", CubeInterpolation::Tetrahedral),
        gammaWork(),
        moncurveWork(),
        logWork(),
        linToLogWork(),
        cdlWork(),
        cdlNoClampWork(),
        exposureContrastWork(),
        chainOf("CDL + matrix + moncurve + 3D LUT 33",
                {cdlWork(), matrix, moncurveWork(), lut3DWork("", CubeInterpolation::Trilinear)}),
    };
    for (const Work& work : ops) {
        for (const Format& format : {k32f, k8i, k16f, k16i}) {
            registerRow(work, format, format);
        }
    }
}
