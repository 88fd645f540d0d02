#pragma once

#include "tests/pixels/opCases.h"

#include <memory>

namespace Color {
class Op;
}

namespace PixelTest {

/// The library's op; its bypass is off.
std::unique_ptr<Color::Op> makeColorOp(const Twin::Lut1DOp& op);
std::unique_ptr<Color::Op> makeColorOp(const Twin::InvLut1DOp& op);
std::unique_ptr<Color::Op> makeColorOp(const Twin::Lut3DOp& op);

/// Every look-up kernel alone, with tables of all kinds, and in every place of a chain.
std::vector<OpCase> makeLutCases();

} // namespace PixelTest
