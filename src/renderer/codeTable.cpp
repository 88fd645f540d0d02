#include "renderer/codeTable.h"

#include "renderer/pixelFormatAccess.h"
#include "renderer/plainPixel.h"
#include "utils/sameBits.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <type_traits>
#include <vector>

namespace Rendering {

namespace {

constexpr int kAlpha = 3;

/// The format of a depth that has all channels in the order red, green, blue, alpha.
PixelFormat rgbaFormatOf(BitDepth depth)
{
    return static_cast<PixelFormat>(depth | (PF_RGBA_32f & ~static_cast<uint32_t>(BIT_DEPTH_32f)));
}

/// Source and Destination are the storage types of an element.
template <class Source, class Destination>
class TypedCodeTable : public CodeTable
{
public:
    TypedCodeTable(const TransformProcessor& processor, const PixelFormatAccess& in, const PixelFormatAccess& out)
        : m_sourceStep(in.pixelSize / sizeof(Source)), m_destinationStep(out.pixelSize / sizeof(Destination))
    {
        for (int channel = 0; channel <= kAlpha; ++channel) {
            const auto i = static_cast<std::size_t>(channel);
            m_sourcePlaces[i] = placeOf(in.order, channel);
            m_destinationPlaces[i] = placeOf(out.order, channel);
        }
        fill(processor, in.depth, out.depth);
        if constexpr (kFitsWord) {
            // ABGR has alpha in another place: that one is looked up.
            if (in.order == out.order && hasAlpha(in.order)) {
                const bool keepsAlpha = placeOf(in.order, kAlpha) == kAlpha && isIdentity(m_tables[kAlpha]);
                m_renderRow = keepsAlpha ? &renderWords<true> : &renderWords<false>;
                return;
            }
        }
        if (hasAlpha(in.order)) {
            m_renderRow = hasAlpha(out.order) ? &render<true, true> : &render<true, false>;
        } else {
            m_renderRow = hasAlpha(out.order) ? &render<false, true> : &render<false, false>;
            m_opaque = m_tables[kAlpha][opaqueCodeOf(in.depth)];
        }
    }

    void renderRow(const unsigned char* source, unsigned char* destination, uint32_t width) const override
    {
        m_renderRow(*this, reinterpret_cast<const Source*>(source), reinterpret_cast<Destination*>(destination), width);
    }

private:
    /// True when the four elements of a pixel fit a register on both sides.
    static constexpr bool kFitsWord = sizeof(Destination) <= 2;
    static constexpr std::size_t kCodes = std::size_t{std::numeric_limits<Source>::max()} + 1;
    using Table = std::vector<Destination>;

    static Source opaqueCodeOf(BitDepth depth)
    {
        constexpr uint16_t halfOfOne = 0x3c00;
        return static_cast<Source>(depth == BIT_DEPTH_16f ? halfOfOne : getBitDepthMaxValue(depth));
    }

    /// Renders a ramp of all codes, the same one in every channel.
    void fill(const TransformProcessor& processor, BitDepth in, BitDepth out)
    {
        constexpr std::size_t rampPixels = 256;
        std::array<Table, 4> tables;
        for (Table& table : tables) {
            table.resize(kCodes);
        }
        const ROI roi(0, 0, rampPixels, 1);
        for (std::size_t first = 0; first < kCodes; first += rampPixels) {
            std::array<Source, rampPixels * 4> ramp;
            std::array<Destination, rampPixels * 4> result;
            for (std::size_t i = 0; i < ramp.size(); ++i) {
                ramp[i] = static_cast<Source>(first + i / 4);
            }
            renderImage(processor, {reinterpret_cast<const unsigned char*>(ramp.data()), 0, rgbaFormatOf(in)},
                        {reinterpret_cast<unsigned char*>(result.data()), 0, rgbaFormatOf(out)}, roi);
            for (std::size_t i = 0; i < result.size(); ++i) {
                tables[i % 4][first + i / 4] = result[i];
            }
        }
        share(tables);
    }

    /// Channels with the same results use one table, which leaves more of the cache to the image.
    void share(std::array<Table, 4>& tables)
    {
        for (std::size_t channel = 0; channel < tables.size(); ++channel) {
            const auto sameBits = [&](const Table& other) {
                return Color::haveSameBits(other.data(), tables[channel].data(), kCodes);
            };
            auto found = std::find_if(m_storage.begin(), m_storage.end(), sameBits);
            if (found == m_storage.end()) found = m_storage.insert(found, std::move(tables[channel]));
            m_indices[channel] = static_cast<std::size_t>(found - m_storage.begin());
        }
        for (std::size_t channel = 0; channel < tables.size(); ++channel) {
            m_tables[channel] = m_storage[m_indices[channel]].data();
        }
    }

    template <bool sourceHasAlpha, bool destinationHasAlpha>
    static void render(const TypedCodeTable& table, const Source* source, Destination* destination, uint32_t width)
    {
        const auto [redFrom, greenFrom, blueFrom, alphaFrom] = table.m_sourcePlaces;
        const auto [redTo, greenTo, blueTo, alphaTo] = table.m_destinationPlaces;
        const auto [redTable, greenTable, blueTable, alphaTable] = table.m_tables;
        const std::size_t sourceStep = table.m_sourceStep;
        const std::size_t destinationStep = table.m_destinationStep;
        for (uint32_t i = 0; i < width; ++i, source += sourceStep, destination += destinationStep) {
            // All look-ups come first, as the pixel may be its own destination.
            const Destination red = redTable[source[redFrom]];
            const Destination green = greenTable[source[greenFrom]];
            const Destination blue = blueTable[source[blueFrom]];
            const Destination alpha = sourceHasAlpha ? alphaTable[source[alphaFrom]] : table.m_opaque;
            destination[redTo] = red;
            destination[greenTo] = green;
            destination[blueTo] = blue;
            if (destinationHasAlpha) destination[alphaTo] = alpha;
        }
    }

