#include "renderer/CPULut3DOp.h"

#include "kernelProbe.h"
#include "tests/utils/failure.h"
#include "tests/utils/logRecorder.h"

#include <algorithm>

using namespace Rendering;
using Color::Lut3DOp;

namespace {

Lut3DOp makeOp(uint32_t length, Lut3DOp::Interpolation interpolation, BitDepth in = BIT_DEPTH_32f,
               BitDepth out = BIT_DEPTH_32f)
{
    return Lut3DOp(in, out, "id", "cube", {}, interpolation, length);
}

/// The identity with noise, NaN and infinities in it where wanted.
Lut3DOp makeNoisyOp(uint32_t length, Lut3DOp::Interpolation interpolation, BitDepth in, BitDepth out, bool isWild)
{
    Lut3DOp op = makeOp(length, interpolation, in, out);
    std::mt19937 random(length);
    const float special[] = {kInfinity, -kInfinity, kNaN, kLargest, -kLargest, -0.f, 0.f, 1e-45f};
    for (float& value : op.getArray().getValues()) {
        value += (static_cast<float>(random() % 1001) / 1000.f - 0.5f) * getBitDepthMaxValue(out);
        if (isWild && random() % 5 == 0) value = special[random() % 8];
    }
    return op;
}

/// One pixel, channel by channel, straight from the definition of the interpolations.
class SlowCube
{
public:
    explicit SlowCube(const Lut3DOp& op) : m_op(op) {}

    Pixel operator()(const Pixel& in) const
    {
        const uint32_t n = m_op.getArray().getLength();
        const float last = static_cast<float>(n) - 1.f;
        const float scale = 1.f / (getBitDepthValueRange(m_op.getInBitDepth()) / last);
        uint32_t low[3];
        uint32_t high[3];
        float f[3];
        for (std::size_t axis = 0; axis < 3; ++axis) {
            float p = in[axis] * scale;
            if (!(p > 0.f)) p = 0.f;
            if (!(p < last)) p = last;
            low[axis] = static_cast<uint32_t>(p);
            high[axis] = low[axis] == n - 1 ? low[axis] : low[axis] + 1;
            f[axis] = p - static_cast<float>(low[axis]);
        }
        const bool tetrahedral = m_op.getInterpolation() == Lut3DOp::INTERPOLATION_TETRAHEDRAL;
        Pixel out;
        for (unsigned channel = 0; channel < 3; ++channel) {
            const auto corner = [&](int r, int g, int b) {
                const std::size_t red = r ? high[0] : low[0];
                const std::size_t green = g ? high[1] : low[1];
                const std::size_t blue = b ? high[2] : low[2];
                const float value = m_op.getArray().getValues()[((red * n + green) * n + blue) * 3 + channel];
                if (std::isnan(value)) return 0.f;
                if (std::isinf(value)) return value > 0.f ? kLargest : -kLargest;
                return value;
            };
            out[channel] = tetrahedral ? alongPath(f, corner) : throughCell(f, corner);
        }
        out[3] = in[3] * (getBitDepthMaxValue(m_op.getOutBitDepth()) / getBitDepthMaxValue(m_op.getInBitDepth()));
        return out;
    }

private:
    template <class Corner>
    static float throughCell(const float (&f)[3], const Corner& c)
    {
        const float fr = f[0];
        const float fg = f[1];
        const float fb = f[2];
        const float a = (c(0, 1, 1) * fb + c(0, 1, 0) * (1 - fb)) * fg //
                        + (c(0, 0, 0) * (1 - fb) + c(0, 0, 1) * fb) * (1 - fg);
        const float b = (c(1, 0, 0) * (1 - fb) + c(1, 0, 1) * fb) * (1 - fg) //
                        + (c(1, 1, 0) * (1 - fb) + c(1, 1, 1) * fb) * fg;
        return a * (1 - fr) + b * fr;
    }

