#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

/// The numbers of the transforms that ship, computed a second time: by elimination in long double, from equations
/// rather than from products of matrices, and from what the standards publish.
namespace Published {

using Column = std::array<long double, 3>;

/// Solves a * x = b by elimination with pivoting; a is given by columns.
inline Column solve(const std::array<Column, 3>& columns, const Column& b)
{
    long double rows[3][4];
    for (size_t r = 0; r < 3; ++r) {
        for (size_t c = 0; c < 3; ++c)
            rows[r][c] = columns[c][r];
        rows[r][3] = b[r];
    }
    for (size_t pivot = 0; pivot < 3; ++pivot) {
        for (size_t r = pivot + 1; r < 3; ++r) {
            if (std::fabs(rows[r][pivot]) > std::fabs(rows[pivot][pivot])) std::swap(rows[r], rows[pivot]);
        }
        for (size_t r = 0; r < 3; ++r) {
            if (r == pivot) continue;
            const long double factor = rows[r][pivot] / rows[pivot][pivot];
            for (size_t c = pivot; c < 4; ++c)
                rows[r][c] -= factor * rows[pivot][c];
        }
    }
    return {rows[0][3] / rows[0][0], rows[1][3] / rows[1][1], rows[2][3] / rows[2][2]};
}

struct Space
{
    long double x[3], y[3]; ///< of red, green and blue
    long double whiteX, whiteY;
};

inline const Space kAP0 = {{0.7347L, 0.0L, 0.0001L}, {0.2653L, 1.0L, -0.077L}, 0.32168L, 0.33767L};
inline const Space kBT2020 = {{0.708L, 0.17L, 0.131L}, {0.292L, 0.797L, 0.046L}, 0.3127L, 0.329L};
inline const Space kBT709 = {{0.64L, 0.3L, 0.15L}, {0.33L, 0.6L, 0.06L}, 0.3127L, 0.329L};

inline Column whiteXYZ(const Space& s) { return {s.whiteX / s.whiteY, 1.0L, (1.0L - s.whiteX - s.whiteY) / s.whiteY}; }

/// XYZ of each primary, with the luminances that add up to white.
inline std::array<Column, 3> primaries(const Space& s)
{
    std::array<Column, 3> xyz{};
    for (size_t i = 0; i < 3; ++i)
        xyz[i] = {s.x[i], s.y[i], 1.0L - s.x[i] - s.y[i]};
    const Column amounts = solve(xyz, whiteXYZ(s));
    for (size_t i = 0; i < 3; ++i) {
        for (long double& value : xyz[i])
            value *= amounts[i];
    }
    return xyz;
}

/// Cone responses of the Bradford method.
inline Column cones(const Column& xyz)
{
    return {0.8951L * xyz[0] + 0.2664L * xyz[1] - 0.1614L * xyz[2],
            -0.7502L * xyz[0] + 1.7135L * xyz[1] + 0.0367L * xyz[2],
            0.0389L * xyz[0] - 0.0685L * xyz[1] + 1.0296L * xyz[2]};
}

/// The column of the matrix between two spaces for one primary of the first.
inline Column convertedPrimary(const Space& from, const Space& to, size_t primary)
{
    const std::array<Column, 3> coneBasis = {cones({1, 0, 0}), cones({0, 1, 0}), cones({0, 0, 1})};
    Column response = cones(primaries(from)[primary]);
    const Column fromWhite = cones(whiteXYZ(from)), toWhite = cones(whiteXYZ(to));
    for (size_t i = 0; i < 3; ++i)
        response[i] *= toWhite[i] / fromWhite[i];
    return solve(primaries(to), solve(coneBasis, response));
}

/// IEC 61966-2-1, on [0, 1].
inline long double sRGBFromLight(long double light)
{
    return light <= 0.0031308L ? 12.92L * light : 1.055L * std::pow(light, 1 / 2.4L) - 0.055L;
}

inline long double lightFromSRGB(long double code)
{
    return code <= 0.04045L ? code / 12.92L : std::pow((code + 0.055L) / 1.055L, 2.4L);
}

/// The OETF of hybrid log-gamma with the constants as ITU-R BT.2100 prints them, on [0, 1].
inline long double hlgFromScene(long double scene)
{
    constexpr long double a = 0.17883277L, b = 0.28466892L, c = 0.55991073L;
    return scene <= 1 / 12.0L ? std::sqrt(3 * scene) : a * std::log(12 * scene - b) + c;
}

/// The scene light of 75 percent of signal: the one that the OETF takes there, found by halving.
inline long double hlgDiffuseWhite()
{
    long double low = 0, high = 1;
    for (int i = 0; i < 70; ++i) {
        const long double middle = (low + high) / 2;
        (hlgFromScene(middle) < 0.75L ? low : high) = middle;
    }
    return low;
}

} // namespace Published
