#include "renderer/CPULut3DOp.h"

#include "renderer/depthFactors.h"
#include "renderer/finiteEntry.h"
#include "renderer/simd.h"
#include "utils/exception.h"

#include <algorithm>
#include <array>
#include <vector>

namespace Rendering {

namespace {

/// A colour of the cube and a 0, aligned so that one load fetches them.
struct alignas(16) Entry
{
    float lanes[4];
};
constexpr uint32_t kEntrySize = 4; ///< floats

using Table = std::vector<Entry>;

V4f loadEntry(const float* lanes) { return _mm_load_ps(lanes); }

void prefetchEntry(const float* lanes) { _mm_prefetch(reinterpret_cast<const char*>(lanes), _MM_HINT_T0); }

Table makeTable(const Color::Lut3DOp::Lut3DArray& array)
{
    Color::Lut3DOp::checkLength(array.getLength());
    const std::size_t length = array.getLength();
    const std::size_t entryCount = length * length * length;
    if (entryCount == 0 || array.getValues().size() != entryCount * 3) {
        Color::raise(Color::LogCategory::TRANSFORM_LUT_3D, Color::ErrorIds::ARRAY_CONTENT_ILLEGAL);
    }
    Table table(entryCount);
    const float* value = array.getValues().data();
    for (Entry& entry : table) {
        entry = {{finiteEntry(value[0]), finiteEntry(value[1]), finiteEntry(value[2]), 0.f}};
        value += 3;
    }
    return table;
}

/// A set of axes: bit 0 is red, bit 1 green, bit 2 blue.
using Axes = unsigned;
constexpr Axes kRed = 1;
constexpr Axes kGreen = 2;
constexpr Axes kBlue = 4;
constexpr Axes kAxesCount = 8;

/// The lanes, of which alpha's is never set, as axes.
Axes axesOf(V4f mask) { return static_cast<Axes>(_mm_movemask_ps(mask.v)); }

/// From the lowest corner of a cell to the next one along each axis, in floats: 0 along an axis that ends there.
struct Steps
{
    uint32_t red, green, blue;

    Steps() = default;
    Steps(uint32_t dimension, Axes open)
        : red(open & kRed ? dimension * dimension * kEntrySize : 0), green(open & kGreen ? dimension * kEntrySize : 0),
          blue(open & kBlue ? kEntrySize : 0)
    {}
};

/// Where a colour lies in the grid.
struct Place
{
    const float* corner; ///< the grid point at or below it on each axis
    V4f fraction;        ///< how far it lies beyond that one; 0 in the alpha lane
    Axes open;           ///< the axes along which there is a next grid point
};

/// What all kernels of a cube share.
class Grid
{
public:
    Grid(const Color::Lut3DOp& op, const Table& table) : m_table(table.data())
    {
        const uint32_t dimension = op.getArray().getLength();
        const BitDepth in = op.getInBitDepth();
        const auto maxIndex = static_cast<float>(dimension - 1);
        // 0 for a dimension of 1, which puts every colour on the only grid point.
        const float indexScale = 1.f / (getBitDepthValueRange(in) / maxIndex);
        m_indexScale = V4f(indexScale, indexScale, indexScale, 0.f);
        m_maxIndex = V4f(maxIndex, maxIndex, maxIndex, 0.f);
        m_alphaScale = V4f(depthFactorOf(op));
        m_entrySteps = _mm_setr_epi16(static_cast<int16_t>(dimension * dimension), static_cast<int16_t>(dimension), 1,
                                      0, 0, 0, 0, 0);
    }

    /// Inside the table for every colour: the maximum sends a NaN to 0.
    Place placeOf(V4f colour) const
    {
        const V4f position = min(max(colour * m_indexScale, V4f(0.f)), m_maxIndex);
        const __m128i index = _mm_cvttps_epi32(position.v);
        const V4f floor = _mm_cvtepi32_ps(index);
        return {m_table[entryAt(index)].lanes, position - floor, axesOf(isAbove(m_maxIndex, floor))};
    }

