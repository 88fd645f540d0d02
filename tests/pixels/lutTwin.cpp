#include "tests/pixels/lutTwin.h"

#include "tests/pixels/colourModelTwin.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace Twin {

using namespace Morvane_2015_1_42;

namespace {

using Channels = std::array<float, 3>;
using Curve = std::function<Channels(const Channels&)>;

constexpr size_t NUM_HALF_CODES = 65536;

Table shared(std::vector<float> values) { return std::make_shared<const std::vector<float>>(std::move(values)); }

Table scaled(const Table& table, float factor)
{
    if (factor == 1.0F) return table;
    std::vector<float> values = *table;
    for (float& value : values)
        value *= factor;
    return shared(std::move(values));
}

// The bounds as a vector unit sets them: the second operand where neither is the greater one.
float vectorMax(float a, float b) { return a > b ? a : b; }
float vectorMin(float a, float b) { return a < b ? a : b; }

float finite(float value)
{
    if (std::isnan(value)) return 0.0F;
    if (std::isinf(value)) return std::copysign(3.4028235e38F, value);
    return value;
}

/// Position in a table per unit of an input of this depth.
float indexScaleOf(BitDepth in, size_t length) { return 1.0F / (maxOf(in) / static_cast<float>(length - 1)); }

/// The formula, made when the first pixel comes: its tables take time.
Formula late(const std::function<Formula()>& make)
{
    const auto made = std::make_shared<Formula>();
    return [=](const Pixel& v, Position position) {
        if (!*made) *made = make();
        return (*made)(v, position);
    };
}

/// The colour of a pixel through a curve; alpha by the ratio of the depths.
Formula formulaOf(const Curve& curve, BitDepth in, BitDepth out)
{
    const float alphaScale = maxOf(out) / maxOf(in);
    return [=](const Pixel& v, Position) -> Pixel {
        const Channels c = curve({v[0], v[1], v[2]});
        return {c[0], c[1], c[2], v[3] * alphaScale};
    };
}

/// Entries that map every input position to itself. They address by half codes where isHalfDomain.
std::vector<float> identity(BitDepth depth, bool isHalfDomain, size_t length)
{
    const float step = maxOf(depth) / static_cast<float>(length - 1);
    std::vector<float> values;
    for (size_t i = 0; i < length; ++i)
        values.insert(values.end(), 3,
                      isHalfDomain ? maxOf(depth) * floatOfHalfBits(static_cast<uint16_t>(i))
                                   : static_cast<float>(i) * step);
    return values;
}

/// The entries of the domain sent through an op that starts in the depth of these entries.
template <class Op>
Lut1DOp composed(std::vector<float> domain, bool isHalfDomain, Op op)
{
    const BitDepth in = op.in;
    const BitDepth out = op.out;
    op.setInBitDepth(BIT_DEPTH_32f);
    op.setOutBitDepth(BIT_DEPTH_32f);
    const Formula formula = op.makeRenderer()->formula;
    const float before = 1.0F / maxOf(in);
    for (size_t i = 0; i < domain.size(); i += 3) {
        const Pixel result = formula({domain[i] * before, domain[i + 1] * before, domain[i + 2] * before, 1.0F}, {});
        for (size_t channel = 0; channel < 3; ++channel)
            domain[i + channel] = result[channel] * maxOf(out);
    }
    Lut1DOp result(in, out, std::move(domain));
    result.isHalfDomain = isHalfDomain;
    return result;
}

/// One entry for each code of the depth; half codes for the two float depths.
size_t fullLengthOf(BitDepth depth)
{
    return isInteger(depth) ? static_cast<size_t>(maxOf(depth)) + 1 : NUM_HALF_CODES;
}

/// What a renderer keeps of an entry. A table of floats keeps the half that is added for an integer output.
float storedEntry(float value, BitDepth out, bool isFloatTable)
{
    if (isInteger(out)) {
        const float sum = value + 0.5F;
        const float bounded = sum > maxOf(out) ? maxOf(out) : 0.0F > sum ? 0.0F : sum;
        if (isFloatTable) return bounded;
        return std::isnan(bounded) ? 0.0F : std::trunc(bounded);
    }
    if (out == BIT_DEPTH_16f && !isFloatTable) return floatOfHalfBits(halfBitsOf(finite(value)));
    return finite(value);
}

struct HalfPosition
{
    uint16_t low;
    uint16_t high;
    float fraction;
};

bool isInfinity(uint16_t half) { return (half & 0x7fff) == 0x7c00; }
uint16_t largestOfSign(uint16_t half) { return static_cast<uint16_t>((half & 0x8000) | 0x7bff); }

/// The half codes next to a value, the one nearer to zero first.
HalfPosition halfPositionOf(float value)
{
    uint16_t half = halfBitsOf(value);
    if (isInfinity(half)) {
        half = largestOfSign(half);
        value = floatOfHalfBits(half);
    }
    HalfPosition position{};
    if (std::abs(floatOfHalfBits(half)) > std::abs(value)) {
        position.high = half;
        position.low = static_cast<uint16_t>(half - 1);
    } else {
        position.low = half;
        position.high = static_cast<uint16_t>(half + 1);
        if (isInfinity(position.high)) position.high = largestOfSign(position.high);
    }
    if (position.low == position.high) return position;
    const float low = floatOfHalfBits(position.low);
    const float fraction = (value - low) / (floatOfHalfBits(position.high) - low);
    position.fraction = std::isnan(fraction) ? 0.0F : fraction;
    return position;
}

/// The curve, after which the middle channel lies between the other two as it did before.
Curve hueAdjusted(const Curve& curve)
{
    return [=](const Channels& c) {
        const auto [max, mid, min] = hueOrderOf(c[0], c[1], c[2]);
        const float chroma = c[max] - c[min];
        const float hueFactor = chroma == 0.0F ? 0.0F : (c[mid] - c[min]) / chroma;
        Channels result = curve(c);
        result[mid] = (result[max] - result[min]) * hueFactor + result[min];
        return result;
    };
}

} // namespace

