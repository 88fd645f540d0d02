#pragma once

#include "morvane/transform.h"
#include "transform/transform.h"

namespace Morvane_2015_1_42::Impl {

/// Tells a host what a transform holds: the section "Transform" with its fields, and inside it a section per op, titled
/// by the op's type name.
void describe(const Color::Transform& transform, Transform::ContentCallbacks& callbacks);

} // namespace Morvane_2015_1_42::Impl
