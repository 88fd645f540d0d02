#pragma once

#include "morvane/export.h"
#include "morvane/finalize.h"
#include "morvane/resolveFlags.h"
#include "morvane/status.h"
#include "morvane/transform.h"

#include <cstdint>

namespace Morvane_2015_1_42 {

/// What the optimizer can do at a place in the list of operators.
enum OptimizerActionType : uint32_t
{
    OPTIMIZER_ACTION_NONE = 0, ///< nothing; no host is told of it
    /// Removes an operator that is bypassed or has no effect. A LUT leaves a range that clamps like it, and the only
    /// operator of a list a matrix without effect.
    OPTIMIZER_ACTION_REMOVE_OP = 1,
    OPTIMIZER_ACTION_REMOVE_RANGE = 2,   ///< removes a range that the next operator makes redundant
    OPTIMIZER_ACTION_MERGE_MATRICES = 3, ///< merges a matrix with the next one
    OPTIMIZER_ACTION_MERGE_LUTS_1D = 4,  ///< merges a 1D LUT with the next one
    OPTIMIZER_ACTION_MERGE_LUTS_3D = 5,  ///< merges a 3D LUT with the next one
};

/// Receives what the optimizer did.
class MORVANE_API OptimizerCallback
{
public:
    OptimizerCallback();
    OptimizerCallback(const OptimizerCallback& other);
    OptimizerCallback& operator=(const OptimizerCallback& other);
    virtual ~OptimizerCallback();
    /// \param index      of the operator, or of the first of two, in the list as the actions before left it
    /// \param opTypeName of that operator, such as "Matrix", the title of its section in a description; valid during
    ///                   the call only
    /// \param score      what OptimizerFlags are compared with
    virtual void addAction(OptimizerActionType type, unsigned index, const char* opTypeName, unsigned score) = 0;
};

/// Shows what the optimizer makes of a transform. finalize() does the same by itself, so this is for looking at it, not
/// for rendering; source stays as it is.
///
/// \param optimizer,resolve like those of finalize(); the same environment variables replace them
/// \param callback          is called for each action, in the order in which they were carried out, once all are
/// \param flat              becomes what the optimizer starts from: a new transform with the operators of source,
///                          without those that are bypassed for good, and with what references stand for in their place
/// \param optimized         becomes what it ends with, a new transform
///
/// Fails with 0x4010002 when source is null, 0x4010006 for a threshold of 0, 0x4010007 when the optimized transform is
/// not valid, and with what is wrong with a reference; callback is then not called.
MORVANE_API MorvaneStatus optimizeTransform(const TransformPtr& source, OptimizerFlags optimizer, ResolveFlags resolve,
                                            OptimizerCallback& callback, TransformPtr& flat, TransformPtr& optimized);

} // namespace Morvane_2015_1_42
