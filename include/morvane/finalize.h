#pragma once

#include "morvane/export.h"
#include "morvane/pixelFormat.h"
#include "morvane/resolveFlags.h"
#include "morvane/status.h"
#include "morvane/transform.h"

#include <cstdint>

namespace Morvane_2015_1_42 {

/// Which renderers finalize() makes; values can be combined.
enum RendererFlags : uint32_t
{
    RENDERER_NONE = 0,
    RENDERER_CPU = 1,
    RENDERER_GPU = 2,
};

inline RendererFlags operator|(RendererFlags a, RendererFlags b)
{
    return static_cast<RendererFlags>(static_cast<uint32_t>(a) | static_cast<uint32_t>(b));
}

/// How far the optimizer may go: the lowest score of an action that is still carried out, in the low 31 bits. With 0
/// finalize() fails. The optimizer works on a copy: a transform keeps its own operators.
using OptimizerFlags = uint32_t;

constexpr OptimizerFlags OPTIMIZER_OFF = 101;    ///< change nothing
constexpr OptimizerFlags OPTIMIZER_REMOVE = 100; ///< remove operators that are bypassed or have no effect
constexpr OptimizerFlags OPTIMIZER_MATRIX = 95;  ///< and redundant ranges, and merge matrices
constexpr OptimizerFlags OPTIMIZER_DEFAULT = 90; ///< what a transform starts with
constexpr OptimizerFlags OPTIMIZER_LUT1D = 75;   ///< and merge 1D LUTs
constexpr OptimizerFlags OPTIMIZER_LUT3D = 45;   ///< and merge 3D LUTs
/// To be combined with one of the others: leave operators with dynamic properties alone. Without it an operator that
/// has no effect at the moment of finalize() is removed, and a value that is set afterwards shows nothing.
constexpr OptimizerFlags OPTIMIZER_KEEP_DYNAMIC = 0x80000000;

/// Binds a transform to an input and an output pixel format and makes the renderers asked for.
///
/// A transform that is finalized with these very values is left alone, at the cost of five comparisons, so that a host
/// may call this once per frame. One that is finalized with other values while the TransformCache has an entry with its
/// unique id stays as it is too: result becomes the form of that entry that is finalized with these values, which is a
/// clone of source, made now and kept in the entry, when there was none. Any other transform is finalized in place.
/// Unless the cache comes in, result becomes another handle to source, also when finalizing fails; the transform is
/// then left without renderers. A clone whose finalizing fails, or that is to have no renderers, becomes the result and
/// is not kept. Clones have no GPU adaptor. Source and result may be one handle. RENDERER_NONE succeeds and leaves the
/// transform without renderers too.
///
/// References are resolved at the first call, and again when the resolve flags change or an alias does that they use,
/// also below other references. A transform starts with RESOLVE_BROADCAST_MONITOR; other flags are refused with
/// 0x6030004 while one of its references is unresolved, so finalize it with those first. Resolving fails with 0x1020001
/// for an unknown alias, 0x3040001 for a relative path without a base, 0x3040002 when files refer to each other in a
/// circle, 0x3040003 when one cannot be read, and what loading the preferences fails with.
///
/// One thread at a time may finalize a transform, and none may apply it meanwhile. The transform's own operators stay
/// as they are: renderers are made from a copy, without the operators that are bypassed for good.
///
/// Fails with 0x4010002 when source is null (result is then left alone), with 0x6010001 when a renderer is asked for
/// that is not part of this build or, for RENDERER_GPU, when the transform has no adaptor, with 0x4010006 for an
/// optimizer threshold of 0, with 0x4010007 when an optimized transform is not valid.
///
/// The environment variables MORVANE_CPU_RENDERER and MORVANE_GPU_RENDERER, read at each call that makes renderers and
/// set to exactly CPU, OCIO, GPU or OCIO_GPU, take the place of the renderer's own kind. A kind for the other side
/// fails with 0x4010004. Any other text counts as not set. MORVANE_OPTIMIZER_VALUE and
/// MORVANE_OPTIMIZER_KEEP_DYNAMIC_OPS, read once when the library is loaded, replace the optimizer's threshold and
/// whether it keeps dynamic operators (0 or greater than 0).
MORVANE_API MorvaneStatus finalize(const TransformPtr& source, PixelFormat in, PixelFormat out, RendererFlags renderers,
                                   OptimizerFlags optimizer, ResolveFlags resolve, TransformPtr& result);

} // namespace Morvane_2015_1_42
