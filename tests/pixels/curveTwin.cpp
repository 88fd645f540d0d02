#include "tests/pixels/curveTwin.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Twin {

float fastLog2(float x)
{
    const uint32_t bits = bitCast<uint32_t>(x);
    const float e = static_cast<float>(static_cast<int>(bits >> 23 & 0xff) - 127);
    const float m = bitCast<float>((bits & 0x7fffffU) | 0x3f800000U);
    float sum = 0.044873614F * m + -0.41656372F;
    sum = sum * m + 1.6311488F;
    sum = sum * m + -3.550793F;
    sum = sum * m + 5.091711F;
    sum = sum * m + -2.800364F;
    return sum + e;
}

float fastExp2(float y)
{
    if (std::isnan(y) || y < -126.0F) return 0.0F; // truncated and less one, any of these is below -126
    if (y >= 128.0F) return std::numeric_limits<float>::infinity();
    int i = static_cast<int>(y);
    if (0.0F > y) --i;
    if (i < -126) return 0.0F;
    const float f = y - static_cast<float>(i);
    float p = 0.013534168F * f + 0.05201146F;
    p = p * f + 0.24144275F;
    p = p * f + 0.69300383F;
    p = p * f + 1.0000026F;
    return p * bitCast<float>(static_cast<uint32_t>(127 + i) << 23);
}

float fastPow(float x, float exponent) { return x > 0.0F ? fastExp2(fastLog2(x) * exponent) : 0.0F; }

namespace {

/// powf itself: of a base that it knows a compiler may make exp2f or exp10f, whose last bit can be another.
float hostPow(float base, float exponent)
{
    const volatile float hidden = base;
    return std::pow(hidden, exponent);
}

// The vector instructions: the second value when one of them is a NaN or both are zeros.
float vectorMax(float a, float b) { return a > b ? a : b; }
float vectorMin(float a, float b) { return a < b ? a : b; }
float clampToUnit(float value) { return vectorMin(vectorMax(value, 0.0F), 1.0F); }

float narrow(double value) { return static_cast<float>(value); }

double doubleMaxOf(BitDepth depth) { return static_cast<double>(maxOf(depth)); }

float inverseMaxOf(BitDepth depth) { return narrow(1.0 / doubleMaxOf(depth)); }

const float SMALLEST_NORMAL = 1.1754944e-38F;

} // namespace

GammaOp::GammaOp(BitDepth inDepth, BitDepth outDepth, Style styleOfCurves, const std::array<Curve, 4>& curvesOfChannels)
    : NormalizedOp(inDepth, outDepth), style(styleOfCurves), curves(curvesOfChannels)
{}

