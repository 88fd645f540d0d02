#pragma once

#include "utils/exception.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace Color {

/// NaN equals NaN, so that an op equals its clone whatever its parameters are.
inline bool isSameValue(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

inline bool areSameValues(const std::vector<double>& a, const std::vector<double>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), isSameValue);
}

/// Throws 0x2010011 for a value below the lower bound, 0x2010012 for one above the upper bound. A NaN lies within no
/// bounds; it counts as below.
inline void checkBounds(const char* category, double value, double lower, double upper)
{
    const bool isReached = value >= lower;
    if (!isReached) raise(category, ErrorIds::PARAMETER_BELOW_LOWER_BOUND, value, lower);
    if (value > upper) raise(category, ErrorIds::PARAMETER_ABOVE_UPPER_BOUND, value, upper);
}

} // namespace Color
