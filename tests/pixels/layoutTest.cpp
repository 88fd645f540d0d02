#include "tests/pixels/rendering.h"

#include <sys/mman.h>
#include <unistd.h>

#include <memory>
#include <thread>

namespace PixelTest {
namespace {

using namespace Morvane_2015_1_42;

/// For each family of kernels and each way through the frame: one op, several, bypassed.
const std::vector<const char*> LAYOUT_OPS = {
    // matrices, ranges and bypasses
    "scale", "matrixWithOffset", "rangeScaleMinMax", "bypassedMatrix", "scaleThenMatrixWithOffset", "matrixBetween",
    "bypassedBetween", "bypassedLastOfThree",
    // curves and colour models
    "gammaBasicFwd", "gammaMoncurveFwd", "gammaMoncurveRev", "log10", "antiLog10", "logToLin", "linToLog", "ecVideo",
    "ecLog", "ecLinearDynamic", "ecLinearOfContrastOne", "cdlV12Fwd", "cdlV12Rev", "cdlNoClampFwd", "cdlNoClampRev",
    "gamutMap", "hueVectorFwd", "hueVectorRev", "rgbToHsv", "hsvToRgb", "ditherToBytes", "ditheredLast",
    "exposedBetween",
    // tables
    "lut", "lutHalfDomain", "lutHueAdjusted", "inverseLut", "cube", "cubeTetrahedral", "lutBetweenMatrices"};

/// 32 pairs in which every format is once the source and once the destination, in ever other company.
std::vector<std::pair<PixelFormat, PixelFormat>> samplePairs(size_t turn)
{
    const auto& formats = Twin::allFormats();
    std::vector<std::pair<PixelFormat, PixelFormat>> pairs;
    for (size_t i = 0; i < formats.size(); ++i)
        pairs.emplace_back(formats[i], formats[(i * 7 + turn) % formats.size()]);
    return sampled(pairs, turn);
}

std::string pairName(const char* op, PixelFormat in, PixelFormat out)
{
    return std::string(op) + ", " + pfToStr(in) + " to " + pfToStr(out);
}

Image randomImage(PixelFormat format, const ROI& roi, Placing placing, unsigned seed)
{
    Image image(format, roi, placing);
    Random random(seed);
    fillRandom(image, random);
    return image;
}

TEST(Widths, allGiveTheBitsOfTheScalarTwinAndLeaveOtherBytesAlone)
{
    std::vector<unsigned> widths = {127, 128, 129, 255, 256, 257, 511, 512, 513, 1023, 1024, 1025};
    for (unsigned width = 0; width <= 70; ++width)
        widths.push_back(width);

    Differences differences;
    for (size_t i = 0; i < LAYOUT_OPS.size(); ++i) {
        const OpCase& one = opCaseNamed(LAYOUT_OPS[i]);
        Twin::Processors twins(one.ops);
        const TransformPtr transform = makeTransform(one);
        for (const auto& [in, out] : samplePairs(i)) {
            const TransformPtr finalized = finalizedCopy(transform, in, out);
            const Twin::Processor twin = twins.between(in, out);
            for (const unsigned width : widths) {
                const ROI roi(0, 0, width, 2);
                const Image source = randomImage(in, roi, {}, width + 1);
                Image expected(out, roi);
                Image actual = expected;
                apply(twin, source, expected);
                apply(finalized, source, actual);
                differences.add(pairName(LAYOUT_OPS[i], in, out) + ", width " + std::to_string(width),
                                difference(expected, actual, twin.nans()));
            }
        }
    }
    EXPECT_TRUE(differences.areNone());
}

TEST(Regions, insideLargerImagesGiveTheBitsOfTheScalarTwinAndLeaveOtherBytesAlone)
{
    const std::vector<ROI> regions = {ROI(0, 0, 5, 3, 9, 4),    ROI(3, 2, 17, 4, 23, 9), ROI(1, 0, 1, 1, 2, 1),
                                      ROI(6, 5, 33, 2, 39, 7),  ROI(4, 3, 0, 2, 6, 8),   ROI(4, 3, 2, 0, 6, 8),
                                      ROI(2, 1, 260, 3, 270, 5)};
    Differences differences;
    for (size_t i = 0; i < LAYOUT_OPS.size(); ++i) {
        const OpCase& one = opCaseNamed(LAYOUT_OPS[i]);
        Twin::Processors twins(one.ops);
        const TransformPtr transform = makeTransform(one);
        for (const auto& [in, out] : samplePairs(i + 11)) {
            for (const ROI& roi : regions) {
                const Image source = randomImage(in, roi, {}, roi.getActiveWidth());
                differences.add(pairName(LAYOUT_OPS[i], in, out) + ", width " + std::to_string(roi.getActiveWidth()),
                                differenceFromTwin(twins, transform, source, out));
            }
        }
    }
    EXPECT_TRUE(differences.areNone());
}

TEST(Strides, largerThanTheRowGiveTheBitsOfTheScalarTwinAndLeaveOtherBytesAlone)
{
    Differences differences;
    for (size_t i = 0; i < LAYOUT_OPS.size(); ++i) {
        const OpCase& one = opCaseNamed(LAYOUT_OPS[i]);
        Twin::Processors twins(one.ops);
        const TransformPtr transform = makeTransform(one);
        for (const auto& [in, out] : samplePairs(i + 3)) {
            const Placing sourcePlacing{5 * Twin::Layout(in).elementSize, 0};
            const Placing destinationPlacing{3 * Twin::Layout(out).elementSize, 0};
            const Image source = randomImage(in, ROI(2, 1, 31, 4, 35, 6), sourcePlacing, 99);
            differences.add(pairName(LAYOUT_OPS[i], in, out),
                            differenceFromTwin(twins, transform, source, out, destinationPlacing));
        }
    }
    EXPECT_TRUE(differences.areNone());
}

TEST(StartOfRows, offEveryVectorBoundaryGiveTheBitsOfTheScalarTwin)
{
    Differences differences;
    for (size_t i = 0; i < LAYOUT_OPS.size(); ++i) {
        const OpCase& one = opCaseNamed(LAYOUT_OPS[i]);
        Twin::Processors twins(one.ops);
        const TransformPtr transform = makeTransform(one);
        for (const auto& [in, out] : samplePairs(i + 19)) {
            for (unsigned elements = 1; elements < 4; ++elements) {
                const Placing sourcePlacing{0, elements * Twin::Layout(in).elementSize};
                const Placing destinationPlacing{0, (4 - elements) * Twin::Layout(out).elementSize};
                const Image source = randomImage(in, ROI(0, 0, 41, 2), sourcePlacing, elements);
                differences.add(pairName(LAYOUT_OPS[i], in, out) + ", " + std::to_string(elements),
                                differenceFromTwin(twins, transform, source, out, destinationPlacing));
            }
        }
    }
    EXPECT_TRUE(differences.areNone());
}

TEST(InPlace, givesThePixelsOfOutOfPlace)
{
    const ROI roi(3, 1, 143, 3, 150, 5);
    Differences differences;
    size_t numPairs = 0;
    for (const char* name : LAYOUT_OPS) {
        const TransformPtr transform = makeTransform(opCaseNamed(name));
        for (const PixelFormat in : Twin::allFormats()) {
            for (const PixelFormat out : Twin::allFormats()) {
                if (Twin::Layout(in).pixelSize != Twin::Layout(out).pixelSize) continue;
                ++numPairs;
                const TransformPtr finalized = finalizedCopy(transform, in, out);
                const Image source = randomImage(in, roi, {}, 5);
                Image apart(out, roi);
                apply(finalized, source, apart);

                // The same bytes once as the source and once as the destination.
                Image shared(out, roi);
                for (unsigned y = 0; y < roi.getActiveHeight(); ++y)
                    std::memcpy(shared.line(y), source.line(y),
                                size_t{roi.getActiveWidth()} * source.layout().pixelSize);
                ASSERT_TRUE(finalized->apply(shared.data(), shared.stride(), roi, shared.data(), shared.stride()));
                differences.add(pairName(name, in, out), difference(apart, shared, Twin::Nans::EXACT));
            }
        }
    }
    EXPECT_GT(numPairs, LAYOUT_OPS.size() * 100);
    EXPECT_TRUE(differences.areNone());
}

/// Memory with a page on either side that nobody may touch.
class GuardedMemory
{
public:
    explicit GuardedMemory(size_t numBytes)
        : m_page(static_cast<size_t>(sysconf(_SC_PAGESIZE))), m_numBytes(numBytes),
          m_inner((numBytes + m_page - 1) / m_page * m_page)
    {
        void* memory = mmap(nullptr, m_inner + 2 * m_page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED) throw std::bad_alloc();
        m_memory = static_cast<uint8_t*>(memory);
        if (mprotect(m_memory + m_page, m_inner, PROT_READ | PROT_WRITE) != 0) throw std::bad_alloc();
    }
    ~GuardedMemory() { munmap(m_memory, m_inner + 2 * m_page); }
    GuardedMemory(const GuardedMemory&) = delete;
    GuardedMemory& operator=(const GuardedMemory&) = delete;