Lut1DOp::Lut1DOp(BitDepth inDepth, BitDepth outDepth, std::vector<float> table)
    : in(inDepth), out(outDepth), values(shared(std::move(table)))
{}

void Lut1DOp::setInBitDepth(BitDepth depth) { in = depth; }

void Lut1DOp::setOutBitDepth(BitDepth depth)
{
    values = scaled(values, maxOf(depth) / maxOf(out));
    out = depth;
}

std::optional<Renderer> Lut1DOp::makeRenderer() const
{
    const Kernel kernel = adjustsHue ? (isHalfDomain ? Kernel::LUT_1D_HALF_CODE_HUE_ADJUST : Kernel::LUT_1D_HUE_ADJUST)
                                     : (isHalfDomain ? Kernel::LUT_1D_HALF_CODE : Kernel::LUT_1D);
    return Renderer{kernel, late([op = *this] { return op.makeFormula(); }), adjustsHue ? Nans::ANY : Nans::EXACT};
}

Formula Lut1DOp::makeFormula() const
{
    const bool isLookUp = isHalfDomain ? in == BIT_DEPTH_16f : isInteger(in) && length() == fullLengthOf(in);
    Table source = values;
    if (in != BIT_DEPTH_32f && !isLookUp) {
        Lut1DOp plain = *this;
        plain.adjustsHue = false;
        source = composed(identity(in, !isInteger(in), fullLengthOf(in)), !isInteger(in), plain).values;
    }

    std::vector<float> table = *source;
    for (float& value : table)
        value = storedEntry(value, out, adjustsHue);
    const Table entries = shared(std::move(table));
    const auto entryAt = [entries](size_t index, size_t channel) { return (*entries)[index * 3 + channel]; };
    const size_t last = entries->size() / 3 - 1;

    // The result of one channel.
    std::function<float(size_t, float)> lookUp;
    if (isInteger(in)) {
        // Samples beyond the depth read the last entry.
        lookUp = [=](size_t channel, float v) { return entryAt(std::min(static_cast<size_t>(v), last), channel); };
    } else if (in == BIT_DEPTH_16f) {
        lookUp = [=](size_t channel, float v) { return entryAt(halfBitsOf(v), channel); };
    } else if (isHalfDomain) {
        lookUp = [=](size_t channel, float v) {
            const auto [low, high, fraction] = halfPositionOf(v);
            const float highEntry = entryAt(high, channel);
            return (entryAt(low, channel) - highEntry) * (1.0F - fraction) + highEntry;
        };
    } else {
        const float indexScale = indexScaleOf(in, length());
        const float maxIndex = static_cast<float>(last);
        lookUp = [=](size_t channel, float v) {
            const float p = vectorMin(vectorMax(v * indexScale, 0.0F), maxIndex);
            const size_t i0 = static_cast<size_t>(p);
            const size_t i1 = std::min(i0 + 1, last);
            const float w = static_cast<float>(i1) - p;
            const float highEntry = entryAt(i1, channel);
            return (entryAt(i0, channel) - highEntry) * w + highEntry;
        };
    }

    const Curve curve = [lookUp](const Channels& c) -> Channels {
        return {lookUp(0, c[0]), lookUp(1, c[1]), lookUp(2, c[2])};
    };
    return formulaOf(adjustsHue ? hueAdjusted(curve) : curve, in, out);
}