    template <class Corner>
    static float alongPath(const float (&f)[3], const Corner& c)
    {
        const float fr = f[0];
        const float fg = f[1];
        const float fb = f[2];
        float dR;
        float dG;
        float dB;
        if (fg <= fr) {
            if (fb <= fg) { // red, green, blue
                dR = c(1, 0, 0) - c(0, 0, 0);
                dG = c(1, 1, 0) - c(1, 0, 0);
                dB = c(1, 1, 1) - c(1, 1, 0);
            } else if (fr <= fb) { // blue, red, green
                dB = c(0, 0, 1) - c(0, 0, 0);
                dR = c(1, 0, 1) - c(0, 0, 1);
                dG = c(1, 1, 1) - c(1, 0, 1);
            } else { // red, blue, green
                dR = c(1, 0, 0) - c(0, 0, 0);
                dB = c(1, 0, 1) - c(1, 0, 0);
                dG = c(1, 1, 1) - c(1, 0, 1);
            }
        } else if (fb <= fg) {
            if (fr <= fb) { // green, blue, red
                dG = c(0, 1, 0) - c(0, 0, 0);
                dB = c(0, 1, 1) - c(0, 1, 0);
                dR = c(1, 1, 1) - c(0, 1, 1);
            } else { // green, red, blue
                dG = c(0, 1, 0) - c(0, 0, 0);
                dR = c(1, 1, 0) - c(0, 1, 0);
                dB = c(1, 1, 1) - c(1, 1, 0);
            }
        } else { // blue, green, red
            dB = c(0, 0, 1) - c(0, 0, 0);
            dG = c(0, 1, 1) - c(0, 0, 1);
            dR = c(1, 1, 1) - c(0, 1, 1);
        }
        return (dB * fb + dG * fg) + (dR * fr + c(0, 0, 0));
    }

    const Lut3DOp& m_op;
};

/// A cube of two grid points per axis where each corner has a value of its own, so that any two paths differ.
Lut3DOp makeMarkedOp(Lut3DOp::Interpolation interpolation)
{
    Lut3DOp op = makeOp(2, interpolation);
    // c000, c001, c010, c011, c100, c101, c110, c111
    const float corners[] = {0, 1, 2, 4, 8, 16, 32, 64};
    for (std::size_t i = 0; i < 8; ++i) {
        for (std::size_t channel = 0; channel < 3; ++channel) {
            op.getArray().setValue(i * 3 + channel, corners[i] * static_cast<float>(channel + 1));
        }
    }
    return op;
}

float tetrahedralAt(float r, float g, float b)
{
    const auto renderer = makeLut3DRenderer(makeMarkedOp(Lut3DOp::INTERPOLATION_TETRAHEDRAL));
    const Pixel out = render(*renderer, Pixel{r, g, b, 1.f});
    EXPECT_EQ(out[1], out[0] * 2.f);
    EXPECT_EQ(out[2], out[0] * 3.f);
    return out[0];
}

constexpr Lut3DOp::Interpolation kBoth[] = {Lut3DOp::INTERPOLATION_TRILINEAR, Lut3DOp::INTERPOLATION_TETRAHEDRAL};

} // namespace

TEST(CPULut3DOp, onlyTheTetrahedralStyleGetsTheTetrahedralKernel)
{
    LogRecorder log;
    const auto typeFor = [](Lut3DOp::Interpolation interpolation) {
        return makeLut3DRenderer(makeOp(2, interpolation))->getType();
    };
    EXPECT_EQ(typeFor(Lut3DOp::INTERPOLATION_DEFAULT), RENDERER_LUT_3D);
    EXPECT_EQ(typeFor(Lut3DOp::INTERPOLATION_TRILINEAR), RENDERER_LUT_3D);
    EXPECT_EQ(typeFor(Lut3DOp::INTERPOLATION_TETRAHEDRAL), RENDERER_LUT_3D_TETRAHEDRAL);
    EXPECT_EQ(typeFor(static_cast<Lut3DOp::Interpolation>(4)), RENDERER_LUT_3D);
    EXPECT_TRUE(log.lines().empty());
}

