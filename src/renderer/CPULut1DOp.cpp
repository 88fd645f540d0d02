#include "renderer/CPULut1DOp.h"

#include "renderer/depthFactors.h"
#include "renderer/fourCodes.h"
#include "renderer/fourPixels.h"
#include "renderer/halfNeighbours.h"
#include "renderer/hueOrder.h"
#include "renderer/lut1DTables.h"
#include "renderer/pixelFormatAccess.h"
#include "utils/sameBits.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>
#include <vector>

namespace Rendering {

namespace {

/// How many codes of 16 bits there are.
constexpr std::size_t kCodes = 65536;

/// Four whole numbers to count with.
struct Indices
{
    alignas(16) uint32_t lanes[4];

    explicit Indices(__m128i numbers) { _mm_store_si128(reinterpret_cast<__m128i*>(lanes), numbers); }
};

/// A table entry for every code of an integer depth. Only as many bits of an index are read as the codes have, so that
/// each index leads into the table.
template <class CodeType>
struct IntegerLookUp
{
    using Code = CodeType;
    using Entry = float;

    explicit IntegerLookUp(const Color::Lut1DOp&) {}

    /// Codes above the depth's maximum have the last entry too.
    static std::vector<Entry> makeEntries(std::vector<float> table)
    {
        table.resize(std::size_t{std::numeric_limits<Code>::max()} + 1, table.back());
        return table;
    }

    static V4f gather(const Entry* entries, __m128i codes)
    {
        const Indices at(codes);
        return V4f(entries[static_cast<Code>(at.lanes[0])], entries[static_cast<Code>(at.lanes[1])],
                   entries[static_cast<Code>(at.lanes[2])], entries[static_cast<Code>(at.lanes[3])]);
    }

    /// The entries of one channel of four pixels that stand in an image, from the channel's first code on.
    static V4f gather(const Entry* entries, const Code* codes)
    {
        return V4f(entries[codes[0]], entries[codes[4]], entries[codes[8]], entries[codes[12]]);
    }

    static V4f valueOf(__m128i codes) { return _mm_cvtepi32_ps(codes); }

    V4f operator()(const Entry* entries, V4f value) const { return gather(entries, _mm_cvttps_epi32(value.v)); }
};

/// A table entry for every code of 16f.
struct HalfLookUp : IntegerLookUp<uint16_t>
{
    using IntegerLookUp::IntegerLookUp;

    static V4f valueOf(__m128i codes) { return floatFromHalf(codes); }

    V4f operator()(const Entry* entries, V4f value) const { return gather(entries, halfFromFloat(value.v)); }
};

/// Two neighbouring entries low and high, which stand together so that one load brings both: high + difference * weight
/// is the value between them, with the weight of low.
struct EntryPair
{
    float difference; ///< low - high
    float high;
};
static_assert(sizeof(EntryPair) == 8, "read as a whole");

/// The values between the four pairs.
V4f interpolate(const EntryPair& a, const EntryPair& b, const EntryPair& c, const EntryPair& d, V4f weightOfLow)
{
    const auto loadTwo = [](const EntryPair& first, const EntryPair& second) {
        const __m128i pair = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(&first));
        return _mm_loadh_pi(_mm_castsi128_ps(pair), reinterpret_cast<const __m64*>(&second));
    };
    const __m128 ab = loadTwo(a, b);
    const __m128 cd = loadTwo(c, d);
    const V4f difference = _mm_shuffle_ps(ab, cd, _MM_SHUFFLE(2, 0, 2, 0));
    const V4f high = _mm_shuffle_ps(ab, cd, _MM_SHUFFLE(3, 1, 3, 1));
    return difference * weightOfLow + high;
}

/// 32f values between the entries of a table with a plain domain. A NaN reads the first entry.
class LinearLookUp
{
public:
    using Code = void;
    using Entry = EntryPair;

    explicit LinearLookUp(const Color::Lut1DOp& op)
        : m_maxIndex(static_cast<float>(op.getArray().getLength() - 1)),
          m_indexScale(1.f / (getBitDepthValueRange(op.getInBitDepth()) / m_maxIndex))
    {}

    static std::vector<Entry> makeEntries(const std::vector<float>& table)
    {
        std::vector<Entry> pairs(table.size());
        for (std::size_t low = 0; low < table.size(); ++low) {
            const std::size_t high = std::min(low + 1, table.size() - 1);
            pairs[low] = {table[low] - table[high], table[high]};
        }
        return pairs;
    }

    V4f operator()(const Entry* entries, V4f value) const
    {
        const V4f position = min(max(value * V4f(m_indexScale), V4f(0.f)), V4f(m_maxIndex));
        const __m128i low = _mm_cvttps_epi32(position.v);
        // At the end, where both entries of a pair are the last one, the weight does not matter.
        const V4f weightOfLow = V4f(_mm_cvtepi32_ps(low)) + V4f(1.f) - position;
        const Indices at(low);
        return interpolate(entries[at.lanes[0]], entries[at.lanes[1]], entries[at.lanes[2]], entries[at.lanes[3]],
                           weightOfLow);
    }

private:
    float m_maxIndex;
    float m_indexScale;
};

/// 32f values between the entries of a table with half domain.
struct HalfDomainLookUp
{
    using Code = void;
    using Entry = EntryPair;