namespace {

Formula basicGamma(const GammaOp& op)
{
    const float inverseInputMax = inverseMaxOf(op.in);
    const float outputMax = maxOf(op.out);
    std::array<float, 4> gamma{};
    for (size_t i = 0; i < 4; ++i)
        gamma[i] = narrow(op.style == GammaOp::BASIC_FWD ? op.curves[i].gamma : 1.0 / op.curves[i].gamma);
    return [=](const Pixel& v, Position) {
        Pixel result;
        for (size_t i = 0; i < 4; ++i)
            result[i] = fastPow(v[i] * inverseInputMax, gamma[i]) * outputMax;
        return result;
    };
}

/// The numbers of a moncurve channel.
struct Moncurve
{
    float exponent;
    float offset;
    float breakPoint;
    float slope;
    float scale;
};

Moncurve forwardMoncurve(const GammaOp::Curve& curve, double inMax, double outMax)
{
    const double g = std::max(curve.gamma, 1.000001);
    const double o = std::max(curve.offset, 1e-6);
    return {narrow(g), narrow(o / (o + 1)), narrow(o / (g - 1) * inMax),
            narrow(std::pow(o * g / ((o + 1) * (g - 1)), g) * ((g - 1) / o) * outMax / inMax),
            narrow(1 / (o + 1) / inMax)};
}

Moncurve reverseMoncurve(const GammaOp::Curve& curve, double inMax, double outMax)
{
    const double g = std::max(curve.gamma, 1.000001);
    const double o = std::max(curve.offset, 1e-6);
    return {narrow(1 / g), narrow(o * outMax), narrow(std::pow(o * g / ((o + 1) * (g - 1)), g) * inMax),
            narrow(std::pow((o + 1) / g, g) * std::pow((g - 1) / o, g - 1) * outMax / inMax), narrow((o + 1) * outMax)};
}

Formula forwardMoncurves(const GammaOp& op)
{
    std::array<Moncurve, 4> curves{};
    for (size_t i = 0; i < 4; ++i)
        curves[i] = forwardMoncurve(op.curves[i], doubleMaxOf(op.in), doubleMaxOf(op.out));
    const float depthFactor = maxOf(op.out);
    return [=](const Pixel& v, Position) {
        Pixel result;
        for (size_t i = 0; i < 4; ++i) {
            const Moncurve& c = curves[i];
            result[i] =
                v[i] > c.breakPoint ? fastPow(v[i] * c.scale + c.offset, c.exponent) * depthFactor : v[i] * c.slope;
        }
        return result;
    };
}

Formula reverseMoncurves(const GammaOp& op)
{
    std::array<Moncurve, 4> curves{};
    for (size_t i = 0; i < 4; ++i)
        curves[i] = reverseMoncurve(op.curves[i], doubleMaxOf(op.in), doubleMaxOf(op.out));
    const float depthFactor = inverseMaxOf(op.in);
    return [=](const Pixel& v, Position) {
        Pixel result;
        for (size_t i = 0; i < 4; ++i) {
            const Moncurve& c = curves[i];
            result[i] =
                v[i] > c.breakPoint ? fastPow(v[i] * depthFactor, c.exponent) * c.scale - c.offset : v[i] * c.slope;
        }
        return result;
    };
}

} // namespace

std::optional<Renderer> GammaOp::makeRenderer() const
{
    switch (style) {
    case MONCURVE_FWD:
        return Renderer{Kernel::GAMMA_MONCURVE_FWD, forwardMoncurves(*this)};
    case MONCURVE_REV:
        return Renderer{Kernel::GAMMA_MONCURVE_REV, reverseMoncurves(*this)};
    default:
        return Renderer{Kernel::GAMMA_BASIC, basicGamma(*this)};
    }
}

LogOp::LogOp(BitDepth inDepth, BitDepth outDepth, Style styleOfCurves, const std::array<Film, 3>& filmsOfChannels)
    : NormalizedOp(inDepth, outDepth), style(styleOfCurves), films(filmsOfChannels)
{}

namespace {

/// The numbers of a film channel.
struct Density
{
    explicit Density(const LogOp::Film& film)
    {
        refWhite = narrow(film.refWhite) / 1023.0F;
        densityFactor = 2.046F / narrow(film.gamma);
        float t = (narrow(film.refBlack) / 1023.0F - refWhite) * densityFactor;
        if (!(-0.0001F > t)) t = -0.0001F;
        shadow = narrow(film.shadow);
        const float d = narrow(film.highlight) - shadow;
        gain = d / (1.0F - hostPow(10.0F, t));
        offset = gain - d;
    }