    /// True when each code is its own result.
    static bool isIdentity(const Destination* table)
    {
        if (sizeof(Source) != sizeof(Destination)) return false;
        for (std::size_t code = 0; code < kCodes; ++code) {
            if (table[code] != code) return false;
        }
        return true;
    }

    /// Pixels of four elements in the same order on both sides, each read and written as one word.
    template <bool keepsFourth>
    static void renderWords(const TypedCodeTable& table, const Source* source, Destination* destination, uint32_t width)
    {
        using SourceWord = std::conditional_t<sizeof(Source) == 1, uint32_t, uint64_t>;
        using DestinationWord = std::conditional_t<sizeof(Destination) == 1, uint32_t, uint64_t>;
        constexpr int sourceBits = 8 * sizeof(Source);
        constexpr int destinationBits = 8 * sizeof(Destination);
        std::array<const Destination*, 4> tables; // by place
        for (std::size_t channel = 0; channel < tables.size(); ++channel) {
            tables[static_cast<std::size_t>(table.m_sourcePlaces[channel])] = table.m_tables[channel];
        }
        const auto [first, second, third, fourth] = tables;
        for (uint32_t i = 0; i < width; ++i, source += 4, destination += 4) {
            SourceWord codes;
            std::memcpy(&codes, source, sizeof codes);
            const DestinationWord low =
                first[static_cast<Source>(codes)] | DestinationWord{second[static_cast<Source>(codes >> sourceBits)]}
                                                        << destinationBits;
            const auto lastCode = static_cast<Source>(codes >> (3 * sourceBits));
            const DestinationWord last = keepsFourth ? static_cast<Destination>(lastCode) : fourth[lastCode];
            const DestinationWord high = third[static_cast<Source>(codes >> (2 * sourceBits))] | last
                                                                                                     << destinationBits;
            const DestinationWord result = low | high << (2 * destinationBits);
            std::memcpy(destination, &result, sizeof result);
        }
    }

    std::size_t m_sourceStep; ///< elements from one pixel to the next
    std::size_t m_destinationStep;
    std::array<int, 4> m_sourcePlaces; ///< of red, green, blue, alpha in a pixel
    std::array<int, 4> m_destinationPlaces;
    std::vector<Table> m_storage; ///< the different tables
    std::array<std::size_t, 4> m_indices;
    std::array<const Destination*, 4> m_tables; ///< of red, green, blue, alpha
    Destination m_opaque{};                     ///< alpha of a source without one
    void (*m_renderRow)(const TypedCodeTable& table, const Source* source, Destination* destination, uint32_t width);
};

/// True when a table gives the bits of the kernels and is faster than they are.
bool suits(const TransformProcessor& processor)
{
    bool isSlow = false;
    for (const auto& renderer : processor) {
        if (renderer->getChannelUse() == ChannelUse::Mixed || renderer->hasDynamicValues()) return false;
        isSlow = isSlow || renderer->getChannelUse() == ChannelUse::ApartAndSlow;
    }
    return isSlow;
}

} // namespace

CodeTable::~CodeTable() = default;

void renderImage(const CodeTable& table, const SourceRows& source, const DestinationRows& destination, const ROI& roi)
{
    for (uint32_t line = 0; line < roi.getActiveHeight(); ++line) {
        table.renderRow(source.firstPixel + std::size_t{line} * source.rowStep,
                        destination.firstPixel + std::size_t{line} * destination.rowStep, roi.getActiveWidth());
    }
}

std::unique_ptr<const CodeTable> makeCodeTable(const TransformProcessor& processor, PixelFormat in, PixelFormat out)
{
    const PixelFormatAccess& source = getPixelFormatAccess(in);
    const PixelFormatAccess& destination = getPixelFormatAccess(out);
    if (source.isPacked || destination.isPacked || source.depth == BIT_DEPTH_32f || !suits(processor)) return nullptr;
    if (source.depth == BIT_DEPTH_8i) {
        if (destination.depth == BIT_DEPTH_8i)
            return std::make_unique<TypedCodeTable<uint8_t, uint8_t>>(processor, source, destination);
        if (destination.depth == BIT_DEPTH_32f)
            return std::make_unique<TypedCodeTable<uint8_t, float>>(processor, source, destination);
        return std::make_unique<TypedCodeTable<uint8_t, uint16_t>>(processor, source, destination);
    }
    if (destination.depth == BIT_DEPTH_8i)
        return std::make_unique<TypedCodeTable<uint16_t, uint8_t>>(processor, source, destination);
    // Tables of 32f for 16-bit codes do not fit the cache.
    if (destination.depth == BIT_DEPTH_32f) return nullptr;
    return std::make_unique<TypedCodeTable<uint16_t, uint16_t>>(processor, source, destination);
}

} // namespace Rendering