    explicit HalfDomainLookUp(const Color::Lut1DOp&) {}

    static std::vector<Entry> makeEntries(std::vector<float> table)
    {
        table.resize(kCodes, table.back());
        std::vector<Entry> pairs(kCodes);
        for (std::size_t low = 0; low < kCodes; ++low) {
            constexpr std::size_t infinity = 0x7c00;
            const std::size_t next = (low + 1) % kCodes;
            const std::size_t high = (next & 0x7fff) == infinity ? low : next;
            pairs[low] = {table[low] - table[high], table[high]};
        }
        return pairs;
    }

    V4f operator()(const Entry* entries, V4f value) const
    {
        const HalfNeighbours neighbours = halfNeighboursOf(value);
        const Indices at(neighbours.low);
        const auto entry = [&](int lane) -> const Entry& { return entries[static_cast<uint16_t>(at.lanes[lane])]; };
        return interpolate(entry(0), entry(1), entry(2), entry(3), neighbours.weightOfLow);
    }
};

/// Puts the middle channel of the result between the outer two in the proportion that it had in the source. Which
/// channels are the outer ones is told by the source alone. This is hueOrderOf() for four pixels, by masks.
struct HueAdjust
{
    static void adjust(const FourPixels& in, FourPixels& out)
    {
        if (__builtin_expect(_mm_movemask_ps(_mm_cmpunord_ps(in.green.v, in.green.v)) != 0, 0)) {
            adjustOneByOne(in, out);
            return;
        }
        const V4f greenAboveBlue = isAbove(in.green, in.blue);
        const V4f redAboveBlue = isAbove(in.red, in.blue);
        const V4f redAboveGreen = isAbove(in.red, in.green);

        // Of equal values max() and min() take their second operand, which makes these the channels of hueOrderOf().
        const V4f inMax = max(in.red, max(in.green, in.blue));
        const V4f inMin = min(min(in.blue, in.green), in.red);
        const V4f inMid = in.red ^ in.green ^ in.blue ^ inMax ^ inMin;

        const V4f changed = greenAboveBlue & (out.green ^ out.blue);
        const V4f higher = out.blue ^ changed; // of green and blue
        const V4f lower = out.green ^ changed;
        const V4f outMax = select(redAboveBlue & redAboveGreen, out.red, higher);
        const V4f outMin = select(redAboveBlue | redAboveGreen, lower, out.red);
        const V4f outMid = middle(inMax, inMid, inMin, outMax, outMin);

        out.red = select(redAboveBlue ^ redAboveGreen, outMid, out.red);
        out.green = select(greenAboveBlue ^ redAboveGreen, out.green, outMid);
        out.blue = select(greenAboveBlue ^ redAboveBlue, outMid, out.blue);
    }

private:
    static V4f middle(V4f inMax, V4f inMid, V4f inMin, V4f outMax, V4f outMin)
    {
        const V4f chroma = inMax - inMin;
        const V4f hasHue = _mm_cmpneq_ps(chroma.v, _mm_setzero_ps());
        const V4f hueFactor = hasHue & (inMid - inMin) / chroma;
        return (outMax - outMin) * hueFactor + outMin;
    }

    static void adjustOneByOne(const FourPixels& in, FourPixels& out)
    {
        float source[16];
        float result[16];
        storeFourPixels(source, in);
        storeFourPixels(result, out);
        for (int i = 0; i < 16; i += 4) {
            const float* from = source + i;
            float* to = result + i;
            const HueOrder order = hueOrderOf(from[0], from[1], from[2]);
            const V4f mid = middle(V4f(from[order.max]), V4f(from[order.mid]), V4f(from[order.min]), V4f(to[order.max]),
                                   V4f(to[order.min]));
            to[order.mid] = _mm_cvtss_f32(mid.v);
        }
        out = loadFourPixels(result);
    }
};

struct NoHueAdjust
{
    static void adjust(const FourPixels&, FourPixels&) {}
};

bool haveSameBits(const std::vector<float>& a, const std::vector<float>& b)
{
    return a.size() == b.size() && Color::haveSameBits(a.data(), b.data(), a.size());
}

template <class LookUp, class Hue>
class Lut1DRenderer : public VirtualRenderer
{
public:
    Lut1DRenderer(const Color::Lut1DOp& op, RendererType type)
        : VirtualRenderer(op), m_type(type), m_inBitDepth(op.getInBitDepth()), m_lookUp(op),
          m_alphaScale(depthFactorOf(op))
    {
        ChannelTables tables = makeChannelTables(op);
        const bool isMono = haveSameBits(tables[0], tables[1]) && haveSameBits(tables[0], tables[2]);
        for (std::size_t channel = 0; channel < m_entries.size(); ++channel) {
            // One table for all three leaves more of the caches to it.
            if (channel == 0 || !isMono) m_storage[channel] = LookUp::makeEntries(std::move(tables[channel]));
            m_entries[channel] = m_storage[isMono ? 0 : channel].data();
        }
    }

