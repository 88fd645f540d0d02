#include "renderer/CPUGamutMapOp.h"

#include "kernelProbe.h"
#include "renderer/hueOrder.h"

using namespace Rendering;
using Color::GamutMapOp;

namespace {

GamutMapOp makeOp(BitDepth in = BIT_DEPTH_32f, BitDepth out = BIT_DEPTH_32f)
{
    return GamutMapOp(in, out, GamutMapOp::STYLE_DW3);
}

/// One pixel, straight from the definition.
class SlowGamutMap
{
public:
    explicit SlowGamutMap(const GamutMapOp& op)
        : m_scale(getBitDepthMaxValue(op.getOutBitDepth()) / getBitDepthMaxValue(op.getInBitDepth()))
    {}

    Pixel operator()(const Pixel& in) const
    {
        Pixel v;
        Pixel w;
        for (std::size_t i = 0; i < 4; ++i) {
            v[i] = in[i] * m_scale;
            w[i] = v[i] > 0.f ? v[i] : 0.f;
        }
        static const std::array<std::size_t, 9> table = {2, 1, 0, 2, 1, 2, 0, 1, 2};
        int val = 0;
        if (v[1] > v[2]) val += 4;
        if (v[0] > v[2]) val -= 3;
        if (v[0] > v[1]) val += 5;
        std::array<std::size_t, 3> order = {2, 2, 2};
        if (val >= 0) {
            for (std::size_t i = 0; i < 3; ++i) {
                order[i] = table.at(static_cast<std::size_t>(val) + i);
            }
        }
        const auto [max, mid, min] = order;
        const float chroma = v[max] - v[min];
        const float hueFactor = chroma == 0.f ? 0.f : (v[mid] - v[min]) / chroma;
        w[mid] = (w[max] - w[min]) * hueFactor + w[min];
        return w;
    }

private:
    float m_scale;
};

std::array<int, 3> orderOf(float r, float g, float b)
{
    const HueOrder order = hueOrderOf(r, g, b);
    return {order.max, order.mid, order.min};
}

} // namespace

TEST(HueOrder, everyOrderOfThreeChannelsIsFound)
{
    using Order = std::array<int, 3>;
    EXPECT_EQ(orderOf(3, 2, 1), (Order{0, 1, 2}));
    EXPECT_EQ(orderOf(3, 1, 2), (Order{0, 2, 1}));
    EXPECT_EQ(orderOf(2, 3, 1), (Order{1, 0, 2}));
    EXPECT_EQ(orderOf(1, 3, 2), (Order{1, 2, 0}));
    EXPECT_EQ(orderOf(2, 1, 3), (Order{2, 0, 1}));
    EXPECT_EQ(orderOf(1, 2, 3), (Order{2, 1, 0}));
}

TEST(HueOrder, ofEqualChannelsTheLaterOneComesFirst)
{
    using Order = std::array<int, 3>;
    EXPECT_EQ(orderOf(1, 1, 1), (Order{2, 1, 0}));
    EXPECT_EQ(orderOf(2, 2, 1), (Order{1, 0, 2}));
    EXPECT_EQ(orderOf(1, 1, 2), (Order{2, 1, 0}));
    EXPECT_EQ(orderOf(2, 1, 1), (Order{0, 2, 1}));
    EXPECT_EQ(orderOf(1, 2, 2), (Order{2, 1, 0}));
    EXPECT_EQ(orderOf(2, 1, 2), (Order{2, 0, 1}));
    EXPECT_EQ(orderOf(1, 2, 1), (Order{1, 2, 0}));
    EXPECT_EQ(orderOf(0.f, -0.f, 0.f), (Order{2, 1, 0}));
}

TEST(HueOrder, aNaNGivesAnOrderThatHarmsNothing)
{
    using Order = std::array<int, 3>;
    EXPECT_EQ(orderOf(kNaN, kNaN, kNaN), (Order{2, 1, 0}));
    EXPECT_EQ(orderOf(kNaN, 2, 1), (Order{1, 2, 0}));
    EXPECT_EQ(orderOf(kNaN, 1, 2), (Order{2, 1, 0}));
    EXPECT_EQ(orderOf(2, 1, kNaN), (Order{2, 0, 1}));
    EXPECT_EQ(orderOf(1, kNaN, 2), (Order{2, 1, 0}));
    EXPECT_EQ(orderOf(2, kNaN, 1), (Order{2, 2, 2}));
}

