#include "tests/pixels/rendering.h"

namespace PixelTest {
namespace {

using namespace Morvane_2015_1_42;

/// For the ways through the frame: reading, storing and passing on.
const std::vector<const char*> FRAME_OPS = {
    "bypassedScale",    "identity",         "numbersToBytes", "numbersToShorts", "scaleWithOffset",
    "matrixWithOffset", "rangeScaleMinMax", "rangeUnset",     "matrixBetween",   "bypassedBetween"};

/// For the formulas: one for each kernel that does more than the ones above.
const std::vector<const char*> KERNEL_OPS = {"gammaBasicFwd",  "gammaMoncurveFwd", "gammaMoncurveRev",
                                             "log10",          "antiLog10",        "logToLin",
                                             "linToLog",       "ecVideo",          "ecLog",
                                             "ecLinear",       "cdlV12Fwd",        "cdlV12Rev",
                                             "cdlNoClampFwd",  "cdlNoClampRev",    "gamutMap",
                                             "hueVectorFwd",   "hueVectorRev",     "rgbToHsv",
                                             "hsvToRgb",       "ditherToBytes",    "lut",
                                             "lutHalfDomain",  "lutHueAdjusted",   "lutHalfDomainHueAdjusted",
                                             "inverseLut",     "inverseLutFast",   "cube",
                                             "cubeTetrahedral"};

/// One for each type of element.
const std::vector<PixelFormat> ELEMENT_DESTINATIONS = {PF_RGBA_8i, PF_RGB_16i, PF_RGBA_16f, PF_RGBA_32f};

const std::vector<PixelFormat> RAMP_DESTINATIONS = {PF_RGBA_8i,  PF_BGR_10i,  PF_RGBA_10iP, PF_ABGR_12i, PF_RGB_16i,
                                                    PF_RGBA_16i, PF_RGBA_16f, PF_BGR_16f,   PF_RGBA_32f, PF_RGB_32f};

void addDifferences(Differences& differences, const char* name, const Image& source,
                    const std::vector<PixelFormat>& destinations)
{
    const OpCase& one = opCaseNamed(name);
    Twin::Processors twins(one.ops);
    const TransformPtr transform = makeTransform(one);
    for (const PixelFormat out : destinations)
        differences.add(std::string(name) + ", " + pfToStr(source.format()) + " to " + pfToStr(out),
                        differenceFromTwin(twins, transform, source, out));
}

/// The destinations are those of the frame.
void expectTwin(const Image& source, const std::vector<PixelFormat>& destinations)
{
    Differences differences;
    for (size_t i = 0; i < FRAME_OPS.size(); ++i)
        addDifferences(differences, FRAME_OPS[i], source, sampled(destinations, i));
    for (size_t i = 0; i < KERNEL_OPS.size(); ++i)
        addDifferences(differences, KERNEL_OPS[i], source, sampled(ELEMENT_DESTINATIONS, i));
    EXPECT_TRUE(differences.areNone());
}

class CodeRamp : public testing::TestWithParam<PixelFormat>
{};

/// Every code that an element can hold, in every channel; the four channels of a pixel differ.
TEST_P(CodeRamp, givesTheBitsOfTheScalarTwin)
{
    const Twin::Layout layout(GetParam());
    const unsigned numCodes = layout.elementSize == 1 ? 256 : 65536;
    Image source(GetParam(), ROI(0, 0, numCodes / 16, 16));
    for (unsigned code = 0; code < numCodes; ++code) {
        const std::array<unsigned, 4> channels = {code, code ^ 0x5a5aU, numCodes - 1 - code, code * 5 + 3};
        uint8_t* pixel = source.line(code / (numCodes / 16)) + size_t{code % (numCodes / 16)} * layout.pixelSize;
        for (size_t i = 0; i < layout.pixelSize / layout.elementSize; ++i)
            std::memcpy(pixel + i * layout.elementSize, &channels[i], layout.elementSize);
    }
    expectTwin(source, RAMP_DESTINATIONS);
}

INSTANTIATE_TEST_SUITE_P(Formats, CodeRamp,
                         testing::Values(PF_RGBA_8i, PF_BGR_8i, PF_RGBA_10i, PF_RGB_10i, PF_ABGR_12i, PF_RGB_12i,
                                         PF_RGBA_16i, PF_BGR_16i, PF_RGBA_16f, PF_BGR_16f),
                         [](const auto& ramp) { return pfToStr(ramp.param); });

TEST(PackedRamp, givesTheBitsOfTheScalarTwin)
{
    for (const PixelFormat format : {PF_RGB_10iP, PF_RGBA_10iP}) {
        Image source(format, ROI(0, 0, 1024, 4));
        for (unsigned alpha = 0; alpha < 4; ++alpha) {
            for (unsigned code = 0; code < 1024; ++code) {
                const uint32_t word = code << 22 | (code ^ 0x155U) << 12 | (1023 - code) << 2 | alpha;
                for (unsigned i = 0; i < 4; ++i)
                    source.line(alpha)[size_t{code} * 4 + i] = static_cast<uint8_t>(word >> (24 - 8 * i));
            }
        }
        expectTwin(source, RAMP_DESTINATIONS);
    }
}

/// Both signs, every exponent, mantissas around every place where a half or an integer rounds.
TEST(FloatRamp, givesTheBitsOfTheScalarTwinOnEveryFormat)
{
    const std::array<uint32_t, 24> mantissas = {0x000000, 0x000001, 0x000fff, 0x001000, 0x001001, 0x001fff,
                                                0x002000, 0x002fff, 0x003000, 0x003001, 0x007fff, 0x100000,
                                                0x200000, 0x2aaaaa, 0x3fffff, 0x400000, 0x400001, 0x555555,
                                                0x600000, 0x7fe000, 0x7fefff, 0x7ff000, 0x7ff001, 0x7fffff};
    for (const PixelFormat format : {PF_RGBA_32f, PF_BGR_32f}) {
        const size_t numChannels = Twin::Layout(format).hasAlpha ? 4 : 3;
        Image source(format, ROI(0, 0, 24, 512));
        for (uint32_t signAndExponent = 0; signAndExponent < 512; ++signAndExponent) {
            for (size_t i = 0; i < 24 * numChannels; ++i) {
                // Neighbouring channels differ in exponent, so that a matrix meets all kinds of sums.
                const uint32_t exponent = (signAndExponent + static_cast<uint32_t>(i % numChannels) * 3) % 512;
                const uint32_t bits = exponent << 23 | mantissas[i / numChannels];
                std::memcpy(source.line(signAndExponent) + i * 4, &bits, 4);
            }
        }
        expectTwin(source, Twin::allFormats());
    }
}

} // namespace
} // namespace PixelTest