InvLut1DOp::InvLut1DOp(BitDepth inDepth, BitDepth outDepth, std::vector<float> table)
    : in(inDepth), out(outDepth), given(shared(table)), m_runs()
{
    const size_t last = table.size() / 3 - 1;
    for (size_t channel = 0; channel < 3; ++channel) {
        const auto entryAt = [&](size_t i) -> float& { return table[i * 3 + channel]; };
        Run& run = m_runs[channel];
        run.rises = entryAt(last - 1) > entryAt(0);
        for (size_t i = 1; i <= last; ++i)
            if (run.rises ? entryAt(i) < entryAt(i - 1) : entryAt(i) > entryAt(i - 1)) entryAt(i) = entryAt(i - 1);

        run.end = last;
        while (run.end > 0 && entryAt(run.end - 1) == entryAt(last))
            --run.end;
        run.start = 0;
        while (run.start < run.end && entryAt(run.start + 1) == entryAt(0))
            ++run.start;
    }
    values = shared(std::move(table));
}

void InvLut1DOp::setInBitDepth(BitDepth depth)
{
    values = scaled(values, maxOf(depth) / maxOf(in));
    in = depth;
}

void InvLut1DOp::setOutBitDepth(BitDepth depth) { out = depth; }

float InvLut1DOp::searched(size_t channel, float value) const
{
    const auto [rises, start, end] = m_runs[channel];
    const float sign = rises ? 1.0F : -1.0F;
    const auto entryAt = [&](size_t i) { return sign * (*values)[i * 3 + channel]; };
    const float scale = maxOf(out) / static_cast<float>(length() - 1);

    float v = sign * value;
    if (entryAt(start) > v) v = entryAt(start);
    if (v > entryAt(end)) v = entryAt(end);

    // The lowest position that v is not above.
    size_t found = start;
    for (size_t beyond = end; found < beyond;) {
        const size_t middle = found + (beyond - found) / 2;
        if (v > entryAt(middle))
            found = middle + 1;
        else
            beyond = middle;
    }
    const size_t q = found == start ? start : found - 1;
    const float base = static_cast<float>(q - start) + static_cast<float>(start);
    if (q >= end) return base * scale;
    const float here = entryAt(q);
    const float next = entryAt(q + 1);
    if (!(next > here)) return base * scale;
    return (base + (v - here) / (next - here)) * scale;
}

bool InvLut1DOp::leavesInputRange() const
{
    const size_t last = length() - 1;
    for (size_t channel = 0; channel < 3; ++channel) {
        const float first = (*values)[channel];
        const float final = (*values)[last * 3 + channel];
        const float low = m_runs[channel].rises ? first : final;
        const float high = m_runs[channel].rises ? final : first;
        if (low < 0.0F || high > maxOf(in)) return true;
    }
    return false;
}

bool InvLut1DOp::isForwardHalfDomain() const { return leavesInputRange() && !isInteger(in); }

Lut1DOp InvLut1DOp::forward() const
{
    const bool isFull = leavesInputRange();
    const bool addressesHalfs = isForwardHalfDomain();
    InvLut1DOp exact = *this;
    exact.isFast = false;
    return composed(identity(in, addressesHalfs, isFull ? fullLengthOf(in) : 4096), addressesHalfs, exact);
}