    float refWhite;
    float densityFactor;
    float gain;
    float offset;
    float shadow;
};

const float LOG10_OF_2 = 0.30103001F;
const float LOG2_OF_10 = 3.321928F;

/// Colour by the curve of each channel, alpha by the two factors of the depths.
template <class Curve>
Formula colourCurve(const LogOp& op, const Curve& curve)
{
    const float alphaScale = maxOf(op.out) * inverseMaxOf(op.in);
    return [=](const Pixel& v, Position) {
        return Pixel{curve(v[0], 0U), curve(v[1], 1U), curve(v[2], 2U), v[3] * alphaScale};
    };
}

Formula logarithm(const LogOp& op, float baseFactor)
{
    const float inverseInputMax = inverseMaxOf(op.in);
    const float factor = baseFactor * maxOf(op.out);
    return colourCurve(
        op, [=](float v, size_t) { return fastLog2(vectorMax(v * inverseInputMax, SMALLEST_NORMAL)) * factor; });
}

Formula antiLogarithm(const LogOp& op, float baseFactor)
{
    const float inverseInputMax = inverseMaxOf(op.in);
    const float outputMax = maxOf(op.out);
    return colourCurve(op, [=](float v, size_t) { return fastExp2(v * inverseInputMax * baseFactor) * outputMax; });
}

std::array<Density, 3> densitiesOf(const LogOp& op)
{
    return {Density(op.films[0]), Density(op.films[1]), Density(op.films[2])};
}

Formula logToLin(const LogOp& op)
{
    const float inverseInputMax = inverseMaxOf(op.in);
    const float outputMax = maxOf(op.out);
    return colourCurve(op, [=, densities = densitiesOf(op)](float v, size_t channel) {
        const Density& d = densities[channel];
        const float y = (v * (inverseInputMax * d.densityFactor) - d.refWhite * d.densityFactor) * LOG2_OF_10;
        return fastExp2(y) * (outputMax * d.gain) + (d.shadow - d.offset) * outputMax;
    });
}

Formula linToLog(const LogOp& op)
{
    const float inverseInputMax = inverseMaxOf(op.in);
    const float outputMax = maxOf(op.out);
    return colourCurve(op, [=, densities = densitiesOf(op)](float v, size_t channel) {
        const Density& d = densities[channel];
        const float x = vectorMax(v * (inverseInputMax / d.gain) + (d.offset - d.shadow) / d.gain, SMALLEST_NORMAL);
        return fastLog2(x) * (outputMax * LOG10_OF_2 / d.densityFactor) + outputMax * d.refWhite;
    });
}

} // namespace

std::optional<Renderer> LogOp::makeRenderer() const
{
    switch (style) {
    case LOG10:
        return Renderer{Kernel::LOG, logarithm(*this, LOG10_OF_2)};
    case LOG2:
        return Renderer{Kernel::LOG, logarithm(*this, 1.0F)};
    case ANTI_LOG10:
        return Renderer{Kernel::ANTI_LOG, antiLogarithm(*this, LOG2_OF_10)};
    case ANTI_LOG2:
        return Renderer{Kernel::ANTI_LOG, antiLogarithm(*this, 1.0F)};
    case LOG_TO_LIN:
        return Renderer{Kernel::LOG_2_LIN, logToLin(*this)};
    case LIN_TO_LOG:
        return Renderer{Kernel::LIN_2_LOG, linToLog(*this)};
    }
    return std::nullopt;
}

ExposureContrastOp::ExposureContrastOp(BitDepth inDepth, BitDepth outDepth, Style styleOfScale, double exposureInStops,
                                       double contrastFactor, double pivotOfContrast, bool isChangeable)
    : NormalizedOp(inDepth, outDepth), style(styleOfScale), exposure(exposureInStops), contrast(contrastFactor),
      pivot(pivotOfContrast), isDynamic(isChangeable)
{}