    /// Alpha bypasses the cube.
    V4f withAlphaOf(V4f source, V4f colour) const { return select(alphaMask(), source * m_alphaScale, colour); }

private:
    /// Indices and steps fit 16 bits: one instruction multiplies them and adds the products of red and green.
    std::ptrdiff_t entryAt(__m128i index) const
    {
        const __m128i redAndGreen = _mm_madd_epi16(_mm_packs_epi32(index, index), m_entrySteps);
        const __m128i blue = _mm_shuffle_epi32(redAndGreen, _MM_SHUFFLE(1, 1, 1, 1));
        return _mm_cvtsi128_si32(_mm_add_epi32(redAndGreen, blue));
    }

    const Entry* m_table;
    V4f m_indexScale, m_maxIndex, m_alphaScale;
    __m128i m_entrySteps;
};

/// Interpolates between the eight corners of a cell: along blue, green, then red.
class Trilinear
{
public:
    using Neighbours = Steps;
    static constexpr std::size_t kCases = kAxesCount;

    static std::size_t caseOf(const Place& place) { return place.open; }

    static Neighbours makeNeighbours(uint32_t dimension, std::size_t caseNumber)
    {
        return {dimension, static_cast<Axes>(caseNumber)};
    }

    static void prefetch(const float* corner, const Neighbours& step)
    {
        prefetchEntry(corner);
        prefetchEntry(corner + step.green);
        prefetchEntry(corner + step.red);
        prefetchEntry(corner + step.red + step.green);
    }

    static V4f interpolate(const float* corner, V4f fraction, const Neighbours& step)
    {
        const V4f one(1.f);
        const V4f fr = splat<0>(fraction);
        const V4f fg = splat<1>(fraction);
        const V4f fb = splat<2>(fraction);
        const auto low = [&](const float* c) { return loadEntry(c) * (one - fb); };
        const auto high = [&](const float* c) { return loadEntry(c + step.blue) * fb; };
        const float* const c00 = corner;
        const float* const c01 = c00 + step.green;
        const float* const c10 = c00 + step.red;
        const float* const c11 = c10 + step.green;
        const V4f a = (high(c01) + low(c01)) * fg + (low(c00) + high(c00)) * (one - fg);
        const V4f b = (low(c10) + high(c10)) * (one - fg) + (low(c11) + high(c11)) * fg;
        return a * (one - fr) + b * fr;
    }
};

/// Interpolates along the path of four corners that takes the axis with the largest fraction first. All six paths are
/// one formula, without a branch: each axis contributes the difference between the two corners that it joins.
class Tetrahedral
{
public:
    /// The corners that one axis of the path joins, counted from the lowest corner in floats.
    struct Edge
    {
        uint32_t from, to;
    };

    struct Neighbours
    {
        Edge red, green, blue;
    };
    static constexpr std::size_t kCases = kAxesCount * kAxesCount;

    static std::size_t caseOf(const Place& place)
    {
        // Against green, blue and red.
        const V4f next = _mm_shuffle_ps(place.fraction.v, place.fraction.v, _MM_SHUFFLE(3, 0, 2, 1));
        return axesOf(isAbove(next, place.fraction)) * kAxesCount + place.open;
    }

    static Neighbours makeNeighbours(uint32_t dimension, std::size_t caseNumber)
    {
        const Steps step(dimension, static_cast<Axes>(caseNumber % kAxesCount));
        const std::size_t isBelowNext = caseNumber / kAxesCount;
        const bool redBeforeGreen = !(isBelowNext & kRed);
        const bool greenBeforeBlue = !(isBelowNext & kGreen);
        // Equal fractions would let each go before the next.
        const bool blueBeforeRed = !(isBelowNext & kBlue) && !(redBeforeGreen && greenBeforeBlue);
        const auto sum = [](bool hasA, uint32_t a, bool hasB, uint32_t b) { return (hasA ? a : 0) + (hasB ? b : 0); };
        const auto edge = [](uint32_t from, uint32_t length) { return Edge{from, from + length}; };
        return {edge(sum(!redBeforeGreen, step.green, blueBeforeRed, step.blue), step.red),
                edge(sum(redBeforeGreen, step.red, !greenBeforeBlue, step.blue), step.green),
                edge(sum(greenBeforeBlue, step.green, !blueBeforeRed, step.red), step.blue)};
    }