TEST(CPUGamutMapOp, theStyleNoneHasNoRenderer)
{
    EXPECT_EQ(makeGamutMapRenderer(GamutMapOp(BIT_DEPTH_32f, BIT_DEPTH_32f, GamutMapOp::STYLE_NONE)), nullptr);
    EXPECT_EQ(makeGamutMapRenderer(GamutMapOp(BIT_DEPTH_32f, BIT_DEPTH_32f, static_cast<GamutMapOp::Style>(2))),
              nullptr);
}

TEST(CPUGamutMapOp, theStyleDW3HasOne)
{
    const auto renderer = makeGamutMapRenderer(makeOp());
    EXPECT_EQ(renderer->getType(), RENDERER_GAMUT_MAP_DW3);
    EXPECT_EQ(renderer->getChannelUse(), ChannelUse::Mixed);
}

TEST(CPUGamutMapOp, aNegativeChannelIsClippedAndTheMiddleOneKeepsItsPlace)
{
    const Pixel out = render(*makeGamutMapRenderer(makeOp()), Pixel{-0.1f, 0.5f, 1.f, 0.5f});
    EXPECT_EQ(out[0], 0.f);
    EXPECT_NEAR(out[1], 0.6 / 1.1, 1e-6);
    EXPECT_EQ(out[2], 1.f);
    EXPECT_EQ(out[3], 0.5f);
}

TEST(CPUGamutMapOp, aColourWithoutNegativesStays)
{
    const auto renderer = makeGamutMapRenderer(makeOp());
    EXPECT_TRUE(samePixel(render(*renderer, Pixel{0.25f, 0.5f, 0.75f, 1.f}), {0.25f, 0.5f, 0.75f, 1.f}));
    // Nothing is clipped at the top.
    EXPECT_TRUE(samePixel(render(*renderer, Pixel{4.f, 2.f, 0.f, 7.f}), {4.f, 2.f, 0.f, 7.f}));
    EXPECT_TRUE(samePixel(render(*renderer, Pixel{0.5f, 0.5f, 0.5f, 1.f}), {0.5f, 0.5f, 0.5f, 1.f}));
}

TEST(CPUGamutMapOp, negativeChannelsAloneBecomeZero)
{
    const auto renderer = makeGamutMapRenderer(makeOp());
    EXPECT_TRUE(samePixel(render(*renderer, Pixel{-0.1f, -0.5f, -1.f, -2.f}), {0, 0, 0, 0}));
    EXPECT_TRUE(samePixel(render(*renderer, Pixel{-0.5f, -0.5f, -0.5f, -0.f}), {0, 0, 0, 0}));
}

TEST(CPUGamutMapOp, aNaNChannelWithoutAnOrderBecomesZero)
{
    const auto renderer = makeGamutMapRenderer(makeOp());
    EXPECT_TRUE(samePixel(render(*renderer, Pixel{1.f, kNaN, 0.5f, kNaN}), {1.f, 0.f, 0.5f, 0.f}));
}

TEST(CPUGamutMapOp, allChannelsAreScaledBetweenTheDepths)
{
    const auto renderer = makeGamutMapRenderer(makeOp(BIT_DEPTH_32f, BIT_DEPTH_8i));
    EXPECT_TRUE(samePixel(render(*renderer, Pixel{1.f, 0.f, -1.f, 0.5f}), {255.f, 127.5f, 0.f, 127.5f}));
}

TEST(CPUGamutMapOp, equalsTheSlowComputationBitForBit)
{
    const BitDepth pairs[][2] = {
        {BIT_DEPTH_32f, BIT_DEPTH_32f}, {BIT_DEPTH_8i, BIT_DEPTH_10i}, {BIT_DEPTH_16f, BIT_DEPTH_16i}};
    for (const auto& [in, out] : pairs) {
        const GamutMapOp op = makeOp(in, out);
        expectSamePixels(*makeGamutMapRenderer(op), probePixels(getBitDepthMaxValue(in)), SlowGamutMap(op));
    }
}
