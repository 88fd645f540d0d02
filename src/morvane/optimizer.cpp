#include "morvane/optimizer.h"

#include "morvane/transformImpl.h"
#include "renderer/optimizer.h"
#include "utils/statusImpl.h"

namespace Morvane_2015_1_42 {

OptimizerCallback::OptimizerCallback() = default;
OptimizerCallback::OptimizerCallback(const OptimizerCallback&) = default;
OptimizerCallback& OptimizerCallback::operator=(const OptimizerCallback&) = default;
OptimizerCallback::~OptimizerCallback() = default;

MorvaneStatus optimizeTransform(const TransformPtr& source, OptimizerFlags optimizer, ResolveFlags resolve,
                                OptimizerCallback& callback, TransformPtr& flat, TransformPtr& optimized)
{
    return Color::statusOf([&] {
        const Impl::Transform* transform = Impl::Transform::of(source);
        if (!transform) Color::raise(Color::LogCategory::RENDERER_ALL, Color::ErrorIds::RENDERER_TRANSFORM_NULL);
        // References are resolved in a copy: those of the source belong to its renderers.
        const TransformPtr copy = transform->clone();
        const Color::ColorTransformPtr before = Impl::Transform::of(copy)->makeFlatCopy(resolve);
        const Color::ColorTransformPtr after = before->clone(Color::CloneMode::Copy);
        const std::vector<Rendering::OptimizerStep> steps = Rendering::optimize(*after, optimizer);
        flat.reset(new Impl::Transform(before));
        optimized.reset(new Impl::Transform(after));
        for (const Rendering::OptimizerStep& step : steps) {
            callback.addAction(step.action.type, step.action.index, step.opTypeName.c_str(), step.action.score);
        }
    });
}

} // namespace Morvane_2015_1_42
