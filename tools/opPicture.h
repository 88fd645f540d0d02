#pragma once

#include "textPicture.h"

#include "morvane/transform.h"

#include <string>
#include <vector>

namespace Command {

/// A transform for each operator of this one, in order; null where an operator cannot stand alone. Nothing where the
/// transform cannot be taken apart.
std::vector<Morvane_2015_1_42::TransformPtr> splitTransform(const Morvane_2015_1_42::TransformPtr& transform);

/// Draws what a transform of one operator does, with a line of explanation first: the curves of greys where it is made
/// of curves, a slice where it is a cube. Nothing for other types, whose parameters tell more.
/// \param type what the operator calls itself when it is described
TextPicture drawOp(const std::string& type, const Morvane_2015_1_42::TransformPtr& transform, Glyphs glyphs);

} // namespace Command