    RendererType getType() const override { return m_type; }

    ChannelUse getChannelUse() const override
    {
        return std::is_same_v<Hue, NoHueAdjust> ? ChannelUse::ApartAndSlow : ChannelUse::Mixed;
    }

    void render(const PixelRun& run) const override
    {
        renderFourPixels(
            run, [entries = m_entries, lookUp = m_lookUp, alphaScale = V4f(m_alphaScale)](const FourPixels& in) {
                FourPixels out{lookUp(entries[0], in.red), lookUp(entries[1], in.green), lookUp(entries[2], in.blue),
                               in.alpha * alphaScale};
                Hue::adjust(in, out);
                return out;
            });
    }

    /// With hue adjust images are read as the codes that they are made of. Without it a table of the frame's does more.
    SourceKernel getSourceKernel(PixelFormat format) const override
    {
        if constexpr (!std::is_void_v<typename LookUp::Code> && std::is_same_v<Hue, HueAdjust>) {
            if (getDepthOf(format) != m_inBitDepth) return nullptr;
            switch (format) {
            case PF_RGBA_8i:
            case PF_RGBA_10i:
            case PF_RGBA_12i:
            case PF_RGBA_16i:
            case PF_RGBA_16f:
                return &renderCodes<ChannelOrder::RGBA>;
            case PF_BGRA_8i:
            case PF_BGRA_10i:
            case PF_BGRA_12i:
            case PF_BGRA_16i:
            case PF_BGRA_16f:
                return &renderCodes<ChannelOrder::BGRA>;
            case PF_ABGR_8i:
            case PF_ABGR_10i:
            case PF_ABGR_12i:
            case PF_ABGR_16i:
            case PF_ABGR_16f:
                return &renderCodes<ChannelOrder::ABGR>;
            default:
                return nullptr;
            }
        }
        return nullptr;
    }

private:
    template <ChannelOrder order>
    static void renderCodes(const VirtualRenderer& renderer, const void* source, const PixelRun& run)
    {
        using Code = typename LookUp::Code;
        const auto& lut = static_cast<const Lut1DRenderer&>(renderer);
        const V4f alphaScale(lut.m_alphaScale);
        const auto entries = lut.m_entries;
        const auto render = [&](const Code* pixels, float* destination) {
            const FourCodes codes = loadFourCodes<order>(pixels);
            const FourPixels in{LookUp::valueOf(codes.red), LookUp::valueOf(codes.green), LookUp::valueOf(codes.blue),
                                LookUp::valueOf(codes.alpha)};
            FourPixels out{LookUp::gather(entries[0], pixels + placeOf(order, 0)),
                           LookUp::gather(entries[1], pixels + placeOf(order, 1)),
                           LookUp::gather(entries[2], pixels + placeOf(order, 2)), in.alpha * alphaScale};
            Hue::adjust(in, out);
            storeFourPixels(destination, out);
        };
        const auto* pixels = static_cast<const Code*>(source);
        float* destination = run.destination;
        uint32_t left = run.width;
        for (; left >= 4; left -= 4, pixels += 16, destination += 16) {
            render(pixels, destination);
        }
        if (left > 0) {
            Code rest[16] = {};
            float results[16];
            std::memcpy(rest, pixels, left * 4 * sizeof(Code));
            render(rest, results);
            std::memcpy(destination, results, left * 4 * sizeof(float));
        }
    }

    RendererType m_type;
    BitDepth m_inBitDepth;
    LookUp m_lookUp;
    float m_alphaScale;
    std::array<std::vector<typename LookUp::Entry>, 3> m_storage;
    std::array<const typename LookUp::Entry*, 3> m_entries{};
};

template <class LookUp>
std::unique_ptr<VirtualRenderer> makeFor(const Color::Lut1DOp& op)
{
    const bool halfDomain = op.isHalfDomain();
    if (op.getHueAdjust() == Color::Lut1DOp::HUE_ADJUST_NONE) {
        return std::make_unique<Lut1DRenderer<LookUp, NoHueAdjust>>(op, halfDomain ? RENDERER_LUT_1D_HALF_CODE
                                                                                   : RENDERER_LUT_1D);
    }
    return std::make_unique<Lut1DRenderer<LookUp, HueAdjust>>(op, halfDomain ? RENDERER_LUT_1D_HALF_CODE_HUE_ADJUST
                                                                             : RENDERER_LUT_1D_HUE_ADJUST);
}

} // namespace

std::unique_ptr<VirtualRenderer> makeLut1DRenderer(const Color::Lut1DOp& op)
{
    checkDepthsAndInterpolation(op);
    checkArray(op);
    switch (op.getInBitDepth()) {
    case BIT_DEPTH_8i:
        return makeFor<IntegerLookUp<uint8_t>>(op);
    case BIT_DEPTH_16f:
        return makeFor<HalfLookUp>(op);
    case BIT_DEPTH_32f:
        return op.isHalfDomain() ? makeFor<HalfDomainLookUp>(op) : makeFor<LinearLookUp>(op);
    default:
        return makeFor<IntegerLookUp<uint16_t>>(op);
    }
}

} // namespace Rendering
