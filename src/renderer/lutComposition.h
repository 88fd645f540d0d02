#pragma once

#include "transform/invLut1DOp.h"
#include "transform/lut1DOp.h"

#include <memory>

namespace Rendering {

/// The samples of a composition that is to be as fine as a 16-bit image.
constexpr uint32_t kFineSamples = 65536;

/// The LUT that does the first and then the second, sampled by running the first's entries through the kernel of the
/// second. It has the first's in depth, interpolation, half domain flag and bypass, the second's out depth, the joined
/// ids, names and descriptions, and no hue adjust: neither the hue adjust nor the bypass of the two takes part. A first
/// LUT with half domain, or with at least the wanted number of samples, is itself the domain and keeps its length; any
/// other is sampled at that many even positions. Throws 0x206000a when the depths do not meet.
std::unique_ptr<Color::Lut1DOp> compose(const Color::Lut1DOp& first, const Color::Lut1DOp& second, uint32_t samples);

/// The forward LUT that stands for an inverse one, of its bypass too: an identity of the op's in depth, of 4096 entries
/// or, where a curve leaves the range of the in depth, the full domain of that depth, composed with the exact search.
/// Curves with half domain are inverted as well, which the exact style does not do.
std::unique_ptr<Color::Lut1DOp> makeForwardLut(const Color::InvLut1DOp& inverse);

} // namespace Rendering
