#include "tests/pixels/lutCases.h"

#include "transform/invLut1DOp.h"
#include "transform/lut3DOp.h"

#include <cmath>

namespace PixelTest {

using namespace Morvane_2015_1_42;
using Twin::Bypass;
using Twin::InvLut1DOp;
using Twin::Lut1DOp;
using Twin::Lut3DOp;
using Twin::MatrixOp;
using Twin::Op;
using Twin::RangeOp;

namespace {

std::unique_ptr<Color::Lut1DOp> makeForward(BitDepth in, BitDepth out, const std::vector<float>& values,
                                            bool isHalfDomain)
{
    auto lut = std::make_unique<Color::Lut1DOp>(
        in, out, "", "", Color::Descriptions(), Color::Lut1DOp::INTERPOLATION_LINEAR,
        static_cast<uint32_t>(values.size() / 3), isHalfDomain ? HALF_FLAGS_HALF_DOMAIN : HALF_FLAGS_NONE);
    lut->getArray().getValues() = values;
    return lut;
}

} // namespace

std::unique_ptr<Color::Op> makeColorOp(const Lut1DOp& op)
{
    auto lut = makeForward(op.in, op.out, *op.values, op.isHalfDomain);
    lut->setHueAdjust(op.adjustsHue ? Color::Lut1DOp::HUE_ADJUST_DW3 : Color::Lut1DOp::HUE_ADJUST_NONE);
    return lut;
}

std::unique_ptr<Color::Op> makeColorOp(const InvLut1DOp& op)
{
    auto lut = std::make_unique<Color::InvLut1DOp>(*makeForward(op.out, op.in, *op.given, op.isHalfDomain));
    lut->setStyle(op.isFast ? Color::InvLut1DOp::STYLE_FAST : Color::InvLut1DOp::STYLE_EXACT);
    return lut;
}

std::unique_ptr<Color::Op> makeColorOp(const Lut3DOp& op)
{
    auto lut = std::make_unique<Color::Lut3DOp>(op.in, op.out, "", "", Color::Descriptions(),
                                                op.isTetrahedral ? Color::Lut3DOp::INTERPOLATION_TETRAHEDRAL
                                                                 : Color::Lut3DOp::INTERPOLATION_TRILINEAR,
                                                static_cast<uint32_t>(op.length));
    lut->getArray().getValues() = *op.values;
    return lut;
}

namespace {

using Curves = std::array<std::function<double(double)>, 3>;

/// From 0 to 1: one curve rises, one turns several times, one falls.
const Curves MIXED = {[](double x) { return std::pow(x, 0.45); }, [](double x) { return x + 0.2 * std::sin(17 * x); },
                      [](double x) { return 0.93 - 0.9 * std::pow(x, 1.7); }};

/// Flat at the ends and in between; one of each direction, and one with reversals.
const Curves STEPPED = {[](double x) { return std::clamp(1.4 * x - 0.2, 0.03, 0.97); },
                        [](double x) {
                            return x < 0.3 ? 0.9 - x : x < 0.45 ? 0.6 : x < 0.9 ? 1.05 - x : 0.15;
                        },
                        [](double x) { return 0.1 + 0.8 * x + 0.06 * std::sin(23 * x); }};

/// Beyond the nominal range on both sides.
const Curves BEYOND = {[](double x) { return 1.5 * x - 0.25; }, [](double x) { return 1.25 - 1.5 * x * x; },
                       [](double x) { return 2 * x * x - 0.5; }};

/// Over all floats.
const Curves SIGNED = {[](double x) { return std::copysign(std::pow(std::abs(x), 0.7), x); },
                       [](double x) { return 0.4 * x + 0.1; }, [](double x) { return 1 / (1 + std::exp(x)); }};

std::vector<float> sampled(const Curves& curves, size_t length, BitDepth depth)
{
    std::vector<float> values;
    for (size_t i = 0; i < length; ++i) {
        const double x = length > 1 ? static_cast<double>(i) / static_cast<double>(length - 1) : 0.4;
        for (const auto& curve : curves)
            values.push_back(static_cast<float>(curve(x)) * Twin::maxOf(depth));
    }
    return values;
}

std::vector<float> sampledAtHalfCodes(const Curves& curves, BitDepth depth)
{
    std::vector<float> values;
    for (size_t i = 0; i < 65536; ++i) {
        const float x = Twin::floatOfHalfBits(static_cast<uint16_t>(i));
        for (const auto& curve : curves) // the NaN codes too have an entry
            values.push_back(static_cast<float>(
                                 curve(std::isnan(x) ? 0.01 * static_cast<double>(i % 100) : static_cast<double>(x))) *
                             Twin::maxOf(depth));
    }
    return values;
}

/// Numbers beyond the range and no numbers, here and there.
std::vector<float> withOddEntries(std::vector<float> values)
{
    const std::array<float, 8> odd = {INFINITY, 1.7F, -INFINITY, -0.4F, NAN, -0.0F, 1e-40F, 3e38F};
    for (size_t i = 4; i < values.size(); i += 11)
        values[i] = odd[(i / 11) % odd.size()];
    return values;
}

Lut1DOp lut(BitDepth in, BitDepth out, size_t length) { return Lut1DOp(in, out, sampled(MIXED, length, out)); }

Lut1DOp halfDomain(BitDepth in, BitDepth out)
{
    Lut1DOp op(in, out, sampledAtHalfCodes(SIGNED, out));
    op.isHalfDomain = true;
    return op;
}

Lut1DOp hueAdjusted(Lut1DOp op)
{
    op.adjustsHue = true;
    return op;
}

InvLut1DOp inverse(BitDepth in, BitDepth out, const Curves& curves, size_t length)
{
    return InvLut1DOp(in, out, sampled(curves, length, in));
}

InvLut1DOp halfDomainInverse(BitDepth in, BitDepth out)
{
    InvLut1DOp op(in, out, sampledAtHalfCodes(SIGNED, in));
    op.isHalfDomain = true;
    return op;
}

InvLut1DOp fast(InvLut1DOp op)
{
    op.isFast = true;
    return op;
}

std::vector<float> cubeValues(size_t length, BitDepth depth)
{
    const double step = 1.0 / static_cast<double>(length - 1);
    std::vector<float> values;
    for (size_t r = 0; r < length; ++r) {
        for (size_t g = 0; g < length; ++g) {
            for (size_t b = 0; b < length; ++b) {
                const double red = static_cast<double>(r) * step;
                const double green = static_cast<double>(g) * step;
                const double blue = static_cast<double>(b) * step;
                for (const double value : {1.1 * red - 0.07 * green * blue, std::sin(2 * green) - 0.1 * red + 0.05,
                                           0.95 - 0.8 * blue * red - 0.3 * green})
                    values.push_back(static_cast<float>(value) * Twin::maxOf(depth));
            }
        }
    }
    return values;
}

Lut3DOp cube(BitDepth in, BitDepth out, size_t length) { return Lut3DOp(in, out, length, cubeValues(length, out)); }

Lut3DOp tetrahedral(Lut3DOp op)
{
    op.isTetrahedral = true;
    return op;
}

/// One op for each kernel, by the kernel's name. Here every kernel meets all pairs of formats.
std::vector<OpCase> makeKernelCases()
{
    const BitDepth f = BIT_DEPTH_32f;
    return {{"lut", {lut(BIT_DEPTH_10i, BIT_DEPTH_12i, 1024)}},
            {"lutHalfDomain", {halfDomain(f, f)}},
            {"lutHueAdjusted", {hueAdjusted(lut(BIT_DEPTH_12i, BIT_DEPTH_10i, 4096))}},
            {"lutHalfDomainHueAdjusted", {hueAdjusted(halfDomain(BIT_DEPTH_16f, BIT_DEPTH_10i))}},
            {"inverseLut", {inverse(f, f, STEPPED, 1024)}},
            {"inverseLutHalfDomain", {halfDomainInverse(BIT_DEPTH_16f, BIT_DEPTH_16f)}},
            {"cube", {cube(BIT_DEPTH_8i, BIT_DEPTH_10i, 17)}},
            {"cubeTetrahedral", {tetrahedral(cube(f, f, 33))}}};
}

std::vector<OpCase> makeTableCases()
{
    const BitDepth f = BIT_DEPTH_32f;
    Lut1DOp oddHalfDomain = halfDomain(f, f);
    oddHalfDomain.values =
        std::make_shared<const std::vector<float>>(withOddEntries(sampledAtHalfCodes(SIGNED, BIT_DEPTH_32f)));
    return {
        {"lut256", {lut(BIT_DEPTH_8i, BIT_DEPTH_8i, 256)}},
        {"lut1025", {lut(f, f, 1025)}},
        {"lut4096", {lut(BIT_DEPTH_12i, BIT_DEPTH_16i, 4096)}},
        {"lut65536", {lut(BIT_DEPTH_16i, BIT_DEPTH_16f, 65536)}},
        {"lut3", {lut(f, f, 3)}},
        {"lut2", {lut(BIT_DEPTH_8i, f, 2)}},
        {"lut1", {lut(f, BIT_DEPTH_8i, 1)}},
        {"lutBeyond", {Lut1DOp(f, f, sampled(BEYOND, 256, f))}},
        {"lut256OddEntries", {Lut1DOp(f, f, withOddEntries(sampled(MIXED, 256, f)))}},
        {"lut1024OddEntries", {Lut1DOp(f, f, withOddEntries(sampled(MIXED, 1024, f)))}},
        {"lutHalfDomainOddEntries", {oddHalfDomain}},
        {"lutHueAdjusted256", {hueAdjusted(lut(BIT_DEPTH_8i, BIT_DEPTH_8i, 256))}},
        {"lutHueAdjusted65536", {hueAdjusted(lut(BIT_DEPTH_16i, BIT_DEPTH_16i, 65536))}},
        {"lutHueAdjustedOddEntries", {hueAdjusted(Lut1DOp(f, f, withOddEntries(sampled(MIXED, 1024, f))))}},
        {"lutHueAdjusted3", {hueAdjusted(lut(f, f, 3))}},
        {"lutHueAdjustedBeyond", {hueAdjusted(Lut1DOp(f, f, sampled(BEYOND, 1024, f)))}},
        {"inverseLut256", {inverse(BIT_DEPTH_8i, BIT_DEPTH_10i, STEPPED, 256)}},
        {"inverseLut4096", {inverse(BIT_DEPTH_12i, BIT_DEPTH_16f, MIXED, 4096)}},
        {"inverseLut3", {inverse(f, f, STEPPED, 3)}},
        {"inverseLut2", {inverse(f, f, BEYOND, 2)}},
        {"inverseLutFlat", {InvLut1DOp(f, f, std::vector<float>(300, 0.4F))}},
        {"inverseLutBeyond", {inverse(f, f, BEYOND, 1024)}},
        {"inverseLutFast", {fast(inverse(f, f, STEPPED, 1024))}},
        {"inverseLutFastOfIntegers", {fast(inverse(BIT_DEPTH_16i, BIT_DEPTH_8i, STEPPED, 256))}},
        {"inverseLutFastBeyond", {fast(inverse(f, f, BEYOND, 1024))}},
        {"inverseLutFastFlat", {fast(InvLut1DOp(f, f, std::vector<float>(300, 0.4F)))}},
        {"cube2", {cube(f, f, 2)}},
        {"cube3", {cube(f, f, 3)}},
        {"cube33", {cube(BIT_DEPTH_10i, BIT_DEPTH_16i, 33)}},
        {"cubeOddEntries", {Lut3DOp(f, f, 5, withOddEntries(cubeValues(5, f)))}},
        {"cubeTetrahedral2", {tetrahedral(cube(f, f, 2))}},
        {"cubeTetrahedral3", {tetrahedral(cube(f, f, 3))}},
        {"cubeTetrahedral17", {tetrahedral(cube(BIT_DEPTH_12i, BIT_DEPTH_8i, 17))}},
        {"cubeTetrahedralOddEntries", {tetrahedral(Lut3DOp(f, f, 5, withOddEntries(cubeValues(5, f))))}},
    };
}

/// Every kernel first, in the middle and last; between ops of other kinds; bypassed.
std::vector<OpCase> makeChainCases(const std::vector<OpCase>& kernels)
{
    std::vector<OpCase> cases;
    for (size_t i = 0; i < kernels.size(); ++i) {
        OpCase chain{kernels[i].name + "AndTwoMore", {}};
        for (size_t k = i; k < i + 3; ++k)
            chain.ops.push_back(kernels[k % kernels.size()].ops.front());
        cases.push_back(chain);
    }
    const BitDepth f = BIT_DEPTH_32f;
    const Op shortLut = lut(f, f, 3);
    const Op unset = RangeOp(f, f, RangeOp::UNSET, RangeOp::UNSET, RangeOp::UNSET, RangeOp::UNSET);
    const Op gain = MatrixOp(f, f, {1.25F, 0, 0, 0, 0, 0.8F, 0, 0, 0, 0, 1.0625F, 0, 0, 0, 0, 0.99F});
    // Between floats a range without limits has no renderer: then the table next to it meets a source or a destination
    // that is not in its own depth.
    cases.push_back({"rangeUnsetThenLut", {unset, shortLut}});
    cases.push_back({"rangeUnsetThenLutHalfDomain", {unset, kernels[1].ops.front()}});
    cases.push_back({"lutThenRangeUnset", {shortLut, unset}});
    cases.push_back({"lutBypassed", {Twin::with(Bypass::DYNAMIC, kernels[0].ops.front())}});
    cases.push_back({"cubeBypassedBetween", {gain, Twin::with(Bypass::DYNAMIC, kernels[6].ops.front()), gain}});
    cases.push_back({"lutBetweenMatrices", {gain, kernels[0].ops.front(), gain}});
    cases.push_back({"cubeBetweenMatrices", {gain, kernels[7].ops.front(), gain}});
    return cases;
}

} // namespace

std::vector<OpCase> makeLutCases()
{
    std::vector<OpCase> cases = makeKernelCases();
    const std::vector<OpCase> chains = makeChainCases(cases);
    for (std::vector<OpCase> thinned : {makeTableCases(), chains}) {
        for (OpCase& one : thinned) {
            one.isThinned = true;
            cases.push_back(std::move(one));
        }
    }
    return cases;
}

} // namespace PixelTest