namespace {

const float VIDEO_EXPONENT = 0.5464481F;
const double STOP_IN_LOG10 = 0.3010299956639812;
const double LOG10_IN_LOG_VALUE = 0.29325513196480935;

float contrastOf(const ExposureContrastOp& op) { return narrow(std::max(op.contrast, 0.001)); }

double pivotOf(const ExposureContrastOp& op) { return std::max(op.pivot, 0.001); }

/// Video and linear differ in the pivot and in the factor of the exposure alone.
Formula powerAroundPivot(const ExposureContrastOp& op, float pivot, float exposureFactor)
{
    const float f = exposureFactor / (pivot * maxOf(op.in));
    const float pivotOutput = pivot * maxOf(op.out);
    const float alphaScale = maxOf(op.out) / maxOf(op.in);
    const float c = contrastOf(op);
    return [=](const Pixel& v, Position) {
        Pixel result;
        for (size_t i = 0; i < 3; ++i)
            result[i] = (c == 1.0F ? v[i] * f : fastPow(v[i] * f, c)) * pivotOutput;
        result[3] = v[3] * alphaScale;
        return result;
    };
}

Formula linearExposure(const ExposureContrastOp& op)
{
    return powerAroundPivot(op, narrow(pivotOf(op)), hostPow(2.0F, narrow(op.exposure)));
}

Formula videoExposure(const ExposureContrastOp& op)
{
    return powerAroundPivot(op, std::pow(narrow(pivotOf(op)), VIDEO_EXPONENT),
                            hostPow(hostPow(2.0F, narrow(op.exposure)), VIDEO_EXPONENT));
}

Formula logarithmicExposure(const ExposureContrastOp& op)
{
    const float pivot = narrow(std::max(std::log10(pivotOf(op) / 0.9) * LOG10_IN_LOG_VALUE + 0.6695992179863147, 0.0));
    const float pivotInput = pivot * maxOf(op.in);
    const float pivotOutput = pivot * maxOf(op.out);
    const float alphaScale = maxOf(op.out) / maxOf(op.in);
    const float t = narrow(op.exposure * STOP_IN_LOG10 * LOG10_IN_LOG_VALUE * doubleMaxOf(op.in)) - pivotInput;
    const float s = contrastOf(op) * alphaScale;
    const float b = t * s + pivotOutput;
    return [=](const Pixel& v, Position) { return Pixel{v[0] * s + b, v[1] * s + b, v[2] * s + b, v[3] * alphaScale}; };
}

} // namespace

std::optional<Renderer> ExposureContrastOp::makeRenderer() const
{
    switch (style) {
    case VIDEO:
        return Renderer{Kernel::EC_VIDEO, videoExposure(*this)};
    case LOGARITHMIC:
        return Renderer{Kernel::EC_LOGARITHMIC, logarithmicExposure(*this)};
    case LINEAR:
        return Renderer{Kernel::EC_LINEAR, linearExposure(*this)};
    }
    return std::nullopt;
}

CDLOp::CDLOp(BitDepth inDepth, BitDepth outDepth, Style styleOfSteps, const Values& slopes, const Values& offsets,
             const Values& powers, double saturationFactor)
    : NormalizedOp(inDepth, outDepth), style(styleOfSteps), slope(slopes), offset(offsets), power(powers),
      saturation(saturationFactor)
{}

namespace {

/// The parameters of the steps. The fourth lane, where alpha would be, is 0 all the way through.
struct Grade
{
    explicit Grade(const CDLOp& op)
        : inverseInputMax(inverseMaxOf(op.in)), outputMax(maxOf(op.out)), saturation(narrow(op.saturation))
    {
        const bool isReverse = op.style == CDLOp::V1_2_REV || op.style == CDLOp::NO_CLAMP_REV;
        for (size_t i = 0; i < 3; ++i) {
            slope[i] = narrow(op.slope[i]);
            offset[i] = narrow(op.offset[i]);
            power[i] = narrow(op.power[i]);
            if (!isReverse) continue;
            slope[i] = reciprocal(slope[i]);
            offset[i] = -offset[i];
            power[i] = reciprocal(power[i]);
        }
        if (isReverse) saturation = reciprocal(saturation);
    }

    static float reciprocal(float value) { return 1.0F / std::max(value, 0.01F); }

