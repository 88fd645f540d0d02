#pragma once

/// \file
/// The look-up tables of the scalar twin.

#include "tests/pixels/twinRenderer.h"

#include <memory>
#include <optional>

namespace Twin {

/// Entries of red, green and blue interleaved; copies of an op share them.
using Table = std::shared_ptr<const std::vector<float>>;

/// Entries are in the scale of the output depth.
struct Lut1DOp
{
    Lut1DOp(BitDepth in, BitDepth out, std::vector<float> table);

    void setInBitDepth(BitDepth depth);
    void setOutBitDepth(BitDepth depth);
    std::optional<Renderer> makeRenderer() const;

    Formula makeFormula() const;
    size_t length() const { return values->size() / 3; }

    BitDepth in;
    BitDepth out;
    Table values;
    bool isHalfDomain = false;
    bool adjustsHue = false;
    Bypass bypass = Bypass::OFF;
};

/// Entries are in the scale of the input depth. A half-domain curve has no twin in the fast style.
struct InvLut1DOp
{
    /// The curves are made monotonic from the given ones.
    InvLut1DOp(BitDepth in, BitDepth out, std::vector<float> table);

    void setInBitDepth(BitDepth depth);
    void setOutBitDepth(BitDepth depth);
    std::optional<Renderer> makeRenderer() const;

    size_t length() const { return values->size() / 3; }

    BitDepth in;
    BitDepth out;
    Table given; ///< at construction
    Table values;
    bool isHalfDomain = false;
    bool isFast = false;
    Bypass bypass = Bypass::OFF;

private:
    struct Run
    {
        bool rises;
        size_t start;
        size_t end;
    };

    float searched(size_t channel, float value) const;
    bool leavesInputRange() const;
    bool isForwardHalfDomain() const;
    /// The LUT that stands in for the search in the fast style.
    Lut1DOp forward() const;

    std::array<Run, 3> m_runs;
};

/// Entries are in the scale of the output depth, blue the fastest.
struct Lut3DOp
{
    Lut3DOp(BitDepth in, BitDepth out, size_t length, std::vector<float> table);

    void setInBitDepth(BitDepth depth);
    void setOutBitDepth(BitDepth depth);
    std::optional<Renderer> makeRenderer() const;

    BitDepth in;
    BitDepth out;
    size_t length; ///< of an axis
    Table values;
    bool isTetrahedral = false;
    Bypass bypass = Bypass::OFF;
};

} // namespace Twin
