#pragma once

#include "transform/transform.h"

namespace Color {

/// A transform named "none" with a fresh UUID as its id and no ops yet.
ColorTransformPtr makeTransform();

/// Linear exposure and contrast, both dynamic and without effect until they are set, and a matrix named "identity";
/// half floats throughout. Validated.
ColorTransformPtr makeStockRaw();

/// The identity: one matrix named "identity", half floats in and out. Validated.
ColorTransformPtr makeStockIdentity();

} // namespace Color