TEST(CPULut3DOp, the4ptStyleIsLoggedAndRenderedTrilinearly)
{
    LogRecorder log;
    const auto renderer = makeLut3DRenderer(makeOp(2, Lut3DOp::INTERPOLATION_4PT_TETRAHEDRAL));
    EXPECT_EQ(renderer->getType(), RENDERER_LUT_3D);
    const LogRecorder::Lines expected = {
        {LOG_LEVEL_DEBUG, "COLOR:RENDERER:CPU: Op 'cube' illegal attribute 'Interpolation'"}};
    EXPECT_EQ(log.lines(), expected);
}

TEST(CPULut3DOp, channelsMeet)
{
    for (const auto interpolation : kBoth) {
        EXPECT_EQ(makeLut3DRenderer(makeOp(2, interpolation))->getChannelUse(), ChannelUse::Mixed);
    }
}

TEST(CPULut3DOp, equalsTheSlowComputationBitForBit)
{
    for (const auto interpolation : kBoth) {
        for (const uint32_t length : {1u, 2u, 3u, 17u, 33u, 129u}) {
            const Lut3DOp op = makeNoisyOp(length, interpolation, BIT_DEPTH_32f, BIT_DEPTH_32f, false);
            SCOPED_TRACE(::testing::Message() << "length " << length << " interpolation " << interpolation);
            expectSamePixels(*makeLut3DRenderer(op), probePixels(1.f), SlowCube(op));
        }
    }
}

TEST(CPULut3DOp, equalsTheSlowComputationWithWildEntries)
{
    for (const auto interpolation : kBoth) {
        for (const uint32_t length : {2u, 5u, 17u}) {
            const Lut3DOp op = makeNoisyOp(length, interpolation, BIT_DEPTH_32f, BIT_DEPTH_16f, true);
            SCOPED_TRACE(::testing::Message() << "length " << length << " interpolation " << interpolation);
            expectSamePixels(*makeLut3DRenderer(op), probePixels(1.f), SlowCube(op));
        }
    }
}

TEST(CPULut3DOp, equalsTheSlowComputationAtEveryDepth)
{
    const BitDepth depths[] = {BIT_DEPTH_8i, BIT_DEPTH_10i, BIT_DEPTH_12i, BIT_DEPTH_16i, BIT_DEPTH_16f, BIT_DEPTH_32f};
    for (const auto interpolation : kBoth) {
        for (const BitDepth in : depths) {
            const BitDepth out = in == BIT_DEPTH_8i ? BIT_DEPTH_16i : BIT_DEPTH_8i;
            const Lut3DOp op = makeNoisyOp(9, interpolation, in, out, false);
            SCOPED_TRACE(getBitDepthName(in));
            expectSamePixels(*makeLut3DRenderer(op), probePixels(getBitDepthMaxValue(in)), SlowCube(op));
        }
    }
}

TEST(CPULut3DOp, anyNumberOfPixelsIsRenderedAndNoMore)
{
    for (const auto interpolation : kBoth) {
        const auto renderer = makeLut3DRenderer(makeNoisyOp(5, interpolation, BIT_DEPTH_32f, BIT_DEPTH_32f, false));
        Pixels source = probePixels(1.f);
        source.resize(70);
        const Pixels whole = render(*renderer, source);
        for (uint32_t width = 0; width < source.size(); ++width) {
            Pixels part(source.size(), Pixel{7, 7, 7, 7});
            renderer->render({source.data()->data(), part.data()->data(), width, 0, 0, {}});
            for (std::size_t i = 0; i < source.size(); ++i) {
                ASSERT_TRUE(samePixel(part[i], i < width ? whole[i] : Pixel{7, 7, 7, 7})) << width << " " << i;
            }
        }
    }
}

