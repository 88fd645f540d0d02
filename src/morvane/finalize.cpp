#include "morvane/finalize.h"

#include "morvane/transformImpl.h"
#include "morvane/transformStore.h"
#include "utils/statusImpl.h"

#include <mutex>

namespace Morvane_2015_1_42 {

using Impl::FinalizeSettings;
using Impl::TransformStore;

namespace {

using StoreLock = std::unique_lock<Impl::RecursiveLock>;

MorvaneStatus finalizeInPlace(Impl::Transform& transform, const FinalizeSettings& settings)
{
    return transform.finalize(settings.in, settings.out, settings.renderers, settings.optimizer, settings.resolve);
}

/// Finalizes a clone that nobody else knows, and makes it a form of the store. Result is the clone.
MorvaneStatus finalizeForm(TransformPtr& result, const FinalizeSettings& settings, TransformStore& store)
{
    Impl::Transform& form = *Impl::Transform::of(result);
    MorvaneStatus status = finalizeInPlace(form, settings);
    // Without renderers, by failure or as asked for, it is not finalized and would never be found.
    if (!form.isFinalized()) return status;
    const StoreLock lock(store.getLock());
    // Another thread may have been as far in the meantime; then both give out the same form. Or the entry is gone.
    if (!store.findForm(form, settings, result) && store.holds(form)) store.addForm(result, settings);
    return status;
}

} // namespace

MorvaneStatus finalize(const TransformPtr& source, PixelFormat in, PixelFormat out, RendererFlags renderers,
                       OptimizerFlags optimizer, ResolveFlags resolve, TransformPtr& result)
{
    Impl::Transform* transform = Impl::Transform::of(source);
    if (!transform) {
        return Color::statusOf(
            [] { Color::raise(Color::LogCategory::RENDERER_ALL, Color::ErrorIds::RENDERER_TRANSFORM_NULL); });
    }
    if (transform->isFinalizedWith(in, out, renderers, optimizer, resolve)) {
        result = source;
        return MorvaneStatus();
    }

    const FinalizeSettings settings = {in, out, renderers, optimizer, resolve};
    TransformStore& store = TransformStore::getInstance();
    StoreLock lock(store.getLock());
    const bool wasFinalized = transform->isFinalized();
    if (wasFinalized && store.findForm(*transform, settings, result)) return MorvaneStatus();
    const bool isCached = store.holds(*transform);
    // A transform of the store changes under its lock alone, because other threads look there for forms.
    if (!isCached) lock.unlock();
    if (!isCached || !wasFinalized) {
        result = source;
        return finalizeInPlace(*transform, settings);
    }
    MorvaneStatus cloned = Color::statusOf([&] { result = transform->clone(); });
    lock.unlock();
    return cloned ? finalizeForm(result, settings, store) : cloned;
}

} // namespace Morvane_2015_1_42
