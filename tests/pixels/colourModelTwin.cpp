#include "tests/pixels/colourModelTwin.h"

#include <algorithm>
#include <cmath>

namespace Twin {

using namespace Morvane_2015_1_42;

namespace {

float narrow(double value) { return static_cast<float>(value); }

float ratioOf(const NormalizedOp& op) { return maxOf(op.out) / maxOf(op.in); }

Pixel scaled(const Pixel& pixel, float scale)
{
    return {pixel[0] * scale, pixel[1] * scale, pixel[2] * scale, pixel[3] * scale};
}

} // namespace

std::array<size_t, 3> hueOrderOf(float r, float g, float b)
{
    static const std::array<size_t, 9> triples = {2, 1, 0, 2, 1, 2, 0, 1, 2};
    const int start = 4 * (g > b) - 3 * (r > b) + 5 * (r > g);
    // Green is a NaN and no order is right. Blue alone makes all three roles: no channel moves between two others.
    if (start < 0) return {2, 2, 2};
    const size_t at = static_cast<size_t>(start);
    return {triples[at], triples[at + 1], triples[at + 2]};
}

GamutMapOp::GamutMapOp(BitDepth inDepth, BitDepth outDepth, Style styleOfMap)
    : NormalizedOp(inDepth, outDepth), style(styleOfMap)
{}

std::optional<Renderer> GamutMapOp::makeRenderer() const
{
    if (style != DW3) return std::nullopt;
    const auto formula = [scale = ratioOf(*this)](const Pixel& pixel, Position) {
        const Pixel v = scaled(pixel, scale);
        const auto [max, mid, min] = hueOrderOf(v[0], v[1], v[2]);
        const float chroma = v[max] - v[min];
        const float hueFactor = chroma == 0.0F ? 0.0F : (v[mid] - v[min]) / chroma;
        Pixel w;
        for (size_t i = 0; i < 4; ++i)
            w[i] = v[i] > 0.0F ? v[i] : 0.0F;
        w[mid] = (w[max] - w[min]) * hueFactor + w[min];
        return w;
    };
    return Renderer{Kernel::GAMUT_MAP_DW3, formula, Nans::ANY};
}

HueVectorOp::HueVectorOp(BitDepth inDepth, BitDepth outDepth, Style styleOfVector, double centerHue, double hueWidth,
                         double chromaGain)
    : NormalizedOp(inDepth, outDepth), style(styleOfVector), center(centerHue), width(hueWidth), gain(chromaGain)
{}

namespace {

const float PI = 3.1415927F;

/// One segment of the bump, highest power first.
using Cubic = std::array<float, 4>;

const std::array<Cubic, 4> BUMP = {{{0.25F, 0.0F, 0.0F, 0.0F},
                                    {-0.75F, 0.75F, 0.75F, 0.25F},
                                    {0.75F, -1.5F, 0.0F, 1.0F},
                                    {-0.25F, 0.75F, -0.75F, 0.25F}}};

float forwardCubic(const Cubic& c, float f) { return ((c[0] * f + c[1]) * f + c[2]) * f + c[3]; }

float reverseCubic(const Cubic& c, float f) { return c[0] * f * f * f + c[1] * f * f + c[2] * f + c[3]; }

} // namespace

std::optional<Renderer> HueVectorOp::makeRenderer() const
{
    const bool isReverse = style == YCH_REV;
    const float centerAngle = PI * narrow(center) / 180.0F;
    const float widthFactor = 4.0F / (PI * narrow(width) / 180.0F);
    const float gainMinusOne = narrow(gain) - 1.0F;
    const float quarterRootThree = std::sqrt(3.0F) * 0.25F;
    const float scale = ratioOf(*this);

    const auto formula = [=](const Pixel& v, Position) {
        const float r = v[0];
        const float g = v[1];
        const float b = v[2];
        const float y = (g - b) * quarterRootThree;
        const float luma = (g + r + b) * 0.33333334F;
        const float x = r * 0.5F - (b + g) * 0.25F;

        float hue = std::atan2(y, x) - centerAngle;
        if (-PI > hue) hue += 6.2831855F;
        if (hue > PI) hue -= 6.2831855F;
        const float t = hue * widthFactor + 2.0F;
        if (!(t >= 1.0F && t < 4.0F)) return scaled(v, scale); // the segment from 0 to 1 counts as outside

        const size_t i = static_cast<size_t>(t);
        const float f = t - static_cast<float>(i);
        const float s = isReverse ? reverseCubic(BUMP[i], f) : forwardCubic(BUMP[i], f);
        const float factor = s * gainMinusOne + 1.0F;
        const float x2 = isReverse ? x / factor : x * factor;
        const float y2 = (isReverse ? y / factor : y * factor) * 1.1547005F;
        const float mid = x2 * -0.6666667F + luma;
        return scaled({x2 * 1.3333334F + luma, y2 + mid, mid - y2, v[3]}, scale);
    };
    return Renderer{isReverse ? Kernel::HUE_VECTOR_YCH_REV : Kernel::HUE_VECTOR_YCH_FWD, formula, Nans::ANY};
}

FunctionOp::FunctionOp(BitDepth inDepth, BitDepth outDepth, Style styleOfFunction)
    : NormalizedOp(inDepth, outDepth), style(styleOfFunction)
{}

namespace {

// The vector instructions: the second value when one of them is a NaN.
float vectorMax(float a, float b) { return a > b ? a : b; }
float vectorMin(float a, float b) { return a < b ? a : b; }

/// The whole number that the processor makes of a value: the least one stands for all that it cannot hold.
float truncated(float value)
{
    if (!(std::abs(value) < 0x1p31F)) return -0x1p31F;
    return std::trunc(value);
}

Pixel hsvOf(const Pixel& v, float outputMax, float scale)
{
    const float r = v[0];
    const float g = v[1];
    const float b = v[2];
    const float maximum = vectorMax(vectorMax(r, g), b);
    const float minimum = vectorMin(vectorMin(r, g), b);
    const float delta = maximum - minimum;
    float hue = 0.0F;
    float saturation = 0.0F;
    if (maximum > 0.0F) {
        saturation = delta / maximum;
        // Grey divides 0 by 0: its hue is a NaN.
        if (r >= maximum)
            hue = (g - b) / delta;
        else if (g >= maximum)
            hue = (b - r) / delta + 2.0F;
        else
            hue = (r - g) / delta + 4.0F;
        hue *= 0.16666667F;
        if (0.0F > hue) hue += 1.0F;
    }
    return {hue * outputMax, saturation * outputMax, maximum * scale, v[3] * scale};
}

Pixel rgbOf(const Pixel& pixel, float inputMax, float scale)
{
    const float v = pixel[2];
    const float s = pixel[1] / inputMax;
    Pixel result = {v, v, v, pixel[3]};
    if (s > 0.0F) {
        const float h6 = pixel[0] / inputMax * 6.0F;
        const float whole = truncated(h6);
        const float f = h6 - whole;
        const float p = (1.0F - s) * v;
        const float q = (1.0F - f * s) * v;
        const float t = (1.0F - (1.0F - f) * s) * v;
        if (whole == 0.0F)
            result = {v, t, p, pixel[3]};
        else if (whole == 1.0F)
            result = {q, v, p, pixel[3]};
        else if (whole == 2.0F)
            result = {p, v, t, pixel[3]};
        else if (whole == 3.0F)
            result = {p, q, v, pixel[3]};
        else if (whole == 4.0F)
            result = {t, p, v, pixel[3]};
        else
            result = {v, p, q, pixel[3]};
    }
    return scaled(result, scale);
}

} // namespace

std::optional<Renderer> FunctionOp::makeRenderer() const
{
    const float inputMax = maxOf(in);
    const float outputMax = maxOf(out);
    const float scale = ratioOf(*this);
    if (style == RGB_TO_HSV)
        return Renderer{Kernel::FUNCTION_RGB_TO_HSV,
                        [=](const Pixel& v, Position) { return hsvOf(v, outputMax, scale); }, Nans::ANY};
    return Renderer{Kernel::FUNCTION_HSV_TO_RGB, [=](const Pixel& v, Position) { return rgbOf(v, inputMax, scale); },
                    Nans::ANY};
}

DitherOp::DitherOp(BitDepth inDepth, BitDepth outDepth, BitDepth depthToDither)
    : NormalizedOp(inDepth, outDepth), ditherDepth(depthToDither)
{}

namespace {

/// Entry of the Bayer matrix of a size that is a power of two.
unsigned bayer(unsigned size, unsigned row, unsigned column)
{
    const std::array<unsigned, 4> base = {0, 2, 3, 1};
    if (size == 2) return base[2 * row + column];
    const unsigned half = size / 2;
    return 4 * bayer(half, row % half, column % half) + base[2 * (row / half) + column / half];
}

bool isFinerThan(BitDepth depth, BitDepth other) { return maxOf(depth) > maxOf(other); }

} // namespace

std::optional<Renderer> DitherOp::makeRenderer() const
{
    const bool isNeeded =
        in != ditherDepth && isInteger(ditherDepth) && !(isInteger(in) && isFinerThan(ditherDepth, in));
    if (!isNeeded) return Renderer{Kernel::DITHER, [](const Pixel& v, Position) { return v; }};

    std::array<std::array<float, 16>, 16> offsets{};
    const float amplitude = maxOf(in) / maxOf(ditherDepth);
    for (unsigned row = 0; row < 16; ++row)
        for (unsigned column = 0; column < 16; ++column)
            offsets[row][column] = ((static_cast<float>(bayer(16, row, column)) + 0.5F) / 256.0F - 0.5F) * amplitude;
    return Renderer{Kernel::DITHER, [=](const Pixel& v, Position position) {
                        const float d = offsets[position.y % 16][position.x % 16];
                        return Pixel{v[0] + d, v[1] + d, v[2] + d, v[3] + d};
                    }};
}

} // namespace Twin