    /// The bytes right behind the page in front.
    uint8_t* atFront() const { return m_memory + m_page; }
    /// The bytes right before the page behind.
    uint8_t* atBack() const { return m_memory + m_page + m_inner - m_numBytes; }

private:
    size_t m_page;
    size_t m_numBytes;
    size_t m_inner;
    uint8_t* m_memory = nullptr;
};

TEST(EndsOfImages, areNeitherReadNorWrittenBeyond)
{
    for (const char* name :
         {"matrixWithOffset", "bypassedMatrix", "matrixBetween", "gammaBasicFwd", "gammaMoncurveRev", "log10",
          "logToLin", "ecLinear", "ecVideo", "cdlV12Fwd", "cdlNoClampRev", "gamutMap", "hueVectorFwd", "rgbToHsv",
          "hsvToRgb", "ditherToBytes", "lut256", "inverseLut", "cubeTetrahedral"}) {
        const TransformPtr transform = makeTransform(opCaseNamed(name));
        for (size_t turn = 0; turn < 4; ++turn) {
            for (const auto& [in, out] : samplePairs(turn * 5)) {
                const TransformPtr finalized = finalizedCopy(transform, in, out);
                for (const unsigned width : {1U, 2U, 3U, 5U, 7U, 16U, 129U, 515U}) {
                    const Image source = randomImage(in, lineOf(width), {}, width);
                    Image expected(out, lineOf(width));
                    apply(finalized, source, expected);

                    const size_t sourceSize = size_t{width} * source.layout().pixelSize;
                    const size_t destinationSize = size_t{width} * expected.layout().pixelSize;
                    const GuardedMemory sourceMemory(sourceSize);
                    const GuardedMemory destinationMemory(destinationSize);
                    for (const bool isAtBack : {false, true}) {
                        uint8_t* from = isAtBack ? sourceMemory.atBack() : sourceMemory.atFront();
                        uint8_t* to = isAtBack ? destinationMemory.atBack() : destinationMemory.atFront();
                        std::memcpy(from, source.data(), sourceSize);
                        ASSERT_TRUE(finalized->apply(from, lineOf(width), to));
                        EXPECT_EQ(std::memcmp(to, expected.data(), destinationSize), 0)
                            << pairName(name, in, out) << ", width " << width;
                    }
                }
            }
        }
    }
}

TEST(Threads, thatShareATransformGiveTheBytesOfOne)
{
    const unsigned width = 301;
    const unsigned bandHeight = 16;
    const unsigned numThreads = 4;
    const ROI whole(0, 0, width, bandHeight * numThreads);
    for (const char* name :
         {"matrixWithOffset", "bypassedBetween", "matrixBetween", "lutHueAdjusted", "exposedBetween", "ditheredLast"}) {
        const TransformPtr transform = makeTransform(opCaseNamed(name));
        for (const auto& [in, out] : samplePairs(13)) {
            const TransformPtr finalized = finalizedCopy(transform, in, out);
            const Image source = randomImage(in, whole, {}, 21);
            Image expected(out, whole);
            apply(finalized, source, expected);

            Image actual(out, whole);
            std::vector<std::thread> threads;
            std::array<bool, numThreads> succeeded{};
            for (unsigned i = 0; i < numThreads; ++i)
                threads.emplace_back([&, i] {
                    const ROI band(0, i * bandHeight, width, bandHeight, width, whole.getImageHeight());
                    succeeded[i] =
                        finalized->apply(source.data(), source.stride(), band, actual.data(), actual.stride());
                });
            for (std::thread& thread : threads)
                thread.join();
            EXPECT_EQ(succeeded, (std::array<bool, numThreads>{true, true, true, true}));
            EXPECT_EQ(expected.bytes(), actual.bytes()) << pairName(name, in, out);
        }
    }
}

} // namespace
} // namespace PixelTest
