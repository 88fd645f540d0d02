#pragma once

#include "transform/invLut1DOp.h"
#include "transform/lut1DOp.h"
#include "transform/lut3DOp.h"

#include <memory>

namespace Rendering {

/// The samples of a composition that is to be as fine as a 16-bit image.
constexpr uint32_t kFineSamples = 65536;

/// The LUT that does the first and then the second, sampled by running the first's entries through the kernel of the
/// second. It has the first's in depth, interpolation, half domain flag and bypass, the second's out depth, the joined
/// ids, names and descriptions, and no hue adjust: neither the hue adjust nor the bypass of the two takes part. A first
/// LUT with half domain, or with at least the wanted number of samples, is itself the domain and keeps its length; any
/// other is sampled at that many even positions. Throws 0x206000a when the depths do not meet, 0x2010005 when the first
/// has not as many values as its length tells.
std::unique_ptr<Color::Lut1DOp> compose(const Color::Lut1DOp& first, const Color::Lut1DOp& second, uint32_t samples);

/// What the optimizer puts in place of two neighbours: compose() with kFineSamples, but each of the two that is
/// bypassed at this moment takes part as if it were not there. A first LUT that is itself the domain always takes part.
std::unique_ptr<Color::Lut1DOp> mergeLuts(const Color::Lut1DOp& first, const Color::Lut1DOp& second);

/// The same for two cubes. A first cube with at least the grid of the second is itself the domain; any other is sampled
/// on the grid of the second. Throws 0x206000a when the depths do not meet, 0x2010005 when a cube has not as many
/// values as its grid.
std::unique_ptr<Color::Lut3DOp> mergeCubes(const Color::Lut3DOp& first, const Color::Lut3DOp& second);

/// The forward LUT that stands for an inverse one, of its bypass too: an identity of the op's in depth, of 4096 entries
/// or, where a curve leaves the range of the in depth, the full domain of that depth, composed with the exact search.
/// Curves with half domain are inverted as well, which the exact style does not do.
std::unique_ptr<Color::Lut1DOp> makeForwardLut(const Color::InvLut1DOp& inverse);

} // namespace Rendering
