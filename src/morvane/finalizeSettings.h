#pragma once

#include "morvane/finalize.h"

namespace Morvane_2015_1_42::Impl {

/// The values that finalize() binds a transform to.
struct FinalizeSettings
{
    PixelFormat in;
    PixelFormat out;
    RendererFlags renderers;
    OptimizerFlags optimizer;
    ResolveFlags resolve;
};

} // namespace Morvane_2015_1_42::Impl