TEST(CPULut3DOp, theGridPointsThemselvesAreExact)
{
    for (const auto interpolation : kBoth) {
        const Lut3DOp op = makeNoisyOp(33, interpolation, BIT_DEPTH_32f, BIT_DEPTH_32f, false);
        const auto renderer = makeLut3DRenderer(op);
        const auto entry = [&](std::size_t r, std::size_t g, std::size_t b) {
            const float* const values = op.getArray().getValues().data() + ((r * 33 + g) * 33 + b) * 3;
            return Pixel{values[0], values[1], values[2], 1.f};
        };
        EXPECT_TRUE(samePixel(render(*renderer, Pixel{1.f, 1.f, 1.f, 1.f}), entry(32, 32, 32)));
        EXPECT_TRUE(samePixel(render(*renderer, Pixel{0.f, 0.f, 0.f, 1.f}), entry(0, 0, 0)));
        // Red is the slowest axis and blue the fastest.
        EXPECT_TRUE(samePixel(render(*renderer, Pixel{0.25f, 0.5f, 0.75f, 1.f}), entry(8, 16, 24)));
        EXPECT_TRUE(samePixel(render(*renderer, Pixel{1.f, 0.f, 0.5f, 1.f}), entry(32, 0, 16)));
    }
}

TEST(CPULut3DOp, nothingIsExtrapolated)
{
    for (const auto interpolation : kBoth) {
        const auto renderer = makeLut3DRenderer(makeNoisyOp(5, interpolation, BIT_DEPTH_32f, BIT_DEPTH_32f, false));
        const Pixel top = render(*renderer, Pixel{1.f, 0.f, 1.f, 1.f});
        EXPECT_TRUE(samePixel(render(*renderer, Pixel{1.5f, -3.f, 1e30f, 1.f}), top));
        EXPECT_TRUE(samePixel(render(*renderer, Pixel{kInfinity, -kInfinity, kLargest, 1.f}), top));
    }
}

TEST(CPULut3DOp, aNaNReadsTheFirstGridPointOfItsAxis)
{
    for (const auto interpolation : kBoth) {
        const auto renderer = makeLut3DRenderer(makeNoisyOp(5, interpolation, BIT_DEPTH_32f, BIT_DEPTH_32f, false));
        EXPECT_TRUE(
            samePixel(render(*renderer, Pixel{kNaN, 0.3f, 0.6f, 1.f}), render(*renderer, Pixel{0.f, 0.3f, 0.6f, 1.f})));
        EXPECT_TRUE(
            samePixel(render(*renderer, Pixel{0.3f, kNaN, 0.6f, 1.f}), render(*renderer, Pixel{0.3f, 0.f, 0.6f, 1.f})));
        EXPECT_TRUE(samePixel(render(*renderer, Pixel{0.3f, 0.6f, -kNaN, 1.f}),
                              render(*renderer, Pixel{0.3f, 0.6f, 0.f, 1.f})));
    }
}

TEST(CPULut3DOp, theLargestCodeOf8iReachesTheTopCorner)
{
    for (const auto interpolation : kBoth) {
        for (const uint32_t length : {2u, 17u, 33u, 65u}) {
            const Lut3DOp op = makeOp(length, interpolation, BIT_DEPTH_8i, BIT_DEPTH_8i);
            EXPECT_TRUE(samePixel(render(*makeLut3DRenderer(op), Pixel{255, 255, 255, 255}), {255, 255, 255, 255}))
                << length;
        }
    }
}

TEST(CPULut3DOp, aSingleGridPointIsTheResultForEveryColour)
{
    for (const auto interpolation : kBoth) {
        Lut3DOp op = makeOp(1, interpolation);
        op.getArray().getValues() = {0.25f, 0.5f, 0.75f};
        const auto renderer = makeLut3DRenderer(op);
        for (const float value : {0.f, 0.5f, 1.f, -kInfinity, kInfinity, kNaN, kLargest}) {
            EXPECT_TRUE(samePixel(render(*renderer, Pixel{value, value, value, 0.5f}), {0.25f, 0.5f, 0.75f, 0.5f}));
        }
    }
}

