#pragma once

#include "morvane/morvane.h"

#include <string>
#include <vector>

namespace Command {

/// Loads a transform. Throws Failure with ExitCode::TRANSFORM.
Morvane::TransformPtr loadTransform(const std::string& path);

/// Loads the files and joins them, the first one first; inverse undoes the whole chain. A dither at an end of the chain
/// gets a neighbour that scales between the image and 32f, which it does not do itself.
/// Throws Failure with ExitCode::TRANSFORM.
Morvane::TransformPtr loadTransformChain(const std::vector<std::string>& paths, bool inverse);

/// How far the optimizer may go with a chain: a change of scale beside a dither counts as without effect, but the
/// dither needs it.
Morvane::OptimizerFlags optimizerFor(const Morvane::TransformPtr& chain);

/// The message of a failed status, or its number when it has none.
std::string messageOf(Morvane::MorvaneStatus status);

} // namespace Command