    Pixel saturate(const Pixel& c) const
    {
        const float luma = 0.2126F * c[0] + 0.7152F * c[1] + 0.0722F * c[2] + 0.0F * c[3];
        Pixel result{};
        for (size_t i = 0; i < 3; ++i)
            result[i] = (c[i] - luma) * saturation + luma;
        return result;
    }

    Pixel raise(const Pixel& c) const
    {
        Pixel result{};
        for (size_t i = 0; i < 3; ++i)
            result[i] = fastPow(c[i], power[i]);
        return result;
    }

    /// Leaves negative values alone.
    Pixel raisePositive(const Pixel& c) const
    {
        Pixel result{};
        for (size_t i = 0; i < 3; ++i)
            result[i] = c[i] < 0.0F ? c[i] : fastPow(c[i], power[i]);
        return result;
    }

    float inverseInputMax;
    float outputMax;
    std::array<float, 3> slope{};
    std::array<float, 3> offset{};
    std::array<float, 3> power{};
    float saturation;
};

/// Does to each colour channel what the function does to a value of that channel.
template <class Function>
Pixel eachColour(const Pixel& pixel, const Function& function)
{
    return {function(pixel[0], 0U), function(pixel[1], 1U), function(pixel[2], 2U), 0.0F};
}

Pixel v12Forward(const Grade& g, const Pixel& c)
{
    const Pixel x =
        eachColour(c, [&](float v, size_t i) { return clampToUnit(v * g.inverseInputMax * g.slope[i] + g.offset[i]); });
    return eachColour(g.saturate(g.raise(x)), [&](float v, size_t) { return clampToUnit(v) * g.outputMax; });
}

Pixel noClampForward(const Grade& g, const Pixel& c)
{
    const Pixel y = eachColour(c, [&](float v, size_t i) { return v * g.inverseInputMax * g.slope[i] + g.offset[i]; });
    return eachColour(g.saturate(g.raisePositive(y)), [&](float v, size_t) { return v * g.outputMax; });
}

Pixel v12Reverse(const Grade& g, const Pixel& c)
{
    const Pixel x = eachColour(c, [&](float v, size_t) { return clampToUnit(v * g.inverseInputMax); });
    const Pixel y = eachColour(g.saturate(x), [](float v, size_t) { return clampToUnit(v); });
    return eachColour(g.raise(y),
                      [&](float v, size_t i) { return clampToUnit((v + g.offset[i]) * g.slope[i]) * g.outputMax; });
}

Pixel noClampReverse(const Grade& g, const Pixel& c)
{
    const Pixel x = eachColour(c, [&](float v, size_t) { return v * g.inverseInputMax; });
    return eachColour(g.raisePositive(g.saturate(x)),
                      [&](float v, size_t i) { return (v + g.offset[i]) * g.slope[i] * g.outputMax; });
}

template <class Steps>
Formula cdlFormula(const CDLOp& op, const Steps& steps)
{
    const Grade grade(op);
    const float alphaScale = grade.outputMax * grade.inverseInputMax;
    return [=](const Pixel& v, Position) {
        Pixel result = steps(grade, Pixel{v[0], v[1], v[2], 0.0F});
        result[3] = v[3] * alphaScale;
        return result;
    };
}

} // namespace

std::optional<Renderer> CDLOp::makeRenderer() const
{
    switch (style) {
    case V1_2_FWD:
        return Renderer{Kernel::CDL_V1_2_FWD, cdlFormula(*this, v12Forward)};
    case V1_2_REV:
        return Renderer{Kernel::CDL_V1_2_REV, cdlFormula(*this, v12Reverse)};
    case NO_CLAMP_FWD:
        return Renderer{Kernel::CDL_NO_CLAMP_FWD, cdlFormula(*this, noClampForward)};
    case NO_CLAMP_REV:
        return Renderer{Kernel::CDL_NO_CLAMP_REV, cdlFormula(*this, noClampReverse)};
    }
    return std::nullopt;
}

} // namespace Twin
