#pragma once

#include "morvane/optimizer.h"
#include "transform/transform.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Rendering {

struct OptimizerAction
{
    OptimizerActionType type = OPTIMIZER_ACTION_NONE;
    uint32_t index = 0; ///< of the op, or of the first of two
    uint32_t score = 0; ///< how early it is done; 0 for nothing to do
};

/// An action that was carried out.
struct OptimizerStep
{
    OptimizerAction action;
    std::string opTypeName; ///< of the op that was at the index
};

/// Shortens the list of ops in place: does what has the highest score, the first of equals, until nothing scores as
/// much as the flags ask for. Returns what was done, in order. The environment variables MORVANE_OPTIMIZER_VALUE and
/// MORVANE_OPTIMIZER_KEEP_DYNAMIC_OPS, whole numbers from 0 that were set when the library was loaded, take the place
/// of the threshold and of the wish to keep dynamic ops.
///
/// Throws 0x4010006 for a threshold of 0, once there is nothing more to do; 0x4010007 when the shortened list is not
/// valid; and what a merge throws.
std::vector<OptimizerStep> optimize(Color::Transform& transform, OptimizerFlags flags);

} // namespace Rendering
