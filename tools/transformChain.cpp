#include "transformChain.h"

#include "failure.h"

#include <algorithm>
#include <cstdio>

namespace Command {

namespace {

using Morvane::TransformPtr;

const char* const kDither = "Dither"; ///< the name of the op

/// The type names of a transform's ops, as their sections inside the one of the transform tell them.
class OpNames : public Morvane::Transform::ContentCallbacks
{
public:
    void beginSection(const char* title) override
    {
        if (m_depth++ == 1) names.emplace_back(title);
    }
    void endSection() override { --m_depth; }
    void addField(const char*, const char*) override {}

    std::vector<std::string> names;

private:
    int m_depth = 0;
};

TransformPtr join(const TransformPtr& first, const TransformPtr& second)
{
    TransformPtr joined;
    const Morvane::MorvaneStatus status = Morvane::concatenateTransforms(first, second, joined);
    if (!status) throw Failure(ExitCode::TRANSFORM, "cannot join the transforms: " + messageOf(status));
    return joined;
}

class NoCallback : public Morvane::OptimizerCallback
{
public:
    void addAction(Morvane::OptimizerActionType, unsigned, const char*, unsigned) override {}
};

/// What references stand for takes their place.
TransformPtr withoutReferences(const TransformPtr& transform)
{
    if (!transform->hasReferences()) return transform;
    TransformPtr flat, optimized;
    NoCallback ignored;
    const Morvane::MorvaneStatus status = Morvane::optimizeTransform(
        transform, Morvane::OPTIMIZER_OFF, Morvane::RESOLVE_BROADCAST_MONITOR, ignored, flat, optimized);
    if (!status) throw Failure(ExitCode::TRANSFORM, "cannot use the transform: " + messageOf(status));
    return flat;
}

std::vector<std::string> opNamesOf(const TransformPtr& transform)
{
    OpNames ops;
    const Morvane::MorvaneStatus described = withoutReferences(transform)->describe(ops);
    if (!described) throw Failure(ExitCode::TRANSFORM, "cannot describe the transform: " + messageOf(described));
    return ops.names;
}

/// A dither changes no scale, whatever its depths: at an end of the chain it would hand the image values of the other
/// side. An op that does nothing but scale goes between them.
TransformPtr withScaleAroundDither(const TransformPtr& chain)
{
    const std::vector<std::string> ops = opNamesOf(chain);
    if (ops.empty()) return chain;
    TransformPtr scale;
    const Morvane::MorvaneStatus made = Morvane::createStockTransform(Morvane::STOCK_TRANSFORM_IDENTITY, scale);
    if (!made) throw Failure(ExitCode::TRANSFORM, "cannot make a scale: " + messageOf(made));
    const TransformPtr scaled = ops.front() == kDither ? join(scale, chain) : chain;
    return ops.back() == kDither ? join(scaled, scale) : scaled;
}

} // namespace

std::string messageOf(Morvane::MorvaneStatus status)
{
    if (status.getErrorMessage()) return status.getErrorMessage();
    char number[32];
    std::snprintf(number, sizeof number, "error 0x%x", static_cast<unsigned>(status.getErrorCode()));
    return number;
}

Morvane::OptimizerFlags optimizerFor(const Morvane::TransformPtr& chain)
{
    const std::vector<std::string> ops = opNamesOf(chain);
    const bool dithers = std::find(ops.begin(), ops.end(), kDither) != ops.end();
    return dithers ? Morvane::OPTIMIZER_OFF : Morvane::OPTIMIZER_DEFAULT;
}

Morvane::TransformPtr loadTransform(const std::string& path)
{
    Morvane::TransformPtr transform;
    const Morvane::MorvaneStatus status = Morvane::loadColorTransform(path.c_str(), transform);
    if (!status) {
        throw Failure(ExitCode::TRANSFORM, "cannot read transform '" + path + "': " + messageOf(status));
    }
    return transform;
}

Morvane::TransformPtr loadTransformChain(const std::vector<std::string>& paths, bool inverse)
{
    Morvane::TransformPtr chain;
    for (const std::string& path : paths) {
        const Morvane::TransformPtr next = loadTransform(path);
        if (!chain) {
            chain = next;
            continue;
        }
        Morvane::TransformPtr joined;
        const Morvane::MorvaneStatus status = Morvane::concatenateTransforms(chain, next, joined);
        if (!status) throw Failure(ExitCode::TRANSFORM, "cannot use transform '" + path + "': " + messageOf(status));
        chain = joined;
    }
    if (!inverse) return withScaleAroundDither(chain);

    Morvane::TransformPtr inverted;
    const Morvane::MorvaneStatus status = chain->inverse(inverted);
    if (!status) throw Failure(ExitCode::TRANSFORM, "cannot invert the transform: " + messageOf(status));
    return withScaleAroundDither(inverted);
}

} // namespace Command
