#include "work.h"

#include <Imath/half.h>
#include <cmath>
#include <cstdio>

namespace OCIO = OCIO_NAMESPACE;
namespace M = Morvane;

namespace {

constexpr unsigned kHalfs = 65536;

/// The curves of the three channels.
struct Table
{
    std::vector<float> red, green, blue;
};

double exponentOf(Curves curves, int channel) { return curves == Curves::One ? 0.45 : 0.45 + 0.05 * channel; }

Table makeTable(unsigned length, Curves curves)
{
    Table table;
    for (unsigned i = 0; i < length; ++i) {
        const double x = i / (length - 1.);
        table.red.push_back(static_cast<float>(std::pow(x, exponentOf(curves, 0))));
        table.green.push_back(static_cast<float>(std::pow(x, exponentOf(curves, 1))));
        table.blue.push_back(static_cast<float>(std::pow(x, exponentOf(curves, 2))));
    }
    return table;
}

Table makeHalfTable(Curves curves)
{
    const auto curve = [=](double x, int channel) {
        const double y = std::isfinite(x) ? std::pow(std::fabs(x), exponentOf(curves, channel)) : 0.;
        return static_cast<float>(std::signbit(x) ? -y : y);
    };
    Table table;
    for (unsigned i = 0; i < kHalfs; ++i) {
        Imath::half half;
        half.setBits(static_cast<uint16_t>(i));
        const auto x = static_cast<double>(static_cast<float>(half));
        table.red.push_back(curve(x, 0));
        table.green.push_back(curve(x, 1));
        table.blue.push_back(curve(x, 2));
    }
    return table;
}

M::TransformPtr makeOurs(const Table& table, M::HalfFlags flags)
{
    M::TransformPtr result;
    require(M::Create1DLutTransformFromFloat(M::BIT_DEPTH_32f, M::BIT_DEPTH_32f,
                                             static_cast<unsigned>(table.red.size()), table.red.data(),
                                             table.green.data(), table.blue.data(), flags, result));
    return result;
}

OCIO::Lut1DTransformRcPtr makePeer(const Table& table, bool isHalfDomain)
{
    const auto length = static_cast<unsigned long>(table.red.size());
    const auto lut = OCIO::Lut1DTransform::Create(length, isHalfDomain);
    for (unsigned long i = 0; i < length; ++i) {
        lut->setValue(i, table.red[i], table.green[i], table.blue[i]);
    }
    lut->setInterpolation(OCIO::INTERP_LINEAR);
    return lut;
}

std::string arrayOf(const Table& table)
{
    std::string text = "<Array dim=\"" + std::to_string(table.red.size()) + " 3\">\n";
    for (std::size_t i = 0; i < table.red.size(); ++i) {
        char line[100];
        std::snprintf(line, sizeof line, "%.9g %.9g %.9g\n", static_cast<double>(table.red[i]),
                      static_cast<double>(table.green[i]), static_cast<double>(table.blue[i]));
        text += line;
    }
    return text + "</Array>";
}

} // namespace

Work lut1DWork(const std::string& name, Curves curves)
{
    return {name, [=] { return makeOurs(makeTable(1024, curves), M::HALF_FLAGS_NONE); },
            [=] { return makePeer(makeTable(1024, curves), false); }};
}

Work inverseLut1DWork()
{
    return {"inverse 1D LUT 1024",
            [] {
                M::TransformPtr inverse = makeOurs(makeTable(1024, Curves::One), M::HALF_FLAGS_NONE);
                require(inverse->inverse(inverse));
                return inverse;
            },
            [] {
                const auto lut = makePeer(makeTable(1024, Curves::One), false);
                lut->setDirection(OCIO::TRANSFORM_DIR_INVERSE);
                return lut;
            }};
}

Work halfDomainLut1DWork()
{
    return {"1D LUT half domain", [] { return makeOurs(makeHalfTable(Curves::One), M::HALF_FLAGS_HALF_DOMAIN); },
            [] { return makePeer(makeHalfTable(Curves::One), true); }};
}

Work hueAdjustLut1DWork(const std::string& name, Curves curves)
{
    return {name,
            [=] {
                return transformOf("<LUT1D inBitDepth=\"32f\" outBitDepth=\"32f\" hueAdjust=\"dw3\">\n" +
                                   arrayOf(makeTable(1024, curves)) + "</LUT1D>");
            },
            [=] {
                const auto lut = makePeer(makeTable(1024, curves), false);
                lut->setHueAdjust(OCIO::HUE_DW3);
                return lut;
            }};
}

Work lut3DWork(const std::string& name, CubeInterpolation interpolation)
{
    constexpr unsigned kSize = 33;
    const bool isTetrahedral = interpolation == CubeInterpolation::Tetrahedral;
    const auto entry = [](unsigned r, unsigned g, unsigned b, int channel) {
        const double rgb[3] = {r / (kSize - 1.), g / (kSize - 1.), b / (kSize - 1.)};
        const double mixed = 0.8 * rgb[channel] + 0.1 * (rgb[0] + rgb[2]);
        return static_cast<float>(std::pow(mixed, 1.1));
    };
    return {name,
            [=] {
                std::string text = "<LUT3D inBitDepth=\"32f\" outBitDepth=\"32f\" interpolation=\"";
                text += isTetrahedral ? "tetrahedral" : "trilinear";
                text += "\"><Array dim=\"33 33 33 3\">\n";
                for (unsigned r = 0; r < kSize; ++r) {
                    for (unsigned g = 0; g < kSize; ++g) {
                        for (unsigned b = 0; b < kSize; ++b) {
                            for (int channel = 0; channel < 3; ++channel) {
                                char number[40];
                                std::snprintf(number, sizeof number, "%.9g ",
                                              static_cast<double>(entry(r, g, b, channel)));
                                text += number;
                            }
                        }
                    }
                    text += "\n";
                }
                return transformOf(text + "</Array></LUT3D>");
            },
            [=]() -> OCIO::TransformRcPtr {
                const auto lut = OCIO::Lut3DTransform::Create(kSize);
                for (unsigned r = 0; r < kSize; ++r) {
                    for (unsigned g = 0; g < kSize; ++g) {
                        for (unsigned b = 0; b < kSize; ++b) {
                            lut->setValue(r, g, b, entry(r, g, b, 0), entry(r, g, b, 1), entry(r, g, b, 2));
                        }
                    }
                }
                lut->setInterpolation(isTetrahedral ? OCIO::INTERP_TETRAHEDRAL : OCIO::INTERP_LINEAR);
                return lut;
            }};
}
