#pragma once

#include "tests/pixels/opCases.h"
#include "transform/op.h"

#include <memory>

namespace PixelTest {

/// Every style of the ops that are made of powers, logarithms and colour models, alone, bypassed and in chains.
std::vector<OpCase> makeCurveCases();

/// The library's op of the same parameters, not bypassed.
std::unique_ptr<Color::Op> makeColorOp(const Twin::GammaOp& op);
std::unique_ptr<Color::Op> makeColorOp(const Twin::LogOp& op);
std::unique_ptr<Color::Op> makeColorOp(const Twin::ExposureContrastOp& op);
std::unique_ptr<Color::Op> makeColorOp(const Twin::CDLOp& op);
std::unique_ptr<Color::Op> makeColorOp(const Twin::GamutMapOp& op);
std::unique_ptr<Color::Op> makeColorOp(const Twin::HueVectorOp& op);
std::unique_ptr<Color::Op> makeColorOp(const Twin::FunctionOp& op);
std::unique_ptr<Color::Op> makeColorOp(const Twin::DitherOp& op);

} // namespace PixelTest
