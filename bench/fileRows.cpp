#include "rows.h"
#include "work.h"

#include <OpenColorIO/OpenColorIO.h>
#include <array>
#include <benchmark/benchmark.h>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <morvane/morvane.h>
#include <random>
#include <string>
#include <vector>

namespace OCIO = OCIO_NAMESPACE;
namespace M = Morvane;

namespace {

constexpr std::size_t kGrid = 65;
constexpr double kNumbers = 3.0 * kGrid * kGrid * kGrid;

/// A cube with a curve and some noise, each colour as the text that all formats have in common. Blue varies fastest.
std::vector<std::string> makeCube()
{
    std::mt19937 random(1);
    std::uniform_real_distribution<double> noise(0.0, 0.001);
    const auto value = [&](std::size_t position) {
        return std::pow(static_cast<double>(position) / (kGrid - 1), 1.1) * 0.99 + noise(random);
    };
    std::vector<std::string> cube;
    for (std::size_t i = 0; i < kGrid * kGrid * kGrid; ++i) {
        std::array<char, 128> line;
        std::snprintf(line.data(), line.size(), "%.8g %.8g %.8g\n", value(i / (kGrid * kGrid)),
                      value(i / kGrid % kGrid), value(i % kGrid));
        cube.emplace_back(line.data());
    }
    return cube;
}

/// The same cube in a file of each format, as long as the object lives.
class CubeFiles
{
public:
    CubeFiles()
        : m_directory(std::filesystem::temp_directory_path() /
                      ("morvane-bench-" + std::to_string(std::random_device{}())))
    {
        std::filesystem::create_directories(m_directory);
        const std::vector<std::string> cube = makeCube();
        const std::string size = std::to_string(kGrid);

        std::ofstream ctf(getPath("ctf"));
        ctf << "<ProcessList id=\"bench\" version=\"1.6\">\n<LUT3D inBitDepth=\"32f\" outBitDepth=\"32f\">\n<Array "
               "dim=\""
            << size << ' ' << size << ' ' << size << " 3\">\n";
        for (const std::string& line : cube) {
            ctf << line;
        }
        ctf << "</Array>\n</LUT3D>\n</ProcessList>\n";

        std::ofstream redFirst(getPath("cube"));
        redFirst << "LUT_3D_SIZE " << size << '\n';
        std::ofstream indexed(getPath("spi3d"));
        indexed << "SPILUT 1.0\n3 3\n" << size << ' ' << size << ' ' << size << '\n';
        for (std::size_t i = 0; i < kGrid; ++i) {
            for (std::size_t j = 0; j < kGrid; ++j) {
                for (std::size_t k = 0; k < kGrid; ++k) {
                    redFirst << cube[(k * kGrid + j) * kGrid + i];
                    indexed << i << ' ' << j << ' ' << k << ' ' << cube[(i * kGrid + j) * kGrid + k];
                }
            }
        }
    }
    CubeFiles(const CubeFiles&) = delete;
    CubeFiles& operator=(const CubeFiles&) = delete;
    ~CubeFiles()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_directory, ignored);
    }

    std::string getPath(const std::string& extension) const { return (m_directory / ("cube." + extension)).string(); }

private:
    std::filesystem::path m_directory;
};

const CubeFiles& cubeFiles()
{
    static const CubeFiles files;
    return files;
}

M::TransformPtr load()
{
    M::TransformPtr result;
    require(M::loadColorTransform(cubeFiles().getPath("ctf").c_str(), result));
    return result;
}

void runLoad(benchmark::State& state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(load());
    }
    state.counters["pixels"] = kNumbers;
}

void runPeerLoad(benchmark::State& state, const std::string& extension)
{
    const auto file = OCIO::FileTransform::Create();
    file->setSrc(cubeFiles().getPath(extension).c_str());
    for (auto _ : state) {
        // Neither the library nor a config may remember the file.
        OCIO::ClearAllCaches();
        benchmark::DoNotOptimize(OCIO::Config::CreateRaw()->getProcessor(file));
    }
    state.counters["pixels"] = kNumbers;
}

void runSave(benchmark::State& state)
{
    const M::TransformPtr transform = load();
    const std::string path = cubeFiles().getPath("saved.ctf");
    for (auto _ : state) {
        require(M::saveColorTransform(path.c_str(), true, transform));
    }
    state.counters["pixels"] = kNumbers;
}

} // namespace

void registerFileRows()
{
    for (const std::string peerFormat : {"cube", "spi3d"}) {
        const std::string row = "load 3D LUT 65, peer's ." + peerFormat + ", Mnumber/s|";
        benchmark::RegisterBenchmark((row + "ours").c_str(), runLoad)->UseRealTime();
        benchmark::RegisterBenchmark((row + "peer").c_str(), runPeerLoad, peerFormat)->UseRealTime();
    }
    benchmark::RegisterBenchmark("save 3D LUT 65, ctf, Mnumber/s|ours", runSave)->UseRealTime();
}
