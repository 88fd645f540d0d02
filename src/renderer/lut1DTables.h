#pragma once

#include "transform/lut1DOp.h"

#include <array>
#include <vector>

namespace Rendering {

/// One table per colour channel. Entries are floats whatever the depth: those of an integer depth are whole numbers,
/// those of 16f are halves.
using ChannelTables = std::array<std::vector<float>, 3>;

/// Throws 0x4020001 when a depth is none. An interpolation that a 1D LUT does not know is told to the log.
void checkDepthsAndInterpolation(const Color::Lut1DOp& op);

/// Throws 0x2010005 when the array is empty or not as large as it says: an op that was never validated.
void checkArray(const Color::Lut1DOp& op);

/// The tables that the kernels read for the op's in depth: of a 32f op its own entries, of any other one entry per code
/// of the depth, sampled from the op's curve where its own entries are something else. With hue adjust the entries are
/// not cut to the out depth's elements, as their results are worked on further; those of an integer depth have the half
/// that rounds up nevertheless.
ChannelTables makeChannelTables(const Color::Lut1DOp& op);

} // namespace Rendering
