#pragma once

/// \file
/// The twins of the ops that are made of powers and logarithms. Their parameters are those of normalized values.

#include "tests/pixels/twinRenderer.h"

#include <optional>

namespace Twin {

/// The library's own power, which is the result by definition: polynomials, not the C library.
float fastLog2(float x);
float fastExp2(float y);
float fastPow(float x, float exponent);

struct GammaOp : NormalizedOp
{
    enum Style
    {
        BASIC_FWD,
        BASIC_REV,
        MONCURVE_FWD,
        MONCURVE_REV
    };

    /// One channel; the basic styles have no offset.
    struct Curve
    {
        double gamma;
        double offset;
    };

    GammaOp(BitDepth in, BitDepth out, Style style, const std::array<Curve, 4>& curves);
    std::optional<Renderer> makeRenderer() const;

    Style style;
    std::array<Curve, 4> curves;
};

struct LogOp : NormalizedOp
{
    enum Style
    {
        LOG10,
        LOG2,
        ANTI_LOG10,
        ANTI_LOG2,
        LOG_TO_LIN,
        LIN_TO_LOG
    };

    struct Film
    {
        double gamma;
        double refWhite;
        double refBlack;
        double highlight;
        double shadow;
    };

    /// The film parameters belong to the last two styles.
    LogOp(BitDepth in, BitDepth out, Style style, const std::array<Film, 3>& films = {});
    std::optional<Renderer> makeRenderer() const;

    Style style;
    std::array<Film, 3> films;
};

struct ExposureContrastOp : NormalizedOp
{
    enum Style
    {
        VIDEO,
        LOGARITHMIC,
        LINEAR
    };

    ExposureContrastOp(BitDepth in, BitDepth out, Style style, double exposure, double contrast, double pivot,
                       bool isDynamic = false);
    std::optional<Renderer> makeRenderer() const;

    Style style;
    double exposure;
    double contrast;
    double pivot;
    bool isDynamic; ///< exposure and contrast both
};

struct CDLOp : NormalizedOp
{
    enum Style
    {
        V1_2_FWD,
        V1_2_REV,
        NO_CLAMP_FWD,
        NO_CLAMP_REV
    };

    using Values = std::array<double, 3>;

    CDLOp(BitDepth in, BitDepth out, Style style, const Values& slope, const Values& offset, const Values& power,
          double saturation);
    std::optional<Renderer> makeRenderer() const;

    Style style;
    Values slope;
    Values offset;
    Values power;
    double saturation;
};

} // namespace Twin