TEST(CPULut3DOp, alphaIsScaledAlone)
{
    for (const auto interpolation : kBoth) {
        const auto renderer = makeLut3DRenderer(makeOp(2, interpolation, BIT_DEPTH_16f, BIT_DEPTH_8i));
        EXPECT_EQ(render(*renderer, Pixel{0, 0, 0, 1.f})[3], 255.f);
        EXPECT_EQ(render(*renderer, Pixel{0, 0, 0, -2.f})[3], -510.f);
        EXPECT_EQ(render(*renderer, Pixel{0, 0, 0, kInfinity})[3], kInfinity);
        EXPECT_TRUE(std::isnan(render(*renderer, Pixel{0, 0, 0, kNaN})[3]));
    }
}

TEST(CPULut3DOp, entriesThatAreNoNumbersBecomeNumbers)
{
    for (const auto interpolation : kBoth) {
        Lut3DOp op = makeOp(1, interpolation);
        op.getArray().getValues() = {kInfinity, -kInfinity, kNaN};
        EXPECT_TRUE(samePixel(render(*makeLut3DRenderer(op), Pixel{0, 0, 0, 1}), {kLargest, -kLargest, 0.f, 1.f}));
    }
}

TEST(CPULut3DOp, valuesAreNotRoundedToTheOutputDepth)
{
    for (const auto interpolation : kBoth) {
        Lut3DOp op = makeOp(1, interpolation, BIT_DEPTH_8i, BIT_DEPTH_8i);
        op.getArray().getValues() = {0.25f, -7.5f, 300.125f};
        EXPECT_TRUE(samePixel(render(*makeLut3DRenderer(op), Pixel{0, 0, 0, 1}), {0.25f, -7.5f, 300.125f, 1.f}));
    }
}

// Fractions of 1/2, 1/4 and 1/8 in the marked cube; the corners of each path are named in front of the sum.
TEST(CPULut3DOp, eachTetrahedronHasItsPath)
{
    const float large = 0.5f;
    const float mid = 0.25f;
    const float small = 0.125f;
    // c000 = 0, c100 = 8, c110 = 32, c111 = 64
    EXPECT_EQ(tetrahedralAt(large, mid, small), 8 * large + 24 * mid + 32 * small);
    // c000 = 0, c100 = 8, c101 = 16, c111 = 64
    EXPECT_EQ(tetrahedralAt(large, small, mid), 8 * large + 8 * mid + 48 * small);
    // c000 = 0, c001 = 1, c101 = 16, c111 = 64
    EXPECT_EQ(tetrahedralAt(mid, small, large), 1 * large + 15 * mid + 48 * small);
    // c000 = 0, c001 = 1, c011 = 4, c111 = 64
    EXPECT_EQ(tetrahedralAt(small, mid, large), 1 * large + 3 * mid + 60 * small);
    // c000 = 0, c010 = 2, c011 = 4, c111 = 64
    EXPECT_EQ(tetrahedralAt(small, large, mid), 2 * large + 2 * mid + 60 * small);
    // c000 = 0, c010 = 2, c110 = 32, c111 = 64
    EXPECT_EQ(tetrahedralAt(mid, large, small), 2 * large + 30 * mid + 32 * small);
}

namespace {

using Corners = std::vector<std::size_t>;

/// The corners that are read: the difference between the largest number in one and the lowest in the others is
/// infinite, which a fraction of 0 does not hide.
Corners cornersReadAt(float r, float g, float b)
{
    Corners corners;
    for (std::size_t corner = 0; corner < 8; ++corner) {
        Lut3DOp op = makeOp(2, Lut3DOp::INTERPOLATION_TETRAHEDRAL);
        std::fill(op.getArray().getValues().begin(), op.getArray().getValues().end(), -kLargest);
        op.getArray().setValue(corner * 3, kLargest);
        if (render(*makeLut3DRenderer(op), Pixel{r, g, b, 1.f})[0] != -kLargest) corners.push_back(corner);
    }
    return corners;
}

// Numbered as the entries are: 4 for red, 2 for green, 1 for blue.
const Corners kRedGreenBlue = {0, 4, 6, 7};
const Corners kRedBlueGreen = {0, 4, 5, 7};
const Corners kBlueRedGreen = {0, 1, 5, 7};
const Corners kBlueGreenRed = {0, 1, 3, 7};
const Corners kGreenBlueRed = {0, 2, 3, 7};
const Corners kGreenRedBlue = {0, 2, 6, 7};

} // namespace

