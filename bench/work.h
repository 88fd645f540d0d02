#pragma once

#include <OpenColorIO/OpenColorIO.h>
#include <functional>
#include <morvane/morvane.h>
#include <string>
#include <vector>

/// Aborts with the message of a status that is no success.
void require(const Morvane::MorvaneStatus& status);

/// The same work for both libraries.
struct Work
{
    std::string name;
    std::function<Morvane::TransformPtr()> ours;
    std::function<OCIO_NAMESPACE::TransformRcPtr()> peer;
};

/// A transform of the op elements, which have 32f as both depths.
Morvane::TransformPtr transformOf(const std::string& opElements);

Work scaleWork();
Work matrixWork();
Work matrixWithOffsetWork();
/// A limit that is not set is NaN.
Work rangeWork(const std::string& name, double minIn, double minOut, double maxIn, double maxOut);

/// Whether a 1D LUT has the same curve for all three channels.
enum class Curves
{
    One,
    Three
};
Work lut1DWork(const std::string& name, Curves curves);
Work inverseLut1DWork();
Work halfDomainLut1DWork();
Work hueAdjustLut1DWork(const std::string& name, Curves curves);
enum class CubeInterpolation
{
    Trilinear,
    Tetrahedral
};
Work lut3DWork(const std::string& name, CubeInterpolation interpolation);

Work gammaWork();
Work moncurveWork();
Work logWork();
Work linToLogWork();
Work cdlWork();
Work cdlNoClampWork();
Work exposureContrastWork();

/// One work after the other as one transform.
Work chainOf(const std::string& name, const std::vector<Work>& works);