    static void prefetch(const float* corner, const Neighbours& edges)
    {
        prefetchEntry(corner);
        prefetchEntry(corner + edges.red.to);
        prefetchEntry(corner + edges.green.to);
        prefetchEntry(corner + edges.blue.to);
    }

    static V4f interpolate(const float* corner, V4f fraction, const Neighbours& edges)
    {
        const auto delta = [&](const Edge& edge) {
            return loadEntry(corner + edge.to) - loadEntry(corner + edge.from);
        };
        return (delta(edges.blue) * splat<2>(fraction) + delta(edges.green) * splat<1>(fraction)) //
               + (delta(edges.red) * splat<0>(fraction) + loadEntry(corner));
    }
};

template <class Interpolation, RendererType type>
class Lut3DBaseRenderer : public VirtualRenderer
{
public:
    explicit Lut3DBaseRenderer(const Color::Lut3DOp& op)
        : VirtualRenderer(op), m_table(makeTable(op.getArray())), m_grid(op, m_table)
    {
        for (std::size_t i = 0; i < m_neighbours.size(); ++i) {
            m_neighbours[i] = Interpolation::makeNeighbours(op.getArray().getLength(), i);
        }
    }

    RendererType getType() const override { return type; }

    void render(const PixelRun& run) const override
    {
        // A copy, so that it stays in registers.
        const Grid grid = m_grid;
        for (uint32_t done = 0; done < run.width;) {
            const uint32_t count = std::min(kBatch, run.width - done);
            const std::size_t first = std::size_t{done} * 4;
            renderBatch(grid, run.source + first, run.destination + first, count);
            done += count;
        }
    }

private:
    using Neighbours = typename Interpolation::Neighbours;

    struct Cell
    {
        V4f fraction;
        const float* corner;
        const Neighbours* neighbours;
    };

    /// Pixels whose corners are on their way from memory at a time.
    static constexpr uint32_t kBatch = 16;

    void renderBatch(const Grid& grid, const float* source, float* destination, uint32_t count) const
    {
        Cell cells[kBatch];
        for (uint32_t i = 0; i < count; ++i) {
            const Place place = grid.placeOf(load(source + i * 4));
            const Neighbours& neighbours = m_neighbours[Interpolation::caseOf(place)];
            Interpolation::prefetch(place.corner, neighbours);
            cells[i] = {place.fraction, place.corner, &neighbours};
        }
        for (uint32_t i = 0; i < count; ++i) {
            const V4f colour = Interpolation::interpolate(cells[i].corner, cells[i].fraction, *cells[i].neighbours);
            store(destination + i * 4, grid.withAlphaOf(load(source + i * 4), colour));
        }
    }

    Table m_table;
    Grid m_grid;
    std::array<Neighbours, Interpolation::kCases> m_neighbours;
};

using Lut3DRenderer = Lut3DBaseRenderer<Trilinear, RENDERER_LUT_3D>;
using Lut3DTetrahedralRenderer = Lut3DBaseRenderer<Tetrahedral, RENDERER_LUT_3D_TETRAHEDRAL>;

} // namespace

std::unique_ptr<VirtualRenderer> makeLut3DRenderer(const Color::Lut3DOp& op)
{
    if (op.getInterpolation() == Color::Lut3DOp::INTERPOLATION_TETRAHEDRAL) {
        return std::make_unique<Lut3DTetrahedralRenderer>(op);
    }
    if (op.getInterpolation() == Color::Lut3DOp::INTERPOLATION_4PT_TETRAHEDRAL) {
        Color::logFailure(Color::LogCategory::RENDERER_CPU, Color::ErrorIds::CPU_OP_ATTRIBUTE_ILLEGAL,
                          op.getDisplayName(), "Interpolation");
    }
    return std::make_unique<Lut3DRenderer>(op);
}

} // namespace Rendering