TEST(CPULut3DOp, onlyTheCornersOfTheTetrahedronAreRead)
{
    EXPECT_EQ(cornersReadAt(0.5f, 0.25f, 0.125f), kRedGreenBlue);
    EXPECT_EQ(cornersReadAt(0.5f, 0.125f, 0.25f), kRedBlueGreen);
    EXPECT_EQ(cornersReadAt(0.25f, 0.125f, 0.5f), kBlueRedGreen);
    EXPECT_EQ(cornersReadAt(0.125f, 0.25f, 0.5f), kBlueGreenRed);
    EXPECT_EQ(cornersReadAt(0.125f, 0.5f, 0.25f), kGreenBlueRed);
    EXPECT_EQ(cornersReadAt(0.25f, 0.5f, 0.125f), kGreenRedBlue);
}

TEST(CPULut3DOp, tiesOfFractionsHaveTheirPathToo)
{
    EXPECT_EQ(cornersReadAt(0.5f, 0.5f, 0.25f), kRedGreenBlue);
    EXPECT_EQ(cornersReadAt(0.5f, 0.5f, 0.75f), kBlueRedGreen);
    EXPECT_EQ(cornersReadAt(0.5f, 0.25f, 0.25f), kRedGreenBlue);
    EXPECT_EQ(cornersReadAt(0.5f, 0.75f, 0.75f), kGreenBlueRed);
    EXPECT_EQ(cornersReadAt(0.5f, 0.25f, 0.5f), kBlueRedGreen);
    EXPECT_EQ(cornersReadAt(0.5f, 0.75f, 0.5f), kGreenBlueRed);
    EXPECT_EQ(cornersReadAt(0.5f, 0.5f, 0.5f), kRedGreenBlue);
    EXPECT_EQ(cornersReadAt(0.f, 0.f, 0.f), kRedGreenBlue);
}

TEST(CPULut3DOp, theIdentityKeepsGreys)
{
    for (const auto interpolation : kBoth) {
        const auto renderer = makeLut3DRenderer(makeOp(33, interpolation));
        for (int i = 0; i <= 1000; ++i) {
            const float grey = static_cast<float>(i) / 1000.f;
            const Pixel out = render(*renderer, Pixel{grey, grey, grey, 1.f});
            for (std::size_t channel = 0; channel < 3; ++channel) {
                EXPECT_NEAR(out[channel], grey, 2e-7f);
            }
        }
    }
}

// What is refused here has been refused by the op's own validation before; the table stays safe without it.
TEST(CPULut3DOp, aCubeThatIsTooLargeIsRefused)
{
    const Lut3DOp op = [] {
        Lut3DOp sound = makeOp(2, Lut3DOp::INTERPOLATION_TRILINEAR);
        sound.getArray().setLength(130);
        return sound;
    }();
    EXPECT_EQ(failureOf([&] { makeLut3DRenderer(op); }),
              (Failure{0x205000d, "COLOR:TRANSFORM:LUT_3D", "130 exceeds maximum supported dimension 129"}));
}

TEST(CPULut3DOp, aCubeOfAnotherSizeThanItsLengthIsRefused)
{
    const Failure illegal{0x2010005, "COLOR:TRANSFORM:LUT_3D", "Array content illegal"};
    Lut3DOp op = makeOp(3, Lut3DOp::INTERPOLATION_TETRAHEDRAL);
    op.getArray().getValues().pop_back();
    EXPECT_EQ(failureOf([&] { makeLut3DRenderer(op); }), illegal);
    op.getArray().getValues().clear();
    op.getArray().setLength(0);
    EXPECT_EQ(failureOf([&] { makeLut3DRenderer(op); }), illegal);
}