std::optional<Renderer> InvLut1DOp::makeRenderer() const
{
    if (isFast) {
        if (isHalfDomain) throw std::logic_error("the fast inverse of a half-domain curve has no twin");
        return Renderer{isForwardHalfDomain() ? Kernel::LUT_1D_HALF_CODE : Kernel::LUT_1D,
                        late([op = *this] { return op.forward().makeFormula(); })};
    }
    if (isHalfDomain)
        return Renderer{Kernel::INV_LUT_1D_HALF_CODE, [](const Pixel& v, Position) -> Pixel {
                            return {v[0], v[1], v[2], v[3] * 0.0F};
                        }};
    const Curve curve = [op = *this](const Channels& c) -> Channels {
        return {op.searched(0, c[0]), op.searched(1, c[1]), op.searched(2, c[2])};
    };
    return Renderer{Kernel::INV_LUT_1D, formulaOf(curve, in, out)};
}

Lut3DOp::Lut3DOp(BitDepth inDepth, BitDepth outDepth, size_t axisLength, std::vector<float> table)
    : in(inDepth), out(outDepth), length(axisLength), values(shared(std::move(table)))
{}

void Lut3DOp::setInBitDepth(BitDepth depth) { in = depth; }

void Lut3DOp::setOutBitDepth(BitDepth depth)
{
    values = scaled(values, maxOf(depth) / maxOf(out));
    out = depth;
}

namespace {

using Corner = std::array<size_t, 3>; ///< 0 or 1 on each axis

struct Cell
{
    std::function<float(const Corner&)> valueAt; ///< of one channel
    Channels fraction;
};

float trilinear(const Cell& cell)
{
    const auto& at = cell.valueAt;
    const auto [fr, fg, fb] = cell.fraction;
    const auto faceAt = [&, g = fg, b = fb](size_t r) {
        const float low = at({r, 0, 0}) * (1.0F - b) + at({r, 0, 1}) * b;
        const float high = at({r, 1, 0}) * (1.0F - b) + at({r, 1, 1}) * b;
        return low * (1.0F - g) + high * g;
    };
    return faceAt(0) * (1.0F - fr) + faceAt(1) * fr;
}

/// The axes in the order in which the path from the lowest to the highest corner takes them.
Corner pathOf(const Channels& fraction)
{
    const auto [fr, fg, fb] = fraction;
    const bool a = fg <= fr;
    const bool b = fb <= fg;
    const bool c = fr <= fb;
    if (a && b) return {0, 1, 2};
    if (a) return c ? Corner{2, 0, 1} : Corner{0, 2, 1};
    if (!b) return {2, 1, 0};
    return c ? Corner{1, 2, 0} : Corner{1, 0, 2};
}

float tetrahedral(const Cell& cell)
{
    Channels delta{};
    Corner corner{};
    for (const size_t axis : pathOf(cell.fraction)) {
        const float before = cell.valueAt(corner);
        corner[axis] = 1;
        delta[axis] = cell.valueAt(corner) - before;
    }
    const auto [fr, fg, fb] = cell.fraction;
    return (delta[2] * fb + delta[1] * fg) + (delta[0] * fr + cell.valueAt({0, 0, 0}));
}

} // namespace

std::optional<Renderer> Lut3DOp::makeRenderer() const
{
    std::vector<float> table = *values;
    for (float& value : table)
        value = finite(value);

    const float indexScale = indexScaleOf(in, length);
    const float maxIndex = static_cast<float>(length - 1);
    const Curve curve = [=, isTetrahedral = isTetrahedral, length = length,
                         entries = shared(table)](const Channels& c) {
        std::array<std::array<size_t, 2>, 3> indices{};
        Cell cell{};
        for (size_t axis = 0; axis < 3; ++axis) {
            const float p = vectorMin(vectorMax(c[axis] * indexScale, 0.0F), maxIndex);
            const size_t i0 = static_cast<size_t>(p);
            cell.fraction[axis] = p - static_cast<float>(i0);
            indices[axis] = {i0, static_cast<float>(i0) < maxIndex ? i0 + 1 : i0};
        }
        Channels result{};
        for (size_t channel = 0; channel < 3; ++channel) {
            cell.valueAt = [&](const Corner& corner) {
                const size_t r = indices[0][corner[0]];
                const size_t g = indices[1][corner[1]];
                const size_t b = indices[2][corner[2]];
                return (*entries)[((r * length + g) * length + b) * 3 + channel];
            };
            result[channel] = isTetrahedral ? tetrahedral(cell) : trilinear(cell);
        }
        return result;
    };
    return Renderer{isTetrahedral ? Kernel::LUT_3D_TETRAHEDRAL : Kernel::LUT_3D, formulaOf(curve, in, out)};
}

} // namespace Twin
