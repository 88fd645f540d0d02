#include "colorimetry.h"

#include <algorithm>
#include <cmath>

namespace Colorimetry {

// clang-format off
const RGBSpace kACES2065_1 = {{0.7347, 0.2653}, {0.0000, 1.0000}, {0.0001, -0.0770}, {0.32168, 0.33767}};
const RGBSpace kBT709      = {{0.6400, 0.3300}, {0.3000, 0.6000}, {0.1500,  0.0600}, {0.31270, 0.32900}};
const RGBSpace kBT2020     = {{0.7080, 0.2920}, {0.1700, 0.7970}, {0.1310,  0.0460}, {0.31270, 0.32900}};

static const Matrix3 kBradfordConeFromXYZ = {{
    { 0.8951,  0.2664, -0.1614},
    {-0.7502,  1.7135,  0.0367},
    { 0.0389, -0.0685,  1.0296},
}};
// clang-format on

Matrix3 multiply(const Matrix3& a, const Matrix3& b)
{
    Matrix3 product{};
    for (size_t row = 0; row < 3; ++row) {
        for (size_t column = 0; column < 3; ++column) {
            product[row][column] = a[row][0] * b[0][column] + a[row][1] * b[1][column] + a[row][2] * b[2][column];
        }
    }
    return product;
}

Vector3 multiply(const Matrix3& a, const Vector3& v)
{
    Vector3 product{};
    for (size_t row = 0; row < 3; ++row)
        product[row] = a[row][0] * v[0] + a[row][1] * v[1] + a[row][2] * v[2];
    return product;
}

Matrix3 inverse(const Matrix3& m)
{
    // Cofactors; the cyclic indices give each its sign.
    Matrix3 cofactor{};
    for (size_t row = 0; row < 3; ++row) {
        for (size_t column = 0; column < 3; ++column) {
            const size_t r1 = (row + 1) % 3, r2 = (row + 2) % 3, c1 = (column + 1) % 3, c2 = (column + 2) % 3;
            cofactor[row][column] = m[r1][c1] * m[r2][c2] - m[r1][c2] * m[r2][c1];
        }
    }
    const double determinant = m[0][0] * cofactor[0][0] + m[0][1] * cofactor[0][1] + m[0][2] * cofactor[0][2];
    Matrix3 result{};
    for (size_t row = 0; row < 3; ++row) {
        for (size_t column = 0; column < 3; ++column)
            result[row][column] = cofactor[column][row] / determinant;
    }
    return result;
}

Vector3 XYZFromChromaticity(const Chromaticity& c) { return {c.x / c.y, 1.0, (1.0 - c.x - c.y) / c.y}; }

Matrix3 XYZFromRGB(const RGBSpace& space)
{
    // Columns of x, y, z rather than X, Y, Z: no primary is divided by its y, which may be 0 elsewhere.
    const Chromaticity primaries[3] = {space.red, space.green, space.blue};
    Matrix3 columns{};
    for (size_t i = 0; i < 3; ++i) {
        columns[0][i] = primaries[i].x;
        columns[1][i] = primaries[i].y;
        columns[2][i] = 1.0 - primaries[i].x - primaries[i].y;
    }
    const Vector3 scales = multiply(inverse(columns), XYZFromChromaticity(space.white));
    for (Vector3& row : columns) {
        for (size_t i = 0; i < 3; ++i)
            row[i] *= scales[i];
    }
    return columns;
}

Matrix3 bradfordAdaptation(const Chromaticity& fromWhite, const Chromaticity& toWhite)
{
    const Vector3 from = multiply(kBradfordConeFromXYZ, XYZFromChromaticity(fromWhite));
    const Vector3 to = multiply(kBradfordConeFromXYZ, XYZFromChromaticity(toWhite));
    Matrix3 scaledCone = kBradfordConeFromXYZ;
    for (size_t row = 0; row < 3; ++row) {
        for (double& value : scaledCone[row])
            value *= to[row] / from[row];
    }
    return multiply(inverse(kBradfordConeFromXYZ), scaledCone);
}

Matrix3 adaptedRGBFromRGB(const RGBSpace& to, const RGBSpace& from)
{
    return multiply(inverse(XYZFromRGB(to)), multiply(bradfordAdaptation(from.white, to.white), XYZFromRGB(from)));
}

/// Written so that NaN becomes 0.
static double clamped(double value) { return value > 0.0 ? std::min(value, 1.0) : 0.0; }

double encodedSRGBFromLinear(double linear)
{
    const double x = clamped(linear);
    return x <= 0.0031308 ? 12.92 * x : 1.055 * std::pow(x, 1.0 / 2.4) - 0.055;
}

double linearFromEncodedSRGB(double encoded)
{
    const double x = clamped(encoded);
    return x <= 0.04045 ? x / 12.92 : std::pow((x + 0.055) / 1.055, 2.4);
}

static constexpr double kBT1886Gamma = 2.4;

double signalFromBT1886Light(double light) { return std::pow(clamped(light), 1.0 / kBT1886Gamma); }

double lightFromBT1886Signal(double signal) { return std::pow(clamped(signal), kBT1886Gamma); }

/// The constants of the logarithmic part.
namespace HLG {
static constexpr double a = 0.17883277;
static constexpr double b = 1.0 - 4.0 * a;
static double c() { return 0.5 - a * std::log(4.0 * a); }
} // namespace HLG

double hlgSignalFromScene(double scene)
{
    const double x = clamped(scene);
    return x <= 1.0 / 12.0 ? std::sqrt(3.0 * x) : clamped(HLG::a * std::log(12.0 * x - HLG::b) + HLG::c());
}

double sceneFromHLGSignal(double signal)
{
    const double x = clamped(signal);
    return x <= 0.5 ? x * x / 3.0 : clamped((std::exp((x - HLG::c()) / HLG::a) + HLG::b) / 12.0);
}

} // namespace Colorimetry
