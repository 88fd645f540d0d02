#pragma once

#include <array>

/// The few colorimetric computations behind the transforms that ship and the demonstration chart. They stand apart from
/// the library on purpose: its transforms are not made by what they are meant to exercise.
namespace Colorimetry {

using Vector3 = std::array<double, 3>;
using Matrix3 = std::array<Vector3, 3>; ///< by rows; applies to columns

/// A CIE 1931 chromaticity.
struct Chromaticity
{
    double x;
    double y;
};

/// An additive colour space with linear components.
struct RGBSpace
{
    Chromaticity red;
    Chromaticity green;
    Chromaticity blue;
    Chromaticity white;
};

extern const RGBSpace kACES2065_1; ///< SMPTE ST 2065-1
extern const RGBSpace kBT709;      ///< ITU-R BT.709, D65; also the primaries of IEC 61966-2-1
extern const RGBSpace kBT2020;     ///< ITU-R BT.2020, D65

Matrix3 multiply(const Matrix3& a, const Matrix3& b);
Vector3 multiply(const Matrix3& a, const Vector3& v);
/// The matrix must not be singular.
Matrix3 inverse(const Matrix3& m);

/// CIE XYZ of the chromaticity with Y = 1.
Vector3 XYZFromChromaticity(const Chromaticity& c);

/// The normalized primary matrix: RGB (1, 1, 1) becomes the white point with Y = 1.
Matrix3 XYZFromRGB(const RGBSpace& space);

/// Chromatic adaptation by the linear Bradford method.
Matrix3 bradfordAdaptation(const Chromaticity& fromWhite, const Chromaticity& toWhite);

/// From the linear components of one space to those of the other, white to white by the Bradford method.
Matrix3 adaptedRGBFromRGB(const RGBSpace& to, const RGBSpace& from);

/// The transfer function of IEC 61966-2-1 and its inverse, on [0, 1]; values outside are clamped.
double encodedSRGBFromLinear(double linear);
double linearFromEncodedSRGB(double encoded);

/// The signal that a display of ITU-R BT.1886 with a black of no light shows as this light, and the light of a signal,
/// both on [0, 1]; values outside are clamped.
double signalFromBT1886Light(double light);
double lightFromBT1886Signal(double signal);

/// The hybrid log-gamma signal of scene light, and the scene light of a signal, by the OETF of ITU-R BT.2100; both on
/// [0, 1], values outside are clamped.
double hlgSignalFromScene(double scene);
double sceneFromHLGSignal(double signal);

} // namespace Colorimetry
