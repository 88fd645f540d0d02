#include "tests/pixels/scalarTwin.h"

#include <Imath/half.h>

#include <cmath>

namespace Twin {

using namespace Morvane_2015_1_42;

uint16_t halfBitsOf(float value) { return Imath::half(value).bits(); }

float floatOfHalfBits(uint16_t bits)
{
    Imath::half value;
    value.setBits(bits);
    return value;
}

float maxOf(BitDepth depth)
{
    switch (depth) {
    case BIT_DEPTH_8i:
        return 255.0F;
    case BIT_DEPTH_10i:
        return 1023.0F;
    case BIT_DEPTH_12i:
        return 4095.0F;
    case BIT_DEPTH_16i:
        return 65535.0F;
    case BIT_DEPTH_16f:
    case BIT_DEPTH_32f:
        return 1.0F;
    case BIT_DEPTH_UNKNOWN:
        break;
    }
    return 0.0F;
}

bool isInteger(BitDepth depth) { return depth != BIT_DEPTH_16f && depth != BIT_DEPTH_32f; }

namespace {

unsigned elementSizeOf(BitDepth depth, bool isPacked)
{
    if (isPacked || depth == BIT_DEPTH_32f) return 4;
    return depth == BIT_DEPTH_8i ? 1 : 2;
}

std::array<unsigned, 4> placesOf(uint32_t order, bool hasAlpha)
{
    switch (order) {
    case 0x20:
        return {2, 1, 0, 3};
    case 0x40:
        return {3, 2, 1, 0};
    default:
        return {0, 1, 2, hasAlpha ? 3U : 0U};
    }
}

} // namespace

Layout::Layout(PixelFormat format)
    : depth(static_cast<BitDepth>(format & 0xff000U)), isPacked((format & 0x100U) != 0),
      hasAlpha((format & 0xfU) == 0xfU), elementSize(elementSizeOf(depth, isPacked)),
      pixelSize(isPacked ? 4 : elementSize * (hasAlpha ? 4 : 3)), place(placesOf(format & 0x70U, hasAlpha))
{}

const std::vector<PixelFormat>& allFormats()
{
#define MORVANE_LISTED(name, value, depth, order, channels, packed, bytes) name,
    static const std::vector<PixelFormat> formats = {MORVANE_PIXEL_FORMATS(MORVANE_LISTED)};
#undef MORVANE_LISTED
    return formats;
}

namespace {

template <class T>
T loadElement(const uint8_t* pixel, unsigned index)
{
    T value;
    std::memcpy(&value, pixel + index * sizeof(T), sizeof(T));
    return value;
}

template <class T>
void storeElement(uint8_t* pixel, unsigned index, T value)
{
    std::memcpy(pixel + index * sizeof(T), &value, sizeof(T));
}

float readElement(BitDepth depth, const uint8_t* pixel, unsigned index)
{
    switch (depth) {
    case BIT_DEPTH_8i:
        return static_cast<float>(pixel[index]);
    case BIT_DEPTH_16f:
        return floatOfHalfBits(loadElement<uint16_t>(pixel, index));
    case BIT_DEPTH_32f:
        return loadElement<float>(pixel, index);
    default:
        return static_cast<float>(loadElement<uint16_t>(pixel, index));
    }
}

/// The integer that a value is stored as: rounded by adding a half, then clamped, then truncated.
uint32_t integerOf(float value, float max)
{
    const float sum = value + 0.5F;
    if (std::isnan(sum)) return 0;
    if (sum > max) return static_cast<uint32_t>(max);
    if (0.0F > sum) return 0;
    return static_cast<uint32_t>(static_cast<int64_t>(sum));
}

void writeElement(BitDepth depth, uint8_t* pixel, unsigned index, float value)
{
    switch (depth) {
    case BIT_DEPTH_8i:
        pixel[index] = static_cast<uint8_t>(integerOf(value, 255.0F));
        break;
    case BIT_DEPTH_16f:
        storeElement(pixel, index, halfBitsOf(value));
        break;
    case BIT_DEPTH_32f:
        storeElement(pixel, index, value);
        break;
    default:
        storeElement(pixel, index, static_cast<uint16_t>(integerOf(value, maxOf(depth))));
        break;
    }
}

} // namespace

Pixel read(const Layout& layout, const uint8_t* source)
{
    Pixel pixel{};
    if (layout.isPacked) {
        const uint32_t word = static_cast<uint32_t>(source[0]) << 24 | static_cast<uint32_t>(source[1]) << 16 |
                              static_cast<uint32_t>(source[2]) << 8 | static_cast<uint32_t>(source[3]);
        pixel = {static_cast<float>(word >> 22 & 0x3ff), static_cast<float>(word >> 12 & 0x3ff),
                 static_cast<float>(word >> 2 & 0x3ff), static_cast<float>(word & 3)};
    } else {
        for (size_t i = 0; i < 4; ++i)
            pixel[i] = readElement(layout.depth, source, layout.place[i]);
    }
    if (!layout.hasAlpha) pixel[3] = maxOf(layout.depth);
    return pixel;
}

void write(const Layout& layout, const Pixel& pixel, uint8_t* destination)
{
    if (layout.isPacked) {
        uint32_t word = (integerOf(pixel[0], 1023.0F) & 0x3ff) << 22 | (integerOf(pixel[1], 1023.0F) & 0x3ff) << 12 |
                        (integerOf(pixel[2], 1023.0F) & 0x3ff) << 2;
        if (layout.hasAlpha) word |= integerOf(pixel[3], 1023.0F) & 3;
        for (unsigned i = 0; i < 4; ++i)
            destination[i] = static_cast<uint8_t>(word >> (24 - 8 * i));
        return;
    }
    const size_t numChannels = layout.hasAlpha ? 4 : 3;
    for (size_t i = 0; i < numChannels; ++i)
        writeElement(layout.depth, destination, layout.place[i], pixel[i]);
}

MatrixOp::MatrixOp(BitDepth inDepth, BitDepth outDepth) : in(inDepth), out(outDepth), values{}
{
    for (const size_t diagonal : {0U, 5U, 10U, 15U})
        values[diagonal] = maxOf(out) / maxOf(in);
}

MatrixOp::MatrixOp(BitDepth inDepth, BitDepth outDepth, const std::array<float, 16>& matrix,
                   const std::array<float, 4>& offsets4)
    : in(inDepth), out(outDepth), values(matrix), offsets(offsets4)
{}

void MatrixOp::setInBitDepth(BitDepth depth)
{
    const float ratio = maxOf(in) / maxOf(depth);
    for (float& value : values)
        value *= ratio;
    in = depth;
}

void MatrixOp::setOutBitDepth(BitDepth depth)
{
    const float ratio = maxOf(depth) / maxOf(out);
    for (float& value : values)
        value *= ratio;
    for (float& value : offsets)
        value *= ratio;
    out = depth;
}

std::optional<Renderer> MatrixOp::makeRenderer() const
{
    bool isDiagonal = true;
    for (size_t i = 0; i < 16; ++i)
        if (i % 5 != 0 && !(values[i] == 0.0F)) isDiagonal = false;
    const std::array<float, 4> zeros{};
    const bool hasOffset = std::memcmp(offsets.data(), zeros.data(), sizeof offsets) != 0;

    const Kernel kernel = isDiagonal ? (hasOffset ? Kernel::SCALE_WITH_OFFSET : Kernel::SCALE)
                                     : (hasOffset ? Kernel::MATRIX_WITH_OFFSET : Kernel::MATRIX);
    const auto formula = [=, m = values, o = offsets](const Pixel& v, Position) {
        Pixel result;
        for (size_t row = 0; row < 4; ++row) {
            const float* c = &m[row * 4];
            result[row] = isDiagonal ? v[row] * c[row] : (c[0] * v[0] + c[1] * v[1]) + (c[2] * v[2] + c[3] * v[3]);
            if (hasOffset) result[row] = result[row] + o[row];
        }
        return result;
    };
    return Renderer{kernel, formula, isDiagonal ? Nans::EXACT : Nans::ANY};
}

RangeOp::RangeOp(BitDepth inDepth, BitDepth outDepth, double minimumIn, double maximumIn, double minimumOut,
                 double maximumOut)
    : in(inDepth), out(outDepth), minIn(minimumIn), maxIn(maximumIn), minOut(minimumOut), maxOut(maximumOut)
{
    derive();
}

void RangeOp::setInBitDepth(BitDepth depth)
{
    const double ratio = static_cast<double>(maxOf(depth)) / static_cast<double>(maxOf(in));
    minIn *= ratio; // an unset limit stays unset
    maxIn *= ratio;
    in = depth;
    derive();
}

void RangeOp::setOutBitDepth(BitDepth depth)
{
    const double ratio = static_cast<double>(maxOf(depth)) / static_cast<double>(maxOf(out));
    minOut *= ratio;
    maxOut *= ratio;
    out = depth;
    derive();
}

void RangeOp::derive()
{
    const double inMax = static_cast<double>(maxOf(in));
    const double outMax = static_cast<double>(maxOf(out));
    scale = outMax / inMax;
    alphaScale = scale;
    const bool hasMin = !std::isnan(minIn);
    const bool hasMax = !std::isnan(maxIn);
    if (hasMin && hasMax) {
        scale = (maxOut - minOut) / (maxIn - minIn);
        offset = minOut - scale * minIn;
    } else if (hasMin) {
        offset = minOut - minIn * scale;
    } else if (hasMax) {
        offset = maxOut - maxIn * scale;
    } else {
        offset = 0;
    }

    const auto insideOut = [&](double limit) { return limit < 0 ? 0 : limit > outMax ? outMax : limit; };
    // No sample of an integer depth lies beyond a limit that is itself beyond the depth: no clamp is needed.
    if (hasMin && isInteger(in) && minIn < 0)
        lowerBound = UNSET;
    else if (!isInteger(out))
        lowerBound = minOut;
    else
        lowerBound = hasMin ? insideOut(minOut) : 0;

    if (hasMax && isInteger(in) && maxIn > inMax)
        upperBound = UNSET;
    else if (!isInteger(out))
        upperBound = maxOut;
    else
        upperBound = hasMax ? insideOut(maxOut) : outMax;
}

namespace {

bool differsFromOne(double factor)
{
    if (std::abs(factor) < 0.001) return std::abs(factor - 1) > 1e-6;
    return std::abs(1 - 1 / factor) > 1e-6;
}

} // namespace

std::optional<Renderer> RangeOp::makeRenderer() const
{
    const bool scales = std::abs(offset) > 1e-6 || differsFromOne(scale) || differsFromOne(alphaScale);
    const float s = static_cast<float>(scale);
    const float o = static_cast<float>(offset);
    const float lo = static_cast<float>(lowerBound);
    const float hi = static_cast<float>(upperBound);
    const float a = static_cast<float>(alphaScale);
    const bool hasLower = !std::isnan(lo);
    const bool hasUpper = !std::isnan(hi);

    Kernel kernel{};
    if (scales)
        kernel = hasLower ? (hasUpper ? Kernel::RANGE_SCALE_MIN_MAX : Kernel::RANGE_SCALE_MIN)
                          : (hasUpper ? Kernel::RANGE_SCALE_MAX : Kernel::RANGE_SCALE);
    else if (hasLower)
        kernel = hasUpper ? Kernel::RANGE_MIN_MAX : Kernel::RANGE_MIN;
    else if (hasUpper)
        kernel = Kernel::RANGE_MAX;
    else
        return std::nullopt;

    const auto formula = [=](const Pixel& v, Position) {
        Pixel result;
        for (size_t i = 0; i < 3; ++i) {
            const float w = scales ? v[i] * s + o : v[i];
            result[i] = hasUpper && w > hi ? hi : hasLower && lo > w ? lo : w;
        }
        result[3] = v[3] * a;
        return result;
    };
    return Renderer{kernel, formula};
}

BitDepth inBitDepthOf(const Op& op)
{
    return std::visit([](const auto& any) { return any.in; }, op);
}

BitDepth outBitDepthOf(const Op& op)
{
    return std::visit([](const auto& any) { return any.out; }, op);
}

Bypass bypassOf(const Op& op)
{
    return std::visit([](const auto& any) { return any.bypass; }, op);
}

Op with(Bypass bypass, Op op)
{
    std::visit([bypass](auto& any) { any.bypass = bypass; }, op);
    return op;
}

namespace {

void setInBitDepth(Op& op, BitDepth depth)
{
    std::visit([depth](auto& any) { any.setInBitDepth(depth); }, op);
}

void setOutBitDepth(Op& op, BitDepth depth)
{
    std::visit([depth](auto& any) { any.setOutBitDepth(depth); }, op);
}

/// The ops that reach the renderers, each fitted to the depth in which the one before it ends.
std::vector<Op> flatten(const std::vector<Op>& ops)
{
    std::vector<Op> list;
    for (const Op& op : ops) {
        if (bypassOf(op) == Bypass::STATIC) continue;
        list.push_back(op);
        if (list.size() > 1) setInBitDepth(list.back(), outBitDepthOf(list[list.size() - 2]));
    }
    return list;
}

/// 32f between the ops, the depths of the formats at the two ends.
void setDepths(std::vector<Op>& list, BitDepth in, BitDepth out)
{
    if (list.empty()) return;
    for (size_t i = 0; i < list.size(); ++i) {
        if (i > 0) setInBitDepth(list[i], BIT_DEPTH_32f);
        if (i + 1 < list.size()) setOutBitDepth(list[i], BIT_DEPTH_32f);
    }
    if (inBitDepthOf(list.front()) != in) setInBitDepth(list.front(), in);
    if (outBitDepthOf(list.back()) != out) setOutBitDepth(list.back(), out);
}

} // namespace

namespace {

RenderersPtr makeRenderers(const std::vector<Op>& ops, BitDepth in, BitDepth out)
{
    std::vector<Op> list = flatten(ops);
    setDepths(list, in, out);
    std::vector<Renderer> renderers;
    for (const Op& op : list) {
        std::optional<Renderer> renderer = std::visit([](const auto& any) { return any.makeRenderer(); }, op);
        if (!renderer) continue;
        renderer->isBypassed = bypassOf(op) == Bypass::DYNAMIC;
        renderers.push_back(*renderer);
    }
    if (renderers.empty()) {
        MatrixOp identity(BIT_DEPTH_8i, BIT_DEPTH_8i);
        if (!list.empty()) {
            identity.setInBitDepth(inBitDepthOf(list.front()));
            identity.setOutBitDepth(outBitDepthOf(list.back()));
        }
        renderers.push_back(*identity.makeRenderer());
    }
    return std::make_shared<const std::vector<Renderer>>(std::move(renderers));
}

} // namespace

Processor::Processor(const RenderersPtr& renderers, PixelFormat in, PixelFormat out)
    : m_in(in), m_out(out), m_renderers(renderers)
{}

Processor::Processor(const std::vector<Op>& ops, PixelFormat in, PixelFormat out)
    : Processor(makeRenderers(ops, Layout(in).depth, Layout(out).depth), in, out)
{}

Processor Processors::between(PixelFormat in, PixelFormat out)
{
    RenderersPtr& renderers = m_renderers[{Layout(in).depth, Layout(out).depth}];
    if (!renderers) renderers = makeRenderers(m_ops, Layout(in).depth, Layout(out).depth);
    return Processor(renderers, in, out);
}

Nans Processor::nans() const
{
    for (const Renderer& renderer : renderers())
        if (renderer.nans == Nans::ANY) return Nans::ANY;
    return Nans::EXACT;
}

void Processor::apply(const uint8_t* source, uint8_t* destination, size_t numPixels, Position position) const
{
    for (size_t n = 0; n < numPixels; ++n, ++position.x) {
        Pixel pixel = read(m_in, source + n * m_in.pixelSize);
        for (size_t i = 0; i < renderers().size(); ++i) {
            const Renderer& renderer = renderers()[i];
            if (!renderer.isBypassed) {
                pixel = renderer.formula(pixel, position);
                continue;
            }
            const BitDepth from = i == 0 ? m_in.depth : BIT_DEPTH_32f;
            const BitDepth to = i + 1 == renderers().size() ? m_out.depth : BIT_DEPTH_32f;
            const float factor = maxOf(to) / maxOf(from);
            for (float& value : pixel)
                value = value * factor;
        }
        write(m_out, pixel, destination + n * m_out.pixelSize);
    }
}

} // namespace Twin
