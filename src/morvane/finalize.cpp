#include "morvane/finalize.h"

#include "morvane/transformImpl.h"
#include "utils/statusImpl.h"

namespace Morvane_2015_1_42 {

MorvaneStatus finalize(const TransformPtr& source, PixelFormat in, PixelFormat out, RendererFlags renderers,
                       OptimizerFlags optimizer, ResolveFlags resolve, TransformPtr& result)
{
    Impl::Transform* transform = Impl::Transform::of(source);
    if (!transform) {
        return Color::statusOf(
            [] { Color::raise(Color::LogCategory::RENDERER_ALL, Color::ErrorIds::RENDERER_TRANSFORM_NULL); });
    }
    // A finalized transform that a cache holds would now give way to the cache's form with these values. This build has
    // no such cache, so every transform is finalized in place.
    result = source;
    if (transform->isFinalizedWith(in, out, renderers, optimizer, resolve)) return MorvaneStatus();
    return transform->finalize(in, out, renderers, optimizer, resolve);
}

} // namespace Morvane_2015_1_42
