#pragma once

#include "morvane/export.h"
#include "morvane/handle.h"

namespace Morvane_2015_1_42 {

/// The host's side of GPU rendering: it alone talks to a graphics API. No GPU renderer is part of this build, so a
/// transform stores an adaptor and finalize() with RENDERER_GPU reports that no such renderer is available.
class MORVANE_API GPUAdaptor
{
public:
    GPUAdaptor();
    GPUAdaptor(const GPUAdaptor& other);
    GPUAdaptor& operator=(const GPUAdaptor& other);
    virtual ~GPUAdaptor() = 0;
};

using GPUAdaptorPtr = Handle<GPUAdaptor>;

extern template class Handle<GPUAdaptor>;

} // namespace Morvane_2015_1_42
